#pragma once
// "AssetStockSheets": sheets to sight the assets once a year with a pen. A page (or more) per
// site, each asset on a ruled line with its code, description, serial number, category and
// employee, an empty box to tick as sighted and ruled room for its condition and comments; a
// component stands indented under its parent. Each site ends with its count of assets, and every
// page with "Checked by" and "Date" to sign. A fixed layout on the list base.

#include <string>
#include <vector>

#include "core/ListDesigner.h"

namespace trellin {

class arfaStockSheets : public ListDesigner {
 public:
  arfaStockSheets();

  // The list's parameters, then the five status boxes with Disposed and Scrapped unticked.
  void RefreshParameters(std::string& ReportName) override;
  // Reads the list's rows once into the sheet's lines, each component after its parent, and
  // runs on them unbound.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Hands the next line to the fields.
  void ActiveReport_FetchData(bool& eof) override;
  // The page header names the site of the row about to print.
  void OnFormat(Section& section) override;

 protected:
  std::string ExtraCondition() override;
  // A sheet is written on: no shading; a component's code and description stand indented.
  void Detail_Format() override;

 private:
  // One printed line: an asset at its site.
  struct SheetLine {
    Variant site;
    std::string site_caption;
    Variant asset;
    Variant description;
    Variant serial;
    Variant category;
    Variant employee;
    std::string parent;
    bool indented = false;
  };

  void ReadLines();

  std::string status_phrase_;
  std::vector<SheetLine> lines_;
  std::size_t next_ = 0;
  bool indented_ = false;
};

[[nodiscard]] DesignerPtr CreatearfaStockSheets();

}  // namespace trellin
