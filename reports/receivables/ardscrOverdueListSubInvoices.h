#pragma once
// One party's open documents under its line in the overdue list: each with what is held in
// dispute, the days it is overdue and a running balance of what is overdue. A sub-report: the
// parent sets the state below before each party, and the rows are fetched by hand (unbound).

#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "core/host/TLReport.h"
#include "platform/runtime/Date.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

class ardscrOverdueListSubInvoices : public ActiveReport {
 public:
  ardscrOverdueListSubInvoices() : ActiveReport("ardscrOverdueListSubInvoices") {}

  // Set by the parent, once for the run.
  bool Debtor = true;
  Date DateAsAt;
  // The conditions of the list's own filters that narrow the documents too (due date,
  // transaction employees and locations, user-defined fields); no word AND in front.
  std::string Filter;
  QueryLog Queries;
  // Set by the parent for each party: the party, and the conditions of the groups it prints in
  // ("Transactions.EmployeeId='JS'"); "" when none.
  std::string OtherPartyId;
  std::string GroupFilter;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The present party's query.
  [[nodiscard]] std::string InvoicesSQL() const;

 private:
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
