#pragma once
// Hands the labels and series of one of the management report's charts to a chart holder
// (`arChart`), as text labels and columns of figures.

#include <memory>
#include <string>
#include <vector>

#include "reports/ledger/arChart.h"

namespace trellin {

class arglChart {
 public:
  // A fresh holder, its layout loaded, for a chart of `type` titled `title`.
  arglChart(ChartType type, std::string title, bool use_colour);

  // The category labels: the periods of a line chart, the slices of a pie.
  void ChartLabels(std::vector<std::string> labels);
  // One series, a value a label; a pie takes one series.
  void ChartValues(std::string name, std::vector<double> values);

  [[nodiscard]] const std::shared_ptr<arChart>& Holder() const { return holder_; }

 private:
  std::shared_ptr<arChart> holder_;
};

}  // namespace trellin
