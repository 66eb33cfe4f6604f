#include "tests/support/TempFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace trellin::testing {

TempFolder::TempFolder(std::string_view prefix) {
  std::string pattern =
      (std::filesystem::temp_directory_path() / (std::string(prefix) + "-XXXXXX")).string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot make a temporary folder " + pattern);
  }
  path_ = pattern;
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempFolder::File(std::string_view name) const { return (path_ / name).string(); }

std::vector<std::string> TempFolder::Files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

void WriteFile(const std::filesystem::path& path, std::string_view text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
  if (!out) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace trellin::testing
