#pragma once
// "SerialNumbers": where each serial or batch number went: a group per number of an item, its
// movements (date, kind, document, location, in, out and the running balance) and its status
// ("In stock", "Sold", "Adjusted"); in summary a line per number. A column list on the list base.

#include <map>
#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arscSerialNumberReport : public ListDesigner {
 public:
  arscSerialNumberReport();

  void RefreshDataColumns() override;
  // Reads each number's on hand, last location and last movement with one query.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The row's kind, the number's running balance and its status.
  void ActiveReport_FetchData(bool& eof) override;

 private:
  struct Number {
    double on_hand = 0;
    long last_type = 0;
    std::string last_date;  // of the last movement, ISO; "" never processed
    long last_line = 0;
  };
  std::map<std::string, Number, std::less<>> numbers_;  // by "ITEM|NUMBER"
  std::string current_;                                 // the number the balance runs for
  double balance_ = 0;
};

[[nodiscard]] DesignerPtr CreatearscSerialNumberReport();

}  // namespace trellin
