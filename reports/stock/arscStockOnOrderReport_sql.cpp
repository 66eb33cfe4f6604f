// The order queries: purchase order lines still expected, and sales order lines still to supply.
// Like lines (same order, item, price, location, department and description) are summed, so
// that a received or supplied twin nets its line down.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/stock/arscStockOnOrderReport.h"

namespace trellin {

namespace {

constexpr StockFilter kPurchaseFilters[] = {
    {"PurchaseOrderLine.ItemId", "Items"},       {"PurchaseOrderLine.LocationId", "Locations"},
    {"PurchaseOrderLine.DeptId", "Departments"}, {"PurchaseOrder.EmployeeId", "Employees"},
    {"Item.ItemCategoryId", "ItemCategories"},   {"Item.ItemTypeId", "ItemTypes"},
    {"PurchaseOrder.OtherPartyId", "Suppliers"}, {"PurchaseOrder.Reference", "Reference"},
};

constexpr StockFilter kSalesFilters[] = {
    {"acBatchTransactionLine.ItemId", "Items"},
    {"acBatchTransactionLine.LocationId", "Locations"},
    {"acBatchTransactionLine.DeptId", "Departments"},
    {"acBatchTransaction.EmployeeId", "Employees"},
    {"Item.ItemCategoryId", "ItemCategories"},
    {"Item.ItemTypeId", "ItemTypes"},
    {"acBatchTransaction.OtherPartyId", "Customers"},
    {"acBatchTransaction.Reference", "Reference"},
};

// clang-format off
constexpr StockGrouping kPurchaseGroupingRows[] = {
    {"Supplier", "PurchaseOrder.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty", "OtherPartyId", ""},
    {"EDA", "PurchaseOrderLine.EstimatedDate", "SELECT DISTINCT EstimatedDate,'' FROM PurchaseOrderLine", "EstimatedDate", ""},
};
constexpr StockGrouping kSalesGroupingRows[] = {
    {"Customer", "acBatchTransaction.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty", "OtherPartyId", ""},
    {"Customer Name", "OtherParty.Name", "SELECT DISTINCT Name,'' FROM OtherParty", "Name", ""},
    {"Transaction Type", "acBatchTransaction.TransactionTypeId", "SELECT TransactionTypeId,Description FROM TransactionType", "TransactionTypeId", ""},
};
// clang-format on

// The orders of each key: choice, ORDER BY, and the description's wording of the choice.
struct OrderChoice {
  const char* choice;
  const char* order;
};

constexpr OrderChoice kPurchaseOrders[] = {
    {"Date", "PurchaseOrder.Date"},
    {"Supplier Code", "PurchaseOrder.OtherPartyId"},
    {"Supplier Name", "OtherParty.Name"},
    {"Reference", "PurchaseOrder.Reference"},
    {"EDA", "PurchaseOrderLine.EstimatedDate"},
};

constexpr OrderChoice kSalesOrders[] = {
    {"Date", "acBatchTransaction.Date"},
    {"Customer Code", "acBatchTransaction.OtherPartyId"},
    {"Customer Name", "OtherParty.Name"},
    {"Reference", "acBatchTransaction.Reference"},
    {"Trans Id", "acBatchTransaction.acBatchTransactionId,acBatchTransactionLine.ItemId"},
};

std::string OrderOf(std::span<const OrderChoice> choices, const std::string& choice,
                    const char* otherwise) {
  for (const OrderChoice& c : choices) {
    if (choice == c.choice) return c.order;
  }
  return otherwise;
}

// Department of `a` like that of `b`: a Null department matches a Null one.
std::string SameDepartment(const std::string& a, const std::string& b) {
  return "(" + a + ".DeptId=" + b + ".DeptId OR (" + a + ".DeptId Is Null AND " + b +
         ".DeptId Is Null))";
}

// The description compared by the database's own rule for text.
std::string SameDescription(const std::string& a, const std::string& b) {
  const bool jet = TrellinReportGlobals::RequireBusinessLayer().Database()->DatabaseType() == 1;
  return " AND " + a + ".Description" + (jet ? " Like " : "=") + b + ".Description";
}

}  // namespace

void arscStockOnOrderReport::BuildPurchaseSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  const std::string decimals = std::to_string(QuantityDecimals());
  const std::string line = "PurchaseOrderLine";
  const std::string same_order_item_place =
      "P.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId AND P.ItemId=PurchaseOrderLine.ItemId "
      "AND P.LocationId=PurchaseOrderLine.LocationId AND " +
      SameDepartment("P", line);
  std::string fields =
      "PurchaseOrderLine.ItemId, PurchaseOrderLine.Description, PurchaseOrder.Date, "
      "PurchaseOrder.Reference, PurchaseOrder.OtherPartyId, PurchaseOrderLine.LocationId, "
      "PurchaseOrderLine.DeptId, PurchaseOrderLine.Quantity, PurchaseOrderLine.UnitPrice, "
      "PurchaseOrderLine.EstimatedDate,Item.SupplierCode";
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(description_, "Items ordered by " + order_by);

  std::string where = "PurchaseOrderLine.TransactionLineId Is Null";
  if (p.Value("IncludeAllLines", false).ToBool()) {
    AppendDescription(description_, "All Item types included");
  } else {
    AppendSQLCondition(where, "Item.Inventory<>0");
  }
  const std::string order_sum = "(SELECT ROUND(Sum(P.Quantity)," + decimals +
                                ") FROM PurchaseOrderLine P WHERE "
                                "P.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId";
  if (p.Value("Filled", false).ToBool()) {
    AppendDescription(description_, "Includes filled orders");
    AppendSQLCondition(where, order_sum + ")<>0");
  } else {
    AppendSQLCondition(where, "(SELECT ROUND(Sum(P.Quantity)," + decimals +
                                  ") FROM PurchaseOrderLine P WHERE " + same_order_item_place +
                                  ")<>0");
  }
  AddFilters(kPurchaseFilters, where, description_);
  AppendDateRangeCondition(where, "PurchaseOrder.Date", p.Value("DateFrom", Variant()),
                           p.Value("DateTo", Variant()), "Purchase Order dates", description_);
  AppendDateRangeCondition(where, "PurchaseOrderLine.EstimatedDate",
                           p.Value("EDADateFrom", Variant()), p.Value("EDADateTo", Variant()),
                           "Estimated Arrival dates", description_);

  std::string order = OrderOf(kPurchaseOrders, order_by, "PurchaseOrderLine.ItemId") +
                      ",PurchaseOrderLine.PurchaseOrderLineId";
  const std::vector<ChosenGrouping> groupings =
      ChosenGroupings(kPurchaseGroupingRows, "PurchaseOrderLine");
  for (const ChosenGrouping& g : groupings) {
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  DefineGroups(groupings);

  sql_ = "SELECT " + fields + ",(SELECT ROUND(Sum(P.Quantity)," + decimals +
         ") FROM PurchaseOrderLine P WHERE P.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId "
         "AND P.ItemId=PurchaseOrderLine.ItemId AND P.UnitPrice=PurchaseOrderLine.UnitPrice AND "
         "P.LocationId=PurchaseOrderLine.LocationId AND " +
         SameDepartment("P", line) + SameDescription("P", line) + ") AS QuantityRemaining" +
         ",(SELECT Sum(P.Value+P.TaxValue) FROM PurchaseOrderLine P WHERE " +
         same_order_item_place + ") AS Total" +
         " FROM OtherParty RIGHT JOIN (PurchaseOrder INNER JOIN (Item INNER JOIN "
         "PurchaseOrderLine ON Item.ItemId = PurchaseOrderLine.ItemId) ON "
         "PurchaseOrder.PurchaseOrderId = PurchaseOrderLine.PurchaseOrderId) ON "
         "OtherParty.OtherPartyId = PurchaseOrder.OtherPartyId" +
         " WHERE " + where + " ORDER BY " + order;
}

void arscStockOnOrderReport::BuildSalesSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  const std::string decimals = std::to_string(QuantityDecimals());
  const std::string line = "acBatchTransactionLine";
  std::string fields =
      "acBatchTransactionLine.acBatchTransactionId,acBatchTransactionLine.ItemId, "
      "acBatchTransactionLine.Description, acBatchTransaction.Date, acBatchTransaction.Reference, "
      "acBatchTransaction.OtherPartyId, acBatchTransactionLine.LocationId, "
      "acBatchTransactionLine.DeptId,acBatchTransactionLine.OrderQuantity, "
      "acBatchTransactionLine.Quantity, acBatchTransactionLine.UnitPrice";
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(description_, "Items ordered by " + order_by);

  std::string where = "acBatchTransaction.Type=90";
  if (!p.Value("IncludeZeroQuantity", false).ToBool()) {
    AppendSQLCondition(where,
                       "(SELECT ROUND(Sum(B.Quantity)," + decimals +
                           ") FROM acBatchTransactionLine B WHERE "
                           "B.acBatchTransactionId=acBatchTransactionLine.acBatchTransactionId AND "
                           "B.ItemId=acBatchTransactionLine.ItemId AND "
                           "B.UnitPrice=acBatchTransactionLine.UnitPrice AND "
                           "B.LocationId=acBatchTransactionLine.LocationId AND " +
                           SameDepartment("B", line) + SameDescription("B", line) + ")<>0");
  }
  AddFilters(kSalesFilters, where, description_);
  AppendDateRangeCondition(where, "acBatchTransaction.Date", p.Value("DateFrom", Variant()),
                           p.Value("DateTo", Variant()), "Sales Order dates", description_);

  std::string order = OrderOf(kSalesOrders, order_by, "acBatchTransactionLine.ItemId");
  const std::vector<ChosenGrouping> groupings =
      ChosenGroupings(kSalesGroupingRows, "acBatchTransactionLine");
  for (const ChosenGrouping& g : groupings) {
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  DefineGroups(groupings);

  sql_ = "SELECT " + fields +
         ",(acBatchTransactionLine.Value+acBatchTransactionLine.TaxValue) AS Total" +
         " FROM OtherParty RIGHT JOIN (acBatchTransaction INNER JOIN (Item INNER JOIN "
         "acBatchTransactionLine ON Item.ItemId = acBatchTransactionLine.ItemId) ON "
         "acBatchTransaction.acBatchTransactionId = acBatchTransactionLine.acBatchTransactionId) "
         "ON OtherParty.OtherPartyId = acBatchTransaction.OtherPartyId" +
         " WHERE " + where + " ORDER BY " + order;
}

}  // namespace trellin
