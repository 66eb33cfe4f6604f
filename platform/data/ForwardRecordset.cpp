#include "platform/data/ForwardRecordset.h"

namespace trellin::data {

ForwardRecordset::ForwardRecordset(std::shared_ptr<Connection> connection, std::string sqlite_sql,
                                   std::vector<ResultField> columns)
    : StreamedRecordset(std::move(columns)),
      sql_(std::move(sqlite_sql)),
      statement_(std::move(connection), sql_),
      generation_(statement_.Owner()->Generation()) {
  if (sqlite3_column_count(statement_.Handle()) != FieldCount()) {
    throw DatabaseError(
        "the query returns " + std::to_string(sqlite3_column_count(statement_.Handle())) +
        " columns where " + std::to_string(FieldCount()) + " were expected: " + sql_);
  }
  Start();
}

bool ForwardRecordset::ReadRow(std::vector<Variant>& row) {
  if (!statement_.Step()) return false;
  sqlite3_stmt* stmt = statement_.Handle();
  const std::vector<ResultField>& columns = Columns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    row[i] = ReadColumn(stmt, static_cast<int>(i), columns[i]);
  }
  return true;
}

bool ForwardRecordset::Ended() const { return generation_ != statement_.Owner()->Generation(); }

void ForwardRecordset::MoveFirst() {
  statement_.Reset();
  generation_ = statement_.Owner()->Generation();
  Start();
}

std::int64_t ForwardRecordset::CountRows() const {
  Statement count(statement_.Owner(),
                  "SELECT COUNT(*) FROM (" + WithoutClosingSemicolon(sql_) + ")");
  return count.Step() ? sqlite3_column_int64(count.Handle(), 0) : 0;
}

}  // namespace trellin::data
