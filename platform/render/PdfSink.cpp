#include "platform/render/PdfSink.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "platform/render/Render.h"
#include "platform/render/Utf8.h"

namespace trellin::render {
namespace {

constexpr double kTwipsPerPoint = 20.0;
// US Letter, for a page model that gives no paper size.
constexpr double kDefaultWidth = 612.0, kDefaultHeight = 792.0;

double PointsOr(float twips, double fallback) {
  return twips > 0 ? twips / kTwipsPerPoint : fallback;
}

}  // namespace

PdfSink::PdfSink(std::filesystem::path target) : target_(std::move(target)) {}

PdfSink::~PdfSink() { OnAbort(); }

cairo_status_t PdfSink::Write(void* closure, const unsigned char* data, unsigned int length) {
  auto* self = static_cast<PdfSink*>(closure);
  if (self->discarding_) return CAIRO_STATUS_SUCCESS;
  std::FILE* stream = self->file_ ? self->file_->Stream() : nullptr;
  if (stream == nullptr || std::fwrite(data, 1, length, stream) != length) {
    return CAIRO_STATUS_WRITE_ERROR;
  }
  return CAIRO_STATUS_SUCCESS;
}

void PdfSink::CheckStatus() const {
  const cairo_status_t status = cr_ != nullptr ? cairo_status(cr_) : cairo_surface_status(surface_);
  if (status != CAIRO_STATUS_SUCCESS) {
    throw RenderError("Cannot write " + target_.string() + ": " + cairo_status_to_string(status));
  }
}

void PdfSink::OnBegin(const engine::DocumentInfo& info) {
  file_.emplace(target_);
  surface_ = cairo_pdf_surface_create_for_stream(&PdfSink::Write, this,
                                                 PointsOr(info.page_width, kDefaultWidth),
                                                 PointsOr(info.page_height, kDefaultHeight));
  CheckStatus();
  cairo_pdf_surface_restrict_to_version(surface_, CAIRO_PDF_VERSION_1_5);
  if (!info.title.empty()) {
    cairo_pdf_surface_set_metadata(surface_, CAIRO_PDF_METADATA_TITLE,
                                   ValidUtf8(info.title).c_str());
  }
  if (!info.caption.empty() && info.caption != info.title) {
    cairo_pdf_surface_set_metadata(surface_, CAIRO_PDF_METADATA_SUBJECT,
                                   ValidUtf8(info.caption).c_str());
  }
  cairo_pdf_surface_set_metadata(surface_, CAIRO_PDF_METADATA_CREATOR, "Trellin Reports");
  cr_ = cairo_create(surface_);
  CheckStatus();
}

void PdfSink::OnPage(const engine::Page& page) {
  // Each page takes its own paper size, so a landscape page may follow portrait ones.
  cairo_pdf_surface_set_size(surface_,
                             PointsOr(page.width, PointsOr(Info().page_width, kDefaultWidth)),
                             PointsOr(page.height, PointsOr(Info().page_height, kDefaultHeight)));
  ++pages_;
  painter_.Paint(cr_, page);
  AddBookmarks(page);
  cairo_show_page(cr_);
  CheckStatus();
}

void PdfSink::AddBookmarks(const engine::Page& page) {
  for (const engine::Bookmark& mark : page.bookmarks) {
    if (mark.path.empty()) continue;
    const double top =
        std::isfinite(mark.top) ? std::clamp(mark.top / kTwipsPerPoint, 0.0, 14400.0) : 0.0;
    const std::string dest =
        "page=" + std::to_string(pages_) + " pos=[0 " + std::to_string(std::lround(top)) + "]";
    // Keep the open entries the path shares with the previous bookmark; add the rest, each
    // pointing at this place.
    std::size_t shared = 0;
    while (shared < outline_.size() && shared + 1 < mark.path.size() &&
           outline_[shared].name == mark.path[shared]) {
      ++shared;
    }
    outline_.resize(shared);
    for (std::size_t level = shared; level < mark.path.size(); ++level) {
      const int parent = level == 0 ? CAIRO_PDF_OUTLINE_ROOT : outline_[level - 1].id;
      const int flags = level == 0 ? CAIRO_PDF_OUTLINE_FLAG_OPEN : 0;
      const int id = cairo_pdf_surface_add_outline(
          surface_, parent, ValidUtf8(mark.path[level]).c_str(), dest.c_str(),
          static_cast<cairo_pdf_outline_flags_t>(flags));
      outline_.push_back({mark.path[level], id});
    }
  }
}

void PdfSink::OnEnd() {
  cairo_destroy(cr_);
  cr_ = nullptr;
  cairo_surface_finish(surface_);
  CheckStatus();
  cairo_surface_destroy(surface_);
  surface_ = nullptr;
  file_->Commit();
  file_.reset();
}

void PdfSink::Release() noexcept {
  if (cr_ != nullptr) cairo_destroy(cr_);
  cr_ = nullptr;
  if (surface_ != nullptr) {
    // Finishing flushes into the write callback, which now drops everything.
    discarding_ = true;
    cairo_surface_destroy(surface_);
  }
  surface_ = nullptr;
}

void PdfSink::OnAbort() noexcept {
  Release();
  if (file_) file_->Discard();
  file_.reset();
}

}  // namespace trellin::render
