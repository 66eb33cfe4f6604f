#include "platform/render/PngSink.h"

#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <system_error>

#include "platform/render/Render.h"

namespace trellin::render {
namespace {

constexpr double kTwipsPerInch = 1440.0;
constexpr double kPointsPerInch = 72.0;
// The largest side an image may have; cairo's own limit is 32767 pixels.
constexpr double kMaxPixels = 32767.0;

struct SurfaceDeleter {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
struct ContextDeleter {
  void operator()(cairo_t* c) const { cairo_destroy(c); }
};

cairo_status_t WriteToFile(void* closure, const unsigned char* data, unsigned int length) {
  return std::fwrite(data, 1, length, static_cast<std::FILE*>(closure)) == length
             ? CAIRO_STATUS_SUCCESS
             : CAIRO_STATUS_WRITE_ERROR;
}

}  // namespace

PngSink::PngSink(std::filesystem::path target, double dpi)
    : target_(std::move(target)), dpi_(dpi) {}

std::filesystem::path PngSink::PagePath(const std::filesystem::path& target, int number) {
  std::filesystem::path path = target;
  path.replace_filename(target.stem().string() + "-" + std::to_string(number) +
                        (target.has_extension() ? target.extension().string() : ".png"));
  return path;
}

void PngSink::OnBegin(const engine::DocumentInfo&) {
  // Fail at once on a folder that cannot be written, not after the first page has been drawn.
  StagedFile probe(PagePath(target_, 1));
}

void PngSink::OnPage(const engine::Page& page) {
  const float width_twips = page.width > 0          ? page.width
                            : Info().page_width > 0 ? Info().page_width
                                                    : 12240;
  const float height_twips = page.height > 0          ? page.height
                             : Info().page_height > 0 ? Info().page_height
                                                      : 15840;
  const double scale = dpi_ / kPointsPerInch;
  const int width =
      static_cast<int>(std::ceil(std::min(width_twips / kTwipsPerInch * dpi_, kMaxPixels)));
  const int height =
      static_cast<int>(std::ceil(std::min(height_twips / kTwipsPerInch * dpi_, kMaxPixels)));

  std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  std::unique_ptr<cairo_t, ContextDeleter> cr(cairo_create(surface.get()));
  cairo_set_source_rgb(cr.get(), 1, 1, 1);
  cairo_paint(cr.get());
  cairo_scale(cr.get(), scale, scale);
  painter_.Paint(cr.get(), page);
  if (cairo_status(cr.get()) != CAIRO_STATUS_SUCCESS) {
    throw RenderError("Cannot draw page " + std::to_string(pages_.size() + 1) + ": " +
                      cairo_status_to_string(cairo_status(cr.get())));
  }
  cairo_surface_flush(surface.get());

  StagedFile& file = pages_.emplace_back(PagePath(target_, static_cast<int>(pages_.size()) + 1));
  const cairo_status_t status =
      cairo_surface_write_to_png_stream(surface.get(), &WriteToFile, file.Stream());
  if (status != CAIRO_STATUS_SUCCESS) {
    throw RenderError("Cannot write " + file.Target().string() + ": " +
                      cairo_status_to_string(status));
  }
  // Close now: a long report must not hold one open descriptor per page.
  file.Close();
}

void PngSink::OnEnd() {
  for (StagedFile& file : pages_) file.Commit();
  std::error_code ec;
  for (int number = static_cast<int>(pages_.size()) + 1;; ++number) {
    if (!std::filesystem::remove(PagePath(target_, number), ec)) break;
  }
  pages_.clear();
}

void PngSink::OnAbort() noexcept { pages_.clear(); }

}  // namespace trellin::render
