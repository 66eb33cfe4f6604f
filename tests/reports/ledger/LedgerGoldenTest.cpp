// Every statement on the demo company, compared with its golden page dumps.

#include <set>

#include "platform/runtime/Currency.h"
#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

struct GoldenCase {
  const char* name;
  const char* key;
  std::vector<std::string> assignments;
};

const GoldenCase kCases[] = {
    {"TrialBalance", "TrialBalance", {"ToDate=2025-11-30"}},
    {"TrialBalanceByType", "TrialBalance", {"ToDate=2025-11-30", "AccountsGroupBy=Type"}},
    {"TrialBalanceByBranch", "TrialBalance", {"ToDate=2025-11-30", "Groupings=Branch"}},
    {"FinancialStatement", "FinancialStatement", {"ToDate=2025-11-30"}},
    {"FinancialStatementByType",
     "FinancialStatement",
     {"ToDate=2025-11-30", "AccountsGroupBy=Type"}},
    {"FinancialStatementByDepartment",
     "FinancialStatement",
     {"Period=MTD", "FromDate=2025-11-01", "ToDate=2025-11-30", "Groupings=Department",
      "AccountTotalLevel=2"}},
    {"GeneralLedger", "GeneralLedger", {"Period=MTD", "ToDate=2025-11-30"}},
    {"EndOfYearTrialBalance", "EndOfYearTrialBalance", {"FiscalYear=2025"}},
    {"FiveYearSummary", "FiveYearSummary", {}},
    {"PeriodSummary", "PeriodSummary", {"EndDate=2025-11-30", "ShowTotal=true"}},
    {"MovementReport", "MovementReport", {"DateAsAt=2025-11-30"}},
    {"VarianceReport", "VarianceReport", {"ToDate=2025-11-30"}},
    {"LastYearComparison", "LastYearComparison", {"ToDate=2025-11-30"}},
    {"BudgetCashFlow", "BudgetCashFlow", {"EndDate=2025-11-30", "Frequency=Quarterly"}},
    {"BudgetSummary", "BudgetSummary", {"EndDate=2026-03-31", "ShowTotal=true"}},
    {"BudgetVarianceReport",
     "BudgetVarianceReport",
     {"ToDate=2025-11-30", "AdjustCreditTypeAccounts=true"}},
};

class LedgerGolden : public LedgerReports {};

TEST_F(LedgerGolden, EveryStatementMatchesItsGoldenDump) {
  for (const GoldenCase& c : kCases) {
    SCOPED_TRACE(c.name);
    ExpectLedgerGolden(c.name, Run(c.key, c.assignments));
  }
}

TEST_F(LedgerGolden, DemoTrialBalanceClosesToZero) {
  const std::vector<DumpRow> rows =
      RowsOf(Run("TrialBalance", {"FromDate=2025-04-01", "ToDate=2025-11-30"}), "Detail");
  // Account lines are those whose code is a posting account of the chart.
  auto accounts = Service().Database().Query("SELECT AccountId FROM Account WHERE Post Is Null");
  std::set<std::string> posting;
  for (; !accounts->Eof(); accounts->MoveNext()) posting.insert(accounts->Value(0).Text());
  Currency closing;
  int lines = 0;
  for (const DumpRow& row : rows) {
    auto code = row.find("txtCode");
    auto value = row.find("numField5");
    if (code == row.end() || !posting.count(code->second.second)) continue;
    ++lines;
    if (value != row.end()) closing += Currency::Parse(value->second.first).value_or(Currency());
  }
  EXPECT_GT(lines, 20);
  EXPECT_EQ(closing, Currency());
}

}  // namespace
}  // namespace trellin::ledger_testing
