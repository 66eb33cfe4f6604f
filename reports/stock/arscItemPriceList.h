#pragma once
// "ItemPriceList": a price list to hand out: each item's code, description, unit and selling
// price before tax, after it or both; with a customer type picked, that type's special price;
// with ShowCost, the cost and margin for the counter copy. A column list on the list base,
// grouped by item category unless told otherwise.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class arscItemPriceList : public ListDesigner {
 public:
  arscItemPriceList();

  // The list's parameters, then DateAsAt; Groupings starts at "Item Category".
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;
  // Shows the price columns Prices asks for, Special with a customer type and Cost and Margin %
  // with ShowCost; reads the type's special prices at DateAsAt with one query.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  struct Special {
    Variant price;    // a fixed price before tax, or Null
    double rate = 0;  // else a discount off the price, per cent
  };
  std::map<std::string, Special, std::less<>> specials_;  // by item, upper-cased
};

[[nodiscard]] DesignerPtr CreatearscItemPriceList();

}  // namespace trellin
