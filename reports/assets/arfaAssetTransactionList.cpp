// The asset batch list's key, row by row.

#include "reports/assets/arfaAssetTransactionList.h"

#include "reports/ReportShapes.h"
#include "reports/assets/AssetLists.h"

namespace trellin {

namespace {

constexpr ListOrder kBatchOrders[] = {
    {"Reference",
     "AssetTransaction.Reference,AssetTransaction.Date,AssetTransaction.AssetId,"
     "AssetTransaction.AssetTransactionId"},
};

constexpr ListParameter kBatchParameters[] = {
    {.kind = ListParameterKind::PickList,
     .name = "References",
     .caption = "References",
     .field = "AssetTransaction.Reference",
     .primary = true,
     .list_sql = "SELECT DISTINCT Reference FROM AssetTransaction WHERE Reference Is Not Null "
                 "ORDER BY Reference",
     .key_field = "Reference"},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .field = "AssetTransaction.Date"},
    {.kind = ListParameterKind::PickList,
     .name = "Kinds",
     .caption = "Kinds",
     .field = "AssetTransaction.Type",
     .list_sql = kAssetKindsSql,
     .key_field = "Type"},
    {.kind = ListParameterKind::Standard, .field = "Asset.AssetId", .index = 2},
};

constexpr ListGrouping kBatchGroupings[] = {
    {"Reference", "AssetTransaction.Reference", "", "Reference"},
};

constexpr ListColumn kBatchColumns[] = {
    {"Asset", "AssetId", kColumnCode, "Asset", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", 3000, false},
    {"Date", "Date", kColumnDate, "Date", "", 950, false},
    {"Kind", "KindText", kColumnText, "Kind", "", 1500, false},
    {"Comment", "Comment", kColumnText, "Comment", "", -1, false},
    {"Value", "Value", kColumnMoney, "Value", "", 1250, false},
    {"TaxValue", "TaxValue", kColumnMoney, "Tax Value", "", 1250, false},
};

constexpr ListKey kBatchKeys[] = {{
    .key = "AssetBatchTransactionList",
    .base_sql = "SELECT AssetTransaction.AssetTransactionId,AssetTransaction.Reference,"
                "AssetTransaction.AssetId,Asset.Description,AssetTransaction.Date,"
                "AssetTransaction.Type,AssetTransaction.Comment,AssetTransaction.Value,"
                "AssetTransaction.TaxValue FROM AssetTransaction INNER JOIN Asset ON "
                "AssetTransaction.AssetId=Asset.AssetId",
    .orders = kBatchOrders,
    .parameters = kBatchParameters,
    .own_groupings = kBatchGroupings,
    .fixed_grouping = "Reference",
    .columns = kBatchColumns,
}};

}  // namespace

arfaAssetTransactionList::arfaAssetTransactionList()
    : ListDesigner("arfaAssetTransactionList", kBatchKeys, "Asset Transaction List") {}

DesignerPtr CreatearfaAssetTransactionList() {
  return std::make_shared<arfaAssetTransactionList>();
}

void arfaAssetTransactionList::ActiveReport_DataInitialize() { Fields().Add("KindText"); }

void arfaAssetTransactionList::ActiveReport_FetchData(bool&) { FillAssetKind(Fields()); }

}  // namespace trellin
