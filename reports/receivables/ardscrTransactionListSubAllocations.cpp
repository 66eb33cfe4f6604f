#include "reports/receivables/ardscrTransactionListSubAllocations.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

namespace {

constexpr const char* kFields[] = {"Allocated",      "Date",           "Description", "Reference",
                                   "ValueAllocated", "ValueRemaining", "Held"};

}  // namespace

std::string ardscrTransactionListSubAllocations::AllocationsSQL(std::int64_t id) {
  const std::string n = std::to_string(id);
  return "SELECT "
         "TransactionAllocation.TransactionAllocationId,TransactionAllocation.TransactionId1 "
         "AS Allocated, Transactions.Date, TransactionType.Description, Transactions.Reference, "
         "TransactionAllocation.ValueAllocated, Transactions.ValueRemaining, Transactions.Held"
         " FROM TransactionType INNER JOIN (Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId = TransactionAllocation.TransactionId1) ON "
         "TransactionType.TransactionTypeId = Transactions.TransactionTypeId"
         " WHERE TransactionAllocation.TransactionId2=" +
         n +
         " UNION SELECT TransactionAllocation.TransactionAllocationId,"
         "TransactionAllocation.TransactionId2 AS Allocated, Transactions.Date, "
         "TransactionType.Description, Transactions.Reference, "
         "TransactionAllocation.ValueAllocated, Transactions.ValueRemaining, Transactions.Held"
         " FROM TransactionType INNER JOIN (Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId = TransactionAllocation.TransactionId2) ON "
         "TransactionType.TransactionTypeId = Transactions.TransactionTypeId"
         " Where TransactionAllocation.TransactionId1 =" +
         n;
}

void ardscrTransactionListSubAllocations::ActiveReport_ReportStart() {
  const std::string sql = AllocationsSQL(TransactionId);
  if (Queries) Queries(sql);
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(sql);
  if (Control* date = FindControl("txtAllocDate")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
  // Nothing allocated prints nothing, not even the captions.
  const bool any = rs_ && !rs_->Eof();
  for (const char* name : {"ReportHeader", "Detail"}) {
    if (Section* section = Sections().Find(name)) section->SetVisible(any);
  }
}

void ardscrTransactionListSubAllocations::ActiveReport_DataInitialize() {
  for (const char* name : kFields) Fields().Add(name);
}

void ardscrTransactionListSubAllocations::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  for (const char* name : kFields) Fields()[name].SetValue(rs_->Value(name));
  if (Debtor) {
    for (const char* name : {"ValueRemaining", "Held"}) {
      const Variant& v = rs_->Value(name);
      if (!v.IsNull()) Fields()[name].SetValue(-v.ToCurrency());
    }
  }
  rs_->MoveNext();
  eof = false;
}

void ardscrTransactionListSubAllocations::OnFormat(Section& section) { (void)section; }

void ardscrTransactionListSubAllocations::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
