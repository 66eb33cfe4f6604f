#include "reports/ledger/arAccountDetailsSubTransactionsDrilldown.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

std::string arAccountDetailsSubTransactionsDrilldown::LinesSQL(std::int64_t transaction_id) {
  return "SELECT ItemId,Description,Quantity,Value FROM TransactionLine WHERE TransactionId=" +
         std::to_string(transaction_id) + " AND Hidden=False ORDER BY TransactionLineId";
}

void arAccountDetailsSubTransactionsDrilldown::Create_Recordsets() {
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(LinesSQL(TransactionId));
}

void arAccountDetailsSubTransactionsDrilldown::ActiveReport_ReportStart() { Create_Recordsets(); }

void arAccountDetailsSubTransactionsDrilldown::ActiveReport_DataInitialize() {
  for (const char* name : {"ItemId", "Description", "Quantity", "Value"}) Fields().Add(name);
}

void arAccountDetailsSubTransactionsDrilldown::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  for (const char* name : {"ItemId", "Description", "Quantity", "Value"}) {
    Fields()[name].SetValue(rs_->Value(name));
  }
  rs_->MoveNext();
  eof = false;
}

void arAccountDetailsSubTransactionsDrilldown::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
