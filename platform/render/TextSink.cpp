#include "platform/render/TextSink.h"

#include <cstdio>
#include <string>

#include "platform/render/Render.h"

namespace trellin::render {

void TextSink::OnBegin(const engine::DocumentInfo&) { file_.emplace(target_); }

void TextSink::OnPage(const engine::Page& page) {
  std::string text = first_ ? std::string() : std::string("\f");
  first_ = false;
  text += RenderTextPage(page, grid_);
  if (std::fwrite(text.data(), 1, text.size(), file_->Stream()) != text.size()) {
    throw RenderError("Cannot write " + target_.string());
  }
}

void TextSink::OnEnd() {
  file_->Commit();
  file_.reset();
}

void TextSink::OnAbort() noexcept { file_.reset(); }

}  // namespace trellin::render
