#pragma once
// Runs a designer: raises its events in order, reads its data, breaks groups, keeps summaries,
// runs sub-reports inside their sections and lays everything out on pages, handing each page to
// the sink as soon as it is complete.

#include <stdexcept>

#include "core/host/ActiveReport.h"
#include "platform/engine/PageModel.h"
#include "platform/runtime/Error.h"

namespace trellin::engine {

// An error from an event when no error hook is installed anywhere, or a run that cannot go on.
// The message names the event: "Detail_Format: division by zero".
class ReportRunError : public Error {
 public:
  explicit ReportRunError(const std::string& message) : Error(ErrorKind::Report, message) {}
};

enum class RunOutcome { Completed, Cancelled };

// Runs `report` once, from ActiveReport_ReportStart to ActiveReport_Terminate, initialising it
// first (layout and ActiveReport_Initialize) if that has not happened. The sink receives Begin,
// every page, and End; or Abort when the run is cancelled (RunOutcome::Cancelled) or fails
// (ReportRunError, or a bad layout's error, is thrown).
RunOutcome RunReport(ActiveReport& report, PageSink& sink);

}  // namespace trellin::engine
