#include "platform/render/PagePainter.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <variant>
#include <vector>

#include "platform/render/PageGeometry.h"
#include "platform/render/Utf8.h"

namespace trellin::render {
namespace {

void SetColor(cairo_t* cr, const engine::Color& c) {
  cairo_set_source_rgb(cr, c.r / 255.0, c.g / 255.0, c.b / 255.0);
}

// Moves a coordinate to the nearest pixel centre (for odd pixel widths) or edge (even), so that a
// one-pixel rule covers one row of pixels instead of two half-grey rows.
double SnapAxis(double user, double width_px, bool horizontal, cairo_t* cr) {
  double x = horizontal ? 0 : user, y = horizontal ? user : 0;
  cairo_user_to_device(cr, &x, &y);
  double& device = horizontal ? y : x;
  const long pixels = std::lround(std::max(width_px, 1.0));
  device = (pixels % 2 == 1) ? std::floor(device) + 0.5 : std::round(device);
  cairo_device_to_user(cr, &x, &y);
  return horizontal ? y : x;
}

double SnapEdge(double user, bool horizontal, cairo_t* cr) {
  double x = horizontal ? 0 : user, y = horizontal ? user : 0;
  cairo_user_to_device(cr, &x, &y);
  double& device = horizontal ? y : x;
  device = std::round(device);
  cairo_device_to_user(cr, &x, &y);
  return horizontal ? y : x;
}

}  // namespace

void PagePainter::Paint(cairo_t* cr, const engine::Page& page) {
  cairo_save(cr);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
  for (const engine::PageItem& item : page.items) {
    std::visit(
        [&](const auto& it) {
          using T = std::decay_t<decltype(it)>;
          if (!Finite(it)) return;
          if constexpr (std::is_same_v<T, engine::TextRun>) {
            DrawText(cr, it);
          } else if constexpr (std::is_same_v<T, engine::LineItem>) {
            DrawLine(cr, it);
          } else if constexpr (std::is_same_v<T, engine::PathItem>) {
            DrawPath(cr, it);
          } else {
            DrawRect(cr, it);
          }
        },
        item);
  }
  cairo_restore(cr);
}

void PagePainter::DrawText(cairo_t* cr, const engine::TextRun& run) {
  if (run.text.empty()) return;
  const FontEntry& font = fonts_.Get(run.font);
  if (IsValidUtf8(run.text)) {
    pango_layout_set_text(font.layout, run.text.data(), static_cast<int>(run.text.size()));
  } else {
    const std::string repaired = ValidUtf8(run.text);
    pango_layout_set_text(font.layout, repaired.data(), static_cast<int>(repaired.size()));
  }
  PangoLayoutLine* line = pango_layout_get_line_readonly(font.layout, 0);
  if (line == nullptr) return;

  double x = Points(run.left);
  // Justified text is a single line here; like the last line of a paragraph it sits at the left.
  if (run.align == engine::Align::Right || run.align == engine::Align::Center) {
    PangoRectangle logical;
    pango_layout_line_get_extents(line, nullptr, &logical);
    const double slack = Points(run.width) - static_cast<double>(logical.width) / PANGO_SCALE;
    x += run.align == engine::Align::Right ? slack : slack / 2;
  }
  SetColor(cr, run.color);
  cairo_move_to(cr, x, Points(run.top) + font.ascent);
  pango_cairo_show_layout_line(cr, line);
}

void PagePainter::DrawLine(cairo_t* cr, const engine::LineItem& line) const {
  double x1 = Points(line.x1), y1 = Points(line.y1), x2 = Points(line.x2), y2 = Points(line.y2);
  const double width = Thickness(line.thickness);
  if (snap_) {
    double px = width, py = 0;
    cairo_user_to_device_distance(cr, &px, &py);
    if (y1 == y2) {
      y1 = y2 = SnapAxis(y1, px, true, cr);
      x1 = SnapEdge(x1, false, cr);
      x2 = SnapEdge(x2, false, cr);
    } else if (x1 == x2) {
      x1 = x2 = SnapAxis(x1, px, false, cr);
      y1 = SnapEdge(y1, true, cr);
      y2 = SnapEdge(y2, true, cr);
    }
  }
  SetColor(cr, line.color);
  cairo_set_line_width(cr, width);
  cairo_move_to(cr, x1, y1);
  cairo_line_to(cr, x2, y2);
  cairo_stroke(cr);
}

void PagePainter::DrawRect(cairo_t* cr, const engine::RectItem& rect) const {
  double left = Points(rect.left), top = Points(rect.top);
  double right = Points(rect.left + rect.width), bottom = Points(rect.top + rect.height);
  if (snap_) {
    left = SnapEdge(left, false, cr);
    right = SnapEdge(right, false, cr);
    top = SnapEdge(top, true, cr);
    bottom = SnapEdge(bottom, true, cr);
  }
  if (rect.filled) {
    SetColor(cr, rect.fill);
    cairo_rectangle(cr, left, top, right - left, bottom - top);
    cairo_fill(cr);
  }
  if (rect.stroked) {
    const double width = Thickness(rect.thickness);
    // The border lies inside the box, so a boxed section keeps its measured size; with edges on
    // pixel boundaries a half-width inset also keeps a whole-pixel border crisp.
    const double inset = width / 2;
    SetColor(cr, rect.stroke);
    cairo_set_line_width(cr, width);
    cairo_rectangle(cr, left + inset, top + inset, right - left - 2 * inset,
                    bottom - top - 2 * inset);
    cairo_stroke(cr);
  }
}

void PagePainter::DrawPath(cairo_t* cr, const engine::PathItem& path) {
  if (!path.filled && !path.stroked) return;
  constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;
  cairo_new_path(cr);
  for (const engine::PathStep& s : path.steps) {
    const double x = Points(path.left + s.x), y = Points(path.top + s.y);
    switch (s.op) {
      case engine::PathOp::Move:
        cairo_move_to(cr, x, y);
        break;
      case engine::PathOp::Line:
        cairo_line_to(cr, x, y);
        break;
      case engine::PathOp::Arc: {
        const double a1 = s.start * kRadiansPerDegree;
        const double a2 = (s.start + s.sweep) * kRadiansPerDegree;
        if (s.sweep >= 0) {
          cairo_arc(cr, x, y, Points(s.radius), a1, a2);
        } else {
          cairo_arc_negative(cr, x, y, Points(s.radius), a1, a2);
        }
        break;
      }
      case engine::PathOp::Close:
        cairo_close_path(cr);
        break;
    }
  }
  if (path.filled) {
    SetColor(cr, path.fill);
    if (path.stroked) {
      cairo_fill_preserve(cr);
    } else {
      cairo_fill(cr);
    }
  }
  if (path.stroked) {
    std::vector<double> dash;
    for (float d : path.dash) dash.push_back(Points(d));
    cairo_set_dash(cr, dash.data(), static_cast<int>(dash.size()), 0);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    SetColor(cr, path.stroke);
    cairo_set_line_width(cr, Thickness(path.thickness));
    cairo_stroke(cr);
    cairo_set_dash(cr, nullptr, 0, 0);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
  }
}

}  // namespace trellin::render
