#include "reports/ledger/arChart.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"

namespace trellin {

DesignerPtr CreatearChart() { return std::make_shared<arChart>(); }

// Run alone the holder makes its own print line; in a parent it prints the chart only.
void arChart::ActiveReport_ReportStart() {
  fetched_ = false;
  Control* printed = FindControl("txtPrinted");
  if (printed == nullptr) return;
  if (!TLReport()) {
    printed->SetVisible(false);
    return;
  }
  const Date now = Now();
  printed->SetText(
      "Printed on " +
      Format(Variant(now), TrellinReportGlobals::RequireBusinessLayer().LongDateFormat()) + " at " +
      Format(Variant(now), "h:nnam/pm"));
  TLReport()->AttachChart(ChartControl());
}

// The chart prints once, in the only row.
void arChart::ActiveReport_FetchData(bool& eof) {
  eof = fetched_;
  fetched_ = true;
}

}  // namespace trellin
