// The purchase order batch's key, and its orders' headings.

#include "reports/receivables/arcrPurchaseOrdersBatch.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Section.h"
#include "platform/runtime/Format.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/PurchaseOrderLines.h"

namespace trellin {

namespace {

constexpr ListOrder kBatchLineOrder[] = {
    {"Order", "PurchaseOrder.PurchaseOrderId,PurchaseOrderLine.PurchaseOrderLineId"},
};

constexpr ListParameter kOrderBatchParameters[] = {
    {.kind = ListParameterKind::DatePair,
     .name = "Created",
     .caption = "Created",
     .field = "PurchaseOrder.CreatedDate",
     .primary = true},
    {.kind = ListParameterKind::MoneyRange,
     .name = "OrderId",
     .caption = "Order Id",
     .field = "PurchaseOrder.PurchaseOrderId"},
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.OtherPartyId", .index = 33},
    {.kind = ListParameterKind::Standard, .field = "PurchaseOrder.LocationId", .index = 23},
};

// A supplier heads with its name; an order with its reference (the designer writes the rest).
constexpr ListGrouping kOrderBatchGroupings[] = {
    {"Supplier", "PurchaseOrder.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
    {"Order", "PurchaseOrder.PurchaseOrderId",
     "SELECT PurchaseOrderId,Reference FROM PurchaseOrder", "PurchaseOrderId"},
};

constexpr ListColumn kOrderBatchColumns[] = {
    {"Item", "ItemId", kColumnText, "Item", "", 1300, false},
    {"SupplierCode", "SupplierCode", kColumnText, "Supplier Code", "", 1600, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Qty", "Quantity", kColumnNumber, "Qty", "", 1000, false},
    {"Price", "UnitPrice", kColumnMoney, "Price", "", 1300, false},
    {"Value", "Value", kColumnMoney, "Value", "", 1500, false},
};

// The ordered lines only: the twins of goods received are not part of what was ordered.
constexpr ListKey kOrderBatchKeys[] = {{
    .key = "PurchaseOrderBatch",
    .base_sql =
        "SELECT PurchaseOrder.PurchaseOrderId,PurchaseOrder.OtherPartyId,PurchaseOrder.Reference,"
        "PurchaseOrder.Date,PurchaseOrder.DateRequired,PurchaseOrderLine.PurchaseOrderLineId,"
        "PurchaseOrderLine.ItemId,Item.SupplierCode,PurchaseOrderLine.Description,"
        "PurchaseOrderLine.Quantity,PurchaseOrderLine.UnitPrice,PurchaseOrderLine.[Value] FROM "
        "(PurchaseOrder INNER JOIN PurchaseOrderLine ON "
        "PurchaseOrder.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId) LEFT JOIN Item ON "
        "PurchaseOrderLine.ItemId=Item.ItemId",
    .base_where = "PurchaseOrderLine.TransactionLineId Is Null",
    .orders = kBatchLineOrder,
    .parameters = kOrderBatchParameters,
    .own_groupings = kOrderBatchGroupings,
    .fixed_grouping = "Supplier,Order",
    .columns = kOrderBatchColumns,
}};

bool NoDate(const Variant& v) {
  return v.IsNull() || v.IsEmpty() || v.IsMissing() ||
         v.Text().find_first_not_of(' ') == std::string::npos;
}

bool LatestCreated(const trellin::Parameters& p) {
  return NoDate(p.Value("CreatedFrom", Variant::Null())) &&
         NoDate(p.Value("CreatedTo", Variant::Null()));
}

std::string DateText(const Variant& v) {
  return NoDate(v) ? std::string()
                   : Format(v, TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

}  // namespace

arcrPurchaseOrdersBatch::arcrPurchaseOrdersBatch()
    : ListDesigner("arcrPurchaseOrdersBatch", kOrderBatchKeys) {}

DesignerPtr CreatearcrPurchaseOrdersBatch() { return std::make_shared<arcrPurchaseOrdersBatch>(); }

void arcrPurchaseOrdersBatch::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  columns.Item("Qty").Totalled = false;
  columns.Item("Qty").Format = QuantityMask();
  columns.Item("Price").Totalled = false;
}

std::string arcrPurchaseOrdersBatch::ExtraCondition() {
  if (!LatestCreated(TLReport()->Parameters())) return {};
  return "PurchaseOrder.CreatedDate=(SELECT Max(CreatedDate) FROM PurchaseOrder)";
}

void arcrPurchaseOrdersBatch::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  if (!LatestCreated(TLReport()->Parameters())) return;
  if (Control* parameters = FindControl("txtParameters")) {
    std::string description = Description();
    AppendDescription(description, "The orders created last");
    parameters->SetText(description);
  }
}

void arcrPurchaseOrdersBatch::OnFormat(Section& section) {
  ListDesigner::OnFormat(section);
  // Innermost first: the order is level 1.
  if (section.Type() != SectionType::GroupHeader || GroupLevelOf(section, "GroupHeader") != 1) {
    return;
  }
  Control* label = FindControl("ghLabel1");
  if (label == nullptr) return;
  auto field = [this](std::string_view name) {
    const ReportField* f = Fields().Find(name);
    return f == nullptr ? Variant::Null() : f->Value();
  };
  std::string text = "Order " + field("PurchaseOrderId").Text() + "   " +
                     field("Reference").Text() + "   Date " + DateText(field("Date"));
  const std::string required = DateText(field("DateRequired"));
  if (!required.empty()) text += "   Required " + required;
  label->SetCaption(text);
}

}  // namespace trellin
