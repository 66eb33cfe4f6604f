#pragma once
// What the receivables designers share beyond the shapes of every area: their group levels.

#include "reports/ReportShapes.h"

namespace trellin {

// The group sections the layouts hold: GroupHeader1 to GroupHeader5, GroupFooter1 to
// GroupFooter5, level 1 the innermost.
inline constexpr int kGroupLevels = 5;

}  // namespace trellin
