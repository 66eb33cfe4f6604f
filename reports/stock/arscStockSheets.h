#pragma once
// "StockSheets": sheets to count the shelves with a pen. A page (or more) per location, each item
// set up there on a ruled line with an empty box for the count and one for the check; a serial
// or batch item has a line for each number on hand there. Ruled blank lines follow each
// location's items, and every page ends with "Counted by", "Checked by" and "Date" to sign. A
// fixed layout on the list base.

#include <string>
#include <vector>

#include "core/ListDesigner.h"
#include "reports/stock/StockLists.h"

namespace trellin {

class arscStockSheets : public ListDesigner {
 public:
  arscStockSheets();

  // The list's parameters, then DateAsAt, ShowQuantityOnHand and BlankLines.
  void RefreshParameters(std::string& ReportName) override;
  // Reads the items set up, the on hand by item and location and the numbers on hand, once,
  // into the sheet's lines, and runs on them unbound; hides the on-hand column for a blind
  // count and rules the blank lines.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Hands the next line to the fields.
  void ActiveReport_FetchData(bool& eof) override;
  // The page header names the location of the row about to print.
  void OnFormat(Section& section) override;

 protected:
  // Without IncludeZeroOnHand, only what is on hand at the location at DateAsAt.
  std::string ExtraCondition() override;
  // A sheet is written on: no shading.
  void Detail_Format() override {}

 private:
  // One printed line: an item at its location, or one of its numbers.
  struct SheetLine {
    std::string location;
    std::string location_caption;
    Variant shelf;
    Variant item;
    Variant description;
    Variant unit;
    std::string number;
    double on_hand = 0;
  };

  void ReadLines(const Date& as_at);
  void RuleBlankLines(long count);

  bool show_on_hand_ = false;
  std::vector<SheetLine> lines_;
  std::size_t next_ = 0;
};

[[nodiscard]] DesignerPtr CreatearscStockSheets();

}  // namespace trellin
