#pragma once
// "Chart": the chart holder. One chart control in its detail, drawn from the labels and series
// handed to it through `arglChart` by the management report, whose sub-reports hold it. It has
// no data of its own, so the key is not run alone.

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

}  // namespace trellin
