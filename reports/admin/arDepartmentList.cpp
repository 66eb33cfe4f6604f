#include "reports/admin/arDepartmentList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"

namespace trellin {

DesignerPtr CreatearDepartmentList() { return std::make_shared<arDepartmentList>(); }

void arDepartmentList::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& parameters = TLReport()->Parameters();
  parameters.AddList("OrderBy", "Code", true, "", Variant(), "Code,Description", true, "Order By");
  CreateStandardParameter(14, parameters, true);
}

void arDepartmentList::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arDepartmentList::ActiveReport_ReportStart() {
  BuildSQL();
  TLReport()->SetupStandardHeader(true);
  DataControl().SetSource(sql_);
}

void arDepartmentList::BuildSQL() {
  trellin::Parameters& parameters = TLReport()->Parameters();
  sql_ = "SELECT DeptId,Description FROM Department";
  const std::string departments = parameters.Value("Departments", Variant()).Text();
  if (!departments.empty()) {
    RangeBuilder& builder = TrellinReportGlobals::RequireBusinessLayer().Utilities().RangeBuilder();
    sql_ += " WHERE (" + builder.BuildRangeCondition("DeptId", departments, 8) + ")";
  }
  // Any order the report does not know falls to the code order.
  sql_ += " ORDER BY ";
  sql_ += parameters.Value("OrderBy", Variant()).Text() == "Description" ? "Description" : "DeptId";
}

void arDepartmentList::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) Detail_Format();
}

// The report footer prints the run's parameters, filled in by the host.
void arDepartmentList::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void arDepartmentList::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

}  // namespace trellin
