#include "reports/admin/arCustomerTypeList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/admin/arDetailSpecialPricingSub.h"

namespace trellin {

DesignerPtr CreatearCustomerTypeList() { return std::make_shared<arCustomerTypeList>(); }

void arCustomerTypeList::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& parameters = TLReport()->Parameters();
  parameters.AddList("OrderBy", "Code", true, "", Variant(), "Code,Description", true, "Order By");
  CreateStandardParameter(13, parameters, true);
}

void arCustomerTypeList::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arCustomerTypeList::ActiveReport_ReportStart() {
  BuildSQL();
  TLReport()->SetupStandardHeader(true);
  Sections()["Detail"].SetBackStyle(0);
  DataControl().SetSource(sql_);
}

void arCustomerTypeList::BuildSQL() {
  trellin::Parameters& parameters = TLReport()->Parameters();
  sql_ = "SELECT * FROM CustomerType";
  std::string types = parameters.Value("CustomerTypes", Variant()).Text();
  if (!types.empty()) {
    RangeBuilder& builder = TrellinReportGlobals::RequireBusinessLayer().Utilities().RangeBuilder();
    sql_ += " WHERE (" + builder.BuildRangeCondition("CustomerTypeId", types, 8) + ")";
  }
  // Any order the report does not know falls to the code order.
  sql_ += " ORDER BY ";
  sql_ += parameters.Value("OrderBy", Variant()).Text() == "Description" ? "Description"
                                                                         : "CustomerTypeId";

  special_pricing_ = std::make_shared<arDetailSpecialPricingSub>();
  Field("srptSpecialPricing").SetObject(special_pricing_);
  special_pricing_->SType = 3;
}

void arCustomerTypeList::OnFormat(Section& section) {
  if (section.Name() == "Detail") Detail_Format();
}

void arCustomerTypeList::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  special_pricing_->FieldValue = Fields()["CustomerTypeId"].Value().Text();
}

}  // namespace trellin
