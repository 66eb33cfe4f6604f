#include "tests/support/TestPaths.h"

namespace trellin::testing {

std::filesystem::path SourceDir() { return TRELLIN_SOURCE_DIR; }

std::filesystem::path BinaryDir() { return TRELLIN_BINARY_DIR; }

std::filesystem::path TestDir(std::string_view folder) {
  return SourceDir() / "tests" / std::filesystem::path(folder);
}

}  // namespace trellin::testing
