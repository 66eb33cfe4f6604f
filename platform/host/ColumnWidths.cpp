#include "platform/host/ColumnWidths.h"

#include <algorithm>
#include <numeric>

namespace trellin::host {

namespace {

float MinimumOf(const ColumnWidthRequest& column) {
  return std::max(column.minimum_width > 0 ? column.minimum_width : kAutomaticFloor, column.least);
}

}  // namespace

std::vector<float> ColumnWidths(const std::vector<ColumnWidthRequest>& columns, float print_width) {
  std::vector<float> widths(columns.size(), 0.0f);
  std::vector<std::size_t> automatic;
  float fixed = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].width < 0) {
      automatic.push_back(i);
    } else {
      widths[i] = columns[i].width > 0 ? std::max(columns[i].width, columns[i].least) : 0;
      fixed += widths[i];
    }
  }

  // Water filling: while the equal share is below some column's minimum, that column takes its
  // minimum and leaves the others a smaller remainder to share.
  float remaining = std::max(0.0f, print_width - fixed);
  std::sort(automatic.begin(), automatic.end(), [&](std::size_t a, std::size_t b) {
    return MinimumOf(columns[a]) > MinimumOf(columns[b]);
  });
  std::size_t sharing = automatic.size();
  for (std::size_t k = 0; k < automatic.size(); ++k) {
    float share = remaining / static_cast<float>(sharing);
    float minimum = MinimumOf(columns[automatic[k]]);
    if (minimum > share) {
      widths[automatic[k]] = minimum;
      remaining = std::max(0.0f, remaining - minimum);
      --sharing;
      continue;
    }
    for (std::size_t j = k; j < automatic.size(); ++j) widths[automatic[j]] = share;
    break;
  }

  float total = std::accumulate(widths.begin(), widths.end(), 0.0f);
  if (total > print_width && total > 0) {
    float scale = print_width / total;
    for (float& width : widths) width *= scale;
  }
  return widths;
}

}  // namespace trellin::host
