// The receivables and payables working lists and printed documents end to end on the demo
// company: each key and its main variants as page dumps compared with golden files read against
// what each must print (golden_runs.tsv), and the batch totals against the books.

#include <gtest/gtest.h>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class ReceivablesListsGolden : public DemoReports {};

// The runs and why their figures are right: reports/receivables/golden_runs.tsv.
TEST_F(ReceivablesListsGolden, PageDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/golden_runs.tsv");
}

// Each batch's gross total is the sum of its transactions as stored, turned round on the
// receivables side; summed per row after the side's sign, so a sign lost on one kind of
// transaction (receipts, credits) shows.
TEST_F(ReceivablesListsGolden, BatchTotalIsItsTransactionsSum) {
  struct Case {
    const char* ledger;
    const char* batch;
    const char* stored_sum;  // the Jet text of the batch's sum as stored, the side's sign on it
  };
  const Case cases[] = {
      {"Receivables", "AR202511", "-Sum(Value)"},
      {"Payables", "AP202511", "Sum(Value)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.ledger);
    const std::string dump =
        Join(RunPages(Open("BatchTransactions",
                           {std::string("Ledger=") + c.ledger, std::string("Batches=") + c.batch,
                            "ProcessFrom=2025-11-01", "ProcessTo=2025-11-30"})),
             "\n");
    const std::vector<DumpRow> footers = RowsOf(dump, "GroupFooter");
    ASSERT_EQ(footers.size(), 1u);
    const std::string range = std::string(c.ledger) == "Payables" ? "20 And 29" : "30 And 39";
    const Currency expected = Service().Database().ExecuteScalarCurrency(
        std::string("SELECT ") + c.stored_sum + " FROM Transactions WHERE BatchId='" + c.batch +
            "' AND Type Between " + range +
            " AND DateProcess>=#2025-11-01# AND DateProcess<#2025-12-01#",
        Currency());
    EXPECT_EQ(footers[0].at("GroupFooter1SummaryGross").first, expected.ToString() + "@");
  }
}

}  // namespace
}  // namespace trellin::reports::testing
