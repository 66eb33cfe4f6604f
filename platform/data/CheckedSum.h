#pragma once
// SUM as the reports' connections run it: SQLite's own adds text as nought, so one damaged
// value in a ledger column would leave a statement wrong without a word. This one stops the
// query instead, naming the value.

#include <sqlite3.h>

namespace trellin::data {

// Puts the checked SUM(x) in place of SQLite's on `db`. Numbers add exactly as SQLite's do
// (integers exactly, with "integer overflow" past 64 bits; any real makes the sum real); Null is
// skipped; text or a blob fails the statement with "a summed value holds 'abc', which is not a
// number". Returns SQLite's result code.
int UseCheckedSum(sqlite3* db);

}  // namespace trellin::data
