#pragma once
// Name handling shared by the front end: Jet names match without regard to case, and names
// written into SQLite are quoted only where SQLite needs it.

#include <string>
#include <string_view>

namespace trellin::sql {

// ASCII case-insensitive equality.
[[nodiscard]] inline bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x == y) continue;
    if ((x | 0x20) != (y | 0x20) || (x | 0x20) < 'a' || (x | 0x20) > 'z') return false;
  }
  return true;
}
// Hash and equality that ignore ASCII case, for maps looked up by string_view without copying.
struct NameHash {
  using is_transparent = void;
  [[nodiscard]] std::size_t operator()(std::string_view name) const;
};
struct NameEqual {
  using is_transparent = void;
  [[nodiscard]] bool operator()(std::string_view a, std::string_view b) const {
    return SameName(a, b);
  }
};

// `name` as an SQLite identifier: as it is when it is a plain word that SQLite does not
// reserve, otherwise in double quotes with inner quotes doubled.
[[nodiscard]] std::string QuoteName(std::string_view name);

}  // namespace trellin::sql
