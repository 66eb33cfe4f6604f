#include "platform/demo/DemoCalendar.h"

#include <stdexcept>

namespace trellin::demo {

namespace {

struct CountryCalendar {
  const char* country;
  int first_month;     // the month after the balance date
  int tax_months;      // length of a GST period
  Date fixed_present;  // the present when the caller gives none
};

// Five full years and most of a sixth, so that the five-year summary and the last-year
// comparisons all have figures, and the current year is part-way through.
constexpr CountryCalendar kCalendars[] = {
    {"NZ", 4, 2, Date::FromSerial(45991)},  // 31 March balance date: 30 November 2025
    {"AU", 7, 3, Date::FromSerial(46081)},  // 30 June balance date: 28 February 2026
};

std::string YearName(int start_year) {
  std::string tail = std::to_string((start_year + 1) % 100);
  if (tail.size() == 1) tail = "0" + tail;
  return std::to_string(start_year) + "/" + tail;
}

}  // namespace

DemoCalendar::DemoCalendar(const std::string& country, std::optional<Date> present) {
  const CountryCalendar* found = nullptr;
  for (const auto& c : kCalendars) {
    if (country == c.country) found = &c;
  }
  if (found == nullptr) {
    throw std::invalid_argument("the demo company's country must be NZ or AU, not '" + country +
                                "'");
  }
  tax_months_ = found->tax_months;
  present_ = present.value_or(found->fixed_present).DateOnly().LastOfMonth();
  // Five full years before the one that holds the present.
  int current_start_year =
      present_.Month() >= found->first_month ? present_.Year() : present_.Year() - 1;
  Date first = Date::FromYmd(current_start_year - 5, found->first_month, 1);
  for (Date start = first; start <= present_; start = start.AddYears(1)) {
    years_.push_back({start, start.AddYears(1).AddDays(-1), YearName(start.Year())});
  }
  // Periods run from the first day in steps; those that ended before the open one are filed.
  int next_id = 1;
  for (Date from = first; from <= present_; from = from.AddMonths(tax_months_)) {
    TaxPeriodSpan span{0, from, from.AddMonths(tax_months_).AddDays(-1), false};
    if (span.to < present_) {
      span.filed = true;
      span.id = next_id++;
    }
    tax_periods_.push_back(span);
  }
}

int DemoCalendar::YearIndex(Date date) const {
  int index = 0;
  for (std::size_t i = 0; i < years_.size(); ++i) {
    if (years_[i].start <= date.DateOnly()) index = static_cast<int>(i);
  }
  return index;
}

int DemoCalendar::MonthIndex(Date date) const {
  return (date.Year() - FirstDay().Year()) * 12 + date.Month() - FirstDay().Month();
}

const TaxPeriodSpan& DemoCalendar::TaxPeriodOf(Date date) const {
  int index = MonthIndex(date) / tax_months_;
  if (index < 0) index = 0;
  if (index >= static_cast<int>(tax_periods_.size()))
    index = static_cast<int>(tax_periods_.size()) - 1;
  return tax_periods_[static_cast<std::size_t>(index)];
}

int DemoCalendar::FiledTaxPeriod(Date date) const {
  const TaxPeriodSpan& span = TaxPeriodOf(date);
  return span.filed ? span.id : 0;
}

}  // namespace trellin::demo
