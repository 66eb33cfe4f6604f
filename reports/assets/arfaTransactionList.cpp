// The asset movement list's key, row by row, and the kind filled per row.

#include "reports/assets/arfaTransactionList.h"

#include "reports/ReportShapes.h"
#include "reports/assets/AssetLists.h"

namespace trellin {

namespace {

constexpr ListOrder kMovementOrders[] = {
    {"Date", "AssetTransaction.Date,AssetTransaction.AssetTransactionId"},
    {"Asset", "AssetTransaction.AssetId,AssetTransaction.Date,AssetTransaction.AssetTransactionId"},
    {"Reference",
     "AssetTransaction.Reference,AssetTransaction.Date,AssetTransaction.AssetTransactionId"},
};

constexpr ListParameter kMovementParameters[] = {
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .field = "AssetTransaction.Date",
     .from_default = "GLCURRENT-1E+1D",
     .to_default = "GLCURRENT"},
    {.kind = ListParameterKind::Standard, .field = "Asset.AssetId", .index = 2, .primary = true},
    {.kind = ListParameterKind::Standard,
     .caption = "Categories",
     .field = "Asset.AssetCategoryId",
     .index = 1},
    {.kind = ListParameterKind::Standard,
     .caption = "Sites",
     .field = "Asset.AssetSiteId",
     .index = 3},
    {.kind = ListParameterKind::Standard,
     .caption = "Types",
     .field = "Asset.AssetTypeId",
     .index = 4},
    {.kind = ListParameterKind::Standard, .field = "Asset.BranchId", .index = 6},
    {.kind = ListParameterKind::PickList,
     .name = "Kinds",
     .caption = "Kinds",
     .field = "AssetTransaction.Type",
     .list_sql = kAssetKindsSql,
     .key_field = "Type"},
};

constexpr ListGrouping kMovementGroupings[] = {
    {"Reference", "AssetTransaction.Reference", "", "Reference"},
    {"Kind", "AssetTransaction.Type", kAssetKindsSql, "Type"},
};

constexpr ListColumn kMovementColumns[] = {
    {"Date", "Date", kColumnDate, "Date", "", 950, false},
    {"Asset", "AssetId", kColumnCode, "Asset", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", 2600, false},
    {"Kind", "KindText", kColumnText, "Kind", "", 1500, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1300, false},
    {"Comment", "Comment", kColumnText, "Comment", "", -1, false},
    {"Value", "Value", kColumnMoney, "Value", "", 1250, false},
    {"TaxValue", "TaxValue", kColumnMoney, "Tax Value", "", 1250, false},
};

constexpr ListKey kMovementKeys[] = {{
    .key = "AssetTransactionList",
    .base_sql = "SELECT AssetTransaction.AssetTransactionId,AssetTransaction.Date,"
                "AssetTransaction.AssetId,Asset.Description,AssetTransaction.Type,"
                "AssetTransaction.Reference,AssetTransaction.Comment,AssetTransaction.Value,"
                "AssetTransaction.TaxValue FROM AssetTransaction INNER JOIN Asset ON "
                "AssetTransaction.AssetId=Asset.AssetId",
    .orders = kMovementOrders,
    .parameters = kMovementParameters,
    .groupings = "Asset,Asset Category,Asset Type,Asset Site,Reference,Kind",
    .grouping_table = "Asset",
    .own_groupings = kMovementGroupings,
    .summary = true,
    .columns = kMovementColumns,
}};

}  // namespace

arfaTransactionList::arfaTransactionList()
    : ListDesigner("arfaTransactionList", kMovementKeys, "Asset Transaction List") {}

DesignerPtr CreatearfaTransactionList() { return std::make_shared<arfaTransactionList>(); }

void arfaTransactionList::ActiveReport_DataInitialize() { Fields().Add("KindText"); }

void arfaTransactionList::ActiveReport_FetchData(bool&) { FillAssetKind(Fields()); }

}  // namespace trellin
