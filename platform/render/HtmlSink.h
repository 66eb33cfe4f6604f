#pragma once
// One self-contained HTML file: every page a paper-sized box with its text, rules and shading
// absolutely positioned, selectable text, and print styles that put each box on its own sheet.

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/render/SinkBase.h"
#include "platform/render/StagedFile.h"

namespace trellin::render {

class HtmlSink final : public SinkBase {
 public:
  explicit HtmlSink(std::filesystem::path target) : target_(std::move(target)) {}

 protected:
  void OnBegin(const engine::DocumentInfo& info) override;
  void OnPage(const engine::Page& page) override;
  void OnEnd() override;
  void OnAbort() noexcept override;

 private:
  void Emit(const std::string& text);
  // The class name for the run's look; declares it into `out` the first time.
  std::string StyleClass(const engine::TextRun& run, std::string& out);

  std::filesystem::path target_;
  std::optional<StagedFile> file_;
  // Paper sizes that differ from the document's, each a named print page ("paper1", "paper2", ...).
  std::vector<std::pair<float, float>> sizes_;
  std::unordered_map<std::string, std::string> styles_;
};

// `text` with & < > " ' written as character references, for element content and attributes.
// Bytes that are not valid UTF-8 become U+FFFD, so the file always decodes.
[[nodiscard]] std::string EscapeHtml(std::string_view text);

}  // namespace trellin::render
