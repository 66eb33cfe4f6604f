#include "platform/data/CompanyFile.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

#include "core/host/Database.h"
#include "platform/data/CompanySchema.h"
#include "platform/data/Sqlite.h"

namespace trellin::data {

namespace {

std::string TempPath(const std::string& path) { return path + ".tmp"; }

// The file and the journal files SQLite keeps beside it.
void RemoveWithJournals(const std::string& file) {
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
    std::filesystem::remove(file + suffix, ignored);
  }
}

void Exec(sqlite3* db, const std::string& sql, const std::string& what) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    std::string text = message != nullptr ? message : sqlite3_errmsg(db);
    sqlite3_free(message);
    throw DatabaseError(what + ": " + text);
  }
}

}  // namespace

int CompanySchemaStamp() {
  // FNV-1a over the schema text, kept positive and never 0 (SQLite's "not set").
  std::uint32_t hash = 2166136261u;
  for (char c : CompanySchemaSql()) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
  }
  const int stamp = static_cast<int>(hash & 0x7fffffffu);
  return stamp == 0 ? 1 : stamp;
}

int ReadCompanySchemaStamp(const std::string& path) {
  sqlite3* db = nullptr;
  int stamp = 0;
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, "PRAGMA user_version", -1, &stmt, nullptr) == SQLITE_OK &&
        sqlite3_step(stmt) == SQLITE_ROW) {
      stamp = sqlite3_column_int(stmt, 0);
    }
    sqlite3_finalize(stmt);
  }
  sqlite3_close(db);
  return stamp;
}

std::unique_ptr<CompanyFileWriter> CreateCompanyFile(const std::string& path) {
  std::string temp = TempPath(path);
  // A temporary file left by a build that was killed is stale; start clean.
  RemoveWithJournals(temp);
  sqlite3* db = nullptr;
  int rc = sqlite3_open_v2(temp.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  std::unique_ptr<CompanyFileWriter> writer(new CompanyFileWriter(path, db));
  if (rc != SQLITE_OK) {
    std::string message = db != nullptr ? sqlite3_errmsg(db) : "out of memory";
    throw DatabaseError("cannot create the company file '" + path + "': " + message);
  }
  AvoidPlannerFaults(db);
  Exec(db, "PRAGMA journal_mode=WAL", "cannot create the company file '" + path + "'");
  Exec(db, "BEGIN;" + std::string(CompanySchemaSql()) + ";COMMIT;",
       "cannot apply the company schema to '" + path + "'");
  Exec(db, "PRAGMA user_version=" + std::to_string(CompanySchemaStamp()),
       "cannot stamp the company file '" + path + "'");
  return writer;
}

CompanyFileWriter::~CompanyFileWriter() { Discard(); }

void CompanyFileWriter::Discard() {
  if (db_ != nullptr) {
    sqlite3_close_v2(db_);
    db_ = nullptr;
    RemoveWithJournals(TempPath(path_));
  }
}

void CompanyFileWriter::Commit() {
  if (db_ == nullptr) throw DatabaseError("the company file '" + path_ + "' is already complete");
  try {
    // Everything into the main file, so that the renamed file stands alone without its WAL.
    Exec(db_, "PRAGMA wal_checkpoint(TRUNCATE)",
         "cannot complete the company file '" + path_ + "'");
  } catch (...) {
    Discard();
    throw;
  }
  if (sqlite3_close(db_) != SQLITE_OK) {
    std::string message = sqlite3_errmsg(db_);
    Discard();
    throw DatabaseError("cannot close the company file '" + path_ +
                        "' (a statement is still open?): " + message);
  }
  db_ = nullptr;
  // An older file's journals would otherwise be replayed onto the new file.
  std::error_code ignored;
  std::filesystem::remove(path_ + "-wal", ignored);
  std::filesystem::remove(path_ + "-shm", ignored);
  std::error_code error;
  std::filesystem::rename(TempPath(path_), path_, error);
  if (error) {
    RemoveWithJournals(TempPath(path_));
    throw DatabaseError("cannot move the company file into place at '" + path_ +
                        "': " + error.message());
  }
}

}  // namespace trellin::data
