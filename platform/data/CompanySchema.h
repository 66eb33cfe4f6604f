#pragma once
// The DDL and indexes that create an empty company file.

#include <string_view>

namespace trellin::data {

// The schema script, compiled in from platform/data/schema/company.sql: statements separated by
// semicolons, for sqlite3_exec. Empty when the build had no schema file.
[[nodiscard]] std::string_view CompanySchemaSql();

}  // namespace trellin::data
