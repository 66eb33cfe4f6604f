// The statements on the small fixture company: figures against plain SQL, and the edge cases
// of the walk, the rounding and the columns.

#include <algorithm>

#include "platform/runtime/Currency.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

// The row of an account code, or nullptr.
const DumpRow* RowOf(const std::vector<DumpRow>& rows, const std::string& code) {
  for (const DumpRow& row : rows) {
    auto it = row.find("txtCode");
    if (it != row.end() && it->second.second == code) return &row;
  }
  return nullptr;
}

std::vector<std::string> Descriptions(const std::vector<DumpRow>& rows) {
  std::vector<std::string> out;
  for (const DumpRow& row : rows) {
    const std::string text = Text(row, "txtDescription");
    if (text != "<hidden>" && !text.empty()) out.push_back(text);
  }
  return out;
}

bool Contains(const std::vector<std::string>& list, const std::string& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

TEST_F(LedgerFixtureCompany, TrialBalanceAgreesWithTheLedgerAndCloses) {
  const std::string dump = Run("TrialBalance", {"ToDate=2024-12-31"});
  const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
  Database& db = Service().Database();
  auto accounts = db.Query("SELECT AccountId FROM Account WHERE Post Is Null ORDER BY AccountId");
  Currency closing_sum;
  int printed = 0;
  for (; !accounts->Eof(); accounts->MoveNext()) {
    const std::string id = accounts->Value(0).Text();
    const std::string where = " WHERE AccountId='" + id + "'";
    const Currency opening = db.ExecuteScalarCurrency(
        "SELECT Sum(Value) FROM glTransaction" + where + " AND Date<#2024-04-01#", Currency());
    const Currency debits =
        db.ExecuteScalarCurrency("SELECT Sum(Value) FROM glTransaction" + where +
                                     " AND Value>0 AND Date>=#2024-04-01# AND Date<=#2024-12-31#",
                                 Currency());
    const Currency credits =
        db.ExecuteScalarCurrency("SELECT Sum(Value) FROM glTransaction" + where +
                                     " AND Value<0 AND Date>=#2024-04-01# AND Date<=#2024-12-31#",
                                 Currency());
    const DumpRow* row = RowOf(rows, id);
    if (row == nullptr) {
      EXPECT_EQ(opening + debits + credits, Currency()) << id << " has figures but no line";
      EXPECT_EQ(debits, Currency()) << id;
      continue;
    }
    ++printed;
    EXPECT_EQ(Value(*row, "numField1"), opening) << id;
    EXPECT_EQ(Value(*row, "numField2"), debits) << id;
    EXPECT_EQ(Value(*row, "numField3"), -credits) << id;
    EXPECT_EQ(Value(*row, "numField4"), debits + credits) << id;
    EXPECT_EQ(Value(*row, "numField5"), opening + debits + credits) << id;
    closing_sum += Value(*row, "numField5");
  }
  EXPECT_EQ(printed, 6);
  EXPECT_EQ(closing_sum, Currency());
}

TEST_F(LedgerFixtureCompany, TheWalkHidesEmptyGroupsAndClosesAtTheChartsEnd) {
  const std::vector<DumpRow> rows = RowsOf(Run("TrialBalance", {"ToDate=2024-12-31"}), "Detail");
  const std::vector<std::string> lines = Descriptions(rows);
  // A group whose accounts are all zero leaves neither heading nor total.
  EXPECT_FALSE(Contains(lines, "Idle Costs"));
  EXPECT_FALSE(Contains(lines, "Total Idle Costs"));
  EXPECT_FALSE(Contains(lines, "Sales B"));
  // Headings print above the first account that prints.
  EXPECT_TRUE(Contains(lines, "INCOME"));
  EXPECT_TRUE(Contains(lines, "Sales"));
  // "TOTAL " for a description in capitals, "Total " otherwise.
  EXPECT_TRUE(Contains(lines, "Total Sales"));
  EXPECT_TRUE(Contains(lines, "TOTAL ASSETS"));
  EXPECT_TRUE(Contains(lines, "Total Liabilities"));
  // The last row is an account: the end of the chart still closes the equity group.
  ASSERT_TRUE(Contains(lines, "TOTAL EQUITY"));
  // A T row sums its level: the income less the rent.
  const DumpRow* net = RowOf(rows, "1290");
  ASSERT_NE(net, nullptr);
  EXPECT_EQ(Value(*net, "numField4"), Currency::FromWhole(-1100));
  // A T row with no printed account above it prints its description alone.
  const DumpRow* lonely = RowOf(rows, "1296");
  ASSERT_NE(lonely, nullptr);
  EXPECT_EQ(Text(*lonely, "txtDescription"), "Nothing Above");
  EXPECT_EQ(Text(*lonely, "numField4"), "<hidden>");
  EXPECT_EQ(Text(*lonely, "numField5"), "<hidden>");
}

TEST_F(LedgerFixtureCompany, VarianceWarningOnlyWhenUnfiltered) {
  struct Case {
    std::vector<std::string> assignments;
    const char* warning;
  };
  const Case cases[] = {
      {{"ToDate=2024-12-31"}, ""},
      // The one-sided line of January puts the ledger out of balance.
      {{"ToDate=2025-03-31"}, "Warning: There is a variance in the closing balances."},
      {{"ToDate=2025-03-31", "Accounts=3010"}, ""},
      {{"ToDate=2025-03-31", "Branches=N"}, ""},
  };
  for (const Case& c : cases) {
    const std::vector<DumpRow> footer = RowsOf(Run("TrialBalance", c.assignments), "ReportFooter");
    ASSERT_EQ(footer.size(), 1u);
    EXPECT_EQ(Text(footer[0], "txtWarning"), c.warning) << c.assignments.back();
  }
}

TEST_F(LedgerFixtureCompany, ThousandsPrintsZeroForASmallRowThatStillPrints) {
  const std::vector<DumpRow> rows =
      RowsOf(Run("TrialBalance", {"ToDate=2024-12-31", "Rounding=Thousands"}), "Detail");
  const DumpRow* petty = RowOf(rows, "3020");
  ASSERT_NE(petty, nullptr) << "a non-zero balance below 500 still prints its line";
  EXPECT_EQ(Text(*petty, "numField5"), "0");
  const DumpRow* bank = RowOf(rows, "3010");
  ASSERT_NE(bank, nullptr);
  EXPECT_EQ(Text(*bank, "numField5"), "6");
}

TEST_F(LedgerFixtureCompany, DatesMoveToWholeMonthsUnlessCustom) {
  struct Case {
    const char* period;
    const char* title;
    const char* closing_bank;
  };
  const Case cases[] = {
      // Mid-month dates widen to 1 June - 30 June: the month's whole movement.
      {"MTD", "MTD Trial Balance ending 30/06/2024", "5,399.60"},
      // "Custom" keeps 5 June to 15 June: the lines of the 1st and 2nd open the period.
      {"Custom", "Trial Balance (5/06/2024-15/06/2024)", "5,899.60"},
  };
  for (const Case& c : cases) {
    const std::string dump = Run("TrialBalance", {std::string("Period=") + c.period,
                                                  "FromDate=2024-06-05", "ToDate=2024-06-15"});
    EXPECT_TRUE(Contains(PrintedTexts(dump), c.title)) << c.period;
    const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
    const DumpRow* bank = RowOf(rows, "3010");
    ASSERT_NE(bank, nullptr) << c.period;
    EXPECT_EQ(Text(*bank, c.period == std::string("MTD") ? "numField4" : "numField1"),
              c.closing_bank)
        << c.period;
  }
}

TEST_F(LedgerFixtureCompany, GeneralLedgerPrintsAnAccountWhoseMovementNetsToNothing) {
  const std::vector<DumpRow> rows =
      RowsOf(Run("GeneralLedger", {"Period=Custom", "FromDate=2024-03-01", "ToDate=2024-04-01"}),
             "Detail");
  // The sale of March and its closing entry cancel out, yet the account has lines to show.
  const DumpRow* sales = RowOf(rows, "1010");
  ASSERT_NE(sales, nullptr);
  EXPECT_EQ(Text(*sales, "txtField1"), "Opening");
  EXPECT_EQ(Text(*sales, "numField3"), "0.00");
  EXPECT_EQ(RowOf(rows, "1020"), nullptr);
  EXPECT_EQ(RowOf(rows, "1210"), nullptr);
  // The group's total carries the period's movement beside the opening.
  int totals = 0;
  for (const DumpRow& row : rows) {
    if (Text(row, "txtDescription") != "Total Sales") continue;
    ++totals;
    EXPECT_EQ(Text(row, "numField1"), "200.00");
    EXPECT_EQ(Text(row, "numField2"), "200.00");
    EXPECT_EQ(Text(row, "txtField1"), "<hidden>");
  }
  EXPECT_EQ(totals, 1);
}

TEST_F(LedgerFixtureCompany, TitlesFollowPeriodAndTax) {
  struct Case {
    const char* key;
    std::vector<std::string> assignments;
    const char* title;
  };
  const Case cases[] = {
      {"TrialBalance", {"Period=ALL", "FromDate=2024-04-01", "ToDate=2024-12-31"}, "Trial Balance"},
      {"TrialBalance",
       {"ToDate=2024-12-31", "TaxInclusive=true"},
       "YTD Trial Balance ending 31/12/2024 (GST inclusive)"},
      {"MovementReport", {"DateAsAt=2024-12-15"}, "Movement Report ending 31/12/2024"},
      {"PeriodSummary",
       {"EndDate=2024-06-30", "Frequency=Six Monthly"},
       "Six Monthly Summary ending 30/06/2024"},
      {"BudgetCashFlow", {"EndDate=2024-06-30"}, "Monthly Cash Flow Budget ending 30/06/2024"},
      {"EndOfYearTrialBalance", {"FiscalYear=2"}, "End of Year Trial Balance (2024/25)"},
  };
  for (const Case& c : cases) {
    EXPECT_TRUE(Contains(PrintedTexts(Run(c.key, c.assignments)), c.title)) << c.title;
  }
}

TEST_F(LedgerFixtureCompany, ParametersInTheirOrder) {
  struct Case {
    const char* key;
    const char* names;
  };
  const char* shared =
      "Accounts,Branches,Departments,Groupings,Split,AddNetProfitToREAccount,"
      "AddAppropriationsToREAccount,";
  const Case cases[] = {
      {"TrialBalance",
       "Period,FromDate,ToDate,AccountsGroupBy,AccountSummaryLevel,Rounding,IncludeAccountCode,"
       "TaxInclusive"},
      {"FinancialStatement",
       "Period,FromDate,ToDate,AccountsGroupBy,AccountSummaryLevel,AccountTotalLevel,Rounding,"
       "IncludeAccountCode,AdjustCreditTypeAccounts"},
      {"MovementReport",
       "DateAsAt,AccountsGroupBy,AccountSummaryLevel,Rounding,IncludeAccountCode,"
       "AdjustCreditTypeAccounts,TaxInclusive"},
      {"BudgetSummary",
       "Frequency,EndDate,ShowTotal,AccountsGroupBy,AccountSummaryLevel,Rounding,"
       "IncludeAccountCode,AdjustCreditTypeAccounts,Budget"},
      {"GeneralLedger",
       "Period,FromDate,ToDate,AccountsGroupBy,AccountSummaryLevel,Rounding,IncludeAccountCode,"
       "TaxInclusive,Drilldown"},
  };
  for (const Case& c : cases) {
    DesignerPtr designer = Open(c.key, {});
    std::string names;
    for (const ParameterPtr& p : designer->TLReport()->Parameters()) {
      names += (names.empty() ? "" : ",") + p->Name;
    }
    EXPECT_EQ(names, shared + std::string(c.names)) << c.key;
    designer->TLReport()->SetArReport(nullptr);
    designer->SetTLReport(nullptr);
  }
}

TEST_F(LedgerFixtureCompany, TypeModeClosesEachTypeAndNetAssetsAtLiabilities) {
  const std::vector<std::string> lines = Descriptions(
      RowsOf(Run("TrialBalance", {"ToDate=2024-12-31", "AccountsGroupBy=Type"}), "Detail"));
  const std::string expected =
      "Sales Accounts|Sales A|Total Sales Accounts|Expense Accounts|Rent|Total Expense Accounts|"
      "Net Profit (Before Others)|Current Asset Accounts|Bank|Petty Cash|"
      "Total Current Asset Accounts|Liability Accounts|Loan|Total Liability Accounts|"
      "Total Liabilities|Net Assets|Capital Accounts|Retained Earnings|Total Capital Accounts";
  EXPECT_EQ(Join(lines, "|"), expected);
}

TEST_F(LedgerFixtureCompany, BudgetsMissingMonthsReadZeroAndHide) {
  const std::vector<DumpRow> rows =
      RowsOf(Run("BudgetSummary", {"EndDate=2024-06-30", "Frequency=Monthly", "ShowTotal=true"}),
             "Detail");
  const DumpRow* sales = RowOf(rows, "1010");
  ASSERT_NE(sales, nullptr);
  // Columns end Jul23 .. Jun24: April is column 10, May (no budget) 11, June 12.
  EXPECT_EQ(Text(*sales, "numField10"), "(900)");
  EXPECT_EQ(Text(*sales, "numField11"), "<hidden>");
  EXPECT_EQ(Text(*sales, "numField12"), "(1,100)");
  EXPECT_EQ(Text(*sales, "numField13"), "(2,000)");
}

TEST_F(LedgerFixtureCompany, QuarterlyBudgetsTurnCreditsRoundInTheSecondFourOnly) {
  struct Case {
    const char* end_date;
    const char* field;  // the quarter April to June 2024 lands in
    const char* sales;
    const char* subtotal;
  };
  const Case cases[] = {
      {"EndDate=2025-12-31", "numField2", "(2,000)", "numField5"},  // among the first four
      {"EndDate=2025-03-31", "numField6", "2,000", "numField10"},   // among the second four
  };
  for (const Case& c : cases) {
    const std::vector<DumpRow> rows = RowsOf(
        Run("BudgetSummary", {c.end_date, "Frequency=Quarterly", "ShowTotal=true"}), "Detail");
    const DumpRow* sales = RowOf(rows, "1010");
    ASSERT_NE(sales, nullptr) << c.end_date;
    EXPECT_EQ(Text(*sales, c.field), c.sales) << c.end_date;
    EXPECT_EQ(Text(*sales, c.subtotal), c.sales) << c.end_date;
    const DumpRow* rent = RowOf(rows, "1210");
    ASSERT_NE(rent, nullptr) << c.end_date;
    EXPECT_EQ(Text(*rent, c.field), "250") << c.end_date;
  }
}

TEST_F(LedgerFixtureCompany, YearToDateFillsTheMonthsSoFar) {
  const std::vector<DumpRow> rows = RowsOf(
      Run("PeriodSummary", {"EndDate=2024-06-30", "Frequency=Year to Date", "ShowTotal=true"}),
      "Detail");
  const DumpRow* sales = RowOf(rows, "1010");
  ASSERT_NE(sales, nullptr);
  EXPECT_EQ(Text(*sales, "numField1"), "(1,000)");
  EXPECT_EQ(Text(*sales, "numField2"), "<hidden>");
  EXPECT_EQ(Text(*sales, "numField3"), "(400)");
  for (int n = 4; n <= 12; ++n) EXPECT_EQ(Text(*sales, "numField" + std::to_string(n)), "<hidden>");
  EXPECT_EQ(Text(*sales, "numField13"), "(1,400)");
  // A balance at several dates is never summed into the total.
  const DumpRow* bank = RowOf(rows, "3010");
  ASSERT_NE(bank, nullptr);
  EXPECT_EQ(Text(*bank, "numField13"), "<hidden>");
}

TEST_F(LedgerFixtureCompany, FiveYearSummaryInTheSecondYearLeavesThreeBlankColumns) {
  const std::string dump = Run("FiveYearSummary", {"FiscalYear=2"});
  const std::vector<std::string> texts = PrintedTexts(dump);
  EXPECT_TRUE(Contains(texts, "2023/24"));
  EXPECT_TRUE(Contains(texts, "2024/25"));
  const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
  const DumpRow* sales = RowOf(rows, "1010");
  ASSERT_NE(sales, nullptr);
  for (int n : {1, 2, 3}) EXPECT_EQ(Text(*sales, "numField" + std::to_string(n)), "<hidden>");
  // The closing entry sits in the first year too: its movement nets to nothing there.
  EXPECT_EQ(Text(*sales, "numField4"), "<hidden>");
  EXPECT_EQ(Text(*sales, "numField5"), "(1,400.00)");
}

TEST_F(LedgerFixtureCompany, EndOfYearTrialBalanceFlagsProfitAccountsLeftOpen) {
  const std::vector<DumpRow> rows =
      RowsOf(Run("EndOfYearTrialBalance", {"FiscalYear=1"}), "Detail");
  const DumpRow* sales = RowOf(rows, "1010");
  ASSERT_NE(sales, nullptr);
  EXPECT_EQ(Text(*sales, "numField1"), "(200.00)");
  EXPECT_EQ(Text(*sales, "numField2"), "200.00");
  EXPECT_EQ(Text(*sales, "txtField1"), "");
  const std::vector<DumpRow> later =
      RowsOf(Run("EndOfYearTrialBalance", {"FiscalYear=2"}), "Detail");
  const DumpRow* open = RowOf(later, "1010");
  ASSERT_NE(open, nullptr);
  EXPECT_EQ(Text(*open, "txtField1"), "Sales/Income accounts must be zero.");
  const DumpRow* bank = RowOf(later, "3010");
  ASSERT_NE(bank, nullptr);
  EXPECT_EQ(Text(*bank, "txtField1"), "");
}

TEST_F(LedgerFixtureCompany, AnUnknownFiscalYearStopsTheRunWithItsName) {
  const std::vector<std::string> pages =
      RunPages(Open("EndOfYearTrialBalance", {"FiscalYear=1999"}));
  ASSERT_FALSE(pages.empty());
  EXPECT_EQ(pages.back(),
            "errors:\nActiveReport_ReportStart: Fiscal Year: the company has no financial year "
            "1999.\n");
}

TEST_F(LedgerFixtureCompany, PercentagesPrintABlankForAZeroDivisor) {
  const std::vector<DumpRow> rows = RowsOf(
      Run("VarianceReport", {"ToDate=2024-12-31", "AdjustCreditTypeAccounts=true"}), "Detail");
  const DumpRow* sales = RowOf(rows, "1010");
  ASSERT_NE(sales, nullptr);
  // Actual 1,400 against a budget of 2,000, both turned round as income.
  EXPECT_EQ(Text(*sales, "numField1"), "1,400.00");
  EXPECT_EQ(Text(*sales, "numField2"), "2,000.00");
  EXPECT_EQ(Text(*sales, "numField4"), "30.0");
  // No sales last year to compare with.
  EXPECT_EQ(Text(*sales, "numField7"), " ");
  const std::vector<DumpRow> budget =
      RowsOf(Run("BudgetVarianceReport", {"ToDate=2024-12-31", "AdjustCreditTypeAccounts=true"}),
             "Detail");
  const DumpRow* budget_sales = RowOf(budget, "1010");
  ASSERT_NE(budget_sales, nullptr);
  // The budget variance's percentage keeps its sign where the variance report's turns.
  EXPECT_EQ(Text(*budget_sales, "numField4"), "(30.0)");
}

TEST_F(LedgerFixtureCompany, SummaryLevelPrintsGroupsInPlaceOfTheirAccounts) {
  const std::vector<DumpRow> rows =
      RowsOf(Run("TrialBalance", {"ToDate=2024-12-31", "AccountSummaryLevel=2"}), "Detail");
  EXPECT_EQ(RowOf(rows, "1010"), nullptr) << "an account below the summary level stays hidden";
  const DumpRow* sales = RowOf(rows, "1005");
  ASSERT_NE(sales, nullptr);
  EXPECT_EQ(Text(*sales, "txtDescription"), "");
  EXPECT_EQ(Text(*sales, "txtDescription2"), "Total Sales");
  EXPECT_EQ(Text(*sales, "numField5"), "(1,400.00)");
  const std::vector<std::string> lines = Descriptions(rows);
  EXPECT_TRUE(Contains(lines, "INCOME"));
  EXPECT_FALSE(Contains(lines, "Sales")) << "a heading at the summary level does not print";
}

TEST_F(LedgerFixtureCompany, NetProfitGoesToTheRetainedEarningsRow) {
  struct Case {
    const char* key;
    const char* field;
    const char* without;
    const char* with;
  };
  // The period's profit is a loss of nothing but income: 1,400 of sales less 300 of rent.
  const Case cases[] = {
      {"TrialBalance", "numField5", "(200.00)", "(1,300.00)"},
      {"TrialBalance", "numField2", "<hidden>", "300.00"},
      {"FinancialStatement", "numField2", "(200.00)", "(1,300.00)"},
  };
  for (const Case& c : cases) {
    for (bool add : {false, true}) {
      const std::vector<DumpRow> rows =
          RowsOf(Run(c.key, {"ToDate=2024-12-31",
                             std::string("AddNetProfitToREAccount=") + (add ? "true" : "false")}),
                 "Detail");
      const DumpRow* retained = RowOf(rows, "4520");
      ASSERT_NE(retained, nullptr) << c.key;
      EXPECT_EQ(Text(*retained, c.field), add ? c.with : c.without) << c.key << " " << c.field;
    }
  }
}

TEST_F(LedgerFixtureCompany, EachBranchGetsTheWholeStatement) {
  const std::string dump = Run("TrialBalance", {"ToDate=2024-12-31", "Groupings=Branch"});
  const std::vector<std::string> texts = PrintedTexts(dump);
  for (const char* label : {"Branch: (none)", "Branch: N  North", "Branch: S  South"}) {
    EXPECT_TRUE(Contains(texts, label)) << label;
  }
  // The lines without a branch are a group of their own: the closing entry sits there.
  std::vector<std::string> closings;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (Text(row, "txtCode") == "1010") closings.push_back(Text(row, "numField5"));
  }
  const std::vector<std::string> expected = {"200.00", "(1,200.00)", "(400.00)"};
  EXPECT_EQ(closings, expected);
}

TEST_F(LedgerFixtureCompany, NoSalesLeavesTheSalesPercentageBlank) {
  const std::vector<DumpRow> rows = RowsOf(
      Run("LastYearComparison", {"Period=Custom", "FromDate=2024-07-01", "ToDate=2024-12-31"}),
      "Detail");
  int lines = 0;
  for (const DumpRow& row : rows) {
    if (Text(row, "numField3") == "<hidden>") continue;
    ++lines;
    EXPECT_EQ(Text(row, "numField3"), " ") << Text(row, "txtDescription");
  }
  EXPECT_GT(lines, 3);
}

TEST_F(LedgerFixtureCompany, StatementColumnsFollowTheTotalLevel) {
  const std::vector<DumpRow> rows =
      RowsOf(Run("FinancialStatement", {"ToDate=2024-12-31", "AccountTotalLevel=2"}), "Detail");
  struct Case {
    const char* code;
    const char* inner;
    const char* outer;
  };
  const Case cases[] = {
      {"1010", "(1,400.00)", "<hidden>"},  // level 3, deeper than the total level
      {"3010", " ", "6,299.60"},           // level 2 stands in the outer column
      {"4010", " ", "(5,000.00)"},
  };
  for (const Case& c : cases) {
    const DumpRow* row = RowOf(rows, c.code);
    ASSERT_NE(row, nullptr) << c.code;
    EXPECT_EQ(Text(*row, "numField1"), c.inner) << c.code;
    EXPECT_EQ(Text(*row, "numField2"), c.outer) << c.code;
  }
  const std::vector<std::string> titles = PrintedTexts(
      Run("FinancialStatement", {"Period=MTD", "FromDate=2024-06-05", "ToDate=2024-06-15"}));
  EXPECT_TRUE(Contains(titles, "MTD Financial Statement ending 30/06/2024"));
  EXPECT_TRUE(Contains(titles, "This Month"));
  EXPECT_TRUE(Contains(titles, "MTD Last Year"));
}

}  // namespace
}  // namespace trellin::ledger_testing
