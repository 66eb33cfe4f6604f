// Every statement on the demo company, compared with its golden page dumps.

#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

struct GoldenCase {
  const char* name;
  const char* key;
  std::vector<std::string> assignments;
};

const GoldenCase kCases[] = {
    {"TrialBalance", "TrialBalance", {"FromDate=2025-04-01", "ToDate=2025-11-30"}},
    {"TrialBalanceByType", "TrialBalance",
     {"FromDate=2025-04-01", "ToDate=2025-11-30", "AccountsGroupBy=Type"}},
    {"TrialBalanceByBranch", "TrialBalance",
     {"FromDate=2025-04-01", "ToDate=2025-11-30", "Groupings=Branch"}},
    {"FinancialStatement", "FinancialStatement", {"FromDate=2025-04-01", "ToDate=2025-11-30"}},
    {"FinancialStatementByType", "FinancialStatement",
     {"FromDate=2025-04-01", "ToDate=2025-11-30", "AccountsGroupBy=Type"}},
    {"FinancialStatementByDepartment", "FinancialStatement",
     {"Period=MTD", "FromDate=2025-11-01", "ToDate=2025-11-30", "Groupings=Department",
      "AccountTotalLevel=2"}},
    {"GeneralLedger", "GeneralLedger", {"FromDate=2025-11-01", "ToDate=2025-11-30"}},
    {"EndOfYearTrialBalance", "EndOfYearTrialBalance", {"FiscalYear=2025"}},
    {"FiveYearSummary", "FiveYearSummary", {}},
    {"PeriodSummary", "PeriodSummary", {"EndDate=2025-11-30", "ShowTotal=true"}},
    {"MovementReport", "MovementReport", {"DateAsAt=2025-11-30"}},
    {"VarianceReport", "VarianceReport", {"FromDate=2025-04-01", "ToDate=2025-11-30"}},
    {"LastYearComparison", "LastYearComparison", {"FromDate=2025-04-01", "ToDate=2025-11-30"}},
    {"BudgetCashFlow", "BudgetCashFlow", {"EndDate=2025-11-30", "Frequency=Quarterly"}},
    {"BudgetSummary", "BudgetSummary", {"EndDate=2026-03-31", "ShowTotal=true"}},
    {"BudgetVarianceReport", "BudgetVarianceReport",
     {"FromDate=2025-04-01", "ToDate=2025-11-30", "AdjustCreditTypeAccounts=true"}},
};

class LedgerGolden : public LedgerReports {};

TEST_F(LedgerGolden, EveryStatementMatchesItsGoldenDump) {
  for (const GoldenCase& c : kCases) {
    SCOPED_TRACE(c.name);
    ExpectLedgerGolden(c.name, Run(c.key, c.assignments));
  }
}

}  // namespace
}  // namespace trellin::ledger_testing
