#include "reports/receivables/ardsSalesAnalysisReportTransSub.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/SalesAnalysisShared.h"

namespace trellin {

namespace {

constexpr const char* kCopied[] = {
    "Code", "Name",  "JobDescription", "AddressId", "DateProcess", "Reference",
    "Qty",  "Sales", "Disc",           "NetSales",  "Costs"};

}  // namespace

ardsSalesAnalysisReportTransSub::ardsSalesAnalysisReportTransSub()
    : ardsSalesAnalysisReportTransSub("ardsSalesAnalysisReportTransSub", kCopied, true) {}

void ardsSalesAnalysisReportTransSub::ActiveReport_ReportStart() {
  if (Queries) Queries(SQL);
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(SQL);
  if (Control* date = FindControl("txtDateProcess")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
  const std::pair<const char*, const std::string*> captions[] = {
      {"lblCode", &CodeCaption}, {"lblName", &NameCaption}, {"lblJob", &JobCaption}};
  for (const auto& [name, caption] : captions) {
    if (Control* label = FindControl(name)) label->SetCaption(*caption);
  }
  if (Section* header = Sections().Find("GroupHeader1")) header->SetVisible(SplitByAddress);
  if (!IncludeCosts) {
    if (Control* costs = FindControl("txtCosts")) costs->SetVisible(false);
  }
}

void ardsSalesAnalysisReportTransSub::ActiveReport_DataInitialize() {
  for (const char* name : copied_) Fields().Add(name);
  if (sale_price_) Fields().Add("SalePrice");
}

void ardsSalesAnalysisReportTransSub::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  for (const char* name : copied_) f[name].SetValue(rs_->Value(name));
  rs_->MoveNext();
  eof = false;
  if (!sale_price_) return;
  const Variant& qty = f["Qty"].Value();
  const double quantity = qty.IsNull() ? 0.0 : qty.ToDouble();
  // A line with no quantity has no price.
  f["SalePrice"].SetValue(quantity == 0.0
                              ? Variant::Null()
                              : Variant(FigureOf(f["NetSales"].Value()).ToDouble() / quantity));
}

std::string ardsSalesAnalysisReportTransSub::AddressText(const Variant& address_id) const {
  const std::optional<std::string> address = SaleAddress(OtherPartyId, address_id);
  if (!address) return "Undefined";
  if (address->empty()) return address_id.Text();
  return Replace(Replace(*address, "\r\n", ", "), "\n", ", ");
}

void ardsSalesAnalysisReportTransSub::OnFormat(Section& section) {
  // The address heading is formatted at every change of address even while hidden: its text,
  // a query, is only wanted when it prints.
  if (section.Type() == SectionType::GroupHeader && SplitByAddress) {
    if (Control* address = section.Controls().Find("txtAddress")) {
      address->SetText(AddressText(Fields()["AddressId"].Value()));
    }
  }
}

void ardsSalesAnalysisReportTransSub::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
