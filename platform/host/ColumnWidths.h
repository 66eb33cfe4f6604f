#pragma once
// The widths of a row of columns across the print width: the arithmetic of the column layout,
// kept apart from controls so that it can be read and tested on its own.

#include <vector>

namespace trellin::host {

struct ColumnWidthRequest {
  float width = -1;          // twips; below 0 automatic, 0 a column that never prints
  float minimum_width = -1;  // twips; below 0 none
  float least = 0;           // twips the column's heading needs: a wider column stays wider
};

// The narrowest an automatic column is made when the report gives it no minimum.
inline constexpr float kAutomaticFloor = 600;

// The slot width of each column, in order, for `print_width` twips. Fixed columns keep their
// width, or `least` when that is more; automatic ones share what is left equally, none narrower
// than its minimum, `least` or kAutomaticFloor, the wider minimums taken first. When there is at
// least one automatic column the slots fill the print width exactly. When the columns cannot fit,
// every width is scaled down in proportion so that they do. A zero width stays zero.
[[nodiscard]] std::vector<float> ColumnWidths(const std::vector<ColumnWidthRequest>& columns,
                                              float print_width);

}  // namespace trellin::host
