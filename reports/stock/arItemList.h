#pragma once
// "ItemList": every item the filters keep, with its unit, category, type, supplier, kind and
// prices; picked, its quantity and value on hand at DateAsAt (the value totalled) and its
// user-defined fields. A column list on the list base.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "reports/stock/StockLists.h"

namespace trellin {

class arItemList : public ListDesigner {
 public:
  arItemList();

  // The list's parameters, then DateAsAt.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;
  // Reads every item's on hand at DateAsAt with one grouped query.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The row's kind, its prices without and with tax, and its on hand.
  void ActiveReport_FetchData(bool& eof) override;

 private:
  std::map<std::string, OnHand, std::less<>> on_hand_;
};

[[nodiscard]] DesignerPtr CreatearItemList();

}  // namespace trellin
