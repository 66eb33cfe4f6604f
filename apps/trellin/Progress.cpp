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

void Progress::Update(double done) {
  if (!enabled_) return;
  auto now = std::chrono::steady_clock::now();
  if (now - start_ < std::chrono::milliseconds(500)) return;
  if (drawn_ && now - last_draw_ < std::chrono::milliseconds(100)) return;
  last_draw_ = now;
  drawn_ = true;
  constexpr int kWidth = 30;
  done = std::clamp(done, 0.0, 1.0);
  int filled = static_cast<int>(done * kWidth);
  std::string bar(static_cast<std::size_t>(filled), '#');
  bar.resize(kWidth, '.');
  std::fprintf(stderr, "\r%s [%s] %3d%%", label_.c_str(), bar.c_str(), static_cast<int>(done * 100));
  std::fflush(stderr);
}

void Progress::Finish() {
  if (!drawn_) return;
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(label_.size()) + 38, "");
  std::fflush(stderr);
  drawn_ = false;
}

}  // namespace trellin::cli
