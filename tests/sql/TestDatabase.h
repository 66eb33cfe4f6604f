#pragma once
// An in-memory SQLite database built from the company schema, and the catalogue read back
// from it the way the data layer reads it: PRAGMA table_info of every table.

#include <sqlite3.h>

#include <string>
#include <string_view>

#include "platform/sql/Catalog.h"

#include "tests/support/TempFolder.h"

namespace trellin::sql::testing {

class TestDatabase {
 public:
  // Runs the statements of the schema file. Throws std::runtime_error when it can't.
  explicit TestDatabase(const std::string& schema_path);
  ~TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;

  [[nodiscard]] sqlite3* handle() const { return db_; }
  [[nodiscard]] const Catalog& catalog() const { return catalog_; }

  // Runs raw SQLite statements; "" when they succeed, else SQLite's message.
  [[nodiscard]] std::string Execute(std::string_view sql);

 private:
  void ReadCatalog();

  sqlite3* db_ = nullptr;
  Catalog catalog_;
};

// The company schema, which the tests run on.
[[nodiscard]] std::string SchemaPath();
using trellin::testing::ReadFile;

}  // namespace trellin::sql::testing
