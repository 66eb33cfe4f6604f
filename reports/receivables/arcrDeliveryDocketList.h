#pragma once
// "DeliveryDocketList": the goods received against purchase orders, a row for each receipt
// twin of an order line with the stock line it names: the receiving document's date and
// reference, the order, the item, the quantity and value that came in and where, and what the
// order line still expects. A column list on the list base.

#include "core/ListDesigner.h"
#include "reports/receivables/PurchaseOrderLines.h"

namespace trellin {

class arcrDeliveryDocketList : public ListDesigner {
 public:
  arcrDeliveryDocketList();

  // Still on order is not added up.
  void RefreshDataColumns() override;
  // Starts the list, then reads the lines of the orders it names.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The twin's quantity and value turned round, and what its order line still expects.
  void ActiveReport_FetchData(bool& eof) override;

 private:
  PurchaseOrderLines lines_;
};

[[nodiscard]] DesignerPtr CreatearcrDeliveryDocketList();

}  // namespace trellin
