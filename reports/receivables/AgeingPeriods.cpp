#include "reports/receivables/AgeingPeriods.h"

#include "platform/runtime/Format.h"

namespace trellin {

namespace {

enum class Step { Days, Months, MonthEnds };

struct FrequencyRow {
  std::string_view name;
  Step step;
  int size;  // days or months between two ends
};

// clang-format off
constexpr FrequencyRow kFrequencies[] = {
    {"Daily", Step::Days, 1},        {"Weekly", Step::Days, 7},
    {"F/Nightly", Step::Days, 14},   {"30 Days", Step::Days, 30},
    {"Monthly", Step::Months, 1},    {"EOM", Step::MonthEnds, 1},
    {"Quarterly", Step::MonthEnds, 3}, {"Six Monthly", Step::Months, 6},
    {"Yearly", Step::Months, 12},
};
// clang-format on

constexpr std::string_view kThirtyDayCaptions[] = {"90 days", "60 days", "30 days", "Current"};

}  // namespace

std::optional<AgeingEnds> AgeingPeriodEnds(std::string_view frequency, Date as_at) {
  const Date a = as_at.DateOnly();
  for (const FrequencyRow& row : kFrequencies) {
    if (row.name != frequency) continue;
    AgeingEnds ends;
    for (int i = 0; i < 4; ++i) {
      const int offset = (i - 2) * row.size;
      switch (row.step) {
        case Step::Days:
          ends[static_cast<std::size_t>(i)] = a.AddDays(offset);
          break;
        case Step::Months:
          ends[static_cast<std::size_t>(i)] = a.AddMonths(offset);
          break;
        case Step::MonthEnds:
          // The day before the first of the month after the one `offset` months on.
          ends[static_cast<std::size_t>(i)] = a.FirstOfMonth().AddMonths(offset + 1).AddDays(-1);
          break;
      }
    }
    return ends;
  }
  return std::nullopt;
}

std::string AgeingColumnCaption(std::string_view frequency, int column, const AgeingEnds& ends,
                                const std::string& date_format) {
  if (column < 1 || column > 4) return {};
  if (frequency == "30 Days") return std::string(kThirtyDayCaptions[column - 1]);
  return Format(Variant(ends[static_cast<std::size_t>(column - 1)]), date_format);
}

int AgeingBucket(Date date, const AgeingEnds& ends) {
  const Date day = date.DateOnly();
  for (int i = 3; i >= 0; --i) {
    if (day > ends[static_cast<std::size_t>(i)]) return i + 1;
  }
  return 0;
}

}  // namespace trellin
