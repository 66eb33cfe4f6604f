// What the printed documents need to show every part of their page: the invoice type's tax
// wording, a tax-inclusive category on the shop's sales, hidden lines and comment lines, credit
// notes naming the invoice they credit, a purchase order of several lines with its comment and
// internal reference, and branches that differ in fax and web address. Written last, by place
// and with no random draw; new rows take the ids after the last, so every row written before
// stays where it was.

#include <string>

#include "platform/demo/DemoContext.h"
#include "platform/demo/DemoTable.h"

namespace trellin::demo {

// The code of the tax category whose prices include the tax: the shop's sales.
inline constexpr const char* kInclusiveCategory = "SI";

void WriteDocumentExtras(DemoContext& ctx) {
  sqlite3* db = ctx.db;
  const CountryFacts& f = ctx.facts;
  const Date present = ctx.calendar.Present();
  const std::string month = "'" + Date::FromYmd(present.Year(), present.Month(), 1).ToIso() + "'";
  const std::string standard = std::string("'") + f.standard + "'";

  Execute(db,
          "UPDATE TransactionType SET Description = 'Tax Invoice' WHERE TransactionTypeId = 'INV'",
          "tax invoice");

  // This month's shop invoices (every line the shop's) are priced with the tax in.
  DemoTable categories(db, "TaxCategory", {"TaxCategoryId", "Description", "Rate", "Inclusive"});
  categories.Insert({kInclusiveCategory, "Standard rated, prices include tax", f.tax_rate, true});
  const std::string shop_invoices =
      "SELECT t.TransactionId FROM Transactions t WHERE t.Type = 30 AND t.TransactionTypeId = "
      "'INV' AND t.DateProcess >= " +
      month +
      " AND NOT EXISTS (SELECT 1 FROM TransactionLine l WHERE l.TransactionId = t.TransactionId "
      "AND (l.DeptId IS NOT 'RET' OR l.TaxCategory IS NOT " +
      standard + "))";
  Execute(db,
          "UPDATE glTransaction SET TaxCategory = '" + std::string(kInclusiveCategory) +
              "', CashTaxCategory = '" + kInclusiveCategory + "' WHERE TaxCategory = " + standard +
              " AND TransactionId IN (" + shop_invoices + ")",
          "inclusive shop sales in the ledger");
  Execute(db,
          "UPDATE TransactionLine SET TaxCategory = '" + std::string(kInclusiveCategory) +
              "' WHERE TransactionId IN (" + shop_invoices + ")",
          "inclusive shop sales");

  // Hidden lines: on every seventh invoice of this month with three lines or more, the last two
  // lines print as one "Other Items" line; on every third open-batch invoice of two lines or
  // more, the last.
  Execute(db,
          "UPDATE TransactionLine SET Hidden = 1 WHERE TransactionLineId IN (SELECT "
          "l.TransactionLineId "
          "FROM TransactionLine l JOIN Transactions t ON t.TransactionId = l.TransactionId WHERE "
          "t.Type = 30 AND t.DateProcess >= " +
              month +
              " AND t.TransactionId % 7 = 0 AND (SELECT count(*) FROM TransactionLine c WHERE "
              "c.TransactionId = t.TransactionId) >= 3 AND (SELECT count(*) FROM TransactionLine c "
              "WHERE c.TransactionId = t.TransactionId AND c.TransactionLineId > "
              "l.TransactionLineId) < 2)",
          "hidden lines");
  Execute(db,
          "UPDATE acBatchTransactionLine SET Hidden = 1 WHERE rowid IN (SELECT Max(l.rowid) FROM "
          "acBatchTransactionLine l JOIN acBatchTransaction b ON b.acBatchTransactionId = "
          "l.acBatchTransactionId WHERE b.Type = 30 AND b.acBatchTransactionId % 3 = 0 GROUP BY "
          "l.acBatchTransactionId HAVING count(*) >= 2)",
          "hidden batch lines");

  // A comment line, no item and no value, last on five of this month's trade invoices.
  Execute(
      db,
      "INSERT INTO TransactionLine (TransactionId, Type, DateProcess, Description) SELECT "
      "t.TransactionId, 30, t.DateProcess, 'Please quote the invoice number with your "
      "payment.' FROM Transactions t WHERE t.Type = 30 AND t.TransactionTypeId = 'INV' AND "
      "t.DateProcess >= " +
          month +
          " AND EXISTS (SELECT 1 FROM TransactionLine l WHERE l.TransactionId = t.TransactionId "
          "AND l.DeptId = 'TRD') ORDER BY t.TransactionId LIMIT 5",
      "comment lines");

  // A credit note names the invoice it credits in its order number.
  Execute(db,
          "UPDATE Transactions SET OrderNo = (SELECT i.Reference FROM TransactionAllocation a JOIN "
          "Transactions i ON i.TransactionId = a.TransactionId2 WHERE a.TransactionId1 = "
          "Transactions.TransactionId AND i.Type = 30 ORDER BY i.TransactionId LIMIT 1) WHERE "
          "Type = 31 AND OrderNo IS NULL",
          "credited invoices");

  // Purchase orders carry the buyer's internal reference; the newest to a supplier of three
  // items or more also two more of its items, at their last price, and a line of instructions.
  const std::string order =
      "(SELECT Max(o.PurchaseOrderId) FROM PurchaseOrder o WHERE (SELECT count(*) FROM Item i "
      "WHERE i.SupplierId = o.OtherPartyId AND EXISTS (SELECT 1 FROM TransactionLine l WHERE "
      "l.ItemId = i.ItemId AND l.Type = 20)) >= 3)";
  Execute(
      db,
      "UPDATE PurchaseOrder SET InternalReference = 'Reorder ' || strftime('%d/%m', Date) WHERE "
      "InternalReference IS NULL",
      "internal references");
  Execute(db,
          "UPDATE PurchaseOrder SET Comment = 'Please confirm the delivery date by return.' WHERE "
          "PurchaseOrderId = " +
              order,
          "order comment");
  Execute(
      db,
      "INSERT INTO PurchaseOrderLine (PurchaseOrderId, ItemId, Description, LocationId, "
      "Quantity, UnitPrice, Extension, Value, TaxCategory, TaxValue, EstimatedDate) SELECT "
      "o.PurchaseOrderId, i.ItemId, i.Description, o.LocationId, 10, p.UnitPrice, 10 * "
      "p.UnitPrice, 10 * p.UnitPrice, " +
          standard + ", round(10 * p.UnitPrice * " + std::to_string(f.tax_rate) +
          " / 100 / 100) * 100, o.DateRequired FROM PurchaseOrder o JOIN Item i ON "
          "i.SupplierId = o.OtherPartyId JOIN (SELECT ItemId, UnitPrice, Max(TransactionLineId) "
          "FROM TransactionLine WHERE Type = 20 AND Quantity > 0 GROUP BY ItemId) p ON p.ItemId "
          "= i.ItemId WHERE o.PurchaseOrderId = " +
          order +
          " AND i.ItemId NOT IN (SELECT ItemId FROM PurchaseOrderLine WHERE "
          "PurchaseOrderId = o.PurchaseOrderId) ORDER BY i.ItemId LIMIT 2",
      "order lines");
  Execute(db,
          "INSERT INTO PurchaseOrderLine (PurchaseOrderId, Description) SELECT " + order +
              ", 'Deliver to the rear door of the warehouse.'",
          "order comment line");

  // The first branch has a fax; the second none, and its web address where the e-mail would be.
  Execute(db,
          "UPDATE Branch SET Fax = '" +
              std::string(f.state[0] != 0 ? "02 9884 6271" : "09 884 6271") +
              "' WHERE BranchId = '" + f.branches[0][0] + "'",
          "first branch fax");
  Execute(db,
          "UPDATE Branch SET Fax = NULL, Email = Website WHERE BranchId = '" +
              std::string(f.branches[1][0]) + "'",
          "second branch web address");
}

}  // namespace trellin::demo
