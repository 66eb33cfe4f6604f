#pragma once
// "PurchaseOrderList": the purchase orders, a row each, with what was ordered, what has come in
// and what is still expected (values before tax) and how far each has come; with ShowLines a row
// per ordered line instead, with its item, quantities, unit price and expected date. A column
// list on the list base.

#include "core/ListDesigner.h"
#include "reports/receivables/PurchaseOrderLines.h"

namespace trellin {

class arcrPurchaseOrderList : public ListDesigner {
 public:
  arcrPurchaseOrderList();

  // The quantities are not added up.
  void RefreshDataColumns() override;
  // Starts the list (showing the lines' columns with ShowLines), then reads its orders' lines.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The row's figures from its orders' lines.
  void ActiveReport_FetchData(bool& eof) override;

 protected:
  // The lines' row of the key under ShowLines.
  [[nodiscard]] const ListKey& Key() const override;

 private:
  [[nodiscard]] bool ShowLines() const;

  PurchaseOrderLines lines_;
};

[[nodiscard]] DesignerPtr CreatearcrPurchaseOrderList();

}  // namespace trellin
