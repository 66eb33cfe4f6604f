#pragma once
// "BankTransactionList": the bank entries of a period, each as its bank's own line: deposits and
// withdrawals totalled per group and for the report. A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

class arglBankTransactionList : public ListDesigner {
 public:
  arglBankTransactionList();
};

[[nodiscard]] DesignerPtr CreatearglBankTransactionList();

}  // namespace trellin
