#include "platform/demo/DemoStock.h"

#include <algorithm>
#include <cmath>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"
#include "platform/demo/DemoLedger.h"
#include "platform/demo/DemoTable.h"

namespace trellin::demo {

void DemoStock::Receive(std::size_t item, std::size_t location, const std::string& number,
                        double quantity, std::int64_t cost) {
  StockPlace& place = At(item, location);
  place.on_hand += quantity;
  place.cost += cost;
  place.units.push_back({number, quantity, cost});
}

std::vector<StockTake> DemoStock::Take(std::size_t item, std::size_t location, double quantity,
                                       bool tracked) {
  StockPlace& place = At(item, location);
  std::vector<StockTake> taken;
  double wanted = std::min(quantity, place.on_hand);
  if (wanted <= 0) return taken;
  if (!tracked) {
    std::int64_t cost = place.cost;
    if (wanted < place.on_hand) {
      cost = std::llround(static_cast<double>(place.cost) * wanted / place.on_hand / 100.0) * 100;
    }
    place.on_hand -= wanted;
    place.cost -= cost;
    place.units.clear();
    if (place.on_hand > 0) place.units.push_back({"", place.on_hand, place.cost});
    taken.push_back({"", wanted, cost});
    return taken;
  }
  while (wanted > 0 && !place.units.empty()) {
    StockUnit& unit = place.units.front();
    const double part = std::min(wanted, unit.quantity);
    std::int64_t cost = unit.cost;
    if (part < unit.quantity) {
      cost = std::llround(static_cast<double>(unit.cost) * part / unit.quantity / 100.0) * 100;
    }
    taken.push_back({unit.number, part, cost});
    unit.quantity -= part;
    unit.cost -= cost;
    place.on_hand -= part;
    place.cost -= cost;
    wanted -= part;
    if (unit.quantity <= 0) place.units.pop_front();
  }
  return taken;
}

}  // namespace trellin::demo

namespace trellin::demo {

namespace {

// The ItemId of the plain, active stocked item at `position` in code order: picked by place, so
// the choice is the same at every scale and in both countries.
std::string PlainItem(int position) {
  return "(SELECT ItemId FROM Item WHERE Inventory=1 AND Active=1 ORDER BY ItemId LIMIT 1 OFFSET " +
         std::to_string(position) + ")";
}

}  // namespace

void WriteStockExtras(DemoContext& ctx) {
  const std::string standard = ctx.facts.standard;
  const std::string rate = "(SELECT Rate FROM TaxCategory WHERE TaxCategoryId='" + standard + "')";
  // Three items priced with tax in, on both sides, at whole cents.
  auto with_tax = [&](const std::string& column) {
    return column + "=CAST(ROUND(" + column + "*(100+" + rate + ")/100.0/100.0) AS INTEGER)*100";
  };
  for (int position : {0, 3, 6}) {
    Execute(ctx.db,
            "UPDATE Item SET " + with_tax("CostPrice") + "," + with_tax("SellPrice1") +
                ",CostTaxType='" + standard + "',SellTaxType1='" + standard +
                "' WHERE ItemId=" + PlainItem(position),
            "tax-inclusive items");
  }
  // One priced with tax in under a code the tax list no longer holds: its cost stays as it is.
  Execute(ctx.db,
          "UPDATE Item SET " + with_tax("CostPrice") + "," + with_tax("SellPrice1") +
              ",CostTaxType='OLD',SellTaxType1='" + standard + "' WHERE ItemId=" + PlainItem(9),
          "an unknown tax code");
  // The first line of one item was keyed without a process date: it counts at every date.
  Execute(ctx.db,
          "UPDATE TransactionLine SET DateProcess=NULL WHERE TransactionLineId=(SELECT "
          "Min(TransactionLineId) FROM TransactionLine WHERE ItemId=" +
              PlainItem(1) + ")",
          "an opening line with no process date");
  // Today some stock went from the second store to the shop floor: half of what was there, at
  // its average cost to the cent, so the stock account does not move.
  const std::string& shop = ctx.locations[1];
  const std::string& store = ctx.locations[2];
  const std::string today = ctx.calendar.Present().ToIso();
  std::string moved;
  for (int position : {2, 5, 8, 11}) {
    moved += (moved.empty() ? "" : ",") + PlainItem(position);
  }
  Execute(ctx.db,
          "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
          "ItemCost) SELECT 11,'" +
              today + "',ItemId,'" + shop + "','Transfer from " + store +
              "',Moved,CAST(ROUND(Cost*Moved/OnHand/100.0) AS INTEGER)*100 FROM (SELECT ItemId,"
              "Sum(Quantity) AS OnHand,Sum(ItemCost) AS Cost,CAST(Sum(Quantity)/2 AS INTEGER) AS "
              "Moved FROM TransactionLine WHERE LocationId='" +
              store + "' AND ItemId IN (" + moved +
              ") GROUP BY ItemId HAVING Sum(Quantity)>=2) ORDER BY ItemId",
          "stock moved to the shop");
  Execute(ctx.db,
          "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
          "ItemCost) SELECT 11,DateProcess,ItemId,'" +
              store + "','Transfer to " + shop +
              "',-Quantity,-ItemCost FROM TransactionLine WHERE Description='Transfer from " +
              store + "' ORDER BY TransactionLineId",
          "stock moved from the store");
  // Today a few items at the warehouse were written off, a unit each at its average cost to the
  // cent with the reason as the line's description (type 13), and one was revalued upwards by
  // value alone (type 14); the stock adjustments account takes the other side, so the stock
  // account still equals the stock lines.
  const std::string& warehouse = ctx.locations[0];
  const std::pair<int, const char*> write_offs[] = {
      {13, "Damaged in the store"}, {15, "Water damage"}, {17, "Missing after the open day"}};
  for (const auto& [position, reason] : write_offs) {
    Execute(ctx.db,
            "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
            "ItemCost) SELECT 13,'" +
                today + "',ItemId,'" + warehouse + "','" + reason +
                "',-1,-CAST(ROUND(Sum(ItemCost)/Sum(Quantity)/100.0) AS INTEGER)*100 FROM "
                "TransactionLine WHERE LocationId='" +
                warehouse + "' AND ItemId=" + PlainItem(position) +
                " GROUP BY ItemId HAVING Sum(Quantity)>=2",
            "a stock write-off");
  }
  Execute(ctx.db,
          "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
          "ItemCost) SELECT 14,'" +
              today + "',ItemId,'" + warehouse +
              "','Revalued to the supplier''s new cost',0,250000 FROM Item WHERE ItemId=" +
              PlainItem(16),
          "a stock revaluation");
  const std::int64_t adjusted =
      SumOf(ctx.db,
            "SELECT Coalesce(Sum(ItemCost),0) FROM TransactionLine WHERE Type IN (13,14) "
            "AND DateProcess='" +
                today + "'");
  if (adjusted != 0) {
    ctx.ledger->Post({ctx.calendar.Present(),
                      "SC",
                      "STKADJ",
                      "Stock written off and revalued " + today,
                      0,
                      0,
                      ctx.branches[0],
                      "ADM",
                      {{account::kStock, adjusted}, {account::kStockAdjustments, -adjusted}}});
  }
  // Today's other movements at the warehouse, each at the item's average cost there to the cent,
  // with no document: a customer's credit brings a unit back (31), a unit goes back to its
  // supplier (21), a unit comes back on a sale (30, a positive quantity), freight is added to
  // the cost of one item (18, value only), and two units go to the shop (11 twice, opposite
  // signs). One journal (SC, STKMOVE) posts the value to the accounts each side belongs to.
  const std::string average = "CAST(ROUND(Sum(ItemCost)/Sum(Quantity)/100.0) AS INTEGER)*100";
  struct Movement {
    int type;
    int position;
    const char* reason;
    int quantity;
    const char* account;  // the other side of the stock account
  };
  const Movement movements[] = {
      {31, 19, "Returned by the customer", 1, account::kCostOfGoods},
      {21, 20, "Returned to the supplier", -1, account::kStockAdjustments},
      {30, 21, "Returned on the sale", 1, account::kCostOfGoods},
  };
  std::vector<GlLine> moved_value;
  std::int64_t moved_total = 0;
  const auto value_of_type = [&](int type) {
    return SumOf(ctx.db, "SELECT Coalesce(Sum(ItemCost),0) FROM TransactionLine WHERE Type=" +
                             std::to_string(type) + " AND DateProcess='" + today +
                             "' AND TransactionId Is Null AND LocationId='" + warehouse + "'");
  };
  for (const Movement& m : movements) {
    Execute(ctx.db,
            "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
            "ItemCost) SELECT " +
                std::to_string(m.type) + ",'" + today + "',ItemId,'" + warehouse + "','" +
                m.reason + "'," + std::to_string(m.quantity) + "," + std::to_string(m.quantity) +
                "*" + average + " FROM TransactionLine WHERE LocationId='" + warehouse +
                "' AND ItemId=" + PlainItem(m.position) +
                " GROUP BY ItemId HAVING Sum(Quantity)>=2",
            m.reason);
  }
  Execute(ctx.db,
          "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
          "ItemCost) SELECT 18,'" +
              today + "',ItemId,'" + warehouse +
              "','Freight on the last delivery',0,350000 FROM Item WHERE ItemId=" + PlainItem(22),
          "a carrying cost");
  for (const Movement& m : movements) {
    const std::int64_t value = value_of_type(m.type);
    if (value == 0) continue;
    moved_value.push_back({m.account, -value});
    moved_total += value;
  }
  if (const std::int64_t freight = value_of_type(18); freight != 0) {
    moved_value.push_back({account::kFreightInwards, -freight});
    moved_total += freight;
  }
  if (moved_total != 0 || !moved_value.empty()) {
    moved_value.insert(moved_value.begin(), GlLine{account::kStock, moved_total});
    ctx.ledger->Post({ctx.calendar.Present(), "SC", "STKMOVE",
                      "Stock returned, credited and freight " + today, 0, 0, ctx.branches[0], "ADM",
                      moved_value});
  }
  Execute(ctx.db,
          "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
          "ItemCost) SELECT 11,'" +
              today + "',ItemId,'" + warehouse + "','Transfer to " + shop + "',-2,-2*" + average +
              " FROM TransactionLine WHERE LocationId='" + warehouse +
              "' AND ItemId=" + PlainItem(23) + " GROUP BY ItemId HAVING Sum(Quantity)>=3",
          "stock moved from the warehouse");
  Execute(ctx.db,
          "INSERT INTO TransactionLine (Type,DateProcess,ItemId,LocationId,Description,Quantity,"
          "ItemCost) SELECT 11,DateProcess,ItemId,'" +
              shop + "','Transfer from " + warehouse +
              "',-Quantity,-ItemCost FROM TransactionLine WHERE LocationId='" + warehouse +
              "' AND Description='Transfer to " + shop + "' ORDER BY TransactionLineId",
          "stock moved to the shop");
  // The stocktake goes on at the shop too: what is there is counted, one unit short of the item
  // just moved there; and two units of an item the shop has none of (the one freight was added
  // to) are found on a shelf.
  Execute(ctx.db,
          "INSERT INTO ItemStocktake (ItemId,LocationId,SerialNumber,Quantity) SELECT ItemId,'" +
              shop + "',NULL,Sum(Quantity)-(CASE WHEN ItemId=" + PlainItem(23) +
              " THEN 1 ELSE 0 END) FROM TransactionLine WHERE LocationId='" + shop +
              "' GROUP BY ItemId HAVING Sum(Quantity)>0 ORDER BY ItemId",
          "counts at the shop");
  Execute(ctx.db,
          "INSERT INTO ItemStocktake (ItemId,LocationId,SerialNumber,Quantity) SELECT ItemId,'" +
              shop + "',NULL,2 FROM Item WHERE ItemId=" + PlainItem(22) +
              " AND NOT EXISTS (SELECT 1 FROM TransactionLine WHERE LocationId='" + shop +
              "' AND TransactionLine.ItemId=Item.ItemId)",
          "a count of an item with none on hand");
  // Job invoices drafted for more than is supplied yet, on every other line.
  Execute(ctx.db,
          "UPDATE acBatchTransactionLine SET OrderQuantity=Quantity+(rowid%2) WHERE Type=42",
          "ordered quantities on job invoices");
  // What each item is counted in: rope and chain by the metre, paint by the tin, labour by the
  // hour, the rest each.
  Execute(ctx.db,
          "UPDATE Item SET Unit=CASE WHEN Description LIKE '% per m%' AND Description NOT LIKE "
          "'% per hour%' THEN 'm' WHEN ItemId LIKE 'PNT%' THEN 'tin' WHEN ItemId LIKE 'LAB%' THEN "
          "'hour' ELSE 'each' END",
          "item units");
  // A stocked item bought from no supplier in particular, which reorder never suggests.
  Execute(ctx.db, "UPDATE Item SET SupplierId=NULL,SupplierCode=NULL WHERE ItemId=" + PlainItem(4),
          "an item with no supplier");
  // An item kept at the warehouse with no reorder levels there.
  Execute(ctx.db,
          "UPDATE ItemLocation SET MinReorder=0,MaxReorder=0 WHERE LocationId='" +
              ctx.locations[0] + "' AND ItemId=" + PlainItem(7),
          "an item-location with no levels");
  // The counts' adjustments and today's write-offs and revaluation each go under a document with
  // no party, one a day and kind (STKTAKE, STKADJ, as their journals), so that what joins the
  // stock lines to their documents reaches them. Transfers and the day's other movements stay
  // without one. The last ids, so no other document moves.
  const std::string adjustments =
      "TransactionId Is Null AND ((Type=11 AND Description='Stocktake adjustment') OR Type IN "
      "(13,14))";
  Execute(ctx.db,
          "INSERT INTO Transactions (TransactionId,Type,BatchId,Reference,Date,DateProcess,"
          "CreatedDate,LocationId) SELECT (SELECT Coalesce(Max(TransactionId),0) FROM "
          "Transactions)+Row_Number() OVER (ORDER BY DateProcess,Type),Type,'SC'||"
          "substr(DateProcess,1,4)||substr(DateProcess,6,2),CASE Type WHEN 11 THEN 'STKTAKE' ELSE "
          "'STKADJ' END,DateProcess,DateProcess,DateProcess,LocationId FROM (SELECT Type,"
          "DateProcess,Min(LocationId) AS LocationId FROM TransactionLine WHERE " +
              adjustments + " GROUP BY Type,DateProcess)",
          "stock adjustment documents");
  Execute(ctx.db,
          "UPDATE TransactionLine SET TransactionId=(SELECT t.TransactionId FROM Transactions t "
          "WHERE t.OtherPartyId Is Null AND t.Type=TransactionLine.Type AND "
          "t.DateProcess=TransactionLine.DateProcess AND t.Reference IN ('STKTAKE','STKADJ')) "
          "WHERE " +
              adjustments,
          "stock adjustment lines under their documents");
}

}  // namespace trellin::demo
