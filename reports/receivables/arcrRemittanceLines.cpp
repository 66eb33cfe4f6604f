#include "reports/receivables/arcrRemittanceLines.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

namespace {

Variant TextOrEmpty(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Variant(std::string()) : Variant(value.Text());
}

}  // namespace

std::string RemittanceLineType(long type) {
  switch (type) {
    case 20:
      return "Invoice";
    case 21:
    case 22:
      return "Credit";
    case 25:
      return "Payment";
    default:
      return "";
  }
}

std::string arcrRemittanceLines::LinesSQL(std::int64_t payment) {
  const std::string id = std::to_string(payment);
  return "SELECT "
         "TransactionAllocation.TransactionAllocationId,TransactionAllocation.TransactionId2 "
         "AS Allocated, Transactions.Date, TransactionType.Description, Transactions.Reference, "
         "TransactionAllocation.ValueAllocated, Transactions.ValueRemaining, Transactions.Held, "
         "Transactions.Type FROM TransactionType INNER JOIN ( Transactions INNER JOIN "
         "TransactionAllocation ON Transactions.TransactionId = "
         "TransactionAllocation.TransactionId2) "
         "ON TransactionType.TransactionTypeId = Transactions.TransactionTypeId WHERE "
         "TransactionAllocation.TransactionId1=" +
         id +
         " UNION SELECT TransactionAllocation.TransactionAllocationId,"
         "TransactionAllocation.TransactionId1 AS Allocated, Transactions.Date, "
         "TransactionType.Description, Transactions.Reference, "
         "-TransactionAllocation.ValueAllocated, "
         "Transactions.ValueRemaining, Transactions.Held,Transactions.Type FROM TransactionType "
         "INNER "
         "JOIN ( Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId=TransactionAllocation.TransactionId1) ON "
         "TransactionType.TransactionTypeId=Transactions.TransactionTypeId Where "
         "TransactionAllocation.TransactionId2 =" +
         id;
}

void arcrRemittanceLines::ActiveReport_ReportStart() {
  if (Control* date = FindControl("txtDate")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
  const std::string sql = LinesSQL(PaymentId);
  if (Queries) Queries(sql);
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(sql);
  if (Section* detail = Sections().FindType(SectionType::Detail)) detail->SetVisible(!rs_->Eof());
}

void arcrRemittanceLines::ActiveReport_DataInitialize() {
  for (const char* name : {"Date", "TType", "Reference", "Description", "Paid", "Less"}) {
    Fields().Add(name);
  }
}

void arcrRemittanceLines::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  const Variant& type = rs_->Value("Type");
  f["TType"].SetValue(RemittanceLineType(type.IsNull() ? 0 : static_cast<long>(type.ToLong())));
  f["Date"].SetValue(rs_->Value("Date"));
  f["Reference"].SetValue(TextOrEmpty(rs_->Value("Reference")));
  f["Description"].SetValue(TextOrEmpty(rs_->Value("Description")));
  // The union's second half names its value by the expression; it is the fifth column in both.
  const Variant& stored = rs_->Value(5);
  const Currency value = stored.IsNull() ? Currency() : stored.ToCurrency();
  if (value < Currency()) {
    f["Paid"].SetValue(-value);
    f["Less"].SetValue(std::string(" "));
  } else {
    f["Paid"].SetValue(std::string(" "));
    f["Less"].SetValue(value);
  }
  rs_->MoveNext();
  eof = false;
}

void arcrRemittanceLines::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
