#include "platform/data/postgres/Postgres.h"

#include <algorithm>
#include <string>

namespace trellin::data {
namespace {

// The first line of a libpq message, without its "ERROR:  " or "FATAL:  " head.
std::string FirstLine(const char* message) {
  std::string text = message == nullptr ? "" : message;
  text = text.substr(0, text.find('\n'));
  for (std::string_view head : {"ERROR:  ", "FATAL:  "}) {
    if (text.rfind(head, 0) == 0) text.erase(0, head.size());
  }
  return text.empty() ? "no reason given" : text;
}

std::string Describe(PGconn* conn) {
  std::string host = PQhost(conn) != nullptr ? PQhost(conn) : "";
  if (!host.empty() && host[0] == '/') host = "localhost";  // a Unix socket's folder
  return "postgresql://" + std::string(PQuser(conn) != nullptr ? PQuser(conn) : "") + "@" + host +
         ":" + (PQport(conn) != nullptr ? PQport(conn) : "") + "/" +
         (PQdb(conn) != nullptr ? PQdb(conn) : "");
}

}  // namespace

bool IsPostgresUrl(std::string_view text) {
  return text.rfind("postgresql://", 0) == 0 || text.rfind("postgres://", 0) == 0;
}

PgConnection::PgConnection(const std::string& url) {
  conn_ = PQconnectdb(url.c_str());
  if (conn_ == nullptr)
    throw DatabaseError("cannot connect to the company database: out of memory");
  name_ = Describe(conn_);
  if (PQstatus(conn_) != CONNECTION_OK) {
    std::string reason = FirstLine(PQerrorMessage(conn_));
    // libpq heads a failure with where it tried: "connection to server on socket ... failed: "
    if (auto at = reason.find(" failed: "); at != std::string::npos) reason.erase(0, at + 9);
    if (reason.rfind("FATAL:  ", 0) == 0) reason.erase(0, 8);
    PQfinish(conn_);
    conn_ = nullptr;
    throw DatabaseError("cannot connect to the company database " + name_ + ": " + reason);
  }
  // The server's notices ("... already exists, skipping") are not the user's concern.
  PQsetNoticeProcessor(
      conn_, [](void*, const char*) {}, nullptr);
  PQsetClientEncoding(conn_, "UTF8");
  Execute(
      "SET DateStyle = 'ISO, YMD'; SET IntervalStyle = 'postgres'; SET extra_float_digits = 1; SET "
      "jit = off",
      "setting up the connection");
}

PgConnection::~PgConnection() {
  if (conn_ != nullptr) PQfinish(conn_);
}

void PgConnection::Fail(std::string_view what, const PGresult* result) const {
  const char* message = result != nullptr ? PQresultErrorMessage(result) : nullptr;
  if (message == nullptr || *message == '\0') message = PQerrorMessage(conn_);
  std::string text = "company database " + name_ + ": " + std::string(what) + ": ";
  if (PQstatus(conn_) != CONNECTION_OK) text += "the connection to the server was lost: ";
  throw DatabaseError(text + FirstLine(message));
}

void PgConnection::Execute(std::string_view sql, std::string_view what) {
  PgResult result(PQexec(conn_, std::string(sql).c_str()));
  const ExecStatusType status = PQresultStatus(result.Handle());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) Fail(what, result.Handle());
}

PgResult PgConnection::Query(std::string_view sql, std::string_view what) {
  PgResult result(PQexec(conn_, std::string(sql).c_str()));
  if (PQresultStatus(result.Handle()) != PGRES_TUPLES_OK) Fail(what, result.Handle());
  return result;
}

PgResult PgConnection::Query(std::string_view sql, const std::vector<std::string>& values,
                             std::string_view what) {
  std::vector<const char*> pointers;
  pointers.reserve(values.size());
  for (const std::string& value : values) pointers.push_back(value.c_str());
  PgResult result(PQexecParams(conn_, std::string(sql).c_str(), static_cast<int>(values.size()),
                               nullptr, pointers.data(), nullptr, nullptr, 0));
  if (PQresultStatus(result.Handle()) != PGRES_TUPLES_OK) Fail(what, result.Handle());
  return result;
}

void PgConnection::BeginCopy(std::string_view copy, std::string_view what) {
  PgResult start(PQexec(conn_, std::string(copy).c_str()));
  if (PQresultStatus(start.Handle()) != PGRES_COPY_IN) Fail(what, start.Handle());
}

void PgConnection::PutCopy(std::string_view rows, std::string_view what) {
  if (!rows.empty() && PQputCopyData(conn_, rows.data(), static_cast<int>(rows.size())) != 1) {
    Fail(what, nullptr);
  }
}

void PgConnection::EndCopy(std::string_view what) {
  if (PQputCopyEnd(conn_, nullptr) != 1) Fail(what, nullptr);
  PgResult end(PQgetResult(conn_));
  while (PGresult* more = PQgetResult(conn_)) PQclear(more);
  if (PQresultStatus(end.Handle()) != PGRES_COMMAND_OK) Fail(what, end.Handle());
}

}  // namespace trellin::data
