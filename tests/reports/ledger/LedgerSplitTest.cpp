// Statements split by branch or department on the fixture company: the code lines, their
// figures against their account's, and the General Ledger's openings and lines by code.

#include <map>

#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

// An account's line of a dump and the split lines printed under it.
struct SplitAccount {
  DumpRow account;
  std::vector<DumpRow> codes;
};

bool IsAccountLine(const DumpRow& row) {
  auto code = row.find("txtCode");
  return code != row.end() && !code->second.second.empty();
}

// Split lines have a description and no code column of their own; ledger lines have a Trans.
bool IsSplitLine(const DumpRow& row) { return !row.count("txtCode") && !row.count("txtTrans"); }

std::map<std::string, SplitAccount> SplitAccounts(const std::string& dump) {
  std::map<std::string, SplitAccount> out;
  std::string current;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (IsAccountLine(row)) {
      current = Text(row, "txtCode");
      out[current].account = row;
    } else if (IsSplitLine(row) && !current.empty()) {
      out[current].codes.push_back(row);
    } else if (row.count("txtCode")) {
      current.clear();
    }
  }
  return out;
}

std::vector<std::string> CodeDescriptions(const SplitAccount& account) {
  std::vector<std::string> out;
  for (const DumpRow& row : account.codes) out.push_back(Text(row, "txtDescription"));
  return out;
}

TEST_F(LedgerBankCompany, SplitLinesAddUpToTheirAccountInEveryColumnThatSums) {
  struct Case {
    const char* key;
    std::vector<std::string> assignments;
    std::vector<int> columns;
  };
  const Case cases[] = {
      {"TrialBalance", {"ToDate=2025-02-28", "Split=Branch"}, {1, 2, 3, 4, 5}},
      // Credit accounts turn round on the split lines as on their account's.
      {"FinancialStatement",
       {"ToDate=2025-02-28", "Split=Department", "AdjustCreditTypeAccounts=true"},
       {1, 2, 3}},
      // The retained earnings row takes the profit by code.
      {"FinancialStatement",
       {"ToDate=2025-02-28", "Split=Branch", "AddNetProfitToREAccount=true"},
       {1, 2, 3}},
      {"PeriodSummary",
       {"EndDate=2025-02-28", "Split=Department", "ShowTotal=true"},
       {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.key) + " " + c.assignments[1]);
    int split_accounts = 0;
    for (const auto& [id, account] : SplitAccounts(Run(c.key, c.assignments))) {
      if (account.codes.empty()) continue;
      ++split_accounts;
      for (int n : c.columns) {
        const std::string field = "numField" + std::to_string(n);
        Currency sum;
        for (const DumpRow& code : account.codes) sum += Value(code, field);
        EXPECT_EQ(sum, Value(account.account, field)) << id << " " << field;
      }
    }
    EXPECT_GE(split_accounts, 5);
  }
}

TEST_F(LedgerBankCompany, EveryCodeTheLedgerHasUsedGetsALineNoCodeOnlyWhereLinesHaveNone) {
  struct Case {
    const char* split;
    std::vector<std::string> codes;
  };
  const Case cases[] = {
      // The ledger has lines with no branch; every branch shows, with lines in the period or not.
      {"Branch", {"No Branch", "N, North", "S, South"}},
      // A code the department list lacks prints with an empty name.
      {"Department", {"No Department", "D1, Retail", "GONE, "}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.split);
    auto accounts =
        SplitAccounts(Run("TrialBalance", {"ToDate=2025-02-28", std::string("Split=") + c.split}));
    for (const char* id : {"1010", "3020", "4010"}) {
      EXPECT_EQ(CodeDescriptions(accounts[id]), c.codes) << id;
    }
    // Loan has lines of no branch alone: the others show with their zero columns hidden.
    const SplitAccount& loan = accounts["4010"];
    ASSERT_EQ(loan.codes.size(), 3u);
    EXPECT_EQ(Text(loan.codes[1], "numField3"), "<hidden>");
    EXPECT_EQ(Text(loan.codes[1], "numField5"), "0.00");
  }
}

TEST_F(LedgerFixtureCompany, NoDepartmentIsTheOnlyLineWhenTheLedgerHasNoDepartments) {
  auto accounts = SplitAccounts(Run("TrialBalance", {"ToDate=2025-03-31", "Split=Department"}));
  EXPECT_EQ(CodeDescriptions(accounts["1010"]), std::vector<std::string>{"No Department"});
}

TEST_F(LedgerBankCompany, GeneralLedgerSplitOpensEachCodeAndItsLinesEndAtMidnight) {
  const std::string dump = Run("GeneralLedger", {"Period=Custom", "FromDate=2025-02-01",
                                                 "ToDate=2025-02-28", "Split=Branch"});
  // Petty cash: the account's own figures hide; each branch opens, and North's lines follow.
  // The line stamped 4pm on the last day is left out: a split's lines end at midnight.
  std::vector<std::string> lines;
  bool in_petty_cash = false;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (IsAccountLine(row)) {
      in_petty_cash = Text(row, "txtCode") == "3020";
      if (in_petty_cash) {
        EXPECT_EQ(Text(row, "numField3"), "<hidden>");
        EXPECT_EQ(Text(row, "txtField1"), "<hidden>");
      }
      continue;
    }
    if (!in_petty_cash) continue;
    if (row.count("txtTrans")) {
      lines.push_back("  " + Text(row, "txtComment") + " " + Text(row, "txtBalance"));
    } else if (IsSplitLine(row)) {
      lines.push_back(Text(row, "txtDescription") + " " + Text(row, "txtField1") + " " +
                      Text(row, "numField3"));
    }
  }
  const std::vector<std::string> expected = {
      "No Branch Opening 0.40", "N, North Opening 0.00", "  Float 600.00",
      "  Float 1,200.00",       "S, South Opening 0.00",
  };
  EXPECT_EQ(lines, expected);
  // Unsplit, the late line is there.
  const std::string unsplit =
      Run("GeneralLedger", {"Period=Custom", "FromDate=2025-02-01", "ToDate=2025-02-28"});
  EXPECT_NE(unsplit.find("Late float"), std::string::npos);
  EXPECT_EQ(dump.find("Late float"), std::string::npos);
}

TEST_F(LedgerBankCompany, ASplitOtherThanBranchOrDepartmentStopsTheRunNamingIt) {
  const std::vector<std::string> pages = RunPages(Open("TrialBalance", {"Split=Region"}));
  ASSERT_FALSE(pages.empty());
  EXPECT_EQ(pages.back(),
            "errors:\nActiveReport_ReportStart: Split: 'Region' is not a split; use Branch, "
            "Department or nothing.\n");
}

}  // namespace
}  // namespace trellin::ledger_testing
