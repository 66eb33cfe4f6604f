// The purchase order list's two rows (orders, and their lines under ShowLines), and each row's
// figures from its order's lines.

#include "reports/receivables/arcrPurchaseOrderList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kOrderListOrders[] = {
    {"Number", "PurchaseOrder.PurchaseOrderId"},
    {"Date", "PurchaseOrder.Date,PurchaseOrder.PurchaseOrderId"},
    {"Required", "PurchaseOrder.DateRequired,PurchaseOrder.PurchaseOrderId"},
    {"Supplier", "PurchaseOrder.OtherPartyId,PurchaseOrder.PurchaseOrderId"},
    {"Reference", "PurchaseOrder.Reference,PurchaseOrder.PurchaseOrderId"},
};

// The same orders, the lines of an order in the order they were keyed.
constexpr ListOrder kOrderLineOrders[] = {
    {"Number", "PurchaseOrder.PurchaseOrderId,PurchaseOrderLine.PurchaseOrderLineId"},
    {"Date",
     "PurchaseOrder.Date,PurchaseOrder.PurchaseOrderId,PurchaseOrderLine.PurchaseOrderLineId"},
    {"Required",
     "PurchaseOrder.DateRequired,PurchaseOrder.PurchaseOrderId,PurchaseOrderLine."
     "PurchaseOrderLineId"},
    {"Supplier",
     "PurchaseOrder.OtherPartyId,PurchaseOrder.PurchaseOrderId,PurchaseOrderLine."
     "PurchaseOrderLineId"},
    {"Reference",
     "PurchaseOrder.Reference,PurchaseOrder.PurchaseOrderId,PurchaseOrderLine.PurchaseOrderLineId"},
};

constexpr ListParameter kOrderListParameters[] = {
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.OtherPartyId", .index = 33},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .field = "PurchaseOrder.Date",
     .primary = true},
    {.kind = ListParameterKind::DatePair,
     .name = "Required",
     .caption = "Required",
     .field = "PurchaseOrder.DateRequired"},
    // On the ordered lines: an order holding a picked item is listed.
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrderLine.ItemId", .index = 17},
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.LocationId", .index = 23},
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.JobId", .index = 22},
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.EmployeeId", .index = 15},
    {.kind = ListParameterKind::PickList,
     .name = "References",
     .caption = "References",
     .field = "PurchaseOrder.Reference",
     .list_sql = "SELECT DISTINCT Reference FROM PurchaseOrder ORDER BY Reference",
     .key_field = "Reference"},
    {.kind = ListParameterKind::Option,
     .name = "OutstandingOnly",
     .caption = "Outstanding orders only",
     .condition = kPurchaseOrderStillOpen,
     .phrase = "Outstanding orders only"},
    {.kind = ListParameterKind::Option, .name = "ShowLines", .caption = "Show lines"},
};

constexpr std::string_view kOrderLineNames[] = {
    "Item", "Description", "OrderedQty", "ReceivedQty", "OutstandingQty", "UnitPrice", "Expected"};

constexpr ListColumn kOrderListColumns[] = {
    {"OrderNo", "PurchaseOrderId", kColumnText, "Order No", "", 800, false},
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Required", "DateRequired", kColumnDate, "Required", "", 1000, false},
    {"Supplier", "OtherPartyId", kColumnText, "Supplier", "", 1250, false},
    {"Name", "Name", kColumnText, "Name", "", -1, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1000, false},
    {"InternalRef", "InternalReference", kColumnText, "Internal Ref", "", 1100, true},
    {"Location", "LocationId", kColumnText, "Location", "", 900, true},
    {"Job", "JobId", kColumnText, "Job", "", 900, true},
    {"Item", "ItemId", kColumnText, "Item", "", 1100, true},
    {"Description", "Description", kColumnText, "Description", "", 2400, true},
    {"OrderedQty", "OrderedQty", kColumnNumber, "Ordered", "", 800, true},
    {"ReceivedQty", "ReceivedQty", kColumnNumber, "Received", "", 800, true},
    {"OutstandingQty", "OutstandingQty", kColumnNumber, "Outstanding qty", "Out qty", 900, true},
    {"UnitPrice", "UnitPrice", kColumnMoney, "Unit Price", "", 1000, true},
    {"Expected", "EstimatedDate", kColumnDate, "Expected", "", 1000, true},
    {"Ordered", "Ordered", kColumnMoney, "Ordered", "", 1200, false},
    {"Received", "Received", kColumnMoney, "Received", "", 1200, false},
    {"Outstanding", "Outstanding", kColumnMoney, "Outstanding", "", 1200, false},
    {"Status", "Status", kColumnText, "Status", "", 1200, false},
};

// An order's row is distinct over its ordered lines, so that Items can pick the orders holding
// them; the twins of received goods are never rows.
constexpr ListKey kOrderListKeys[] = {
    {.key = "PurchaseOrderList",
     .base_sql =
         "SELECT DISTINCT PurchaseOrder.PurchaseOrderId,PurchaseOrder.Date,"
         "PurchaseOrder.DateRequired,PurchaseOrder.OtherPartyId,OtherParty.Name,"
         "PurchaseOrder.Reference,PurchaseOrder.InternalReference,PurchaseOrder.LocationId,"
         "PurchaseOrder.JobId,PurchaseOrder.EmployeeId FROM (PurchaseOrder LEFT JOIN "
         "PurchaseOrderLine ON PurchaseOrder.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId) "
         "LEFT JOIN OtherParty ON PurchaseOrder.OtherPartyId=OtherParty.OtherPartyId",
     .base_where = "PurchaseOrderLine.TransactionLineId Is Null",
     .orders = kOrderListOrders,
     .parameters = kOrderListParameters,
     .groupings = "Supplier,Location,Job,Employee,Reference",
     .grouping_table = "PurchaseOrder",
     .columns = kOrderListColumns},
};

constexpr ListKey kOrderLineKey = {
    .key = "PurchaseOrderList",
    .base_sql =
        "SELECT PurchaseOrder.PurchaseOrderId,PurchaseOrder.Date,PurchaseOrder.DateRequired,"
        "PurchaseOrder.OtherPartyId,OtherParty.Name,PurchaseOrder.Reference,"
        "PurchaseOrder.InternalReference,PurchaseOrder.LocationId,PurchaseOrder.JobId,"
        "PurchaseOrder.EmployeeId,PurchaseOrderLine.PurchaseOrderLineId,PurchaseOrderLine.ItemId,"
        "PurchaseOrderLine.Description,PurchaseOrderLine.UnitPrice,"
        "PurchaseOrderLine.EstimatedDate FROM (PurchaseOrder INNER JOIN PurchaseOrderLine ON "
        "PurchaseOrder.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId) LEFT JOIN OtherParty ON "
        "PurchaseOrder.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "PurchaseOrderLine.TransactionLineId Is Null",
    .orders = kOrderLineOrders,
    .parameters = kOrderListParameters,
    .groupings = "Supplier,Location,Job,Employee,Reference",
    .grouping_table = "PurchaseOrder",
    .columns = kOrderListColumns};

long LongOf(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  if (field == nullptr || field->Value().IsNull() || field->Value().IsEmpty()) return 0;
  return static_cast<long>(field->Value().ToLong());
}

}  // namespace

arcrPurchaseOrderList::arcrPurchaseOrderList()
    : ListDesigner("arcrPurchaseOrderList", kOrderListKeys) {}

DesignerPtr CreatearcrPurchaseOrderList() { return std::make_shared<arcrPurchaseOrderList>(); }

bool arcrPurchaseOrderList::ShowLines() const {
  return TLReport() && TLReport()->Parameters().Value("ShowLines", false).ToBool();
}

const ListKey& arcrPurchaseOrderList::Key() const {
  const ListKey& orders = ListDesigner::Key();
  return ShowLines() ? kOrderLineKey : orders;
}

void arcrPurchaseOrderList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  for (const char* name : {"OrderedQty", "ReceivedQty", "OutstandingQty"}) {
    columns.Item(name).Totalled = false;
    columns.Item(name).Format = QuantityMask();
  }
  columns.Item("UnitPrice").Totalled = false;
}

void arcrPurchaseOrderList::ActiveReport_ReportStart() {
  if (ShowLines()) {
    DataColumns& columns = TLReport()->DataColumns();
    if (columns.Count() == 0) RefreshDataColumns();
    for (std::string_view name : kOrderLineNames) columns.Item(name).Hidden = false;
    // Room for the lines: the order's name and dates stay in the pick of columns.
    for (const char* name : {"Name", "Required"}) columns.Item(name).Hidden = true;
  }
  ListDesigner::ActiveReport_ReportStart();
  lines_.Read(*TrellinReportGlobals::RequireBusinessLayer().Database(),
              ListKeysSubquery(SQL(), "PurchaseOrder.PurchaseOrderId"));
}

void arcrPurchaseOrderList::ActiveReport_DataInitialize() {
  for (const char* name : {"OrderedQty", "ReceivedQty", "OutstandingQty", "Ordered", "Received",
                           "Outstanding", "Status"}) {
    Fields().Add(name);
  }
}

void arcrPurchaseOrderList::ActiveReport_FetchData(bool&) {
  const long order = LongOf(Fields(), "PurchaseOrderId");
  OrderedLine figures = lines_.Order(order);
  if (ShowLines()) {
    const OrderedLine* line = lines_.Line(LongOf(Fields(), "PurchaseOrderLineId"));
    figures = line == nullptr ? OrderedLine{} : *line;
    Fields().Item("OrderedQty").SetValue(Variant(figures.ordered));
    Fields().Item("ReceivedQty").SetValue(Variant(figures.received));
    Fields().Item("OutstandingQty").SetValue(Variant(figures.Outstanding()));
  }
  Fields().Item("Ordered").SetValue(Variant(figures.ordered_value));
  Fields().Item("Received").SetValue(Variant(figures.received_value));
  Fields().Item("Outstanding").SetValue(Variant(figures.OutstandingValue()));
  Fields().Item("Status").SetValue(Variant(std::string(OrderStatusText(lines_.StatusOf(order)))));
}

}  // namespace trellin
