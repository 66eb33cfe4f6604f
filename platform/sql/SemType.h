#pragma once
// The meaning of a column or expression value, as the schema declares it and as a recordset
// hands it back.

#include <optional>
#include <string_view>

namespace trellin::sql {

// Storage form in SQLite of each type: Text as TEXT, Long as INTEGER, Double as REAL,
// Currency as an INTEGER count of ten-thousandths, Date as ISO text ('yyyy-mm-dd' or
// 'yyyy-mm-dd hh:mm:ss'), Boolean as 0 or 1. Null is the type of a bare Null.
enum class SemType { Null, Text, Long, Double, Currency, Date, Boolean };

// The type of a declared column type: "TEXT", "INTEGER", "DOUBLE", "MONEY", "DATE", "BOOLEAN",
// matched without regard to case and ignoring anything after the first word ("TEXT COLLATE
// NOCASE"). nullopt for any other declaration.
[[nodiscard]] std::optional<SemType> SemTypeFromDeclared(std::string_view declared);

// "Null", "Text", "Long", "Double", "Currency", "Date", "Boolean".
[[nodiscard]] std::string_view SemTypeName(SemType type);

// Long, Double, Currency or Boolean: the types that take part in arithmetic.
[[nodiscard]] bool IsNumeric(SemType type);

}  // namespace trellin::sql
