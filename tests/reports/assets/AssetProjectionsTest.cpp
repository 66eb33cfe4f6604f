// The asset projections, the deferred tax and future value schedules: on the demo company
// (cross-checks against plain SQL and the register) and on hand-worked assets (projections.sql).
// Their golden runs are rows of golden_runs.tsv.

#include <map>

#include "reports/assets/arfaFutureValueSchedule.h"
#include "tests/reports/assets/AssetFixtures.h"

namespace trellin::reports::testing {
namespace {

class ProjectionsDemo : public DemoReports {};

TEST_F(ProjectionsDemo, DeferredTaxListsExactlyTheAssetsWhoseLifetimeSumsDiffer) {
  const BooksSql sql;
  const std::vector<std::string> expected = sql.Texts(
      "SELECT AssetId FROM Asset a WHERE (SELECT IfNull(Sum(Value),0) FROM AssetTransaction t "
      "WHERE t.AssetId=a.AssetId) <> (SELECT IfNull(Sum(TaxValue),0) FROM AssetTransaction t "
      "WHERE t.AssetId=a.AssetId) ORDER BY AssetId");
  ASSERT_FALSE(expected.empty());
  std::vector<std::string> listed;
  const std::string dump = Dump(Open("AssetDeferredTaxSchedule", {"AsAtDate=31/03/2025"}));
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    listed.push_back(row.at("txtAssetId").second);
    // Each line adds up: cost less depreciation and with the other movements to the date
    // (revaluations, disposals) is the book value, and the deferred benefit is the tax book value
    // less the normal one.
    auto cents = [&](const char* column) { return CentsOf(row.at(column).second); };
    const std::int64_t other = sql.Cents(
        "SELECT Sum(Value) FROM AssetTransaction WHERE Type NOT IN (10,11,20,21,23,24) AND "
        "Date<='2025-03-31' AND AssetId='" +
        listed.back() + "'");
    EXPECT_EQ(cents("txtCostPrice") - cents("txtDepreciation") + other, cents("txtBookValue"))
        << listed.back();
    EXPECT_EQ(cents("txtBookValueTax") - cents("txtBookValue"), cents("txtDeferred"))
        << listed.back();
  }
  EXPECT_EQ(listed, expected);
}

constexpr char kProjections[] = "reports/assets/projections.sql";
using AssetProjections = AssetCompany<kProjections>;

TEST_F(AssetProjections, DeferredTaxWorkedExampleAndTheAssetsItSkips) {
  const std::string dump = Run("AssetDeferredTaxSchedule", {"AsAtDate=30/09/2025"});
  const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
  // W2's books agree, W3's sum alike over its life though they differ at the date, and W4 has
  // no movements: Null sums agree too. Only W1 takes a line.
  ASSERT_EQ(rows.size(), 1u) << dump;
  const DumpRow& w1 = rows[0];
  EXPECT_EQ(w1.at("txtAssetId").second, "W1");
  // Posted 997.26 and 1,246.58 to 31 March 2025; 1 April to 30 September 2025 is 183 days of
  // 20% of 9,002.74 (902.74) and of 25% of 8,753.42 (1,097.18).
  const std::map<std::string, std::string> expected = {
      {"txtCostPrice", "$10,000.00"},      {"txtDepreciation", "$1,900.00"},
      {"txtBookValue", "$8,100.00"},       {"txtCostPriceTax", "$10,000.00"},
      {"txtDepreciationTax", "$2,343.76"}, {"txtBookValueTax", "$7,656.24"},
      {"txtDeferred", "($443.76)"}};  // the normal book exceeds the tax book: not turned round
  for (const auto& [control, text] : expected) EXPECT_EQ(w1.at(control).second, text) << control;
}

Date Day(int y, int m, int d) { return Date::FromYmd(y, m, d); }

TEST(FutureValuePeriods, EachEntryIsAMonthEndFromTheMonthBeforeDateStart) {
  struct Case {
    const char* name;
    Date start;
    const char* period;
    std::vector<Date> table;
  };
  const Case cases[] = {
      // The 15th starts at the whole month: entry 0 is the last day of February.
      {"15 March by months",
       Day(2025, 3, 15),
       "Months",
       {Day(2025, 2, 28), Day(2025, 3, 31), Day(2025, 4, 30)}},
      {"July by years",
       Day(2025, 7, 9),
       "Years",
       {Day(2025, 6, 30), Day(2026, 6, 30), Day(2027, 6, 30)}},
      {"January by quarters",
       Day(2026, 1, 1),
       "Quarters",
       {Day(2025, 12, 31), Day(2026, 3, 31), Day(2026, 6, 30), Day(2026, 9, 30),
        Day(2026, 12, 31)}},
      // Entry 0 in December: month 14 of 2025 is February 2026, less a day 31 January.
      {"December rolling into January",
       Day(2026, 1, 20),
       "Months",
       {Day(2025, 12, 31), Day(2026, 1, 31)}},
      // Any other period steps by months.
      {"an unknown period", Day(2024, 2, 29), "Weeks", {Day(2024, 1, 31), Day(2024, 2, 29)}},
      {"no columns", Day(2025, 5, 1), "Years", {Day(2025, 4, 30)}},
  };
  for (const Case& c : cases) {
    const auto columns = static_cast<int>(c.table.size()) - 1;
    EXPECT_EQ(arfaFutureValueSchedule::PeriodTable(c.start, c.period, columns), c.table) << c.name;
  }
}

TEST(FutureValuePeriods, YearsAreAddedOnlyPastTheLastKnownYear) {
  const std::vector<FinancialYear> known = {{1, "2023/24", Day(2023, 4, 1), Day(2024, 3, 31)},
                                            {2, "2024/25", Day(2024, 4, 1), Day(2025, 3, 31)}};
  std::vector<FinancialYear> years = known;
  EXPECT_EQ(arfaFutureValueSchedule::ExtendYears(years, Day(2025, 3, 31)), 0);
  EXPECT_EQ(years.size(), 2u);
  // 26 months past the last year's end needs three more.
  EXPECT_EQ(arfaFutureValueSchedule::ExtendYears(years, Day(2027, 5, 31)), 3);
  ASSERT_EQ(years.size(), 5u);
  EXPECT_EQ(years[2].Name, "2026");
  EXPECT_EQ(years[2].DateStart, Day(2025, 4, 1));
  EXPECT_EQ(years[2].DateEnd, Day(2026, 3, 31));
  EXPECT_EQ(years[4].Name, "2028");
  EXPECT_EQ(years[4].DateEnd, Day(2028, 3, 31));
}

// The printed texts of the period columns and the total of each detail line, by asset.
std::map<std::string, std::vector<std::string>> PeriodTexts(const std::string& dump) {
  std::map<std::string, std::vector<std::string>> lines;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    std::vector<std::string>& texts = lines[row.at("txtAssetId").second];
    for (int i = 1; i <= arfaFutureValueSchedule::kMostColumns; ++i) {
      const auto found = row.find("txtCOL" + std::to_string(i));
      if (found != row.end()) texts.push_back(found->second.second);
    }
    const auto total = row.find("txtTotal");
    if (total != row.end()) texts.push_back("Total " + total->second.second);
  }
  return lines;
}

TEST_F(AssetProjections, FutureValueWorkedExamplesPastTheKnownYears) {
  const std::vector<std::string> years = {"Period=Years", "DateStart=1/04/2025",
                                          "NumberOfColumns=3", "Assets=W1"};
  // DV 20% of 9,002.74, of 7,202.19 and of 5,761.75, in years the company does not know yet.
  std::string dump = Run("AssetFutureValueSchedule", years);
  EXPECT_EQ(PeriodTexts(dump)["W1"],
            (std::vector<std::string>{"$1,800.55", "$1,440.44", "$1,152.35"}));
  for (const char* heading : {"\"Mar 2026\"", "\"Mar 2027\"", "\"Mar 2028\""}) {
    EXPECT_NE(dump.find(heading), std::string::npos) << heading;
  }
  dump = Run("AssetFutureValueSchedule", With(years, {"ReportOn=Book Values"}));
  EXPECT_EQ(PeriodTexts(dump)["W1"],
            (std::vector<std::string>{"$7,202.19", "$5,761.75", "$4,609.40"}));
  // SL 25% on 8,000.00 from 1,254.79 posted: 2,000.00 a year until nothing is left. The total
  // adds the balances, period on period.
  dump = Run("AssetFutureValueSchedule",
             {"Period=Years", "DateStart=1/04/2025", "NumberOfColumns=5", "Assets=W2",
              "ReportOn=Accumulated Depreciation", "IncludeTotals=True"});
  EXPECT_EQ(PeriodTexts(dump)["W2"],
            (std::vector<std::string>{"$3,254.79", "$5,254.79", "$7,254.79", "$8,000.00",
                                      "$8,000.00", "Total $31,764.37"}));
}

TEST_F(AssetProjections, NumberOfColumnsHoldsTwelveAtMostAndNoneLeavesTheTotalAtNothing) {
  for (const char* columns : {"13", "-1"}) {
    const std::string dump =
        Run("AssetFutureValueSchedule", {std::string("NumberOfColumns=") + columns});
    EXPECT_NE(dump.find("the report holds from 0 to 12"), std::string::npos) << dump;
  }
  const std::string dump =
      Run("AssetFutureValueSchedule", {"NumberOfColumns=0", "IncludeTotals=True", "Assets=W1"});
  EXPECT_EQ(PeriodTexts(dump)["W1"], (std::vector<std::string>{"Total $0.00"}));
}

// The openings of the future value schedule at the month's start, when a portion ends on the
// first day itself (W5's addition on 2 May cuts a portion 1 May to 1 May): in every column the
// book value and the accumulated depreciation add to the cost, 11,000.00.
TEST_F(AssetProjections, FutureOpeningsAreExactWhenAPortionEndsOnTheFirstOfAMonth) {
  struct Case {
    const char* asset;
    const char* start;
    const char* period;
  };
  const Case cases[] = {
      {"W5", "1/05/2025", "Months"},     // the one-day portion is the first column's first day
      {"W5", "15/05/2025", "Quarters"},  // the same month end as entry 0
      {"W5", "1/04/2025", "Months"},     // the portion inside the second column
      {"W6", "1/05/2025", "Months"},     // an addition on the 1st cuts at the month end
      {"W5", "1/04/2025", "Years"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.asset) + " " + c.start + " " + c.period);
    const std::vector<std::string> values = {
        std::string("Assets=") + c.asset, std::string("DateStart=") + c.start,
        std::string("Period=") + c.period, "NumberOfColumns=3"};
    const auto book = PeriodTexts(
        Run("AssetFutureValueSchedule", With(values, {"ReportOn=Book Values"})))[c.asset];
    const auto accumulated = PeriodTexts(Run(
        "AssetFutureValueSchedule", With(values, {"ReportOn=Accumulated Depreciation"})))[c.asset];
    ASSERT_EQ(book.size(), 3u);
    ASSERT_EQ(accumulated.size(), 3u);
    for (std::size_t i = 0; i < book.size(); ++i) {
      EXPECT_EQ(CentsOf(book[i]) + CentsOf(accumulated[i]), 1100000) << "column " << i + 1;
    }
  }
}

TEST_F(ProjectionsDemo, FutureBookValueAndAccumulatedDepreciationAddToTheCostInEveryColumn) {
  const BooksSql sql;
  // From the middle of a year, past the last posting, so the openings hold part of the run.
  for (const char* start : {"1/10/2026", "1/04/2025"}) {
    SCOPED_TRACE(start);
    const std::vector<std::string> values = {std::string("DateStart=") + start,
                                             "NumberOfColumns=12", "StatusDisposed=False",
                                             "StatusScrapped=False"};
    const auto book =
        PeriodTexts(Dump(Open("AssetFutureValueSchedule", With(values, {"ReportOn=Book Values"}))));
    const auto accumulated = PeriodTexts(Dump(
        Open("AssetFutureValueSchedule", With(values, {"ReportOn=Accumulated Depreciation"}))));
    ASSERT_FALSE(book.empty());
    for (const auto& [id, texts] : book) {
      const std::vector<std::string>& acc = accumulated.at(id);
      ASSERT_EQ(texts.size(), 12u) << id;
      const bool revalued =
          sql.Texts(
              "SELECT Count(*) FROM AssetTransaction WHERE Type IN (12,14,44) AND "
              "AssetId='" +
              id + "'") != std::vector<std::string>{"0"};
      const std::int64_t cost = sql.Cents(
          "SELECT Sum(Value) FROM AssetTransaction WHERE Type IN (10,11) AND AssetId='" + id + "'");
      for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::int64_t sum = CentsOf(texts[i]) + CentsOf(acc[i]);
        EXPECT_EQ(sum, CentsOf(texts[0]) + CentsOf(acc[0])) << id << " column " << i + 1;
        if (!revalued) {
          EXPECT_EQ(sum, cost) << id << " column " << i + 1;
        }
      }
    }
  }
}

TEST_F(ProjectionsDemo, AYearsColumnIsTheDepreciationRunOfThatYear) {
  // The year to 31 March 2026 is not posted: a run to its end works out what the projection's
  // first column shows, from the last posting on.
  const auto projected = PeriodTexts(Dump(Open(
      "AssetFutureValueSchedule", {"DateStart=1/04/2025", "Period=Years", "NumberOfColumns=1"})));
  const Date year_end = Date::FromYmd(2026, 3, 31);
  std::unique_ptr<DepreciationRun> run =
      Service().BusinessLayer().CreateObjects()->CreateDepreciationRun(
          year_end, Service().Application().FinancialCalendar().Years());
  std::size_t compared = 0;
  for (std::int64_t i = 1; i <= run->Count(); ++i) {
    const AssetDepreciationFigures& f = run->Item(i).Figures();
    if (projected.count(f.AssetId) == 0) continue;
    EXPECT_EQ(f.Depreciation.Raw() / 100, CentsOf(projected.at(f.AssetId).at(0))) << f.AssetId;
    ++compared;
  }
  EXPECT_GT(compared, 5u);
}

}  // namespace
}  // namespace trellin::reports::testing
