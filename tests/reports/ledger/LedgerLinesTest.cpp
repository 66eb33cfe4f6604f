// The General Ledger's lines on the fixture company: the bank mark and comment of each line, tax,
// rounding and the running balance, and the lines against the trial balance in plain SQL.

#include <map>

#include "platform/runtime/Currency.h"
#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

// The ledger lines of a General Ledger dump by the account whose opening line they follow.
std::map<std::string, std::vector<DumpRow>> LinesByAccount(const std::string& dump) {
  std::map<std::string, std::vector<DumpRow>> out;
  std::string account;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (row.count("txtTrans")) {
      out[account].push_back(row);
    } else if (Text(row, "txtField1") == "Opening") {
      account = Text(row, "txtCode");
      out[account];
    }
  }
  return out;
}

const std::vector<std::string> kFebruary = {"Period=Custom", "FromDate=2025-02-01",
                                            "ToDate=2025-02-28"};

std::vector<std::string> With(std::vector<std::string> base, const std::string& more) {
  base.push_back(more);
  return base;
}

TEST_F(LedgerBankCompany, EachLineCarriesItsBankMarkAndItsPartyInTheComment) {
  struct Expected {
    const char* account;
    const char* mark;
    const char* comment;
  };
  const Expected expected[] = {
      // Another line of a party's receipt, whose own comment is empty: no "; ".
      {"1010", "b", "ALPHA, Alpha Marine"},
      {"1010", "b", "Refund; ALPHA, Alpha Marine"},
      // Tax category "*" marks the line before its bank entry does.
      {"1210", "*", "Bank fee"},
      // The bank's own line: "x" once on a statement page, "?" before.
      {"3010", "x", "Receipt; ALPHA, Alpha Marine"},
      // A bank entry with no party keeps its comment alone.
      {"3010", "?", "Bank fee"},
      {"3010", "?", "ALPHA, Alpha Marine"},
      // No bank entry at all.
      {"3020", " ", "Float"},
      {"3020", " ", "Float"},
      {"3020", " ", "Late float"},
  };
  auto lines = LinesByAccount(Run("GeneralLedger", kFebruary));
  std::map<std::string, std::size_t> seen;
  for (const Expected& e : expected) {
    SCOPED_TRACE(std::string(e.account) + " " + e.comment);
    const std::size_t n = seen[e.account]++;
    ASSERT_LT(n, lines[e.account].size());
    EXPECT_EQ(Text(lines[e.account][n], "txtTType"), e.mark);
    EXPECT_EQ(Text(lines[e.account][n], "txtComment"), e.comment);
  }
  for (const auto& [account, count] : seen) EXPECT_EQ(lines[account].size(), count) << account;
  // The account's code stands on its first line only.
  EXPECT_EQ(Text(lines["3010"][0], "txtAccountId"), "3010");
  EXPECT_EQ(Text(lines["3010"][1], "txtAccountId"), "");
}

TEST_F(LedgerBankCompany, DebitsAndCreditsPrintBlankForZeroAndTaxInclusiveAddsTheTax) {
  struct Case {
    bool tax_inclusive;
    const char* credit;  // of the receipt's sales line
    const char* balance;
  };
  // The sale of 1,000.00 carries 150.00 of tax; the opening is the sales of 1,400.00 before
  // February.
  const Case cases[] = {{false, "1,000.00", "(2,400.00)"}, {true, "1,150.00", "(2,550.00)"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.tax_inclusive);
    auto lines = LinesByAccount(
        Run("GeneralLedger",
            With(kFebruary, c.tax_inclusive ? "TaxInclusive=true" : "TaxInclusive=false")));
    ASSERT_EQ(lines["1010"].size(), 2u);
    const DumpRow& sale = lines["1010"][0];
    EXPECT_EQ(Text(sale, "txtDebit"), " ");
    EXPECT_EQ(Text(sale, "txtCredit"), c.credit);
    EXPECT_EQ(Text(sale, "txtBalance"), c.balance);
    EXPECT_EQ(Text(lines["1010"][1], "txtCredit"), " ");
  }
}

TEST_F(LedgerBankCompany, OnlyThousandsRoundsALineAndItsBalanceDriftsFromTheTrueOne) {
  struct Case {
    const char* rounding;
    std::vector<std::string> balances;  // of petty cash, opening 0.40, lines 600, 600 and 100
    std::vector<std::string> debits;
  };
  const Case cases[] = {
      {"Normal", {"600.40", "1,200.40", "1,300.40"}, {"600.00", "600.00", "100.00"}},
      // The opening prints rounded and the balance runs on from it; the lines keep their cents.
      {"Whole", {"600", "1,200", "1,300"}, {"600", "600", "100"}},
      // Each line is rounded to thousands before it is added: 1 + 1 + 0 makes 2, where the true
      // 1,300.40 rounds to 1.
      {"Thousands", {"1", "2", "2"}, {"1", "1", " "}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.rounding);
    auto lines = LinesByAccount(
        Run("GeneralLedger", With(kFebruary, std::string("Rounding=") + c.rounding)));
    ASSERT_EQ(lines["3020"].size(), c.balances.size());
    for (std::size_t i = 0; i < c.balances.size(); ++i) {
      EXPECT_EQ(Text(lines["3020"][i], "txtBalance"), c.balances[i]) << i;
      EXPECT_EQ(Text(lines["3020"][i], "txtDebit"), c.debits[i]) << i;
    }
  }
}

// The sums of the ledger lines of every account, by plain SQL-free reading of the dump, against
// the trial balance of the same period: debits, credits and the closing balance.
struct AccountSums {
  Currency debits, credits, last_balance;
  bool any = false;
};

std::map<std::string, AccountSums> SumLines(const std::string& dump) {
  std::map<std::string, AccountSums> out;
  for (const auto& [account, lines] : LinesByAccount(dump)) {
    AccountSums& sums = out[account];
    for (const DumpRow& line : lines) {
      sums.debits += Value(line, "txtDebit");
      sums.credits += Value(line, "txtCredit");
      sums.last_balance = Value(line, "txtBalance");
      sums.any = true;
    }
  }
  return out;
}

TEST_F(LedgerBankCompany, LinesAddUpToTheTrialBalanceAndLeaveOutOnlyTheYearEndLines) {
  struct Case {
    const char* from;
    const char* to;
    int accounts_with_lines;
    int accounts_with_year_end;
  };
  // The first period has no year-end line; the second holds the closing entry of March 2024 on
  // sales and retained earnings, which has no other line in it.
  const Case cases[] = {{"2024-04-01", "2025-03-31", 5, 0}, {"2024-03-01", "2024-04-30", 2, 2}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.from);
    const std::vector<std::string> period = {"Period=Custom", std::string("FromDate=") + c.from,
                                             std::string("ToDate=") + c.to};
    const auto sums = SumLines(Run("GeneralLedger", period));
    std::map<std::string, DumpRow> trial;
    for (const DumpRow& row : RowsOf(Run("TrialBalance", period), "Detail")) {
      if (row.count("txtCode")) trial[Text(row, "txtCode")] = row;
    }
    Database& database = Service().Database();
    auto accounts = database.Query("SELECT AccountId FROM Account WHERE Post Is Null");
    int checked = 0;
    int year_end = 0;
    for (; !accounts->Eof(); accounts->MoveNext()) {
      const std::string id = accounts->Value(0).Text();
      SCOPED_TRACE(id);
      const std::string in_period =
          " WHERE AccountId='" + id + "' AND Date>=#" + c.from + "# AND Date<=#" + c.to + "#";
      // What the lines leave out and the totals keep: the year-end lines of the period.
      const Currency year_end_debits = database.ExecuteScalarCurrency(
          "SELECT Sum(Value) FROM glTransaction" + in_period + " AND Type Is Not Null AND Value>0",
          Currency());
      const Currency year_end_credits = database.ExecuteScalarCurrency(
          "SELECT -Sum(Value) FROM glTransaction" + in_period + " AND Type Is Not Null AND Value<0",
          Currency());
      const Currency opening =
          database.ExecuteScalarCurrency("SELECT Sum(Value) FROM glTransaction WHERE AccountId='" +
                                             id + "' AND Date<#" + c.from + "#",
                                         Currency());
      if (year_end_debits != Currency() || year_end_credits != Currency()) ++year_end;
      auto it = sums.find(id);
      const AccountSums lines = it == sums.end() ? AccountSums{} : it->second;
      auto tb = trial.find(id);
      const Currency tb_debits = tb == trial.end() ? Currency() : Value(tb->second, "numField2");
      const Currency tb_credits = tb == trial.end() ? Currency() : Value(tb->second, "numField3");
      EXPECT_EQ(lines.debits + year_end_debits, tb_debits);
      EXPECT_EQ(lines.credits + year_end_credits, tb_credits);
      if (lines.any) {
        EXPECT_EQ(lines.last_balance, opening + lines.debits - lines.credits);
        ++checked;
      }
    }
    EXPECT_EQ(checked, c.accounts_with_lines);
    EXPECT_EQ(year_end, c.accounts_with_year_end);
  }
}

}  // namespace
}  // namespace trellin::ledger_testing
