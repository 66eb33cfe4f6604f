#pragma once
// "PurchaseOrderBatch": the purchase orders made together in one run (by default those created on
// the latest day any order was), by supplier and order: each order's number, reference, date and
// date required over its lines (item, the supplier's code for it, description, quantity, price,
// value before tax), with values summed per order, supplier and run. Laid out on the list base
// with its columns fixed.

#include "core/ListDesigner.h"

namespace trellin {

class arcrPurchaseOrdersBatch : public ListDesigner {
 public:
  arcrPurchaseOrdersBatch();

  // The quantities and prices are not added up.
  void RefreshDataColumns() override;
  // Starts the list; with no creation dates given, the description names the latest run.
  void ActiveReport_ReportStart() override;
  // The order's heading: number, reference, date and date required.
  void OnFormat(Section& section) override;

 protected:
  // The latest day orders were created, when no creation date is given.
  [[nodiscard]] std::string ExtraCondition() override;
};

[[nodiscard]] DesignerPtr CreatearcrPurchaseOrdersBatch();

}  // namespace trellin
