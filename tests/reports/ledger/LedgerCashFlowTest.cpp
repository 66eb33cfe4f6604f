// The Budget Cash Flow's cash lines: each column's closing is its opening plus its movement, the
// columns run on from one another, and the first opens at the bank balance on the statements.

#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

struct CashLines {
  DumpRow opening, movement, closing;
};

CashLines CashLinesOf(const std::string& dump) {
  CashLines lines;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    const std::string caption = Text(row, "txtDescription");
    if (caption == "Opening Bank Balance") lines.opening = row;
    if (caption == "Total Cash Movement") lines.movement = row;
    if (caption == "Closing Bank Balance") lines.closing = row;
  }
  return lines;
}

Currency Column(const DumpRow& row, int n) { return Value(row, "numField" + std::to_string(n)); }

TEST_F(LedgerReports, CashLinesRunOnFromTheBankBalanceColumnByColumn) {
  struct Case {
    const char* frequency;
    const char* before;        // the end of the period before the first column
    std::vector<int> periods;  // the period columns in order
    std::vector<std::pair<int, std::pair<int, int>>> totals;  // column, first and last period
  };
  const Case cases[] = {
      {"Monthly", "2024-11-30", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, {{13, {1, 12}}}},
      // The sub-totals span their four quarters; the total spans all eight.
      {"Quarterly",
       "2023-11-30",
       {1, 2, 3, 4, 6, 7, 8, 9},
       {{5, {1, 4}}, {10, {6, 9}}, {11, {1, 9}}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.frequency);
    // The bank balance on the statements at the end of the period before the first column.
    const Currency bank = Service().Database().ExecuteScalarCurrency(
        "SELECT Sum(glTransaction.Value) AS Opening FROM glBankTransaction INNER JOIN "
        "glTransaction "
        "ON glBankTransaction.glBankTransactionId=glTransaction.glBankTransactionId WHERE "
        "glBankTransaction.StmtPage>0 AND glBankTransaction.Date<=#" +
            std::string(c.before) + "# And glTransaction.glBankTransactionSequence = 0",
        Currency());
    ASSERT_NE(bank, Currency());
    // Rounding Normal, so that the printed figures are the exact ones.
    const std::string dump =
        Run("BudgetCashFlow", {"EndDate=2025-11-30", std::string("Frequency=") + c.frequency,
                               "ShowTotal=true", "Rounding=Normal"});
    const CashLines lines = CashLinesOf(dump);
    ASSERT_FALSE(lines.closing.empty());
    EXPECT_EQ(Column(lines.opening, 1), bank);
    Currency previous_closing = bank;
    Currency all;
    for (int n : c.periods) {
      SCOPED_TRACE(n);
      EXPECT_EQ(Column(lines.opening, n), previous_closing);
      EXPECT_EQ(Column(lines.closing, n), Column(lines.opening, n) + Column(lines.movement, n));
      previous_closing = Column(lines.closing, n);
      all += Column(lines.movement, n);
    }
    for (const auto& [column, span] : c.totals) {
      SCOPED_TRACE(column);
      Currency moved;
      for (int n : c.periods) {
        if (n >= span.first && n <= span.second) moved += Column(lines.movement, n);
      }
      EXPECT_EQ(Column(lines.opening, column), Column(lines.opening, span.first));
      EXPECT_EQ(Column(lines.movement, column), moved);
      EXPECT_EQ(Column(lines.closing, column), Column(lines.opening, column) + moved);
    }
    EXPECT_EQ(previous_closing, bank + all);
  }
}

TEST_F(LedgerBankCompany, TheFirstCashColumnOpensAtZeroWithNoBankBalanceBeforeIt) {
  struct Case {
    const char* end;
    const char* opening;
  };
  // Before the receipt on statement page 3 the bank has nothing on a statement; a year on it
  // holds the receipt alone, the other entries being on no statement page.
  const Case cases[] = {{"EndDate=2025-02-28", "0"}, {"EndDate=2026-02-28", "1,150"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.end);
    const CashLines lines = CashLinesOf(Run("BudgetCashFlow", {c.end}));
    EXPECT_EQ(Text(lines.opening, "numField1"), c.opening);
  }
}

}  // namespace
}  // namespace trellin::ledger_testing
