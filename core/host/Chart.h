#pragma once
// The data of a chart control: what it draws (a pie or lines), its series with their data points,
// the labels along its category axis and how the plot is dressed. A designer fills it, hands the
// control to the host's AttachChart, and the engine lays it out into the page when its section
// prints.

#include <string>
#include <vector>

namespace trellin {

enum class ChartType { Line, Pie };

// One series: a line of a line chart, or the slices of a pie (one data point a slice).
struct ChartSeries {
  std::string Name;
  std::vector<double> DataPoints;
};

struct ChartPlot {
  std::string AxisFormat;  // the mask of the value axis's ticks ("#,###,##0"); "" for plain numbers
  bool UseColour = true;   // colours, else greys told apart by dash patterns and markers
};

class ChartData {
 public:
  std::string Title;
  trellin::ChartType ChartType = trellin::ChartType::Line;
  // The category labels: one a data point (the periods of a line chart, the slices of a pie).
  std::vector<std::string> RowLabels;
  std::vector<ChartSeries> SeriesCollection;
  ChartPlot Plot;

  // The number of series. Setting it adds empty series or drops the last ones.
  [[nodiscard]] int ColumnCount() const { return static_cast<int>(SeriesCollection.size()); }
  void SetColumnCount(int count);
  // The number of category labels, and of data points every series carries once attached.
  [[nodiscard]] int RowCount() const { return static_cast<int>(RowLabels.size()); }
};

// Makes the chart ready to print, as the host does when a designer attaches it: every series gets
// one data point a label (missing points are 0, points without a label are dropped), and points
// that are not numbers count as 0.
void PrepareChart(ChartData& chart);

}  // namespace trellin
