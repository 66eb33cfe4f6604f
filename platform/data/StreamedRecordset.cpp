#include "platform/data/StreamedRecordset.h"

#include <cctype>

#include "platform/data/Criteria.h"
#include "platform/data/MemoryRecordset.h"

namespace trellin::data {

std::vector<FieldInfo> FieldInfosOf(const std::vector<ResultField>& columns) {
  std::vector<FieldInfo> fields;
  fields.reserve(columns.size());
  for (const ResultField& column : columns) fields.push_back(column.info);
  return fields;
}

std::string WithoutClosingSemicolon(std::string_view sql) {
  while (!sql.empty() &&
         (sql.back() == ';' || std::isspace(static_cast<unsigned char>(sql.back())))) {
    sql.remove_suffix(1);
  }
  return std::string(sql);
}

StreamedRecordset::StreamedRecordset(std::vector<ResultField> columns)
    : columns_(std::move(columns)), fields_(FieldInfosOf(columns_)) {
  row_.resize(columns_.size());
}

void StreamedRecordset::Start() {
  eof_ = !ReadRow(row_);
  if (!started_) empty_ = eof_;
  started_ = true;
}

void StreamedRecordset::MoveNext() {
  if (eof_) throw RecordsetError("MoveNext past the last row");
  if (Ended()) {
    throw RecordsetError(
        "MoveNext: the report run that opened this recordset has ended, and its rows with it");
  }
  eof_ = !ReadRow(row_);
}

void StreamedRecordset::MovePrevious() {
  throw RecordsetError("MovePrevious is not available on a forward-only recordset");
}

void StreamedRecordset::MoveLast() {
  throw RecordsetError("MoveLast is not available on a forward-only recordset");
}

std::int64_t StreamedRecordset::RecordCount() const {
  if (!count_) count_ = CountRows();
  return *count_;
}

const FieldInfo& StreamedRecordset::Field(int index) const {
  if (index < 0 || index >= FieldCount()) {
    throw RecordsetError("no field number " + std::to_string(index) + " in the recordset");
  }
  return fields_[index];
}

int StreamedRecordset::FieldIndex(std::string_view name) const { return FindField(fields_, name); }

const Variant& StreamedRecordset::Value(int index) const {
  const FieldInfo& field = Field(index);
  if (eof_) throw RecordsetError("reading " + field.name + ": there is no current row (EOF)");
  return row_[index];
}

std::shared_ptr<Recordset> StreamedRecordset::Disconnect() {
  std::vector<MemoryRecordset::Row> rows;
  while (!eof_) {
    rows.push_back(row_);
    MoveNext();
  }
  return std::make_shared<MemoryRecordset>(fields_, std::move(rows), /*updatable=*/true);
}

}  // namespace trellin::data
