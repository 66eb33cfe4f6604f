#include "reports/stock/TrendPeriods.h"

#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

// The day before the first of the month `months` after that of `date` (negative: before).
Date MonthEndBefore(const Date& date, int months) {
  return date.FirstOfMonth().AddMonths(months).AddDays(-1);
}

}  // namespace

std::optional<TrendFrequency> ParseTrendFrequency(std::string_view text) {
  constexpr std::pair<std::string_view, TrendFrequency> kNames[] = {
      {"Daily", TrendFrequency::Daily},
      {"Weekly", TrendFrequency::Weekly},
      {"F/Nightly", TrendFrequency::FNightly},
      {"Monthly", TrendFrequency::Monthly},
      {"EOM", TrendFrequency::EOM},
      {"Quarterly", TrendFrequency::Quarterly},
      {"Six Monthly", TrendFrequency::SixMonthly},
      {"Yearly", TrendFrequency::Yearly},
  };
  const std::string trimmed = Trim(std::string(text));
  for (const auto& [name, frequency] : kNames) {
    if (EqualsIgnoreCase(name, trimmed)) return frequency;
  }
  return std::nullopt;
}

TrendPeriodTable MakeTrendPeriods(const Date& end, TrendFrequency frequency) {
  const Date e = end.DateOnly();
  TrendPeriodTable table;
  const bool month_ends = frequency == TrendFrequency::EOM ||
                          frequency == TrendFrequency::Quarterly ||
                          frequency == TrendFrequency::Yearly;
  table[kTrendPeriods] = month_ends ? MonthEndBefore(e, 1) : e;
  for (int i = kTrendPeriods - 1; i >= 0; --i) {
    const Date& next = table[static_cast<std::size_t>(i + 1)];
    Date& entry = table[static_cast<std::size_t>(i)];
    switch (frequency) {
      case TrendFrequency::Daily:
        entry = next.AddDays(-1);
        break;
      case TrendFrequency::Weekly:
        entry = next.AddDays(-7);
        break;
      case TrendFrequency::FNightly:
        entry = next.AddDays(-14);
        break;
      case TrendFrequency::Monthly:
        // From the end date each time, so a 31st comes back after a short month.
        entry = e.AddMonths(i - kTrendPeriods);
        break;
      case TrendFrequency::EOM:
        entry = MonthEndBefore(next, 0);
        break;
      case TrendFrequency::Quarterly:
        entry = MonthEndBefore(next, -2);
        break;
      case TrendFrequency::SixMonthly:
        entry = next.AddMonths(-6);
        break;
      case TrendFrequency::Yearly:
        entry = MonthEndBefore(next, -11);
        break;
    }
  }
  return table;
}

std::string TrendLabelFormat(TrendFrequency frequency) {
  switch (frequency) {
    case TrendFrequency::Daily:
    case TrendFrequency::Weekly:
    case TrendFrequency::FNightly:
    case TrendFrequency::Monthly:
      return "dmmmyy";
    default:
      return "mmmyy";
  }
}

}  // namespace trellin
