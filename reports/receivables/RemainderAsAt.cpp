#include "reports/receivables/RemainderAsAt.h"

#include <memory>

namespace trellin {

std::string AllocationsProcessedFromSQL(std::int64_t transaction_id, Date from) {
  const std::string id = Database::SQLNumber(transaction_id);
  const std::string bound = Database::SQLDate(from);
  return "SELECT TransactionAllocationId,-ValueAllocated AS AllocatedValue"
         " FROM Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId=TransactionAllocation.TransactionId1"
         " WHERE TransactionId2=" +
         id + " AND Transactions.DateProcess>=" + bound +
         " UNION SELECT TransactionAllocationId,ValueAllocated AS AllocatedValue"
         " FROM Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId=TransactionAllocation.TransactionId2"
         " WHERE TransactionId1=" +
         id + " AND Transactions.DateProcess>=" + bound;
}

std::string AllocatedFromCondition(Date from) {
  const std::string bound = Database::SQLDate(from);
  return "(Transactions.TransactionId In (SELECT TransactionAllocation.TransactionId1 FROM "
         "TransactionAllocation INNER JOIN Transactions AS Later ON "
         "TransactionAllocation.TransactionId2=Later.TransactionId WHERE Later.DateProcess>=" +
         bound +
         ") OR Transactions.TransactionId In (SELECT TransactionAllocation.TransactionId2 FROM "
         "TransactionAllocation INNER JOIN Transactions AS Later ON "
         "TransactionAllocation.TransactionId1=Later.TransactionId WHERE Later.DateProcess>=" +
         bound + "))";
}

void ForEachAllocatedValue(Database& database, std::string_view allocations_sql,
                           const std::function<void(Currency, const Recordset&)>& give_back) {
  std::shared_ptr<Recordset> rs = database.Query(allocations_sql);
  const int field = rs->FieldIndex("AllocatedValue");
  for (; !rs->Eof(); rs->MoveNext()) {
    const Variant& value = rs->Value(field);
    if (!value.IsNull()) give_back(value.ToCurrency(), *rs);
  }
}

Currency RemainderAsAt(Database& database, Currency value_remaining,
                       std::string_view allocations_sql) {
  Currency remainder = value_remaining;
  ForEachAllocatedValue(database, allocations_sql,
                        [&](Currency value, const Recordset&) { remainder += value; });
  return remainder;
}

}  // namespace trellin
