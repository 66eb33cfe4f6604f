#pragma once
// Name handling shared by the front end: Jet names match without regard to case, and names
// written into SQLite are quoted only where SQLite needs it.

#include <string>
#include <string_view>

namespace trellin::sql {

// ASCII case-insensitive equality.
[[nodiscard]] bool SameName(std::string_view a, std::string_view b);
// ASCII lower case, the key under which names are looked up.
[[nodiscard]] std::string NameKey(std::string_view name);
// `name` as an SQLite identifier: as it is when it is a plain word that SQLite does not
// reserve, otherwise in double quotes with inner quotes doubled.
[[nodiscard]] std::string QuoteName(std::string_view name);

}  // namespace trellin::sql
