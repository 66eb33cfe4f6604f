// The stock transaction list's key, row by row.

#include "reports/stock/arscTransactionList.h"

#include "reports/ReportShapes.h"
#include "reports/stock/StockLists.h"

namespace trellin {

namespace {

constexpr ListOrder kMovementOrders[] = {
    {"Date", "TransactionLine.DateProcess,TransactionLine.TransactionLineId"},
    {"Item",
     "TransactionLine.ItemId,TransactionLine.DateProcess,TransactionLine.TransactionLineId"},
    {"Reference",
     "Transactions.Reference,TransactionLine.DateProcess,TransactionLine.TransactionLineId"},
};

constexpr ListParameter kMovementParameters[] = {
    kMovementDated,
    {.kind = ListParameterKind::Standard, .field = "TransactionLine.ItemId", .index = 17},
    {.kind = ListParameterKind::Standard, .field = "TransactionLine.LocationId", .index = 23},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemTypeId", .index = 20},
    {.kind = ListParameterKind::Standard, .field = "Transactions.TransactionTypeId", .index = 39},
};

constexpr ListColumn kMovementColumns[] = {
    {"Date", "DateProcess", kColumnDate, "Date", "", 1000, false},
    {"Kind", "KindName", kColumnText, "Kind", "", 1300, false},
    {"Type", "TransactionTypeId", kColumnText, "Type", "", 700, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1100, false},
    {"Party", "OtherPartyId", kColumnText, "Party", "", 1100, false},
    {"Item", "ItemId", kColumnText, "Item", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Location", "LocationId", kColumnText, "Location", "", 900, false},
    {"Serial", "SerialNumber", kColumnText, "Serial", "", 1100, true},
    {"In", "QuantityIn", kColumnNumber, "In", "", 800, false, "#,##0.00;(#,##0.00)"},
    {"Out", "QuantityOut", kColumnNumber, "Out", "", 800, false, "#,##0.00;(#,##0.00)"},
    {"Cost", "ItemCost", kColumnMoney, "Cost", "", 1200, false},
    {"SaleValue", "SaleValue", kColumnMoney, "Sale Value", "", 1200, false},
};

constexpr ListKey kMovementKeys[] = {{
    .key = "TransactionListSC",
    .base_sql =
        "SELECT TransactionLine.TransactionLineId,TransactionLine.DateProcess,TransactionLine.Type,"
        "Transactions.TransactionTypeId,Transactions.Reference,Transactions.OtherPartyId,"
        "TransactionLine.ItemId,Item.Description,TransactionLine.LocationId,"
        "TransactionLine.SerialNumber,"
        "IIf(TransactionLine.Quantity>0,TransactionLine.Quantity,Null) AS QuantityIn,"
        "IIf(TransactionLine.Quantity<0,-TransactionLine.Quantity,Null) AS QuantityOut,"
        "TransactionLine.ItemCost,"
        "IIf(TransactionLine.Type In (30,31),-TransactionLine.Value,Null) AS SaleValue"
        " FROM (TransactionLine INNER JOIN Item ON TransactionLine.ItemId=Item.ItemId) LEFT JOIN "
        "Transactions ON TransactionLine.TransactionId=Transactions.TransactionId",
    .base_where = "Item.Inventory<>0",
    .orders = kMovementOrders,
    .parameters = kMovementParameters,
    .groupings = "Item,Location,Item Category,Item Type,Transaction Type",
    .grouping_table = "TransactionLine",
    .own_groupings = kMovementGroupings,
    .summary = true,
    .columns = kMovementColumns,
}};

}  // namespace

arscTransactionList::arscTransactionList()
    : ListDesigner("arscTransactionList", kMovementKeys, "Stock Transaction List") {}

DesignerPtr CreatearscTransactionList() { return std::make_shared<arscTransactionList>(); }

void arscTransactionList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  FitStockColumns(TLReport()->DataColumns(), {});
}

void arscTransactionList::ActiveReport_DataInitialize() { Fields().Add("KindName"); }

void arscTransactionList::ActiveReport_FetchData(bool&) { FillMovementKind(Fields()); }

}  // namespace trellin
