#pragma once
// Lays a chart control out into page items: its title, slice labels, ticks and legend as text runs
// measured like every other text; axes and grid as rules; wedges, series and markers as paths.
//
// A pie stands on the left under the title, its slices clockwise from twelve o'clock in the
// order given, with a legend on the right: a swatch and the slice's label, one under another, so
// that no two labels can meet. Slices of no or negative value draw nothing. A line chart has its
// value axis on the left, from a round number at or below the least point (never above 0) to one
// at or above the greatest (never below 0) in about five steps, ticks in the plot's `AxisFormat`;
// the categories run along the bottom, every one labelled when their labels fit side by side and
// every second, third, ... one when they do not; its legend stands on the right.
//
// Colour series take a palette of strong colours; mono series take greys, and a line series a
// dash pattern and a marker of its own as well, so that series stay apart on a black-and-white
// printer.

#include <vector>

#include "core/host/Chart.h"
#include "platform/engine/PageModel.h"
#include "platform/engine/TextMeasure.h"

namespace trellin::engine {

// The chart's items in a box of `width` by `height` twips, measured from the box's top-left
// corner; `font` is the control's, for labels (the title takes it two points larger, bold).
[[nodiscard]] std::vector<PageItem> LayOutChart(const ChartData& chart, const FontSpec& font,
                                                float width, float height, TextMeasure& measure);

}  // namespace trellin::engine
