#include "reports/admin/arPostcodeList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"

namespace trellin {

namespace {

// The sort within each country and state, by the value of OrderBy; any other value sorts by city.
struct PostcodeOrder {
  std::string_view order_by;
  std::string_view fields;
};
constexpr PostcodeOrder kPostcodeOrders[] = {
    {"City", "Country,State,City"},
    {"Postcode", "Country,State,Postcode"},
};

}  // namespace

DesignerPtr CreatearPostcodeList() { return std::make_shared<arPostcodeList>(); }

void arPostcodeList::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& parameters = TLReport()->Parameters();
  parameters.AddList("OrderBy", "City", true, "", Variant(), "City,Postcode", true, "Order By");
  parameters.AddSQLList("Countries", Variant(), false, "", Variant(),
                        "SELECT DISTINCT Country from PostCodes", "Country", false, "Countries");
  parameters.AddSQLList("States", Variant(), false, "", Variant(),
                        "SELECT DISTINCT State from PostCodes", "State", false, "States");
}

void arPostcodeList::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arPostcodeList::ActiveReport_ReportStart() {
  BuildSQL();
  TLReport()->SetupStandardHeader(true);
  DataControl().SetSource(sql_);
}

void arPostcodeList::BuildSQL() {
  trellin::Parameters& parameters = TLReport()->Parameters();
  std::string where;
  description_.clear();
  AppendListParameterCondition(where, "Country", "Countries", parameters, description_, 8);
  AppendListParameterCondition(where, "State", "States", parameters, description_, 8);
  sql_ = "SELECT City,State,Country,Postcode,Comments FROM PostCodes";
  if (!where.empty()) sql_ += " WHERE " + where;
  const std::string order_by = parameters.Value("OrderBy", Variant()).Text();
  std::string_view fields = kPostcodeOrders[0].fields;
  for (const PostcodeOrder& order : kPostcodeOrders) {
    if (order.order_by == order_by) fields = order.fields;
  }
  sql_ += " ORDER BY ";
  sql_ += fields;
}

void arPostcodeList::OnFormat(Section& section) {
  if (section.Name() == "ghState") ghState_Format();
  if (section.Type() == SectionType::Detail) Detail_Format();
}

void arPostcodeList::ghState_Format() {
  // One branch a country, one leaf a state in the viewer's tree. A country kept without states
  // gets its branch alone: a leaf without a name would lead nowhere a reader could tell.
  const std::string& country = Field("txtCountry").Text();
  const std::string& state = Field("txtState").Text();
  TOC().Add(state.empty() ? country : country + "\\" + state);
}

// The report footer prints the run's parameters, filled in by the host.
void arPostcodeList::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void arPostcodeList::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

}  // namespace trellin
