#pragma once
// A transaction's lines under its block in the transaction list: item, description (or, for a
// receipt or payment, how it was paid), location, department, quantities, price and the signed
// figures. A sub-report: the parent sets the query before each block; the rows are fetched by
// hand. Its footer shows the sums only under two or more lines.

#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

class ardscrTransactionListSubDetails : public ActiveReport {
 public:
  ardscrTransactionListSubDetails() : ActiveReport("ardscrTransactionListSubDetails") {}

  // Set by the parent before each block.
  std::string SQLQuery;
  long TransactionType = 0;
  std::int64_t TransactionId = 0;
  QueryLog Queries;
  // Set by the parent once: the option columns shown.
  bool ShowLocation = false;
  bool ShowDepartment = false;
  bool ShowSerialNumber = false;
  bool ShowOrderQuantity = false;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

 private:
  std::shared_ptr<Recordset> rs_;
  int lines_ = 0;
};

}  // namespace trellin
