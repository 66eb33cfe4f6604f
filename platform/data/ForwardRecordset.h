#pragma once
// A forward-only recordset that streams a query's rows from SQLite as the cursor moves, holding
// one row at a time: how a report reads a million-line ledger.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/host/Recordset.h"
#include "platform/data/ColumnReader.h"
#include "platform/data/Sqlite.h"

namespace trellin::data {

class ForwardRecordset : public Recordset {
 public:
  // Runs `sqlite_sql` on `connection` (kept open while the recordset lives) and reads its first
  // row. `columns` gives one field per result column. Throws DatabaseError when the query fails.
  ForwardRecordset(std::shared_ptr<Connection> connection, std::string sqlite_sql,
                   std::vector<ResultField> columns);

  bool Eof() const override { return eof_; }
  // True only when the query has no rows: the cursor never stands before the first row.
  bool Bof() const override { return empty_; }
  // Runs the query again from its first row (within a snapshot, the same rows).
  void MoveFirst() override;
  // Throws RecordsetError when the snapshot the rows came from has ended since (the report run
  // that opened the recordset is over): MoveFirst starts them again.
  void MoveNext() override;
  // Not offered: throw RecordsetError.
  void MovePrevious() override;
  void MoveLast() override;
  // Counted by SQLite on first call (SELECT COUNT(*) over the query), not by reading the rows.
  std::int64_t RecordCount() const override;

  int FieldCount() const override { return static_cast<int>(fields_.size()); }
  const FieldInfo& Field(int index) const override;
  int FieldIndex(std::string_view name) const override;
  using Recordset::Value;
  const Variant& Value(int index) const override;

  // Reads the rows from the current one to the end into an updatable in-memory copy.
  std::shared_ptr<Recordset> Disconnect() override;

 private:
  void ReadRow();

  std::string sql_;
  std::vector<ResultField> columns_;
  std::vector<FieldInfo> fields_;
  Statement statement_;
  std::vector<Variant> row_;
  bool eof_ = false;
  bool empty_ = false;
  mutable std::optional<std::int64_t> count_;
  std::uint64_t generation_;  // the connection's generation when the rows started
};

}  // namespace trellin::data
