// The statements' dates when the user gives few or none, on the demo company, whose general
// ledger stands at 30 November 2025 in a financial year from April: the books' own date, never
// the end of the month the report happens to be run in, and a period that starts where it says.

#include <algorithm>

#include "platform/runtime/Strings.h"
#include "tests/reports/ledger/LedgerFixture.h"
#include "tests/support/CaseFile.h"

namespace trellin::ledger_testing {
namespace {

class LedgerDefaults : public LedgerReports {};

// default_dates.tsv: each key's dates resolved and its title as printed.
TEST_F(LedgerDefaults, DatesFollowTheBooksAndThePeriod) {
  for (const auto& c : trellin::testing::ReadCases("reports/ledger/default_dates.tsv", 3)) {
    SCOPED_TRACE(c.Where());
    DesignerPtr designer = Open(c.fields[0], {c.fields.begin() + 3, c.fields.end()});
    std::vector<std::string> dates;
    for (const ParameterPtr& parameter : designer->TLReport()->Parameters()) {
      if (parameter->Kind != ParameterType::Date) continue;
      dates.push_back(parameter->Name + "=" +
                      (parameter->Value.IsDate() ? parameter->Value.ToDate().ToIso() : ""));
    }
    EXPECT_EQ(Join(dates, " "), c.fields[1]);
    const std::vector<std::string> pages = RunPages(designer);
    ASSERT_FALSE(pages.empty());
    const std::vector<std::string> texts = PrintedTexts(pages[0]);
    EXPECT_NE(std::find(texts.begin(), texts.end(), c.fields[2]), texts.end());
  }
}

}  // namespace
}  // namespace trellin::ledger_testing
