#pragma once
// The order every sink keeps: Begin, pages, then End or Abort. Derived sinks implement the steps
// and need not check the order themselves.

#include "platform/engine/PageModel.h"

namespace trellin::render {

class SinkBase : public engine::PageSink {
 public:
  // Each throws RenderError when called out of order. A step that throws leaves the sink failed:
  // only Abort (or destruction) may follow, and no output is left behind.
  void Begin(const engine::DocumentInfo& info) final;
  void AddPage(const engine::Page& page) final;
  void End() final;
  // Never throws; may be called at any time, also twice. After End it changes nothing.
  void Abort() final;

 protected:
  virtual void OnBegin(const engine::DocumentInfo& info) = 0;
  virtual void OnPage(const engine::Page& page) = 0;
  // Completes the output and moves it into place.
  virtual void OnEnd() = 0;
  // Drops everything written so far. Must not throw.
  virtual void OnAbort() noexcept = 0;

  [[nodiscard]] const engine::DocumentInfo& Info() const { return info_; }

 private:
  enum class State { Fresh, Open, Ended, Failed };
  State state_ = State::Fresh;
  engine::DocumentInfo info_;
};

}  // namespace trellin::render
