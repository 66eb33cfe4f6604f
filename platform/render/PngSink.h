#pragma once
// One PNG image per page, "name-1.png", "name-2.png", ..., on a white background.

#include <filesystem>
#include <vector>

#include "platform/render/PagePainter.h"
#include "platform/render/SinkBase.h"
#include "platform/render/StagedFile.h"

namespace trellin::render {

class PngSink final : public SinkBase {
 public:
  // `target` names the series ("out/ledger.png"); `dpi` the resolution.
  PngSink(std::filesystem::path target, double dpi);

  // The file of page `number` (1-based) for `target`: "out/ledger.png", 3 -> "out/ledger-3.png".
  [[nodiscard]] static std::filesystem::path PagePath(const std::filesystem::path& target,
                                                      int number);

 protected:
  void OnBegin(const engine::DocumentInfo& info) override;
  void OnPage(const engine::Page& page) override;
  // Renames every page into place, then removes pages left by an older, longer run of the same
  // name, so the series on disk is exactly this run's.
  void OnEnd() override;
  void OnAbort() noexcept override;

 private:
  std::filesystem::path target_;
  double dpi_;
  PagePainter painter_{true};
  std::vector<StagedFile> pages_;
};

}  // namespace trellin::render
