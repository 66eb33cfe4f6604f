#pragma once
// The demo company's calendar: its financial years, its present and its tax periods, fixed by
// the country and the present, so that the file never depends on the day it is built unless the
// caller asks for a present of its own.

#include <optional>
#include <string>
#include <vector>

#include "platform/runtime/Date.h"

namespace trellin::demo {

struct YearSpan {
  Date start;
  Date end;
  std::string name;  // "2020/21"
};

struct TaxPeriodSpan {
  int id = 0;  // TaxPeriodId once filed
  Date from;
  Date to;
  bool filed = false;
};

class DemoCalendar {
 public:
  // "NZ" or "AU"; throws std::invalid_argument for any other. The company has traded for five
  // full years and the current one up to the end of `present`'s month; without a present, the
  // country's fixed one (NZ 30 November 2025, AU 28 February 2026).
  explicit DemoCalendar(const std::string& country, std::optional<Date> present = std::nullopt);

  [[nodiscard]] Date FirstDay() const { return years_.front().start; }
  // The last day of the latest period: everything the company has done is on or before it.
  [[nodiscard]] Date Present() const { return present_; }
  [[nodiscard]] const std::vector<YearSpan>& Years() const { return years_; }
  [[nodiscard]] const std::vector<TaxPeriodSpan>& TaxPeriods() const { return tax_periods_; }
  [[nodiscard]] int TaxMonths() const { return tax_months_; }
  // Index of the year holding `date` (clamped to the first and last year).
  [[nodiscard]] int YearIndex(Date date) const;
  // Whole months from the first day's month to `date`'s month.
  [[nodiscard]] int MonthIndex(Date date) const;
  [[nodiscard]] int Months() const { return MonthIndex(present_) + 1; }
  // The filed tax period holding `date`, or 0.
  [[nodiscard]] int FiledTaxPeriod(Date date) const;
  // The tax period holding `date`.
  [[nodiscard]] const TaxPeriodSpan& TaxPeriodOf(Date date) const;

 private:
  std::vector<YearSpan> years_;
  std::vector<TaxPeriodSpan> tax_periods_;
  Date present_;
  int tax_months_ = 2;
};

}  // namespace trellin::demo
