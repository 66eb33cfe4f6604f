#include <gtest/gtest.h>

#include <cmath>

#include "EngineTestSupport.h"

namespace trellin::engine {
namespace {

// One control a row, each on its own line of one detail, Arial 10.
struct FitCase {
  const char* control;  // as the layout gives it, less its Rect's top
  const char* text;
  Fit fit;
  const char* first_line;
  float size = 10;  // the type it prints in
};

const FitCase kCases[] = {
    {"{Class: Field, Name: txtFits, Rect: [0, TOP, 2000, 250]}", "Retail", Fit::Whole, "Retail"},
    // A figure is one word: it prints whole, past the box, and counts as a fault.
    {"{Class: Field, Name: txtFigure, Rect: [0, TOP, 600, 250], Alignment: Right}", "2,406,065.41",
     Fit::Wide, "2,406,065.41"},
    // A figure a little too wide for its box is set smaller, half a point at a time: some 1170
    // twips at 10 points, 1050 at 9.
    {"{Class: Field, Name: txtNear, Rect: [0, TOP, 1100, 250], Alignment: Right}", "2,406,065.41",
     Fit::Whole, "2,406,065.41", 9},
    // A caption of two words in a one-line box keeps its first word only.
    {"{Class: Label, Name: lblCaption, Caption: 'Calculation Period', Rect: [0, TOP, 1000, 250]}",
     "", Fit::Cut, "Calculation"},
    // "Tui Bay" and the ellipsis take some 880 twips; "Tui Bay Marine" and it some 1540.
    {"{Class: Field, Name: txtName, Rect: [0, TOP, 1200, 250], Ellipsis: true}",
     "Tui Bay Marine Head Office", Fit::Ellipsis, "Tui Bay\u2026"},
    {"{Class: Field, Name: txtWord, Rect: [0, TOP, 600, 250], Ellipsis: true}",
     "Supercalifragilistic", Fit::Ellipsis, "Sup\u2026"},
    {"{Class: Field, Name: txtMemo, Rect: [0, TOP, 1500, 250], CanGrow: true}",
     "alpha beta gamma delta", Fit::Whole, "alpha beta"},
    // An address breaks after its "@" and before a "."; a word with no such place breaks
    // between characters, and that is a fault.
    {"{Class: Field, Name: txtEmail, Rect: [0, TOP, 1200, 250], CanGrow: true}",
     "accounts@tuibaymarine.co.nz", Fit::Whole, "accounts@"},
    {"{Class: Field, Name: txtLong, Rect: [0, TOP, 1200, 250], CanGrow: true}",
     "Supercalifragilisticexpialidocious", Fit::Broken, nullptr},
};

TEST(Fit, EachTextRecordsHowItMetItsBox) {
  std::string yaml = "Report: {PrintWidth: 9000}\nSections:\n  - Name: Detail\n    Height: " +
                     std::to_string(1000 * std::size(kCases)) + "\n    Controls:\n";
  std::vector<std::string> fields;
  std::vector<std::vector<Variant>> row(1);
  for (std::size_t i = 0; i < std::size(kCases); ++i) {
    std::string control = kCases[i].control;
    control.replace(control.find("TOP"), 3, std::to_string(1000 * i));
    if (*kCases[i].text != '\0') {
      fields.push_back("F" + std::to_string(i));
      control.insert(control.size() - 1, ", DataField: " + fields.back());
      row[0].emplace_back(kCases[i].text);
    }
    yaml += "      - " + control + "\n";
  }
  testing::TestReport report(yaml);
  report.on_start = [&] { report.DataControl().SetRecordset(testing::Rows(fields, row)); };
  testing::KeepingSink sink = testing::Run(report);
  ASSERT_EQ(sink.pages.size(), 1u);
  const Page& page = sink.pages[0];

  // Each control's lines follow one another a line apart; the next control starts further down
  // (a growing one above pushes it).
  std::vector<const TextRun*> runs;
  for (const PageItem& item : page.items) {
    if (const auto* t = std::get_if<TextRun>(&item)) runs.push_back(t);
  }
  int faults = 0;
  std::size_t k = 0;
  for (const FitCase& c : kCases) {
    ASSERT_LT(k, runs.size()) << c.control;
    const TextRun* first = runs[k];
    std::string joined = runs[k++]->text;
    while (k < runs.size() && std::fabs(runs[k]->top - runs[k - 1]->top - first->height) < 1) {
      joined += runs[k++]->text;
    }
    EXPECT_EQ(first->fit, c.fit) << c.control;
    if (c.first_line != nullptr) {
      EXPECT_EQ(first->text, c.first_line) << c.control;
    }
    EXPECT_FLOAT_EQ(first->font.size, c.size) << c.control;
    if (c.fit == Fit::Broken) {
      EXPECT_EQ(joined, c.text) << "a broken word loses no character";
    }
    faults += IsMisfit(c.fit) ? 1 : 0;
  }
  EXPECT_EQ(Misfits(page).size(), static_cast<std::size_t>(faults)) << DumpPage(page);
  EXPECT_NE(DumpPage(page).find("\"2,406,065.41\" Arial 10 right !wide\n"), std::string::npos);
}

}  // namespace
}  // namespace trellin::engine
