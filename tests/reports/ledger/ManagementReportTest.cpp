// The management report: goldens on the demo company (monthly, quarterly, yearly, grouped three
// ways, charts in colour and mono), its figures checked against plain SQL on a small company,
// the edge cases of its periods, groups and scale, and its charts' series against its rows.

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <regex>

#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arChart.h"
#include "reports/ledger/arglManagementReport.h"
#include "tests/reports/ledger/LedgerFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::ledger_testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class ManagementDemo : public LedgerReports {};

TEST_F(ManagementDemo, EveryRunMatchesItsGoldenDump) {
  reports::testing::ExpectGoldenRuns(Service(), "ledger", "reports/ledger/golden_management.tsv",
                                     "");
}

// The small company of management.sql; `more` adds rows.
std::string ManagementCompany(const char* name, std::initializer_list<std::string_view> rows) {
  const auto stamp = fs::last_write_time("/proc/self/exe").time_since_epoch().count();
  const fs::path folder =
      fs::temp_directory_path() / "trellin-ledger-tests" / std::to_string(stamp);
  fs::create_directories(folder);
  const fs::path file = folder / (std::string(name) + "-" + std::to_string(getpid()) + ".db");
  trellin::testing::WriteCompany(file, rows);
  return file.string();
}

class ManagementFixture : public LedgerReports {
 protected:
  static void SetUpTestSuite() {
    SetClockForTesting(Date::FromYmdHms(2025, 7, 1, 9, 30, 0));
    static const std::string path =
        ManagementCompany("management", {"reports/ledger/management.sql"});
    service_ = host::ReportService::Open(path);
  }
  static void TearDownTestSuite() {
    service_.reset();
    SetClockForTesting(std::nullopt);
  }

  // Runs the report and hands back its designer, whose tables hold the figures printed; the
  // run's dump goes to `pages` when asked.
  static std::shared_ptr<arglManagementReport> RunReport(
      const std::vector<std::string>& values, std::vector<std::string>* pages = nullptr) {
    DesignerPtr designer = Open("ManagementReport", values);
    std::vector<std::string> dump = RunPages(designer);
    EXPECT_FALSE(!dump.empty() && dump.back().starts_with("errors:")) << dump.back();
    if (pages) *pages = std::move(dump);
    return std::dynamic_pointer_cast<arglManagementReport>(designer);
  }

  static Currency Scalar(const std::string& sql) {
    auto rs = Service().Database().Query(sql);
    return rs->Eof() || rs->Value(0).IsNull() ? Currency() : rs->Value(0).ToCurrency();
  }
};

std::string Iso(const Date& d) { return Database::SQLDate(d); }

TEST_F(ManagementFixture, FiguresAgreeWithPlainSqlByAccountType) {
  auto report = RunReport({"DateAsAt=2025-06-30"});
  ASSERT_TRUE(report);
  ASSERT_EQ(report->Groups().size(), 1u);
  const ManagementValues& v = report->Groups()[0].values;
  const ManagementPeriods& p = report->Periods();
  EXPECT_EQ(p.end[12], Date::FromYmd(2025, 6, 30));
  EXPECT_EQ(p.start[1], Date::FromYmd(2024, 7, 1));
  for (int col = 1; col <= 12; ++col) {
    SCOPED_TRACE(p.end[col].ToIso());
    const std::string month = " AND glTransaction.Date>=" + Iso(p.start[col]) +
                              " AND glTransaction.Date<" + Iso(p.end[col].AddDays(1));
    const std::string to_end = " AND glTransaction.Date<" + Iso(p.end[col].AddDays(1));
    const auto by_type = [&](const char* types, const std::string& dates) {
      return Scalar(
          "SELECT Sum(glTransaction.Value) FROM glTransaction INNER JOIN Account ON "
          "Account.AccountId=glTransaction.AccountId WHERE Account.Type IN (" +
          std::string(types) + ")" + dates);
    };
    EXPECT_EQ(v[col][1], -by_type("1", month));
    EXPECT_EQ(v[col][2], by_type("2", month));
    EXPECT_EQ(v[col][5], by_type("3", month));
    EXPECT_EQ(v[col][21], by_type("7", to_end));
    EXPECT_EQ(v[col][22], by_type("7,8", to_end));
    EXPECT_EQ(v[col][27], -by_type("9,10", to_end));
    // The averages from the control accounts' balances at this period's end and the last's.
    const auto balance = [&](const char* account, const Date& end) {
      return Scalar("SELECT Sum(Value) FROM glTransaction WHERE AccountId='" +
                    std::string(account) + "' AND Date<" + Iso(end.AddDays(1)));
    };
    EXPECT_EQ(v[col][19],
              Currency::FromDouble(
                  (balance("1100", p.end[col]) + balance("1100", p.end[col - 1])).ToDouble() / 2));
    EXPECT_EQ(v[col][20],
              Currency::FromDouble(
                  (balance("1200", p.end[col]) + balance("1200", p.end[col - 1])).ToDouble() / 2));
    EXPECT_EQ(v[col][25],
              Currency::FromDouble(
                  -(balance("2000", p.end[col]) + balance("2000", p.end[col - 1])).ToDouble() / 2));
  }
  // Credit sales weigh each account by its ratio: January's 10,000 at 100%.
  EXPECT_EQ(v[7][42], Currency::FromWhole(10000));
  EXPECT_EQ(v[8][42], Currency::FromWhole(3000));  // February's 6,000 at 50%
  EXPECT_EQ(v[9][43], Currency::FromWhole(2000));  // March's rent; wages carry no ratio
  // Days are the period's end less its start: January 30, February 27.
  EXPECT_EQ(p.Days(7), 30);
  EXPECT_EQ(p.Days(8), 27);
  EXPECT_EQ(v[7][47],
            Currency::FromDouble(v[7][19].ToDouble() / v[7][42].ToDouble() * 30).Round(2));
}

TEST_F(ManagementFixture, ChartsCarryTheRowsAndThePieAddsUpToTheSales) {
  auto report = RunReport({"DateAsAt=2025-06-30", "ShowCharts=True", "UseColour=True"});
  ASSERT_TRUE(report);
  const ManagementValues& v = report->Groups()[0].values;
  double sales = 0;
  for (int col = 1; col <= 12; ++col) sales += v[col][1].ToDouble();
  double slices = 0;
  std::vector<std::string> labels;
  for (const auto& slice : report->SalesSlices()) {
    slices += slice.value;
    labels.push_back(slice.label);
  }
  EXPECT_DOUBLE_EQ(slices, sales);
  // Nine accounts: seven by name, the last two as "Other".
  ASSERT_EQ(labels.size(), 8u);
  EXPECT_EQ(labels.front(), "4001, Sales One (13,000, 46.43%)");
  EXPECT_EQ(labels.back(), "Other (700, 2.50%)");

  Section& footer = report->Sections()["gfHeading"];
  const auto chart = [&](int n) -> const ChartData& {
    auto holder = std::dynamic_pointer_cast<arChart>(
        footer.Controls()["srptChart" + std::to_string(n)].object());
    return holder->Chart();
  };
  EXPECT_EQ(chart(1).Title, "Sales Breakdown (1/07/2024 to 30/06/2025)");
  EXPECT_EQ(chart(1).ChartType, ChartType::Pie);
  const struct {
    int chart;
    const char* series;
    int row;
  } lines[] = {{2, "Gross Profit", 3},
               {2, "Net Profit", 6},
               {2, "Sales", 1},
               {2, "Expenses", 5},
               {2, "Cost of Sales", 2},
               {3, "Working Capital", 29},
               {3, "Net Assets", 30},
               {3, "Current Assets", 21},
               {3, "Total Assets", 22},
               {3, "Current Liabilites", 26},
               {3, "Total Liabilites", 27}};
  for (const auto& line : lines) {
    const ChartData& data = chart(line.chart);
    const auto found = std::find_if(data.SeriesCollection.begin(), data.SeriesCollection.end(),
                                    [&](const ChartSeries& s) { return s.Name == line.series; });
    ASSERT_NE(found, data.SeriesCollection.end()) << line.series;
    ASSERT_EQ(found->DataPoints.size(), 12u);
    for (int col = 1; col <= 12; ++col) {
      EXPECT_DOUBLE_EQ(found->DataPoints[col - 1], v[col][line.row].ToDouble()) << line.series;
    }
    EXPECT_EQ(data.RowLabels.front(), "Jul 2024");
    EXPECT_TRUE(data.Plot.UseColour);
  }
}

TEST_F(ManagementFixture, GroupsHeadTheirTablesAndOneWithNoSalesPrintsZeroPercentages) {
  std::vector<std::string> pages;
  auto report =
      RunReport({"DateAsAt=2025-06-30", "GroupByBranch=True", "GroupByDepartment=True"}, &pages);
  ASSERT_TRUE(report);
  std::vector<std::string> headings;
  for (const auto& group : report->Groups()) headings.push_back(group.heading);
  EXPECT_THAT(headings, ::testing::Contains("No Branch\r\n  No Department"));
  EXPECT_THAT(headings, ::testing::Contains("Branch N, North\r\n  Department W, Workshop"));
  const auto workshop = std::find_if(report->Groups().begin(), report->Groups().end(),
                                     [](const auto& g) { return g.key == "S\tW"; });
  ASSERT_NE(workshop, report->Groups().end());
  EXPECT_EQ(workshop->filter, " AND glTransaction.BranchId='S' AND glTransaction.DeptId='W'");
  const std::string all = Join(pages, "");
  // The south workshop's wages and no sales: the percentages of sales print 0.00, while its
  // return on assets (the wages paid from its bank) is a whole loss.
  const std::vector<DumpRow> rows = RowsOf(all, "Detail");
  const auto first = static_cast<std::size_t>(workshop - report->Groups().begin()) * 50;
  ASSERT_GE(rows.size(), first + 50);
  for (int col = 1; col <= 12; ++col) {
    const std::string cell = "numP" + std::to_string(col);
    EXPECT_EQ(Text(rows[first + 11], cell), "0.00");  // Gross Profit Percent
    EXPECT_EQ(Text(rows[first + 12], cell), "0.00");  // Net Profit Percent
  }
  EXPECT_EQ(Text(rows[first + 14], "numP9"), "100.00");  // Return on Assets
  EXPECT_EQ(workshop->values[9][5], Currency::FromWhole(1500));

  auto by_department = RunReport({"DateAsAt=2025-06-30", "GroupByDepartment=True"});
  headings.clear();
  for (const auto& group : by_department->Groups()) headings.push_back(group.heading);
  EXPECT_THAT(headings, ::testing::ElementsAre("No Department", "Department R, Retail",
                                               "Department W, Workshop"));
}

TEST_F(ManagementFixture, AYoungLedgerPrintsLeadingZerosAndCarriesBalancesFromItsFirstPosting) {
  auto yearly = RunReport({"DateAsAt=2025-06-30", "Frequency=Yearly"});
  ASSERT_TRUE(yearly);
  const ManagementValues& v = yearly->Groups()[0].values;
  EXPECT_EQ(yearly->Periods().start[1], Date::FromYmd(2013, 7, 1));
  for (int col = 1; col <= 11; ++col) {
    for (int row = 1; row <= kManagementRows; ++row) EXPECT_EQ(v[col][row], Currency()) << col;
  }
  EXPECT_EQ(v[12][1], Currency::FromWhole(28000));
  EXPECT_EQ(v[12][33], Currency::FromWhole(50000));

  auto monthly = RunReport({"DateAsAt=2025-06-30"});
  const ManagementValues& m = monthly->Groups()[0].values;
  // The opening line of 31 December: nothing before it, the capital in December and after.
  for (int col = 1; col <= 5; ++col) EXPECT_EQ(m[col][33], Currency()) << col;
  for (int col = 6; col <= 12; ++col) EXPECT_EQ(m[col][33], Currency::FromWhole(50000)) << col;
}

TEST_F(ManagementFixture, FirstColumnAveragesLookBackToThePeriodBeforeIt) {
  // Columns from February 2025 to January 2026: January 2025 is the period before the first.
  auto report = RunReport({"DateAsAt=2026-01-31"});
  ASSERT_TRUE(report);
  const ManagementValues& v = report->Groups()[0].values;
  // Receivables: 11,000 at the end of January (period 0), 6,600 at the end of February.
  EXPECT_EQ(v[1][19], Currency::FromWhole(8800));
  EXPECT_EQ(v[0][19], Currency::FromWhole(11000));
}

TEST_F(ManagementFixture, BeforeTheFirstPostingItPrintsZerosAndChartsWithNothingToDraw) {
  std::vector<std::string> pages;
  auto report = RunReport({"DateAsAt=2023-06-30", "ShowCharts=True"}, &pages);
  ASSERT_TRUE(report);
  for (int col = 1; col <= 12; ++col) {
    for (int row = 1; row <= kManagementRows; ++row) {
      EXPECT_EQ(report->Groups()[0].values[col][row], Currency());
    }
  }
  EXPECT_TRUE(report->SalesSlices().empty());
  const std::string all = Join(pages, "");
  EXPECT_THAT(all, HasSubstr("\"Sales Breakdown (1/07/2022 to 30/06/2023)\""));
  // A wedge is a path from the pie's centre to its rim; markers on the flat lines still show.
  EXPECT_FALSE(std::regex_search(all, std::regex(": M[-0-9]+,[-0-9]+ A"))) << "a wedge was drawn";
  EXPECT_THAT(all, HasSubstr("\"Current Liabilites\""));
}

TEST(ManagementScale, SwitchesAtItsBoundsInFixedPointMoney) {
  const struct {
    Currency greatest;
    double scale;
    const char* note;
  } cases[] = {
      {Currency::FromRaw(9999989999), 1, ""},
      {Currency::FromWhole(999999), 1000,
       "Please note figures are printed in multiples of thousands."},
      {Currency::FromWhole(-999999), 1000,
       "Please note figures are printed in multiples of thousands."},
      {Currency::FromWhole(999999999), 1000000,
       "Please note figures are printed in multiples of millions."},
      {Currency::FromWhole(999999999999), 0, ""},
  };
  for (const auto& c : cases) {
    ManagementValues values{};
    values[7][22] = c.greatest;
    values[0][1] = Currency::FromWhole(999999999999);  // period 0 never counts
    const ManagementScale scale = ScaleOf(values);
    EXPECT_EQ(scale.scale, c.scale) << c.greatest.ToString();
    EXPECT_EQ(scale.note, c.note);
  }
}

class ManagementHugeFixture : public ManagementFixture {
 protected:
  static void SetUpTestSuite() {
    SetClockForTesting(Date::FromYmdHms(2025, 7, 1, 9, 30, 0));
    static const std::string path = ManagementCompany(
        "management-huge", {"reports/ledger/management.sql", "reports/ledger/management_huge.sql"});
    service_ = host::ReportService::Open(path);
  }
};

TEST_F(ManagementHugeFixture, FiguresPastEveryScalePrintMoneyBlankAndRatiosStill) {
  std::vector<std::string> pages;
  auto report = RunReport({"DateAsAt=2025-06-30"}, &pages);
  ASSERT_TRUE(report);
  EXPECT_EQ(report->Groups()[0].scale.scale, 0);
  const std::vector<DumpRow> rows = RowsOf(Join(pages, ""), "Detail");
  ASSERT_EQ(rows.size(), 50u);
  EXPECT_EQ(Text(rows[0], "txtDescription"), "Sales");
  EXPECT_EQ(Text(rows[0], "numP12"), "");
  EXPECT_EQ(Text(rows[11], "txtDescription"), "Gross Profit Percent");
  EXPECT_EQ(Text(rows[11], "numP12"), "100.00");
}

}  // namespace
}  // namespace trellin::ledger_testing
