// One test per .test file under tests/sql (the corpus included): a new file needs no build edit.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include "SqlLogicTest.h"
#include "tests/support/TestPaths.h"

namespace trellin::sql::testing {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> TestFiles() {
  std::vector<std::string> files;
  const fs::path folder = trellin::testing::TestDir("sql");
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && entry.path().extension() == ".test") {
      files.push_back(fs::relative(entry.path(), folder).generic_string());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

// First lines of corpus statements that fail for reasons outside the translator.
std::set<std::string> KnownFailures() {
  std::set<std::string> known;
  std::istringstream in(
      ReadFile((trellin::testing::TestDir("sql") / "known_corpus_failures.txt").string()));
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    known.insert(FirstLine(line));
  }
  return known;
}

class SqlLogicTest : public ::testing::TestWithParam<std::string> {};

TEST_P(SqlLogicTest, File) {
  const std::string path = (trellin::testing::TestDir("sql") / GetParam()).string();
  std::vector<Block> blocks = ParseTestFile(ReadFile(path));
  TestDatabase db(SchemaPath());
  const std::set<std::string> known = KnownFailures();
  int skipped = 0;
  for (const Block& block : blocks) {
    BlockResult result = RunBlock(block, db);
    bool listed = block.kind != BlockKind::kSetup && known.count(FirstLine(block.sql)) > 0;
    if (listed) {
      if (result.passed) {
        ADD_FAILURE() << GetParam() << ":" << block.line
                      << ": passes now; remove it from known_corpus_failures.txt";
      } else {
        ++skipped;
      }
      continue;
    }
    EXPECT_TRUE(result.passed) << GetParam() << ":" << block.line << ": " << block.sql << "\n"
                               << result.message;
  }
  if (skipped > 0) {
    RecordProperty("known_failures_skipped", skipped);
    std::cout << "[ SKIPPED  ] " << skipped << " known corpus failure(s) in " << GetParam() << "\n";
  }
}

std::string TestName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param.substr(0, info.param.size() - 5);
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Files, SqlLogicTest, ::testing::ValuesIn(TestFiles()), TestName);

}  // namespace
}  // namespace trellin::sql::testing
