#include "reports/ledger/arglChart.h"

namespace trellin {

arglChart::arglChart(ChartType type, std::string title, bool use_colour)
    : holder_(std::make_shared<arChart>()) {
  holder_->Initialize();
  ChartData& chart = holder_->Chart();
  chart.ChartType = type;
  chart.Title = std::move(title);
  chart.Plot.UseColour = use_colour;
  chart.Plot.AxisFormat = "#,###,##0";
  chart.SeriesCollection.clear();
}

void arglChart::ChartLabels(std::vector<std::string> labels) {
  holder_->Chart().RowLabels = std::move(labels);
}

void arglChart::ChartValues(std::string name, std::vector<double> values) {
  ChartData& chart = holder_->Chart();
  chart.SetColumnCount(chart.ColumnCount() + 1);
  chart.SeriesCollection.back() = ChartSeries{std::move(name), std::move(values)};
}

}  // namespace trellin
