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
      // Receivables turned round: an invoice positive, a receipt negative; net and tax apart.
      {"BatchTransactions-month-end",
       "BatchTransactions",
       {"ProcessFrom=2025-11-28", "ProcessTo=2025-11-30"}},
      // The batch's gross total is its transactions' sum as stored, a supplier's bill positive.
      {"BatchTransactions-payables-outstanding-by-code",
       "BatchTransactions",
       {"Ledger=Payables", "ProcessFrom=2025-11-24", "ProcessTo=2025-11-30", "OrderBy=Code",
        "Columns=TransId,Date,Type,Code,Name,Reference,Gross,Outstanding"}},
      // ISLAN006's interest (1.45) is raised to STD's minimum charge of 5.00; ANCHO002's is not.
      {"PenaltyInterests-two-customers", "PenaltyInterests", {"Customers=ANCHO002,ISLAN006"}},
      // A month earlier, without the minimum: each charge is its items' interest.
      {"PenaltyInterests-October-no-minimum-by-name",
       "PenaltyInterests",
       {"Customers=A..D", "DateAsAt=2025-10-31", "MinimumInterest=False", "OrderBy=Name"}},
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
