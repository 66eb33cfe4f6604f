#include "core/TrellinReportGlobals.h"

namespace trellin::TrellinReportGlobals {

namespace {

// Report code that runs before Initialise (or after Dispose) lands here; the message says which
// object was missing, so the caller's error names the real cause.
[[noreturn]] void ThrowNotSet(const std::string& what) {
  throw ObjectNotSet("Object variable not set: " + what +
                     " (the report service is not initialised)");
}

}  // namespace

trellin::BusinessLayer& RequireBusinessLayer() {
  if (!BusinessLayer) ThrowNotSet("BusinessLayer");
  return *BusinessLayer;
}

trellin::Application& RequireApplication() {
  if (!Application) ThrowNotSet("Application");
  return *Application;
}

trellin::TrellinReports& RequireTrellinReports() {
  if (TrellinReports == nullptr) ThrowNotSet("TrellinReports");
  return *TrellinReports;
}

std::shared_ptr<trellin::Database> RequireDatabase() {
  std::shared_ptr<trellin::Database> database = RequireBusinessLayer().Database();
  if (!database) ThrowNotSet("BusinessLayer.Database");
  return database;
}

}  // namespace trellin::TrellinReportGlobals
