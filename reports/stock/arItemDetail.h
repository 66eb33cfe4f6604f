#pragma once
// "ItemDetails": a card per item: its classification, prices with and without tax, the named
// item fields, what is on hand at DateAsAt, then (each behind its option) the locations it is set
// up at with their shelf, reorder levels and stock (the sub-report arItemDetailLocationsSub), its
// special prices, its last purchase and last sale up to DateAsAt, the purchase orders still
// outstanding for it, and its notes. A fixed layout on the list base.

#include <map>
#include <memory>
#include <string>

#include "core/ListDesigner.h"
#include "reports/stock/StockLists.h"

namespace trellin {

class arItemDetailLocationsSub;

class arItemDetail : public ListDesigner {
 public:
  arItemDetail();

  // The list's parameters, then DateAsAt.
  void RefreshParameters(std::string& ReportName) override;
  // Reads every item's stock at DateAsAt and every special price once.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Fills the card's texts from the item's own fields and its lines, orders and notes. Throws
  // what the queries throw.
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 protected:
  // A block with nothing to say prints neither its caption nor its text.
  void Detail_Format() override;

 private:
  std::shared_ptr<arItemDetailLocationsSub> locations_;
  std::map<std::string, OnHand, std::less<>> on_hand_;       // by item upper-cased
  std::map<std::string, std::string, std::less<>> special_;  // lines by item upper-cased
  Date as_at_;
  bool show_special_ = true;
  bool show_notes_ = true;
};

// The locations one item is set up at: shelf, reorder levels, in use, and the quantity and value
// there at the end of `AsAt` (a line with no process date always counts).
class arItemDetailLocationsSub : public Designer {
 public:
  arItemDetailLocationsSub() : Designer("arItemDetailLocationsSub") {}

  std::string ItemId;
  Date AsAt;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  [[nodiscard]] std::string SQL() const;
};

[[nodiscard]] DesignerPtr CreatearItemDetail();

}  // namespace trellin
