#include "platform/data/SqliteDatabase.h"

#include <unistd.h>

#include <filesystem>

#include "platform/data/CheckedSum.h"
#include "platform/data/MemoryRecordset.h"
#include "platform/runtime/Strings.h"

namespace trellin::data {

namespace {

[[noreturn]] void CannotOpen(const std::string& path, const std::string& why) {
  throw DatabaseError("Cannot open the company file '" + path + "': " + why);
}

// `path` as an SQLite URI naming a file: the characters a URI gives meaning to are escaped.
std::string FileUri(const std::string& path) {
  std::string uri = "file:";
  for (char c : path) {
    if (c == '%' || c == '?' || c == '#') {
      static constexpr char kHex[] = "0123456789ABCDEF";
      uri += '%';
      uri += kHex[(static_cast<unsigned char>(c) >> 4) & 0xF];
      uri += kHex[static_cast<unsigned char>(c) & 0xF];
    } else {
      uri += c;
    }
  }
  return uri;
}

// Whether no process can be writing the file: its folder is closed to this user, so a writer of
// the same rights could make no journal or write-ahead log there, and none is there now.
bool NoWriterCanExist(const std::string& path) {
  std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (folder.empty()) folder = ".";
  std::error_code error;
  return ::access(folder.c_str(), W_OK) != 0 && !std::filesystem::exists(path + "-wal", error) &&
         !std::filesystem::exists(path + "-journal", error);
}

}  // namespace

std::shared_ptr<SqliteDatabase> SqliteDatabase::Open(const std::string& path) {
  std::error_code error;
  auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) CannotOpen(path, "there is no such file");
  if (std::filesystem::is_directory(status)) CannotOpen(path, "it is a folder, not a file");
  // A pipe or a device would block the open or feed SQLite whatever it holds.
  if (!std::filesystem::is_regular_file(status)) {
    CannotOpen(path, "it is not a regular file (a device, a pipe or a socket)");
  }

  sqlite3* db = nullptr;
  // Read-only at the connection, so that no statement, however written, can change the file.
  // A database object lives on one thread (the report run's), so SQLite need not lock its
  // mutex on every column read. A reader of a file in write-ahead-log mode keeps the -shm index
  // beside it, and makes it when it is missing; in a folder it cannot write it could not, and
  // the file is opened as immutable instead: no writer can exist there either.
  const bool immutable = NoWriterCanExist(path);
  const std::string name = immutable ? FileUri(path) + "?immutable=1" : path;
  int rc = sqlite3_open_v2(
      name.c_str(), &db,
      SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | (immutable ? SQLITE_OPEN_URI : 0), nullptr);
  auto connection = std::make_shared<Connection>(db);
  if (rc != SQLITE_OK) CannotOpen(path, connection->LastMessage());
  // Another process checkpointing the WAL holds its lock briefly; wait rather than fail.
  sqlite3_busy_timeout(db, 5000);
  // A report walks a parent query while it runs one for each of its rows: with SQLite's small
  // default cache the two keep evicting each other's pages and read them again from the file.
  sqlite3_exec(db, "PRAGMA cache_size=-32768", nullptr, nullptr, nullptr);
  AvoidPlannerFaults(db);
  if (UseCheckedSum(db) != SQLITE_OK) CannotOpen(path, connection->LastMessage());

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
    if (code == SQLITE_READONLY || code == SQLITE_CANTOPEN) {
      CannotOpen(path_, "its write-ahead log cannot be read in a folder this user cannot write (" +
                            connection_->LastMessage() + "); copy it to a folder of your own");
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

bool SqliteDatabase::HasStatistics() {
  Statement stat(connection_,
                 "SELECT count(*) FROM sqlite_schema WHERE type='table' AND name='sqlite_stat1'");
  return stat.Step() && sqlite3_column_int(stat.Handle(), 0) > 0;
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
