// The asset register's key, row by row, and the figures filled per row.

#include "reports/assets/arfaAssetList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/AssetDepreciation.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/UserDefinedColumns.h"

namespace trellin {

namespace {

constexpr ListGrouping kAssetGroupings[] = {
    {"Category", "Asset.AssetCategoryId", "SELECT AssetCategoryId,Description FROM AssetCategory",
     "AssetCategoryId"},
    {"Site", "Asset.AssetSiteId", "SELECT AssetSiteId,Description FROM AssetSite", "AssetSiteId"},
    {"Type", "Asset.AssetTypeId", "SELECT AssetTypeId,Description FROM AssetType", "AssetTypeId"},
    {"Status", "Asset.Status", kAssetStatusesSql, "Status"},
    {"Supplier", "Asset.SupplierId", "SELECT OtherPartyId AS SupplierId,Name FROM OtherParty",
     "SupplierId"},
};

constexpr ListColumn kAssetColumns[] = {
    {"Code", "AssetId", kColumnCode, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"SerialNumber", "SerialNumber", kColumnText, "Serial No", "", 1300, false},
    {"Category", "AssetCategoryId", kColumnText, "Category", "", 900, false},
    {"Type", "AssetTypeId", kColumnText, "Type", "", 800, false},
    {"Site", "AssetSiteId", kColumnText, "Site", "", 800, false},
    {"Branch", "BranchId", kColumnText, "Branch", "", 800, true},
    {"Employee", "EmployeeId", kColumnText, "Employee", "", 900, true},
    {"Supplier", "SupplierName", kColumnText, "Supplier", "", 2200, true},
    {"Parent", "ParentAssetId", kColumnText, "Parent", "", 1000, true},
    {"Status", "StatusText", kColumnText, "Status", "", 900, false},
    {"Purchased", "PurchaseDate", kColumnDate, "Purchased", "", 950, false},
    {"Cost", "Cost", kColumnMoney, "Cost", "", 1250, false},
    {"BookValue", "BookValue", kColumnMoney, "Book Value", "", 1250, false},
    {"TaxValue", "TaxValue", kColumnMoney, "Tax Value", "", 1250, true},
    {"Warranty", "WarrantyDate", kColumnDate, "Warranty", "", 950, true},
    {"Review", "ReviewDate", kColumnDate, "Review", "", 950, true},
    {"Disposed", "DisposalDate", kColumnDate, "Disposed", "", 950, true},
};

constexpr ListKey kAssetKeys[] = {{
    .key = "AssetList",
    .base_sql =
        "SELECT Asset.AssetId,Asset.Description,Asset.SerialNumber,Asset.AssetCategoryId,"
        "Asset.AssetTypeId,Asset.AssetSiteId,Asset.BranchId,Asset.EmployeeId,Asset.SupplierId,"
        "OtherParty.Name AS SupplierName,Asset.ParentAssetId,Asset.Status,Asset.PurchaseDate,"
        "Asset.WarrantyDate,Asset.ReviewDate,Asset.DisposalDate,Asset.UserDefined1,"
        "Asset.UserDefined2,Asset.UserDefined3,Asset.UserDefined4,Asset.UserDefined5,"
        "Asset.UserDefined6,Asset.UserDefined7,Asset.UserDefined8,Asset.UserDefined9,"
        "Asset.UserDefined10,Asset.UserDefined11,Asset.UserDefined12,Asset.UserDefined13,"
        "Asset.UserDefined14,Asset.UserDefined15,Asset.UserDefined16,Asset.UserDefined17,"
        "Asset.UserDefined18,Asset.UserDefined19,Asset.UserDefined20"
        " FROM Asset LEFT JOIN OtherParty ON Asset.SupplierId=OtherParty.OtherPartyId",
    .orders = kAssetOrders,
    .parameters = kAssetFilters,
    .groupings = "Category,Site,Type,Branch,Employee,Parent Asset,Status,Supplier",
    .grouping_table = "Asset",
    .own_groupings = kAssetGroupings,
    .summary = true,
    .columns = kAssetColumns,
}};

const Variant& FieldOrNull(const Fields& fields, std::string_view name) {
  static const Variant kNull = Variant::Null();
  const ReportField* field = fields.Find(std::string(name));
  return field == nullptr ? kNull : field->Value();
}

}  // namespace

arfaAssetList::arfaAssetList() : ListDesigner("arfaAssetList", kAssetKeys, "Asset List") {}

DesignerPtr CreatearfaAssetList() { return std::make_shared<arfaAssetList>(); }

void arfaAssetList::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  trellin::Parameters& p = TLReport()->Parameters();
  AddAssetStatusBoxes(p);
  AddAssetDateAsAt(p);
}

void arfaAssetList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  columns.Item("Code").Visibility = 0;
  AddUserDefinedColumns(columns, UserDefinedKind::Asset);
}

std::string arfaAssetList::ExtraCondition() {
  status_phrase_.clear();
  return AssetStatusCondition(TLReport()->Parameters(), status_phrase_);
}

void arfaAssetList::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  const Date date = AssetDateAsAt(p);
  figures_ = AssetFiguresAt(date, p.Value("IncludeComponents", false).ToBool());
  ListDesigner::ActiveReport_ReportStart();
  std::string description = Description();
  AppendDescription(description, status_phrase_);
  AppendDescription(
      description,
      "Dated As At " +
          Format(Variant(date), TrellinReportGlobals::RequireBusinessLayer().DateFormat()));
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arfaAssetList::ActiveReport_DataInitialize() {
  for (const char* name : {"StatusText", "Cost", "BookValue", "TaxValue"}) Fields().Add(name);
}

void arfaAssetList::ActiveReport_FetchData(bool&) {
  Fields().Add("StatusText").SetValue(Variant(AssetStatusText(FieldOrNull(Fields(), "Status"))));
  auto found = figures_.find(UCase(FieldOrNull(Fields(), "AssetId").Text()));
  const AssetFigures row = found == figures_.end() ? AssetFigures{} : found->second;
  Fields().Add("Cost").SetValue(Variant(row.cost));
  Fields().Add("BookValue").SetValue(Variant(row.book));
  Fields().Add("TaxValue").SetValue(Variant(row.tax));
}

}  // namespace trellin
