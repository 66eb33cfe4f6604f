// The ledger and bank lists end to end on the demo company: each key and its main variants as
// page dumps compared with golden files read against what each list must print (the runs are
// the rows of golden_lists.tsv).

#include <gtest/gtest.h>

#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class LedgerListsGolden : public DemoReports {};

TEST_F(LedgerListsGolden, PageDumps) {
  ExpectGoldenRuns(Service(), "ledger", "reports/ledger/golden_lists.tsv");
}

}  // namespace
}  // namespace trellin::reports::testing
