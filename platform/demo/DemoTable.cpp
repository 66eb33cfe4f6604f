#include "platform/demo/DemoTable.h"

#include <stdexcept>

#include "core/host/Database.h"

namespace trellin::demo {

void Cell::Bind(sqlite3_stmt* stmt, int index) const {
  struct Binder {
    sqlite3_stmt* stmt;
    int index;
    void operator()(std::monostate) const { sqlite3_bind_null(stmt, index); }
    void operator()(std::int64_t v) const { sqlite3_bind_int64(stmt, index, v); }
    void operator()(double v) const { sqlite3_bind_double(stmt, index, v); }
    void operator()(std::string_view v) const {
      sqlite3_bind_text(stmt, index, v.data(), static_cast<int>(v.size()), SQLITE_TRANSIENT);
    }
    void operator()(const std::string& v) const {
      sqlite3_bind_text(stmt, index, v.data(), static_cast<int>(v.size()), SQLITE_TRANSIENT);
    }
  };
  std::visit(Binder{stmt, index}, value_);
}

Cell OrNull(std::string_view text) { return text.empty() ? Cell(Cell::Null{}) : Cell(text); }

DemoTable::DemoTable(sqlite3* db, std::string_view table,
                     std::initializer_list<const char*> columns)
    : db_(db), table_(table), columns_(static_cast<int>(columns.size())) {
  std::string sql = "INSERT INTO " + table_ + " (";
  std::string marks;
  for (const char* column : columns) {
    if (!marks.empty()) {
      sql += ", ";
      marks += ", ";
    }
    sql += column;
    marks += "?";
  }
  sql += ") VALUES (" + marks + ")";
  if (sqlite3_prepare_v3(db_, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &stmt_, nullptr) !=
      SQLITE_OK) {
    throw DatabaseError("demo company: cannot prepare the rows of " + table_ + ": " +
                        sqlite3_errmsg(db_));
  }
}

DemoTable::~DemoTable() { sqlite3_finalize(stmt_); }

void DemoTable::Insert(std::initializer_list<Cell> cells) {
  if (static_cast<int>(cells.size()) != columns_) {
    throw std::logic_error("demo company: " + table_ + " row with the wrong number of cells");
  }
  int index = 1;
  for (const Cell& cell : cells) cell.Bind(stmt_, index++);
  int rc = sqlite3_step(stmt_);
  sqlite3_reset(stmt_);
  if (rc != SQLITE_DONE) {
    throw DatabaseError("demo company: cannot write a row of " + table_ + ": " +
                        sqlite3_errmsg(db_));
  }
  ++rows_;
}

void Execute(sqlite3* db, const std::string& sql, std::string_view what) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    std::string text = message != nullptr ? message : sqlite3_errmsg(db);
    sqlite3_free(message);
    throw DatabaseError("demo company: " + std::string(what) + ": " + text);
  }
}

std::int64_t SumOf(sqlite3* db, const std::string& sql) {
  sqlite3_stmt* stmt = nullptr;
  std::int64_t value = 0;
  if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) == SQLITE_OK &&
      sqlite3_step(stmt) == SQLITE_ROW) {
    value = sqlite3_column_int64(stmt, 0);
  }
  sqlite3_finalize(stmt);
  return value;
}

}  // namespace trellin::demo
