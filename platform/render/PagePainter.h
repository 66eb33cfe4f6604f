#pragma once
// Draws one page of the page model on a cairo context: shading, rules, boxes, paths and text, in
// the order the engine placed them.

#include <cairo.h>

#include "platform/engine/PageModel.h"
#include "platform/render/FontCache.h"

namespace trellin::render {

class PagePainter {
 public:
  // `pixel_target`: the context draws on an image; rules and box edges are then snapped to
  // whole pixels so that hairlines stay crisp, and glyph outlines are hinted.
  explicit PagePainter(bool pixel_target) : fonts_(pixel_target), snap_(pixel_target) {}

  // Draws `page` on `cr`, whose user space must be in points with the origin at the top-left
  // corner of the paper. Leaves the context's state as it found it.
  void Paint(cairo_t* cr, const engine::Page& page);

 private:
  void DrawText(cairo_t* cr, const engine::TextRun& run);
  void DrawLine(cairo_t* cr, const engine::LineItem& line) const;
  void DrawRect(cairo_t* cr, const engine::RectItem& rect) const;
  static void DrawPath(cairo_t* cr, const engine::PathItem& path);

  FontCache fonts_;
  bool snap_;
};

}  // namespace trellin::render
