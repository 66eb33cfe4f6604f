#include "apps/trellin/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace trellin::cli {

Progress::Progress(std::string label)
    : label_(std::move(label)),
      enabled_(isatty(STDERR_FILENO) != 0),
      start_(std::chrono::steady_clock::now()),
      last_draw_(start_) {}

Progress::~Progress() { Finish(); }

bool Progress::Due() {
  if (!enabled_) return false;
  auto now = std::chrono::steady_clock::now();
  if (now - start_ < std::chrono::milliseconds(500)) return false;
  if (drawn_ && now - last_draw_ < std::chrono::milliseconds(100)) return false;
  last_draw_ = now;
  return true;
}

void Progress::Draw(const std::string& text) {
  drawn_ = true;
  width_ = std::max(width_, text.size());
  std::fprintf(stderr, "\r%-*s", static_cast<int>(width_), text.c_str());
  std::fflush(stderr);
}

void Progress::Update(double done) {
  if (!Due()) return;
  constexpr int kWidth = 30;
  done = std::clamp(done, 0.0, 1.0);
  int filled = static_cast<int>(done * kWidth);
  std::string bar(static_cast<std::size_t>(filled), '#');
  bar.resize(kWidth, '.');
  Draw(label_ + " [" + bar + "] " + std::to_string(static_cast<int>(done * 100)) + "%");
}

void Progress::Update(const std::string& status) {
  if (Due()) Draw(label_ + ": " + status);
}

void Progress::Finish() {
  if (!drawn_) return;
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(width_), "");
  std::fflush(stderr);
  drawn_ = false;
}

}  // namespace trellin::cli
