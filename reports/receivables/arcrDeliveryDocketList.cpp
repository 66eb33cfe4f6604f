// The delivery docket list's key, and each receipt's figures from its order's lines.

#include "reports/receivables/arcrDeliveryDocketList.h"

#include "core/TrellinReportGlobals.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kDocketOrders[] = {
    {"Date", "Transactions.Date,PurchaseOrderLine.PurchaseOrderLineId"},
    {"Supplier",
     "PurchaseOrder.OtherPartyId,Transactions.Date,PurchaseOrderLine.PurchaseOrderLineId"},
    {"Order", "PurchaseOrder.PurchaseOrderId,PurchaseOrderLine.PurchaseOrderLineId"},
};

constexpr ListParameter kDocketParameters[] = {
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.OtherPartyId", .index = 33},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Received",
     .field = "Transactions.Date",
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrderLine.ItemId", .index = 17},
    {.kind = ListParameterKind::Standard, .field = "TransactionLine.LocationId", .index = 23},
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.JobId", .index = 22},
};

// An order heads its group with its number and reference.
constexpr ListGrouping kDocketGroupings[] = {
    {"Order", "PurchaseOrder.PurchaseOrderId",
     "SELECT PurchaseOrderId,Reference FROM PurchaseOrder", "PurchaseOrderId"},
};

constexpr ListColumn kDocketColumns[] = {
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Supplier", "OtherPartyId", kColumnText, "Supplier", "", 1250, false},
    {"OrderNo", "PurchaseOrderId", kColumnText, "Order No", "", 800, false},
    {"SupplierRef", "Reference", kColumnText, "Supplier Ref", "", 1300, false},
    {"Item", "ItemId", kColumnText, "Item", "", 1100, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Qty", "Qty", kColumnNumber, "Qty", "", 900, false},
    {"Location", "LocationId", kColumnText, "Location", "", 900, false},
    {"Value", "ReceivedValue", kColumnMoney, "Value", "", 1300, false},
    {"StillOnOrder", "StillOnOrder", kColumnNumber, "Still on order", "On order", 1100, false},
};

constexpr ListKey kDocketKeys[] = {{
    .key = "DeliveryDocketList",
    .base_sql =
        "SELECT PurchaseOrderLine.PurchaseOrderLineId,Transactions.Date,"
        "PurchaseOrder.OtherPartyId,PurchaseOrder.PurchaseOrderId,Transactions.Reference,"
        "PurchaseOrderLine.ItemId,PurchaseOrderLine.Description,PurchaseOrderLine.Quantity,"
        "TransactionLine.LocationId,PurchaseOrderLine.[Value] FROM ((PurchaseOrder INNER JOIN "
        "PurchaseOrderLine ON PurchaseOrder.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId) "
        "INNER JOIN TransactionLine ON "
        "PurchaseOrderLine.TransactionLineId=TransactionLine.TransactionLineId) LEFT JOIN "
        "Transactions ON TransactionLine.TransactionId=Transactions.TransactionId",
    .orders = kDocketOrders,
    .parameters = kDocketParameters,
    .groupings = "Supplier,Order",
    .grouping_table = "PurchaseOrder",
    .own_groupings = kDocketGroupings,
    .columns = kDocketColumns,
}};

double QuantityField(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  if (field == nullptr || field->Value().IsNull() || field->Value().IsEmpty()) return 0;
  return field->Value().ToDouble();
}

}  // namespace

arcrDeliveryDocketList::arcrDeliveryDocketList()
    : ListDesigner("arcrDeliveryDocketList", kDocketKeys) {}

DesignerPtr CreatearcrDeliveryDocketList() { return std::make_shared<arcrDeliveryDocketList>(); }

void arcrDeliveryDocketList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  columns.Item("Qty").Format = QuantityMask();
  columns.Item("StillOnOrder").Format = QuantityMask();
  columns.Item("StillOnOrder").Totalled = false;
}

void arcrDeliveryDocketList::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  lines_.Read(*TrellinReportGlobals::RequireBusinessLayer().Database(),
              ListKeysSubquery(SQL(), "PurchaseOrder.PurchaseOrderId"));
}

void arcrDeliveryDocketList::ActiveReport_DataInitialize() {
  for (const char* name : {"Qty", "ReceivedValue", "StillOnOrder"}) Fields().Add(name);
}

void arcrDeliveryDocketList::ActiveReport_FetchData(bool&) {
  // A receipt twin is stored negative: what came in shows positive.
  Fields().Item("Qty").SetValue(Variant(-QuantityField(Fields(), "Quantity")));
  const ReportField* value = Fields().Find("Value");
  const Currency stored =
      value == nullptr || value->Value().IsNull() ? Currency() : value->Value().ToCurrency();
  Fields().Item("ReceivedValue").SetValue(Variant(-stored));
  const ReportField* line = Fields().Find("PurchaseOrderLineId");
  Fields()
      .Item("StillOnOrder")
      .SetValue(Variant(line == nullptr || line->Value().IsNull()
                            ? 0.0
                            : lines_.StillOnOrder(static_cast<long>(line->Value().ToLong()))));
}

}  // namespace trellin
