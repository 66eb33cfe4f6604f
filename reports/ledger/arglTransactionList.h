#pragma once
// "GLTransactionList": the ledger lines of a period, one a row, with debits and credits totalled
// per group and for the report. A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

class arglTransactionList : public ListDesigner {
 public:
  arglTransactionList();
};

[[nodiscard]] DesignerPtr CreatearglTransactionList();

}  // namespace trellin
