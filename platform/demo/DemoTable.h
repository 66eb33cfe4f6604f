#pragma once
// One prepared INSERT per table, bound cell by cell: the only way the generator writes rows.

#include <sqlite3.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "platform/runtime/Date.h"

namespace trellin::demo {

// One value to bind. Money is passed as its ten-thousandths (an int64), dates become ISO text,
// booleans 0 or 1; an empty optional text and Null() bind Null.
class Cell {
 public:
  struct Null {};
  Cell(Null) {}  // NOLINT(google-explicit-constructor): cells are written as brace lists
  Cell(int v) : value_(std::int64_t{v}) {}                     // NOLINT
  Cell(std::int64_t v) : value_(v) {}                          // NOLINT
  Cell(bool v) : value_(std::int64_t{v ? 1 : 0}) {}            // NOLINT
  Cell(double v) : value_(v) {}                                // NOLINT
  Cell(const char* v) : value_(std::string_view(v)) {}         // NOLINT
  Cell(std::string_view v) : value_(v) {}                      // NOLINT
  Cell(const std::string& v) : value_(std::string_view(v)) {}  // NOLINT
  Cell(const Date& v) : value_(v.ToIso()) {}                   // NOLINT

  void Bind(sqlite3_stmt* stmt, int index) const;

 private:
  std::variant<std::monostate, std::int64_t, double, std::string_view, std::string> value_;
};

// A text that is Null when empty: optional codes such as a line's department.
Cell OrNull(std::string_view text);

class DemoTable {
 public:
  // Prepares "INSERT INTO table (columns) VALUES (?, ...)". Throws DatabaseError naming the
  // table when it does not prepare (a column the schema lacks).
  DemoTable(sqlite3* db, std::string_view table, std::initializer_list<const char*> columns);
  DemoTable(const DemoTable&) = delete;
  DemoTable& operator=(const DemoTable&) = delete;
  ~DemoTable();

  // One row; the cells in the order of the columns, exactly as many. Throws DatabaseError.
  void Insert(std::initializer_list<Cell> cells);
  [[nodiscard]] std::int64_t Rows() const { return rows_; }

 private:
  sqlite3* db_;
  std::string table_;
  sqlite3_stmt* stmt_ = nullptr;
  int columns_ = 0;
  std::int64_t rows_ = 0;
};

// Runs statements that return no rows; throws DatabaseError with `what` and SQLite's message.
void Execute(sqlite3* db, const std::string& sql, std::string_view what);
// The one whole number `sql` gives; 0 for none.
std::int64_t SumOf(sqlite3* db, const std::string& sql);

}  // namespace trellin::demo
