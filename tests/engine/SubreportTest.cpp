#include <gtest/gtest.h>

#include <algorithm>

#include "EngineTestSupport.h"

namespace trellin::engine {
namespace {

using testing::KeepingSink;
using testing::Rows;
using testing::TestReport;

// A child that prints `lines` lines for the party its parent hands it, unbound, and keeps a
// count of its runs as a member.
class LinesSub : public TestReport {
 public:
  explicit LinesSub(std::string_view yaml, std::string name = "arLinesSub")
      : TestReport(yaml, std::move(name)) {
    on_data_initialize = [this] { Fields().Add("Line"); };
    on_fetch = [this](bool& eof) {
      if (++line_ > lines) {
        eof = true;
        return;
      }
      Fields()["Line"].SetValue(Variant(party + "." + std::to_string(line_)));
    };
    on_start = [this] {
      ++runs;
      line_ = 0;
    };
  }
  std::string party;
  int lines = 2;
  int runs = 0;

 private:
  int line_ = 0;
};

constexpr const char* kChild = R"(
Sections:
  - {Name: PageHeader, Height: 300, Controls: [{Class: Label, Name: lblChildHead, Rect: [0, 0, 2000, 300], Caption: ChildHead}]}
  - {Name: Detail, Height: 300, Controls: [{Class: Field, Name: txtLine, DataField: Line, Rect: [100, 0, 2000, 300]}]}
)";

constexpr const char* kParent = R"(
Report: {Page: {LeftMargin: 1000, TopMargin: 720, BottomMargin: 720}}
Sections:
  - {Name: PageHeader, Height: 300, Controls: [{Class: Label, Name: lblHead, Rect: [0, 0, 2000, 300], Caption: Head}]}
  - Name: Detail
    Height: 900
    Controls:
      - {Class: Field, Name: txtParty, DataField: Party, Rect: [0, 0, 2000, 300]}
      - {Class: Subreport, Name: srptLines, Rect: [500, 300, 6000, 300]}
      - {Class: Label, Name: lblUnder, Rect: [0, 600, 2000, 300], Caption: Under}
  - {Name: PageFooter, Height: 300}
)";

std::vector<std::string> TextsInOrder(const KeepingSink& sink) {
  std::vector<std::string> out;
  for (const auto& page : sink.pages) {
    for (const auto& item : page.items) {
      if (const auto* t = std::get_if<TextRun>(&item)) {
        out.push_back(std::to_string(page.number) + " " +
                      std::to_string(static_cast<int>(t->left)) + "," +
                      std::to_string(static_cast<int>(t->top)) + " " + t->text);
      }
    }
  }
  return out;
}

TEST(Subreport, RunsWholeForEachParentRowKeepingItsMembers) {
  TestReport parent(kParent);
  auto child = std::make_shared<LinesSub>(kChild);
  parent.on_start = [&] {
    parent.DataControl().SetRecordset(Rows({"Party"}, {{"A"}, {"B"}}));
    parent.Sections()["Detail"].Controls()["srptLines"].SetObject(child);
  };
  parent.on_format = [&](Section& s) {
    if (s.Name() == "Detail") child->party = s.Controls()["txtParty"].Text();
  };
  KeepingSink sink = testing::Run(parent);
  EXPECT_EQ(child->runs, 2);
  EXPECT_EQ(std::count(child->log.begin(), child->log.end(), "ReportEnd"), 2);
  // The child's page header does not print; its lines sit at the control's left (1000 + 500 +
  // 100) between the parent's party and the label under the control, which moves down as the
  // child grows past the control's 300.
  EXPECT_EQ(TextsInOrder(sink),
            (std::vector<std::string>{"1 1000,720 Head", "1 1000,1020 A", "1 1600,1320 A.1",
                                      "1 1600,1620 A.2", "1 1000,1920 Under", "1 1000,2220 B",
                                      "1 1600,2520 B.1", "1 1600,2820 B.2", "1 1000,3120 Under"}));
  // Terminate reaches the child once, at the end of the whole run, before the parent's.
  EXPECT_EQ(std::count(child->log.begin(), child->log.end(), "Terminate"), 1);
  EXPECT_EQ(child->log.back(), "Terminate");
}

TEST(Subreport, HiddenControlsAndSectionsRunNoChildAndAnEmptyChildTakesNoRoom) {
  struct Case {
    const char* what;
    bool control_visible;
    bool section_visible;
    int lines;
    int expected_runs;
    float under_top;  // of the first row's label
  } cases[] = {
      {"printing child", true, true, 1, 1, 1320 + 300},
      {"empty child", true, true, 0, 1, 1320},
      {"hidden control", false, true, 1, 0, 1620},
      {"hidden section", true, false, 1, 0, -1},
  };
  for (const auto& c : cases) {
    TestReport parent(kParent);
    auto child = std::make_shared<LinesSub>(kChild);
    child->lines = c.lines;
    parent.on_start = [&] {
      parent.DataControl().SetRecordset(Rows({"Party"}, {{"A"}}));
      Control& srpt = parent.Sections()["Detail"].Controls()["srptLines"];
      srpt.SetObject(child);
      srpt.SetVisible(c.control_visible);
      parent.Sections()["Detail"].SetVisible(c.section_visible);
    };
    KeepingSink sink = testing::Run(parent);
    EXPECT_EQ(child->runs, c.expected_runs) << c.what;
    float under = -1;
    for (const auto& item : sink.pages[0].items) {
      if (const auto* t = std::get_if<TextRun>(&item); t && t->text == "Under") under = t->top;
    }
    EXPECT_EQ(under, c.under_top) << c.what;
  }
}

TEST(Subreport, NestsThreeDeep) {
  constexpr const char* kMiddle = R"(
Sections:
  - Name: Detail
    Height: 600
    Controls:
      - {Class: Field, Name: txtLine, DataField: Line, Rect: [0, 0, 2000, 300]}
      - {Class: Subreport, Name: srptInner, Rect: [200, 300, 4000, 300]}
)";
  TestReport parent(kParent);
  auto middle = std::make_shared<LinesSub>(kMiddle, "arMiddle");
  auto inner = std::make_shared<LinesSub>(kMiddle, "arInner");
  auto innermost = std::make_shared<LinesSub>(kChild, "arInnermost");
  middle->lines = 1;
  inner->lines = 1;
  innermost->lines = 2;
  parent.on_start = [&] {
    parent.DataControl().SetRecordset(Rows({"Party"}, {{"A"}}));
    parent.Sections()["Detail"].Controls()["srptLines"].SetObject(middle);
  };
  middle->on_format = [&](Section& s) {
    if (s.Name() == "Detail") {
      s.Controls()["srptInner"].SetObject(inner);
      inner->party = middle->Fields()["Line"].Value().Text();
    }
  };
  inner->on_format = [&](Section& s) {
    if (s.Name() == "Detail") {
      s.Controls()["srptInner"].SetObject(innermost);
      innermost->party = inner->Fields()["Line"].Value().Text();
    }
  };
  parent.on_format = [&](Section& s) {
    if (s.Name() == "Detail") middle->party = "A";
  };
  KeepingSink sink = testing::Run(parent);
  EXPECT_EQ(TextsInOrder(sink),
            (std::vector<std::string>{"1 1000,720 Head", "1 1000,1020 A", "1 1500,1320 A.1",
                                      "1 1700,1620 A.1.1", "1 2000,1920 A.1.1.1",
                                      "1 2000,2220 A.1.1.2", "1 1000,2520 Under"}));
  // Each detail row knows how deep in sub-reports it was printed.
  std::vector<std::string> details;
  for (const auto& page : sink.pages) {
    for (const DataRow& row : page.rows) {
      if (row.kind != RowKind::Detail) continue;
      details.push_back((row.cells.empty() ? "" : row.cells[0].text) + "@" +
                        std::to_string(row.depth));
    }
  }
  EXPECT_EQ(details,
            (std::vector<std::string>{"A@0", "A.1@1", "A.1.1@2", "A.1.1.1@3", "A.1.1.2@3"}));
}

TEST(Subreport, AChildRunsOverPagesUnderTheParentsFurnitureAndMayBreakPages) {
  TestReport parent(kParent);
  auto child = std::make_shared<LinesSub>(kChild);
  child->lines = 60;  // 18000 twips: more than a page
  parent.on_start = [&] {
    parent.DataControl().SetRecordset(Rows({"Party"}, {{"A"}}));
    parent.Sections()["Detail"].Controls()["srptLines"].SetObject(child);
    child->party = "A";
  };
  KeepingSink sink = testing::Run(parent);
  ASSERT_EQ(sink.pages.size(), 2u);
  auto texts = TextsInOrder(sink);
  // Page 1: the header, the party and as many lines as fit above the footer (16838 - 720 - 300).
  EXPECT_EQ(texts[0], "1 1000,720 Head");
  EXPECT_EQ(texts[2], "1 1600,1320 A.1");
  auto page2 = std::find(texts.begin(), texts.end(), "2 1000,720 Head");
  ASSERT_NE(page2, texts.end());
  EXPECT_EQ(*(page2 - 1), "1 1600,15420 A.48");
  EXPECT_EQ(*(page2 + 1), "2 1600,1020 A.49");
  EXPECT_EQ(texts.back(), "2 1000,4620 Under");

  // A page break inside the child ends the parent's page.
  TestReport breaking(kParent);
  auto breaker = std::make_shared<LinesSub>(R"(
Sections:
  - Name: Detail
    Height: 300
    Controls:
      - {Class: PageBreak, Name: pbLine, Rect: [0, 0, 0, 0], Visible: false}
      - {Class: Field, Name: txtLine, DataField: Line, Rect: [100, 0, 2000, 300]}
)");
  breaker->lines = 3;
  breaker->party = "P";
  breaker->on_format = [&](Section& s) {
    if (s.Name() == "Detail")
      s.Controls()["pbLine"].SetVisible(breaker->Fields()["Line"].Value().Text() == "P.3");
  };
  breaking.on_start = [&] {
    breaking.DataControl().SetRecordset(Rows({"Party"}, {{"A"}}));
    breaking.Sections()["Detail"].Controls()["srptLines"].SetObject(breaker);
  };
  KeepingSink broken = testing::Run(breaking);
  ASSERT_EQ(broken.pages.size(), 2u);
  EXPECT_EQ(TextsInOrder(broken)[4], "2 1000,720 Head");
  EXPECT_EQ(TextsInOrder(broken)[5], "2 1600,1020 P.3");

  // A page break in the parent's section, above the child, ends the page there too.
  TestReport above(R"(
Report: {Page: {LeftMargin: 1000, TopMargin: 720, BottomMargin: 720}}
Sections:
  - {Name: PageHeader, Height: 300, Controls: [{Class: Label, Name: lblHead, Rect: [0, 0, 2000, 300], Caption: Head}]}
  - Name: Detail
    Height: 900
    Controls:
      - {Class: Field, Name: txtParty, DataField: Party, Rect: [0, 0, 2000, 300]}
      - {Class: PageBreak, Name: pbAbove, Rect: [0, 300, 0, 0]}
      - {Class: Label, Name: lblAbove, Rect: [0, 300, 2000, 300], Caption: Above}
      - {Class: Subreport, Name: srptLines, Rect: [500, 600, 6000, 300]}
)");
  auto lines = std::make_shared<LinesSub>(kChild);
  lines->party = "Q";
  above.on_start = [&] {
    above.DataControl().SetRecordset(Rows({"Party"}, {{"A"}}));
    above.Sections()["Detail"].Controls()["srptLines"].SetObject(lines);
  };
  KeepingSink split = testing::Run(above);
  EXPECT_EQ(TextsInOrder(split),
            (std::vector<std::string>{"1 1000,720 Head", "1 1000,1020 A", "2 1000,720 Head",
                                      "2 1000,1020 Above", "2 1600,1320 Q.1", "2 1600,1620 Q.2"}));
}

TEST(Subreport, APartysLineAtAPagesFootGoesOverWithItsFirstLine) {
  // Party A's line, 46 lines and its "Under" fill 48 of the page's 49 lines of 300 twips: B's
  // line would stand alone at the foot.
  TestReport parent(kParent);
  auto child = std::make_shared<LinesSub>(kChild);
  parent.on_start = [&] {
    parent.DataControl().SetRecordset(Rows({"Party"}, {{"A"}, {"B"}}));
    parent.Sections()["Detail"].Controls()["srptLines"].SetObject(child);
  };
  parent.on_format = [&](Section& s) {
    if (s.Name() != "Detail") return;
    child->party = parent.Fields()["Party"].Value().Text();
    child->lines = child->party == "A" ? 46 : 2;
  };
  KeepingSink sink = testing::Run(parent);
  ASSERT_EQ(sink.pages.size(), 2u);
  auto texts = TextsInOrder(sink);
  auto page2 = std::find(texts.begin(), texts.end(), "2 1000,720 Head");
  ASSERT_NE(page2, texts.end());
  EXPECT_EQ(*(page2 - 1), "1 1000,15120 Under");
  EXPECT_EQ(*(page2 + 1), "2 1000,1020 B");
  EXPECT_EQ(*(page2 + 2), "2 1600,1320 B.1");
}

TEST(Subreport, ChildErrorsGoToTheParentsHook) {
  TestReport parent(kParent);
  auto child = std::make_shared<LinesSub>(kChild);
  std::vector<std::string> errors;
  parent.SetErrorHook([&](const std::string& source, const std::string& message) {
    errors.push_back(source + ": " + message);
  });
  child->on_format = [&](Section&) { throw std::runtime_error("lookup failed"); };
  parent.on_start = [&] {
    parent.DataControl().SetRecordset(Rows({"Party"}, {{"A"}}));
    parent.Sections()["Detail"].Controls()["srptLines"].SetObject(child);
  };
  (void)testing::Run(parent);
  EXPECT_EQ(errors, (std::vector<std::string>{"Detail_Format: lookup failed",
                                              "Detail_Format: lookup failed"}));
}

}  // namespace
}  // namespace trellin::engine
