#pragma once
// What a forward-only recordset that streams a query's rows shares, whichever database sends
// them: the result's fields, the current row, the end, the count asked of the database once, and
// the in-memory copy Disconnect makes. A backend reads the rows one at a time (ReadRow).

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/Recordset.h"
#include "platform/data/ColumnReader.h"

namespace trellin::data {

class StreamedRecordset : public Recordset {
 public:
  bool Eof() const override { return eof_; }
  // True only when the query has no rows: the cursor never stands before the first row.
  bool Bof() const override { return empty_; }
  // Throws RecordsetError past the last row, and when the snapshot the rows came from has ended
  // since (the report run that opened the recordset is over): MoveFirst starts them again.
  void MoveNext() override;
  // Not offered: throw RecordsetError.
  void MovePrevious() override;
  void MoveLast() override;
  // Counted by the database on first call (SELECT COUNT(*) over the query), not by reading the
  // rows.
  std::int64_t RecordCount() const override;

  int FieldCount() const override { return static_cast<int>(fields_.size()); }
  const FieldInfo& Field(int index) const override;
  int FieldIndex(std::string_view name) const override;
  using Recordset::Value;
  const Variant& Value(int index) const override;

  // Reads the rows from the current one to the end into an updatable in-memory copy.
  std::shared_ptr<Recordset> Disconnect() override;

 protected:
  explicit StreamedRecordset(std::vector<ResultField> columns);

  // Reads the first row: the backend calls it once its rows start, and again from MoveFirst.
  void Start();
  [[nodiscard]] const std::vector<ResultField>& Columns() const { return columns_; }

  // The next row into `row` (a value a column); false when there is none.
  virtual bool ReadRow(std::vector<Variant>& row) = 0;
  // Whether the snapshot the rows come from has ended since they started.
  [[nodiscard]] virtual bool Ended() const = 0;
  [[nodiscard]] virtual std::int64_t CountRows() const = 0;

 private:
  std::vector<ResultField> columns_;
  std::vector<FieldInfo> fields_;
  std::vector<Variant> row_;
  bool started_ = false;
  bool eof_ = true;
  bool empty_ = false;
  mutable std::optional<std::int64_t> count_;
};

// The fields a recordset shows for `columns`.
[[nodiscard]] std::vector<FieldInfo> FieldInfosOf(const std::vector<ResultField>& columns);

// A statement without its closing semicolon, to stand inside another (a count's brackets).
[[nodiscard]] std::string WithoutClosingSemicolon(std::string_view sql);

}  // namespace trellin::data
