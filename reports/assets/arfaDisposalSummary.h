#pragma once
// The disposal summary ("AssetDisposalSummary"): the assets with a disposal movement (types 30,
// 31 and 40 to 44) in a period, each with their sum and, beneath, the movements with their kind
// (arfaDisposalSummarySub). It filters the status through the standard Status list, not the five
// status boxes, and asks neither the date ranges nor the components of the family.

#include "reports/assets/arfaPurchaseSummary.h"

namespace trellin {

class arfaDisposalSummary : public arfaPurchaseSummary {
 public:
  arfaDisposalSummary() : arfaPurchaseSummary("arfaDisposalSummary", true) {}
};

[[nodiscard]] DesignerPtr CreatearfaDisposalSummary();

}  // namespace trellin
