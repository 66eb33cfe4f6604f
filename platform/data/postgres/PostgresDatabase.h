#pragma once
// The company database on a PostgreSQL server, read as the reports read a company file: Jet
// SQL translated for PostgreSQL, the same typed recordsets, one snapshot per report run.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/ColumnReader.h"
#include "platform/data/CompanyDatabase.h"
#include "platform/data/StreamedRecordset.h"
#include "platform/data/postgres/Postgres.h"
#include "platform/sql/Translate.h"

namespace trellin::data {

// The connection shared by the database and the forward recordsets still reading from it.
struct PgSession {
  explicit PgSession(const std::string& url) : connection(url) {}
  PgConnection connection;
  // Advanced when a snapshot ends: the cursors declared in it are gone with it.
  std::uint64_t generation = 0;
  bool in_snapshot = false;
  std::uint64_t cursors = 0;  // cursors declared so far, for their names
};

// A result value in libpq's text form as the typed value a recordset hands out: money as a whole
// count of ten-thousandths, dates as ISO timestamps, Booleans as t/f. Throws DatabaseError naming
// the column when the value does not fit its type.
[[nodiscard]] Variant ReadPgValue(const PgResult& result, int row, int column,
                                  const ResultField& field);

class PostgresDatabase : public CompanyDatabase {
 public:
  // Connects to the company at `url` (postgresql://user@host/dbname; a password from the URL,
  // $PGPASSWORD or ~/.pgpass), read only: every transaction on the connection is READ ONLY.
  // Throws DatabaseError, one line naming the server and database, when the server cannot be
  // reached, refuses the user, has no such database, or the database holds no company.
  [[nodiscard]] static std::shared_ptr<PostgresDatabase> Open(const std::string& url);

  PostgresDatabase(const PostgresDatabase&) = delete;
  PostgresDatabase& operator=(const PostgresDatabase&) = delete;

  // The reports write Jet SQL and the translator makes it PostgreSQL's: to them this is the
  // same kind of database as a company file.
  int DatabaseType() const override { return 1; }
  // "Host=...;Port=...;Database=...;Username=..." (never the password): the page footers
  // name the company by its database.
  std::string ConnectionString() const override;
  [[nodiscard]] const std::string& Path() const override { return name_; }
  [[nodiscard]] const sql::Catalog& Catalog() const override { return catalog_; }
  [[nodiscard]] sql::Dialect SqlDialect() const override { return sql::Dialect::kPostgres; }

  // Translates and runs `jet_sql`; the rows are held in memory.
  std::shared_ptr<Recordset> Query(std::string_view jet_sql) override;
  // Within a snapshot, the rows come from a server-side cursor a batch at a time as the cursor
  // moves forward, so memory stays flat however long the ledger. Outside one (a cursor lives
  // in a transaction) they are held as Query holds them.
  std::shared_ptr<Recordset> QueryForward(std::string_view jet_sql) override;
  std::shared_ptr<Recordset> NewRecordset() override;
  std::string GetSetting(std::string_view section, std::string_view key,
                         std::string_view default_value) override;

  // BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY, with a first read so that the snapshot is
  // taken at once; COMMIT at the end. Writers are never held up by it.
  void BeginSnapshot() override;
  void EndSnapshot() override;
  [[nodiscard]] bool InSnapshot() const { return snapshot_depth_ > 0; }

  // The server process serving this connection (for tests that cut it off).
  [[nodiscard]] int BackendPid() const { return PQbackendPID(session_->connection.Handle()); }

 private:
  explicit PostgresDatabase(std::shared_ptr<PgSession> session);
  [[nodiscard]] std::shared_ptr<const sql::Translation> Translate(std::string_view jet_sql);
  [[noreturn]] void QueryFailed(std::string_view jet_sql, const DatabaseError& error) const;

  std::shared_ptr<PgSession> session_;
  std::string name_;
  sql::Catalog catalog_;
  std::unique_ptr<sql::Translator> translator_;
  int snapshot_depth_ = 0;
};

// A forward-only recordset over a server-side cursor: FETCHes a batch of rows at a time, so
// that one batch is held however many rows the query returns. Lives within the snapshot that
// declared it; other queries may run on the connection between its fetches.
class PgCursorRecordset : public StreamedRecordset {
 public:
  // Declares the cursor for `sql` and reads the first batch. Throws DatabaseError when the
  // query fails.
  PgCursorRecordset(std::shared_ptr<PgSession> session, std::string sql,
                    std::vector<ResultField> columns);
  ~PgCursorRecordset() override;
  PgCursorRecordset(const PgCursorRecordset&) = delete;
  PgCursorRecordset& operator=(const PgCursorRecordset&) = delete;

  // Declares the cursor again (within the snapshot, the same rows).
  void MoveFirst() override;

  // Rows fetched from the server at a time.
  static constexpr int kBatch = 1000;

 private:
  bool ReadRow(std::vector<Variant>& row) override;
  [[nodiscard]] bool Ended() const override { return generation_ != session_->generation; }
  [[nodiscard]] std::int64_t CountRows() const override;
  void Declare();
  void Close();

  std::shared_ptr<PgSession> session_;
  std::string sql_;
  std::string cursor_;
  std::uint64_t generation_ = 0;
  std::unique_ptr<PgResult> batch_;
  int next_ = 0;  // the batch's row to read next
  bool last_batch_ = false;
};

}  // namespace trellin::data
