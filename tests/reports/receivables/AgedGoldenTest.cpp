// The aged report and the overdue list as printed, on the small company of aged.sql: the main
// variants of both sides, each golden file read against what the reports must print.

#include <gtest/gtest.h>

#include "platform/runtime/Strings.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

TEST_F(AgedCompany, PagesOfTheMainVariantsMatchTheirGoldenDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/aged_golden_runs.tsv");
}

}  // namespace
}  // namespace trellin::reports::testing
