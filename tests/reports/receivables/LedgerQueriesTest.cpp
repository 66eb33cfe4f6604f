// The ledger's queries as it sends them, clause by clause, for a run of each kind: the parties',
// and one party's opening, transactions or open items and allocations. The golden file is read
// against what the ledger must ask.

#include <gtest/gtest.h>

#include "reports/receivables/RemainderAsAt.h"
#include "reports/receivables/ardscrLedger.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

TEST_F(LedgerCompany, QueriesOfEachKindOfRun) {
  const struct {
    const char* key;
    std::vector<std::string> assignments;
  } runs[] = {
      {"LedgerAR", {}},
      {"LedgerAR",
       {"Period=ALL", "OrderBy=Name", "Groupings=Location,Customer Type [Page Break]",
        "Customers=ALPHA..DELTA", "Status=2", "OverdueFrom=0", "OverdueDays=10"}},
      {"LedgerAR",
       {"Period=Custom", "DateFrom=2025-02-01", "DateTo=2025-02-28", "TransactionOrderBy=Reference",
        "OrderBy=X Ref"}},
      {"LedgerAR", {"Period=Custom", "DateFrom=", "Status=2..3"}},
      {"LedgerAP", {"Period=Outstanding", "DateAsAt=2025-03-04", "TransactionOrderBy=Entered"}},
      {"LedgerAP",
       {"Period=Outstanding", "OverdueFrom=-1000", "OverdueTo=1000", "SupplierCategories=LOCAL"}},
  };
  std::string text;
  for (const auto& run : runs) {
    DesignerPtr designer = Open(run.key, run.assignments);
    auto& ledger = dynamic_cast<ardscrLedger&>(*designer);
    ledger.BuildSQL();
    ardscrLedgerSub& sub = *ledger.Transactions();
    sub.OtherPartyId = "ALPHA";
    text += "== " + std::string(run.key) + " " + ::testing::PrintToString(run.assignments) + "\n";
    text += "parties: " + ledger.SQL() + "\n";
    if (sub.Period == "Outstanding") {
      text += "open items: " + sub.OutstandingSQL() + "\n";
      text +=
          "allocations: " + AllocationsProcessedFromSQL(1, sub.dateAsAt.ToDate().AddDays(1)) + "\n";
    } else {
      text += "opening: " + sub.OpeningSQL() + "\n";
      text += "transactions: " + sub.TransactionsSQL() + "\n";
    }
    designer->TLReport()->SetArReport(nullptr);
  }
  ExpectGolden("receivables", "LedgerQueries", text);
}

}  // namespace
}  // namespace trellin::reports::testing
