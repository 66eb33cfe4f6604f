// Writes the sample ledger page as PNG (and PDF) into the build folder for a person to look at,
// and checks what can be checked by machine: the size, the white paper, the ink and the shading.

#include <cairo.h>
#include <gtest/gtest.h>

#include "RenderTestSupport.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

using testing::SampleLedgerPage;

std::uint32_t Pixel(cairo_surface_t* image, int x, int y) {
  const unsigned char* data = cairo_image_surface_get_data(image);
  const int stride = cairo_image_surface_get_stride(image);
  return *reinterpret_cast<const std::uint32_t*>(data + y * stride + x * 4) & 0xFFFFFF;
}

TEST(LedgerLook, SamplePageRendersToPngWithPaperInkAndShading) {
  const std::filesystem::path folder = std::filesystem::current_path() / "render-look";
  std::filesystem::create_directories(folder);
  const engine::Page page = SampleLedgerPage(1, 12);
  for (auto [format, name] :
       {std::pair{Format::Png, "ledger.png"}, std::pair{Format::Pdf, "ledger.pdf"}}) {
    RenderOptions options;
    options.png_dpi = 144;
    auto sink = MakeSink(format, folder / name, options);
    sink->Begin(testing::LetterDocument("Customer Ledger"));
    sink->AddPage(page);
    sink->End();
  }
  cairo_surface_t* image = cairo_image_surface_create_from_png((folder / "ledger-1.png").c_str());
  ASSERT_EQ(cairo_surface_status(image), CAIRO_STATUS_SUCCESS);
  EXPECT_EQ(cairo_image_surface_get_width(image), 1224);  // 8.5 in at 144 dpi
  EXPECT_EQ(cairo_image_surface_get_height(image), 1584);
  cairo_surface_flush(image);
  EXPECT_EQ(Pixel(image, 10, 10), 0xFFFFFFu) << "paper is white";
  // The second detail row is shaded: twips 1440.. across, 2160+240.. down; 144 dpi = 10 twips/px.
  EXPECT_EQ(Pixel(image, 146, 243), 0xE8ECF2u) << "shaded band";
  // The title is inked somewhere along its line.
  int dark = 0;
  for (int x = 144; x < 1080; ++x) {
    for (int y = 72; y < 100; ++y) dark += (Pixel(image, x, y) & 0xFF) < 0x80;
  }
  EXPECT_GT(dark, 200);
  cairo_surface_destroy(image);
}

}  // namespace
}  // namespace trellin::render
