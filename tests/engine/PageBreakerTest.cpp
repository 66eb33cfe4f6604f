#include <gtest/gtest.h>

#include "platform/engine/PageBreaker.h"

namespace trellin::engine {
namespace {

TextRun Line(float top, const char* text) {
  TextRun run;
  run.top = top;
  run.height = 200;
  run.text = text;
  return run;
}

Band Lines(int n, bool can_split) {
  Band band;
  band.height = 200.0f * static_cast<float>(n);
  band.can_split = can_split;
  for (int i = 0; i < n; ++i) band.items.emplace_back(Line(200.0f * static_cast<float>(i), "line"));
  return band;
}

TEST(PageBreaker, DecidesWhereABandGoes) {
  struct Case {
    float height, space;
    bool can_split, page_has_body;
    Placement expected;
  } cases[] = {
      {400, 400, false, true, Placement::Here},     {400, 1000, false, false, Placement::Here},
      {401, 400, false, true, Placement::NextPage},  // moves whole
      {401, 400, true, true, Placement::Split},      // may run on
      {5000, 400, false, false, Placement::Split},   // taller than any page: must be cut
  };
  for (const auto& c : cases) {
    Band band;
    band.height = c.height;
    band.can_split = c.can_split;
    EXPECT_EQ(Decide(band, c.space, c.page_has_body), c.expected) << c.height << " in " << c.space;
  }
}

TEST(PageBreaker, CutsBetweenLinesOfText) {
  struct Case {
    float limit, expected;
  } cases[] = {{1000, 1000}, {999, 800}, {650, 600}, {199, 0}, {5000, 1000}};
  Band band = Lines(5, true);
  for (const auto& c : cases) EXPECT_EQ(FindCut(band, c.limit), c.expected) << c.limit;
}

TEST(PageBreaker, SplitsItemsRowsAndShading) {
  Band band = Lines(3, true);
  RectItem shade;
  shade.height = 600;
  shade.filled = true;
  band.items.insert(band.items.begin(), PageItem(shade));
  band.rows.push_back(DataRow{});
  band.toc.push_back("A\\B");
  band.break_after = true;
  band.late.push_back(LateText{3, [](int page) { return std::to_string(page); }});

  auto [first, second] = SplitBand(std::move(band), 400);
  EXPECT_EQ(first.height, 400);
  EXPECT_EQ(second.height, 200);
  ASSERT_EQ(first.items.size(), 3u);   // upper shade and two lines
  ASSERT_EQ(second.items.size(), 2u);  // lower shade and the third line
  EXPECT_EQ(std::get<RectItem>(first.items[0]).height, 400);
  EXPECT_EQ(std::get<RectItem>(second.items[0]).height, 200);
  EXPECT_EQ(std::get<TextRun>(second.items[1]).top, 0);
  EXPECT_EQ(first.rows.size(), 1u);
  EXPECT_EQ(first.toc.size(), 1u);
  EXPECT_FALSE(first.break_after);
  EXPECT_TRUE(second.break_after);
  ASSERT_EQ(second.late.size(), 1u);
  EXPECT_EQ(second.late[0].item, 1u);
}

}  // namespace
}  // namespace trellin::engine
