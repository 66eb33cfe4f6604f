// The ledger's figures on the demo company against plain SQL: closing balances, the side's
// total, balances at the present and as at a past month end, where the customer list's balance
// total is the ledger's.

#include <gtest/gtest.h>

#include <map>
#include <regex>

#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

class LedgerDemo : public DemoReports {
 protected:
  static std::vector<PrintedParty> Parties(const std::string& key,
                                           const std::vector<std::string>& assignments) {
    const std::vector<std::string> pages = RunPages(Open(key, assignments));
    EXPECT_FALSE(pages.empty());
    if (!pages.empty()) {
      EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    }
    return PartiesOf(pages);
  }
};

// The side's sum of `column` by party, turned so a growing balance is positive, over the rows
// `where` picks.
std::string SideSum(const std::string& key, const std::string& column, const std::string& where) {
  const bool ar = key == "LedgerAR";
  return std::string("SELECT OtherPartyId,Sum(") + (ar ? "-" : "") + column +
         ") FROM Transactions WHERE Type Between " + (ar ? "30 And 39" : "20 And 29") +
         (where.empty() ? "" : " AND " + where) + " GROUP BY OtherPartyId";
}

// Each party of a run that is not back-dated closes on its last running balance; a party prints
// because it moved or opened with a balance, so it always has a row.
void ExpectEachClosesOnItsLastBalance(const std::vector<PrintedParty>& parties) {
  EXPECT_GT(parties.size(), 10u);
  for (const PrintedParty& party : parties) {
    ASSERT_FALSE(party.rows.empty()) << party.code;
    EXPECT_EQ(party.closing_value, party.last_balance) << party.code;
  }
}

// Besides the runs of the tests below, which check it on their own pages (the month to date on
// both sides, everything on the payables side).
TEST_F(LedgerDemo, EachPartyClosesOnItsLastRunningBalance) {
  const struct {
    const char* key;
    std::vector<std::string> assignments;
  } runs[] = {
      {"LedgerAR", {"Period=QTD", "TransactionOrderBy=Reference"}},
      {"LedgerAR", {"Period=Custom", "DateFrom=2025-05-01", "DateTo=2025-05-31"}},
      {"LedgerAP", {"Period=YTD", "TransactionOrderBy=Entered"}},
  };
  for (const auto& run : runs) {
    SCOPED_TRACE(std::string(run.key) + " " + ::testing::PrintToString(run.assignments));
    ExpectEachClosesOnItsLastBalance(Parties(run.key, run.assignments));
  }
}

TEST_F(LedgerDemo, AllTotalsTheSide) {
  for (const char* key : {"LedgerAR", "LedgerAP"}) {
    SCOPED_TRACE(key);
    const std::vector<std::string> pages = RunPages(Open(key, {"Period=ALL"}));
    // The footer's row runs over several lines (the parameters), so its total is found by name.
    std::smatch total_match;
    ASSERT_TRUE(std::regex_search(pages.back(), total_match, std::regex(R"(rfBalance=(\S+)@)")));
    const Currency total = Currency::Parse(total_match[1].str()).value();
    Currency by_value;
    Currency by_remaining;
    for (const auto& [code, sum] : ByParty(SideSum(key, "Value", ""))) by_value += sum;
    for (const auto& [code, sum] : ByParty(SideSum(key, "ValueRemaining", ""))) {
      by_remaining += sum;
    }
    EXPECT_EQ(total, by_value);
    EXPECT_EQ(total, by_remaining);
    // Reading the receivables' whole ledger back into parties, the largest run of all, would
    // only repeat on more rows what the other runs check.
    if (std::string(key) == "LedgerAP") ExpectEachClosesOnItsLastBalance(PartiesOf(pages));
  }
}

TEST_F(LedgerDemo, MonthToDateAtThePresentClosesOnWhatIsOpen) {
  for (const char* key : {"LedgerAR", "LedgerAP"}) {
    SCOPED_TRACE(key);
    std::map<std::string, Currency> open = ByParty(SideSum(key, "ValueRemaining", ""));
    const std::vector<PrintedParty> parties = Parties(key, {});
    ExpectEachClosesOnItsLastBalance(parties);
    for (const PrintedParty& party : parties) {
      EXPECT_EQ(party.closing_value, open[party.code]) << party.code;
      open.erase(party.code);
    }
    // Whoever did not print owes nothing and is owed nothing.
    for (const auto& [code, sum] : open) EXPECT_EQ(sum, Currency()) << code << " did not print";
  }
}

TEST_F(LedgerDemo, OutstandingAtAPastMonthEndRebuildsEachBalance) {
  for (const char* key : {"LedgerAR", "LedgerAP"}) {
    SCOPED_TRACE(key);
    // The rows go by DateProcess, the party's balance by the documents' own dates.
    std::map<std::string, Currency> processed =
        ByParty(SideSum(key, "Value", "DateProcess<#2025-07-01#"));
    std::map<std::string, Currency> dated = ByParty(SideSum(key, "Value", "Date<#2025-07-01#"));
    int seams = 0;
    const std::vector<std::string> pages =
        RunPages(Open(key, {"Period=Outstanding", "DateAsAt=2025-06-30"}));
    const std::vector<PrintedParty> parties = PartiesOf(pages);
    EXPECT_GT(parties.size(), 10u);
    for (const PrintedParty& party : parties) {
      EXPECT_EQ(party.last_balance, processed[party.code]) << party.code;
      EXPECT_EQ(party.closing_value, dated[party.code]) << party.code;
      EXPECT_NE(party.closing_value, Currency()) << party.code;
      if (party.closing_value != party.last_balance) ++seams;
      dated.erase(party.code);
    }
    for (const auto& [code, sum] : dated) EXPECT_EQ(sum, Currency()) << code << " did not print";
    // The demo company dates a few documents at the month's end and processes them after it.
    if (std::string(key) == "LedgerAR") {
      EXPECT_GT(seams, 0);
      // What the customers owe as at the date on their list is the ledger's closing total.
      std::smatch ledger_total, list_total;
      ASSERT_TRUE(std::regex_search(pages.back(), ledger_total, std::regex(R"(rfBalance=(\S+)@)")));
      const std::string list = Join(
          RunPages(Open("CustomerList", {"Columns=Code,Balance", "DateAsAt=2025-06-30"})), "\n");
      ASSERT_TRUE(
          std::regex_search(list, list_total, std::regex(R"(ReportFooterSummaryBalance=(\S+)@)")));
      EXPECT_EQ(list_total[1].str(), ledger_total[1].str());
    }
  }
}

}  // namespace
}  // namespace trellin::reports::testing
