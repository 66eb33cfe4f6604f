// The HTML output: escaped, one page box per page with print breaks, text placed absolutely.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RenderTestSupport.h"
#include "platform/render/HtmlSink.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

using ::testing::HasSubstr;

TEST(EscapeHtml, EscapesMarkupAndRepairsBadText) {
  const std::pair<const char*, const char*> cases[] = {
      {"Smith & Sons", "Smith &amp; Sons"},
      {"<script>alert('x')</script>", "&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;"},
      {"12\" rule", "12&quot; rule"},
      {"caf\xC3\xA9 \xE2\x82\xAC", "caf\xC3\xA9 \xE2\x82\xAC"},
      {"bad \xFF byte", "bad \xEF\xBF\xBD byte"},
      {"cut \xE2\x82", "cut \xEF\xBF\xBD\xEF\xBF\xBD"},
      {"tab\tbell\x07", "tab\tbell "},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(EscapeHtml(text), expected) << text;
}

int Count(const std::string& text, const std::string& what) {
  int n = 0;
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

TEST(HtmlSink, PagesAreBoxesWithPositionedEscapedText) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Html, dir / "out.html");
  sink->Begin(testing::LetterDocument("Ledger <A&B>"));
  engine::Page first = testing::LetterPage(1);
  first.items.push_back(
      testing::Text(1440, 720, 2000, "<b>Smith & Sons</b>", engine::Align::Right));
  first.items.push_back(testing::Rule(1440, 4440, 1000, 15));
  first.items.push_back(testing::Shade(1440, 1100, 3000, 240, {0xE8, 0xEC, 0xF2}));
  engine::Page second = testing::LetterPage(2);
  std::swap(second.width, second.height);
  second.items.push_back(engine::LineItem{0, 0, 1440, 1440, 30, {255, 0, 0}});
  sink->AddPage(first);
  sink->AddPage(second);
  sink->End();
  const std::string html = testing::ReadFile(dir / "out.html");
  EXPECT_THAT(html, HasSubstr("<title>Ledger &lt;A&amp;B&gt;</title>"));
  EXPECT_EQ(Count(html, "<div class=p "), 2);
  EXPECT_THAT(html, HasSubstr("id=\"page-1\" style=\"width:612pt;height:792pt\""));
  EXPECT_THAT(
      html,
      HasSubstr("<style>@page paper1{size:792pt 612pt;margin:0}</style>\n"
                "<div class=p id=\"page-2\" style=\"width:792pt;height:612pt;page:paper1\">"));
  EXPECT_THAT(html, HasSubstr("page-break-after:always"));
  // A look is declared once, where it is first used, and runs refer to it by class.
  EXPECT_THAT(
      html, HasSubstr("<style>.f1{font:10pt/11.5pt 'Arial', 'Liberation Sans', Helvetica, "
                      "sans-serif;text-align:right}</style>\n"
                      "<div class=\"t f1\" style=\"left:72pt;top:36pt;width:100pt;height:11.5pt\">"
                      "&lt;b&gt;Smith &amp; Sons&lt;/b&gt;</div>"));
  EXPECT_THAT(html,
              HasSubstr("left:72pt;top:49.63pt;width:150pt;height:0.75pt;background:#000000"));
  EXPECT_THAT(html, HasSubstr("left:72pt;top:55pt;width:150pt;height:12pt;background:#e8ecf2"));
  EXPECT_THAT(html,
              HasSubstr("<line x1=\"0\" y1=\"0\" x2=\"1440\" y2=\"1440\" stroke=\"#ff0000\""));
  EXPECT_THAT(html, ::testing::EndsWith("</div>\n</body></html>\n"));
}

}  // namespace
}  // namespace trellin::render
