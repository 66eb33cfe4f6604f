#include "SqlLogicTest.h"

#include <charconv>
#include <cstdint>
#include <sstream>
#include <stdexcept>

#include "platform/sql/Translate.h"

namespace trellin::sql::testing {
namespace {

std::string TrimCopy(const std::string& s) {
  std::size_t first = s.find_first_not_of(" \t\r");
  if (first == std::string::npos) return {};
  std::size_t last = s.find_last_not_of(" \t\r");
  return s.substr(first, last - first + 1);
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) text += '\n';
    text += lines[i];
  }
  return text;
}

std::string MoneyText(std::int64_t raw) {
  bool negative = raw < 0;
  std::uint64_t magnitude = negative ? 0 - static_cast<std::uint64_t>(raw) : raw;
  std::string text = std::to_string(magnitude / 10000);
  std::string fraction = std::to_string(10000 + magnitude % 10000).substr(1);
  while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();
  if (!fraction.empty()) text += "." + fraction;
  return negative ? "-" + text : text;
}

std::string DoubleText(double value) {
  char buffer[64];
  auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, end);
}

std::string Text(sqlite3_stmt* statement, int column) {
  const unsigned char* text = sqlite3_column_text(statement, column);
  return text ? reinterpret_cast<const char*>(text) : "";
}

BlockResult Fail(std::string message) { return BlockResult{false, std::move(message)}; }

BlockResult RunQuery(const Block& block, TestDatabase& db, const Translation& translation) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(db.handle(), translation.sql.c_str(), -1, &statement, nullptr) !=
      SQLITE_OK) {
    return Fail("SQLite cannot prepare\n  " + translation.sql + "\n  " +
                sqlite3_errmsg(db.handle()));
  }
  std::vector<std::string> rows;
  int step;
  while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
    std::string row;
    for (std::size_t c = 0; c < translation.columns.size(); ++c) {
      if (c > 0) row += '\t';
      row += RenderValue(statement, static_cast<int>(c), translation.columns[c].type);
    }
    rows.push_back(std::move(row));
  }
  std::string error = step == SQLITE_DONE ? "" : sqlite3_errmsg(db.handle());
  sqlite3_finalize(statement);
  if (!error.empty()) return Fail("SQLite failed running\n  " + translation.sql + "\n  " + error);
  if (rows != block.expect) {
    return Fail("rows differ for\n  " + translation.sql + "\nexpected:\n" +
                JoinLines(block.expect) + "\nactual:\n" + JoinLines(rows));
  }
  return {};
}

}  // namespace

std::string FirstLine(const std::string& sql) { return TrimCopy(sql.substr(0, sql.find('\n'))); }

std::vector<Block> ParseTestFile(const std::string& text) {
  std::vector<Block> blocks;
  std::istringstream in(text);
  std::string line;
  int number = 0;
  Block* current = nullptr;
  bool after_separator = false;
  std::vector<std::string> sql_lines;
  auto finish = [&] {
    if (current != nullptr) current->sql = JoinLines(sql_lines);
    current = nullptr;
    sql_lines.clear();
    after_separator = false;
  };
  while (std::getline(in, line)) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line[0] == '#') continue;
    if (TrimCopy(line).empty()) {
      finish();
      continue;
    }
    if (current == nullptr) {
      Block block;
      block.line = number;
      std::string head = TrimCopy(line);
      if (head == "statement ok") {
        block.kind = BlockKind::kStatementOk;
      } else if (head.rfind("statement error", 0) == 0) {
        block.kind = BlockKind::kStatementError;
        block.argument = TrimCopy(head.substr(15));
      } else if (head == "translate") {
        block.kind = BlockKind::kTranslate;
      } else if (head == "setup") {
        block.kind = BlockKind::kSetup;
      } else if (head == "query") {
        block.kind = BlockKind::kQuery;
      } else {
        throw std::runtime_error("line " + std::to_string(number) + ": unknown block '" + head +
                                 "'");
      }
      blocks.push_back(std::move(block));
      current = &blocks.back();
      continue;
    }
    if (line == "----" &&
        (current->kind == BlockKind::kTranslate || current->kind == BlockKind::kQuery)) {
      after_separator = true;
      continue;
    }
    (after_separator ? current->expect : sql_lines).push_back(line);
  }
  finish();
  for (const Block& block : blocks) {
    if (block.sql.empty()) {
      throw std::runtime_error("line " + std::to_string(block.line) + ": block has no SQL");
    }
  }
  return blocks;
}

std::string RenderValue(sqlite3_stmt* statement, int column, SemType type) {
  int storage = sqlite3_column_type(statement, column);
  if (storage == SQLITE_NULL) return "NULL";
  std::string text = Text(statement, column);
  auto mismatch = [&](std::string_view storage_name) {
    return std::string(storage_name) + "?" + text;
  };
  switch (type) {
    case SemType::Currency:
      if (storage != SQLITE_INTEGER) return mismatch("NOT-INTEGER");
      return MoneyText(sqlite3_column_int64(statement, column));
    case SemType::Long:
      if (storage != SQLITE_INTEGER) return mismatch("NOT-INTEGER");
      return text;
    case SemType::Boolean: {
      if (storage != SQLITE_INTEGER) return mismatch("NOT-INTEGER");
      std::int64_t value = sqlite3_column_int64(statement, column);
      return value == 1 ? "True" : value == 0 ? "False" : mismatch("NOT-0/1");
    }
    case SemType::Double:
      if (storage != SQLITE_FLOAT) return mismatch("NOT-REAL");
      return DoubleText(sqlite3_column_double(statement, column));
    case SemType::Date:
    case SemType::Text:
      if (storage != SQLITE_TEXT) return mismatch("NOT-TEXT");
      return text.empty() ? "(empty)" : text;
    case SemType::Null:
      break;
  }
  return mismatch("UNTYPED");
}

BlockResult RunBlock(const Block& block, TestDatabase& db) {
  if (block.kind == BlockKind::kSetup) {
    std::string error = db.Execute(block.sql);
    return error.empty() ? BlockResult{} : Fail("setup failed: " + error);
  }
  Translation translation;
  try {
    translation = Translate(block.sql, db.catalog());
  } catch (const SqlError& error) {
    if (block.kind == BlockKind::kStatementError) {
      if (std::string(error.what()).find(block.argument) != std::string::npos) return {};
      return Fail("expected an error containing '" + block.argument + "', got '" + error.what() +
                  "'");
    }
    return Fail(std::string("translation failed: ") + error.what());
  }
  switch (block.kind) {
    case BlockKind::kStatementError:
      return Fail("expected an error containing '" + block.argument + "', translated to\n  " +
                  translation.sql);
    case BlockKind::kTranslate:
      if (translation.sql != JoinLines(block.expect)) {
        return Fail("expected\n  " + JoinLines(block.expect) + "\nactual\n  " + translation.sql);
      }
      return {};
    case BlockKind::kStatementOk: {
      sqlite3_stmt* statement = nullptr;
      int rc = sqlite3_prepare_v2(db.handle(), translation.sql.c_str(), -1, &statement, nullptr);
      sqlite3_finalize(statement);
      if (rc != SQLITE_OK) {
        return Fail("SQLite cannot prepare\n  " + translation.sql + "\n  " +
                    sqlite3_errmsg(db.handle()));
      }
      return {};
    }
    case BlockKind::kQuery:
      return RunQuery(block, db, translation);
    case BlockKind::kSetup:
      break;
  }
  return {};
}

}  // namespace trellin::sql::testing
