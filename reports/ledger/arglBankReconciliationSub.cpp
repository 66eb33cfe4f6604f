#include "reports/ledger/arglBankReconciliationSub.h"

#include <string>

#include "core/TrellinReportGlobals.h"

namespace trellin {

void arglBankReconciliationSub::ActiveReport_ReportStart() {
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(
      "SELECT glTransaction.glTransactionId,glTransaction.AccountId,Account.Description,"
      "glTransaction.BranchId,glTransaction.DeptId,glTransaction.Value+glTransaction.TaxValue AS "
      "SumOfValue"
      " FROM Account INNER JOIN (glBankTransaction INNER JOIN glTransaction ON "
      "glBankTransaction.glBankTransactionId = glTransaction.glBankTransactionId) ON "
      "Account.AccountId = glTransaction.AccountId"
      " WHERE glTransaction.glBankTransactionSequence<>0 AND "
      "glBankTransaction.glBankTransactionId=" +
      std::to_string(BankTransactionId) +
      " AND glTransaction.TaxCategory<>'*' ORDER BY glTransaction.glBankTransactionSequence");
}

void arglBankReconciliationSub::ActiveReport_DataInitialize() {
  for (const char* name : {"AccountId", "Description", "BranchId", "DeptId", "Value"}) {
    Fields().Add(name);
  }
}

void arglBankReconciliationSub::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  f["AccountId"].SetValue(rs_->Value("AccountId"));
  f["Description"].SetValue(rs_->Value("Description"));
  f["BranchId"].SetValue(rs_->Value("BranchId"));
  f["DeptId"].SetValue(rs_->Value("DeptId"));
  f["Value"].SetValue(rs_->Value("SumOfValue"));
  rs_->MoveNext();
  eof = false;
}

void arglBankReconciliationSub::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
