#include "reports/ledger/arglChequeStandardSub.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

std::string arglChequeStandardSub::DocumentSQL(std::int64_t bank_entry) {
  return "SELECT TransactionId FROM Transactions WHERE glBankTransactionId=" +
         std::to_string(bank_entry);
}

std::string arglChequeStandardSub::AllocatedSQL(std::int64_t transaction) {
  const std::string id = std::to_string(transaction);
  return "SELECT TransactionAllocation.TransactionAllocationId,Transactions.Date,"
         "TransactionType.Description AS Comment,Transactions.Reference,"
         "-TransactionAllocation.ValueAllocated AS Amount"
         " FROM TransactionType INNER JOIN (Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId=TransactionAllocation.TransactionId1) ON "
         "TransactionType.TransactionTypeId=Transactions.TransactionTypeId"
         " WHERE TransactionAllocation.TransactionId2=" +
         id +
         " UNION SELECT TransactionAllocation.TransactionAllocationId,Transactions.Date,"
         "TransactionType.Description AS Comment,Transactions.Reference,"
         "-TransactionAllocation.ValueAllocated AS Amount"
         " FROM TransactionType INNER JOIN (Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId=TransactionAllocation.TransactionId2) ON "
         "TransactionType.TransactionTypeId=Transactions.TransactionTypeId"
         " WHERE TransactionAllocation.TransactionId1=" +
         id;
}

std::string arglChequeStandardSub::LedgerLinesSQL(std::int64_t bank_entry) {
  return "SELECT Reference,Date,Comment,Value+TaxValue AS Amount FROM glTransaction WHERE "
         "glBankTransactionId=" +
         std::to_string(bank_entry) + " AND glBankTransactionSequence<>0 AND TaxCategory<>'*'";
}

void arglChequeStandardSub::ActiveReport_ReportStart() {
  Database& db = *TrellinReportGlobals::RequireDatabase();
  std::shared_ptr<Recordset> document = db.Query(DocumentSQL(glBankTransactionId));
  rs_ = document->Eof() ? db.Query(LedgerLinesSQL(glBankTransactionId))
                        : db.Query(AllocatedSQL(document->Value("TransactionId").ToLong()));
  count_ = 1;
  if (Control* date = FindControl("txtStubDate")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
}

void arglChequeStandardSub::ActiveReport_DataInitialize() {
  for (const char* name : {"Tdate", "Reference", "Comment", "Amount"}) Fields().Add(name);
}

void arglChequeStandardSub::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  const auto text = [this](const char* name) {
    const Variant& value = rs_->Value(name);
    return value.IsNull() ? Variant("") : Variant(value.Text());
  };
  if (count_ <= kLines) {
    f["Tdate"].SetValue(rs_->Value("Date"));
    f["Reference"].SetValue(text("Reference"));
    f["Comment"].SetValue(text("Comment"));
    f["Amount"].SetValue(rs_->Value("Amount"));
    rs_->MoveNext();
  } else {
    // The rest of the lines, rolled into one.
    Currency rest;
    for (; !rs_->Eof(); rs_->MoveNext()) {
      const Variant& amount = rs_->Value("Amount");
      if (!amount.IsNull()) rest += amount.ToCurrency();
    }
    f["Tdate"].SetValue(Variant(" "));
    f["Reference"].SetValue(Variant(" "));
    f["Comment"].SetValue(Variant("And Others"));
    f["Amount"].SetValue(Variant(rest));
  }
  ++count_;
  eof = false;
}

void arglChequeStandardSub::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
