// The transaction list: the events, each row's figures (the fetch) and each block's party and
// sub-reports.

#include "reports/receivables/ardscrTransactionList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ReceivablesShared.h"

namespace trellin {

namespace {

constexpr const char* kAdded[] = {"TransactionId", "SumTaxInclusive", "Gross",
                                  "Job",           "AmountHeld",      "AmountRemaining",
                                  "LocationId",    "Party",           "Options"};

Currency MoneyOf(const Variant& v) {
  return v.IsNull() || v.IsEmpty() ? Currency() : v.ToCurrency();
}

}  // namespace

void ardscrTransactionList::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardscrTransactionList::ActiveReport_ReportStart() {
  BuildSQL();
  TLReport()->SetupGroupSections(summary_, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (Control* heading = FindControl("txtHeading")) heading->SetText(heading_);
  const std::string tax = TrellinReportGlobals::RequireApplication().Tax().TaxName();
  const std::string party = debtor_ ? "Customer" : "Supplier";
  const struct {
    const char* control;
    std::string caption;
  } captions[] = {{"lblParty", party}, {"lblTax", tax}, {"lblTaxInc", tax + " Inc"}};
  for (const auto& c : captions) {
    if (Control* label = FindControl(c.control)) label->SetCaption(c.caption);
  }
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  for (const char* name : {"txtDate", "txtDue"}) {
    if (Control* date = FindControl(name)) date->SetOutputFormat(date_format);
  }
  if (Control* job = FindControl("txtJob")) job->SetVisible(key_->key == "JobInvoiceList");
  if (query_log_) query_log_(sql_);
  DataControl().SetSource(sql_);
}

void ardscrTransactionList::ActiveReport_DataInitialize() {
  for (const char* name : kAdded) Fields().Add(name);
}

void ardscrTransactionList::ActiveReport_FetchData(bool& eof) {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  (void)eof;
  trellin::Fields& f = Fields();
  auto value = [&](const char* name) {
    const int i = rs->FieldIndex(name);
    return i < 0 ? Variant::Null() : rs->Value(i);
  };
  const long type = value("Type").IsNull() ? 0 : value("Type").ToLong();
  const Currency sum_value = MoneyOf(value("SumOfValue"));
  const Currency sum_tax = MoneyOf(value("SumOfTaxValue"));
  const Currency sum_discount = MoneyOf(value("SumOfDiscount"));
  const Currency header = MoneyOf(value("Value"));
  // Receipts and payments have no lines: their figures come from the header.
  if (type == 25) {
    f["Gross"].SetValue(header);
    f["SumTaxInclusive"].SetValue(header);
  } else if (type == 35) {
    f["Gross"].SetValue(-header);
    f["SumTaxInclusive"].SetValue(-header);
  } else {
    f["Gross"].SetValue(sum_value + sum_discount);
    f["SumTaxInclusive"].SetValue(sum_value + sum_tax);
  }
  const Currency held = MoneyOf(value("Held"));
  const Currency remaining = MoneyOf(value("ValueRemaining"));
  f["AmountHeld"].SetValue(type >= 30 ? -held : held);
  f["AmountRemaining"].SetValue(type >= 30 ? -remaining : remaining);
  f["TransactionId"].SetValue(key_->open ? value("acBatchTransactionId") : value("TransactionId"));
  f["LocationId"].SetValue(type == 25 || type == 35 || !line_location_ ? value("LocationId")
                                                                       : value("TLLocationId"));
  if (key_->key == "JobInvoiceList") {
    const std::string job = value("JobId").Text();
    std::string text = job;
    if (!job.empty()) {
      auto description = TrellinReportGlobals::RequireDatabase()->Query(
          "SELECT Description FROM Job WHERE JobId=" + Database::SQLString(job));
      if (!description->Eof()) text += ", " + description->Value(0).Text();
    }
    f["Job"].SetValue(text);
  }
  f["Party"].SetValue(PartyText());
  std::vector<std::string> options;
  if (show_batch_ && !value("BatchId").Text().empty()) {
    options.push_back("Batch " + value("BatchId").Text());
  }
  if (show_location_ && !f["LocationId"].Value().Text().empty()) {
    options.push_back("Location " + f["LocationId"].Value().Text());
  }
  if (show_employee_ && !value("EmployeeId").Text().empty()) {
    options.push_back("Employee " + value("EmployeeId").Text());
  }
  f["Options"].SetValue(Join(options, "   "));
}

std::string ardscrTransactionList::PartyText() {
  const auto& rs = DataControl().Recordset();
  const std::string id = rs->Value("OtherPartyId").Text();
  if (id.empty()) return "Not found";
  std::string name = rs->Value("Name").Text();
  if (name.empty()) {
    auto found = TrellinReportGlobals::RequireDatabase()->Query(
        "SELECT Name FROM OtherParty WHERE OtherPartyId=" + Database::SQLString(id));
    if (found->Eof()) return id + ", not found.";
    name = found->Value(0).Text();
  }
  return id + ", " + name;
}

void ardscrTransactionList::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  const long type = rs->Value("Type").IsNull() ? 0 : rs->Value("Type").ToLong();
  const std::int64_t id = Fields()["TransactionId"].Value().ToLong();
  const std::string n = std::to_string(id);
  const std::string filter = LineGroupFilter();
  std::string sql;
  if (key_->open) {
    auto signed_column = [](const char* positive, const char* negative, const char* alias) {
      return "," + Database::SQLIIf("acBatchTransactionLine.Type IN(21,31)", negative, positive) +
             " AS " + alias;
    };
    sql =
        "SELECT acBatchTransactionLine.Hold, "
        "acBatchTransactionLine.ItemId,acBatchTransactionLine.Description,"
        "acBatchTransactionLine.LocationId,acBatchTransactionLine.DeptId,"
        "acBatchTransactionLine.UnitPrice,acBatchTransactionLine.OrderQuantity,"
        "acBatchTransactionLine.SerialNumber" +
        signed_column("([Value] + Discount)", "(-[Value] + -Discount)", "Gross") +
        signed_column("(Quantity)", "(-Quantity)", "QTY") +
        signed_column("(TaxValue)", "(-TaxValue)", "TaxVal") +
        signed_column("([TaxValue]+[Value])", "(-[TaxValue]+ -[Value])", "TaxInc") +
        signed_column("(Discount)", "(-Discount)", "DiscVal") +
        " FROM acBatchTransactionLine LEFT JOIN Item ON acBatchTransactionLine.ItemId = "
        "Item.ItemId WHERE acBatchTransactionId=" +
        n + (filter.empty() ? "" : " AND " + filter) +
        (show_description_lines_ ? "" : " AND (Not acBatchTransactionLine.ItemId Is Null)") +
        " ORDER BY acBatchTransactionLine.ItemId";
  } else if (type == 35 || type == 25) {
    sql =
        "SELECT PayType AS ItemId,Name,CardNumber,BankDetails,0 AS UnitPrice,'' AS LocationId,"
        "'' AS DeptId" +
        std::string(type == 35
                        ? ",-Value AS Gross,0 AS QTY,0 AS TaxVal,-Value AS TaxInc,0 AS DiscVal"
                        : ",Value as Gross,0 AS QTY,0 AS TaxVal,Value AS TaxInc,0 AS DiscVal") +
        " FROM Transactions WHERE TransactionId=" + n;
  } else {
    sql =
        "SELECT TransactionLine.ItemId,TransactionLine.Description,TransactionLine.LocationId,"
        "TransactionLine.DeptId,TransactionLine.UnitPrice,TransactionLine.SerialNumber" +
        std::string(debtor_ ? ",(-Value + -Discount) AS Gross,-Quantity AS QTY,-(TaxValue)AS "
                              "TaxVal,-([TaxValue]+[Value]) AS TaxInc,Discount AS DiscVal"
                            : ",(Value + Discount) AS Gross,Quantity AS QTY,TaxValue AS "
                              "TaxVal,[TaxValue]+[Value] AS TaxInc,-Discount AS DiscVal") +
        " FROM TransactionLine WHERE TransactionId=" + n +
        (show_description_lines_ ? "" : " AND (Not TransactionLine.ItemId Is Null)") +
        (filter.empty() ? "" : " AND " + filter) + " ORDER BY TransactionLine.ItemId";
  }
  if (Control* details = FindControl("srptDetails")) details->SetVisible(show_full_detail_);
  if (show_full_detail_) {
    details_->SQLQuery = sql;
    details_->TransactionType = type;
    details_->TransactionId = id;
  }
  const bool allocations = show_allocations_ && !key_->open;
  if (Control* control = FindControl("srptAllocations")) control->SetVisible(allocations);
  if (allocations) allocations_->TransactionId = id;
}

void ardscrTransactionList::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    Detail_Format();
  } else {
    FormatGroupSection(section);
  }
}

void ardscrTransactionList::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void ardscrTransactionList::ActiveReport_ReportEnd() { DataControl().SetRecordset(nullptr); }

}  // namespace trellin
