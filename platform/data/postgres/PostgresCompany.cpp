#include "platform/data/postgres/PostgresCompany.h"

#include <sqlite3.h>

#include <cstdio>
#include <map>
#include <vector>

#include "platform/data/CompanySchema.h"
#include "platform/data/Sqlite.h"
#include "platform/sql/SemType.h"

namespace trellin::data {
namespace {

struct Column {
  std::string name;
  sql::SemType type = sql::SemType::Text;
};

struct Table {
  std::string name;
  std::vector<Column> columns;
  std::vector<std::string> key;  // the primary key's columns, in order
};

std::string PgName(std::string_view name) {
  std::string quoted = "\"";
  for (char c : name) {
    quoted += c;
    if (c == '"') quoted += '"';
  }
  return quoted + "\"";
}

std::string_view PostgresType(sql::SemType type) {
  switch (type) {
    case sql::SemType::Long:
    case sql::SemType::Currency:  // ten-thousandths, as in a company file
      return "BIGINT";
    case sql::SemType::Double:
      return "DOUBLE PRECISION";
    case sql::SemType::Date:
      return "TIMESTAMP(0)";
    case sql::SemType::Boolean:
      return "BOOLEAN";
    default:
      return "CITEXT COLLATE \"C\"";
  }
}

// The company schema laid down in memory, read back the way the data layer reads a file.
class SchemaSource {
 public:
  SchemaSource() : connection_(Open()) {
    connection_->Execute(std::string(CompanySchemaSql()).c_str(), "laying down the schema");
  }
  [[nodiscard]] const std::shared_ptr<Connection>& connection() const { return connection_; }

  [[nodiscard]] std::vector<Table> Tables() const {
    std::vector<Table> tables;
    Statement names(connection_,
                    "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE "
                    "'sqlite_%' ORDER BY rowid");
    while (names.Step()) {
      Table table;
      table.name = reinterpret_cast<const char*>(sqlite3_column_text(names.Handle(), 0));
      Statement info(connection_, "SELECT name, type, pk FROM pragma_table_info(?1)");
      info.BindText(1, table.name);
      std::map<int, std::string> key;
      while (info.Step()) {
        Column column;
        column.name = reinterpret_cast<const char*>(sqlite3_column_text(info.Handle(), 0));
        const char* declared = reinterpret_cast<const char*>(sqlite3_column_text(info.Handle(), 1));
        column.type = sql::SemTypeFromDeclared(declared != nullptr ? declared : "")
                          .value_or(sql::SemType::Text);
        if (int place = sqlite3_column_int(info.Handle(), 2); place > 0) key[place] = column.name;
        table.columns.push_back(std::move(column));
      }
      for (auto& [place, name] : key) table.key.push_back(name);
      tables.push_back(std::move(table));
    }
    return tables;
  }

  [[nodiscard]] std::string Indexes() const {
    std::string text;
    Statement indexes(connection_,
                      "SELECT m.name, m.tbl_name, l.\"unique\" FROM sqlite_master m JOIN "
                      "pragma_index_list(m.tbl_name) l ON l.name = m.name WHERE m.type = "
                      "'index' AND m.sql IS NOT NULL ORDER BY m.rowid");
    while (indexes.Step()) {
      const std::string name =
          reinterpret_cast<const char*>(sqlite3_column_text(indexes.Handle(), 0));
      const std::string table =
          reinterpret_cast<const char*>(sqlite3_column_text(indexes.Handle(), 1));
      const bool unique = sqlite3_column_int(indexes.Handle(), 2) != 0;
      Statement columns(connection_,
                        "SELECT name, \"desc\" FROM pragma_index_xinfo(?1) WHERE key = 1 ORDER BY "
                        "seqno");
      columns.BindText(1, name);
      std::string list;
      while (columns.Step()) {
        if (!list.empty()) list += ", ";
        list += PgName(reinterpret_cast<const char*>(sqlite3_column_text(columns.Handle(), 0)));
        if (sqlite3_column_int(columns.Handle(), 1) != 0) list += " DESC";
      }
      text += std::string("CREATE ") + (unique ? "UNIQUE " : "") + "INDEX " + PgName(name) +
              " ON " + PgName(table) + " (" + list + ");\n";
    }
    return text;
  }

 private:
  static std::shared_ptr<Connection> Open() {
    sqlite3* db = nullptr;
    if (sqlite3_open(":memory:", &db) != SQLITE_OK) {
      sqlite3_close(db);
      throw DatabaseError("cannot lay down the company schema in memory");
    }
    return std::make_shared<Connection>(db);
  }

  std::shared_ptr<Connection> connection_;
};

// One value in COPY's text form.
void AppendCopyValue(std::string& out, sqlite3_stmt* row, int column, sql::SemType type) {
  const int stored = sqlite3_column_type(row, column);
  if (stored == SQLITE_NULL) {
    out += "\\N";
    return;
  }
  if (type == sql::SemType::Boolean) {
    out += sqlite3_column_int64(row, column) != 0 ? 't' : 'f';
    return;
  }
  if (stored == SQLITE_INTEGER) {
    out += std::to_string(sqlite3_column_int64(row, column));
    return;
  }
  if (stored == SQLITE_FLOAT) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.17g", sqlite3_column_double(row, column));
    out += buffer;
    return;
  }
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  const int size = sqlite3_column_bytes(row, column);
  for (int i = 0; i < size; ++i) {
    switch (text[i]) {
      case '\\':
        out += "\\\\";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        out += text[i];
    }
  }
}

// Indexes a server needs beyond the one schema's. SQLite reads a date range of the whole ledger
// (a month's debits and credits by account, with no account named) from
// glTransaction_AccountDate, and one department's lines from glTransaction_BranchDept, by
// skipping from one leading value to the next; PostgreSQL 15 has no skip scan and read every
// line of the ledger for both. Led by the date, and by the department, and carrying the columns
// the statements' sums read, each is read from its index alone.
constexpr std::string_view kServerIndexes =
    "CREATE INDEX \"glTransaction_Date\" ON \"glTransaction\" (\"Date\") INCLUDE "
    "(\"AccountId\", \"Value\", \"TaxValue\", \"Type\", \"BranchId\", \"DeptId\");\n"
    "CREATE INDEX \"glTransaction_DeptDate\" ON \"glTransaction\" (\"DeptId\", \"Date\") "
    "INCLUDE (\"AccountId\", \"Value\", \"TaxValue\", \"Type\", \"BranchId\");\n";

}  // namespace

PostgresSchema PostgresSchemaSql() {
  SchemaSource source;
  std::string text = "CREATE EXTENSION IF NOT EXISTS citext;\n";
  for (const Table& table : source.Tables()) {
    text += "CREATE TABLE " + PgName(table.name) + " (";
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      const Column& column = table.columns[i];
      if (i > 0) text += ", ";
      text += PgName(column.name) + " " + std::string(PostgresType(column.type));
    }
    if (!table.key.empty()) {
      text += ", PRIMARY KEY (";
      for (std::size_t i = 0; i < table.key.size(); ++i) {
        text += (i > 0 ? ", " : "") + PgName(table.key[i]);
      }
      text += ")";
    }
    text += ");\n";
  }
  return {std::move(text), source.Indexes() + std::string(kServerIndexes)};
}

sql::Catalog CompanySchemaCatalog() {
  sql::Catalog catalog;
  for (const Table& table : SchemaSource().Tables()) {
    for (const Column& column : table.columns)
      catalog.AddColumn(table.name, column.name, column.type);
    catalog.SetKey(table.name, table.key);
  }
  return catalog;
}

CopySummary CopyCompanyToPostgres(const std::string& file, PgConnection& target) {
  sqlite3* db = nullptr;
  const int opened = sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  auto from = std::make_shared<Connection>(db);
  if (opened != SQLITE_OK) {
    throw DatabaseError("cannot open the company file " + file + ": " + from->LastMessage());
  }
  // One read of the file, so every table comes from the same moment of it.
  from->Execute("BEGIN", "reading the company file");
  CopySummary summary;
  target.Execute("BEGIN", "starting the copy");
  try {
    const PostgresSchema schema = PostgresSchemaSql();
    target.Execute(schema.tables, "laying down the company schema");
    for (const Table& table : SchemaSource().Tables()) {
      std::string columns;
      for (const Column& column : table.columns) {
        columns += (columns.empty() ? "" : ", ") + PgName(column.name);
      }
      Statement rows(from, "SELECT " + columns + " FROM " + PgName(table.name));
      const std::string what = "copying " + table.name;
      target.BeginCopy("COPY " + PgName(table.name) + " (" + columns + ") FROM STDIN", what);
      // Sent a megabyte at a time, so a big ledger needs no more memory than a small one.
      constexpr std::size_t kPiece = 1 << 20;
      std::string data;
      while (rows.Step()) {
        for (std::size_t c = 0; c < table.columns.size(); ++c) {
          if (c > 0) data += '\t';
          AppendCopyValue(data, rows.Handle(), static_cast<int>(c), table.columns[c].type);
        }
        data += '\n';
        ++summary.rows;
        if (data.size() >= kPiece) {
          target.PutCopy(data, what);
          data.clear();
        }
      }
      target.PutCopy(data, what);
      target.EndCopy(what);
      ++summary.tables;
    }
    target.Execute(schema.indexes, "making the indexes");
    target.Execute("COMMIT", "finishing the copy");
  } catch (...) {
    PgResult rollback(PQexec(target.Handle(), "ROLLBACK"));
    throw;
  }
  // VACUUM marks the copied pages all-visible, without which a read from a covering index
  // still visits the table for every row.
  target.Execute("VACUUM ANALYZE", "gathering the planner's statistics");
  return summary;
}

}  // namespace trellin::data
