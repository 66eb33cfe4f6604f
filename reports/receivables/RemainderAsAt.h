#pragma once
// What a transaction had open on a past date. ValueRemaining is what no allocation has taken up
// today; an allocation made after the date took part of it since, so giving back what those
// allocations took rebuilds the remainder as it stood. Which allocations count is each report's
// own query; the arithmetic is this one.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/host/Database.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

// The allocations that transaction `transaction_id` took part in whose other transaction was
// processed on or after `from`, each as the value it gives back: "AllocatedValue", negated where
// the transaction is the second of the pair. It is the other transaction of the pair, the one
// joined in, whose DateProcess decides.
[[nodiscard]] std::string AllocationsProcessedFromSQL(std::int64_t transaction_id, Date from);

// A condition on `Transactions` of a list's query: the transaction took part in an allocation
// whose other transaction was processed on or after `from`, so that it had more open before
// `from` than it has today. With "Transactions.ValueRemaining<>0" beside it, it takes in every
// transaction that can have had anything open on the day before `from`.
[[nodiscard]] std::string AllocatedFromCondition(Date from);

// Calls `give_back` with each non-Null "AllocatedValue" that `allocations_sql` returns and the
// row it stands on, in the order of the rows. Throws DatabaseError for a query that fails.
void ForEachAllocatedValue(Database& database, std::string_view allocations_sql,
                           const std::function<void(Currency, const Recordset&)>& give_back);

// `value_remaining` plus the AllocatedValue of every row `allocations_sql` returns, a Null
// counting as 0. Throws DatabaseError for a query that fails.
[[nodiscard]] Currency RemainderAsAt(Database& database, Currency value_remaining,
                                     std::string_view allocations_sql);

}  // namespace trellin
