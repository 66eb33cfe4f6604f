#pragma once
// "Chart": the chart holder. One chart control in its detail, drawn from the labels and series
// handed to it (through `arglChart` when it stands in a management report); run alone it prints
// its own print line over the chart it holds, which has nothing to draw until it is handed some.

#include <string>

#include "core/Designer.h"

namespace trellin {

class arChart : public Designer {
 public:
  arChart() : Designer("arChart") {}

  // The chart control and its data; available once the layout is loaded (Initialize).
  [[nodiscard]] Control& ChartControl() const { return Field("chtChart"); }
  [[nodiscard]] ChartData& Chart() const { return ChartControl().Chart(); }

  void ActiveReport_ReportStart() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  bool fetched_ = false;
};

[[nodiscard]] DesignerPtr CreatearChart();

}  // namespace trellin
