#include "platform/render/SinkBase.h"

#include "platform/render/Render.h"

namespace trellin::render {

// Each step that throws drops the output at once, before the error travels on, so that a caller
// who forgets Abort still leaves nothing behind.
void SinkBase::Begin(const engine::DocumentInfo& info) {
  if (state_ != State::Fresh) throw RenderError("Output already begun");
  info_ = info;
  try {
    OnBegin(info_);
  } catch (...) {
    Abort();
    throw;
  }
  state_ = State::Open;
}

void SinkBase::AddPage(const engine::Page& page) {
  if (state_ != State::Open) {
    throw RenderError(state_ == State::Fresh ? "Page added before the output began"
                                             : "Page added to a finished output");
  }
  try {
    OnPage(page);
  } catch (...) {
    Abort();
    throw;
  }
}

void SinkBase::End() {
  if (state_ != State::Open) {
    throw RenderError(state_ == State::Fresh ? "Output ended before it began"
                                             : "Output already finished");
  }
  try {
    OnEnd();
  } catch (...) {
    Abort();
    throw;
  }
  state_ = State::Ended;
}

void SinkBase::Abort() {
  if (state_ == State::Ended || state_ == State::Failed) return;
  state_ = State::Failed;
  OnAbort();
}

}  // namespace trellin::render
