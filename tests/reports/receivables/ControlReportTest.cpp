// The control report on the small company of control.sql: the month's and the future's
// documents, the closing and month-end balances, the control account and the variance, the two
// ageing tables and the summary, by side, date and filter; and the bucket of a due date.

#include <gtest/gtest.h>

#include <array>

#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrControlReport.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

Currency Money(const char* text) { return *Currency::Parse(text); }

// The designer's figures, worked out without printing.
struct ControlRun {
  DesignerPtr designer;
  ardscrControlReport& report;
};

ControlRun Work(const DesignerPtr& designer) {
  auto& report = dynamic_cast<ardscrControlReport&>(*designer);
  report.SetUp();
  report.Detail_Format();
  return {designer, report};
}

TEST(ControlAgeingBucket, CalendarMonthsOfTheDueDate) {
  const Date as_at = Date::FromYmd(2025, 3, 31);
  const struct {
    Date due;
    int bucket;
  } cases[] = {
      {Date::FromYmd(2025, 1, 31), 0},
      {Date::FromYmd(2025, 2, 1), 1},
      {Date::FromYmd(2025, 2, 28), 1},
      {Date::FromYmd(2025, 3, 1), 2},
      // Due on the month's last day: already "1 mths" at its end.
      {Date::FromYmd(2025, 3, 31), 2},
      {Date::FromYmdHms(2025, 3, 31, 18, 0, 0), 2},
      {Date::FromYmd(2025, 4, 1), 3},
      {Date::FromYmd(2025, 4, 30), 3},
      {Date::FromYmd(2025, 5, 1), 4},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ControlAgeingBucket(c.due, as_at), c.bucket) << c.due.ToIso();
    // Any day of the month ages alike.
    EXPECT_EQ(ControlAgeingBucket(c.due, Date::FromYmd(2025, 3, 1)), c.bucket) << c.due.ToIso();
  }
}

TEST_F(ControlCompany, BalancesByKeyDateAndFilter) {
  const struct {
    const char* why;
    const char* key;
    std::vector<std::string> assignments;
    const char* closing;
    const char* month_net;
    const char* control;
    const char* future_net;  // "" when the future block hides
  } cases[] = {
      // 560.00 at February's end (1, 5 and 9); March brings 2 and 7 (250.00), the credit (30.00)
      // and the receipt with no lines (50.00): 730.00, as the control account.
      {"receivables", "ControlReportAR", {}, "560.00", "170.00", "730.00", "-100.00"},
      // The party filter leaves out C2 and the invoice with no party.
      {"customer location",
       "ControlReportAR",
       {"CustomerLocations=MAIN"},
       "160.00",
       "100.00",
       "730.00",
       ""},
      // Everything processed in March counts in the future at February's end.
      {"earlier month end",
       "ControlReportAR",
       {"DateAsAt=28/02/2025"},
       "60.00",
       "500.00",
       "560.00",
       "70.00"},
      {"payables", "ControlReportAP", {}, "0.00", "300.00", "300.00", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    ControlRun run = Work(Open(c.key, c.assignments));
    const ardscrControlReport& r = run.report;
    EXPECT_EQ(r.ClosingLastMonth(), Money(c.closing));
    EXPECT_EQ(r.Month().Net(), Money(c.month_net));
    EXPECT_EQ(r.MonthEnd(), Money(c.closing) + Money(c.month_net));
    EXPECT_EQ(r.ControlAccount(), Money(c.control));
    EXPECT_EQ(r.Variance(), r.MonthEnd() - Money(c.control));
    EXPECT_EQ(r.Future().any, *c.future_net != '\0');
    if (r.Future().any) {
      EXPECT_EQ(r.Future().Net(), Money(c.future_net));
      EXPECT_EQ(r.CurrentBalance(), r.MonthEnd() + r.Future().Net());
    }
    run.designer->TLReport()->SetArReport(nullptr);
  }
}

TEST_F(ControlCompany, MonthsDocumentsFallIntoTheirCategoriesWithCountsAndGross) {
  ControlRun run = Work(Open("ControlReportAR", {}));
  const auto& month = run.report.Month().categories;
  const ControlCategoryBlock& invoices = month[0];
  // 2 (processed on the month's first day) and 7 (no party); 1 and 5 belong to last month.
  EXPECT_EQ(invoices.labels, std::vector<std::string>{"INV Invoice"});
  EXPECT_EQ(invoices.counts, std::vector<std::string>{"2"});
  EXPECT_EQ(invoices.net_sum, Money("250.00"));
  EXPECT_EQ(invoices.discount_sum, Money("20.00"));
  EXPECT_EQ(invoices.gross_sum, Money("270.00")) << "gross is net plus discount";
  EXPECT_EQ(month[1].net_sum, Money("-30.00"));
  // The receipt has no lines: its value comes from its header, with no discount.
  EXPECT_EQ(month[3].labels, std::vector<std::string>{"REC Receipt"});
  EXPECT_EQ(month[3].net_sum, Money("-50.00"));
  EXPECT_EQ(month[3].discount_sum, Currency());
  EXPECT_EQ(month[3].gross_sum, Money("-50.00"));
  EXPECT_TRUE(month[2].labels.empty());
  EXPECT_EQ(run.report.Month().Count(), 4);
  // The future: 4, and the receipt of 10 April.
  EXPECT_EQ(run.report.Future().categories[0].net_sum, Money("300.00"));
  EXPECT_EQ(run.report.Future().categories[3].net_sum, Money("-400.00"));
  run.designer->TLReport()->SetArReport(nullptr);
}

TEST_F(ControlCompany, AgeingTablesAddUpToTheirBalancesWithLaterAllocationsRestored) {
  ControlRun run = Work(Open("ControlReportAR", {}));
  const ardscrControlReport& r = run.report;
  // 9 three months back, 1 two, 2 due on the month's last day, 7 next month, 4 after that.
  const std::array<const char*, 5> now = {"60.00", "50.00", "150.00", "70.00", "300.00"};
  // By the month end 4 is not there, and 5 is open again: its receipt came on 10 April.
  const std::array<const char*, 5> month_end = {"60.00", "50.00", "550.00", "70.00", "0.00"};
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(r.AgeingNow().buckets[i], Money(now[i])) << i;
    EXPECT_EQ(r.AgeingMonthEnd().buckets[i], Money(month_end[i])) << i;
  }
  EXPECT_EQ(r.AgeingNow().Total(), r.CurrentBalance());
  EXPECT_EQ(r.AgeingMonthEnd().Total(), r.MonthEnd());
  // March's lines: 2 and 7 less the credit; the year adds 1, 5 and 9.
  EXPECT_EQ(r.SalesMonth().excl, Money("210.87"));
  EXPECT_EQ(r.SalesMonth().discount, Money("20.00"));
  EXPECT_EQ(r.SalesMonth().tax, Money("9.13"));
  EXPECT_EQ(r.SalesMonth().Gross(), Money("230.87"));
  EXPECT_EQ(r.SalesMonth().Incl(), Money("220.00"));
  EXPECT_EQ(r.SalesYear().excl, Money("757.83"));
  EXPECT_EQ(r.SalesYear().tax, Money("22.17"));
  run.designer->TLReport()->SetArReport(nullptr);
}

TEST_F(ControlCompany, HiddenBlocksRunNoQueries) {
  DesignerPtr designer =
      Open("ControlReportAR", {"ShowAgeingSummary=false", "ShowSalesPurchaseSummary=false"});
  auto& report = dynamic_cast<ardscrControlReport&>(*designer);
  std::vector<std::string> queries;
  report.SetQueryLog([&](const std::string& sql) { queries.push_back(sql); });
  report.SetUp();
  report.Detail_Format();
  // Closing (2), the month (2), the control account, the future (2).
  EXPECT_EQ(queries.size(), 7U);
  for (const std::string& sql : queries) {
    EXPECT_EQ(sql.find("AS Remaining"), std::string::npos);
    EXPECT_EQ(sql.find("SumOfTaxValue"), std::string::npos);
  }
  const std::string dump = Join(DumpPages(designer), "\n");
  EXPECT_EQ(dump.find("Outstanding Now"), std::string::npos);
  EXPECT_EQ(dump.find("Sales Summary"), std::string::npos);
  EXPECT_NE(dump.find("Future Transactions"), std::string::npos);
}

// The control reports and the transaction lists on this company.
TEST_F(ControlCompany, PagesMatchTheirGoldenDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/control_golden_runs.tsv");
}

}  // namespace
}  // namespace trellin::reports::testing
