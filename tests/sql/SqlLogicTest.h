#pragma once
// Data-driven tests of the translator in files of blocks, one blank line between blocks:
//
//   statement ok              the Jet text translates and SQLite prepares the result
//   statement error <text>    translation fails with a message containing <text>
//   translate                 the exact SQLite text expected after ----
//   setup                     raw SQLite statements run as they are
//   query                     the rows expected after ----, values parted by a tab
//
// Lines starting with # are comments.

#include <set>
#include <string>
#include <vector>

#include "TestDatabase.h"

namespace trellin::sql::testing {

enum class BlockKind { kStatementOk, kStatementError, kTranslate, kSetup, kQuery };

struct Block {
  BlockKind kind = BlockKind::kStatementOk;
  int line = 0;                     // of the block's first line, 1-based
  std::string argument;             // the substring of "statement error"
  std::string sql;                  // Jet text (raw SQLite for setup)
  std::vector<std::string> expect;  // the lines after ----
};

// The blocks of a test file. Throws std::runtime_error naming the line of a malformed block.
[[nodiscard]] std::vector<Block> ParseTestFile(const std::string& text);

struct BlockResult {
  bool passed = true;
  std::string message;  // why it failed
};

// Runs one block against `db`.
[[nodiscard]] BlockResult RunBlock(const Block& block, TestDatabase& db);

// The first line of a block's statement, trimmed: how known failures are listed.
[[nodiscard]] std::string FirstLine(const std::string& sql);

// The rows of a prepared statement as text, each value shown by the column's type: money as
// its shortest exact decimal, dates as ISO text, booleans True/False, NULL as NULL, an empty
// text as (empty). A value whose storage class does not match its type is shown with the
// class in front ("NOT-INTEGER?12.5"), so that the test fails.
[[nodiscard]] std::string RenderValue(sqlite3_stmt* statement, int column, SemType type);

}  // namespace trellin::sql::testing
