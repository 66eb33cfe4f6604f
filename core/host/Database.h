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
#include "platform/runtime/Error.h"

namespace trellin {

// A query that cannot be translated or run, or a company file that cannot be opened. A trouble
// of the company file unless said otherwise: the reports' own SQL is tested against the schema,
// so a query that fails on a company file finds the file damaged or not as the reports need it.
// A query too large for the translator, built from what the user gave, is an input error.
class DatabaseError : public Error {
 public:
  explicit DatabaseError(const std::string& message, ErrorKind kind = ErrorKind::CompanyFile)
      : Error(kind, message) {}
};

class Database : public Object {
 public:
  // 1 for the embedded database (Jet literals), 2 for the alternative server dialect.
  [[nodiscard]] virtual int DatabaseType() const = 0;
  [[nodiscard]] virtual std::string ConnectionString() const = 0;

  // Runs one Jet-dialect statement and returns its rows as a static, scrollable recordset.
  // Throws DatabaseError naming the problem (for SQL: position and token).
  [[nodiscard]] virtual std::shared_ptr<Recordset> Query(std::string_view jet_sql) = 0;
  // As Query, for a report's main rows: the rows may be streamed (forward only, read as the
  // cursor moves) rather than held. This default holds them.
  [[nodiscard]] virtual std::shared_ptr<Recordset> QueryForward(std::string_view jet_sql) {
    return Query(jet_sql);
  }
  // As Query, but the rows are an updatable copy that never writes back: fields can be set and
  // rows deleted while the report works them out.
  [[nodiscard]] std::shared_ptr<Recordset> QueryUpdatable(std::string_view jet_sql);
  // A new, empty client-side recordset: append its fields, then AddNew rows. Throws
  // DatabaseError where the database does not make them.
  [[nodiscard]] virtual std::shared_ptr<Recordset> NewRecordset();

  // A company setting, or `default_value` when none is stored.
  [[nodiscard]] virtual std::string GetSetting(std::string_view section, std::string_view key,
                                               std::string_view default_value) = 0;

  // A report run's snapshot: between BeginSnapshot and EndSnapshot every query reads the
  // database as it stood at BeginSnapshot, whatever other processes commit meanwhile. Calls
  // nest; the outermost pair counts; EndSnapshot without a Begin does nothing. A forward-only
  // recordset opened in the run cannot move on after its end. This default, for databases that
  // cannot hold a snapshot, does nothing.
  virtual void BeginSnapshot() {}
  virtual void EndSnapshot() {}

  // The report code's form of Query: false on failure, with the reason in LastError().
  // `cursor_type` and `lock_type` are accepted for the report code's sake; every recordset is
  // static and read-only.
  bool OpenRecordset(std::string_view sql, std::shared_ptr<Recordset>& rs, int cursor_type = 0,
                     int lock_type = 3);
  void CloseRecordset(std::shared_ptr<Recordset>& rs) { rs.reset(); }
  [[nodiscard]] const std::string& LastError() const { return last_error_; }

  // The first column of the first row, or `default_value` when there is no row or the value is
  // Null. Throws DatabaseError for SQL that fails or a value that is not a number.
  [[nodiscard]] std::int64_t ExecuteScalarLong(std::string_view sql, std::int64_t default_value);
  [[nodiscard]] Currency ExecuteScalarCurrency(std::string_view sql, Currency default_value);
  // Rows of `table` matching `where` (no word WHERE; "" counts every row).
  [[nodiscard]] std::int64_t RecordCount(std::string_view table, std::string_view where);

  // Literals for Jet-dialect SQL text.
  // "#2024-03-31#", or "#2024-03-31 17:05:00#" when the date has a time of day.
  [[nodiscard]] static std::string SQLDate(const Date& date);
  // "True" or "False".
  [[nodiscard]] static std::string SQLBoolean(bool value);
  // Plain invariant text with no grouping: "90", "-12.5", "0.0001". Money keeps up to four
  // decimals. Throws DatabaseError for a double that is not finite.
  [[nodiscard]] static std::string SQLNumber(int value);
  [[nodiscard]] static std::string SQLNumber(std::int64_t value);
  [[nodiscard]] static std::string SQLNumber(double value);
  [[nodiscard]] static std::string SQLNumber(Currency value);
  // A number held in a Variant (Long, Double, Currency, or text that reads as a number).
  // Throws DatabaseError for anything else, Null included.
  [[nodiscard]] static std::string SQLNumber(const Variant& value);
  // The text in single quotes, quotes inside doubled: O'Brien -> 'O''Brien'.
  [[nodiscard]] static std::string SQLString(std::string_view text);
  // "IIf(condition,true_part,false_part)".
  [[nodiscard]] static std::string SQLIIf(std::string_view condition, std::string_view true_part,
                                          std::string_view false_part);
  // "IIf(expression Is Null,replacement,expression)".
  [[nodiscard]] static std::string SQLIsNull(std::string_view expression,
                                             std::string_view replacement);

  ~Database() override = default;

 private:
  // The first value of the first row of `sql`, Null when there is no row.
  [[nodiscard]] Variant FirstValue(std::string_view sql);

  std::string last_error_;
};

// Holds a snapshot of `database` for its lifetime: the run of one report.
class RunSnapshot {
 public:
  explicit RunSnapshot(Database& database) : database_(database) { database_.BeginSnapshot(); }
  RunSnapshot(const RunSnapshot&) = delete;
  RunSnapshot& operator=(const RunSnapshot&) = delete;
  ~RunSnapshot();

 private:
  Database& database_;
};

}  // namespace trellin
