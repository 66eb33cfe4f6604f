#pragma once
// A file written under a temporary name beside its target and renamed over the target only when
// complete.

#include <cstdio>
#include <filesystem>
#include <memory>

namespace trellin::render {

// While it is neither committed nor discarded, the temporary file is listed for
// RemoveStagedFilesNow, so that a run stopped by a signal leaves none behind.
class StagedFile {
 public:
  // Creates the temporary file in the target's folder. Throws RenderError when it cannot be
  // created (missing folder, no permission).
  explicit StagedFile(std::filesystem::path target);
  // Removes the temporary file unless it was committed.
  ~StagedFile();
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;
  StagedFile(StagedFile&& other) noexcept;
  StagedFile& operator=(StagedFile&&) = delete;

  [[nodiscard]] const std::filesystem::path& Target() const { return target_; }
  [[nodiscard]] const std::filesystem::path& TempPath() const { return temp_; }
  // The open stream on the temporary file; owned here. Null once closed.
  [[nodiscard]] std::FILE* Stream() const { return stream_; }
  // Flushes and closes the stream; throws RenderError when the data could not be written.
  void Close();
  // Closes (when still open) and renames the temporary file over the target; throws RenderError
  // on failure, leaving the target as it was.
  void Commit();
  // Closes and removes the temporary file. Never throws.
  void Discard() noexcept;

 private:
  std::filesystem::path target_;
  std::filesystem::path temp_;
  std::FILE* stream_ = nullptr;
  bool done_ = false;
  // The temporary file's name as listed for RemoveStagedFilesNow; it keeps its address however
  // the object moves.
  std::unique_ptr<char[]> listed_;
};

// Removes every temporary file of a StagedFile still open, and nothing else. Safe to call from a
// signal handler (it uses unlink alone); for one that then ends the process. Lists up to 4,096
// files at a time (a PNG run stages one per page); any beyond are not removed.
void RemoveStagedFilesNow() noexcept;

}  // namespace trellin::render
