#pragma once
// The designers that are built, each with its factory: the column the catalogue's keys are
// served from. The report service is handed this table where it is set up.

#include <span>

#include "core/Catalogue.h"

namespace trellin {

// Every built designer, by class name. A new designer unit is one more row here; nothing
// registers itself.
[[nodiscard]] std::span<const DesignerEntry> Designers();

}  // namespace trellin
