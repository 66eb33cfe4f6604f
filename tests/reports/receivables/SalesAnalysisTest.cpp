// The sales and purchase analyses on the demo company: their figures against plain SQL over the
// same lines, the gross profit percentage of rows, groups and the report from their own sums, the
// client order, the tax and rounding options, and the golden page dumps of
// analysis_golden_runs.tsv.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <set>

#include "platform/runtime/Strings.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/ardsSalesSummaryReport.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

// September 2026: a whole month of the demo company's sales.
const std::vector<std::string> kMonth = {"Period=Custom", "PeriodDateFrom=2025-09-01",
                                         "PeriodDateTo=2025-09-30"};
const std::string kMonthLines =
    " TransactionLine.DateProcess>='2025-09-01' AND TransactionLine.DateProcess<'2025-10-01'";

std::vector<std::string> With(std::vector<std::string> values,
                              const std::vector<std::string>& more) {
  values.insert(values.end(), more.begin(), more.end());
  return values;
}

// The value and the printed text of a footer's total of `column`, from a dump's row lines: the
// column layout names it section + "Summary" + column, which may hold a blank ("GP %").
struct Total {
  double value = 0;
  std::string text;
};
std::vector<Total> TotalsOf(const std::string& dump, const std::string& section,
                            const std::string& column) {
  const std::regex cell(
      std::regex_replace(section + "Summary" + column, std::regex(R"([%])"), R"(\%)") +
      R"re(=("[^"]*"|\S+) "([^"]*)")re");
  std::vector<Total> totals;
  // A row's cells may follow a text of several lines, so the whole dump is searched.
  for (auto it = std::sregex_iterator(dump.begin(), dump.end(), cell); it != std::sregex_iterator();
       ++it) {
    std::string value = (*it)[1];
    if (!value.empty() && value.back() == '@') value.pop_back();
    totals.push_back({ParseNumber(value).value_or(0), (*it)[2]});
  }
  return totals;
}

// The month's lines of `types` with their document, party and item, for plain SQL sums.
std::string MonthsLines(const std::string& types) {
  return " FROM TransactionLine INNER JOIN Transactions ON Transactions.TransactionId = "
         "TransactionLine.TransactionId INNER JOIN OtherParty ON OtherParty.OtherPartyId = "
         "Transactions.OtherPartyId INNER JOIN Item ON Item.ItemId = TransactionLine.ItemId "
         "WHERE " +
         types + " AND" + kMonthLines;
}

// The values of the detail rows' cells whose names end in `column`, in print order.
std::vector<double> DetailValues(const std::string& dump, const std::string& column) {
  std::vector<double> values;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    for (const auto& [name, cell] : row) {
      if (!name.ends_with(column)) continue;
      std::string value = cell.first;
      if (!value.empty() && value.back() == '@') value.pop_back();
      values.push_back(ParseNumber(value).value_or(0));
    }
  }
  return values;
}

double ReportTotal(const std::string& dump, const std::string& column) {
  const std::vector<Total> totals = TotalsOf(dump, "ReportFooter", column);
  return totals.empty() ? -1e300 : totals.back().value;
}

class SalesAnalysis : public DemoReports {
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

TEST(GrossProfit, PercentFollowsNetAndCosts) {
  struct Case {
    double net, costs, percent;
  } const cases[] = {
      {100, 60, 40},   // 40 of 100
      {0, 25, -100},   // costs on nothing sold
      {0, 0, 0},       // nothing at all
      {-50, -20, 60},  // a credit: (-50 - -20) / -50
      {80, 100, -25},  // sold below cost
  };
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(GrossProfitPercent(Currency::FromDouble(c.net), Currency::FromDouble(c.costs)),
                     c.percent)
        << c.net << " " << c.costs;
  }
}

TEST_F(SalesAnalysis, TotalsOfAMonthEqualTheSumsOfItsLines) {
  BooksSql books;
  const std::string from = MonthsLines(
      "TransactionLine.Type BETWEEN 30 AND 34 AND (IsCustomer=1 OR IsCustomer IS NULL)");
  const std::string dump = Run("SalesAnalysisAR", With(kMonth, {"Summary=True"}));
  struct Column {
    const char* name;
    const char* sum;
  } const columns[] = {{"Sales", "-Sum(TransactionLine.Value+TransactionLine.Discount)"},
                       {"Disc", "-Sum(TransactionLine.Discount)"},
                       {"Net", "-Sum(TransactionLine.Value)"},
                       {"Costs", "-Sum(TransactionLine.ItemCost)"}};
  for (const Column& c : columns) {
    const Currency books_sum = books.Money("SELECT " + std::string(c.sum) + from);
    EXPECT_NE(books_sum, Currency()) << c.name;
    EXPECT_NEAR(ReportTotal(dump, c.name), books_sum.ToDouble(), 0.00005) << c.name;
  }
  const std::vector<std::string> qty = books.Texts("SELECT -Sum(TransactionLine.Quantity)" + from);
  EXPECT_NEAR(ReportTotal(dump, "Qty"), ParseNumber(qty.at(0)).value_or(0), 0.005);

  // Items count the same sales lines (no stock lines without the stock options).
  const std::string items = Run("ItemSalesAnalysis", With(kMonth, {"Summary=True"}));
  EXPECT_NEAR(ReportTotal(items, "Net"), ReportTotal(dump, "Net"), 0.00005);
  EXPECT_NEAR(ReportTotal(items, "Costs"), ReportTotal(dump, "Costs"), 0.00005);
}

// With its lines, a row sends one query for them and the report nothing else beside its aggregate,
// whether a row's lines run over pages or not; split by address, each address group of a row
// adds the one look-up of its heading. No query is ever sent twice.
TEST_F(SalesAnalysis, WithLinesEachRowAsksForItsLinesOnce) {
  struct Case {
    const char* key;
    const char* split;
  } const cases[] = {{"SalesAnalysisAR", "SplitByAddress=False"},
                     {"ItemSalesAnalysis", "SplitByAddress=False"},
                     {"SalesAnalysisAR", "SplitByAddress=True"}};
  const std::string kAddress = "SELECT Address FROM OtherPartyAddress";
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.key) + " " + c.split);
    std::vector<std::string> values = With(kMonth, {"Summary=False", "ShowTransactions=True"});
    if (std::string_view(c.key) == "SalesAnalysisAR") values.emplace_back(c.split);
    DesignerPtr designer = Open(c.key, values);
    std::vector<std::string> sent;
    Service().Database().SetQueryLog(
        [&](std::string_view jet, const std::string&) { sent.emplace_back(jet); });
    const std::vector<std::string> pages = RunPages(designer);
    Service().Database().SetQueryLog(nullptr);
    ASSERT_GE(sent.size(), 2U);
    long rows = 0;
    for (auto rs = Service().Database().Query(sent[0]); !rs->Eof(); rs->MoveNext()) ++rows;
    const std::string lines = sent[1].substr(0, sent[1].find(" WHERE "));
    long line_queries = 0;
    long address_queries = 0;
    for (const std::string& q : sent) {
      line_queries += q.starts_with(lines + " WHERE ") ? 1 : 0;
      address_queries += q.starts_with(kAddress) ? 1 : 0;
    }
    EXPECT_GT(pages.size(), 1U);
    EXPECT_GT(rows, 10);
    EXPECT_EQ(line_queries, rows);
    EXPECT_EQ(1 + line_queries + address_queries, static_cast<long>(sent.size()));
    EXPECT_EQ(address_queries > 0, std::string_view(c.split).ends_with("True"));
    EXPECT_EQ(std::set<std::string>(sent.begin(), sent.end()).size(), sent.size());
  }
}

// A custom period whose two dates are cleared runs over every line, as "ALL" does; left with its
// dates, it is the month's.
TEST_F(SalesAnalysis, ACustomPeriodWithNoDatesRunsOverAllLines) {
  const std::string all = Run("SalesAnalysisAR", {"Period=ALL", "Summary=True"});
  const std::string custom =
      Run("SalesAnalysisAR", {"Period=Custom", "PeriodDateFrom=", "PeriodDateTo=", "Summary=True"});
  const std::string month = Run("SalesAnalysisAR", With(kMonth, {"Summary=True"}));
  EXPECT_NEAR(ReportTotal(custom, "Net"), ReportTotal(all, "Net"), 0.00005);
  EXPECT_EQ(DetailValues(custom, "Net"), DetailValues(all, "Net"));
  EXPECT_GT(ReportTotal(custom, "Net"), ReportTotal(month, "Net") * 12);
}

TEST_F(SalesAnalysis, AJobsSalesEqualItsLines) {
  BooksSql books;
  const std::vector<std::string> jobs = books.Texts(
      "SELECT Transactions.JobId FROM Transactions INNER JOIN TransactionLine ON "
      "Transactions.TransactionId=TransactionLine.TransactionId WHERE Transactions.JobId IS NOT "
      "NULL AND TransactionLine.Type IN (30,31) GROUP BY Transactions.JobId ORDER BY "
      "Sum(-TransactionLine.Value) DESC LIMIT 1");
  ASSERT_FALSE(jobs.empty());
  const std::string job = jobs.front();
  const std::string lines =
      " FROM Transactions INNER JOIN TransactionLine ON "
      "Transactions.TransactionId=TransactionLine.TransactionId INNER JOIN Item ON "
      "Item.ItemId=TransactionLine.ItemId WHERE Transactions.JobId='" +
      job + "'";
  const std::string dump = Run("JobAnalysis", {"Period=ALL", "Jobs=" + job, "Summary=True"});
  EXPECT_NEAR(ReportTotal(dump, "Net"),
              books
                  .Money("SELECT -Sum(TransactionLine.Value)" + lines +
                         " AND TransactionLine.Type IN (30,31)")
                  .ToDouble(),
              0.00005);
}

TEST_F(SalesAnalysis, GroupsAndTheReportWorkTheirPercentFromTheirOwnSums) {
  const std::string dump =
      Run("SalesAnalysisAR", With(kMonth, {"Summary=True", "Groupings=Customer Category"}));
  int groups = 0;
  for (const std::string section : {"GroupFooter1", "ReportFooter"}) {
    const std::vector<Total> nets = TotalsOf(dump, section, "Net");
    const std::vector<Total> costs = TotalsOf(dump, section, "Costs");
    const std::vector<Total> percents = TotalsOf(dump, section, "GP %");
    ASSERT_EQ(nets.size(), percents.size()) << section;
    ASSERT_EQ(costs.size(), percents.size()) << section;
    for (std::size_t i = 0; i < nets.size(); ++i) {
      const double expected = nets[i].value == 0
                                  ? (costs[i].value == 0 ? 0 : -100)
                                  : (nets[i].value - costs[i].value) / nets[i].value * 100;
      EXPECT_NEAR(percents[i].value, expected, 1e-9) << section << " " << i;
      if (section == std::string("GroupFooter1")) ++groups;
    }
  }
  EXPECT_GE(groups, 2);
}

TEST_F(SalesAnalysis, FigureOrdersDescendOnTheClient) {
  const std::string dump =
      Run("SalesAnalysisAR",
          With(kMonth, {"Summary=False", "ShowTransactions=False", "OrderBy=Sales"}));
  const std::vector<double> sales = DetailValues(dump, "Sales");
  ASSERT_GE(sales.size(), 3U);
  EXPECT_TRUE(std::is_sorted(sales.rbegin(), sales.rend()));
}

TEST_F(SalesAnalysis, TaxInclusiveMovesSalesAndNetButNotDiscountOrCosts) {
  BooksSql books;
  const Currency tax = books.Money(
      "SELECT -Sum(TransactionLine.TaxValue) FROM TransactionLine INNER JOIN Transactions ON "
      "Transactions.TransactionId = TransactionLine.TransactionId INNER JOIN OtherParty ON "
      "OtherParty.OtherPartyId = Transactions.OtherPartyId INNER JOIN Item ON Item.ItemId = "
      "TransactionLine.ItemId WHERE TransactionLine.Type BETWEEN 30 AND 34 AND" +
      kMonthLines);
  ASSERT_NE(tax, Currency());
  const std::string exclusive = Run("SalesAnalysisAR", With(kMonth, {"Summary=True"}));
  const std::string inclusive =
      Run("SalesAnalysisAR", With(kMonth, {"Summary=True", "TaxInclusive=True"}));
  EXPECT_NEAR(ReportTotal(inclusive, "Sales") - ReportTotal(exclusive, "Sales"), tax.ToDouble(),
              0.00005);
  EXPECT_NEAR(ReportTotal(inclusive, "Net") - ReportTotal(exclusive, "Net"), tax.ToDouble(),
              0.00005);
  EXPECT_EQ(ReportTotal(inclusive, "Disc"), ReportTotal(exclusive, "Disc"));
  EXPECT_EQ(ReportTotal(inclusive, "Costs"), ReportTotal(exclusive, "Costs"));
  EXPECT_NE(PrintedTexts(inclusive), PrintedTexts(exclusive));
}

TEST_F(SalesAnalysis, ThousandsChangeTheTextNotTheSums) {
  const std::string normal = Run("SalesAnalysisAR", With(kMonth, {"Summary=True"}));
  const std::string thousands =
      Run("SalesAnalysisAR", With(kMonth, {"Summary=True", "Rounding=Thousands"}));
  const std::vector<Total> exact = TotalsOf(normal, "ReportFooter", "Sales");
  const std::vector<Total> shown = TotalsOf(thousands, "ReportFooter", "Sales");
  ASSERT_EQ(exact.size(), 1U);
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_EQ(shown[0].value, exact[0].value);
  // 1,234,567 shows as 1,235: the text is the exact sum in thousands, rounded.
  const long thousands_shown = std::lround(exact[0].value / 1000);
  EXPECT_EQ(Replace(shown[0].text, ",", ""), std::to_string(thousands_shown)) << shown[0].text;
  const std::vector<std::string> lines = PrintedTexts(thousands);
  EXPECT_NE(std::find(lines.begin(), lines.end(), "Figures shown in thousands"), lines.end());
}

TEST_F(SalesAnalysis, TheSummarysYearColumnEqualsTheAnalysisOfTheYear) {
  const std::string summary =
      Run("SalesSummaryAR", {"Period1=MTD", "Period1DateTo=2025-09-30", "Period2=YTD",
                             "Period2DateTo=2025-09-30", "Summary=True"});
  const std::string year =
      Run("SalesAnalysisAR", {"Period=YTD", "PeriodDateTo=2025-09-30", "Summary=True"});
  const std::string month = Run("SalesAnalysisAR", With(kMonth, {"Summary=True"}));
  EXPECT_EQ(ReportTotal(summary, "Sales2"), ReportTotal(year, "Sales"));
  EXPECT_EQ(ReportTotal(summary, "Costs2"), ReportTotal(year, "Costs"));
  EXPECT_EQ(ReportTotal(summary, "GP2"), ReportTotal(year, "GP"));
  EXPECT_EQ(ReportTotal(summary, "Sales1"), ReportTotal(month, "Sales"));
  EXPECT_LT(ReportTotal(summary, "Sales1"), ReportTotal(summary, "Sales2"));
}

TEST_F(SalesAnalysis, AllBesideTheYearLeavesTheWhereOpenAndSumsOnlyTheYearByDate) {
  const DesignerPtr designer =
      Open("SalesSummaryAR", {"Period1=ALL", "Period2=YTD", "Period2DateTo=2025-09-30"});
  auto* summary = dynamic_cast<ardsSalesSummaryReport*>(designer.get());
  ASSERT_NE(summary, nullptr);
  summary->BuildSQL();
  const std::string sql = summary->SQL();
  // The report is not run: host and designer hold each other until the cycle is broken.
  summary->TLReport()->SetArReport(nullptr);
  const std::string where =
      sql.substr(sql.find(" WHERE "), sql.find(" GROUP BY ") - sql.find(" WHERE "));
  EXPECT_EQ(where.find("DateProcess"), std::string::npos) << where;
  EXPECT_NE(sql.find(",-Sum(TransactionLine.Discount) AS Disc1"), std::string::npos) << sql;
  EXPECT_NE(sql.find("TransactionLine.Discount,0)) AS Disc2"), std::string::npos) << sql;
  const std::vector<std::string> lines =
      PrintedTexts(Run("SalesSummaryAR", {"Period1=ALL", "Period2=YTD", "Period2DateTo=2025-09-30",
                                          "Customers=A..B"}));
  EXPECT_NE(std::find(lines.begin(), lines.end(), "All Transactions"), lines.end());
}

TEST_F(SalesAnalysis, PurchaseTotalsOfAMonthEqualTheSumsOfItsLines) {
  BooksSql books;
  const std::string from = MonthsLines("TransactionLine.Type BETWEEN 20 AND 24");
  const std::string suppliers = Run("PurchaseAnalysisAP", With(kMonth, {"Summary=True"}));
  const std::string items = Run("ItemPurchaseAnalysis", With(kMonth, {"Summary=True"}));
  struct Column {
    const char* name;
    const char* sum;
  } const columns[] = {{"Gross", "Sum(TransactionLine.Value+TransactionLine.Discount)"},
                       {"Disc", "Sum(TransactionLine.Discount)"},
                       {"Net", "Sum(TransactionLine.Value)"},
                       {"Tax", "Sum(TransactionLine.TaxValue)"},
                       {"Tax Incl", "Sum(TransactionLine.Value+TransactionLine.TaxValue)"}};
  for (const Column& c : columns) {
    const Currency books_sum = books.Money("SELECT " + std::string(c.sum) + from);
    EXPECT_NEAR(ReportTotal(suppliers, c.name), books_sum.ToDouble(), 0.00005) << c.name;
    EXPECT_NEAR(ReportTotal(items, c.name), books_sum.ToDouble(), 0.00005) << c.name;
  }
  EXPECT_GT(ReportTotal(suppliers, "Net"), 0);
  // Every purchase line of the month counts: none is left out by the joins.
  EXPECT_NEAR(ReportTotal(suppliers, "Net"),
              books
                  .Money("SELECT Sum(Value) FROM TransactionLine WHERE Type BETWEEN 20 AND 24 AND" +
                         kMonthLines)
                  .ToDouble(),
              0.00005);
}

TEST_F(SalesAnalysis, ThePurchaseSummarysYearColumnEqualsTheAnalysisOfTheYear) {
  for (const auto& [summary_key, analysis_key] :
       {std::pair{"PurchaseSummaryAP", "PurchaseAnalysisAP"},
        std::pair{"ItemPurchaseSummary", "ItemPurchaseAnalysis"}}) {
    const std::string summary =
        Run(summary_key, {"Period1=MTD", "Period1DateTo=2025-09-30", "Period2=YTD",
                          "Period2DateTo=2025-09-30", "Summary=True"});
    const std::string year =
        Run(analysis_key, {"Period=YTD", "PeriodDateTo=2025-09-30", "Summary=True"});
    const std::string month = Run(analysis_key, With(kMonth, {"Summary=True"}));
    EXPECT_EQ(ReportTotal(summary, "Purchases2"), ReportTotal(year, "Gross")) << summary_key;
    EXPECT_EQ(ReportTotal(summary, "Disc2"), ReportTotal(year, "Disc")) << summary_key;
    EXPECT_EQ(ReportTotal(summary, "Net2"), ReportTotal(year, "Net")) << summary_key;
    EXPECT_EQ(ReportTotal(summary, "Net1"), ReportTotal(month, "Net")) << summary_key;
    EXPECT_LT(ReportTotal(summary, "Net1"), ReportTotal(summary, "Net2")) << summary_key;
  }
  // With the tax in, Purch and Net move by the tax and Disc does not.
  const std::vector<std::string> month = {"Period1=Custom", "Period1DateFrom=2025-09-01",
                                          "Period1DateTo=2025-09-30", "Period2=ALL",
                                          "Summary=True"};
  const std::string exclusive = Run("PurchaseSummaryAP", month);
  const std::string inclusive = Run("PurchaseSummaryAP", With(month, {"TaxInclusive=True"}));
  const std::string analysis = Run("PurchaseAnalysisAP", With(kMonth, {"Summary=True"}));
  EXPECT_NEAR(ReportTotal(inclusive, "Net1"), ReportTotal(analysis, "Tax Incl"), 0.00005);
  EXPECT_NEAR(ReportTotal(inclusive, "Purchases1") - ReportTotal(exclusive, "Purchases1"),
              ReportTotal(analysis, "Tax"), 0.00005);
  EXPECT_EQ(ReportTotal(inclusive, "Disc1"), ReportTotal(exclusive, "Disc1"));
}

TEST_F(SalesAnalysis, PurchaseFigureOrdersDescendOnTheClient) {
  const std::string dump =
      Run("ItemPurchaseAnalysis",
          With(kMonth, {"Summary=False", "ShowTransactions=False", "OrderBy=Net"}));
  const std::vector<double> nets = DetailValues(dump, "Net");
  ASSERT_GE(nets.size(), 3U);
  EXPECT_TRUE(std::is_sorted(nets.rbegin(), nets.rend()));
}

TEST_F(SalesAnalysis, PageDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/analysis_golden_runs.tsv");
}

}  // namespace
}  // namespace trellin::reports::testing
