#pragma once
// "Lodgements": a deposit slip per bank and day from the receipts banked that day, a section per
// pay method (cash, cheque, cards, ...) with each receipt's number, customer, drawer, drawer's
// bank and branch, cheque number and amount, the method's count and total, the slip's count and
// total and a line for who deposited it. A fixed layout on the list base's parameters and query.

#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arLodgementSchedule : public ListDesigner {
 public:
  arLodgementSchedule();

  void ActiveReport_DataInitialize() override;
  // Gives the row its slip (bank and day) and its pay method's name.
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearLodgementSchedule();

}  // namespace trellin
