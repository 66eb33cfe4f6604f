// The aged report's and the overdue list's queries as they send them, for a run of each kind:
// the five column sub-queries in both date modes with their seams, the groupings that narrow
// them, the overdue test turned with the side, the last payment; the list's "~" turned or dropped
// and its documents' query. The golden file is read against what the reports must ask.

#include <gtest/gtest.h>

#include "reports/receivables/ardscrAgedOverdueReport.h"
#include "reports/receivables/ardscrOverdueList.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

TEST_F(AgedCompany, QueriesOfEachKindOfRun) {
  const struct {
    const char* key;
    std::vector<std::string> assignments;
  } runs[] = {
      {"AgedOverdueAR", {}},
      {"AgedOverdueAR",
       {"ApplyTransactionDate=true", "Frequency=Monthly",
        "Groupings=Transaction Employee,Stop Credit", "OverdueDays=10",
        "StopCreditOption=Not on Stop Credit", "ShowLastReceipt=true", "OrderBy=Overdue",
        "OverdueFrom=0"}},
      {"AgedOverdueAP", {"OverdueDays=10", "Groupings=Transaction Location", "OrderBy=Name"}},
      {"OverdueListAR", {"Groupings=Employee", "OverdueDays=10", "OrderBy=Name"}},
      {"OverdueListAP", {"OverdueFrom=100", "OverdueTo=1000"}},
  };
  std::string text;
  for (const auto& run : runs) {
    DesignerPtr designer = Open(run.key, run.assignments);
    text += "== " + std::string(run.key) + " " + ::testing::PrintToString(run.assignments) + "\n";
    if (auto* aged = dynamic_cast<ardscrAgedOverdueReport*>(designer.get())) {
      aged->BuildSQL();
      text += "parties: " + aged->SQL() + "\n";
      text += "sort: " + aged->SortKeys() + "\n";
      text += "heading: " + aged->Heading() + "\n";
    } else {
      auto& list = dynamic_cast<ardscrOverdueList&>(*designer);
      list.BuildSQL();
      list.Invoices()->OtherPartyId = "AGED1";
      text += "parties: " + list.SQL() + "\n";
      text += "documents: " + list.Invoices()->InvoicesSQL() + "\n";
      text += "heading: " + list.Heading() + "\n";
    }
    designer->TLReport()->SetArReport(nullptr);
  }
  ExpectGolden("receivables", "AgedQueries", text);
}

}  // namespace
}  // namespace trellin::reports::testing
