#pragma once
// Small shapes every area's designers share: the kinds of their data columns, and (from
// core/host/Section.h) the level of a numbered group section.

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

}  // namespace trellin
