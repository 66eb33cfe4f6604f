#pragma once
// A page as fixed-pitch text, for terminals, pipes and diffs.
//
// Across, the page is a grid of columns of `column_twips` (100: a 10pt Arial report reads at
// about its printed width, 14.4 columns to the inch), or narrower ones on a page whose texts
// would otherwise run into one another; each run sits at the column of its left edge, its right
// edge or its centre, by its alignment, so figures right-align on their column. Down, every
// distinct line position gets its own text line, so rows never collide, and a gap of n extra line
// heights (`line_twips`, 240: six lines to the inch) shows as n blank lines. Horizontal rules
// become a line of '-', or of '=' where two rules lie together (double-ruled totals). Shading,
// boxes and vertical rules are left out. The page's common left margin and the space above its
// first line are dropped.

#include <string>

#include "platform/engine/PageModel.h"

namespace trellin::render {

struct TextGrid {
  float column_twips = 100;  // the widest a column is
  float line_twips = 240;
  // A page whose texts would run into one another at `column_twips` gets narrower columns, down
  // to this; its lines may then be longer than a page is at the widest columns, never longer
  // than the page at its own.
  float narrowest_column_twips = 60;
};

// The page as lines, each ending in '\n', without trailing spaces; "" for an empty page. A run
// that would overwrite text already placed on its line moves right to leave one space, so no
// text is ever lost.
[[nodiscard]] std::string RenderTextPage(const engine::Page& page, const TextGrid& grid = {});

}  // namespace trellin::render
