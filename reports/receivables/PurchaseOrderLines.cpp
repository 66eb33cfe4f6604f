// The ordered lines of a run's orders and what came in against each.

#include "reports/receivables/PurchaseOrderLines.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "core/TrellinReportGlobals.h"
#include "core/host/Recordset.h"

namespace trellin {

namespace {

// Quantities are kept to four places, as the orders' sums are rounded.
double RoundedQuantity(double quantity) { return std::round(quantity * 10000.0) / 10000.0; }

// What makes two lines of an order alike: a twin matches its ordered line on all of these.
using OrderLikeKey =
    std::tuple<long, std::string, std::string, std::string, std::int64_t, std::string>;

struct OrderLineRead {
  long id = 0;
  double quantity = 0;
  Currency value;
  bool twin = false;
};

}  // namespace

std::string QuantityMask() {
  const int decimals = TrellinReportGlobals::RequireApplication().Options().QuantityDecimals();
  const std::string places = decimals > 0 ? "." + std::string(decimals, '0') : "";
  return "#,##0" + places + ";(#,##0" + places + ")";
}

std::string_view OrderStatusText(OrderStatus status) {
  switch (status) {
    case OrderStatus::Open:
      return "Open";
    case OrderStatus::PartReceived:
      return "Part received";
    case OrderStatus::Received:
      return "Received";
  }
  return {};
}

void PurchaseOrderLines::Read(Database& db, const std::string& order_ids) {
  lines_.clear();
  orders_.clear();
  still_.clear();
  auto rs = db.Query(
      "SELECT PurchaseOrderLineId,PurchaseOrderId,ItemId,LocationId,DeptId,UnitPrice,Description,"
      "Quantity,[Value],TransactionLineId FROM PurchaseOrderLine WHERE PurchaseOrderId In (" +
      order_ids + ") ORDER BY PurchaseOrderId,PurchaseOrderLineId");
  std::map<OrderLikeKey, std::vector<OrderLineRead>> alike;
  for (; !rs->Eof(); rs->MoveNext()) {
    OrderLineRead line;
    line.id = static_cast<long>(rs->Value(0).ToLong());
    const long order = static_cast<long>(rs->Value(1).ToLong());
    line.quantity = rs->Value(7).IsNull() ? 0.0 : rs->Value(7).ToDouble();
    line.value = rs->Value(8).IsNull() ? Currency() : rs->Value(8).ToCurrency();
    line.twin = !rs->Value(9).IsNull();
    const OrderLikeKey key{order,
                           rs->Value(2).Text(),
                           rs->Value(3).Text(),
                           rs->Value(4).Text(),
                           rs->Value(5).IsNull() ? 0 : rs->Value(5).ToCurrency().Raw(),
                           rs->Value(6).Text()};
    alike[key].push_back(line);
    orders_[order].order = order;
  }
  for (const auto& [key, group] : alike) {
    double came = 0;
    Currency came_value;
    double expected = 0;
    for (const OrderLineRead& line : group) expected += line.quantity;
    std::vector<const OrderLineRead*> ordered;
    for (const OrderLineRead& line : group) {
      still_[line.id] = RoundedQuantity(expected);
      if (line.twin) {
        came -= line.quantity;
        came_value -= line.value;
      } else {
        ordered.push_back(&line);
      }
    }
    const long order = std::get<0>(key);
    OrderedLine& sums = orders_[order];
    for (std::size_t i = 0; i < ordered.size(); ++i) {
      const OrderLineRead& line = *ordered[i];
      OrderedLine out;
      out.order = order;
      out.ordered = line.quantity;
      out.ordered_value = line.value;
      const bool last = i + 1 == ordered.size();
      const double take = last ? came : std::clamp(came, 0.0, std::max(line.quantity, 0.0));
      // The value goes with the quantity: the part of what came in that this line takes.
      const Currency take_value = last || came == 0 ? (last ? came_value : Currency())
                                                    : came_value.Times(take / came).Round(2);
      out.received = RoundedQuantity(take);
      out.received_value = take_value;
      came -= take;
      came_value -= take_value;
      lines_[line.id] = out;
      sums.ordered += out.ordered;
      sums.received += out.received;
      sums.ordered_value += out.ordered_value;
      sums.received_value += out.received_value;
    }
    // Goods received against no ordered line still count as received on the order.
    if (ordered.empty()) {
      sums.received += came;
      sums.received_value += came_value;
    }
  }
  for (auto& [id, sums] : orders_) {
    sums.ordered = RoundedQuantity(sums.ordered);
    sums.received = RoundedQuantity(sums.received);
  }
}

const OrderedLine* PurchaseOrderLines::Line(long line_id) const {
  const auto found = lines_.find(line_id);
  return found == lines_.end() ? nullptr : &found->second;
}

OrderedLine PurchaseOrderLines::Order(long order_id) const {
  const auto found = orders_.find(order_id);
  return found == orders_.end() ? OrderedLine{} : found->second;
}

double PurchaseOrderLines::StillOnOrder(long line_id) const {
  const auto found = still_.find(line_id);
  return found == still_.end() ? 0.0 : found->second;
}

OrderStatus PurchaseOrderLines::StatusOf(long order_id) const {
  const OrderedLine sums = Order(order_id);
  if (sums.received == 0) return OrderStatus::Open;
  return RoundedQuantity(sums.Outstanding()) <= 0 ? OrderStatus::Received
                                                  : OrderStatus::PartReceived;
}

}  // namespace trellin
