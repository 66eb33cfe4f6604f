#pragma once
// "LocationList": the stock locations with their branch, how many items are set up at each and
// the value of the stock there at DateAsAt, totalled. A column list on the list base. The same
// designer is to serve "LocationDetails", a fixed layout, which is not built yet.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "reports/stock/StockLists.h"

namespace trellin {

class arLocationList : public ListDesigner {
 public:
  arLocationList();

  // The list's parameters, then DateAsAt.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;
  // Reads each location's items set up and stock value with two grouped queries.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  std::map<std::string, OnHand, std::less<>> on_hand_;  // by location upper-cased
  std::map<std::string, long, std::less<>> set_up_;     // items set up, by location
};

[[nodiscard]] DesignerPtr CreatearLocationList();

}  // namespace trellin
