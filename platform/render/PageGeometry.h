#pragma once
// Measures the drawing sinks (PDF, PNG) share: twips to points, the thinnest rule, and which
// items have a place at all.

#include <algorithm>
#include <cmath>

#include "platform/engine/PageModel.h"

namespace trellin::render {

inline constexpr double kTwipsPerPoint = 20.0;

[[nodiscard]] inline double Points(float twips) { return twips / kTwipsPerPoint; }

// Line width in points; a rule is never thinner than a hairline a printer can show.
[[nodiscard]] inline double Thickness(float twips) { return std::max(Points(twips), 0.25); }

// An item placed at a position that is not a number would spoil the whole page; it is left out.
[[nodiscard]] inline bool Finite(const engine::TextRun& r) {
  return std::isfinite(r.left) && std::isfinite(r.top) && std::isfinite(r.width) &&
         std::isfinite(r.font.size);
}
[[nodiscard]] inline bool Finite(const engine::LineItem& l) {
  return std::isfinite(l.x1) && std::isfinite(l.y1) && std::isfinite(l.x2) && std::isfinite(l.y2) &&
         std::isfinite(l.thickness);
}
[[nodiscard]] inline bool Finite(const engine::RectItem& r) {
  return std::isfinite(r.left) && std::isfinite(r.top) && std::isfinite(r.width) &&
         std::isfinite(r.height) && std::isfinite(r.thickness);
}

[[nodiscard]] inline bool Finite(const engine::PathItem& p) {
  if (!std::isfinite(p.left) || !std::isfinite(p.top) || !std::isfinite(p.thickness)) return false;
  return std::all_of(p.steps.begin(), p.steps.end(), [](const engine::PathStep& s) {
    return std::isfinite(s.x) && std::isfinite(s.y) && std::isfinite(s.radius) &&
           std::isfinite(s.start) && std::isfinite(s.sweep);
  });
}

}  // namespace trellin::render
