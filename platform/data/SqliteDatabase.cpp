#include "platform/data/SqliteDatabase.h"

#include <filesystem>

#include "platform/data/MemoryRecordset.h"
#include "platform/runtime/Strings.h"

namespace trellin::data {

namespace {

[[noreturn]] void CannotOpen(const std::string& path, const std::string& why) {
  throw DatabaseError("Cannot open the company file '" + path + "': " + why);
}

}  // namespace

std::shared_ptr<SqliteDatabase> SqliteDatabase::Open(const std::string& path) {
  std::error_code error;
  auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) CannotOpen(path, "there is no such file");
  if (std::filesystem::is_directory(status)) CannotOpen(path, "it is a folder, not a file");

  sqlite3* db = nullptr;
  // Read-only at the connection, so that no statement, however written, can change the file.
  // A database object lives on one thread (the report run's), so SQLite need not lock its
  // mutex on every column read.
  int rc = sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  auto connection = std::make_shared<Connection>(db);
  if (rc != SQLITE_OK) CannotOpen(path, connection->LastMessage());
  // Another process checkpointing the WAL holds its lock briefly; wait rather than fail.
  sqlite3_busy_timeout(db, 5000);

  std::shared_ptr<SqliteDatabase> database(new SqliteDatabase(path, std::move(connection)));
  database->LoadCatalog();
  return database;
}

SqliteDatabase::SqliteDatabase(std::string path, std::shared_ptr<Connection> connection)
    : path_(std::move(path)), connection_(std::move(connection)) {}

void SqliteDatabase::LoadCatalog() {
  // SQLite reads the header lazily: a file that is not a database shows up on the first query.
  std::vector<std::string> tables;
  try {
    Statement list(connection_,
                   "SELECT name FROM sqlite_schema WHERE type IN ('table','view') "
                   "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name");
    while (list.Step()) {
      tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(list.Handle(), 0)));
    }
  } catch (const DatabaseError&) {
    int code = sqlite3_errcode(connection_->Handle());
    if (code == SQLITE_NOTADB || code == SQLITE_CORRUPT) {
      CannotOpen(path_, "it is not an SQLite database, or it is damaged");
    }
    CannotOpen(path_, connection_->LastMessage());
  }
  bool has_settings = false;
  for (const std::string& table : tables) has_settings |= EqualsIgnoreCase(table, "CompanySetting");
  if (!has_settings) {
    CannotOpen(path_, "it has no CompanySetting table, so it is not a company file");
  }

  Statement columns(connection_, "SELECT name, type FROM pragma_table_info(?1)");
  for (const std::string& table : tables) {
    columns.Reset();
    columns.BindText(1, table);
    while (columns.Step()) {
      const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(columns.Handle(), 0));
      const auto* declared =
          reinterpret_cast<const char*>(sqlite3_column_text(columns.Handle(), 1));
      // A column of a type the schema does not use (or none, as in a view's expression) is
      // read as stored.
      sql::SemType type = sql::SemTypeFromDeclared(declared != nullptr ? declared : "")
                              .value_or(sql::SemType::Null);
      catalog_.AddColumn(table, name != nullptr ? name : "", type);
    }
  }
  translator_ = std::make_unique<sql::Translator>(catalog_);
}

bool SqliteDatabase::ReadOnly() const {
  return sqlite3_db_readonly(connection_->Handle(), "main") == 1;
}

std::string SqliteDatabase::ConnectionString() const {
  return "Data Source=" + path_ + ";Mode=ReadOnly";
}

std::shared_ptr<Recordset> SqliteDatabase::NewRecordset() { return NewClientRecordset(); }

std::string SqliteDatabase::GetSetting(std::string_view section, std::string_view key,
                                       std::string_view default_value) {
  Statement lookup(connection_,
                   "SELECT Value FROM CompanySetting WHERE Section=?1 COLLATE NOCASE "
                   "AND Key=?2 COLLATE NOCASE");
  lookup.BindText(1, section);
  lookup.BindText(2, key);
  if (!lookup.Step() || sqlite3_column_type(lookup.Handle(), 0) == SQLITE_NULL) {
    return std::string(default_value);
  }
  return reinterpret_cast<const char*>(sqlite3_column_text(lookup.Handle(), 0));
}

void SqliteDatabase::BeginSnapshot() {
  if (snapshot_depth_++ > 0) return;
  try {
    // BEGIN alone takes no snapshot: SQLite starts the read at the first statement that reads,
    // so read once now and every later query sees the database as of this moment.
    connection_->Execute("BEGIN", "Cannot start the report's snapshot");
    Statement first_read(connection_, "SELECT count(*) FROM sqlite_schema");
    (void)first_read.Step();
  } catch (...) {
    snapshot_depth_ = 0;
    if (!sqlite3_get_autocommit(connection_->Handle())) {
      sqlite3_exec(connection_->Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    throw;
  }
}

void SqliteDatabase::EndSnapshot() {
  if (snapshot_depth_ == 0 || --snapshot_depth_ > 0) return;
  connection_->EndReads();
  connection_->Execute("COMMIT", "Cannot end the report's snapshot");
}

}  // namespace trellin::data
