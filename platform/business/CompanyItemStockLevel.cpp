#include "platform/business/CompanyItemStockLevel.h"

#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

// The kinds of unposted document whose lines hold stock, as stored in acBatchTransactionLine.Type.
enum class OpenDocument : std::int64_t {
  SupplierInvoice = 20,
  SupplierCredit = 21,
  Invoice = 30,
  Credit = 31,
  JobInvoice = 42,
  SalesOrder = 90,
};

std::string CodeKey(std::string_view code) { return UCase(Trim(code)); }
std::string CodeKey(const Variant& code) {
  return code.IsNull() ? std::string() : CodeKey(std::string_view(code.Text()));
}

double Number(const Variant& value) { return value.IsNull() ? 0.0 : value.ToDouble(); }

void Add(StockFigures& total, const StockFigures& part) {
  total.QuantityOnHand += part.QuantityOnHand;
  total.ValueOnHand += part.ValueOnHand;
  total.PurchaseOrders += part.PurchaseOrders;
  total.APOpen += part.APOpen;
  total.AROpen += part.AROpen;
  total.SalesOrdersOnOrder += part.SalesOrdersOnOrder;
  total.SalesOrdersOnOrderHeld += part.SalesOrdersOnOrderHeld;
  total.SalesOrdersToSupply += part.SalesOrdersToSupply;
  total.SalesOrdersToSupplyHeld += part.SalesOrdersToSupplyHeld;
  total.JobInvoicesOnOrder += part.JobInvoicesOnOrder;
  total.JobInvoicesOnOrderHeld += part.JobInvoicesOnOrderHeld;
  total.JobInvoicesToSupply += part.JobInvoicesToSupply;
  total.JobInvoicesToSupplyHeld += part.JobInvoicesToSupplyHeld;
}

}  // namespace

CompanyItemStockLevel::CompanyItemStockLevel(std::shared_ptr<trellin::Database> database)
    : database_(std::move(database)) {}

StockFigures& CompanyItemStockLevel::PlaceOf(const Variant& item, const Variant& location,
                                             const Variant& serial) {
  std::vector<Place>& places = items_[CodeKey(item)];
  const std::string location_key = CodeKey(location);
  const std::string serial_key = CodeKey(serial);
  for (Place& place : places) {
    if (place.location == location_key && place.serial == serial_key) return place.figures;
  }
  places.push_back({location_key, serial_key, {}});
  return places.back().figures;
}

void CompanyItemStockLevel::ReadOnce() {
  if (read_) return;
  ReadOnHand();
  ReadPurchaseOrders();
  ReadOpenDocuments();
  read_ = true;
}

void CompanyItemStockLevel::ReadOnHand() {
  // By item and location only, so that the sums come from the stock lines' covering index;
  // serial numbers are read item by item, when asked for.
  auto rs = database_->Query(
      "SELECT ItemId,LocationId,Sum(Quantity),Sum(ItemCost) FROM TransactionLine WHERE Not "
      "ItemId Is Null GROUP BY ItemId,LocationId");
  for (; !rs->Eof(); rs->MoveNext()) {
    StockFigures& figures = PlaceOf(rs->Value(0), rs->Value(1), Variant::Null());
    figures.QuantityOnHand += Number(rs->Value(2));
    if (!rs->Value(3).IsNull()) figures.ValueOnHand += rs->Value(3).ToCurrency();
  }
}

const std::vector<CompanyItemStockLevel::Place>& CompanyItemStockLevel::SerialsOf(
    const std::string& item) {
  const auto found = serials_.find(item);
  if (found != serials_.end()) return found->second;
  std::vector<Place>& places = serials_[item];
  auto rs = database_->Query(
      "SELECT LocationId,SerialNumber,Sum(Quantity),Sum(ItemCost) FROM TransactionLine WHERE "
      "ItemId=" +
      Database::SQLString(item) + " AND Not SerialNumber Is Null GROUP BY LocationId,SerialNumber");
  for (; !rs->Eof(); rs->MoveNext()) {
    Place place{CodeKey(rs->Value(0)), CodeKey(rs->Value(1)), {}};
    place.figures.QuantityOnHand = Number(rs->Value(2));
    if (!rs->Value(3).IsNull()) place.figures.ValueOnHand = rs->Value(3).ToCurrency();
    places.push_back(std::move(place));
  }
  return places;
}

void CompanyItemStockLevel::ReadPurchaseOrders() {
  auto rs = database_->Query(
      "SELECT ItemId,LocationId,Sum(Quantity) FROM PurchaseOrderLine WHERE Not ItemId Is Null "
      "GROUP BY ItemId,LocationId");
  for (; !rs->Eof(); rs->MoveNext()) {
    PlaceOf(rs->Value(0), rs->Value(1), Variant::Null()).PurchaseOrders += Number(rs->Value(2));
  }
}

void CompanyItemStockLevel::ReadOpenDocuments() {
  auto rs = database_->Query(
      "SELECT ItemId,LocationId,SerialNumber,Type,Hold,Sum(OrderQuantity),Sum(Quantity) FROM "
      "acBatchTransactionLine WHERE Not ItemId Is Null AND Type In (20,21,30,31,42,90) GROUP BY "
      "ItemId,LocationId,SerialNumber,Type,Hold");
  for (; !rs->Eof(); rs->MoveNext()) {
    StockFigures& f = PlaceOf(rs->Value(0), rs->Value(1), rs->Value(2));
    const auto type = static_cast<OpenDocument>(rs->Value(3).ToLong());
    const bool held = !rs->Value(4).IsNull() && rs->Value(4).ToBool();
    const double ordered = Number(rs->Value(5));
    const double quantity = Number(rs->Value(6));
    switch (type) {
      case OpenDocument::SupplierInvoice:
        f.APOpen += quantity;
        break;
      case OpenDocument::SupplierCredit:
        f.APOpen -= quantity;
        break;
      case OpenDocument::Invoice:
        f.AROpen += quantity;
        break;
      case OpenDocument::Credit:
        f.AROpen -= quantity;
        break;
      case OpenDocument::SalesOrder:
        f.SalesOrdersOnOrder += ordered;
        f.SalesOrdersToSupply += quantity;
        if (held) {
          f.SalesOrdersOnOrderHeld += ordered;
          f.SalesOrdersToSupplyHeld += quantity;
        }
        break;
      case OpenDocument::JobInvoice:
        f.JobInvoicesOnOrder += ordered;
        f.JobInvoicesToSupply += quantity;
        if (held) {
          f.JobInvoicesOnOrderHeld += ordered;
          f.JobInvoicesToSupplyHeld += quantity;
        }
        break;
    }
  }
}

StockFigures CompanyItemStockLevel::Load(std::string_view item_id, std::string_view location_id,
                                         std::string_view serial_number) {
  ReadOnce();
  StockFigures total;
  const auto found = items_.find(CodeKey(item_id));
  if (found == items_.end()) return total;
  const std::string location = CodeKey(location_id);
  const std::string serial = CodeKey(serial_number);
  const auto matches = [&](const Place& place) {
    return (location.empty() || place.location == location) &&
           (serial.empty() || place.serial == serial);
  };
  // With a serial number, what is on hand comes from that number's lines; the places read at
  // first use hold every line's sums under no number.
  for (const Place& place : found->second) {
    if (matches(place)) Add(total, place.figures);
  }
  if (!serial.empty()) {
    for (const Place& place : SerialsOf(found->first)) {
      if (matches(place)) Add(total, place.figures);
    }
  }
  return total;
}

double CompanyItemStockLevel::QuantityAvailableAt(std::string_view item_id,
                                                  std::string_view location_id,
                                                  std::string_view serial_number,
                                                  std::optional<Date> date,
                                                  bool exclude_allocated) {
  StockFigures figures = Load(item_id, location_id, serial_number);
  if (date) {
    std::string sql = "SELECT Sum(Quantity) FROM TransactionLine WHERE ItemId=" +
                      Database::SQLString(Trim(item_id)) + " AND (DateProcess<" +
                      Database::SQLDate(date->DateOnly().AddDays(1)) + " OR DateProcess Is Null)";
    if (!Trim(location_id).empty()) {
      sql += " AND LocationId=" + Database::SQLString(Trim(location_id));
    }
    if (!Trim(serial_number).empty()) {
      sql += " AND SerialNumber=" + Database::SQLString(Trim(serial_number));
    }
    auto rs = database_->Query(sql);
    figures.QuantityOnHand = rs->Eof() ? 0.0 : Number(rs->Value(0));
  }
  return figures.QuantityOnHand - figures.AROpen - (exclude_allocated ? figures.Allocated() : 0.0);
}

}  // namespace trellin::business
