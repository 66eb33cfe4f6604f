// The statements' dates when the user gives few or none, on the demo company, whose general
// ledger stands at 30 November 2025 in a financial year from April: the books' own date, never
// the end of the month the report happens to be run in, and a period that starts where it says.

#include <algorithm>

#include "platform/runtime/Strings.h"
#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

class LedgerDefaults : public LedgerReports {};

TEST_F(LedgerDefaults, DatesFollowTheBooksAndThePeriod) {
  struct Case {
    const char* key;
    std::vector<std::string> assignments;
    const char* dates;  // the date parameters as resolved, "Name=yyyy-mm-dd" in order
    const char* title;
  };
  const Case cases[] = {
      {"TrialBalance",
       {},
       "FromDate=2025-04-01 ToDate=2025-11-30",
       "YTD Trial Balance ending 30/11/2025"},
      // The month, not the year: "This Month" holds November alone.
      {"FinancialStatement",
       {"Period=MTD"},
       "FromDate=2025-11-01 ToDate=2025-11-30",
       "MTD Financial Statement ending 30/11/2025"},
      // October to December is the third quarter of a year from April.
      {"TrialBalance",
       {"Period=QTD"},
       "FromDate=2025-10-01 ToDate=2025-11-30",
       "QTD Trial Balance ending 30/11/2025"},
      {"LastYearComparison",
       {"ToDate=2025-06-30"},
       "FromDate=2025-04-01 ToDate=2025-06-30",
       "YTD Last Year Comparison ending 30/06/2025"},
      {"GeneralLedger",
       {"FromDate=2025-11-03"},
       "FromDate=2025-11-03 ToDate=2025-11-30",
       "General Ledger (3/11/2025-30/11/2025)"},
      {"MovementReport", {}, "DateAsAt=2025-11-30", "Movement Report ending 30/11/2025"},
      {"PeriodSummary", {}, "EndDate=2025-11-30", "Monthly Summary ending 30/11/2025"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.key + (" " + Join(c.assignments, " ")));
    DesignerPtr designer = Open(c.key, c.assignments);
    std::vector<std::string> dates;
    for (const ParameterPtr& parameter : designer->TLReport()->Parameters()) {
      if (parameter->Kind != ParameterType::Date) continue;
      dates.push_back(parameter->Name + "=" +
                      (parameter->Value.IsDate() ? parameter->Value.ToDate().ToIso() : ""));
    }
    EXPECT_EQ(Join(dates, " "), c.dates);
    const std::vector<std::string> pages = RunPages(designer);
    ASSERT_FALSE(pages.empty());
    const std::vector<std::string> texts = PrintedTexts(pages[0]);
    EXPECT_NE(std::find(texts.begin(), texts.end(), c.title), texts.end());
  }
}

}  // namespace
}  // namespace trellin::ledger_testing
