// The statement run on the demo company against plain SQL: the customers issued are those with a
// balance at the date by document date or a document dated in the month; each stub's balance is
// that balance; the lines end on it in the balance-forward style, and in the open-item style on
// what the customer's documents processed by the date add up to.

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "core/host/Database.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/DemoCache.h"

namespace trellin::reports::testing {
namespace {

class StatementDemo : public DemoReports {
 protected:
  static std::map<std::string, Currency> ByCustomer(const std::string& sql) {
    std::map<std::string, Currency> sums;
    auto rs = Service().Database().Query(sql);
    for (; !rs->Eof(); rs->MoveNext()) {
      sums[rs->Value(0).Text()] = rs->Value(1).IsNull() ? Currency() : rs->Value(1).ToCurrency();
    }
    return sums;
  }
};

// A money value as dumped ("1819.5@"); nullopt for anything else.
std::optional<Currency> MoneyIn(const DumpRow& row, const char* name) {
  auto found = row.find(name);
  if (found == row.end()) return std::nullopt;
  std::string value = found->second.first;
  if (value.empty() || value.back() != '@') return std::nullopt;
  value.pop_back();
  return Currency::Parse(value);
}

struct PrintedStatement {
  Currency stub_balance;
  Currency last_balance;  // of the lines, or the opening balance when there are none
  int stubs = 0;
};

std::map<std::string, PrintedStatement> StatementsOf(const std::vector<std::string>& pages) {
  std::map<std::string, PrintedStatement> statements;
  Currency running;
  for (const std::string& page : pages) {
    EXPECT_EQ(page.rfind("errors:", 0), std::string::npos) << page;
    for (const DumpRow& row : RowsOf(page, "ReportHeader")) {
      if (auto opening = MoneyIn(row, "numOpeningBalance")) running = *opening;
    }
    for (const DumpRow& row : RowsOf(page, "Detail")) {
      if (auto balance = MoneyIn(row, "txtBalance")) running = *balance;
    }
    for (const DumpRow& row : RowsOf(page, "PageFooter")) {
      auto balance = MoneyIn(row, "numpfBalance");
      if (!balance) continue;
      const std::string code = row.at("txtCode").second;
      PrintedStatement& statement = statements[code];
      statement.stub_balance = *balance;
      statement.last_balance = running;
      ++statement.stubs;
      running = Currency();
    }
  }
  return statements;
}

TEST_F(StatementDemo, CustomersAndBalancesAgreeWithTheLedgerByDocumentDate) {
  for (const char* other : {"", "[OI]"}) {
    SCOPED_TRACE(other);
    DesignerPtr designer = Open("StatementAR", {std::string("Other=") + other});
    const Date as_at = designer->TLReport()->Parameters().Value("DateAsAt").ToDate();
    const std::string from = Database::SQLDate(as_at.FirstOfMonth());
    const std::string to = Database::SQLDate(as_at.AddDays(1));
    const auto printed = StatementsOf(DumpPages(designer));

    const std::string customers =
        " AND OtherPartyId In (SELECT OtherPartyId FROM OtherParty WHERE IsCustomer=True)";
    const auto balances = ByCustomer(
        "SELECT OtherPartyId,Sum(-Value) FROM Transactions WHERE Type Between 30 And 39 AND "
        "Date<" +
        to + customers + " GROUP BY OtherPartyId");
    const auto moved = ByCustomer(
        "SELECT OtherPartyId,Count(*) FROM Transactions WHERE Type Between 30 And 39 AND Date>=" +
        from + " AND Date<" + to + customers + " GROUP BY OtherPartyId");
    const auto processed = ByCustomer(
        "SELECT OtherPartyId,Sum(-Value) FROM Transactions WHERE Type Between 30 And 39 AND "
        "DateProcess<" +
        to + customers + " GROUP BY OtherPartyId");

    std::set<std::string> expected;
    for (const auto& [code, balance] : balances) {
      if (balance != Currency()) expected.insert(code);
    }
    for (const auto& [code, count] : moved) expected.insert(code);
    std::set<std::string> issued;
    for (const auto& [code, statement] : printed) issued.insert(code);
    if (*other == '\0') {
      EXPECT_EQ(issued, expected);
    } else {
      // Open item adds the customers with an item open at the date, whatever they net to.
      for (const std::string& code : expected) EXPECT_EQ(issued.count(code), 1u) << code;
    }
    EXPECT_GT(issued.size(), 100u);

    for (const auto& [code, statement] : printed) {
      SCOPED_TRACE(code);
      EXPECT_EQ(statement.stubs, 1);
      const auto balance = balances.find(code);
      EXPECT_EQ(statement.stub_balance, balance == balances.end() ? Currency() : balance->second);
      if (*other == '\0') {
        EXPECT_EQ(statement.last_balance, statement.stub_balance);
      } else {
        const auto sum = processed.find(code);
        EXPECT_EQ(statement.last_balance, sum == processed.end() ? Currency() : sum->second);
      }
    }
  }
}

TEST_F(StatementDemo, Goldens) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/statement_demo_golden_runs.tsv");
}

// The Australian company's busiest account: "ABN: " under the address and on the stub.
TEST(StatementAustralia, TheBusiestAccountReadsAbnOnTwoPages) {
  auto service = host::ReportService::Open(trellin::testing::CachedDemoCompany("AU"));
  const std::vector<std::string> pages =
      DumpPages(OpenWithValues(*service, "StatementAR", {"Customers=REEFC001"}));
  ASSERT_EQ(pages.size(), 2u);
  ExpectGolden("receivables", "StatementAR-AU-two-pages", Join(pages, "\n"));
}

}  // namespace
}  // namespace trellin::reports::testing
