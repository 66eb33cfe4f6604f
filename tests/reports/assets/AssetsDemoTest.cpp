// The fixed asset reports on the demo company: golden page dumps of the depreciation run and the
// schedule, read against what each must print; the schedule's figures against plain SQL and the
// ledger's asset accounts; and the run's edges on a run held in memory.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cctype>
#include <map>

#include "core/host/ApplicationSettings.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "reports/assets/arfaDepreciationCalculation.h"
#include "reports/assets/arfaDepreciationSchedule.h"
#include "tests/reports/assets/AssetFixtures.h"

namespace trellin::reports::testing {
namespace {

// A run held in memory, for the edges of the calculation's lines and footers.
class MemoryRun : public DepreciationRun {
 public:
  struct Entry : public AssetDepreciation {
    AssetDepreciationFigures figures;
    bool selected = true;
    bool Calculate(std::string_view, Date, bool, const std::vector<FinancialYear>&,
                   std::string&) override {
      return true;
    }
    const AssetDepreciationFigures& Figures() const override { return figures; }
    Currency DepreciationForPeriod(const Variant&, const Variant&, bool) const override {
      return {};
    }
    void SetUseTaxBasis(bool) override {}
    Currency DepreciationOffset() const override { return {}; }
    bool Selected() const override { return selected; }
    void SetSelected(bool s) override { selected = s; }
  };
  std::vector<Entry> items;
  std::int64_t Count() const override { return static_cast<std::int64_t>(items.size()); }
  Date DateDated() const override { return Date::FromYmd(2025, 10, 31); }
  AssetDepreciation& Item(std::int64_t i) override {
    return items[static_cast<std::size_t>(i - 1)];
  }
};

MemoryRun::Entry RunLine(const char* id, const char* depn, const char* depn_tax, bool selected) {
  MemoryRun::Entry item;
  item.figures.AssetId = id;
  item.figures.Description = "Asset " + std::string(id);
  item.figures.DateDated = Date::FromYmd(2025, 10, 31);
  item.figures.Purchased = Variant::Null();
  item.figures.Depreciation = *Currency::Parse(depn);
  item.figures.DepreciationTax = *Currency::Parse(depn_tax);
  item.figures.DepreciationBasis = "DV";
  item.figures.DepreciationBasisTax = "DV";
  item.selected = selected;
  return item;
}

class AssetsDemo : public DemoReports {
 protected:
  static std::string RunDump(std::vector<MemoryRun::Entry> items, bool selected_only);
};

// Every ScheduleFormat flag set to `shown`, but for those in `except`, which take the other.
std::vector<std::string> Flags(bool shown, std::initializer_list<int> except = {}) {
  std::vector<std::string> flags;
  for (int flag = 0; flag <= 12; ++flag) {
    bool value = shown;
    for (int e : except) {
      if (e == flag) value = !shown;
    }
    flags.push_back(std::to_string(flag) + "ScheduleFormat=" + (value ? "True" : "False"));
  }
  return flags;
}

const std::vector<std::string> kYear = {"Period=Custom", "DateFrom=1/04/2024", "DateTo=31/03/2025"};

TEST_F(AssetsDemo, Goldens) {
  ExpectGoldenRuns(Service(), "assets", "reports/assets/golden_runs.tsv");
}

TEST_F(AssetsDemo, DepreciationScheduleGoldens) {
  struct Case {
    const char* name;
    std::vector<std::string> values;
  };
  const Case cases[] = {
      {"flags-false", kYear},
      {"flags-true", With(kYear, Flags(true))},
      // Depreciation hidden while its year-to-date share shows: the rest of it is gathered.
      {"mix", With(kYear, Flags(false, {0, 4, 6, 11, 12}))},
      {"tax", With(With(kYear, Flags(true, {1, 2})), {"UseTaxBasis=True"})},
      {"thousands", With(With(kYear, Flags(true, {0, 1})), {"Rounding=Thousands"})},
      {"status", With(Flags(true, {1, 7}), {"Period=ALL", "Groupings=Status"})},
      {"components", With(With(kYear, Flags(true, {1, 7})), {"IncludeComponents=True"})},
      {"summary",
       With(With(kYear, Flags(true, {1, 7})), {"Summary=True", "Groupings=Category,Type"})},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ExpectGolden("assets", std::string("AssetDepreciationSchedule-") + c.name,
                 Dump(Open("AssetDepreciationSchedule", c.values)));
  }
}

TEST_F(AssetsDemo, ScheduleLinesAddAcrossAndTieToTheLedgersAssetAccounts) {
  const BooksSql sql;
  for (const char* to : {"2025-03-31", "2024-03-31", "2025-11-30"}) {
    SCOPED_TRACE(to);
    const std::string dmy =
        std::string(to + 8, 2) + "/" + std::string(to + 5, 2) + "/" + std::string(to, 4);
    const std::string from = std::to_string(std::stoi(std::string(to, 4)) - 1) + "-04-01";
    const std::string from_dmy = "1/04/" + from.substr(0, 4);
    const std::string dump =
        Dump(Open("AssetDepreciationSchedule",
                  With(Flags(true), {"Period=Custom", "DateFrom=" + from_dmy, "DateTo=" + dmy})));
    const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
    ASSERT_FALSE(rows.empty());
    std::int64_t total = 0;
    for (const DumpRow& row : rows) {
      const std::string id = row.at("txtAssetId").second;
      auto cents = [&](const char* column) {
        const auto found = row.find(std::string("txt") + column);
        return found == row.end() ? 0 : CentsOf(found->second.second);
      };
      // Closing is the sum of the asset's movements to DateTo.
      EXPECT_EQ(cents("Closing"),
                sql.Cents("SELECT Sum(Value) FROM AssetTransaction WHERE AssetId='" + id +
                          "' AND Date<date('" + to + "','+1 day')"))
          << id;
      // Opening and the movement columns add up to Closing (all shown, so Other is empty).
      EXPECT_EQ(cents("Opening") + cents("Purchases") + cents("Additions") + cents("Disposals") +
                    cents("GainLoss") + cents("Depreciation") + cents("DepreciationYTD") +
                    cents("Revaluation") + cents("RevaluationCost"),
                cents("Closing"))
          << id;
      total += cents("Closing");
    }
    // The register is the ledger's cost less accumulated depreciation, save the ute's
    // revaluation, which is in the register only.
    const std::int64_t ledger = sql.Cents(
        std::string("SELECT Sum(Value) FROM glTransaction WHERE AccountId IN "
                    "('3320','3325','3330','3335','3350','3355','3400','3405') AND Date<date('") +
        to + "','+1 day')");
    const std::int64_t revalued = sql.Cents(
        std::string("SELECT Sum(Value) FROM AssetTransaction WHERE Type=12 AND Date<date('") + to +
        "','+1 day')");
    EXPECT_EQ(total, ledger + revalued);
  }
}

std::string AssetsDemo::RunDump(std::vector<MemoryRun::Entry> items, bool selected_only) {
  DesignerPtr designer = Open("AssetDepreciationCalculation", {});
  auto* report = dynamic_cast<arfaDepreciationCalculation*>(designer.get());
  auto run = std::make_shared<MemoryRun>();
  run->items = std::move(items);
  report->Run = run;
  report->SelectedOnly = selected_only;
  return Dump(designer);
}

TEST_F(AssetsDemo, LinesAndFootersTakeTwoLinesOnlyWhenTheirOwnFiguresDifferAndTaxIsNotNothing) {
  // A dumped control: its name, value and printed text, which may hold a line break.
  auto has = [](const std::string& dump, const std::string& control, const std::string& text) {
    return dump.find(control + "=" + text) != std::string::npos ||
           dump.find(control + "=Empty " + text) != std::string::npos;
  };
  const std::string kTwo = "\"Normal\r\nTax\"";
  // 100 normal and nothing on tax: one line. Nothing normal and 100 tax: two.
  std::string dump =
      RunDump({RunLine("A1", "100", "0", true), RunLine("A2", "0", "100", true)}, false);
  EXPECT_TRUE(has(dump, "txtBasis", "\"Normal\" \"Normal\""));
  EXPECT_TRUE(has(dump, "txtBasis", kTwo + " " + kTwo));
  // The footer tests its sums: 100 and 100 print on one line though a line printed two.
  EXPECT_TRUE(has(dump, "ReportFooterSummaryBasis", "\"Normal\""));
  EXPECT_FALSE(has(dump, "ReportFooterSummaryBasis", kTwo));
  EXPECT_TRUE(has(dump, "rfCount", "\"Grand Total (Count: 2)\" \"Grand Total (Count: 2)\""));
  // And the reverse: lines of one line each whose sums differ give a footer of two.
  dump = RunDump({RunLine("A1", "100", "100", true), RunLine("A2", "50", "0", true)}, false);
  EXPECT_FALSE(has(dump, "txtBasis", kTwo + " " + kTwo));
  EXPECT_TRUE(has(dump, "ReportFooterSummaryBasis", kTwo));
  EXPECT_TRUE(has(dump, "ReportFooterSummaryDepreciationText", "\"150.00\r\n100.00\""));
  // Nothing selected under SelectedOnly, or an empty run: no line, the totals nothing, one line.
  for (bool empty_run : {true, false}) {
    dump = RunDump(empty_run ? std::vector<MemoryRun::Entry>{}
                             : std::vector<MemoryRun::Entry>{RunLine("A1", "100", "50", false)},
                   true);
    EXPECT_EQ(dump.find("row Detail"), std::string::npos);
    EXPECT_TRUE(has(dump, "ReportFooterSummaryBasis", "\"Normal\""));
    EXPECT_TRUE(has(dump, "ReportFooterSummaryDepreciationText", "\"0.00\""));
    EXPECT_TRUE(has(dump, "rfCount", "\"Grand Total (Count: 0)\" \"Grand Total (Count: 0)\""));
  }
}

TEST_F(AssetsDemo, ABadDateDatedIsRefusedWithItsName) {
  DesignerPtr designer = host::OpenReport(Service(), "AssetDepreciationCalculation");
  host::DateResolver resolver = [](const Variant& expression, const Parameters& parameters) {
    return Service().Reports().InterpretDate(expression, &parameters);
  };
  host::ParameterDialogue dialogue(designer->TLReport()->Parameters(), Service().DatabasePtr(),
                                   resolver);
  dialogue.SetFromAssignment("DateDated=31/13/2025");
  EXPECT_FALSE(dialogue.Validate());
  ASSERT_FALSE(dialogue.Errors().empty());
  EXPECT_NE(dialogue.Errors()[0].find("Dated As At"), std::string::npos) << dialogue.Errors()[0];
  designer->TLReport()->SetArReport(nullptr);
}

TEST_F(AssetsDemo, ScheduleStatusesAndFlagsShapeTheQueryAndTheColumns) {
  struct Case {
    std::vector<std::string> values;
    const char* condition;  // in the query; "" for no status condition
    bool other_shown;
  };
  const Case cases[] = {
      // Every status ticked: no condition at all, so other statuses come in too.
      {With(kYear, Flags(true)), "", false},
      {With(With(kYear, Flags(true)), {"StatusDisposed=False", "StatusScrapped=False"}),
       "Asset.Status IN (1,2,3)", false},
      // Flag 3 alone false shows Other, with nothing to gather.
      {With(kYear, Flags(true, {3})), "", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Join(c.values, " "));
    DesignerPtr designer = Open("AssetDepreciationSchedule", c.values);
    auto* schedule = dynamic_cast<arfaDepreciationSchedule*>(designer.get());
    ASSERT_NE(schedule, nullptr);
    schedule->RefreshDataColumns();
    schedule->BuildSQL();
    if (*c.condition == '\0') {
      EXPECT_EQ(schedule->SQL().find("Status"), std::string::npos) << schedule->SQL();
    } else {
      EXPECT_NE(schedule->SQL().find(c.condition), std::string::npos) << schedule->SQL();
      EXPECT_NE(schedule->Description().find("Include 'On Order','In Use','Available' Assets"),
                std::string::npos)
          << schedule->Description();
    }
    EXPECT_EQ(!designer->TLReport()->DataColumns().Item("Other").Hidden, c.other_shown);
    designer->TLReport()->SetArReport(nullptr);
  }
}

// The hand-made edges of tests/reports/assets/edges.sql.
constexpr char kEdges[] = "reports/assets/edges.sql";
using AssetEdges = AssetCompany<kEdges>;

TEST_F(AssetEdges, TypeTwentyThreeStaysPriorYearAndAnUnknownTypeMovesOnlyTheOpening) {
  const std::string dump = Run("AssetDepreciationSchedule", With(kYear, Flags(true)));
  std::map<std::string, DumpRow> rows;
  for (DumpRow& row : RowsOf(dump, "Detail")) rows[row.at("txtAssetId").second] = row;
  ASSERT_EQ(rows.count("E1"), 1u);
  const DumpRow& e1 = rows["E1"];
  // 23 in the current year counts in Depreciation, never in its year-to-date share.
  EXPECT_EQ(e1.at("txtDepreciation").second, "($30.00)");
  EXPECT_EQ(e1.at("txtDepreciationYTD").second, "($50.00)");
  // (The company prints money with its "$" mask.) The type-99 movement is taken out of Opening with
  // the rest of the period and feeds no column: 0 + 1,000 - 30 - 50 is 920, and the line closes at
  // 927.
  EXPECT_EQ(e1.at("txtOpening").second, "$0.00");
  EXPECT_EQ(e1.at("txtPurchases").second, "$1,000.00");
  EXPECT_EQ(e1.at("txtClosing").second, "$927.00");
  // Every status ticked sets no condition: a status outside the five is in.
  EXPECT_EQ(rows.count("E2"), 1u);
}

TEST_F(AssetEdges, AnAssetWithNoPortionsPrintsItsLineWithAnEmptySubReport) {
  const std::string dump =
      Run("AssetDepreciationCalculation", {"DateDated=31/03/2025", "FullDetails=True"});
  EXPECT_EQ(dump.find("errors:"), std::string::npos) << dump;
  EXPECT_NE(dump.find("txtAssetId=\"E3\""), std::string::npos);
  // E1 runs April 2024 to March 2025 on 1,000.00 at DV 20% after the posted 80.00: its
  // portions print under "Normal" only, the bases being alike.
  EXPECT_NE(dump.find("\"Normal\""), std::string::npos);
  EXPECT_EQ(dump.find("\"Tax\" Arial 8 B"), std::string::npos);
}

}  // namespace
}  // namespace trellin::reports::testing
