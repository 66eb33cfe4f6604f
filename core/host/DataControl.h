#pragma once
// The data source control of a designer (`datData` in the layouts): where a bound report's rows
// come from.

#include <memory>
#include <string>

#include "core/host/Database.h"
#include "core/host/Recordset.h"

namespace trellin {

class DataControl {
 public:
  [[nodiscard]] const std::string& ConnectionString() const { return connection_string_; }
  void SetConnectionString(std::string v) { connection_string_ = std::move(v); }
  [[nodiscard]] const std::shared_ptr<Database>& Connection() const { return connection_; }
  void SetConnection(std::shared_ptr<Database> db) { connection_ = std::move(db); }
  [[nodiscard]] int CursorLocation() const { return cursor_location_; }
  void SetCursorLocation(int v) { cursor_location_ = v; }
  [[nodiscard]] int CursorType() const { return cursor_type_; }
  void SetCursorType(int v) { cursor_type_ = v; }
  [[nodiscard]] int LockType() const { return lock_type_; }
  void SetLockType(int v) { lock_type_ = v; }

  [[nodiscard]] const std::string& Source() const { return source_; }
  // Opens the rows of `sql` at once through Connection, so that the designer can read EOF and
  // RecordCount straight after. An empty text closes the rows. Throws std::logic_error when there
  // is no connection, and the database's error when the query fails; the rows stay closed then.
  void SetSource(std::string sql);

  // The open rows, nullptr when none: the report runs unbound then.
  [[nodiscard]] const std::shared_ptr<trellin::Recordset>& Recordset() const { return recordset_; }
  // Hands the control rows the designer built itself; the engine reads them as a bound report.
  void SetRecordset(std::shared_ptr<trellin::Recordset> rs) { recordset_ = std::move(rs); }

 private:
  std::string connection_string_;
  std::shared_ptr<Database> connection_;
  int cursor_location_ = 3;
  int cursor_type_ = 0;
  int lock_type_ = 1;
  std::string source_;
  std::shared_ptr<trellin::Recordset> recordset_;
};

}  // namespace trellin
