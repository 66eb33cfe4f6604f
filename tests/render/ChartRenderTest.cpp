// Charts through every drawing sink: a page holding a colour pie and a mono line chart, laid out by
// the engine. The PDF draws them with its own path operators and no image; cairo's PNG of the page
// drawing the page agrees with the PDF but for anti-aliasing; the HTML holds them as inline
// SVG; the plain text keeps their titles and labels. The files stay in render-look/ to be seen.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cairo-pdf.h>
#include <cairo.h>

#include "RenderTestSupport.h"
#include "platform/engine/ChartLayout.h"
#include "platform/render/PagePainter.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::RunCommand;

// The chart's items moved to (left, top) of the page.
void Place(std::vector<engine::PageItem> items, float left, float top, engine::Page& page) {
  for (engine::PageItem& item : items) {
    std::visit(
        [&](auto& it) {
          using T = std::decay_t<decltype(it)>;
          if constexpr (std::is_same_v<T, engine::LineItem>) {
            it.x1 += left;
            it.x2 += left;
            it.y1 += top;
            it.y2 += top;
          } else {
            it.left += left;
            it.top += top;
          }
        },
        item);
    page.items.push_back(std::move(item));
  }
}

engine::Page ChartPage() {
  engine::TextMeasure measure;
  engine::FontSpec font;
  font.size = 8;
  ChartData pie;
  pie.ChartType = ChartType::Pie;
  pie.Title = "Sales Breakdown (1/12/2024 to 30/11/2025)";
  pie.RowLabels = {"4000, Boat Sales (120,000, 60.00%)", "4100, Chandlery (50,000, 25.00%)",
                   "4200, Repairs (30,000, 15.00%)"};
  pie.SeriesCollection = {{"Sales", {120000, 50000, 30000}}};
  ChartData lines;
  lines.Title = "Net Profit";
  lines.Plot.UseColour = false;
  lines.Plot.AxisFormat = "#,###,##0";
  lines.RowLabels = {"Sep 2025", "Oct 2025", "Nov 2025"};
  lines.SeriesCollection = {{"Gross Profit", {1000, -500, 2500}}, {"Net Profit", {200, 300, 400}}};
  engine::Page page = testing::LetterPage(1);
  Place(engine::LayOutChart(pie, font, 9360, 4000, measure), 1440, 1440, page);
  Place(engine::LayOutChart(lines, font, 9360, 4000, measure), 1440, 6000, page);
  return page;
}

void Write(Format format, const std::filesystem::path& target, const engine::Page& page,
           const RenderOptions& options = {}) {
  auto sink = MakeSink(format, target, options);
  sink->Begin(testing::LetterDocument("Charts"));
  sink->AddPage(page);
  sink->End();
}

// Pixels that differ by more than anti-aliasing would; -1 for images of different sizes.
int Differing(const std::filesystem::path& a, const std::filesystem::path& b) {
  cairo_surface_t* left = cairo_image_surface_create_from_png(a.c_str());
  cairo_surface_t* right = cairo_image_surface_create_from_png(b.c_str());
  int pixels = -1;
  if (cairo_surface_status(left) == CAIRO_STATUS_SUCCESS &&
      cairo_surface_status(right) == CAIRO_STATUS_SUCCESS &&
      cairo_image_surface_get_width(left) == cairo_image_surface_get_width(right) &&
      cairo_image_surface_get_height(left) == cairo_image_surface_get_height(right)) {
    pixels = 0;
    const int stride = cairo_image_surface_get_stride(left);
    const unsigned char* p = cairo_image_surface_get_data(left);
    const unsigned char* q = cairo_image_surface_get_data(right);
    for (int y = 0; y < cairo_image_surface_get_height(left); ++y) {
      for (int x = 0; x < cairo_image_surface_get_width(left); ++x) {
        int most = 0;
        for (int c = 0; c < 3; ++c) {
          most = std::max(most, std::abs(p[y * stride + x * 4 + c] - q[y * stride + x * 4 + c]));
        }
        pixels += most > 96;
      }
    }
  }
  cairo_surface_destroy(left);
  cairo_surface_destroy(right);
  return pixels;
}

TEST(ChartRender, PdfDrawsPathsNotImagesAndItsPagesAgreeWithPng) {
  const std::filesystem::path folder = std::filesystem::current_path() / "render-look";
  std::filesystem::create_directories(folder);
  const engine::Page page = ChartPage();
  Write(Format::Pdf, folder / "charts.pdf", page);
  // Cairo, which draws the PNG pages, draws the same page as vectors too.
  {
    cairo_surface_t* surface =
        cairo_pdf_surface_create((folder / "charts-cairo.pdf").c_str(), 612, 792);
    cairo_t* cr = cairo_create(surface);
    PagePainter(false).Paint(cr, page);
    cairo_show_page(cr);
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
  }

  int status = -1;
  const std::string content = RunCommand(
      "qpdf --qdf --object-streams=disable '" + (folder / "charts.pdf").string() + "' -", &status);
  ASSERT_EQ(status, 0);
  // Wedges as Bézier curves filled and stroked, the dashed mono series inside their own state.
  EXPECT_THAT(content, HasSubstr(" c "));
  EXPECT_THAT(content, HasSubstr("B\n"));
  EXPECT_THAT(content, HasSubstr("] 0 d 1 j\n"));
  EXPECT_THAT(content, Not(HasSubstr("/Subtype /Image")));
  EXPECT_EQ(RunCommand("pdfimages -list '" + (folder / "charts.pdf").string() + "' | tail -n +3"),
            "");

  for (const char* name : {"charts", "charts-cairo"}) {
    RunCommand("pdftoppm -png -r 80 -singlefile '" + (folder / name).string() + ".pdf' '" +
                   (folder / name).string() + "'",
               &status);
    ASSERT_EQ(status, 0) << name;
  }
  const int differing = Differing(folder / "charts.png", folder / "charts-cairo.png");
  ASSERT_GE(differing, 0) << "images of different sizes";
  // 680 x 880 pixels, the charts cover some 60,000 of them.
  EXPECT_LE(differing, 60);
}

TEST(ChartRender, HtmlHoldsSvgPathsAndTextKeepsTheWords) {
  testing::ScratchDir dir;
  const engine::Page page = ChartPage();
  Write(Format::Html, dir / "charts.html", page);
  const std::string html = testing::ReadFile(dir / "charts.html");
  EXPECT_THAT(html, HasSubstr("<svg class=r"));
  EXPECT_THAT(html, HasSubstr("<path d=\"M"));
  EXPECT_THAT(html, HasSubstr(" C"));
  EXPECT_THAT(html, HasSubstr("stroke-dasharray=\""));
  // A level line (a legend's sample) keeps a box a browser draws: never of no height.
  EXPECT_THAT(html, Not(HasSubstr(";height:0pt")));
  EXPECT_THAT(html, Not(HasSubstr(";height:0.05pt")));
  EXPECT_THAT(html, HasSubstr("Net Profit"));

  Write(Format::Text, dir / "charts.txt", page);
  const std::string text = testing::ReadFile(dir / "charts.txt");
  for (const char* words :
       {"Sales Breakdown (1/12/2024 to 30/11/2025)", "4100, Chandlery (50,000, 25.00%)",
        "Net Profit", "Gross Profit", "Oct 2025", "3,000"}) {
    EXPECT_THAT(text, HasSubstr(words));
  }
}

}  // namespace
}  // namespace trellin::render
