#include "reports/receivables/ardscrTransactionListSubDetails.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrTransactionList.h"

namespace trellin {

namespace {

constexpr const char* kFigures[] = {"Gross", "QTY", "TaxVal", "TaxInc", "DiscVal"};
constexpr const char* kTexts[] = {"LocationId", "DeptId", "SerialNumber"};

bool IsPayment(long type) { return type == 25 || type == 35; }

}  // namespace

void ardscrTransactionListSubDetails::ActiveReport_ReportStart() {
  if (Queries) Queries(SQLQuery);
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(SQLQuery);
  lines_ = 0;
  const struct {
    const char* control;
    bool shown;
  } options[] = {
      {"txtLineLocation", ShowLocation},     {"lblLineLocation", ShowLocation},
      {"txtLineDept", ShowDepartment},       {"lblLineDept", ShowDepartment},
      {"txtLineSerial", ShowSerialNumber},   {"lblLineSerial", ShowSerialNumber},
      {"txtLineOrdered", ShowOrderQuantity}, {"lblLineOrdered", ShowOrderQuantity},
  };
  for (const auto& o : options) {
    if (Control* c = FindControl(o.control)) c->SetVisible(o.shown);
  }
  if (Control* tax = FindControl("lblLineTax")) {
    tax->SetCaption(TrellinReportGlobals::RequireApplication().Tax().TaxName());
  }
  if (Control* tax = FindControl("lblLineTaxInc")) {
    tax->SetCaption(TrellinReportGlobals::RequireApplication().Tax().TaxName() + " Inc");
  }
}

void ardscrTransactionListSubDetails::ActiveReport_DataInitialize() {
  for (const char* name : kFigures) Fields().Add(name);
  for (const char* name : kTexts) Fields().Add(name);
  for (const char* name : {"ItemId", "FullDescription", "UnitPrice", "OrderQuantity"}) {
    Fields().Add(name);
  }
}

void ardscrTransactionListSubDetails::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  auto value = [&](const char* name) {
    const int i = rs_->FieldIndex(name);
    return i < 0 ? Variant::Null() : rs_->Value(i);
  };
  if (IsPayment(TransactionType)) {
    // A receipt or payment prints how it was paid, and who paid with what details.
    f["ItemId"].SetValue(std::string(PayMethodName(value("ItemId").Text())));
    std::vector<std::string> parts;
    for (const char* name : {"Name", "CardNumber", "BankDetails"}) {
      const std::string text = Trim(value(name).Text());
      if (!text.empty()) parts.push_back(text);
    }
    f["FullDescription"].SetValue(Join(parts, ", "));
  } else {
    f["ItemId"].SetValue(value("ItemId"));
    f["FullDescription"].SetValue(value("Description"));
  }
  for (const char* name : kTexts) f[name].SetValue(value(name));
  for (const char* name : kFigures) f[name].SetValue(value(name));
  f["UnitPrice"].SetValue(value("UnitPrice"));
  f["OrderQuantity"].SetValue(value("OrderQuantity"));
  // A line of text alone prints its text: its figures stand blank.
  if (!IsPayment(TransactionType) && value("ItemId").IsNull()) {
    for (const char* name : kFigures) f[name].SetValue(Variant::Null());
    f["UnitPrice"].SetValue(Variant::Null());
  }
  ++lines_;
  rs_->MoveNext();
  eof = false;
}

void ardscrTransactionListSubDetails::OnFormat(Section& section) {
  // The sums show under two or more lines only; under one they would repeat it.
  if (section.Type() == SectionType::ReportFooter) section.SetVisible(lines_ >= 2);
}

void ardscrTransactionListSubDetails::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
