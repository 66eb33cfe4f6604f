#include "platform/data/postgres/PostgresDatabase.h"

#include "platform/data/MemoryRecordset.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/data/postgres/PostgresCompany.h"

namespace trellin::data {

namespace {

bool Lost(const PgSession& session) {
  return PQstatus(session.connection.Handle()) != CONNECTION_OK;
}

void CheckColumns(const PgResult& result, const std::vector<ResultField>& columns) {
  if (result.Columns() != static_cast<int>(columns.size())) {
    throw DatabaseError("it returns " + std::to_string(result.Columns()) + " columns where " +
                        std::to_string(columns.size()) + " were expected");
  }
}

}  // namespace

std::shared_ptr<PostgresDatabase> PostgresDatabase::Open(const std::string& url) {
  auto session = std::make_shared<PgSession>(url);
  PgConnection& connection = session->connection;
  // Nothing done through this connection can write: the reports send only SELECT.
  connection.Execute("SET default_transaction_read_only = on", "setting up the connection");
  PgResult found = connection.Query("SELECT to_regclass('\"CompanySetting\"') IS NOT NULL",
                                    "looking for the company");
  if (found.Value(0, 0) != "t") {
    throw DatabaseError("cannot open the company database " + connection.Name() +
                        ": it holds no company (no CompanySetting table); load one with "
                        "trellin copy --to");
  }
  return std::shared_ptr<PostgresDatabase>(new PostgresDatabase(std::move(session)));
}

PostgresDatabase::PostgresDatabase(std::shared_ptr<PgSession> session)
    : session_(std::move(session)),
      name_(session_->connection.Name()),
      catalog_(CompanySchemaCatalog()),
      translator_(std::make_unique<sql::Translator>(catalog_, sql::Translator::kDefaultCapacity,
                                                    sql::Dialect::kPostgres)) {}

void PostgresDatabase::QueryFailed(std::string_view jet_sql, const DatabaseError& error) const {
  // A lost connection is the server's trouble, not the query's: said without it.
  if (Lost(*session_)) throw error;
  throw DatabaseError(std::string(error.what()) + ". The query: " + std::string(jet_sql));
}

std::string PostgresDatabase::ConnectionString() const {
  PGconn* conn = session_->connection.Handle();
  auto text = [](const char* value) { return std::string(value != nullptr ? value : ""); };
  std::string host = text(PQhost(conn));
  if (!host.empty() && host[0] == '/') host = "localhost";
  return "Host=" + host + ";Port=" + text(PQport(conn)) + ";Database=" + text(PQdb(conn)) +
         ";Username=" + text(PQuser(conn));
}

std::shared_ptr<const sql::Translation> PostgresDatabase::Translate(std::string_view jet_sql) {
  try {
    std::shared_ptr<const sql::Translation> translation = translator_->Translate(jet_sql);
    if (query_log_) query_log_(jet_sql, translation->sql);
    return translation;
  } catch (const sql::SqlError& e) {
    if (e.Kind() == ErrorKind::Input) throw DatabaseError(e.problem(), ErrorKind::Input);
    throw DatabaseError("The company database " + name_ + " cannot be read as the reports need: " +
                        e.what() + ". The query: " + std::string(jet_sql));
  }
}

std::shared_ptr<Recordset> PostgresDatabase::Query(std::string_view jet_sql) {
  std::shared_ptr<const sql::Translation> translation = Translate(jet_sql);
  std::vector<ResultField> fields = SqliteDatabase::FieldsOf(*translation);
  std::vector<MemoryRecordset::Row> rows;
  try {
    PgResult result = session_->connection.Query(translation->sql, "running a report's query");
    CheckColumns(result, fields);
    rows.reserve(static_cast<std::size_t>(result.Rows()));
    for (int r = 0; r < result.Rows(); ++r) {
      MemoryRecordset::Row row;
      row.reserve(fields.size());
      for (std::size_t c = 0; c < fields.size(); ++c) {
        row.push_back(ReadPgValue(result, r, static_cast<int>(c), fields[c]));
      }
      rows.push_back(std::move(row));
    }
  } catch (const DatabaseError& e) {
    QueryFailed(jet_sql, e);
  }
  return std::make_shared<MemoryRecordset>(FieldInfosOf(fields), std::move(rows),
                                           /*updatable=*/false);
}

std::shared_ptr<Recordset> PostgresDatabase::QueryForward(std::string_view jet_sql) {
  if (!session_->in_snapshot) return Query(jet_sql);
  std::shared_ptr<const sql::Translation> translation = Translate(jet_sql);
  try {
    return std::make_shared<PgCursorRecordset>(session_, translation->sql,
                                               SqliteDatabase::FieldsOf(*translation));
  } catch (const DatabaseError& e) {
    QueryFailed(jet_sql, e);
  }
}

std::shared_ptr<Recordset> PostgresDatabase::NewRecordset() { return NewClientRecordset(); }

std::string PostgresDatabase::GetSetting(std::string_view section, std::string_view key,
                                         std::string_view default_value) {
  // citext compares without regard to case, as a company file's NOCASE does.
  PgResult result = session_->connection.Query(
      "SELECT \"Value\" FROM \"CompanySetting\" WHERE \"Section\" = $1::citext AND \"Key\" = "
      "$2::citext LIMIT 1",
      {std::string(section), std::string(key)}, "reading the company's settings");
  if (result.Rows() == 0 || result.IsNull(0, 0)) return std::string(default_value);
  return std::string(result.Value(0, 0));
}

void PostgresDatabase::BeginSnapshot() {
  if (snapshot_depth_++ > 0) return;
  try {
    // The snapshot of a REPEATABLE READ transaction is taken at its first statement, not at
    // BEGIN: read once now, so every later query sees the database as of this moment.
    session_->connection.Execute("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY; SELECT 1",
                                 "starting the report's snapshot");
    session_->in_snapshot = true;
  } catch (...) {
    snapshot_depth_ = 0;
    if (PQtransactionStatus(session_->connection.Handle()) != PQTRANS_IDLE) {
      PgResult rollback(PQexec(session_->connection.Handle(), "ROLLBACK"));
    }
    throw;
  }
}

void PostgresDatabase::EndSnapshot() {
  if (snapshot_depth_ == 0 || --snapshot_depth_ > 0) return;
  session_->in_snapshot = false;
  ++session_->generation;  // its cursors end with it
  session_->connection.Execute("COMMIT", "ending the report's snapshot");
}

// --- forward recordsets over a cursor ---

PgCursorRecordset::PgCursorRecordset(std::shared_ptr<PgSession> session, std::string sql,
                                     std::vector<ResultField> columns)
    : StreamedRecordset(std::move(columns)),
      session_(std::move(session)),
      sql_(WithoutClosingSemicolon(sql)) {
  Declare();
}

PgCursorRecordset::~PgCursorRecordset() {
  try {
    Close();
  } catch (...) {
    // Closing fails only on a broken connection, and the cursor is gone with it.
  }
}

void PgCursorRecordset::Declare() {
  cursor_ = "trellin_rows_" + std::to_string(++session_->cursors);
  generation_ = session_->generation;
  session_->connection.Execute("DECLARE " + cursor_ + " NO SCROLL CURSOR FOR " + sql_,
                               "running a report's query");
  batch_.reset();
  next_ = 0;
  last_batch_ = false;
  Start();
}

void PgCursorRecordset::Close() {
  if (cursor_.empty()) return;
  const std::string cursor = std::move(cursor_);
  cursor_.clear();
  if (generation_ == session_->generation && !Lost(*session_)) {
    session_->connection.Execute("CLOSE " + cursor, "closing a report's query");
  }
}

bool PgCursorRecordset::ReadRow(std::vector<Variant>& row) {
  if (!batch_ || next_ >= batch_->Rows()) {
    if (last_batch_) {
      batch_.reset();
      return false;
    }
    batch_ = std::make_unique<PgResult>(session_->connection.Query(
        "FETCH FORWARD " + std::to_string(kBatch) + " FROM " + cursor_, "reading a report's rows"));
    CheckColumns(*batch_, Columns());
    next_ = 0;
    last_batch_ = batch_->Rows() < kBatch;
    if (batch_->Rows() == 0) {
      batch_.reset();
      return false;
    }
  }
  const std::vector<ResultField>& columns = Columns();
  for (std::size_t c = 0; c < columns.size(); ++c) {
    row[c] = ReadPgValue(*batch_, next_, static_cast<int>(c), columns[c]);
  }
  ++next_;
  return true;
}

void PgCursorRecordset::MoveFirst() {
  if (!session_->in_snapshot) {
    throw RecordsetError(
        "MoveFirst: the report run that opened this recordset has ended, and its rows with it");
  }
  Close();
  Declare();
}

std::int64_t PgCursorRecordset::CountRows() const {
  PgResult counted = session_->connection.Query(
      "SELECT COUNT(*) FROM (" + sql_ + ") AS \"Counted\"", "counting a report's rows");
  return std::stoll(std::string(counted.Value(0, 0)));
}

}  // namespace trellin::data
