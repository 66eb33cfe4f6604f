#include "TestDatabase.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "tests/support/TestPaths.h"

namespace trellin::sql::testing {

std::string SchemaPath() {
  return (trellin::testing::SourceDir() / "platform/data/schema/company.sql").string();
}

TestDatabase::TestDatabase(const std::string& schema_path) {
  if (sqlite3_open(":memory:", &db_) != SQLITE_OK) {
    throw std::runtime_error("cannot open an in-memory database");
  }
  std::string error = Execute(ReadFile(schema_path));
  if (!error.empty()) throw std::runtime_error(schema_path + ": " + error);
  ReadCatalog();
}

TestDatabase::~TestDatabase() { sqlite3_close(db_); }

std::string TestDatabase::Execute(std::string_view sql) {
  char* message = nullptr;
  std::string text(sql);
  if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return {};
  std::string error = message != nullptr ? message : "unknown error";
  sqlite3_free(message);
  return error;
}

void TestDatabase::ReadCatalog() {
  std::vector<std::string> tables;
  sqlite3_stmt* list = nullptr;
  sqlite3_prepare_v2(db_,
                     "SELECT name FROM sqlite_schema WHERE type IN ('table', 'view') "
                     "AND name NOT LIKE 'sqlite_%' ORDER BY rowid",
                     -1, &list, nullptr);
  while (sqlite3_step(list) == SQLITE_ROW) {
    tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(list, 0)));
  }
  sqlite3_finalize(list);
  for (const std::string& table : tables) {
    sqlite3_stmt* info = nullptr;
    std::string pragma = "PRAGMA table_info(\"" + table + "\")";
    sqlite3_prepare_v2(db_, pragma.c_str(), -1, &info, nullptr);
    while (sqlite3_step(info) == SQLITE_ROW) {
      std::string column = reinterpret_cast<const char*>(sqlite3_column_text(info, 1));
      const unsigned char* declared = sqlite3_column_text(info, 2);
      auto type = SemTypeFromDeclared(declared ? reinterpret_cast<const char*>(declared) : "");
      if (!type) {
        throw std::runtime_error(table + "." + column + " has a type outside the six");
      }
      catalog_.AddColumn(table, column, *type);
    }
    sqlite3_finalize(info);
  }
}

}  // namespace trellin::sql::testing
