// StockReorder: the item-locations with reorder levels, and how much of each to order, worked
// out on an updatable copy of the rows before the run.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/stock/arscStockReorderReport.h"

namespace trellin {

namespace {

constexpr StockFilter kReorderFilters[] = {
    {"Item.ItemId", "Items"},
    {"ItemLocation.LocationId", "Locations"},
    {"Item.ItemCategoryId", "ItemCategories"},
    {"Item.ItemTypeId", "ItemTypes"},
    {"Item.SupplierId", "Suppliers"},
    {"ItemLocation.Shelf", "Shelf"},
};

// clang-format off
constexpr StockGrouping kReorderGroupingRows[] = {
    {"Supplier", "Item.SupplierId", "SELECT OtherPartyId AS SupplierId,Name FROM OtherParty", "SupplierId", ""},
    {"Location", "ItemLocation.LocationId", "SELECT LocationId,Description FROM Location", "LocationId", ""},
    {"Shelf", "ItemLocation.Shelf", "SELECT DISTINCT Shelf,'' AS Description FROM ItemLocation WHERE Not Shelf Is Null", "Shelf", "ItemLocation.LocationId"},
};
// clang-format on

double NumberOf(const Recordset& rs, int index) {
  const Variant& v = rs.Value(index);
  return v.IsNull() ? 0.0 : v.ToDouble();
}

}  // namespace

void arscStockReorderReport::BuildReorderSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  const auto flag = [&](const char* name) { return p.Value(name, false).ToBool(); };
  const std::string decimals = std::to_string(QuantityDecimals());
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  const Variant as_at = p.Value("DateAsAt", Variant());
  if (!DateGiven(as_at)) throw std::invalid_argument("Date As At: the report needs a date.");
  AppendDescription(description_, "Items ordered by " + order_by);
  AppendDescription(description_, "Dated as at " + DateText(as_at));

  std::string fields =
      "Item.ItemId,Item.Description,ItemLocation.LocationId,ItemLocation.MinReorder,"
      "ItemLocation.MaxReorder";
  if (flag("FillToMaximum")) AppendDescription(description_, "Items Filled to Maximum Level");
  std::string where;
  AppendSQLCondition(where, "(ItemLocation.InUse=" + Database::SQLBoolean(true) +
                                ") AND (ItemLocation.MinReorder<>0 OR ItemLocation.MaxReorder<>0) "
                                "AND (Item.SupplierId Is Not Null)");
  if (flag("ExcludeInactiveItems")) {
    AppendSQLCondition(where, "(Item.Active=" + Database::SQLBoolean(true) + ")");
    AppendDescription(description_, "Exclude Inactive Items");
  }
  if (flag("ExcludeOnOrderQty")) {
    AppendDescription(description_, "On Order quantity excluded from calculation");
  }
  AddFilters(kReorderFilters, where, description_);
  std::string order = order_by == "Name" ? "Item.Description,ItemLocation.LocationId"
                                         : "ItemLocation.ItemId,ItemLocation.LocationId";

  const std::vector<ChosenGrouping> groupings = ChosenGroupings(kReorderGroupingRows, "Item");
  for (const ChosenGrouping& g : groupings) {
    if (!g.also_field.empty()) MoveInCommaList(fields, g.also_field, false, false);
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  DefineGroups(groupings);

  // The two borrowed columns only give the rows two writable number fields.
  sql_ = "SELECT " + fields + ",OtherParty.CustomerDiscRate AS QtyReOrder" +
         ",OtherParty.CustomerDiscRate AS QtyAvailable" + ",(SELECT ROUND(Sum(POL.Quantity)," +
         decimals +
         ") FROM PurchaseOrderLine POL INNER JOIN PurchaseOrder PO ON "
         "POL.PurchaseOrderId=PO.PurchaseOrderId WHERE POL.ItemId=ItemLocation.ItemId AND "
         "POL.LocationId=ItemLocation.LocationId AND PO.Date<" +
         Database::SQLDate(as_at.ToDate().DateOnly().AddDays(1)) +
         " AND (SELECT ROUND(Sum(POL2.Quantity)," + decimals +
         ") FROM  PurchaseOrderLine POL2 WHERE POL2.PurchaseOrderId=PO.PurchaseOrderId)<>0" +
         ") AS QtyOnOrder" +
         " FROM OtherParty RIGHT JOIN (Item INNER JOIN ItemLocation ON "
         "Item.ItemId=ItemLocation.ItemId) ON OtherParty.OtherPartyId=Item.SupplierId" +
         " WHERE " + where + " ORDER BY " + order;
  WorkOutReorder();
}

void arscStockReorderReport::WorkOutReorder() {
  trellin::Parameters& p = TLReport()->Parameters();
  const bool fill = p.Value("FillToMaximum", false).ToBool();
  const bool exclude_on_order = p.Value("ExcludeOnOrderQty", false).ToBool();
  const bool exclude_allocated =
      !TrellinReportGlobals::RequireApplication().Options().AvailableIncludesAllocated();
  rows_ = TrellinReportGlobals::RequireBusinessLayer().Database()->QueryUpdatable(sql_);
  Recordset& rs = *rows_;
  const int item = rs.FieldIndex("ItemId");
  const int location = rs.FieldIndex("LocationId");
  const int minimum = rs.FieldIndex("MinReorder");
  const int maximum = rs.FieldIndex("MaxReorder");
  const int available_field = rs.FieldIndex("QtyAvailable");
  const int reorder_field = rs.FieldIndex("QtyReOrder");
  const int on_order_field = rs.FieldIndex("QtyOnOrder");
  for (; !rs.Eof(); rs.MoveNext()) {
    const double available = levels_->QuantityAvailableAt(
        rs.Value(item).Text(), rs.Value(location).Text(), "", std::nullopt, exclude_allocated);
    rs.SetValue(available_field, available);
    const Variant& on_order = rs.Value(on_order_field);
    const double reorder = ReorderQuantity(
        available, NumberOf(rs, minimum), NumberOf(rs, maximum),
        on_order.IsNull() ? std::nullopt : std::optional<double>(on_order.ToDouble()), fill,
        exclude_on_order);
    rs.SetValue(reorder_field, reorder);
    rs.Update();
    if (reorder <= 0) rs.Delete();
  }
  if (rs.RecordCount() > 0) rs.MoveFirst();
}

}  // namespace trellin
