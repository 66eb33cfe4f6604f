#pragma once
// A connection to a company database on a PostgreSQL server, through libpq, with errors as
// DatabaseError in one line each.

#include <libpq-fe.h>

#include <string>
#include <string_view>
#include <vector>

#include "core/host/Database.h"

namespace trellin::data {

// Whether `text` names a company on a server (postgresql://... or postgres://...) rather than
// a company file.
[[nodiscard]] bool IsPostgresUrl(std::string_view text);

// One result of libpq, cleared when it goes.
class PgResult {
 public:
  explicit PgResult(PGresult* result) : result_(result) {}
  PgResult(PgResult&& other) noexcept : result_(other.result_) { other.result_ = nullptr; }
  PgResult(const PgResult&) = delete;
  PgResult& operator=(const PgResult&) = delete;
  PgResult& operator=(PgResult&&) = delete;
  ~PgResult() { PQclear(result_); }

  [[nodiscard]] PGresult* Handle() const { return result_; }
  [[nodiscard]] int Rows() const { return PQntuples(result_); }
  [[nodiscard]] int Columns() const { return PQnfields(result_); }
  [[nodiscard]] bool IsNull(int row, int column) const {
    return PQgetisnull(result_, row, column) != 0;
  }
  // The value in text form (the connection asks for ISO dates).
  [[nodiscard]] std::string_view Value(int row, int column) const {
    return {PQgetvalue(result_, row, column),
            static_cast<std::size_t>(PQgetlength(result_, row, column))};
  }

 private:
  PGresult* result_;
};

class PgConnection {
 public:
  // Connects to `url` (a libpq connection URL or key=value text), with ISO dates, UTF-8 text
  // and the server's time zone. Throws DatabaseError naming the server and database (never a
  // password) with the reason: refused, wrong password, no such database.
  explicit PgConnection(const std::string& url);
  PgConnection(const PgConnection&) = delete;
  PgConnection& operator=(const PgConnection&) = delete;
  ~PgConnection();

  [[nodiscard]] PGconn* Handle() const { return conn_; }
  // "postgresql://user@host:port/dbname", as messages name the company.
  [[nodiscard]] const std::string& Name() const { return name_; }

  // Runs statements that return no rows. Throws DatabaseError with `what` and the server's
  // message.
  void Execute(std::string_view sql, std::string_view what);
  // Runs one statement and returns its rows, every value as text.
  [[nodiscard]] PgResult Query(std::string_view sql, std::string_view what);
  // The same with values for $1, $2, ... (text, never Null).
  [[nodiscard]] PgResult Query(std::string_view sql, const std::vector<std::string>& values,
                               std::string_view what);
  // Starts `copy` (COPY ... FROM STDIN); rows go in COPY's text form, in pieces of any size, and
  // EndCopy finishes it.
  void BeginCopy(std::string_view copy, std::string_view what);
  void PutCopy(std::string_view rows, std::string_view what);
  void EndCopy(std::string_view what);

 private:
  [[noreturn]] void Fail(std::string_view what, const PGresult* result) const;

  PGconn* conn_ = nullptr;
  std::string name_;
};

}  // namespace trellin::data
