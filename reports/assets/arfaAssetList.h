#pragma once
// "AssetList", the asset register: every asset the family's filters keep, with its category,
// type, site, status and purchase date, and its cost, book value and tax value at DateAsAt
// (totalled); picked, its branch, employee, supplier, parent, warranty, review and disposal
// dates and the user-defined fields. A column list on the list base.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "reports/assets/AssetLists.h"

namespace trellin {

class arfaAssetList : public ListDesigner {
 public:
  arfaAssetList();

  // The list's parameters, the five status boxes, then DateAsAt.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;
  // Reads every asset's figures at DateAsAt with one grouped query.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The row's status text and its figures.
  void ActiveReport_FetchData(bool& eof) override;

 protected:
  std::string ExtraCondition() override;

 private:
  std::map<std::string, AssetFigures, std::less<>> figures_;
  std::string status_phrase_;
};

[[nodiscard]] DesignerPtr CreatearfaAssetList();

}  // namespace trellin
