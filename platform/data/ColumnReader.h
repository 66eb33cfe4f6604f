#pragma once
// Reading one column of an SQLite result row as the typed value a recordset hands out.

#include <sqlite3.h>

#include "core/host/Recordset.h"

namespace trellin::data {

// A result column as a recordset shows it. `typed` is false for a column whose type is not
// known (a bare Null, a value the catalogue cannot type): its values are read as stored.
struct ResultField {
  FieldInfo info;
  bool typed = true;
};

// The value of `column` in the current row of `stmt`, from its storage form: money as an
// INTEGER count of ten-thousandths, dates as ISO text, booleans as 0/1. NULL is Null whatever
// the type. Throws DatabaseError naming the column when a stored value does not fit its type
// (text in a money column, a date that is not ISO).
[[nodiscard]] Variant ReadColumn(sqlite3_stmt* stmt, int column, const ResultField& field);

}  // namespace trellin::data
