#pragma once
// "ChequeList": the cheques a bank wrote in a period (its withdrawals), per bank, with whether each
// was presented. A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

class arglChequeList : public ListDesigner {
 public:
  arglChequeList();
};

[[nodiscard]] DesignerPtr CreatearglChequeList();

}  // namespace trellin
