#include "reports/admin/arAdminBase.h"

#include <algorithm>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"

namespace trellin {

namespace {

// The keys, row by row: order choices, standard filter, query, code and parent fields. The site
// and type lists offer "Parent Site" and "Parent Type", while their order test asks for
// "Parent Asset": those choices sort by code, as the lists have always printed.
// clang-format off
constexpr AdminKey kAdminKeys[] = {
    {"AssetCategoryList", "Code,Description", 1,
     "SELECT AssetCategoryId FROM AssetCategory", "AssetCategoryId", ""},
    {"AssetSiteList", "Code,Description,Parent Site", 3,
     "SELECT AssetSiteId,Description,Active,ParentAssetSiteId,(SELECT Description FROM AssetSite "
     "as A WHERE AssetSite.ParentAssetSiteId = A.AssetSiteId) as ParentDescription FROM AssetSite",
     "AssetSiteId", "ParentAssetSiteId"},
    {"AssetTypeList", "Code,Description,Parent Type", 4,
     "SELECT AssetTypeId,Description,ParentAssetTypeId,(SELECT Description FROM AssetType as A "
     "WHERE AssetType.ParentAssetTypeId = A.AssetTypeId) as ParentDescription FROM AssetType",
     "AssetTypeId", "ParentAssetTypeId"},
    {"BankList", "Code,Account Name", 5, "SELECT * FROM Bank", "BankId", ""},
    {"BranchList", "Code,Name", 6, "SELECT * FROM Branch", "BranchId", ""},
    {"CustomerCategoryList", "Code,Description", 9, "SELECT * FROM CustomerCategory",
     "CustomerCategoryId", ""},
    {"EmployeeList", "Code,Name", 15,
     "SELECT EmployeeId,Name,Title,Active,ReportsTo,(SELECT Name FROM Employee em WHERE "
     "em.EmployeeId=Employee.ReportsTo) AS ReportsToName FROM Employee", "EmployeeId", ""},
    {"JobCategoryList", "Code,Description", 21, "SELECT * FROM JobCategory", "JobCategoryId", ""},
};
// clang-format on

// The OrderBy values that sort on a field of their own; every other value sorts by code.
struct OrderRow {
  std::string_view order_by;
  std::string_view field;
};
constexpr OrderRow kOrders[] = {
    {"Description", "Description"},
    {"Account Name", "AccountName"},
    {"Name", "Name"},
};
constexpr std::string_view kParentOrder = "Parent Asset";

}  // namespace

const AdminKey* FindAdminKey(std::string_view key) {
  for (const AdminKey& row : kAdminKeys) {
    if (row.key == key) return &row;
  }
  return nullptr;
}

std::string AdminSortField(const AdminKey& row, const std::string& order_by) {
  for (const OrderRow& order : kOrders) {
    if (order.order_by == order_by) return std::string(order.field);
  }
  if (order_by == kParentOrder && !row.parent_field.empty()) return std::string(row.parent_field);
  return std::string(row.code_field);
}

DesignerPtr CreatearAdminBase() { return std::make_shared<arAdminBase>(); }

arAdminBase::arAdminBase() : Designer("arAdminBase") {}
arAdminBase::~arAdminBase() = default;

const AdminKey& arAdminBase::KeyRow() const {
  const std::string key = TLReport() ? TLReport()->ReportName() : std::string();
  const AdminKey* row = FindAdminKey(key);
  if (row == nullptr) {
    throw std::invalid_argument("The master lists have no report named \"" + key + "\".");
  }
  return *row;
}

void arAdminBase::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& parameters = TLReport()->Parameters();
  const AdminKey& row = KeyRow();
  parameters.AddList("OrderBy", "Code", true, "", Variant(), std::string(row.order_choices), true,
                     "Order By");
  filter_name_ = CreateStandardParameter(row.standard_index, parameters, true)->Name;
}

void arAdminBase::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arAdminBase::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  BuildSQL();
  TLReport()->SetupStandardHeader(true);
  // The columns start where the layout's heading label stands.
  const Control& heading = Field("lblHeading");
  TLReport()->DataColumns().CreateFields(heading.Top(), 0, 15, 0, true, 0, 10.0f, 8.0f);
  FitFurniture();
  // The business objects behind the unbound fields are read once for the run.
  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  DataControl().SetSource(sql_);
}

void arAdminBase::FitFurniture() {
  // The column layout may have turned the page for a wide list: rules, the title and the
  // parameters span the print width, and the date and page number keep to the right margin.
  const float width = PrintWidth();
  for (const char* name : {"PageHeader", "PageFooter", "ReportFooter"}) {
    for (Control& c : Sections()[name].Controls()) {
      if (c.Class() == ControlClass::Line || c.Name() == "lblReportTitle" ||
          c.Name() == "txtParameters") {
        c.SetWidth(width);
      } else if (c.Name() == "phDated" || c.Name() == "txtPage") {
        c.SetLeft(width - c.Width());
      }
    }
  }
  // Captions that wrap make the headings taller; the rule stays the same distance below them.
  constexpr float kRuleBelowHeadings = 50;
  constexpr float kSpaceBelowRule = 40;
  Section& header = Sections()["PageHeader"];
  const Control& heading = Field("lblHeading");
  float bottom = heading.Top() + heading.Height();
  for (const Control& c : header.Controls()) {
    if (c.Class() == ControlClass::Label && c.Visible() && c.Top() >= heading.Top()) {
      bottom = std::max(bottom, c.Top() + c.Height());
    }
  }
  Control& rule = Field("linHeader");
  rule.SetTop(std::max(rule.Top(), bottom + kRuleBelowHeadings));
  header.SetHeight(std::max(header.Height(), rule.Top() + kSpaceBelowRule));
}

void arAdminBase::BuildSQL() {
  const AdminKey& row = KeyRow();
  trellin::Parameters& parameters = TLReport()->Parameters();
  sql_ = std::string(row.base_sql);
  const std::string value =
      filter_name_.empty() ? std::string() : parameters.Value(filter_name_, Variant()).Text();
  if (!value.empty()) {
    RangeBuilder& builder = TrellinReportGlobals::RequireBusinessLayer().Utilities().RangeBuilder();
    sql_ += " WHERE (" + builder.BuildRangeCondition(std::string(row.code_field), value, 8) + ")";
  }
  sql_ += " ORDER BY " + AdminSortField(row, parameters.Value("OrderBy", Variant()).Text());
}

void arAdminBase::ActiveReport_DataInitialize() {
  for (std::string_view name : AdminUnboundFields(KeyRow().key)) Fields().Add(name);
}

void arAdminBase::ActiveReport_FetchData(bool&) {
  if (!objects_) return;
  const ReportField* code = Fields().Find(KeyRow().code_field);
  if (code == nullptr) return;
  const std::vector<std::string_view> names = AdminUnboundFields(KeyRow().key);
  if (names.empty()) return;
  const std::vector<std::string> texts =
      AdminDetailTexts(*objects_, KeyRow().key, code->Value().Text());
  for (std::size_t i = 0; i < names.size(); ++i) Fields().Add(names[i]).SetValue(Variant(texts[i]));
}

void arAdminBase::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) Detail_Format();
}

// The report footer prints the run's parameters, filled in by the host.
void arAdminBase::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void arAdminBase::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

void arAdminBase::ActiveReport_ReportEnd() { objects_.reset(); }

}  // namespace trellin
