#pragma once
// "TransactionListSC": every stock movement of a period, line by line: its kind, document
// (stock-only lines have none), item and location, the quantity in or out, its cost and, for
// sales, what it sold for. A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

class arscTransactionList : public ListDesigner {
 public:
  arscTransactionList();

  void RefreshDataColumns() override;
  void ActiveReport_DataInitialize() override;
  // Names the row's kind of movement.
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearscTransactionList();

}  // namespace trellin
