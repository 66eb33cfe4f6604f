#pragma once
// PDF through cairo: pages stream to the file as they arrive, fonts are embedded as subsets,
// the document title goes into the metadata and bookmarks into the outline.

#include <cairo.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/render/PagePainter.h"
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
  static cairo_status_t Write(void* closure, const unsigned char* data, unsigned int length);
  void AddBookmarks(const engine::Page& page);
  void CheckStatus() const;
  void Release() noexcept;

  struct OpenOutline {
    std::string name;
    int id = 0;
  };

  std::filesystem::path target_;
  std::optional<StagedFile> file_;
  cairo_surface_t* surface_ = nullptr;
  cairo_t* cr_ = nullptr;
  PagePainter painter_{false};
  int pages_ = 0;
  bool discarding_ = false;
  // The outline entries of the last bookmark path, one per level: a following bookmark that
  // shares a leading part of the path hangs under the same entries.
  std::vector<OpenOutline> outline_;
};

}  // namespace trellin::render
