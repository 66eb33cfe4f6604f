#include "core/host/Chart.h"

#include <algorithm>
#include <cmath>

namespace trellin {

void ChartData::SetColumnCount(int count) {
  SeriesCollection.resize(static_cast<std::size_t>(std::max(count, 0)));
}

void PrepareChart(ChartData& chart) {
  for (ChartSeries& series : chart.SeriesCollection) {
    series.DataPoints.resize(chart.RowLabels.size(), 0.0);
    for (double& point : series.DataPoints) {
      if (!std::isfinite(point)) point = 0;
    }
  }
}

}  // namespace trellin
