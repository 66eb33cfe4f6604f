#include "reports/ledger/arChart.h"

namespace trellin {

void arChart::ActiveReport_ReportStart() { fetched_ = false; }

// The chart prints once, in the only row.
void arChart::ActiveReport_FetchData(bool& eof) {
  eof = fetched_;
  fetched_ = true;
}

}  // namespace trellin
