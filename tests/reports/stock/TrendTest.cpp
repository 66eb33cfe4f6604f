// The trends: the period table of every frequency (trend_periods.tsv); on the demo company each
// row's total against its columns, the report's against plain SQL over the lines of the range,
// the rows against the parties with lines in it, the last month against the sales analysis; and
// the golden page dumps of trend_golden_runs.tsv.

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>

#include "platform/runtime/Strings.h"
#include "reports/stock/TrendPeriods.h"
#include "tests/reports/ReportFixture.h"
#include "tests/reports/stock/StockCompany.h"
#include "tests/support/CaseFile.h"

namespace trellin::reports::testing {
namespace {

TEST(TrendPeriods, EachFrequencyStepsBackAsItsRowsSay) {
  std::set<TrendFrequency> seen;
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("reports/stock/trend_periods.tsv", 15)) {
    SCOPED_TRACE(row.Where());
    const std::optional<TrendFrequency> frequency = ParseTrendFrequency(row.fields[0]);
    ASSERT_TRUE(frequency.has_value());
    seen.insert(*frequency);
    const TrendPeriodTable table = MakeTrendPeriods(*Date::FromIso(row.fields[1]), *frequency);
    for (std::size_t i = 0; i < table.size(); ++i) {
      EXPECT_EQ(table[i].ToIso(), row.fields[i + 2]) << "entry " << i;
    }
  }
  EXPECT_EQ(seen.size(), 8u) << "every frequency has a row";
  EXPECT_FALSE(ParseTrendFrequency("Fortnightly").has_value());
  EXPECT_EQ(ParseTrendFrequency("six monthly"), TrendFrequency::SixMonthly);
}

// The demo company's September 2025 and the eleven months before it.
const std::string kEnd = "EndDate=30/09/2025";
const std::string kRangeLines =
    " TransactionLine.DateProcess>'2024-09-30' AND TransactionLine.DateProcess<'2025-10-01'";

class TrendDemo : public DemoReports {
 protected:
  static std::string Run(const std::string& key, const std::vector<std::string>& values) {
    const std::vector<std::string> pages = RunPages(Open(key, values));
    EXPECT_FALSE(pages.empty());
    if (!pages.empty()) {
      EXPECT_FALSE(pages.back().starts_with("errors:")) << pages.back();
    }
    return Join(pages, "\n");
  }
};

std::string Col(int i) { return "COL" + std::to_string(i); }

// A report footer's total, found in the whole dump: the footer's row runs over several lines, its
// parameters holding line breaks.
Currency FooterAmount(const std::string& dump, const std::string& name) {
  std::smatch found;
  if (!std::regex_search(dump, found, std::regex(" " + name + "=(-?[0-9.]+)@? "))) {
    ADD_FAILURE() << name << " not printed";
    return {};
  }
  return Currency::Parse(found[1].str()).value_or(Currency());
}

TEST_F(TrendDemo, RowsAddUpAndTheReportTotalIsThePlainSumOfTheRange) {
  BooksSql books;
  const std::string dump = Run("SalesTrendAR", {kEnd});
  const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
  ASSERT_GT(rows.size(), 5u);
  Currency columns[13];
  std::set<std::string> printed;
  for (const DumpRow& row : rows) {
    Currency sum;
    for (int i = 1; i <= 12; ++i) {
      sum += DumpedAmount(row, Col(i));
      columns[i] += DumpedAmount(row, Col(i));
    }
    EXPECT_EQ(sum, DumpedAmount(row, "txtTotal")) << row.at("txtItemId").second;
    printed.insert(row.at("txtItemId").second);
  }
  const std::string lines =
      " FROM TransactionLine INNER JOIN Transactions ON "
      "Transactions.TransactionId=TransactionLine.TransactionId INNER JOIN OtherParty ON "
      "OtherParty.OtherPartyId=Transactions.OtherPartyId WHERE OtherParty.IsCustomer=1 AND "
      "TransactionLine.Type BETWEEN 30 AND 34 AND" +
      kRangeLines;
  const Currency books_total = books.Money("SELECT -Sum(TransactionLine.Value)" + lines);
  EXPECT_NE(books_total, Currency());
  EXPECT_EQ(FooterAmount(dump, "rfTotal"), books_total);
  Currency footer_columns;
  for (int i = 1; i <= 12; ++i) {
    EXPECT_EQ(FooterAmount(dump, "rf" + Col(i)), columns[i]) << Col(i);
    footer_columns += columns[i];
  }
  EXPECT_EQ(footer_columns, books_total);

  // The rows are the customers with lines in the range, and only they: some have lines only
  // before it, and print nothing.
  const std::vector<std::string> with_lines =
      books.Texts("SELECT DISTINCT OtherParty.OtherPartyId" + lines);
  EXPECT_EQ(printed, std::set<std::string>(with_lines.begin(), with_lines.end()));
  const std::vector<std::string> only_before = books.Texts(
      "SELECT Transactions.OtherPartyId FROM TransactionLine INNER JOIN Transactions ON "
      "Transactions.TransactionId=TransactionLine.TransactionId WHERE TransactionLine.Type "
      "BETWEEN 30 AND 34 GROUP BY Transactions.OtherPartyId HAVING "
      "Max(TransactionLine.DateProcess)<'2024-10-01'");
  ASSERT_FALSE(only_before.empty()) << "the demo has a customer who stopped buying";
  for (const std::string& code : only_before) EXPECT_EQ(printed.count(code), 0u) << code;
}

TEST_F(TrendDemo, TheLastMonthIsTheSalesAnalysisNetSalesOfThatMonth) {
  const std::string trend = Run("SalesTrendAR", {kEnd, "Frequency=EOM"});
  const std::string analysis =
      Run("SalesAnalysisAR", {"Period=Custom", "PeriodDateFrom=2025-09-01",
                              "PeriodDateTo=2025-09-30", "ShowTransactions=False"});
  std::map<std::string, Currency> net;
  for (const DumpRow& row : RowsOf(analysis, "Detail")) {
    net[row.at("txtCode").second] = DumpedAmount(row, "txtNet");
  }
  ASSERT_GT(net.size(), 5u);
  std::map<std::string, Currency> last;
  for (const DumpRow& row : RowsOf(trend, "Detail")) {
    const Currency september = DumpedAmount(row, "COL12");
    if (september != Currency()) last[row.at("txtItemId").second] = september;
  }
  for (auto& [code, amount] : net) {
    if (amount == Currency()) continue;
    EXPECT_EQ(last[code], amount) << code;
  }
  EXPECT_EQ(last.size(), net.size());
}

// With no end date the periods end today (the tests' 31 March 2026) and every line is read: each
// customer with any sale has a row, and the total still holds only the twelve months.
TEST_F(TrendDemo, WithoutAnEndDateEveryCustomerHasARowAndTheTotalKeepsToItsPeriods) {
  BooksSql books;
  const std::string dump = Run("SalesTrendAR", {});
  std::set<std::string> printed;
  for (const DumpRow& row : RowsOf(dump, "Detail")) printed.insert(row.at("txtItemId").second);
  const std::string lines =
      " FROM TransactionLine INNER JOIN Transactions ON "
      "Transactions.TransactionId=TransactionLine.TransactionId INNER JOIN OtherParty ON "
      "OtherParty.OtherPartyId=Transactions.OtherPartyId WHERE OtherParty.IsCustomer=1 AND "
      "TransactionLine.Type BETWEEN 30 AND 34";
  const std::vector<std::string> customers =
      books.Texts("SELECT DISTINCT OtherParty.OtherPartyId" + lines);
  EXPECT_EQ(printed, std::set<std::string>(customers.begin(), customers.end()));
  const Currency year = books.Money(
      "SELECT -Sum(TransactionLine.Value)" + lines +
      " AND TransactionLine.DateProcess>'2025-03-31' AND TransactionLine.DateProcess<'2026-04-01'");
  EXPECT_NE(year, books.Money("SELECT -Sum(TransactionLine.Value)" + lines));
  EXPECT_EQ(FooterAmount(dump, "rfTotal"), year);
}

TEST_F(TrendDemo, ItemQuantitiesAddUpToThePlainSumOfTheirLines) {
  BooksSql books;
  const std::string dump = Run("ItemSalesTrend", {kEnd, "Frequency=Monthly", "ValueType=Quantity"});
  const double quantity = books.Number(
      "SELECT -Sum(TransactionLine.Quantity) FROM TransactionLine WHERE TransactionLine.Type "
      "BETWEEN 30 AND 34 AND" +
      kRangeLines);
  EXPECT_NE(quantity, 0);
  EXPECT_NEAR(FooterAmount(dump, "rfTotal").ToDouble(), quantity, 0.005);
}

TEST_F(TrendDemo, PageDumps) {
  ExpectGoldenRuns(Service(), "stock", "reports/stock/trend_golden_runs.tsv");
}

class TrendRefusals : public StockCompany {};

TEST_F(TrendRefusals, AnEndDateThatIsNoDateIsRefused) {
  EXPECT_EQ(Join(Refusals("SalesTrendAR", {"EndDate=31/02/2026"}), "\n"),
            "End Date: \"31/02/2026\" is not a date or a date expression.");
  EXPECT_EQ(Join(Refusals("ItemPurchaseTrend", {"Frequency=Fortnightly"}), "\n"),
            "Frequency: \"Fortnightly\" is not one of the choices (Daily, Weekly, F/Nightly, "
            "Monthly, EOM, Quarterly, Six Monthly, Yearly).");
}

}  // namespace
}  // namespace trellin::reports::testing
