#pragma once
// Lays out one section as its events left it: wraps text, grows and shrinks controls, pushes
// controls below a grown one down, and turns the result into page items and a data row.

#include <functional>
#include <string>
#include <vector>

#include "core/host/Section.h"
#include "platform/engine/Band.h"
#include "platform/engine/TextMeasure.h"

namespace trellin::engine {

struct ArrangedControl {
  Control* control = nullptr;
  float top = 0;     // after controls above it grew
  float height = 0;  // after growing or shrinking
  std::vector<std::string> lines;
  float line_height = 0;
  float text_offset = 0;  // from the control's top down to its first line
  float rule_below = -1;  // from the control's top down to its bottom rule; below 0, its height
  Fit fit = Fit::Whole;
  // A word too wide for its fixed box in the control's type is set smaller, down to a floor
  // (see Arrange): the size it takes (0: the control's own) and how far it moves down so that
  // its baseline meets its neighbours'.
  float font_size = 0;
  float baseline_shift = 0;
  // A chart's items, from the control's top-left corner.
  std::vector<PageItem> chart;
};

struct Arrangement {
  std::vector<ArrangedControl> controls;  // the visible controls, in the section's order
  float height = 0;                       // the section's printed height
};

// Text that depends on the page: given a control, the function that makes its text for a page,
// or an empty function for ordinary text.
using LateTextFor = std::function<std::function<std::string(int)>(const Control&)>;

[[nodiscard]] Arrangement Arrange(const Section& section, TextMeasure& measure);

// Appends the items of the arranged controls whose top lies in [from, to) to `band`, moved up by
// `from` and right by `x0`; with `shade`, first the section's shade over `shade_width` and the
// band's height. `band.height` must be set.
void EmitItems(const Section& section, const Arrangement& arrangement, float from, float to,
               float x0, bool shade, float shade_width, const LateTextFor& late, Band& band);

// The section as a row of data: its fields and check boxes with their values and printed text,
// and its label captions, left to right.
[[nodiscard]] DataRow MakeDataRow(const Section& section, const Arrangement& arrangement,
                                  RowKind kind, int level, float x0);

[[nodiscard]] FontSpec ToFontSpec(const ControlFont& font);

}  // namespace trellin::engine
