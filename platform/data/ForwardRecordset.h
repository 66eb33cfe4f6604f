#pragma once
// A forward-only recordset that streams a query's rows from SQLite as the cursor moves, holding
// one row at a time: how a report reads a million-line ledger.

#include <memory>
#include <string>
#include <vector>

#include "platform/data/Sqlite.h"
#include "platform/data/StreamedRecordset.h"

namespace trellin::data {

class ForwardRecordset : public StreamedRecordset {
 public:
  // Runs `sqlite_sql` on `connection` (kept open while the recordset lives) and reads its first
  // row. `columns` gives one field per result column. Throws DatabaseError when the query fails.
  ForwardRecordset(std::shared_ptr<Connection> connection, std::string sqlite_sql,
                   std::vector<ResultField> columns);

  // Runs the query again from its first row (within a snapshot, the same rows).
  void MoveFirst() override;

 private:
  bool ReadRow(std::vector<Variant>& row) override;
  [[nodiscard]] bool Ended() const override;
  [[nodiscard]] std::int64_t CountRows() const override;

  std::string sql_;
  Statement statement_;
  std::uint64_t generation_;  // the connection's generation when the rows started
};

}  // namespace trellin::data
