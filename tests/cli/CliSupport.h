#pragma once
// Running the real trellin binary from tests, and a small company file to point it at.

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/TempFolder.h"

namespace trellin::testing {

struct RunResult {
  int exit_code = -1;
  std::string out;
  std::string err;
};

// Runs the trellin binary with `args` (no shell: arguments are passed as they are), with
// `env` entries ("NAME=value") added to the environment and TRELLIN_DB cleared unless given.
RunResult RunTrellin(const std::vector<std::string>& args,
                     const std::vector<std::string>& env = {});

// Writes a company file at `path` with a few customer types and special prices.
void WriteSmallCompany(const std::filesystem::path& path);

}  // namespace trellin::testing
