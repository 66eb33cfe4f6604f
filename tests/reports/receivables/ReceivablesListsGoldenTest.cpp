// The receivables and payables working lists end to end on the demo company: each key and its
// main variants as page dumps compared with golden files read against what each list must print.

#include <gtest/gtest.h>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class ReceivablesListsGolden : public DemoReports {};

struct GoldenCase {
  const char* name;  // the golden file
  const char* key;
  std::vector<std::string> assignments;
};

TEST_F(ReceivablesListsGolden, PageDumps) {
  const GoldenCase cases[] = {
      // The latest import only; its footer counts its two errors and three warnings.
      {"ErrorsList", "ErrorsList", {}},
      // Both imports of the month, each under its own run with its own counts.
      {"ErrorsList-month-errors-by-record",
       "ErrorsList",
       {"RunFrom=2025-11-01", "RunTo=2025-11-30", "Severity=Errors", "OrderBy=Record"}},
      {"CommitList", "CommitList", {}},
      {"PurgeTestList-by-severity", "PurgeTestList", {"OrderBy=Severity"}},
      {"TransactionTypeList", "TransactionTypeList", {}},
      {"TransactionTypeList-payables-by-class",
       "TransactionTypeList",
       {"Class=Payables", "OrderBy=Class"}},
  };
  for (const GoldenCase& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    ExpectGolden("receivables", c.name, Join(pages, "\n"));
  }
}

}  // namespace
}  // namespace trellin::reports::testing
