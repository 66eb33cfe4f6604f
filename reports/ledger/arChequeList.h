#pragma once
// "Cheques" ("Cheque List"): the supplier payments (type 25) drawn on the banks, a line each with
// cheque number, date, supplier, payee and amount, their total and lines for who prepared and who
// authorised them; with ShowDetails each payment's documents under it (arChequeListSub), read for
// every payment with one query. A fixed layout on the list base's parameters and query.

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "core/ListDesigner.h"
#include "reports/ledger/arChequeListSub.h"

namespace trellin {

class arChequeList : public ListDesigner {
 public:
  arChequeList();

  // With ShowDetails, reads the documents of every payment on the list at once.
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;

 private:
  std::map<std::int64_t, std::vector<arChequeListSub::Document>> documents_;  // by payment
  std::shared_ptr<arChequeListSub> sub_;
  bool show_details_ = false;
};

[[nodiscard]] DesignerPtr CreatearChequeList();

}  // namespace trellin
