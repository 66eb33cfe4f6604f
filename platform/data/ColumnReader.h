#pragma once
// Reading one column of an SQLite result row as the typed value a recordset hands out.

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <string_view>

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

// The whole text as a whole number, or as a number in C's form ("12.5", "1e+20", "nan"):
// nullopt for text that is not, or not only, that. A typed reader's parse of a value stored as
// text, whichever database stores it.
[[nodiscard]] std::optional<std::int64_t> ParseWholeText(std::string_view text);
[[nodiscard]] std::optional<double> ParseRealText(std::string_view text);

}  // namespace trellin::data
