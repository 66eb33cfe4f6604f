// The item adjustment report's key, row by row.

#include "reports/stock/arItemAdjustment.h"

#include "reports/ReportShapes.h"
#include "reports/stock/StockLists.h"

namespace trellin {

namespace {

constexpr ListOrder kAdjustmentOrders[] = {
    {"Date", "TransactionLine.DateProcess,TransactionLine.TransactionLineId"},
    {"Item",
     "TransactionLine.ItemId,TransactionLine.DateProcess,TransactionLine.TransactionLineId"},
};

// Each type of adjustment is shown unless its box is cleared.
constexpr ListParameter AdjustmentType(std::string_view name, std::string_view caption,
                                       std::string_view off_condition,
                                       std::string_view off_phrase) {
  return {.kind = ListParameterKind::Option,
          .name = name,
          .caption = caption,
          .off_condition = off_condition,
          .off_phrase = off_phrase,
          .checked = true};
}

constexpr ListParameter kAdjustmentParameters[] = {
    kMovementDated,
    {.kind = ListParameterKind::Standard, .field = "TransactionLine.ItemId", .index = 17},
    {.kind = ListParameterKind::Standard, .field = "TransactionLine.LocationId", .index = 23},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    AdjustmentType("TypeStocktake", "Stocktakes", "TransactionLine.Type<>11", "No stocktakes"),
    AdjustmentType("TypeAdjustment", "Adjustments", "TransactionLine.Type<>13", "No adjustments"),
    AdjustmentType("TypeRevaluation", "Revaluations", "TransactionLine.Type<>14",
                   "No revaluations"),
    AdjustmentType("TypeCarryCost", "Carry Costs", "TransactionLine.Type<>18", "No carry costs"),
};

constexpr ListColumn kAdjustmentColumns[] = {
    {"Date", "DateProcess", kColumnDate, "Date", "", 1000, false},
    {"Type", "KindName", kColumnText, "Type", "", 1100, false},
    {"Item", "ItemId", kColumnText, "Item", "", 1000, false},
    {"Description", "ItemDescription", kColumnText, "Description", "", 2600, false},
    {"Location", "LocationId", kColumnText, "Location", "", 900, false},
    {"Serial", "SerialNumber", kColumnText, "Serial", "", 1100, false},
    {"Reason", "Reason", kColumnText, "Reason", "", -1, false},
    {"Quantity", "Quantity", kColumnNumber, "Quantity", "", 900, false, "#,##0.00;(#,##0.00)"},
    {"Value", "ItemCost", kColumnMoney, "Value", "", 1200, false},
};

constexpr ListKey kAdjustmentKeys[] = {{
    .key = "ItemAdjustments",
    .base_sql =
        "SELECT TransactionLine.TransactionLineId,TransactionLine.DateProcess,TransactionLine.Type,"
        "TransactionLine.ItemId,Item.Description AS ItemDescription,TransactionLine.LocationId,"
        "TransactionLine.SerialNumber,TransactionLine.Description AS Reason,"
        "TransactionLine.Quantity,TransactionLine.ItemCost"
        " FROM TransactionLine INNER JOIN Item ON TransactionLine.ItemId=Item.ItemId",
    .base_where = "TransactionLine.Type In (11,13,14,18)",
    .orders = kAdjustmentOrders,
    .parameters = kAdjustmentParameters,
    .groupings = "Item,Location,Item Category",
    .grouping_table = "TransactionLine",
    .own_groupings = kMovementGroupings,
    .summary = true,
    .columns = kAdjustmentColumns,
}};

}  // namespace

arItemAdjustment::arItemAdjustment()
    : ListDesigner("arItemAdjustment", kAdjustmentKeys, "Item Adjustments") {}

DesignerPtr CreatearItemAdjustment() { return std::make_shared<arItemAdjustment>(); }

void arItemAdjustment::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  FitStockColumns(TLReport()->DataColumns(), {});
}

void arItemAdjustment::ActiveReport_DataInitialize() { Fields().Add("KindName"); }

void arItemAdjustment::ActiveReport_FetchData(bool&) { FillMovementKind(Fields()); }

}  // namespace trellin
