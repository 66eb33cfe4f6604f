// Links on printed text: the address a target makes, what is refused, and how the HTML and PDF
// outputs carry it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RenderTestSupport.h"
#include "platform/render/Render.h"
#include "platform/runtime/LinkTarget.h"

namespace trellin::render {
namespace {

using ::testing::HasSubstr;

struct HrefCase {
  LinkTarget target;
  const char* href;
};

// Values are percent-encoded byte by byte; names and keys stand as they are.
const HrefCase kHrefs[] = {
    {{"GeneralLedger", {{"Accounts", "1-1100"}, {"Period", "Custom"}, {"FromDate", "2024-07-01"}}},
     "#run=GeneralLedger&Accounts=1-1100&Period=Custom&FromDate=2024-07-01"},
    {{"LedgerAR", {}}, "#run=LedgerAR"},
    // Markup, quotes, separators, a path and non-ASCII text stay inside their value.
    {{"LedgerAR", {{"Customers", "\"><img src=x>&a=b"}}},
     "#run=LedgerAR&Customers=%22%3E%3Cimg%20src%3Dx%3E%26a%3Db"},
    {{"LedgerAP", {{"Suppliers", "../etc/passwd"}, {"Note", "caf\xC3\xA9 (1)"}}},
     "#run=LedgerAP&Suppliers=..%2Fetc%2Fpasswd&Note=caf%C3%A9%20%281%29"},
    {{"LedgerAR", {{"Customers", ""}}}, "#run=LedgerAR&Customers="},
};

TEST(LinkTarget, HrefEncodesValuesAndReadsBackTheSameTarget) {
  for (const auto& c : kHrefs) {
    EXPECT_EQ(LinkHref(c.target), c.href);
    auto back = ParseLinkHref(c.href);
    ASSERT_TRUE(back.has_value()) << c.href;
    EXPECT_EQ(*back, c.target) << c.href;
  }
}

TEST(LinkTarget, RefusesNamesThatAreNotPlainWordsAndAddressesOfAnotherForm) {
  for (const char* key : {"", "../x", "Trial Balance", "GL;DROP", "1Key", "a/b", "k%41"}) {
    EXPECT_THROW((void)LinkHref({key, {}}), std::invalid_argument) << key;
    EXPECT_THROW((void)LinkHref({"LedgerAR", {{key, "1"}}}), std::invalid_argument) << key;
  }
  for (const char* href : {"", "#run=", "run=LedgerAR", "#run=../x", "#run=A&B", "#run=A&=1",
                           "#run=A&B=%4", "#run=A&B=%ZZ", "#run=A&B=a b", "#run=A&B=x/y",
                           "file:///etc/passwd", "javascript:alert(1)", "#run=A&B%3D=1"}) {
    EXPECT_FALSE(ParseLinkHref(href).has_value()) << href;
  }
}

engine::Page LinkedPage() {
  engine::Page page = testing::LetterPage(1);
  page.items.push_back(testing::Text(1440, 1440, 2000, "Unlinked"));
  engine::TextRun figure = testing::Text(4000, 1440, 1500, "1,234.00", engine::Align::Right);
  figure.link = kHrefs[0].target;
  page.items.push_back(figure);
  engine::TextRun name = testing::Text(1440, 1800, 2000, "<b>Smith</b>");
  name.link = kHrefs[2].target;
  page.items.push_back(name);
  return page;
}

TEST(Links, HtmlWritesEachLinkedLineAsAnAnchorWithAnEscapedAddress) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Html, dir / "out.html");
  sink->Begin(testing::LetterDocument("Links"));
  sink->AddPage(LinkedPage());
  sink->End();
  const std::string html = testing::ReadFile(dir / "out.html");
  EXPECT_THAT(html, HasSubstr(">Unlinked</div>"));
  EXPECT_THAT(html, HasSubstr("<a href=\"#run=GeneralLedger&amp;Accounts=1-1100&amp;Period=Custom"
                              "&amp;FromDate=2024-07-01\">1,234.00</a>"));
  EXPECT_THAT(html, HasSubstr("<a href=\"#run=LedgerAR&amp;Customers=%22%3E%3Cimg%20src%3Dx%3E"
                              "%26a%3Db\">&lt;b&gt;Smith&lt;/b&gt;</a>"));
}

TEST(Links, PdfWritesALinkAnnotationOverEachLinkedLine) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Pdf, dir / "out.pdf");
  sink->Begin(testing::LetterDocument("Links"));
  sink->AddPage(LinkedPage());
  sink->AddPage(testing::LetterPage(2));
  sink->End();
  int status = 0;
  testing::RunCommand("qpdf --check '" + (dir / "out.pdf").string() + "' >/dev/null", &status);
  EXPECT_EQ(status, 0) << "qpdf --check fails";
  const std::string qdf = testing::RunCommand("qpdf --qdf --object-streams=disable '" +
                                              (dir / "out.pdf").string() + "' -");
  std::size_t links = 0;
  for (auto at = qdf.find("/Subtype /Link"); at != std::string::npos;
       at = qdf.find("/Subtype /Link", at + 1)) {
    ++links;
  }
  EXPECT_EQ(links, 2u);
  EXPECT_THAT(qdf, HasSubstr("/URI (" + std::string(kHrefs[0].href) + ")"));
  EXPECT_THAT(qdf, HasSubstr("/URI (" + std::string(kHrefs[2].href) + ")"));
  // The figure's box: 4000 twips in, 1440 down, 1500 wide, on 11-inch paper (792 points).
  EXPECT_THAT(qdf, HasSubstr("/Rect [\n    200\n"));
}

}  // namespace
}  // namespace trellin::render
