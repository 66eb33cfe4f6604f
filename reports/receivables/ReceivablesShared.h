#pragma once
// Small shapes the receivables designers share: the kinds of their data columns and the level of
// a numbered group section.

#include <string>
#include <string_view>

#include "core/host/Section.h"

namespace trellin {

// The DataType codes of the columns the designers declare.
inline constexpr int kColumnText = 0;
inline constexpr int kColumnNumber = 3;
inline constexpr int kColumnDate = 2;
inline constexpr int kColumnMoney = 4;
inline constexpr int kColumnBoolean = 5;
inline constexpr int kColumnCode = 6;

// The group sections the layouts hold: GroupHeader1 to GroupHeader5, GroupFooter1 to
// GroupFooter5, level 1 the innermost.
inline constexpr int kGroupLevels = 5;

// The level of a section named `prefix` and a digit ("GroupFooter3" with "GroupFooter"); 0 for
// any other name.
[[nodiscard]] inline int GroupLevelOf(const Section& section, std::string_view prefix) {
  const std::string& name = section.Name();
  if (name.size() != prefix.size() + 1 || name.compare(0, prefix.size(), prefix) != 0) return 0;
  const int level = name.back() - '0';
  return level >= 1 && level <= kGroupLevels ? level : 0;
}

}  // namespace trellin
