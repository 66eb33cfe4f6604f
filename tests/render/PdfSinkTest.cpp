// The PDF read back with the command-line tools a person would use: it opens, has the pages,
// sizes, title, outline and embedded fonts, and its text extracts in reading order and in place.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "RenderTestSupport.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

using ::testing::HasSubstr;
using testing::RunCommand;
using testing::ScratchDir;

std::filesystem::path WritePdf(const ScratchDir& dir, const std::vector<engine::Page>& pages,
                               const std::string& title = "Customer Ledger") {
  const auto path = dir / "report.pdf";
  auto sink = MakeSink(Format::Pdf, path);
  sink->Begin(testing::LetterDocument(title));
  for (const auto& page : pages) sink->AddPage(page);
  sink->End();
  return path;
}

engine::Page LandscapeWithBookmarks() {
  engine::Page page = testing::LetterPage(3);
  std::swap(page.width, page.height);
  engine::FontSpec serif;
  serif.name = "Times New Roman";
  serif.italic = true;
  engine::FontSpec mono;
  mono.name = "Courier New";
  mono.bold = true;
  page.items.push_back(testing::Text(720, 720, 6000, "Serif heading", engine::Align::Left, serif));
  page.items.push_back(testing::Text(720, 1200, 6000, "MONO-0042", engine::Align::Left, mono));
  page.bookmarks = {
      {{"North", "Acme"}, 720}, {{"North", "Bolt"}, 1200}, {{"South", "Crane"}, 1500}};
  return page;
}

TEST(PdfSink, OpensWithPagesSizesTitleAndEmbeddedFonts) {
  ScratchDir dir;
  const auto path = WritePdf(dir, {testing::SampleLedgerPage(1, 20),
                                   testing::SampleLedgerPage(2, 5, 20), LandscapeWithBookmarks()});
  int status = -1;
  RunCommand("qpdf --check '" + path.string() + "'", &status);
  EXPECT_EQ(status, 0) << "qpdf --check fails";

  const std::string info = RunCommand("pdfinfo -f 1 -l 3 '" + path.string() + "'");
  EXPECT_THAT(info, ::testing::ContainsRegex("Pages: +3\n"));
  EXPECT_THAT(info, ::testing::ContainsRegex("Title: +Customer Ledger\n"));
  EXPECT_THAT(info, ::testing::ContainsRegex("Page +1 size: +612 x 792 pts"));
  EXPECT_THAT(info, ::testing::ContainsRegex("Page +3 size: +792 x 612 pts"))
      << "landscape page keeps its own size";

  // Every font embedded as a subset; the layouts' faces resolved to their Liberation equivalents.
  const std::string fonts = RunCommand("pdffonts '" + path.string() + "'");
  std::istringstream lines(fonts);
  std::string line;
  std::vector<std::string> names;
  int rows = 0;
  while (std::getline(lines, line)) {
    if (++rows <= 2 || line.empty()) continue;
    names.push_back(line.substr(0, line.find(' ')));
    EXPECT_THAT(line, ::testing::ContainsRegex(" yes yes "))
        << "not embedded as a subset: " << line;
  }
  const std::string all = ::testing::PrintToString(names);
  for (const char* face : {"LiberationSans-Bold", "LiberationSans-Italic", "LiberationSerif-Italic",
                           "LiberationMono-Bold"}) {
    EXPECT_THAT(all, HasSubstr(face)) << fonts;
  }
}

TEST(PdfSink, TextExtractsInReadingOrder) {
  ScratchDir dir;
  const auto path = WritePdf(dir, {testing::SampleLedgerPage(1, 3)});
  const std::string text = RunCommand("pdftotext -layout '" + path.string() + "' -");
  const std::vector<std::string> in_order = {"Harbour Supplies Ltd",
                                             "Customer Ledger",
                                             "Page 1",
                                             "For the period 1/07/2024 to 30/06/2025",
                                             "Date",
                                             "Reference",
                                             "Description",
                                             "Debit",
                                             "Credit",
                                             "Balance",
                                             "ACME01",
                                             "Acme Traders Ltd",
                                             "1/07/2024",
                                             "IN10400",
                                             "Invoice - timber and fixings",
                                             "2/07/2024",
                                             "CR10401",
                                             "Payment, thank you",
                                             "Credit note: returned \"seconds\"",
                                             "Total Acme Traders Ltd",
                                             "Printed 21/11/2026 9:14 am"};
  std::size_t at = 0;
  for (const std::string& expected : in_order) {
    const std::size_t found = text.find(expected, at);
    ASSERT_NE(found, std::string::npos) << "\"" << expected << "\" missing or out of order in:\n"
                                        << text;
    at = found + expected.size();
  }
  EXPECT_THAT(text,
              ::testing::ContainsRegex("Date +Reference +Description +Debit +Credit +Balance"));
}

// Words' boxes as pdftotext measures them, in points: right-aligned text ends at its box's right
// edge, centred text is centred, and the top of the text is the top of the line box.
TEST(PdfSink, RunsSitInTheirBoxesByAlignment) {
  ScratchDir dir;
  engine::Page page = testing::LetterPage(1);
  page.items.push_back(testing::Text(1440, 2000, 4000, "Leftword", engine::Align::Left));
  page.items.push_back(testing::Text(1440, 3000, 4000, "Rightword", engine::Align::Right));
  page.items.push_back(testing::Text(1440, 4000, 4000, "Centreword", engine::Align::Center));
  const auto path = WritePdf(dir, {page});
  const std::string boxes = RunCommand("pdftotext -bbox '" + path.string() + "' -");
  struct Case {
    const char* word;
    double left, right, top;  // expected, points; NaN where the width decides
  };
  const double any = std::nan("");
  const Case cases[] = {
      {"Leftword", 72, any, 100}, {"Rightword", any, 272, 150}, {"Centreword", any, any, 200}};
  for (const Case& c : cases) {
    std::smatch m;
    const std::regex re(
        std::string("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"[0-9.]+\">") +
        c.word + "<");
    ASSERT_TRUE(std::regex_search(boxes, m, re)) << c.word << " not found in\n" << boxes;
    const double x_min = std::stod(m[1]), y_min = std::stod(m[2]), x_max = std::stod(m[3]);
    if (!std::isnan(c.left)) {
      EXPECT_NEAR(x_min, c.left, 1.0) << c.word;
    }
    if (!std::isnan(c.right)) {
      EXPECT_NEAR(x_max, c.right, 1.0) << c.word;
    }
    if (std::string(c.word) == "Centreword") {
      EXPECT_NEAR((x_min + x_max) / 2, 172, 1.0) << c.word;
    }
    EXPECT_NEAR(y_min, c.top, 1.5) << c.word;
  }
}

TEST(PdfSink, OutlineFollowsBookmarkLevels) {
  ScratchDir dir;
  engine::Page first = testing::SampleLedgerPage(1, 3);
  first.bookmarks = {{{"North", "Acme"}, 1860}};
  engine::Page second = LandscapeWithBookmarks();
  second.bookmarks = {{{"North", "Bolt"}, 720},
                      {{"South", "Crane", "Invoices"}, 1500},
                      {{"South", "Crane", "Credits"}, 1700},
                      {{"Summary"}, 2000}};
  const auto path = WritePdf(dir, {first, second});
  // Titles with their depth, in document order, and the page each points at.
  const std::string script = R"(
import json, subprocess, sys
doc = json.loads(subprocess.run(['qpdf', '--json', '--json-key=outlines', sys.argv[1]],
                                capture_output=True, text=True).stdout)
def walk(items, depth):
    for item in items:
        shown = ' open' if item['kids'] and item['open'] else ''
        print('  ' * depth + item['title'] + ' @' + str(item['destpageposfrom1']) + ' y' + str(item['dest'][3]) + shown)
        walk(item['kids'], depth + 1)
walk(doc['outlines'], 0)
)";
  testing::WriteFile(dir / "outline.py", script);
  const std::string outline =
      RunCommand("python3 '" + (dir / "outline.py").string() + "' '" + path.string() + "'");
  EXPECT_EQ(outline,
            "North @1 y699 open\n"
            "  Acme @1 y699\n"
            "  Bolt @2 y576\n"
            "South @2 y537 open\n"
            "  Crane @2 y537\n"  // closed: deeper levels open on a click
            "    Invoices @2 y537\n"
            "    Credits @2 y527\n"
            "Summary @2 y512\n");
}

}  // namespace
}  // namespace trellin::render
