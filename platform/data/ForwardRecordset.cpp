#include "platform/data/ForwardRecordset.h"

#include <cctype>

#include "platform/data/Criteria.h"
#include "platform/data/MemoryRecordset.h"

namespace trellin::data {

namespace {

std::vector<FieldInfo> FieldsOf(const std::vector<ResultField>& columns) {
  std::vector<FieldInfo> fields;
  fields.reserve(columns.size());
  for (const ResultField& column : columns) fields.push_back(column.info);
  return fields;
}

}  // namespace

ForwardRecordset::ForwardRecordset(std::shared_ptr<Connection> connection, std::string sqlite_sql,
                                   std::vector<ResultField> columns)
    : sql_(std::move(sqlite_sql)),
      columns_(std::move(columns)),
      fields_(FieldsOf(columns_)),
      statement_(std::move(connection), sql_),
      generation_(statement_.Owner()->Generation()) {
  if (sqlite3_column_count(statement_.Handle()) != static_cast<int>(columns_.size())) {
    throw DatabaseError(
        "the query returns " + std::to_string(sqlite3_column_count(statement_.Handle())) +
        " columns where " + std::to_string(columns_.size()) + " were expected: " + sql_);
  }
  row_.resize(columns_.size());
  ReadRow();
  empty_ = eof_;
}

void ForwardRecordset::ReadRow() {
  eof_ = !statement_.Step();
  if (eof_) return;
  sqlite3_stmt* stmt = statement_.Handle();
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    row_[i] = ReadColumn(stmt, static_cast<int>(i), columns_[i]);
  }
}

void ForwardRecordset::MoveFirst() {
  statement_.Reset();
  generation_ = statement_.Owner()->Generation();
  ReadRow();
}

void ForwardRecordset::MoveNext() {
  if (eof_) throw RecordsetError("MoveNext past the last row");
  if (generation_ != statement_.Owner()->Generation()) {
    throw RecordsetError(
        "MoveNext: the report run that opened this recordset has ended, and its rows with it");
  }
  ReadRow();
}

void ForwardRecordset::MovePrevious() {
  throw RecordsetError("MovePrevious is not available on a forward-only recordset");
}

void ForwardRecordset::MoveLast() {
  throw RecordsetError("MoveLast is not available on a forward-only recordset");
}

std::int64_t ForwardRecordset::RecordCount() const {
  if (!count_) {
    std::string_view inner = sql_;
    // A closing semicolon would end the statement inside the count's brackets.
    while (!inner.empty() &&
           (inner.back() == ';' || std::isspace(static_cast<unsigned char>(inner.back())))) {
      inner.remove_suffix(1);
    }
    Statement count(statement_.Owner(), "SELECT COUNT(*) FROM (" + std::string(inner) + ")");
    count_ = count.Step() ? sqlite3_column_int64(count.Handle(), 0) : 0;
  }
  return *count_;
}

const FieldInfo& ForwardRecordset::Field(int index) const {
  if (index < 0 || index >= FieldCount()) {
    throw RecordsetError("no field number " + std::to_string(index) + " in the recordset");
  }
  return fields_[index];
}

int ForwardRecordset::FieldIndex(std::string_view name) const { return FindField(fields_, name); }

const Variant& ForwardRecordset::Value(int index) const {
  const FieldInfo& field = Field(index);
  if (eof_) throw RecordsetError("reading " + field.name + ": there is no current row (EOF)");
  return row_[index];
}

std::shared_ptr<Recordset> ForwardRecordset::Disconnect() {
  std::vector<MemoryRecordset::Row> rows;
  while (!eof_) {
    rows.push_back(row_);
    MoveNext();
  }
  return std::make_shared<MemoryRecordset>(fields_, std::move(rows), /*updatable=*/true);
}

}  // namespace trellin::data
