#pragma once
// The three process-wide references every designer reaches the outside world through: the
// business layer (database, formats, utilities), the application (calendar, options) and the
// report service itself. Set by TrellinReports::Initialise, cleared by TrellinReports::Dispose.

#include <memory>
#include <stdexcept>
#include <string>

#include "core/host/Application.h"
#include "core/host/BusinessLayer.h"
#include "platform/runtime/Error.h"

namespace trellin {

class TrellinReports;

// Raised when report code reaches for a global that is not set: the service was never
// initialised, or was disposed. The message names the missing object.
class ObjectNotSet : public Error {
 public:
  explicit ObjectNotSet(const std::string& message) : Error(ErrorKind::Internal, message) {}
};

namespace TrellinReportGlobals {

// One set per process. A second Initialise replaces the first, and every designer then alive
// sees the new objects. Any of them may be null (before Initialise, after Dispose, or when the
// application passed nothing).
inline std::shared_ptr<trellin::BusinessLayer> BusinessLayer;
inline std::shared_ptr<trellin::Application> Application;
// Not owning: the application owns its service object.
inline trellin::TrellinReports* TrellinReports = nullptr;

// The globals, or ObjectNotSet when they are null.
[[nodiscard]] trellin::BusinessLayer& RequireBusinessLayer();
[[nodiscard]] trellin::Application& RequireApplication();
[[nodiscard]] trellin::TrellinReports& RequireTrellinReports();
// The business layer's database, never null; ObjectNotSet when there is none.
[[nodiscard]] std::shared_ptr<trellin::Database> RequireDatabase();

}  // namespace TrellinReportGlobals
}  // namespace trellin
