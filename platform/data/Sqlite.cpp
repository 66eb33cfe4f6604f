#include "platform/data/Sqlite.h"

namespace trellin::data {

void AvoidPlannerFaults(sqlite3* db) {
  // SQLite's own bit for the seek-scan step (SQLITE_SeekScan), kept off through its optimisation
  // switches.
  constexpr int kSeekScan = 0x00020000;
  sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, db, kSeekScan);
}

Connection::~Connection() {
  // sqlite3_close_v2 defers the close until every statement is finalized, so a forgotten
  // statement cannot make it fail.
  if (db_ != nullptr) sqlite3_close_v2(db_);
}

std::string Connection::LastMessage() const {
  return db_ != nullptr ? sqlite3_errmsg(db_) : "out of memory";
}

void Connection::Execute(const char* sql, std::string_view what) {
  char* message = nullptr;
  if (sqlite3_exec(db_, sql, nullptr, nullptr, &message) != SQLITE_OK) {
    std::string text = message != nullptr ? message : LastMessage();
    sqlite3_free(message);
    throw DatabaseError(std::string(what) + ": " + text);
  }
}

void Connection::EndReads() {
  // A statement that has not run to its end keeps its read open after COMMIT, and the
  // connection's later queries would go on seeing that old snapshot.
  for (sqlite3_stmt* stmt = sqlite3_next_stmt(db_, nullptr); stmt != nullptr;
       stmt = sqlite3_next_stmt(db_, stmt)) {
    if (sqlite3_stmt_busy(stmt)) sqlite3_reset(stmt);
  }
  ++generation_;
}

Statement::Statement(std::shared_ptr<Connection> connection, std::string_view sql)
    : connection_(std::move(connection)) {
  int rc = sqlite3_prepare_v2(connection_->Handle(), sql.data(), static_cast<int>(sql.size()),
                              &stmt_, nullptr);
  if (rc != SQLITE_OK) {
    std::string message = connection_->LastMessage();
    sqlite3_finalize(stmt_);
    stmt_ = nullptr;
    throw DatabaseError("SQLite cannot prepare it: " + message);
  }
  if (stmt_ == nullptr) {
    throw DatabaseError("there is no statement in it");
  }
}

Statement::~Statement() { sqlite3_finalize(stmt_); }

void Statement::BindText(int index, std::string_view text) {
  sqlite3_bind_text(stmt_, index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

bool Statement::Step() {
  int rc = sqlite3_step(stmt_);
  if (rc == SQLITE_ROW) return true;
  if (rc == SQLITE_DONE) return false;
  throw DatabaseError("SQLite failed while reading its rows: " + connection_->LastMessage());
}

void Statement::Reset() { sqlite3_reset(stmt_); }

}  // namespace trellin::data
