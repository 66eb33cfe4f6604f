#include "core/Designer.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

bool Designer::ValidateParameters() {
  if (!tl_report_) throw ObjectNotSet("Object variable not set: TLReport of " + DesignerName());
  trellin::Parameters& parameters = tl_report_->Parameters();
  parameters.Validate("");
  return parameters.Valid();
}

}  // namespace trellin
