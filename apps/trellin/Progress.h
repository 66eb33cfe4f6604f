#pragma once
// A progress bar on stderr, shown only when stderr is a terminal; silent otherwise.

#include <chrono>
#include <string>

namespace trellin::cli {

class Progress {
 public:
  explicit Progress(std::string label);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // `done` from 0 to 1. Redraws at most ten times a second, and only after the first half second,
  // so quick work shows nothing.
  void Update(double done);
  // Clears the bar.
  void Finish();

 private:
  std::string label_;
  bool enabled_;
  bool drawn_ = false;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point last_draw_;
};

}  // namespace trellin::cli
