// Checking a company file: SQLite's own quick check, the tables and columns the reports read, and
// every stored value of a typed column read as the reports would read it.
#include <string>
#include <vector>

#include "platform/data/CompanySchema.h"
#include "platform/data/SqliteDatabase.h"

namespace trellin::data {

namespace {

// The tables and typed columns an empty company file has: the schema the reports are written for.
sql::Catalog ExpectedCatalog() {
  sql::Catalog expected;
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(":memory:", &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
    sqlite3_close(db);
    throw DatabaseError("Cannot check the company file: no memory for the schema",
                        ErrorKind::Internal);
  }
  auto connection = std::make_shared<Connection>(db);
  connection->Execute(std::string(CompanySchemaSql()).c_str(), "The company schema does not build");
  Statement columns(
      connection,
      "SELECT m.name, p.name, p.type FROM sqlite_schema m, pragma_table_info(m.name) p "
      "WHERE m.type = 'table' AND m.name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
      "ORDER BY m.name, p.cid");
  while (columns.Step()) {
    auto text = [&](int i) {
      const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(columns.Handle(), i));
      return std::string(value != nullptr ? value : "");
    };
    expected.AddColumn(text(0), text(1),
                       sql::SemTypeFromDeclared(text(2)).value_or(sql::SemType::Null));
  }
  return expected;
}

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

}  // namespace

std::vector<std::string> SqliteDatabase::Check(std::size_t limit) {
  std::vector<std::string> findings;
  auto full = [&] { return findings.size() >= limit; };

  Statement quick_check(connection_, "PRAGMA quick_check");
  while (!full() && quick_check.Step()) {
    const auto* line = reinterpret_cast<const char*>(sqlite3_column_text(quick_check.Handle(), 0));
    if (line != nullptr && std::string_view(line) != "ok")
      findings.push_back(std::string("SQLite: ") + line);
  }
  // Reading the rows of a damaged file finds the damage again, row by row: once is enough.
  if (!findings.empty()) return findings;

  const sql::Catalog expected = ExpectedCatalog();
  for (const std::string& table_name : expected.TableNames()) {
    const sql::CatalogTable& wanted = *expected.FindTable(table_name);
    const sql::CatalogTable* found = catalog_.FindTable(table_name);
    if (found == nullptr) {
      if (!full()) findings.push_back("the table " + table_name + " is missing");
      continue;
    }
    std::vector<ResultField> fields;
    std::string select = "SELECT rowid";
    for (const sql::ResultColumn& column : wanted.columns) {
      const sql::ResultColumn* present = found->FindColumn(column.name);
      if (present == nullptr) {
        if (!full())
          findings.push_back("the column " + table_name + "." + column.name + " is missing");
        continue;
      }
      if (present->type != column.type) {
        if (!full()) {
          findings.push_back("the column " + table_name + "." + column.name + " is declared as " +
                             std::string(sql::SemTypeName(present->type)) + ", not " +
                             std::string(sql::SemTypeName(column.type)));
        }
        continue;
      }
      sql::Translation shape;
      shape.columns.push_back(column);
      ResultField field = FieldsOf(shape).front();
      field.info.name = column.name;
      fields.push_back(std::move(field));
      select += ", " + Quoted(column.name);
    }
    if (fields.empty() || full()) continue;
    Statement rows(connection_, select + " FROM " + Quoted(table_name));
    while (!full() && rows.Step()) {
      for (std::size_t i = 0; i < fields.size() && !full(); ++i) {
        try {
          (void)ReadColumn(rows.Handle(), static_cast<int>(i) + 1, fields[i]);
        } catch (const DatabaseError& e) {
          findings.push_back(e.what());
        }
      }
    }
  }
  return findings;
}

}  // namespace trellin::data
