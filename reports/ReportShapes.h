#pragma once
// Small shapes every area's designers share: the kinds of their data columns and the level of a
// numbered group section.

#include <string>
#include <string_view>

#include "core/host/Section.h"

namespace trellin {

// Kinds of data column, as the column layout reads DataType.
inline constexpr int kColumnText = 0;
inline constexpr int kColumnDate = 2;
inline constexpr int kColumnNumber = 3;
inline constexpr int kColumnMoney = 4;
inline constexpr int kColumnBoolean = 5;
inline constexpr int kColumnCode = 6;

// The level of a section named `prefix` and a number ("GroupFooter3" with "GroupFooter" is 3),
// level 1 the innermost; 0 for any other name.
[[nodiscard]] inline int GroupLevelOf(const Section& section, std::string_view prefix) {
  const std::string& name = section.Name();
  if (name.size() <= prefix.size() || name.compare(0, prefix.size(), prefix) != 0) return 0;
  int level = 0;
  for (std::size_t i = prefix.size(); i < name.size() && level < 1000; ++i) {
    if (name[i] < '0' || name[i] > '9') return 0;
    level = level * 10 + (name[i] - '0');
  }
  return level;
}

}  // namespace trellin
