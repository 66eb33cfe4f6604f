// What the stock lists share beyond their rows.

#include "reports/stock/StockLists.h"

#include <stdexcept>

#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/host/Database.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr std::string_view kKindNames[] = {"No stock", "Stock", "Serial", "Batch"};

bool Blank(const Variant& v) { return v.IsNull() || v.IsEmpty() || v.IsMissing(); }

}  // namespace

std::string ItemKindName(const Variant& inventory) {
  if (Blank(inventory)) return {};
  const long code = inventory.ToLong();
  return code >= 0 && code <= 3 ? std::string(kKindNames[code]) : std::string();
}

void AddStockDateAsAt(trellin::Parameters& parameters) {
  const Date current =
      TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateAR(true);
  parameters.AddDate("DateAsAt", current, true, "Date As At", "ARCURRENT", false, "Date As At");
}

Date StockDateAsAt(const trellin::Parameters& parameters) {
  const Variant as_at = parameters.Value("DateAsAt", Variant());
  if (Blank(as_at)) throw std::invalid_argument("Date As At: the report needs a date.");
  return as_at.ToDate().DateOnly();
}

std::string OnHandCondition(const Date& as_at, std::string_view table) {
  const std::string field = table.empty() ? "DateProcess" : std::string(table) + ".DateProcess";
  return "(" + field + "<" + Database::SQLDate(as_at.AddDays(1)) + " OR " + field + " Is Null)";
}

std::string OnHandAtLocationCondition(const Date& as_at) {
  return "(SELECT Sum(TransactionLine.Quantity) FROM TransactionLine WHERE "
         "TransactionLine.ItemId=ItemLocation.ItemId AND "
         "TransactionLine.LocationId=ItemLocation.LocationId AND " +
         OnHandCondition(as_at, "TransactionLine") + ")<>0";
}

std::map<std::string, OnHand, std::less<>> OnHandByItem(const Date& as_at, bool by_location) {
  std::map<std::string, OnHand, std::less<>> on_hand;
  const std::string keys = by_location ? "ItemId,LocationId" : "ItemId";
  const std::string sql = "SELECT " + keys +
                          ",Sum(Quantity) AS Quantity,Sum(ItemCost) AS Value FROM TransactionLine "
                          "WHERE ItemId Is Not Null AND " +
                          OnHandCondition(as_at) + " GROUP BY " + keys;
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
  const int first = by_location ? 2 : 1;
  for (; !rs->Eof(); rs->MoveNext()) {
    std::string key = UCase(rs->Value(0).Text());
    if (by_location) key += "|" + UCase(rs->Value(1).Text());
    OnHand& row = on_hand[key];
    const Variant quantity = rs->Value(first);
    const Variant value = rs->Value(first + 1);
    row.quantity = Blank(quantity) ? 0 : quantity.ToDouble();
    row.value = Blank(value) ? Currency() : value.ToCurrency();
  }
  return on_hand;
}

void FitStockColumns(DataColumns& columns, std::span<const std::string_view> untotalled) {
  if (columns.Exists("Code")) {
    DataColumn& code = columns.Item("Code");
    code.Width = static_cast<float>(TrellinReportGlobals::RequireTrellinReports().ItemCodeWidth());
    code.Visibility = 0;
  }
  for (std::string_view name : untotalled) {
    if (columns.Exists(name)) columns.Item(name).Totalled = false;
  }
}

const Variant& StockField(const Fields& fields, std::string_view name) {
  static const Variant kNull = Variant::Null();
  const ReportField* field = fields.Find(name);
  return field == nullptr ? kNull : field->Value();
}

}  // namespace trellin

namespace trellin {

Currency ItemMoney(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

Prices ItemPrices(Currency price, std::string_view tax_code) {
  const Tax& tax = TrellinReportGlobals::RequireApplication().Tax();
  if (!tax_code.empty() && tax.TaxCategory(tax_code)) {
    return {price - tax.TaxInclusive(price, tax_code), price};
  }
  // The tax to the cent, half away from zero, as the tax list works it.
  const Currency added = Currency::FromDouble(price.ToDouble() * tax.Rate() / 100.0).Round(2);
  return {price, price + added};
}

}  // namespace trellin

namespace trellin {

namespace {

struct MovementKind {
  MovementType type;
  std::string_view name;
};
constexpr MovementKind kMovementKinds[] = {
    {MovementType::Stocktake, "Stocktake"},
    {MovementType::Adjustment, "Adjustment"},
    {MovementType::Revaluation, "Revaluation"},
    {MovementType::CarryCost, "Carry cost"},
    {MovementType::Purchase, "Purchase"},
    {MovementType::PurchaseCredit, "Purchase credit"},
    {MovementType::Sale, "Sale"},
    {MovementType::SaleCredit, "Sale credit"},
};

}  // namespace

std::string MovementKindName(const Variant& type) {
  if (Blank(type)) return {};
  const long code = type.ToLong();
  for (const MovementKind& k : kMovementKinds) {
    if (static_cast<long>(k.type) == code) return std::string(k.name);
  }
  return {};
}

void FillMovementKind(Fields& fields) {
  fields.Add("KindName").SetValue(Variant(MovementKindName(StockField(fields, "Type"))));
}

}  // namespace trellin

namespace trellin {

Currency RoundToStep(Currency value, Currency step) {
  if (step.Raw() <= 0) return value;
  const std::int64_t raw = value.Raw();
  const std::int64_t magnitude = (raw < 0 ? -raw : raw) + step.Raw() / 2;
  const std::int64_t rounded = magnitude / step.Raw() * step.Raw();
  return Currency::FromRaw(raw < 0 ? -rounded : rounded);
}

Variant MarginPercent(Currency price, Currency cost) {
  if (price.Raw() == 0) return Variant::Null();
  return Variant((price - cost).ToDouble() / price.ToDouble() * 100.0);
}

}  // namespace trellin
