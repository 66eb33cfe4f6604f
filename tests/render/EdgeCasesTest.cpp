// Inputs a renderer must survive: no pages, bad text, runs far off the paper, odd fonts.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "RenderTestSupport.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

constexpr Format kAll[] = {Format::Pdf,  Format::Png, Format::Html,
                           Format::Text, Format::Csv, Format::Xlsx};

engine::Page Awkward() {
  engine::Page page = testing::LetterPage(1);
  engine::FontSpec odd;
  odd.name = "No Such Font Family";
  odd.size = 0;
  page.items.push_back(
      testing::Text(1440, 1440, 2000, "bad \xFF\xFE utf-8 \xE2\x82", engine::Align::Center, odd));
  page.items.push_back(testing::Text(-5000, -5000, 100, "off the paper"));
  page.items.push_back(testing::Text(1e6f, 1e6f, 100, "far away", engine::Align::Right));
  page.items.push_back(testing::Text(1440, 2000, 0, std::string(5000, 'W')));
  page.items.push_back(engine::LineItem{0, 0, 0, 0, 0, {}});
  const float nan = std::nanf("");
  const float huge = 1e30f;
  page.items.push_back(testing::Text(nan, nan, nan, "not a place"));
  page.items.push_back(testing::Text(huge, huge, huge, "beyond", engine::Align::Center));
  page.items.push_back(testing::Text(1440, 2e9f, 100, "far below"));
  page.items.push_back(engine::LineItem{nan, nan, huge, huge, nan, {}});
  page.items.push_back(testing::Rule(-huge, huge, 3000));
  page.items.push_back(testing::Shade(nan, 0, huge, huge, {9, 9, 9}));
  page.items.push_back(testing::Shade(0, 0, -100, -100, {1, 2, 3}));
  page.rows.push_back({engine::RowKind::Detail,
                       0,
                       "",
                       {{"txt\xFF", 0, 0, Variant("bad \xFF"), "", "\"unclosed"}},
                       {}});
  page.rows.push_back({engine::RowKind::Detail,
                       0,
                       "",
                       {{"a", std::nanf(""), 1e30f, Variant(std::nan("")), "", ""},
                        {"b", -1e30f, std::nanf(""), Variant(1e300), "", ""}},
                       {}});
  return page;
}

TEST(EdgeCases, EveryFormatSurvivesAwkwardPagesAndNoPages) {
  for (Format format : kAll) {
    SCOPED_TRACE(std::string(FormatName(format)));
    testing::ScratchDir dir;
    const auto target =
        dir / ("out." + std::string(FormatName(format) == "text" ? "txt" : FormatName(format)));
    // The document opens in its reader, whether it has no pages or awkward ones.
    auto check = [&] {
      int status = -1;
      if (format == Format::Pdf) {
        testing::RunCommand("qpdf --check '" + target.string() + "'", &status);
        EXPECT_EQ(status, 0) << "PDF does not check";
      } else if (format == Format::Xlsx) {
        testing::RunCommand(
            "python3 -c \"import sys, zipfile, xml.dom.minidom as m; z = "
            "zipfile.ZipFile(sys.argv[1]); "
            "[m.parseString(z.read(n)) for n in z.namelist() if n.endswith('.xml')]\" '" +
                target.string() + "'",
            &status);
        EXPECT_EQ(status, 0) << "workbook XML not well formed";
      }
    };
    {
      auto sink = MakeSink(format, target);
      sink->Begin(engine::DocumentInfo{});  // no title, no paper size
      sink->End();
    }
    check();
    {
      auto sink = MakeSink(format, target);
      sink->Begin(testing::LetterDocument("Awkward"));
      sink->AddPage(Awkward());
      sink->AddPage(engine::Page{});  // no size: the document's
      sink->End();
    }
    EXPECT_FALSE(dir.Files().empty());
    check();
    for (const auto& name : dir.Files())
      EXPECT_NE(name.front(), '.') << "temporary file left: " << name;
  }
}

}  // namespace
}  // namespace trellin::render
