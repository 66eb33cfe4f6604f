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
  for (const char* name : kCopied) Fields().Add(name);
  Fields().Add("SalePrice");
}

void ardsSalesAnalysisReportTransSub::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  for (const char* name : kCopied) f[name].SetValue(rs_->Value(name));
  const Variant& qty = rs_->Value("Qty");
  const double quantity = qty.IsNull() ? 0.0 : qty.ToDouble();
  // A line with no quantity has no price.
  f["SalePrice"].SetValue(quantity == 0.0
                              ? Variant::Null()
                              : Variant(FigureOf(rs_->Value("NetSales")).ToDouble() / quantity));
  rs_->MoveNext();
  eof = false;
}

std::string ardsSalesAnalysisReportTransSub::AddressText(const Variant& address_id) const {
  const std::optional<std::string> address = SaleAddress(OtherPartyId, address_id);
  if (!address) return "Undefined";
  if (address->empty()) return address_id.Text();
  return Replace(Replace(*address, "\r\n", ", "), "\n", ", ");
}

void ardsSalesAnalysisReportTransSub::OnFormat(Section& section) {
  if (section.Type() == SectionType::GroupHeader) {
    if (Control* address = section.Controls().Find("txtAddress")) {
      address->SetText(AddressText(Fields()["AddressId"].Value()));
    }
  }
}

void ardsSalesAnalysisReportTransSub::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
