// The asset lists on the demo company: the register's figures against plain sums of the movements
// and against the depreciation schedule, components counted once. Their golden runs are rows of
// golden_runs.tsv.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "tests/reports/assets/AssetFixtures.h"

namespace trellin::reports::testing {
namespace {

class AssetLists : public DemoReports {};

// The printed text of `control` in each detail row of a dump, by the row's printed code.
std::map<std::string, std::string> ByCode(const std::string& dump, const std::string& code,
                                          const std::string& control) {
  std::map<std::string, std::string> rows;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    const auto id = row.find(code);
    const auto value = row.find(control);
    if (id != row.end() && value != row.end()) rows[id->second.second] = value->second.second;
  }
  return rows;
}

// The money a report footer's `control` holds. The footer's row runs over several lines of the
// dump (the parameters' text breaks), so it is searched for in the whole dump.
Currency ReportTotal(const std::string& dump, const std::string& control) {
  std::smatch found;
  const std::regex amount(control + "=(-?[0-9.]+)@");
  EXPECT_TRUE(std::regex_search(dump, found, amount)) << control;
  return found.empty() ? Currency() : Currency::Parse(found[1].str()).value_or(Currency());
}

const char* const kAllColumns = "Columns=Code,Description,Cost,BookValue,TaxValue";

TEST_F(AssetLists, RegisterFiguresAreTheSumsOfEachAssetsMovementsToTheDate) {
  const BooksSql sql;
  struct Case {
    const char* dmy;
    const char* iso;
    bool combined;
  };
  // A year end, the day of the disposal's year end, and a date after the last movement.
  const Case cases[] = {{"31/03/2025", "2025-03-31", false},
                        {"31/03/2024", "2024-03-31", true},
                        {"30/11/2026", "2026-11-30", false},
                        {"30/11/2026", "2026-11-30", true}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.dmy) + (c.combined ? " combined" : ""));
    const std::string dump = Dump(
        Open("AssetList", {std::string("DateAsAt=") + c.dmy, kAllColumns,
                           std::string("IncludeComponents=") + (c.combined ? "True" : "False")}));
    const auto book = ByCode(dump, "txtCode", "txtBookValue");
    const auto tax = ByCode(dump, "txtCode", "txtTaxValue");
    const auto cost = ByCode(dump, "txtCode", "txtCost");
    // Every asset takes a line; combined, a component takes none and its parent holds it.
    const std::string lines = c.combined ? " WHERE ParentAssetId IS NULL" : "";
    EXPECT_EQ(book.size(), sql.Texts("SELECT AssetId FROM Asset" + lines).size());
    const std::string owner =
        c.combined ? "coalesce(Asset.ParentAssetId,Asset.AssetId)" : "AssetTransaction.AssetId";
    for (const auto& [id, text] : book) {
      const std::string where =
          " FROM AssetTransaction JOIN Asset ON Asset.AssetId=AssetTransaction.AssetId WHERE " +
          owner + "='" + id + "' AND AssetTransaction.Date<date('" + c.iso + "','+1 day')";
      EXPECT_EQ(CentsOf(text), sql.Cents("SELECT Sum(AssetTransaction.Value)" + where)) << id;
      EXPECT_EQ(CentsOf(tax.at(id)), sql.Cents("SELECT Sum(AssetTransaction.TaxValue)" + where))
          << id;
      // The kinds are tested inside the sum: SQLite 3.40 drops the upper date bound of an index
      // range on (AssetId, Type, Date) after a Type IN list.
      EXPECT_EQ(CentsOf(cost.at(id)),
                sql.Cents("SELECT Sum(CASE WHEN Type IN (10,11) THEN AssetTransaction.Value END)" +
                          where))
          << id;
    }
  }
}

TEST_F(AssetLists, RegisterBookValuesAtAYearEndAreTheSchedulesClosingBookValues) {
  const std::string schedule = Dump(Open(
      "AssetDepreciationSchedule", {"Period=Custom", "DateFrom=1/04/2024", "DateTo=31/03/2025"}));
  const auto closing = ByCode(schedule, "txtAssetId", "txtClosing");
  ASSERT_FALSE(closing.empty());
  const auto book =
      ByCode(Dump(Open("AssetList", {"DateAsAt=31/03/2025"})), "txtCode", "txtBookValue");
  for (const auto& [id, text] : closing) {
    ASSERT_TRUE(book.count(id)) << id;
    EXPECT_EQ(CentsOf(book.at(id)), CentsOf(text)) << id;
  }
}

TEST_F(AssetLists, ComponentsCombinedAreCountedOnceAndTheTotalsStand) {
  const BooksSql sql;
  const std::vector<std::string> components =
      sql.Texts("SELECT AssetId FROM Asset WHERE ParentAssetId IS NOT NULL");
  ASSERT_FALSE(components.empty());
  const std::string apart = Dump(Open("AssetList", {"DateAsAt=30/11/2026", kAllColumns}));
  const std::string combined =
      Dump(Open("AssetList", {"DateAsAt=30/11/2026", kAllColumns, "IncludeComponents=True"}));
  const auto codes = ByCode(combined, "txtCode", "txtCode");
  for (const std::string& id : components) EXPECT_FALSE(codes.count(id)) << id;
  for (const char* total :
       {"ReportFooterSummaryBookValue", "ReportFooterSummaryTaxValue", "ReportFooterSummaryCost"}) {
    EXPECT_NE(ReportTotal(apart, total), Currency()) << total;
    EXPECT_EQ(ReportTotal(apart, total), ReportTotal(combined, total)) << total;
  }
}

// The money of `control` in the group footer whose label holds `key`; fails when none does.
Currency FooterAmount(const std::string& dump, const std::string& key, const std::string& control) {
  for (const DumpRow& row : RowsOf(dump, "GroupFooter")) {
    const auto label = row.find("gfLabel1");
    if (label != row.end() && label->second.second.find(key) != std::string::npos) {
      return DumpedAmount(row, control);
    }
  }
  ADD_FAILURE() << "no footer for " << key;
  return {};
}

TEST_F(AssetLists,
       AYearOfMovementsIsTheSchedulesMovementAndItsDepreciationRunTheYearsDepreciation) {
  std::vector<std::string> schedule_values = {"Period=Custom", "DateFrom=1/04/2024",
                                              "DateTo=31/03/2025"};
  for (int flag = 0; flag <= 12; ++flag) {
    schedule_values.push_back(std::to_string(flag) + "ScheduleFormat=True");
  }
  const std::string schedule = Dump(Open("AssetDepreciationSchedule", schedule_values));
  auto column = [&](const char* name) {
    return ReportTotal(schedule, std::string("ReportFooterSummary") + name);
  };
  const std::vector<std::string> year = {"DatedFrom=1/04/2024", "DatedTo=31/03/2025",
                                         "Summary=True"};
  const std::string by_reference =
      Dump(Open("AssetTransactionList", With(year, {"Groupings=Reference"})));
  // Every movement of the year, and nothing else, moves the book value from opening to closing.
  EXPECT_EQ(ReportTotal(by_reference, "ReportFooterSummaryValue"),
            column("Closing") - column("Opening"));
  EXPECT_NE(column("Depreciation") + column("DepreciationYTD"), Currency());
  EXPECT_EQ(FooterAmount(by_reference, "DEP2024/25", "GroupFooter1SummaryValue"),
            column("Depreciation") + column("DepreciationYTD"));
  // The batch list's block of the same run holds the same movements.
  const std::string batches = Dump(Open("AssetBatchTransactionList", {"References=DEP2024/25"}));
  EXPECT_EQ(FooterAmount(batches, "DEP2024/25", "GroupFooter1SummaryValue"),
            column("Depreciation") + column("DepreciationYTD"));
  EXPECT_EQ(ReportTotal(batches, "ReportFooterSummaryValue"),
            column("Depreciation") + column("DepreciationYTD"));
  const std::string by_kind = Dump(Open("AssetTransactionList", With(year, {"Groupings=Kind"})));
  EXPECT_EQ(FooterAmount(by_kind, "Purchase", "GroupFooter1SummaryValue"), column("Purchases"));
}

TEST_F(AssetLists, StockSheetsSightEachAssetOnceAtItsSiteWithTheSitesCount) {
  const BooksSql sql;
  struct Case {
    std::vector<std::string> values;
    const char* where;
  };
  // Ticked, a component stands under its parent and is counted once; unticked it is left out.
  const Case cases[] = {
      {{}, "Status NOT IN (4,5)"},
      {{"IncludeComponents=False"}, "Status NOT IN (4,5) AND ParentAssetId IS NULL"},
      {{"StatusDisposed=True", "StatusScrapped=True", "OrderBy=Description"}, "1=1"},
  };
  ASSERT_FALSE(sql.Texts("SELECT AssetId FROM Asset WHERE ParentAssetId IS NOT NULL").empty());
  for (const Case& c : cases) {
    SCOPED_TRACE(Join(c.values, " "));
    const std::vector<std::string> pages = RunPages(Open("AssetStockSheets", c.values));
    std::multiset<std::string> printed;
    for (const DumpRow& row : RowsOf(Join(pages, "\n"), "Detail")) {
      printed.insert(row.at("txtCode").second);
    }
    const std::vector<std::string> books =
        sql.Texts(std::string("SELECT AssetId FROM Asset WHERE ") + c.where);
    EXPECT_EQ(printed, std::multiset<std::string>(books.begin(), books.end()));
    // Each site's count adds up to the assets printed, and the report's count is theirs.
    std::int64_t counted = 0;
    for (const DumpRow& row : RowsOf(Join(pages, "\n"), "GroupFooter")) {
      counted += std::stoll(row.at("txtSiteCount").second);
    }
    EXPECT_EQ(counted, static_cast<std::int64_t>(books.size()));
    // The report's count prints beside its caption.
    const std::vector<std::string> texts = PrintedTexts(Join(pages, "\n"));
    const auto caption = std::find(texts.begin(), texts.end(), "Assets on these sheets");
    ASSERT_TRUE(caption != texts.end() && caption + 1 != texts.end());
    EXPECT_EQ(*(caption + 1), std::to_string(books.size()));
    // A site a page: every asset on a page is at the site its header names.
    std::map<std::string, std::string> site_of;
    for (const auto& row : sql.Rows("SELECT AssetId,AssetSiteId FROM Asset")) {
      site_of[row[0]] = row[1];
    }
    for (const std::string& page : pages) {
      const std::vector<std::string> header = TextsOf(page, "txtSite");
      ASSERT_EQ(header.size(), 1U);
      for (const DumpRow& row : RowsOf(page, "Detail")) {
        const std::string& site = site_of[row.at("txtCode").second];
        EXPECT_EQ(header.front().substr(0, header.front().find(' ')),
                  site.empty() ? std::string("No") : site)
            << row.at("txtCode").second;
      }
    }
  }
}

// The printed book value a card's values line states ("..., book value 1,234.56, ..."), or
// the running book value of a movement's row, in the order the rows were printed. A card's
// cells run over several lines of the dump, so its values line is found on its own.
std::vector<std::pair<char, std::string>> CardsAndRunningValues(const std::string& dump) {
  static const std::regex card(R"re(txtValues="At [^"]*, book value ([0-9,.()-]+),)re");
  static const std::regex running(R"re(txtBookValue=\S+ "([^"]*)")re");
  std::vector<std::pair<char, std::string>> found;
  std::istringstream lines(dump);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("text ", 0) == 0) continue;
    std::smatch m;
    if (std::regex_search(line, m, card)) found.emplace_back('C', m[1]);
    if (std::regex_search(line, m, running)) found.emplace_back('R', m[1]);
  }
  return found;
}

TEST_F(AssetLists, DetailsRunTheMovementsToEachCardsBookValue) {
  const BooksSql sql;
  for (const bool combined : {false, true}) {
    SCOPED_TRACE(combined ? "combined" : "apart");
    const std::string dump =
        Dump(Open("AssetDetails", {"DateAsAt=31/03/2025", std::string("IncludeComponents=") +
                                                              (combined ? "True" : "False")}));
    // A card, then its movements: the book value they run to is the card's.
    const auto found = CardsAndRunningValues(dump);
    int cards = 0;
    for (std::size_t n = 0; n < found.size(); ++n) {
      if (found[n].first != 'C') continue;
      ++cards;
      std::string last = "0.00";
      for (std::size_t k = n + 1; k < found.size() && found[k].first == 'R'; ++k) {
        last = found[k].second;
      }
      EXPECT_EQ(CentsOf(last), CentsOf(found[n].second)) << "card " << cards;
    }
    const std::string lines = combined ? " WHERE ParentAssetId IS NULL" : "";
    EXPECT_EQ(cards, static_cast<int>(sql.Texts("SELECT AssetId FROM Asset" + lines).size()));
  }
}

}  // namespace
}  // namespace trellin::reports::testing
