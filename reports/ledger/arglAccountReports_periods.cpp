// The column ends of the period statements.

#include <stdexcept>

#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

// How each frequency lays out its columns: how many, and how far back the end of the column
// before lies, in months counted from the first of the column's own end month.
struct Frequency {
  const char* name;
  int columns;
  int months_back;  // 0: the last day of the month before
  bool fiscal_year_end;
};

constexpr Frequency kFrequencies[] = {
    {"Monthly", 12, 0, false},    {"Year to Date", 12, 0, true}, {"Quarterly", 8, 2, false},
    {"Six Monthly", 8, 5, false}, {"Yearly", 8, 11, false},
};

}  // namespace

std::vector<Date> PeriodEnds(const std::string& frequency, Date to_date, Date fiscal_year_end) {
  const Frequency* found = nullptr;
  for (const Frequency& f : kFrequencies) {
    if (frequency == f.name) found = &f;
  }
  if (found == nullptr) {
    throw std::invalid_argument("The period statements have no frequency '" + frequency + "'.");
  }
  std::vector<Date> ends(static_cast<std::size_t>(found->columns) + 1);
  Date end = (found->fiscal_year_end ? fiscal_year_end : to_date).DateOnly();
  for (int n = found->columns; n >= 0; --n) {
    ends[static_cast<std::size_t>(n)] = end;
    // Stepping from the first of the month, never by the day: a column ending on the 31st is
    // followed back by February's true last day.
    end = end.FirstOfMonth().AddMonths(-found->months_back).AddDays(-1);
  }
  return ends;
}

}  // namespace trellin
