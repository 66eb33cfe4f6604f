#include "core/Designer.h"

#include "core/TrellinReportGlobals.h"
#include "core/host/Section.h"

namespace trellin {

bool Designer::ValidateParameters() {
  if (!tl_report_) throw ObjectNotSet("Object variable not set: TLReport of " + DesignerName());
  trellin::Parameters& parameters = tl_report_->Parameters();
  parameters.Validate("");
  return parameters.Valid();
}

bool Designer::FormatGroupSection(const Section& section) {
  if (section.Type() == SectionType::GroupHeader) {
    if (const int level = GroupLevelOf(section, "GroupHeader"))
      tl_report_->GroupHeaderFormat(level);
    return true;
  }
  if (section.Type() == SectionType::GroupFooter) {
    if (const int level = GroupLevelOf(section, "GroupFooter"))
      tl_report_->GroupFooterFormat(level);
    return true;
  }
  return false;
}

}  // namespace trellin
