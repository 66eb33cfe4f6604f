// The PDF writer against cairo drawing the same page: both rasterised by poppler at 80 dpi must
// agree pixel for pixel but for anti-aliasing, and the text must come back out, accents and
// fractions included. The images stay in the build folder's render-look/ for a person to see.

#include <cairo-pdf.h>
#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "RenderTestSupport.h"
#include "platform/render/PagePainter.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

using testing::RunCommand;

engine::FontSpec Font(const char* name, float size, bool bold, bool italic,
                      bool underline = false) {
  engine::FontSpec font;
  font.name = name;
  font.size = size;
  font.bold = bold;
  font.italic = italic;
  font.underline = underline;
  return font;
}

// The sample ledger with what it lacks: other faces and sizes, text beyond ASCII, colour,
// underlining and a boxed, shaded panel. The asterisk is glyph 13, a carriage return as a byte.
engine::Page MixedPage() {
  engine::Page page = testing::SampleLedgerPage(1, 12);
  engine::RectItem panel = testing::Shade(1440, 11000, 9360, 1800, {0xFF, 0xF4, 0xD6});
  panel.stroked = true;
  panel.stroke = {0x40, 0x40, 0x40};
  panel.thickness = 20;
  page.items.push_back(panel);
  page.items.push_back(testing::Text(1600, 11100, 9000, "Café résumé — ½ price*, déjà vu",
                                     engine::Align::Left, Font("Arial", 12, false, false)));
  page.items.push_back(testing::Text(1600, 11500, 9000, "Remittance advice: Times italic 11",
                                     engine::Align::Left,
                                     Font("Times New Roman", 11, false, true)));
  page.items.push_back(testing::Text(1600, 11900, 9000, "OVERDUE 1,234.50", engine::Align::Right,
                                     Font("Courier New", 10, true, false)));
  engine::TextRun note = testing::Text(1600, 12300, 9000, "Please pay by 30/06/2025",
                                       engine::Align::Center, Font("Arial", 8, true, true, true));
  note.color = {0xB0, 0x10, 0x10};
  page.items.push_back(note);
  page.items.push_back(engine::LineItem{1440, 13000, 10800, 13000, 40, {0x20, 0x40, 0x90}});
  return page;
}

void WriteWithCairo(const engine::Page& page, const std::filesystem::path& path) {
  cairo_surface_t* surface = cairo_pdf_surface_create(path.c_str(), 612, 792);
  cairo_t* cr = cairo_create(surface);
  PagePainter painter(false);
  painter.Paint(cr, page);
  cairo_show_page(cr);
  cairo_destroy(cr);
  cairo_surface_destroy(surface);
}

struct Difference {
  int pixels = 0;   // differing by more than anti-aliasing would
  int touched = 0;  // differing at all
};

Difference Compare(const std::filesystem::path& a, const std::filesystem::path& b) {
  cairo_surface_t* left = cairo_image_surface_create_from_png(a.c_str());
  cairo_surface_t* right = cairo_image_surface_create_from_png(b.c_str());
  Difference d;
  if (cairo_surface_status(left) != CAIRO_STATUS_SUCCESS ||
      cairo_surface_status(right) != CAIRO_STATUS_SUCCESS ||
      cairo_image_surface_get_width(left) != cairo_image_surface_get_width(right) ||
      cairo_image_surface_get_height(left) != cairo_image_surface_get_height(right)) {
    d.pixels = -1;
  } else {
    const int width = cairo_image_surface_get_width(left);
    const int height = cairo_image_surface_get_height(left);
    const int stride = cairo_image_surface_get_stride(left);
    const unsigned char* p = cairo_image_surface_get_data(left);
    const unsigned char* q = cairo_image_surface_get_data(right);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        int most = 0;
        for (int c = 0; c < 3; ++c) {
          const int at = y * stride + x * 4 + c;
          most = std::max(most, std::abs(p[at] - q[at]));
        }
        d.touched += most > 0;
        d.pixels += most > 96;
      }
    }
  }
  cairo_surface_destroy(left);
  cairo_surface_destroy(right);
  return d;
}

TEST(PdfLook, PageDrawsAsCairoDrawsItAndItsTextComesBack) {
  const std::filesystem::path folder = std::filesystem::current_path() / "render-look";
  std::filesystem::create_directories(folder);
  const engine::Page page = MixedPage();
  {
    auto sink = MakeSink(Format::Pdf, folder / "mixed.pdf");
    sink->Begin(testing::LetterDocument("Customer Ledger"));
    sink->AddPage(page);
    sink->End();
  }
  WriteWithCairo(page, folder / "mixed-cairo.pdf");
  for (const char* name : {"mixed", "mixed-cairo"}) {
    int status = -1;
    RunCommand("pdftoppm -png -r 80 -singlefile '" + (folder / name).string() + ".pdf' '" +
                   (folder / name).string() + "'",
               &status);
    ASSERT_EQ(status, 0) << name;
  }
  const Difference d = Compare(folder / "mixed.png", folder / "mixed-cairo.png");
  ASSERT_GE(d.pixels, 0) << "images of different sizes";
  // 680 x 880 pixels; the text alone covers some 20,000.
  EXPECT_LE(d.pixels, 20) << d.touched << " pixels differ at all";

  const std::string text = RunCommand("pdftotext '" + (folder / "mixed.pdf").string() + "' -");
  for (const char* expected :
       {"Café résumé — ½ price*, déjà vu", "Remittance advice: Times italic 11", "OVERDUE 1,234.50",
        "Please pay by 30/06/2025", "Credit note: returned \"seconds\""}) {
    EXPECT_NE(text.find(expected), std::string::npos) << expected << " not in\n" << text;
  }
}

}  // namespace
}  // namespace trellin::render
