// The stocktake variance: what was counted against what was on hand at the date, item by item
// (by serial number and by location when the row carries them), and the value of the
// difference. The rows are worked out before the run on an updatable copy of the query.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/stock/arscStockOnOrderReport.h"

namespace trellin {

namespace {

constexpr StockColumn kStocktakeColumns[] = {
    {"Code", "ItemId", "Code", "", kColumnCode, 0, false},
    {"Description", "Description", "Description", "", kColumnText, -1, false},
    {"Shelf", "Shelf", "Shelf", "", kColumnText, 900, true},
    {"SerialNumber", "SerialNumber", "Serial #", "", kColumnText, 3000, true},
    {"QtyOnHand", "QtyOnHand", "Qty On Hand", "", kColumnNumber, 1500, false},
    {"SumOfQuantity", "NewQty", "New Qty", "", kColumnNumber, 1300, false},
    {"QtyAdjust", "QtyAdjust", "Qty Adjust", "", kColumnNumber, 1300, false},
    {"ValueAdjusted", "ValueAdjust", "$Adjust", "", kColumnMoney, 1500, false},
};

constexpr StockFilter kStocktakeFilters[] = {
    {"ItemStocktake.ItemId", "Items"},
    {"ItemStocktake.LocationId", "Locations"},
    {"ItemLocation.Shelf", "Shelf"},
};

constexpr StockGrouping kStocktakeGroupings[] = {
    {"Shelf", "ItemLocation.Shelf",
     "SELECT DISTINCT Shelf,'' AS Description FROM ItemLocation WHERE Not Shelf Is Null", "Shelf",
     ""},
};

double QuantityOf(const Variant& v) { return v.IsNull() ? 0.0 : v.ToDouble(); }

}  // namespace

void arscStockOnOrderReport::RefreshStocktakeParameters() {
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddDate("DateAsAt", Variant(), true, "Date As At", "NOW", false, "Date As At");
  p.AddBoolean("IncludeZeroVariance", false, false, "", false, false, "Include Zero Variance");
  p.AddBoolean("PrintSerialNumber", false, false, "", false, false, "Print Serial Number");
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Description,PLU,Shelf,Serial Number", false,
            "Order By");
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 "Item Type,Item Category,Location,Shelf", false, false, "Groupings");
  CreateStandardParameter(17, p, true);
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(31, p, false);
}

void arscStockOnOrderReport::RefreshStocktakeColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const StockColumn& c : kStocktakeColumns) {
    const bool figure = c.data_type == kColumnNumber || c.data_type == kColumnMoney;
    AddColumn(columns, c, c.data_type == kColumnNumber ? QuantityFormat() : "(auto)", figure);
  }
}

void arscStockOnOrderReport::BuildStocktakeSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  const Variant as_at = p.Value("DateAsAt", Variant());
  if (!DateGiven(as_at)) throw std::invalid_argument("Date As At: the report needs a date.");
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  const bool serials = p.Value("PrintSerialNumber", false).ToBool();
  AppendDescription(description_, "Items ordered by " + order_by);
  AppendDescription(description_, "Dated As At " + DateText(as_at));
  AppendDescription(description_,
                    std::string("Items with zero variance ") +
                        (p.Value("IncludeZeroVariance", false).ToBool() ? "included" : "excluded"));

  std::string fields = "Item.ItemId,Item.Description";
  if (serials) {
    fields += ",ItemStocktake.SerialNumber";
    columns.Item("SerialNumber").Hidden = false;
  }
  std::string order = "Item.ItemId";
  if (order_by == "Shelf") {
    order = "ItemLocation.Shelf";
    columns.Item("Shelf").Hidden = false;
    MoveInCommaList(fields, "ItemLocation.Shelf", false, false);
  } else if (order_by == "Description") {
    order = "Item.Description";
  } else if (order_by == "PLU") {
    order = "Item.PLU";
    MoveInCommaList(fields, "Item.PLU", false, false);
  } else if (order_by == "Serial Number") {
    order = "Item.ItemId,ItemStocktake.SerialNumber";
    columns.Item("SerialNumber").Hidden = false;
    MoveInCommaList(fields, "ItemStocktake.SerialNumber", false, false);
  }
  std::string where;
  AddFilters(kStocktakeFilters, where, description_);
  const std::vector<ChosenGrouping> groupings =
      ChosenGroupings(kStocktakeGroupings, "ItemStocktake");
  for (const ChosenGrouping& g : groupings) {
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  DefineGroups(groupings);
  // The worked columns, typed as they print, filled in before the run.
  const std::string decimals = std::to_string(QuantityDecimals());
  sql_ = "SELECT " + fields + ",ROUND(Sum(ItemStocktake.Quantity)," + decimals +
         ") AS SumOfQuantity,ROUND(Sum(ItemStocktake.Quantity)," + decimals +
         ") AS QtyOnHand,ROUND(Sum(ItemStocktake.Quantity)," + decimals +
         ") AS QtyAdjust,Min(Item.CostPrice) AS ValueAdjust" +
         " FROM ItemLocation INNER JOIN (Item INNER JOIN ItemStocktake ON Item.ItemId = "
         "ItemStocktake.ItemId) ON (ItemLocation.LocationId = ItemStocktake.LocationId) AND "
         "(ItemLocation.ItemId = ItemStocktake.ItemId)" +
         (where.empty() ? std::string() : " WHERE " + where) + " GROUP BY " + fields +
         " ORDER BY " + order;
  WorkOutVariances(as_at.ToDate().DateOnly());
}

void arscStockOnOrderReport::WorkOutVariances(Date as_at) {
  trellin::Parameters& p = TLReport()->Parameters();
  const bool keep_zero = p.Value("IncludeZeroVariance", false).ToBool();
  // Without a location on the row, on hand is where the Locations list says (everywhere when
  // it is empty).
  std::string locations;
  std::string ignored;
  AppendListParameterCondition(locations, "TransactionLine.LocationId", "Locations", p, ignored,
                               kRangeText);
  BusinessLayer& business = TrellinReportGlobals::RequireBusinessLayer();
  auto database = business.Database();
  objects_ = business.CreateObjects();
  std::unique_ptr<ItemCosting> costing =
      objects_->CreateItemCosting(TrellinReportGlobals::RequireApplication().Tax());
  rows_ = database->QueryUpdatable(sql_);
  Recordset& rs = *rows_;
  const int item = rs.FieldIndex("ItemId");
  const int location = rs.FieldIndex("LocationId");
  const int serial = rs.FieldIndex("SerialNumber");
  const int counted = rs.FieldIndex("SumOfQuantity");
  const int on_hand_field = rs.FieldIndex("QtyOnHand");
  const int adjust_field = rs.FieldIndex("QtyAdjust");
  const int value_field = rs.FieldIndex("ValueAdjust");
  const std::string decimals = std::to_string(QuantityDecimals());
  for (; !rs.Eof(); rs.MoveNext()) {
    const std::string item_id = rs.Value(item).Text();
    const Variant row_location = location >= 0 ? rs.Value(location) : Variant::Null();
    const Variant row_serial = serial >= 0 ? rs.Value(serial) : Variant::Null();
    std::string sql = "SELECT ROUND(Sum(TransactionLine.Quantity)," + decimals +
                      ") AS SumOfQuantity,Sum(TransactionLine.ItemCost) AS SumOfItemCost FROM "
                      "TransactionLine WHERE TransactionLine.ItemId=" +
                      Database::SQLString(item_id) + " AND TransactionLine.DateProcess<" +
                      Database::SQLDate(as_at.AddDays(1));
    if (!row_serial.IsNull() && !Trim(row_serial.Text()).empty()) {
      sql += " AND TransactionLine.SerialNumber=" + Database::SQLString(row_serial.Text());
    }
    if (!row_location.IsNull()) {
      sql += " AND TransactionLine.LocationId=" + Database::SQLString(row_location.Text());
    } else if (!locations.empty()) {
      sql += " AND " + locations;
    }
    auto on_hand = database->Query(sql);
    const double q = on_hand->Eof() ? 0.0 : QuantityOf(on_hand->Value(0));
    const Currency c =
        on_hand->Eof() || on_hand->Value(1).IsNull() ? Currency() : on_hand->Value(1).ToCurrency();
    const double adjust = QuantityOf(rs.Value(counted)) - q;
    Currency value;
    if (q != 0) {
      value = Currency::FromDouble(c.ToDouble() / q * adjust).Round(2);
    } else if (adjust != 0) {
      value = costing
                  ->Cost(item_id, adjust, as_at, row_location.IsNull() ? "" : row_location.Text(),
                         row_serial.IsNull() ? "" : row_serial.Text(), false)
                  .Value;
    }
    rs.SetValue(on_hand_field, q);
    rs.SetValue(adjust_field, adjust);
    rs.SetValue(value_field, value);
    rs.Update();
    if (!keep_zero && adjust == 0) rs.Delete();
  }
  if (rs.RecordCount() > 0) rs.MoveFirst();
}

}  // namespace trellin
