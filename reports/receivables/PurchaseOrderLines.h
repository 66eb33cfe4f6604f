#pragma once
// What the purchase orders still expect. An order line as keyed is an "ordered" line; receiving
// goods against it adds a negative twin (same order, item, location, department, unit price and
// description) that names the stock line which brought them in (`TransactionLineId`). So the
// sum of Quantity over like lines is what is still expected, and an order whose lines net to
// nought is received in full. The order lists, the delivery docket list and the purchase order
// batch read their orders' lines through here.

#include <map>
#include <string>
#include <string_view>

#include "core/host/Database.h"
#include "platform/runtime/Currency.h"

namespace trellin {

// The condition, on `PurchaseOrder.PurchaseOrderId`, of an order whose lines do not yet net to
// nought (quantities rounded to four places).
inline constexpr std::string_view kPurchaseOrderStillOpen =
    "PurchaseOrder.PurchaseOrderId In (SELECT PurchaseOrderId FROM PurchaseOrderLine GROUP BY "
    "PurchaseOrderId HAVING Round(Sum(Quantity),4)<>0)";

// An ordered line and what has come in against it.
struct OrderedLine {
  long order = 0;
  double ordered = 0;   // quantity
  double received = 0;  // quantity, positive
  Currency ordered_value;
  Currency received_value;  // positive
  [[nodiscard]] double Outstanding() const { return ordered - received; }
  [[nodiscard]] Currency OutstandingValue() const { return ordered_value - received_value; }
};

// The company's mask of quantities ("#,##0.00;(#,##0.00)" with two quantity decimals). Needs
// the application global.
[[nodiscard]] std::string QuantityMask();

// How far an order has come.
enum class OrderStatus { Open, PartReceived, Received };

// "Open", "Part received", "Received".
[[nodiscard]] std::string_view OrderStatusText(OrderStatus status);

// The lines of a run's orders, read once.
class PurchaseOrderLines {
 public:
  // Reads every line of the orders whose ids `order_ids` (a SELECT of one column) gives. A
  // receipt twin is shared among the ordered lines like it in their order, each taking up to
  // its own quantity and the last the rest, so an order over-received shows it on its last line.
  // Throws what the database throws.
  void Read(Database& db, const std::string& order_ids);

  // The ordered line by `PurchaseOrderLineId`; nullptr for a twin or a line not read.
  [[nodiscard]] const OrderedLine* Line(long line_id) const;
  // The sums over an order's ordered lines (received values positive); zeros for an order not
  // read.
  [[nodiscard]] OrderedLine Order(long order_id) const;
  [[nodiscard]] OrderStatus StatusOf(long order_id) const;
  // What the like lines of any line read (ordered or twin) still expect: their quantities'
  // sum; 0 for a line not read.
  [[nodiscard]] double StillOnOrder(long line_id) const;

 private:
  std::map<long, OrderedLine> lines_;  // by PurchaseOrderLineId, ordered lines only
  std::map<long, OrderedLine> orders_;
  std::map<long, double> still_;  // by PurchaseOrderLineId, every line
};

}  // namespace trellin
