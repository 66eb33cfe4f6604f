#pragma once
// The company database over an SQLite file, opened read-only.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/ColumnReader.h"
#include "platform/data/CompanyDatabase.h"
#include "platform/data/ForwardRecordset.h"
#include "platform/data/Sqlite.h"
#include "platform/sql/Catalog.h"
#include "platform/sql/Translate.h"

namespace trellin::data {

class SqliteDatabase : public CompanyDatabase {
 public:
  // Opens an existing company file read-only; nothing done through the result can change it.
  // The database and its recordsets are used from one thread at a time.
  // Throws DatabaseError, with a one-line message naming `path`, when the file is missing, is
  // not an SQLite database, or has no CompanySetting table (not a company file).
  [[nodiscard]] static std::shared_ptr<SqliteDatabase> Open(const std::string& path);

  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  int DatabaseType() const override { return 1; }
  // "Data Source=<path>;Mode=ReadOnly".
  std::string ConnectionString() const override;
  [[nodiscard]] const std::string& Path() const override { return path_; }
  // Whether SQLite holds the file read-only (always, once opened): the guarantee behind the
  // translator's refusal of anything but SELECT.
  [[nodiscard]] bool ReadOnly() const;
  // The tables and typed columns of the file, as the translator sees them.
  [[nodiscard]] const sql::Catalog& Catalog() const override { return catalog_; }
  [[nodiscard]] sql::Dialect SqlDialect() const override { return sql::Dialect::kSqlite; }

  // Translates (once per distinct text; the translator keeps them) and runs `jet_sql`; the rows
  // are held in memory.
  std::shared_ptr<Recordset> Query(std::string_view jet_sql) override;
  // As Query, but the rows stream from SQLite as the cursor moves forward, one held at a time.
  [[nodiscard]] std::shared_ptr<ForwardRecordset> OpenForward(std::string_view jet_sql);
  // OpenForward, for the report engine through the Database interface.
  std::shared_ptr<Recordset> QueryForward(std::string_view jet_sql) override {
    return OpenForward(jet_sql);
  }
  std::shared_ptr<Recordset> NewRecordset() override;

  // Whether the file carries the planner's statistics (the sqlite_stat1 table ANALYZE writes).
  // A file without them is read all the same: nothing is written to it, and the plans fall back
  // on the indexes' shapes alone.
  [[nodiscard]] bool HasStatistics();
  // From CompanySetting(Section, Key, Value), names matched without regard to case; a Null
  // value counts as none stored.
  std::string GetSetting(std::string_view section, std::string_view key,
                         std::string_view default_value) override;

  // What is wrong with the file, one line each, at most `limit` of them; empty for a sound file.
  // SQLite's quick check first (a file damaged there is not read further), then every table and
  // column of the company schema (missing, or declared as another type), then every stored value
  // of a typed column read as a report reads it ("Account.Balance (row 12) holds 'abc', which is
  // not an amount"). Reads the whole file. Throws DatabaseError when the file cannot be read
  // at all.
  [[nodiscard]] std::vector<std::string> Check(std::size_t limit = 20);

  // A read transaction, begun with a first read so that its snapshot is taken at once. Throws
  // DatabaseError when SQLite refuses.
  void BeginSnapshot() override;
  void EndSnapshot() override;
  [[nodiscard]] bool InSnapshot() const { return snapshot_depth_ > 0; }

  // One field per result column of `translation`, typed by its semantic type.
  [[nodiscard]] static std::vector<ResultField> FieldsOf(const sql::Translation& translation);

 private:
  SqliteDatabase(std::string path, std::shared_ptr<Connection> connection);
  void LoadCatalog();
  [[nodiscard]] std::shared_ptr<const sql::Translation> Translate(std::string_view jet_sql);

  std::string path_;
  std::shared_ptr<Connection> connection_;
  sql::Catalog catalog_;
  std::unique_ptr<sql::Translator> translator_;
  int snapshot_depth_ = 0;
};

// The run guard under the name the data layer first gave it.
using Snapshot = RunSnapshot;

}  // namespace trellin::data
