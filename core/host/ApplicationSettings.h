#pragma once
// A report that asks no parameters but is given members by the application before the run (a
// depreciation run and how to print it). Where no application stands behind the report (the
// command line, a test), the host offers those members on the report's parameter collection as
// the run's settings, so they are listed, typed and checked like parameters, and the report takes
// them at the start of its run.

#include "core/host/Parameters.h"

namespace trellin {

class ApplicationSettings {
 public:
  virtual ~ApplicationSettings() = default;
  // Adds one parameter for each member the application sets, with its default, to `settings`.
  virtual void DeclareSettings(Parameters& settings) = 0;
};

}  // namespace trellin
