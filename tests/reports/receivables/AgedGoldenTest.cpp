// The aged report and the overdue list as printed, on the small company of aged.sql: the main
// variants of both sides, each golden file read against what the reports must print.

#include <gtest/gtest.h>

#include "platform/runtime/Strings.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

TEST_F(AgedCompany, PagesOfTheMainVariantsMatchTheirGoldenDumps) {
  const struct {
    const char* name;
    const char* key;
    std::vector<std::string> assignments;
  } cases[] = {
      {"AgedOverdueAR", "AgedOverdueAR", {}},
      {"AgedOverdueAR-30days-backdated-by-employee",
       "AgedOverdueAR",
       {"Frequency=30 Days", "BackDate=true", "Groupings=Transaction Employee", "ShowXRefId=true",
        "ShowLastReceipt=true", "ShowEmail=true", "ShowStopCredit=true", "ShowCreditLimit=true"}},
      {"AgedOverdueAR-summary-by-stop-credit",
       "AgedOverdueAR",
       {"Summary=true", "Groupings=Stop Credit", "OrderBy=Overdue", "ShowNil=true"}},
      {"AgedOverdueAR-invoice-date",
       "AgedOverdueAR",
       {"Frequency=Monthly", "ApplyTransactionDate=true", "OrderBy=Overdue"}},
      {"AgedOverdueAP", "AgedOverdueAP", {"OverdueDays=10"}},
      {"OverdueListAR-by-employee", "OverdueListAR", {"Groupings=Employee"}},
      {"OverdueListAP", "OverdueListAP", {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ExpectGolden("receivables", c.name, Join(DumpPages(Open(c.key, c.assignments)), "\n"));
  }
}

}  // namespace
}  // namespace trellin::reports::testing
