// StockLevel: the items and their groups from the stock lines, and each row's figures from the
// business layer's stock levels. Its figures take no date: Date As At only prints.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/stock/arscStockReorderReport.h"

namespace trellin {

namespace {

constexpr StockFilter kLevelFilters[] = {
    {"Item.ItemId", "Items"},
    {"ItemLocation.LocationId", "Locations"},
    {"Item.ItemCategoryId", "ItemCategories"},
    {"Item.ItemTypeId", "ItemTypes"},
    {"Item.SupplierId", "Suppliers"},
    {"ItemLocation.Shelf", "Shelf"},
    {"TransactionLine.SerialNumber", "SerialNumber"},
};

// clang-format off
constexpr StockGrouping kLevelGroupingRows[] = {
    {"SerialNumber", "TransactionLine.SerialNumber", "", "SerialNumber", ""},
    {"Location", "ItemLocation.LocationId", "SELECT LocationId,Description FROM Location", "LocationId", ""},
    {"Shelf", "ItemLocation.Shelf", "SELECT DISTINCT Shelf,'' AS Description FROM ItemLocation WHERE Not Shelf Is Null", "Shelf", "ItemLocation.LocationId"},
    {"Supplier", "Item.SupplierId", "SELECT OtherPartyId AS SupplierId,Name FROM OtherParty", "SupplierId", ""},
};
// clang-format on

// The columns an option flag left unticked hides.
struct OptionColumn {
  const char* option;
  const char* column;
};

constexpr OptionColumn kOptionColumns[] = {
    {"OptionAPOpen", "APOpen"},
    {"OptionAROpen", "AROpen"},
    {"OptionSalesOrders", "SalesOrders"},
    {"OptionJobInvoices", "JobInvoices"},
    {"OptionPurchaseOrders", "PurchaseOrders"},
    {"OptionPurchaseOrders", "ArrivalDate"},
    {"OptionArrivalDate", "ArrivalDate"},
    {"OptionValueOnHand", "ValueOnHand"},
};

// The description line of the sales order (or job invoice) figure in use.
std::string FigureLine(const std::string& documents, bool to_supply, bool less_held) {
  if (to_supply && less_held) return documents + " to Supply less Held";
  if (less_held) return documents + " on Order less Held";
  if (to_supply) return documents + " to Supply";
  return documents + " on Order";
}

std::string TextOf(const Fields& fields, const char* name) {
  const ReportField* field = fields.Find(name);
  if (field == nullptr || field->Value().IsNull() || field->Value().IsEmpty()) return {};
  return Trim(field->Value().Text());
}

}  // namespace

void arscStockReorderReport::BuildLevelSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  const auto flag = [&](const char* name) { return p.Value(name, false).ToBool(); };
  const std::string decimals = std::to_string(QuantityDecimals());
  const std::string quantity_sum = "ROUND(Sum(TransactionLine.Quantity)," + decimals + ")";
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(description_, "Items ordered by " + order_by);
  AppendDescription(description_, "Dated as at " + DateText(p.Value("DateAsAt", Variant())));
  const bool include_zero = flag("IncludeZeroOnHand");
  AppendDescription(description_, include_zero ? "Include Stock with zero on hand"
                                               : "Exclude Stock with zero on hand");

  std::string fields = "Item.ItemId,Item.Description";
  std::string where;
  AppendSQLCondition(where, "Item.Inventory In(1,2,3)");
  std::string order = order_by == "Name" ? "Item.Description" : "Item.ItemId";

  for (const OptionColumn& row : kOptionColumns) {
    if (!flag(row.option)) columns.Item(row.column).Hidden = true;
  }
  if (flag("OptionSalesOrders")) {
    AppendDescription(description_, FigureLine("Sales Orders", flag("OptionSalesOrdersToSupply"),
                                               flag("OptionSalesOrdersLessHeld")));
  }
  if (flag("OptionJobInvoices")) {
    AppendDescription(description_, FigureLine("Job Invoices", flag("OptionJobInvoicesToSupply"),
                                               flag("OptionOptionJobInvoicesLessHeld")));
  }

  const std::vector<ChosenGrouping> groupings = ChosenGroupings(kLevelGroupingRows, "Item");
  for (const ChosenGrouping& g : groupings) {
    if (g.name == "SerialNumber") columns.Item("SerialNumber").Hidden = false;
    if (!g.also_field.empty()) MoveInCommaList(fields, g.also_field, false, false);
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  DefineGroups(groupings);

  if (flag("ExcludeInactiveItems")) {
    AppendSQLCondition(where, "(Item.Active=" + Database::SQLBoolean(true) + ")");
    AppendDescription(description_, "Exclude Inactive Items");
  }
  AddFilters(kLevelFilters, where, description_);

  std::string having;
  if (!include_zero) {
    AppendSQLCondition(having, "(" + quantity_sum + "<>0 OR Sum(TransactionLine.ItemCost)<>0)");
  }
  AddNumberRange(having, quantity_sum, "QuantityOnHandFrom", "QuantityOnHandTo", "Quantity On Hand",
                 description_, QuantityFormat());
  AddNumberRange(having, "Sum(TransactionLine.ItemCost)", "ValueOnHandFrom", "ValueOnHandTo",
                 "Value On Hand", description_,
                 TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0));

  sql_ = "SELECT " + fields +
         " FROM (Item LEFT JOIN TransactionLine ON Item.ItemId = TransactionLine.ItemId) LEFT "
         "JOIN ItemLocation ON (TransactionLine.LocationId = ItemLocation.LocationId) AND "
         "(TransactionLine.ItemId = ItemLocation.ItemId)" +
         " WHERE " + where + " GROUP BY " + fields;
  if (!having.empty()) sql_ += " HAVING " + having;
  sql_ += " ORDER BY " + order;
}

void arscStockReorderReport::FetchLevel() {
  trellin::Parameters& p = TLReport()->Parameters();
  const auto flag = [&](const char* name) { return p.Value(name, false).ToBool(); };
  const std::string item = TextOf(Fields(), "ItemId");
  const std::string location = TextOf(Fields(), "LocationId");
  const StockFigures f = levels_->Load(item, location, TextOf(Fields(), "SerialNumber"));
  Fields()["ValueOnHand"].SetValue(f.ValueOnHand);
  Fields()["PurchaseOrders"].SetValue(f.PurchaseOrders);
  Fields()["QuantityOnHand"].SetValue(f.QuantityOnHand);
  Variant arrival;
  if (flag("OptionArrivalDate")) {
    std::string sql =
        "SELECT MIN(PurchaseOrderLine.EstimatedDate) FROM PurchaseOrder INNER JOIN "
        "PurchaseOrderLine ON PurchaseOrder.PurchaseOrderId = PurchaseOrderLine.PurchaseOrderId "
        "WHERE PurchaseOrderLine.ItemId=" +
        Database::SQLString(item);
    if (!location.empty())
      sql += " AND PurchaseOrderLine.LocationId=" + Database::SQLString(location);
    sql += " HAVING ROUND(Sum(PurchaseOrderLine.Quantity)," + std::to_string(QuantityDecimals()) +
           ")<>0";
    auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
    if (!rs->Eof() && DateGiven(rs->Value(0))) arrival = rs->Value(0).ToDate();
  }
  Fields()["ArrivalDate"].SetValue(arrival);
  Fields()["APOpen"].SetValue(f.APOpen);
  Fields()["AROpen"].SetValue(f.AROpen);
  Variant sales;
  if (flag("OptionSalesOrders")) {
    sales = ChosenOrderFigure(flag("OptionSalesOrdersToSupply"), flag("OptionSalesOrdersLessHeld"),
                              f.SalesOrdersOnOrder, f.SalesOrdersOnOrderHeld, f.SalesOrdersToSupply,
                              f.SalesOrdersToSupplyHeld);
  }
  Fields()["SalesOrders"].SetValue(sales);
  Variant jobs;
  if (flag("OptionJobInvoices")) {
    jobs = ChosenOrderFigure(flag("OptionJobInvoicesToSupply"),
                             flag("OptionOptionJobInvoicesLessHeld"), f.JobInvoicesOnOrder,
                             f.JobInvoicesOnOrderHeld, f.JobInvoicesToSupply,
                             f.JobInvoicesToSupplyHeld);
  }
  Fields()["JobInvoices"].SetValue(jobs);
  Fields()["Allocated"].SetValue(f.Allocated());
  Fields()["QuantityAvailable"].SetValue(f.QuantityAvailable());
}

}  // namespace trellin
