#pragma once
// PDF written by our own writer: each page's text, rules and boxes go into one compressed
// content stream as the page arrives, text as runs of glyphs placed exactly where pango's shaping
// put them (the shaping the engine measured with); fonts are embedded once, as subsets, at the
// end, with the outline and the cross-reference table. Memory holds the open outline path, one
// offset per object and the glyphs each font used, whatever the page count.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/render/FontCache.h"
#include "platform/render/PdfFile.h"
#include "platform/render/PdfFonts.h"
#include "platform/render/PdfOutline.h"
#include "platform/render/SinkBase.h"
#include "platform/render/StagedFile.h"

namespace trellin::render {

class PdfSink final : public SinkBase {
 public:
  explicit PdfSink(std::filesystem::path target);
  ~PdfSink() override;

 protected:
  void OnBegin(const engine::DocumentInfo& info) override;
  void OnPage(const engine::Page& page) override;
  void OnEnd() override;
  void OnAbort() noexcept override;

 private:
  // Writes a link annotation for each linked text line of `page` (`height` in points); returns
  // the references for the page's /Annots, "" when there are none.
  std::string WriteLinks(const engine::Page& page, double height);
  class Content;

  std::filesystem::path target_;
  std::optional<StagedFile> file_;
  std::unique_ptr<PdfFile> pdf_;
  std::unique_ptr<PdfFonts> fonts_;
  std::unique_ptr<PdfOutline> outline_;
  std::unique_ptr<Content> content_;
  FontCache layouts_{false};
  int pages_root_ = 0;
  std::string kids_;  // "n 0 R" of every page so far
  int pages_ = 0;
};

}  // namespace trellin::render
