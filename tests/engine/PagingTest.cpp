#include <gtest/gtest.h>

#include <algorithm>

#include "EngineTestSupport.h"

namespace trellin::engine {
namespace {

using testing::KeepingSink;
using testing::Rows;
using testing::TestReport;

std::shared_ptr<testing::MemoryRecordset> Numbered(int n) {
  std::vector<std::vector<Variant>> rows;
  for (int i = 1; i <= n; ++i) rows.push_back({Variant("n" + std::to_string(i))});
  return Rows({"Name"}, rows);
}

int CountRows(const Page& page, const std::string& section) {
  return static_cast<int>(std::count_if(page.rows.begin(), page.rows.end(),
                                        [&](const DataRow& r) { return r.section == section; }));
}

// The top of the first text run that reads `text`, -1 when there is none.
float TopOf(const Page& page, const std::string& text) {
  for (const auto& item : page.items) {
    if (const auto* t = std::get_if<TextRun>(&item); t && t->text == text) return t->top;
  }
  return -1;
}

TEST(Paging, SectionsThatDoNotFitMoveWholeAndFormatOnce) {
  TestReport report(testing::TestLayout("paged"));
  std::vector<std::string> furniture;
  report.on_start = [&] { report.DataControl().SetRecordset(Numbered(30)); };
  report.on_format = [&](Section& s) {
    if (s.Type() == SectionType::PageHeader || s.Type() == SectionType::PageFooter) {
      furniture.push_back(s.Name() + std::to_string(report.PageNumber()));
    }
  };
  KeepingSink sink = testing::Run(report);
  ASSERT_EQ(sink.pages.size(), 3u);
  EXPECT_EQ(std::count(report.log.begin(), report.log.end(), "Detail.Format"), 30);
  const int per_page[] = {14, 14, 2};
  for (int p = 0; p < 3; ++p) {
    EXPECT_EQ(CountRows(sink.pages[p], "Detail"), per_page[p]) << "page " << p + 1;
    EXPECT_EQ(TopOf(sink.pages[p], "Head"), 720) << "page " << p + 1;
    EXPECT_EQ(TopOf(sink.pages[p], "Page " + std::to_string(p + 1) + " of run"), 16838 - 720 - 300);
  }
  // The fifteenth row did not fit on page 1 and starts page 2 right under the header.
  EXPECT_EQ(TopOf(sink.pages[1], "n15"), 1020);
  // Each page's footer is formatted before the next page's header.
  EXPECT_EQ(furniture, (std::vector<std::string>{"PageHeader1", "PageFooter1", "PageHeader2",
                                                 "PageFooter2", "PageHeader3", "PageFooter3"}));
}

TEST(Paging, VisibilitySetInAFooterAppliesToTheNextHeader) {
  TestReport report(testing::TestLayout("paged"));
  report.on_start = [&] { report.DataControl().SetRecordset(Numbered(20)); };
  report.on_format = [&](Section& s) {
    if (s.Type() == SectionType::PageFooter)
      report.Sections()["PageHeader"].SetVisible(report.PageNumber() != 1);
  };
  KeepingSink sink = testing::Run(report);
  ASSERT_EQ(sink.pages.size(), 2u);
  EXPECT_EQ(TopOf(sink.pages[0], "Head"), 720);
  EXPECT_EQ(TopOf(sink.pages[1], "Head"), -1);
  // With no header, page 2 starts at the top margin and holds the rest.
  EXPECT_EQ(TopOf(sink.pages[1], "n15"), 720);
  EXPECT_EQ(CountRows(sink.pages[1], "Detail"), 6);
}

TEST(Paging, NewPageBeforeAndAfterAndPageBreakControls) {
  struct Case {
    const char* detail_extra;
    int rows;
    std::vector<int> per_page;
  } cases[] = {
      {"NewPage: After", 3, {1, 1, 1}},   // no empty page after the last
      {"NewPage: Before", 3, {1, 1, 1}},  // the first needs no fresh page
      {"NewPage: BeforeAfter", 2, {1, 1}},
      {"NewPage: None", 3, {3}},
  };
  for (const auto& c : cases) {
    std::string yaml = std::string(R"(
Sections:
  - Name: Detail
    Height: 500
    )") + c.detail_extra +
                       R"(
    Controls: [{Class: Field, Name: txtName, DataField: Name, Rect: [0, 0, 4000, 300]}]
)";
    TestReport report(yaml);
    report.on_start = [&] { report.DataControl().SetRecordset(Numbered(c.rows)); };
    KeepingSink sink = testing::Run(report);
    std::vector<int> got;
    for (const auto& page : sink.pages) got.push_back(CountRows(page, "Detail"));
    EXPECT_EQ(got, c.per_page) << c.detail_extra;
  }

  // A page break control splits its section: what is above it ends the page.
  TestReport report(R"(
Sections:
  - Name: Detail
    Height: 1000
    Controls:
      - {Class: Label, Name: lblAbove, Rect: [0, 0, 4000, 300], Caption: Above}
      - {Class: PageBreak, Name: pbSplit, Rect: [0, 400, 0, 0]}
      - {Class: Label, Name: lblBelow, Rect: [0, 500, 4000, 300], Caption: Below}
)");
  report.on_start = [&] { report.DataControl().SetRecordset(Numbered(1)); };
  KeepingSink sink = testing::Run(report);
  ASSERT_EQ(sink.pages.size(), 2u);
  EXPECT_EQ(TopOf(sink.pages[0], "Above"), 720);
  EXPECT_EQ(TopOf(sink.pages[1], "Below"), 720 + 100);
}

TEST(Paging, ASectionOnANewPageFormatsAfterTheFooterOfThePageBefore) {
  TestReport report(R"(
Sections:
  - {Name: PageHeader, Height: 300}
  - {Name: ghKey, Type: GroupHeader, DataField: Key, Height: 300, NewPage: Before}
  - {Name: Detail, Height: 300}
  - {Name: PageFooter, Height: 300}
)");
  report.on_start = [&] { report.DataControl().SetRecordset(Rows({"Key"}, {{"a"}, {"b"}})); };
  KeepingSink sink = testing::Run(report);
  std::vector<std::string> formats;
  for (const auto& entry : report.log) {
    if (entry.size() > 7 && entry.compare(entry.size() - 7, 7, ".Format") == 0)
      formats.push_back(entry);
  }
  EXPECT_EQ(formats,
            (std::vector<std::string>{"ghKey.Format", "PageHeader.Format", "Detail.Format",
                                      "PageFooter.Format", "ghKey.Format", "PageHeader.Format",
                                      "Detail.Format", "PageFooter.Format"}));
  EXPECT_EQ(sink.pages.size(), 2u);
}

TEST(Paging, GrowingTextWrapsPushesControlsDownAndRunsAcrossPages) {
  TestReport report(R"(
Report: {PrintWidth: 9000}
Sections:
  - Name: Detail
    Height: 600
    BackStyle: 1
    Controls:
      - {Class: Field, Name: txtMemo, DataField: Memo, Rect: [0, 0, 2000, 250], CanGrow: true}
      - {Class: Field, Name: txtBeside, DataField: Name, Rect: [2000, 0, 2000, 250]}
      - {Class: Field, Name: txtBelow, DataField: Name, Rect: [0, 300, 2000, 250]}
      - {Class: Field, Name: txtHidden, DataField: Memo, Rect: [5000, 0, 0, 250]}
)");
  const std::string memo = "a line of memo text that will not fit in two thousand twips";
  report.on_start = [&] {
    report.DataControl().SetRecordset(
        Rows({"Name", "Memo"}, {{"first", Variant(memo)}, {"second", Variant("short")}}));
  };
  KeepingSink sink = testing::Run(report);
  ASSERT_EQ(sink.pages.size(), 1u);
  const Page& page = sink.pages[0];
  std::vector<const TextRun*> memo_lines;
  const RectItem* first_shade = nullptr;
  for (const auto& item : page.items) {
    if (const auto* t = std::get_if<TextRun>(&item);
        t && t->width == 2000 && t->left == 1080 && t->top < TopOf(page, "second")) {
      if (t->text != "first") memo_lines.push_back(t);
    }
    if (const auto* r = std::get_if<RectItem>(&item); r && !first_shade) first_shade = r;
  }
  // The memo wrapped into several lines that together hold the whole text.
  ASSERT_GE(memo_lines.size(), 3u);
  std::string joined;
  for (const auto* t : memo_lines) joined += (joined.empty() ? "" : " ") + t->text;
  EXPECT_EQ(joined, memo);
  // The column with no width only carries a value, as hidden sum columns do: it prints nothing.
  for (const auto& item : page.items) {
    if (const auto* t = std::get_if<TextRun>(&item)) {
      EXPECT_NE(t->left, 1080 + 5000) << t->text;
    }
  }

  float line_height = memo_lines[0]->height;
  float grown = line_height * static_cast<float>(memo_lines.size()) - 250;
  // The field beside stays; the one below moves down by the growth; the section grows by it.
  EXPECT_EQ(TopOf(page, "first"), 720);
  ASSERT_NE(first_shade, nullptr);
  EXPECT_NEAR(first_shade->height, 600 + grown, 0.5);
  EXPECT_NEAR(TopOf(page, "second"), 720 + 600 + grown, 0.5);

  // A growing section with CanGrow runs on to the next page instead of leaving a gap.
  TestReport tall(R"(
Sections:
  - Name: Detail
    Height: 300
    CanGrow: true
    Controls: [{Class: Field, Name: txtMemo, DataField: Memo, Rect: [0, 0, 3000, 300], CanGrow: true}]
)");
  std::string long_memo;
  for (int i = 1; i <= 120; ++i) long_memo += "line" + std::to_string(i) + "\n";
  tall.on_start = [&] { tall.DataControl().SetRecordset(Rows({"Memo"}, {{Variant(long_memo)}})); };
  KeepingSink tall_sink = testing::Run(tall);
  ASSERT_EQ(tall_sink.pages.size(), 2u);
  EXPECT_EQ(TopOf(tall_sink.pages[0], "line1"), 720);
  float last_on_first = -1;
  int on_first = 0;
  for (const auto& item : tall_sink.pages[0].items) {
    if (const auto* t = std::get_if<TextRun>(&item)) {
      ++on_first;
      last_on_first = std::max(last_on_first, t->top + t->height);
    }
  }
  EXPECT_LE(last_on_first, 16838 - 720);
  EXPECT_EQ(TopOf(tall_sink.pages[1], "line" + std::to_string(on_first + 1)), 720);
  EXPECT_EQ(std::count(tall.log.begin(), tall.log.end(), "Detail.Format"), 1);
}

TEST(Paging, GroupHeadingsAtAPagesFootGoOverWithTheirFirstLine) {
  // Forty-nine lines of 300 twips fit a page. Before the second region come the report's
  // heading, the first region with its town, `lines` details and two footers; the second
  // region's headings then stand at the foot of page 1 with no room for their first line.
  for (int lines : {42, 43}) {
    TestReport report(testing::TestLayout("grouped"));
    std::vector<std::vector<Variant>> rows;
    for (int i = 0; i < lines; ++i)
      rows.push_back({"N", "A", "n" + std::to_string(i), Variant(Currency::FromRaw(10000))});
    rows.push_back({"S", "B", "s1", Variant(Currency::FromRaw(10000))});
    report.on_start = [&] {
      report.DataControl().SetRecordset(Rows({"Region", "Town", "Name", "Amount"}, rows));
    };
    KeepingSink sink = testing::Run(report);
    ASSERT_EQ(sink.pages.size(), 2u) << lines;
    EXPECT_EQ(TopOf(sink.pages[0], "S"), -1) << lines;
    EXPECT_EQ(TopOf(sink.pages[1], "S"), 1020) << lines;
    EXPECT_EQ(TopOf(sink.pages[1], "B"), 1320) << lines;
    EXPECT_EQ(TopOf(sink.pages[1], "s1"), 1620) << lines;
    // The rows stay in their order for the exports.
    EXPECT_EQ(sink.pages[1].rows.at(1).section, "ghRegion") << lines;
  }
}

TEST(Paging, TableOfContentsPointsAtThePageWhereTheSectionPrints) {
  TestReport report(R"(
Sections:
  - {Name: ghCountry, Type: GroupHeader, DataField: Country, Height: 300,
     Controls: [{Class: Field, Name: txtCountry, DataField: Country, Rect: [0, 0, 3000, 300]}]}
  - {Name: ghState, Type: GroupHeader, DataField: State, Height: 3000,
     Controls: [{Class: Field, Name: txtState, DataField: State, Rect: [0, 0, 3000, 300]}]}
  - {Name: Detail, Height: 300}
)");
  report.on_start = [&] {
    report.DataControl().SetRecordset(Rows(
        {"Country", "State"},
        {{"AU", "NSW"}, {"AU", "QLD"}, {"AU", "VIC"}, {"AU", "WA"}, {"AU", "TAS"}, {"NZ", "AKL"}}));
  };
  report.on_format = [&](Section& s) {
    if (s.Name() == "ghState") {
      report.TOC().Add(report.Field("txtCountry").Text() + "\\" + report.Field("txtState").Text());
    }
  };
  KeepingSink sink = testing::Run(report);
  ASSERT_EQ(sink.pages.size(), 2u);
  std::vector<std::string> marks;
  for (const auto& page : sink.pages) {
    for (const auto& b : page.bookmarks) {
      marks.push_back(std::to_string(page.number) + ":" + b.path[0] + ">" + b.path[1] + "@" +
                      std::to_string(static_cast<int>(b.top)));
    }
  }
  // Each state section is 3300 with its detail; the fifth would end past the page and moves.
  EXPECT_EQ(marks, (std::vector<std::string>{"1:AU>NSW@1020", "1:AU>QLD@4320", "1:AU>VIC@7620",
                                             "1:AU>WA@10920", "2:AU>TAS@720", "2:NZ>AKL@4320"}));
}

TEST(Paging, RowShadingCoversTheGrownSection) {
  TestReport report(R"(
Report: {PrintWidth: 9000}
Sections:
  - Name: Detail
    Height: 300
    BackStyle: 0
    BackColor: "#E0E0E0"
    Controls: [{Class: Field, Name: txtName, DataField: Name, Rect: [0, 0, 4000, 300]}]
)");
  report.on_start = [&] { report.DataControl().SetRecordset(Numbered(4)); };
  report.on_format = [&](Section& s) {
    if (s.Name() == "Detail") s.SetBackStyle(1 - s.BackStyle());
  };
  KeepingSink sink = testing::Run(report);
  std::vector<std::string> shades;
  for (const auto& item : sink.pages[0].items) {
    if (const auto* r = std::get_if<RectItem>(&item)) {
      shades.push_back(std::to_string(static_cast<int>(r->top)) + " " +
                       std::to_string(static_cast<int>(r->width)) + "x" +
                       std::to_string(static_cast<int>(r->height)));
    }
  }
  // Rows 1 and 3 are shaded, across the print width.
  EXPECT_EQ(shades, (std::vector<std::string>{"720 9000x300", "1320 9000x300"}));
  EXPECT_NE(DumpPage(sink.pages[0]).find("rect 1080,720 9000x300 fill #E0E0E0\n"),
            std::string::npos);
}

}  // namespace
}  // namespace trellin::engine
