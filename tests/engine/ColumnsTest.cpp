#include <gtest/gtest.h>

#include <map>
#include <string>

#include "EngineTestSupport.h"

namespace trellin::engine {
namespace {

using testing::KeepingSink;
using testing::Rows;
using testing::TestReport;

// Where a text printed: its page (from 1) and its cell's column and row, from the left margin
// (1000), the foot of the header (1020) and the cells' pitch (3100 across, 1000 down).
struct Spot {
  int page = 0;
  int column = -1;
  int row = -1;
  bool operator==(const Spot&) const = default;
};

std::map<std::string, Spot> Spots(const KeepingSink& sink) {
  std::map<std::string, Spot> out;
  for (std::size_t p = 0; p < sink.pages.size(); ++p) {
    for (const auto& item : sink.pages[p].items) {
      const auto* t = std::get_if<TextRun>(&item);
      if (t == nullptr || t->text.empty() || t->text[0] != 'n') continue;
      out[t->text] = Spot{static_cast<int>(p) + 1, static_cast<int>((t->left - 1000) / 3100),
                          static_cast<int>((t->top - 1020) / 1000)};
    }
  }
  return out;
}

KeepingSink RunColumns(int rows, ColumnDirection direction, int skip,
                       std::vector<std::string> regions = {}) {
  TestReport report(testing::TestLayout("columns"));
  report.on_start = [&] {
    DetailColumns columns = report.Sections()["Detail"].Columns();
    columns.Direction = direction;
    columns.Skip = skip;
    report.Sections()["Detail"].SetColumns(columns);
    report.Sections()["ghRegion"].SetVisible(!regions.empty());
    std::vector<std::vector<Variant>> data;
    for (int i = 1; i <= rows; ++i) {
      std::string region = regions.empty() ? "" : regions[static_cast<std::size_t>(i - 1)];
      data.push_back({Variant("n" + std::to_string(i)), Variant(region)});
    }
    report.DataControl().SetRecordset(Rows({"Name", "Region"}, data));
  };
  return testing::Run(report);
}

TEST(Columns, CellsFillTheGridInTheirDirectionAndSkippedCellsStayBlank) {
  constexpr auto kAcross = ColumnDirection::AcrossDown;
  constexpr auto kDown = ColumnDirection::DownAcross;
  struct Case {
    int rows;
    ColumnDirection direction;
    int skip;
    std::size_t pages;
    std::map<std::string, Spot> expected;
  } cases[] = {
      {7,
       kAcross,
       0,
       1,
       {{"n1", {1, 0, 0}}, {"n3", {1, 2, 0}}, {"n4", {1, 0, 1}}, {"n7", {1, 0, 2}}}},
      // Four cells used already: the first label takes the fifth, the middle of row two.
      {3, kAcross, 4, 1, {{"n1", {1, 1, 1}}, {"n2", {1, 2, 1}}, {"n3", {1, 0, 2}}}},
      // 15 rows of three a page: the 46th cell starts page 2.
      {46, kAcross, 0, 2, {{"n45", {1, 2, 14}}, {"n46", {2, 0, 0}}}},
      {20,
       kDown,
       0,
       1,
       {{"n1", {1, 0, 0}}, {"n15", {1, 0, 14}}, {"n16", {1, 1, 0}}, {"n20", {1, 1, 4}}}},
      {47, kDown, 0, 2, {{"n45", {1, 2, 14}}, {"n46", {2, 0, 0}}, {"n47", {2, 0, 1}}}},
      {2, kDown, 16, 1, {{"n1", {1, 1, 1}}, {"n2", {1, 1, 2}}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE("rows " + std::to_string(c.rows) + " skip " + std::to_string(c.skip));
    KeepingSink sink = RunColumns(c.rows, c.direction, c.skip);
    ASSERT_EQ(sink.pages.size(), c.pages);
    std::map<std::string, Spot> spots = Spots(sink);
    EXPECT_EQ(spots.size(), static_cast<std::size_t>(c.rows));
    for (const auto& [text, spot] : c.expected) {
      EXPECT_EQ(spots[text], spot) << text << " at page " << spots[text].page << " column "
                                   << spots[text].column << " row " << spots[text].row;
    }
    // Every cell's data row reaches the exports once, in the order printed.
    std::vector<std::string> names;
    for (const auto& page : sink.pages) {
      for (const auto& row : page.rows) {
        if (row.section == "Detail") names.push_back(row.cells.at(0).text);
      }
    }
    ASSERT_EQ(names.size(), static_cast<std::size_t>(c.rows));
    for (int i = 0; i < c.rows; ++i)
      EXPECT_EQ(names[static_cast<std::size_t>(i)], "n" + std::to_string(i + 1));
  }
}

TEST(Columns, AnotherSectionEndsThePartRowAndPrintsBelowIt) {
  KeepingSink sink = RunColumns(5, ColumnDirection::AcrossDown, 0, {"A", "A", "B", "B", "B"});
  ASSERT_EQ(sink.pages.size(), 1u);
  std::map<std::string, float> top;
  std::map<std::string, float> left;
  for (const auto& item : sink.pages[0].items) {
    if (const auto* t = std::get_if<TextRun>(&item)) {
      top[t->text] = t->top;
      left[t->text] = t->left;
    }
  }
  // Region A's header, its two cells on one row, then B's header under that row.
  EXPECT_EQ(top["A"], 1020);
  EXPECT_EQ(top["n1"], 1320);
  EXPECT_EQ(top["n2"], 1320);
  EXPECT_EQ(left["n2"], 4100);
  EXPECT_EQ(top["B"], 2320);
  EXPECT_EQ(left["n3"], 1000);
  EXPECT_EQ(top["n3"], 2620);
  EXPECT_EQ(left["n5"], 7200);
}

}  // namespace
}  // namespace trellin::engine
