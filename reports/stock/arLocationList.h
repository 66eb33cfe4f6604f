#pragma once
// "LocationList": the stock locations with their branch, how many items are set up at each and
// the value of the stock there at DateAsAt, totalled. A column list on the list base. The same
// designer serves "LocationDetails", a fixed layout (arLocationListDetails): per location its
// branch's name, address and phone, then each item set up there with its shelf, reorder levels
// and stock at DateAsAt, the value totalled per location and for the report.

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
  // The details load their own layout first. Reads each location's items set up and stock value
  // with two grouped queries.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 protected:
  // The details without IncludeZeroOnHand: what is on hand at the location at DateAsAt.
  std::string ExtraCondition() override;

 private:
  std::map<std::string, OnHand, std::less<>> by_item_;  // "ITEM|LOCATION"
  std::map<std::string, OnHand, std::less<>> on_hand_;  // by location upper-cased
  std::map<std::string, long, std::less<>> set_up_;     // items set up, by location
};

[[nodiscard]] DesignerPtr CreatearLocationList();

}  // namespace trellin
