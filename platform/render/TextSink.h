#pragma once
// Plain text: each page laid out on a character grid (see TextPage.h), pages separated by a form
// feed.

#include <filesystem>
#include <optional>

#include "platform/render/SinkBase.h"
#include "platform/render/StagedFile.h"
#include "platform/render/TextPage.h"

namespace trellin::render {

class TextSink final : public SinkBase {
 public:
  explicit TextSink(std::filesystem::path target, TextGrid grid = {})
      : target_(std::move(target)), grid_(grid) {}

 protected:
  void OnBegin(const engine::DocumentInfo& info) override;
  void OnPage(const engine::Page& page) override;
  void OnEnd() override;
  void OnAbort() noexcept override;

 private:
  std::filesystem::path target_;
  TextGrid grid_;
  std::optional<StagedFile> file_;
  bool first_ = true;
};

}  // namespace trellin::render
