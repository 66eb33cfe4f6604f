// The serial number report's key, row by row, and each number's running balance and status.

#include "reports/stock/arscSerialNumberReport.h"

#include <tuple>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/stock/StockLists.h"

namespace trellin {

namespace {

constexpr ListOrder kSerialOrders[] = {
    {"Serial Number",
     "TransactionLine.SerialNumber,TransactionLine.ItemId,TransactionLine.DateProcess,"
     "TransactionLine.TransactionLineId"},
    {"Item",
     "TransactionLine.ItemId,TransactionLine.SerialNumber,TransactionLine.DateProcess,"
     "TransactionLine.TransactionLineId"},
    {"Date",
     "TransactionLine.DateProcess,TransactionLine.ItemId,TransactionLine.SerialNumber,"
     "TransactionLine.TransactionLineId"},
};

constexpr ListParameter kSerialParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "TransactionLine.SerialNumber",
     .index = 30,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "TransactionLine.ItemId", .index = 19},
    {.kind = ListParameterKind::Standard, .field = "TransactionLine.LocationId", .index = 23},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .field = "TransactionLine.DateProcess"},
    {.kind = ListParameterKind::Option,
     .name = "InStockOnly",
     .caption = "In Stock Only",
     .condition = "TransactionLine.SerialNumber In (SELECT SerialNumber FROM TransactionLine "
                  "WHERE SerialNumber Is Not Null GROUP BY SerialNumber HAVING "
                  "Sum(Quantity)>0)",
     .phrase = "Numbers in stock only"},
};

// A group per number, its item beside it.
constexpr ListGrouping kSerialGroupings[] = {
    {"Serial Number", "TransactionLine.SerialNumber",
     "SELECT TransactionLine.SerialNumber,Item.ItemId+'  '+Item.Description AS Description FROM "
     "TransactionLine INNER JOIN Item ON TransactionLine.ItemId=Item.ItemId WHERE "
     "TransactionLine.SerialNumber Is Not Null GROUP BY TransactionLine.SerialNumber,Item.ItemId,"
     "Item.Description",
     "SerialNumber"},
};

constexpr ListColumn kSerialColumns[] = {
    {"Date", "DateProcess", kColumnDate, "Date", "", 1000, false},
    {"Kind", "KindName", kColumnText, "Kind", "", 1300, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1100, false},
    {"Party", "PartyName", kColumnText, "Party", "", -1, false},
    {"Location", "LocationId", kColumnText, "Location", "", 900, false},
    {"In", "QuantityIn", kColumnNumber, "In", "", 800, false, "#,##0.00;(#,##0.00)"},
    {"Out", "QuantityOut", kColumnNumber, "Out", "", 800, false, "#,##0.00;(#,##0.00)"},
    {"Balance", "Balance", kColumnNumber, "Balance", "", 900, false, "#,##0.00;(#,##0.00)"},
    {"Status", "Status", kColumnText, "Status", "", 1000, false},
};

constexpr ListKey kSerialKeys[] = {{
    .key = "SerialNumbers",
    .base_sql =
        "SELECT TransactionLine.TransactionLineId,TransactionLine.ItemId,"
        "TransactionLine.SerialNumber,TransactionLine.DateProcess,TransactionLine.Type,"
        "Transactions.Reference,OtherParty.Name AS PartyName,TransactionLine.LocationId,"
        "TransactionLine.Quantity,"
        "IIf(TransactionLine.Quantity>0,TransactionLine.Quantity,Null) AS QuantityIn,"
        "IIf(TransactionLine.Quantity<0,-TransactionLine.Quantity,Null) AS QuantityOut"
        " FROM ((TransactionLine INNER JOIN Item ON TransactionLine.ItemId=Item.ItemId) LEFT JOIN "
        "Transactions ON TransactionLine.TransactionId=Transactions.TransactionId) LEFT JOIN "
        "OtherParty ON Transactions.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "Item.Inventory In (2,3) AND TransactionLine.SerialNumber Is Not Null",
    .orders = kSerialOrders,
    .parameters = kSerialParameters,
    .own_groupings = kSerialGroupings,
    .fixed_grouping = "Serial Number",
    .summary = true,
    .columns = kSerialColumns,
}};

// A balance is not added across lines.
constexpr std::string_view kSerialUntotalled[] = {"Balance"};

std::string NumberKey(const Fields& fields) {
  return UCase(StockField(fields, "ItemId").Text()) + "|" +
         UCase(StockField(fields, "SerialNumber").Text());
}

}  // namespace

arscSerialNumberReport::arscSerialNumberReport()
    : ListDesigner("arscSerialNumberReport", kSerialKeys, "Serial Numbers") {}

DesignerPtr CreatearscSerialNumberReport() { return std::make_shared<arscSerialNumberReport>(); }

void arscSerialNumberReport::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  for (std::string_view name : kSerialUntotalled) {
    TLReport()->DataColumns().Item(name).Totalled = false;
  }
}

void arscSerialNumberReport::ActiveReport_ReportStart() {
  numbers_.clear();
  current_.clear();
  balance_ = 0;
  // Every line of the serial and batch items' numbers, through the item index; the latest by
  // date, then by entry, is the number's last movement.
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
      "SELECT TransactionLine.ItemId,TransactionLine.SerialNumber,TransactionLine.Quantity,"
      "TransactionLine.Type,TransactionLine.DateProcess,TransactionLine.TransactionLineId FROM "
      "Item INNER JOIN TransactionLine ON Item.ItemId=TransactionLine.ItemId WHERE "
      "Item.Inventory In (2,3) AND TransactionLine.SerialNumber Is Not Null");
  for (; !rs->Eof(); rs->MoveNext()) {
    Number& n = numbers_[UCase(rs->Value(0).Text()) + "|" + UCase(rs->Value(1).Text())];
    n.on_hand += rs->Value(2).IsNull() ? 0 : rs->Value(2).ToDouble();
    // A line never processed sorts first, as the oldest.
    const std::string date = rs->Value(4).IsNull() ? std::string() : rs->Value(4).ToDate().ToIso();
    const long line = rs->Value(5).ToLong();
    if (std::tie(date, line) >= std::tie(n.last_date, n.last_line)) {
      n.last_date = date;
      n.last_line = line;
      n.last_type = rs->Value(3).IsNull() ? 0 : rs->Value(3).ToLong();
    }
  }
  ListDesigner::ActiveReport_ReportStart();
}

void arscSerialNumberReport::ActiveReport_DataInitialize() {
  for (const char* name : {"KindName", "Balance", "Status"}) Fields().Add(name);
}

void arscSerialNumberReport::ActiveReport_FetchData(bool&) {
  FillMovementKind(Fields());
  const std::string key = NumberKey(Fields());
  if (key != current_) {
    current_ = key;
    balance_ = 0;
  }
  const Variant& quantity = StockField(Fields(), "Quantity");
  balance_ += quantity.IsNull() ? 0 : quantity.ToDouble();
  Fields().Add("Balance").SetValue(Variant(balance_));
  std::string status;
  if (auto found = numbers_.find(key); found != numbers_.end()) {
    const long last = found->second.last_type;
    status = found->second.on_hand > 0.00001                 ? "In stock"
             : last == static_cast<long>(MovementType::Sale) ? "Sold"
                                                             : "Adjusted";
  }
  Fields().Add("Status").SetValue(Variant(status));
}

}  // namespace trellin
