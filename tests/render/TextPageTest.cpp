// The character-grid rendering: runs by alignment, rows by position, rules as dashes, columns
// narrowed so texts never run together, nothing lost when text overflows its box.

#include <gtest/gtest.h>

#include "RenderTestSupport.h"
#include "platform/render/Render.h"
#include "platform/render/TextPage.h"

namespace trellin::render {
namespace {

using engine::Align;
using testing::Rule;
using testing::Text;

engine::Page PageOf(std::vector<engine::PageItem> items) {
  engine::Page page = testing::LetterPage(1);
  page.items = std::move(items);
  return page;
}

TEST(TextPage, PlacesRunsByAlignmentOnTheGrid) {
  struct Case {
    engine::TextRun run;
    const char* expected;  // with a marker run at column 0 holding the left margin
  };
  const Case cases[] = {
      {Text(1440, 0, 1000, "abc", Align::Left), "|   abc\n"},
      {Text(1440, 0, 1000, "abc", Align::Right), "|          abc\n"},
      {Text(1440, 0, 1000, "abcd", Align::Center), "|      abcd\n"},
      {Text(1440, 0, 1000, "abc", Align::Justify), "|   abc\n"},
      {Text(1440, 0, 1000, "a, \xC3\xA9t\xC3\xA9", Align::Right), "|       a, \xC3\xA9t\xC3\xA9\n"},
      {Text(1440, 0, 1000, "trailing   ", Align::Right), "|     trailing\n"},
  };
  for (const Case& c : cases) {
    const auto page = PageOf({Text(1040, 0, 100, "|"), c.run});
    EXPECT_EQ(RenderTextPage(page), c.expected) << c.run.text;
  }
}

TEST(TextPage, RowsKeepTheirOrderGapsAndRules) {
  const auto page = PageOf({
      Text(1440, 720, 2000, "Title", Align::Left),
      // Same line, given out of order and a few twips apart: one text line.
      Text(4440, 1445, 1000, "12.00", Align::Right),
      Text(1440, 1440, 2000, "Widgets", Align::Left),
      Text(1440, 1670, 2000, "Sprockets", Align::Left),
      Text(4440, 1670, 1000, "3.50", Align::Right),
      Rule(4440, 5440, 1900),
      Text(1440, 1920, 2000, "Total", Align::Left),
      Text(4440, 1920, 1000, "15.50", Align::Right),
      Rule(4440, 5440, 2160),
      Rule(4440, 5440, 2200),
  });
  EXPECT_EQ(RenderTextPage(page),
            "Title\n"
            "\n"
            "\n"
            "Widgets                            12.00\n"
            "Sprockets                           3.50\n"
            "                              ----------\n"
            "Total                              15.50\n"
            "                              ==========\n");
}

TEST(TextPage, TextsThatWouldRunTogetherNarrowTheColumnsThenMoveRight) {
  // Eleven characters fill a 1000-twip box at 100 twips a column and touch the next box's
  // text; at 81 (100, 90, then 81) a blank stands between them.
  EXPECT_EQ(RenderTextPage(PageOf({Text(0, 0, 1000, "12345678901", Align::Left),
                                   Text(1000, 0, 1000, "abc", Align::Left)})),
            "12345678901 abc\n");
  // Too long for its box even at the narrowest columns (60 twips): the figure moves right
  // rather than lose a character.
  EXPECT_EQ(RenderTextPage(PageOf({Text(0, 0, 500, "Long description", Align::Left),
                                   Text(500, 0, 1000, "99.00", Align::Right)})),
            "Long description  99.00\n");
}

TEST(TextPage, EmptyPageIsEmptyAndControlCharactersAreBlanked) {
  EXPECT_EQ(RenderTextPage(PageOf({})), "");
  EXPECT_EQ(RenderTextPage(PageOf({Text(0, 0, 2000, "a\tb\nc")})), "a b c\n");
}

TEST(TextSink, PagesAreSeparatedByFormFeeds) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Text, dir / "out.txt");
  sink->Begin(testing::LetterDocument("Ledger"));
  for (int n = 1; n <= 3; ++n) {
    sink->AddPage(PageOf({Text(1440, 1440, 2000, "Page " + std::to_string(n))}));
  }
  sink->End();
  EXPECT_EQ(testing::ReadFile(dir / "out.txt"), "Page 1\n\fPage 2\n\fPage 3\n");
}

TEST(TextSink, SampleLedgerReadsAsAColumnarReport) {
  const std::string text = RenderTextPage(testing::SampleLedgerPage(1, 2));
  EXPECT_EQ(text.substr(0, text.find("\n\n\n\n")),
            "Harbour Supplies Ltd                    Customer Ledger                               "
            "  Page 1\n"
            "\n"
            "                            For the period 1/07/2024 to 30/06/2025\n"
            "\n"
            "Date       Reference   Description                           Debit        Credit      "
            " Balance\n"
            "--------------------------------------------------------------------------------------"
            "--------\n"
            "ACME01   Acme Traders Ltd\n"
            "1/07/2024  IN10400     Invoice - timber and fixings         707.75                    "
            "  707.75\n"
            "2/07/2024  CR10401     Payment, thank you                               2,001.71     "
            "-1,293.96\n"
            "                                                    "
            "------------------------------------------\n"
            "                       Total Acme Traders Ltd               707.75      2,001.71     "
            "-1,293.96\n"
            "                                                    "
            "==========================================");
}

}  // namespace
}  // namespace trellin::render
