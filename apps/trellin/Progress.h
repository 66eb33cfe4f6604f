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
  // For work of unknown length: shows `status` ("page 12, 530 rows") with the same pacing.
  void Update(const std::string& status);
  // Clears the bar.
  void Finish();

 private:
  [[nodiscard]] bool Due();
  void Draw(const std::string& text);

  std::string label_;
  bool enabled_;
  bool drawn_ = false;
  std::size_t width_ = 0;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point last_draw_;
};

}  // namespace trellin::cli
