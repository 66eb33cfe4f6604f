#pragma once
// A company database the reports read: a company file (SqliteDatabase) or a company on a
// PostgreSQL server (PostgresDatabase). Jet SQL in, typed recordsets out, whichever it is.

#include <functional>
#include <string>
#include <string_view>

#include "core/host/Database.h"
#include "platform/sql/Catalog.h"
#include "platform/sql/Dialect.h"

namespace trellin::data {

class CompanyDatabase : public Database {
 public:
  // The company as messages name it: the file's path, or postgresql://user@host:port/dbname.
  [[nodiscard]] virtual const std::string& Path() const = 0;
  // The tables and typed columns, as the translator sees them.
  [[nodiscard]] virtual const sql::Catalog& Catalog() const = 0;
  // The SQL the Jet text is translated into.
  [[nodiscard]] virtual sql::Dialect SqlDialect() const = 0;

  // Told of every query as it is sent: the Jet text and the text it became. For tools and
  // tests that look at what the reports ask (the plan check); empty to stop. Called on the
  // thread that queries.
  using QueryLog = std::function<void(std::string_view jet_sql, const std::string& sent_sql)>;
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 protected:
  QueryLog query_log_;
};

}  // namespace trellin::data
