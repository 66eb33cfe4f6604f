#pragma once
// A fresh folder under the system's temporary folder, removed with everything in it when the
// object goes.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace trellin::testing {

class TempFolder {
 public:
  // Makes "<temp>/<prefix>-XXXXXX". Throws std::runtime_error when it cannot.
  explicit TempFolder(std::string_view prefix = "trellin-test");
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  // Path() / name, as text.
  [[nodiscard]] std::string File(std::string_view name) const;
  [[nodiscard]] std::filesystem::path operator/(std::string_view name) const {
    return path_ / name;
  }
  // Names of the files in the folder, sorted: shows leftover temporary files too.
  [[nodiscard]] std::vector<std::string> Files() const;

 private:
  std::filesystem::path path_;
};

// The whole of a file as bytes. Throws std::runtime_error naming the file when it cannot be read.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);

// Writes `text` to `path`, replacing it. Throws std::runtime_error naming the file.
void WriteFile(const std::filesystem::path& path, std::string_view text);

}  // namespace trellin::testing
