// What the company holds besides its trading: the stocktake under way, fixed assets, budgets,
// unposted batches and orders, and the notes kept on parties, items, jobs and assets.

#include <cmath>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoTrader.h"

namespace trellin::demo {

void Trader::FinishStock() {
  // Today's stocktake at the warehouse is counted but not yet posted: most counts agree, a
  // few are out, so that the variance report has lines.
  DemoTable counts(ctx_.db, "ItemStocktake", {"ItemId", "LocationId", "SerialNumber", "Quantity"});
  for (std::size_t item = 0; item < ctx_.items.size(); ++item) {
    const ItemInfo& info = ctx_.items[item];
    if (info.inventory == 0) continue;
    const StockPlace& place = stock_.At(item, 0);
    if (info.inventory == 2) {
      bool missing = r_.Chance(0.1);
      for (const StockUnit& unit : place.units) {
        if (missing) {
          missing = false;
          continue;
        }
        counts.Insert({info.id, ctx_.locations[0], unit.number, unit.quantity});
      }
      continue;
    }
    const double out = r_.Chance(0.1) ? static_cast<double>(r_.Between(-2, 2)) : 0.0;
    counts.Insert({info.id, ctx_.locations[0], Cell::Null{}, std::max(0.0, place.on_hand + out)});
  }
  // Purchase orders for what is below its reorder level at the warehouse, some partly received:
  // a received line has a negative twin that names the stock line that brought it in.
  DemoTable orders(ctx_.db, "PurchaseOrder",
                   {"PurchaseOrderId", "TransactionTypeId", "OtherPartyId", "Date", "CreatedDate",
                    "DateRequired", "Reference", "LocationId", "EmployeeId", "JobId"});
  DemoTable order_lines(
      ctx_.db, "PurchaseOrderLine",
      {"PurchaseOrderId", "ItemId", "Description", "LocationId", "Quantity", "UnitPrice",
       "Extension", "Value", "TaxCategory", "TaxValue", "EstimatedDate", "TransactionLineId"});
  const Date present = ctx_.calendar.Present();
  std::int64_t order_id = 1;
  for (std::size_t item = 0; item < ctx_.items.size() && order_id <= 40 * ctx_.options.scale;
       item += 3) {
    const ItemInfo& info = ctx_.items[item];
    if (info.inventory == 0) continue;
    const Date date = present.AddDays(-static_cast<int>(r_.Between(0, 20)));
    const std::string& supplier = ctx_.parties[ctx_.suppliers[info.supplier]].id;
    orders.Insert(
        {order_id, "PO", supplier, date, date, date.AddDays(14),
         "PO" + std::to_string(7000 + order_id), "MAIN", "SF",
         order_id % 7 == 0 && !ctx_.jobs.empty() ? Cell(ctx_.jobs.back()) : Cell(Cell::Null{})});
    const double quantity = info.max_reorder;
    const std::int64_t value = ToCents(quantity * static_cast<double>(info.cost));
    order_lines.Insert({order_id, info.id, info.description, "MAIN", quantity, info.cost, value,
                        value, ctx_.facts.standard, ctx_.TaxOn(value), date.AddDays(14),
                        Cell::Null{}});
    const std::int64_t received_line = stock_.At(item, 0).last_purchase_line;
    if (order_id % 3 == 0 && received_line != 0) {
      const double got = std::floor(quantity / 2);
      const std::int64_t got_value = ToCents(got * static_cast<double>(info.cost));
      order_lines.Insert({order_id, info.id, info.description, "MAIN", -got, info.cost, -got_value,
                          -got_value, ctx_.facts.standard, -ctx_.TaxOn(got_value), date.AddDays(14),
                          received_line});
    }
    ++order_id;
  }
}

}  // namespace trellin::demo
