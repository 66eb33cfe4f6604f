#pragma once
// The company database as the report code sees it: Jet-dialect SQL in, typed recordsets out.
// Read only; every value placed in SQL text goes through one of the literal operations.

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

// A query that cannot be translated or run, or a company file that cannot be opened.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Database : public Object {
 public:
  // 1 for the embedded database (Jet literals), 2 for the alternative server dialect.
  [[nodiscard]] virtual int DatabaseType() const = 0;
  [[nodiscard]] virtual std::string ConnectionString() const = 0;

  // Runs one Jet-dialect statement and returns its rows as a static, scrollable recordset.
  // Throws DatabaseError naming the problem (for SQL: position and token).
  [[nodiscard]] virtual std::shared_ptr<Recordset> Query(std::string_view jet_sql) = 0;

  // A company setting, or `default_value` when none is stored.
  [[nodiscard]] virtual std::string GetSetting(std::string_view section, std::string_view key,
                                               std::string_view default_value) = 0;

  // The report code's form of Query: false on failure, with the reason in LastError().
  // `cursor_type` and `lock_type` are accepted for the report code's sake; every recordset is
  // static and read-only.
  bool OpenRecordset(std::string_view sql, std::shared_ptr<Recordset>& rs, int cursor_type = 0,
                     int lock_type = 3);
  void CloseRecordset(std::shared_ptr<Recordset>& rs) { rs.reset(); }
  [[nodiscard]] const std::string& LastError() const { return last_error_; }

  virtual ~Database() = default;

 private:
  std::string last_error_;
};

}  // namespace trellin
