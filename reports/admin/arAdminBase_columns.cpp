// The columns of each master list and the unbound fields behind them.

#include "core/TrellinReportGlobals.h"
#include "reports/admin/arAdminBase.h"

namespace trellin {

namespace {

// One column as the list adds it. An empty data field reads the field of the column's name. A
// multi-line column holds text of several lines, which the column's field grows to show.
struct AdminColumn {
  std::string_view key;
  std::string_view name;
  std::string_view data_field;
  int data_type;
  std::string_view caption;
  float width;
  int visibility;
  bool multi_line;
};

constexpr int kText = 0;
constexpr int kMoney = 4;
constexpr int kBoolean = 5;

// clang-format off
constexpr AdminColumn kAdminColumns[] = {
    {"AssetCategoryList", "Code", "AssetCategoryId", kText, "Code", 2000, 0, false},
    {"AssetCategoryList", "Description", "Description", kText, "Description", 4000, 3, false},
    {"AssetCategoryList", "CalculationPeriod", "", kText, "Calculation Period", 3000, 1, false},
    {"AssetCategoryList", "Revaluation", "", kText, "Revaluation", 5000, 1, false},
    {"AssetCategoryList", "DisposalType", "", kText, "Disposal Type", 5000, 1, false},

    {"AssetSiteList", "Active", "", kBoolean, "Active", 700, 0, false},
    {"AssetSiteList", "Code", "AssetSiteId", kText, "Code", 2000, 0, false},
    {"AssetSiteList", "Description", "", kText, "Description", 4000, 3, false},
    {"AssetSiteList", "ParentSiteId", "ParentAssetSiteId", kText, "Parent Asset Site", 2000, 0, false},
    {"AssetSiteList", "ParentDescription", "", kText, "Description", 2000, 0, false},

    {"AssetTypeList", "Code", "AssetTypeId", kText, "Code", 2000, 0, false},
    {"AssetTypeList", "Description", "", kText, "Description", 4000, 3, false},
    {"AssetTypeList", "ParentTypeId", "ParentAssetTypeId", kText, "Parent Asset Type", 2000, 0, false},
    {"AssetTypeList", "ParentDescription", "", kText, "Description", 4000, 3, false},

    {"BankList", "Code", "BankId", kText, "Code", 1000, 0, false},
    {"BankList", "Name", "AccountName", kText, "Name", 2000, -1, false},
    {"BankList", "Active", "", kBoolean, "Active", 700, 0, false},
    {"BankList", "Bank", "BankDetails", kText, "Bank", 2000, -1, true},
    {"BankList", "Overdraft", "OverdraftLimit", kMoney, "Overdraft", 1000, -1, false},
    {"BankList", "AssetAccount", "", kText, "Asset Account", -1, 3, true},
    {"BankList", "FeesAccount", "", kText, "Fees Account", -1, 3, true},

    {"BranchList", "Code", "BranchId", kText, "Code", 1000, 0, false},
    {"BranchList", "Description", "", kText, "Description", 2000, -1, false},
    {"BranchList", "Name", "", kText, "Name", -1, -1, false},
    {"BranchList", "Address", "AddressDetails", kText, "Address", 2200, -1, true},
    {"BranchList", "ContactDetails", "", kText, "Contact Details", 2200, -1, true},
    {"BranchList", "IRDNo", "TaxFileNumber", kText, "Tax No", 900, -1, false},
    // Followed by the tax registration, captioned with the tax's name (see RefreshDataColumns).

    {"CustomerCategoryList", "Code", "CustomerCategoryId", kText, "Code", 1000, 0, false},
    {"CustomerCategoryList", "Description", "", kText, "Description", 2000, -1, false},

    {"EmployeeList", "Code", "EmployeeId", kText, "Code", 1000, 0, false},
    {"EmployeeList", "Name", "", kText, "Name", 2000, 2, false},
    {"EmployeeList", "Title", "", kText, "Title", 1500, 2, false},
    {"EmployeeList", "ContactMethod", "", kText, "Contact", 1500, 1, true},
    {"EmployeeList", "ReportsTo", "", kText, "Reports To", 1200, 1, false},
    {"EmployeeList", "ReportsToName", "", kText, "Name", 2000, 4, false},
    {"EmployeeList", "Active", "", kBoolean, "Active", 800, -1, false},

    {"JobCategoryList", "Code", "JobCategoryId", kText, "Code", 1000, 0, false},
    {"JobCategoryList", "Description", "", kText, "Description", 2000, -1, false},
    {"JobCategoryList", "Type", "TransactionTypeId", kText, "Type", 700, 0, false},
    {"JobCategoryList", "Message", "", kText, "Message", -1, -1, true},
};
// clang-format on

// The unbound fields each key fills per row. The site and type lists were meant to share the
// last row, but it is written as one text that is no key, so their parent's description keeps
// coming from the query; it is kept so.
struct UnboundRow {
  std::string_view key;
  std::string_view fields[4];
};
constexpr UnboundRow kUnbound[] = {
    {"AssetCategoryList", {"Description", "CalculationPeriod", "Revaluation", "DisposalType"}},
    {"BankList", {"BankDetails", "AssetAccount", "FeesAccount"}},
    {"BranchList", {"AddressDetails", "ContactDetails"}},
    {"EmployeeList", {"ContactMethod", "ContactDetail"}},
    {"AssetSiteList, AssetTypeList", {"ParentDescription"}},
};

void AddColumn(DataColumns& columns, const std::string& name, const std::string& data_field,
               int data_type, const std::string& caption, float width, int visibility,
               bool multi_line) {
  columns.Add(name, data_field, data_type, caption, "", width, -1, -1, visibility, "(auto)", 0, 0,
              "", true, "", multi_line, multi_line);
}

}  // namespace

std::vector<std::string_view> AdminUnboundFields(std::string_view key) {
  std::vector<std::string_view> fields;
  for (const UnboundRow& row : kUnbound) {
    if (row.key != key) continue;
    for (std::string_view field : row.fields) {
      if (!field.empty()) fields.push_back(field);
    }
  }
  return fields;
}

void arAdminBase::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  const std::string_view key = KeyRow().key;
  for (const AdminColumn& column : kAdminColumns) {
    if (column.key != key) continue;
    AddColumn(columns, std::string(column.name), std::string(column.data_field), column.data_type,
              std::string(column.caption), column.width, column.visibility, column.multi_line);
  }
  if (key == "BranchList") {
    const std::string tax_name = TrellinReportGlobals::RequireApplication().Tax().TaxName();
    AddColumn(columns, "TaxNumber", "TaxNumber", kText, tax_name + " Reg", 900, -1, false);
  }
}

}  // namespace trellin
