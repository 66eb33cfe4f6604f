#pragma once
// Owning handles for an SQLite connection and a prepared statement, with errors as
// DatabaseError.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/host/Database.h"

namespace trellin::data {

// Turns off, on `db`, the query planner steps that give wrong rows in the SQLite this system
// runs on: 3.40's seek-scan over an index drops the upper bound of a range on the column after
// an IN list (an asset's purchases to a date then take in a later addition). Every connection
// that reads a company file calls it; on an SQLite without the fault it only costs the step.
void AvoidPlannerFaults(sqlite3* db);

// One open connection. Shared by the database and the recordsets still streaming from it, so
// that it closes only when the last of them is gone.
class Connection {
 public:
  // Takes ownership of `db` (which may be null after a failed open).
  explicit Connection(sqlite3* db) : db_(db) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  [[nodiscard]] sqlite3* Handle() const { return db_; }
  // The connection's last error message.
  [[nodiscard]] std::string LastMessage() const;
  // Runs statements that return no rows. Throws DatabaseError with `what` and SQLite's message.
  void Execute(const char* sql, std::string_view what);
  // Stops every statement still part-way through its rows, so that the connection holds no read
  // and its next query sees the latest commit. Statements stopped here are told apart by the
  // generation, which this advances.
  void EndReads();
  [[nodiscard]] std::uint64_t Generation() const { return generation_; }

 private:
  sqlite3* db_;
  std::uint64_t generation_ = 0;
};

// A prepared statement. Step() returns true while there is a row.
class Statement {
 public:
  // Throws DatabaseError with SQLite's message when the text does not prepare; the caller adds
  // which query it was.
  Statement(std::shared_ptr<Connection> connection, std::string_view sql);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  [[nodiscard]] sqlite3_stmt* Handle() const { return stmt_; }
  [[nodiscard]] const std::shared_ptr<Connection>& Owner() const { return connection_; }
  void BindText(int index, std::string_view text);
  // True on a row, false when done; throws DatabaseError on failure.
  [[nodiscard]] bool Step();
  // Back to before the first row, to run again.
  void Reset();

 private:
  std::shared_ptr<Connection> connection_;
  sqlite3_stmt* stmt_ = nullptr;
};

}  // namespace trellin::data
