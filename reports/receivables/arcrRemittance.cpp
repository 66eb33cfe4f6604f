// The life of one remittance run: the start, the fetch of each payment with what it settled and
// the supplier's address, the advice's heading, and the page furniture that puts the stub on each
// advice's last page.

#include "reports/receivables/arcrRemittance.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

DesignerPtr CreatearcrRemittance() { return std::make_shared<arcrRemittance>(); }

std::string RemittancePaidBy(const std::string& pay_type, const std::string& reference) {
  if (pay_type == "Q") return "Cheque attached " + reference;
  if (pay_type == "C") return "Payment by Direct Credit";
  return "Payment by Other";
}

void arcrRemittance::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arcrRemittance::ActiveReport_ReportStart() {
  trellin::Parameters& p = TLReport()->Parameters();
  TLReport()->SetupStandardHeader(true);
  Field("phContd").SetVisible(false);
  pages_ = DocumentPages();
  any_ = false;
  if (!objects_) objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  Field("datePayment").SetOutputFormat(date_format);
  Field("datepfDate").SetOutputFormat(date_format);

  payments_ = Run(GetSQL());
  if (payments_->Eof()) {
    // No payment: a document with no advice in it.
    for (const char* name :
         {"PageHeader", "SupplierHeader", "Detail", "SupplierFooter", "PageFooter"}) {
      Sections()[name].SetVisible(false);
    }
    return;
  }
  lines_ = std::make_shared<arcrRemittanceLines>();
  lines_->Queries = query_log_;
  Field("srptLines").SetObject(lines_);
  SetMessage(Field("txtMessage"), p.Value("Message", "").Text());
}

void arcrRemittance::ActiveReport_DataInitialize() {
  for (const char* name : {"TransactionId", "OtherPartyId", "Date", "Settled"}) Fields().Add(name);
}

void arcrRemittance::ActiveReport_FetchData(bool& eof) {
  if (!payments_ || payments_->Eof()) {
    eof = true;
    return;
  }
  Recordset& rs = *payments_;
  const std::int64_t id = rs.Value("TransactionId").ToLong();
  settled_.clear();
  for (std::shared_ptr<Recordset> settled = Run(SettledSQL(id)); !settled->Eof();
       settled->MoveNext()) {
    settled_.push_back(settled->Value("Allocated").ToLong());
  }
  Advice advice;
  advice.party = rs.Value("OtherPartyId").Text();
  const auto text = [&rs](const char* name) {
    const Variant& value = rs.Value(name);
    return value.IsNull() || value.IsEmpty() ? std::string() : Trim(value.Text());
  };
  advice.tax_number = text("TaxNumber");
  advice.branch = text("BranchId");
  advice.reference = text("Reference");
  advice.pay_type = text("PayType");
  advice.date = rs.Value("Date");
  // A payment is stored negative; the advice shows what was paid.
  const Variant& value = rs.Value("Value");
  advice.paid = value.IsNull() ? Currency() : -value.ToCurrency();
  advice.address = AddressOf(advice.party);
  advice_ = std::move(advice);

  trellin::Fields& f = Fields();
  f["TransactionId"].SetValue(Variant(static_cast<long>(id)));
  f["OtherPartyId"].SetValue(advice_.party);
  f["Date"].SetValue(advice_.date);
  f["Settled"].SetValue(Variant(static_cast<long>(settled_.size())));
  lines_->PaymentId = id;
  any_ = true;
  rs.MoveNext();
  eof = false;
}

void arcrRemittance::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::GroupHeader:
      SupplierHeader_Format();
      break;
    case SectionType::GroupFooter:
      pages_.End();
      break;
    case SectionType::PageHeader:
      Field("phPage").SetText(pages_.PageText());
      break;
    case SectionType::PageFooter:
      PageFooter_Format();
      break;
    default:
      break;
  }
}

void arcrRemittance::SupplierHeader_Format() {
  if (!any_) return;
  const bool australian = TrellinReportGlobals::RequireApplication().Options().Country() == "AU";
  const OtherParty* party = objects_->FindOtherParty(advice_.party);
  const Branch* branch = advice_.branch.empty() ? nullptr : objects_->FindBranch(advice_.branch);
  // The number behind "ABN: " is the supplier's, as the payments' query reads it.
  const BranchBlock block = BranchBlockOf(branch, australian, advice_.tax_number);
  Field("txtBranchName").SetText(block.name);
  Field("txtBranchAddress").SetText(block.address);
  Field("txtBranchDetails").SetText(block.details);
  Field("txtBranchFooter").SetText(block.footer);
  const std::string name = party == nullptr ? std::string() : party->name;
  Field("txtName").SetText(name);
  Field("txtAddress").SetText(advice_.address);
  Field("txtPaidBy").SetText(RemittancePaidBy(advice_.pay_type, advice_.reference));
  Field("datePayment").SetDataValue(advice_.date);
  Field("numAmountPaid").SetDataValue(advice_.paid);
  Field("txtCode").SetText(advice_.party);
  Field("datepfDate").SetDataValue(advice_.date);
  Field("numpfAmount").SetDataValue(advice_.paid);
  Field("txtFooter").SetText("Supplier: " + advice_.party);
  Field("txtAdviceFor").SetText("Remittance advice to " + (name.empty() ? advice_.party : name));

  // The advice's first page carries its heading and labels in the body; the page header is for
  // the pages its lines run on to.
  Sections()["PageHeader"].SetVisible(false);
  pages_.Start();
  Field("phPage").SetText(pages_.PageText());
}

void arcrRemittance::PageFooter_Format() {
  Section& footer = Sections()["PageFooter"];
  if (pages_.FooterOfPage(footer)) {
    Field("pfContd").SetVisible(false);
    Sections()["PageHeader"].SetVisible(false);
    return;
  }
  Field("pfContd").SetVisible(true);
  Field("phContd").SetVisible(true);
  Sections()["PageHeader"].SetVisible(true);
}

void arcrRemittance::ActiveReport_ReportEnd() {
  payments_.reset();
  objects_.reset();
}

}  // namespace trellin
