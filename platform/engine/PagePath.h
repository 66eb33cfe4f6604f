#pragma once
// A path's points on the page for drawers that have no arcs of their own (the PDF writer, SVG):
// header only, like the page model, so that the renderers link no engine code.

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "platform/engine/PageModel.h"

namespace trellin::engine {

// One step in twips on the page: every arc turned into cubic Bézier curves of at most a quarter
// turn each (close enough to a circle for any printer). `C` steps carry two control points
// (x1, y1), (x2, y2) before their end (x, y).
struct FlatStep {
  char op = 'M';  // 'M' move, 'L' line, 'C' curve, 'Z' close
  float x1 = 0, y1 = 0, x2 = 0, y2 = 0, x = 0, y = 0;
};

[[nodiscard]] inline std::vector<FlatStep> FlattenPath(const PathItem& path) {
  std::vector<FlatStep> out;
  bool have_point = false;
  const float x0 = path.left, y0 = path.top;
  for (const PathStep& step : path.steps) {
    switch (step.op) {
      case PathOp::Move:
      case PathOp::Line: {
        const bool move = step.op == PathOp::Move || !have_point;
        out.push_back(FlatStep{move ? 'M' : 'L', 0, 0, 0, 0, x0 + step.x, y0 + step.y});
        have_point = true;
        break;
      }
      case PathOp::Close:
        out.push_back(FlatStep{'Z'});
        have_point = false;
        break;
      case PathOp::Arc: {
        constexpr double kDegree = std::numbers::pi / 180.0;
        const double cx = x0 + step.x, cy = y0 + step.y, r = step.radius;
        const int pieces = std::max(1, static_cast<int>(std::ceil(std::fabs(step.sweep) / 90.0)));
        const double piece = step.sweep * kDegree / pieces;
        double a = step.start * kDegree;
        out.push_back(FlatStep{have_point ? 'L' : 'M', 0, 0, 0, 0,
                               static_cast<float>(cx + r * std::cos(a)),
                               static_cast<float>(cy + r * std::sin(a))});
        have_point = true;
        const double k = 4.0 / 3.0 * std::tan(piece / 4);
        for (int i = 0; i < pieces; ++i) {
          const double b = a + piece;
          const double ax = cx + r * std::cos(a), ay = cy + r * std::sin(a);
          const double bx = cx + r * std::cos(b), by = cy + r * std::sin(b);
          out.push_back(FlatStep{'C', static_cast<float>(ax - k * r * std::sin(a)),
                                 static_cast<float>(ay + k * r * std::cos(a)),
                                 static_cast<float>(bx + k * r * std::sin(b)),
                                 static_cast<float>(by - k * r * std::cos(b)),
                                 static_cast<float>(bx), static_cast<float>(by)});
          a = b;
        }
        break;
      }
    }
  }
  return out;
}

}  // namespace trellin::engine
