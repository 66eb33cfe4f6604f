#pragma once
// What the stock lists on the list base share: the item's kind by its Inventory code, the date
// their on-hand figures run to, one read of every item's on hand at that date, and the column
// touches the list rows cannot say (the item code's width, the money columns left untotalled).

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "core/ListDesigner.h"
#include "core/host/DataColumns.h"
#include "core/host/Fields.h"
#include "core/host/Parameters.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"

namespace trellin {

// `Item.Inventory`: which kind of stock is kept of an item.
enum class ItemKind : std::int16_t { NoStock = 0, Stock = 1, Serial = 2, Batch = 3 };

// "No stock", "Stock", "Serial", "Batch"; "" for a code outside them.
[[nodiscard]] std::string ItemKindName(const Variant& inventory);

// The "Kind" pick-list: the four kinds as a constant union, tested on `Item.Inventory`.
inline constexpr std::string_view kItemKindsSql =
    "SELECT 0 AS Kind,'No stock' AS Description FROM Configuration UNION SELECT 1 AS Kind,'Stock' "
    "AS Description FROM Configuration UNION SELECT 2 AS Kind,'Serial' AS Description FROM "
    "Configuration UNION SELECT 3 AS Kind,'Batch' AS Description FROM Configuration ORDER BY Kind";

// Adds "DateAsAt", defaulting to the receivables' current date (ARCURRENT), as the stock status
// does.
void AddStockDateAsAt(trellin::Parameters& parameters);

// DateAsAt's value; throws std::invalid_argument "Date As At: the report needs a date." when
// blank.
[[nodiscard]] Date StockDateAsAt(const trellin::Parameters& parameters);

// The condition that keeps the stock lines counted at `as_at`: processed on or before it, or
// never processed.
[[nodiscard]] std::string OnHandCondition(const Date& as_at, std::string_view table = "");

// The condition that keeps an `ItemLocation` row whose item has anything on hand there at
// `as_at`.
[[nodiscard]] std::string OnHandAtLocationCondition(const Date& as_at);

struct OnHand {
  double quantity = 0;
  Currency value;
};

// Every item's quantity and value on hand at `as_at`, by item code upper-cased, from one grouped
// query; with `by_location` keyed "ITEM|LOCATION" per location instead. Needs the globals.
[[nodiscard]] std::map<std::string, OnHand, std::less<>> OnHandByItem(const Date& as_at,
                                                                      bool by_location = false);

// The item code column ("Code") at the company's item code width and as the row's code; the
// columns named in `untotalled` are left out of the totals (prices are not summed).
void FitStockColumns(DataColumns& columns, std::span<const std::string_view> untotalled);

// The value of the row's field `name`; Null when the row has no such field.
[[nodiscard]] const Variant& StockField(const Fields& fields, std::string_view name);

}  // namespace trellin

namespace trellin {

// An item's price without and with tax. A price with a tax-type code the tax list knows has the
// tax of that category in it; one without is before tax, which the company's rate is added to.
struct Prices {
  Currency exclusive;
  Currency inclusive;
};
[[nodiscard]] Prices ItemPrices(Currency price, std::string_view tax_code);

// How many user-defined fields an item has (`Item.UserDefined1` to 20).
inline constexpr int kItemUserFieldCount = 20;

// A money field's value; zero for Null or empty.
[[nodiscard]] Currency ItemMoney(const Variant& value);

}  // namespace trellin

namespace trellin {

// `TransactionLine.Type` of a stock movement.
enum class MovementType : std::int16_t {
  Stocktake = 11,
  Adjustment = 13,
  Revaluation = 14,
  CarryCost = 18,
  Purchase = 20,
  PurchaseCredit = 21,
  Sale = 30,
  SaleCredit = 31,
};

// "Purchase", "Sale credit", "Stocktake", ...; "" for a line type that moves no stock.
[[nodiscard]] std::string MovementKindName(const Variant& type);

// Adds the field "KindName" to `fields`, named from the row's "Type".
void FillMovementKind(Fields& fields);

// The stock lists' default period: the receivables' current month to its current date.
inline constexpr const char* kStockPeriodStart = "ARCURRENT-1E+1D";
inline constexpr const char* kStockPeriodEnd = "ARCURRENT";

}  // namespace trellin

namespace trellin {

// The stock lines of stock items, each with its item and, when it has one, its document.
inline constexpr std::string_view kMovementFrom =
    " FROM (TransactionLine INNER JOIN Item ON TransactionLine.ItemId=Item.ItemId) LEFT JOIN "
    "Transactions ON TransactionLine.TransactionId=Transactions.TransactionId";

// The movement lists' groupings, each on the table that holds it.
inline constexpr ListGrouping kMovementGroupings[] = {
    {"Item", "TransactionLine.ItemId", "SELECT ItemId,Description FROM Item", "ItemId"},
    {"Location", "TransactionLine.LocationId", "SELECT LocationId,Description FROM Location",
     "LocationId"},
    {"Item Category", "Item.ItemCategoryId", "SELECT ItemCategoryId,Description FROM ItemCategory",
     "ItemCategoryId"},
    {"Item Type", "Item.ItemTypeId", "SELECT ItemTypeId,Description FROM ItemType", "ItemTypeId"},
    {"Transaction Type", "Transactions.TransactionTypeId",
     "SELECT TransactionTypeId,Description FROM TransactionType", "TransactionTypeId"},
};

// "Dated": the stock period, tested on the line's process date.
inline constexpr ListParameter kMovementDated = {.kind = ListParameterKind::DatePair,
                                                 .name = "Dated",
                                                 .caption = "Dated",
                                                 .field = "TransactionLine.DateProcess",
                                                 .primary = true,
                                                 .from_default = kStockPeriodStart,
                                                 .to_default = kStockPeriodEnd};

}  // namespace trellin

namespace trellin {

// `value` to the nearest multiple of `step`, a half step away from zero; `value` itself for a
// step of zero or less.
[[nodiscard]] Currency RoundToStep(Currency value, Currency step);

// (price - cost) / price as a percentage; Null for a price of zero.
[[nodiscard]] Variant MarginPercent(Currency price, Currency cost);

}  // namespace trellin
