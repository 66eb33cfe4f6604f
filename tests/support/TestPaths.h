#pragma once
// Where the tests find their data files. The checkout's path is compiled into one unit of the
// support library only, so that every other test unit compiles to the same text in any checkout
// and ccache serves it from another checkout's build.

#include <filesystem>
#include <string_view>

namespace trellin::testing {

// The root of the checkout the tests were built from.
[[nodiscard]] std::filesystem::path SourceDir();

// The build folder the tests were built in.
[[nodiscard]] std::filesystem::path BinaryDir();

// A folder of the tests' data: SourceDir()/tests/<folder> ("core", "reports/admin").
[[nodiscard]] std::filesystem::path TestDir(std::string_view folder);

}  // namespace trellin::testing
