// The workshop's jobs: each opened for a customer, costed with a subcontractor's bill, and
// invoiced with labour and parts when done; the recent ones are still open.

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoTrader.h"

namespace trellin::demo {

void Trader::WriteJobs() {
  const DemoCalendar& cal = ctx_.calendar;
  const int count = 30 * ctx_.options.scale * static_cast<int>(cal.Years().size());
  const int span = cal.Present().Serial() - cal.FirstDay().Serial();
  constexpr const char* kCategories[] = {"SERVICE", "REFIT", "INSTALL"};
  constexpr const char* kOpenStatus[] = {"Open", "Open", "Costing", "Hold"};
  DemoTable jobs(ctx_.db, "Job",
                 {"JobId", "Description", "Status", "JobCategoryId", "LocationId", "EmployeeId",
                  "OrderNo", "DateOpened", "DateClosed", "UserDefined1"});
  DemoTable contacts(ctx_.db, "JobContact", {"JobId", "OtherPartyId", "Charge"});
  for (int j = 0; j < count; ++j) {
    JobPlan plan;
    plan.id = "J" + std::to_string(10001 + j);
    plan.customer = ctx_.customers[static_cast<std::size_t>(
        r_.Below(static_cast<std::int64_t>(ctx_.customers.size())))];
    plan.opened =
        cal.FirstDay().AddDays(static_cast<int>(static_cast<std::int64_t>(span) * j / count));
    plan.invoiced = plan.opened.AddDays(static_cast<int>(r_.Between(10, 60)));
    plan.category = kCategories[r_.Below(3)];
    const bool done = plan.invoiced <= cal.Present();
    const char* status =
        done ? (r_.Chance(0.9) ? "Closed" : "Completed") : kOpenStatus[r_.Below(4)];
    const PartyInfo& customer = ctx_.parties[plan.customer];
    jobs.Insert({plan.id,
                 std::string(plan.category == std::string("SERVICE") ? "Service" : "Work") +
                     " for " + customer.name,
                 status, plan.category, customer.location, "TK",
                 r_.Chance(0.4) ? Cell("WO" + std::to_string(5000 + j)) : Cell(Cell::Null{}),
                 plan.opened, done ? Cell(plan.invoiced) : Cell(Cell::Null{}),
                 "Vessel " + std::to_string(1 + r_.Below(400))});
    contacts.Insert({plan.id, customer.id, true});
    const std::size_t other = ctx_.customers[static_cast<std::size_t>(
        r_.Below(static_cast<std::int64_t>(ctx_.customers.size())))];
    if (other != plan.customer && r_.Chance(0.3))
      contacts.Insert({plan.id, ctx_.parties[other].id, false});
    ctx_.jobs.push_back(plan.id);
    jobs_.push_back(std::move(plan));
  }
  // A template job that quotes are copied from: never worked on.
  jobs.Insert({"JTEMPLATE", "Standard engine service template", "Template", "SERVICE", "MAIN", "TK",
               Cell::Null{}, cal.FirstDay(), Cell::Null{}, Cell::Null{}});
}

void Trader::JobsDay(Date day) {
  while (next_job_ < jobs_.size() && jobs_[next_job_].opened <= day) {
    const JobPlan& job = jobs_[next_job_++];
    const PartyInfo& customer = ctx_.parties[job.customer];
    // The subcontractor's bill comes a few days into the job.
    const Date cost_day = job.opened.AddDays(5);
    if (cost_day <= ctx_.calendar.Present()) {
      DocLine cost;
      cost.ledger_item = ledger_item::kSubcontract;
      cost.description = "Subcontract work " + job.id;
      cost.account = account::kSubcontractors;
      cost.dept = "WSH";
      cost.quantity = 1;
      cost.value = DemoContext::Dollars(r_.Between(200, 2500));
      cost.unit_price = cost.value;
      cost.tax_category = ctx_.facts.standard;
      cost.tax = ctx_.TaxOn(cost.value);
      std::vector<DocLine> lines{cost};
      const std::size_t supplier = ctx_.suppliers[static_cast<std::size_t>(
          r_.Below(static_cast<std::int64_t>(ctx_.suppliers.size())))];
      WriteDocument(Side::kPayables, 20, "SINV", supplier, cost_day, lines, job.id,
                    customer.location);
    }
    if (job.invoiced > ctx_.calendar.Present()) continue;
    std::vector<DocLine> lines;
    const std::size_t location = LocationIndex(customer.location);
    for (std::size_t item = 0; item < ctx_.items.size(); ++item) {
      const ItemInfo& info = ctx_.items[item];
      if (info.inventory == 0 && info.id.rfind("LAB", 0) == 0 && lines.empty()) {
        StockLines(lines, item, location, static_cast<double>(r_.Between(2, 30)), info.price, 0);
      }
    }
    const std::size_t part =
        static_cast<std::size_t>(r_.Below(static_cast<std::int64_t>(ctx_.items.size())));
    StockLines(lines, part, location, 1, ctx_.items[part].price, 0);
    for (DocLine& line : lines) {
      line.tax_category = ctx_.facts.standard;
      line.tax = ctx_.TaxOn(line.value);
    }
    // The job's number heads the invoice's lines, on a line of text alone.
    DocLine heading;
    heading.description = "Job " + job.id;
    lines.insert(lines.begin(), heading);
    // Invoiced when the job is done, in the job's own order of days.
    WriteDocument(Side::kReceivables, 30, "JINV", job.customer, job.invoiced, lines, job.id,
                  customer.location);
  }
}

}  // namespace trellin::demo

namespace trellin::demo {

namespace {

// The one value of the first row `sql` gives, as text; "" for none.
std::string TextOf(sqlite3* db, const std::string& sql) {
  sqlite3_stmt* stmt = nullptr;
  std::string value;
  if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) == SQLITE_OK &&
      sqlite3_step(stmt) == SQLITE_ROW && sqlite3_column_type(stmt, 0) != SQLITE_NULL) {
    value = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
  }
  sqlite3_finalize(stmt);
  return value;
}

}  // namespace

// What the job summary and status report need beyond the trading: a budget for most jobs, some
// over and some under; a tenth off the labour on every third job's invoice (its value stays what
// was posted: the discount comes off a higher price); a supplier's bill in the open batch for an
// open job; an order for another open job received in full, so that its lines net to nothing;
// and parts disbursed from the warehouse to jobs today (type 43, cost only). Written last, from
// what the trading wrote, with no draw on the random stream, so nothing else moves.
void WriteJobExtras(DemoContext& ctx) {
  // A job's number: the budget's factors turn on it.
  const std::string number = "CAST(substr(Job.JobId,2) AS INTEGER)";
  auto posted = [](const std::string& what, const std::string& types) {
    return "(SELECT Sum(" + what +
           ") FROM (Transactions INNER JOIN TransactionLine ON Transactions.TransactionId = "
           "TransactionLine.TransactionId) LEFT JOIN Item ON TransactionLine.ItemId = Item.ItemId "
           "WHERE Transactions.JobId = Job.JobId AND TransactionLine.Type IN (" +
           types + "))";
  };
  const std::string charges = "-" + posted("TransactionLine.Value", "30,31");
  const std::string purchases = "Coalesce(" + posted("TransactionLine.Value", "20,21") + ",0)";
  const std::string item_costs = "-" + posted("TransactionLine.ItemCost", "30,31");
  const std::string other_costs =
      "-" + posted(
                "CASE WHEN Item.Inventory = 0 THEN TransactionLine.Quantity * Item.CostPrice "
                "ELSE 0 END",
                "30,31");
  // Whole dollars; money is held in ten-thousandths.
  auto dollars = [](const std::string& value) {
    return "CAST(ROUND((" + value + ") / 10000.0) * 10000 AS INTEGER)";
  };
  // Costs budgeted at 90% to 111% of what they came to, charges at 92% to 108%.
  const std::string costs_factor = "(90 + (" + number + " % 4) * 7) / 100.0";
  const std::string charges_factor = "(108 - (" + number + " % 3) * 8) / 100.0";
  // A job not yet invoiced is budgeted from its subcontractor's bill. Every sixth job has none.
  Execute(ctx.db,
          "INSERT INTO JobBudget (JobId, Charges, ItemCosts, Purchases, OtherCosts, "
          "Disbursements) SELECT Job.JobId, " +
              dollars("Coalesce(" + charges + ", " + purchases + " * 2.5) * " + charges_factor) +
              ", " +
              dollars("Coalesce(" + item_costs + ", " + purchases + " * 0.3) * " + costs_factor) +
              ", " + dollars(purchases + " * " + costs_factor) + ", " +
              dollars("Coalesce(" + other_costs + ", " + purchases + " * 0.6) * " + costs_factor) +
              ", CASE WHEN " + number + " % 4 = 0 THEN 1500000 ELSE 0 END FROM Job WHERE " +
              "Job.Status <> 'Template' AND " + number + " % 6 <> 5 ORDER BY Job.JobId",
          "job budgets");
  // The labour of every third job invoice at a tenth off: the unit price is what makes the posted
  // value after the discount, to the cent, and the extension is the quantity at that price.
  const std::string price =
      "CAST(ROUND(Abs(Value) / 0.9 / Abs(Quantity) / 100.0) * 100 AS INTEGER)";
  const std::string extension = "CAST(ROUND(Quantity * " + price + " / 100.0) * 100 AS INTEGER)";
  Execute(ctx.db,
          "UPDATE TransactionLine SET DiscountRate = 10, UnitPrice = " + price +
              ", Extension = " + extension + ", Discount = " + extension +
              " - Value WHERE Type = 30 AND Quantity <> 0 AND ItemId IN (SELECT ItemId FROM Item "
              "WHERE Inventory = 0) AND TransactionId IN (SELECT TransactionId FROM Transactions "
              "WHERE Type = 30 AND TransactionTypeId = 'JINV' AND CAST(substr(JobId,2) AS "
              "INTEGER) % 3 = 0)",
          "job invoice discounts");
  // The open jobs, newest first: the second has a supplier's bill waiting in the open batch, the
  // third an order received in full.
  const std::string open_job =
      "(SELECT JobId FROM Job WHERE Status IN ('Open','Costing','Hold') ORDER BY JobId DESC "
      "LIMIT 1 OFFSET ";
  Execute(ctx.db,
          "UPDATE acBatchTransaction SET JobId = " + open_job +
              "1) WHERE acBatchTransactionId = (SELECT Min(acBatchTransactionId) FROM "
              "acBatchTransaction WHERE Type = 20)",
          "an open job's bill");
  auto of_first = [](const char* column) {
    return std::string("(SELECT ") + column + " FROM PurchaseOrder WHERE PurchaseOrderId = 1)";
  };
  Execute(ctx.db,
          "INSERT INTO PurchaseOrder (PurchaseOrderId, TransactionTypeId, OtherPartyId, Date, "
          "CreatedDate, DateRequired, Reference, LocationId, EmployeeId, JobId) SELECT "
          "Max(PurchaseOrderId) + 1, 'PO', " +
              of_first("OtherPartyId") + ", " + of_first("Date") + ", " + of_first("Date") + ", " +
              of_first("DateRequired") + ", 'PO' || (7001 + Max(PurchaseOrderId)), " +
              of_first("LocationId") + ", " + of_first("EmployeeId") + ", " + open_job +
              "2) FROM PurchaseOrder HAVING Max(PurchaseOrderId) IS NOT NULL",
          "an open job's order");
  // Ordered, then the receipt taking the line up: the two net to nothing.
  for (const char* sign : {"", "-"}) {
    Execute(ctx.db,
            std::string("INSERT INTO PurchaseOrderLine (PurchaseOrderId, ItemId, Description, "
                        "LocationId, Quantity, UnitPrice, Extension, Value, TaxCategory, "
                        "TaxValue, EstimatedDate) SELECT (SELECT Max(PurchaseOrderId) FROM "
                        "PurchaseOrder), ItemId, Description, LocationId, ") +
                sign + "1, UnitPrice, " + sign + "UnitPrice, " + sign +
                "UnitPrice, TaxCategory, 0, EstimatedDate FROM PurchaseOrderLine WHERE "
                "PurchaseOrderId = 1 ORDER BY PurchaseOrderLineId LIMIT 1",
            "an open job's order lines");
  }
  // Today parts went from the warehouse to three jobs, cost only (type 43), each under a
  // document of its own with the job and no party: a unit to each of the two jobs closed last
  // and two to the newest open job, at the item's average cost there to the cent. The stock
  // account gives the cost up to cost of goods; the day's count was taken after.
  const std::string& warehouse = ctx.locations[0];
  const std::string today = ctx.calendar.Present().ToIso();
  struct Disbursement {
    std::string job;
    int position;  // of the plain stocked item, in code order
    int quantity;
  };
  const std::string closed_job =
      "SELECT JobId FROM Job WHERE Status IN ('Closed','Completed') ORDER BY DateClosed DESC, "
      "JobId DESC LIMIT 1 OFFSET ";
  const Disbursement disbursements[] = {
      {TextOf(ctx.db, closed_job + "0"), 10, 1},
      {TextOf(ctx.db, closed_job + "1"), 12, 1},
      {TextOf(ctx.db, "SELECT JobId FROM Job WHERE Status='Open' ORDER BY JobId DESC LIMIT 1"), 14,
       2},
  };
  for (const Disbursement& d : disbursements) {
    const std::string item = TextOf(
        ctx.db,
        "SELECT ItemId FROM Item WHERE Inventory=1 AND Active=1 ORDER BY ItemId LIMIT 1 OFFSET " +
            std::to_string(d.position));
    const std::string quantity = std::to_string(d.quantity);
    const std::string cost =
        item.empty()
            ? ""
            : TextOf(ctx.db, "SELECT " + quantity +
                                 "*CAST(ROUND(Sum(ItemCost)/Sum(Quantity)/100.0) AS INTEGER)*100 "
                                 "FROM TransactionLine WHERE LocationId='" +
                                 warehouse + "' AND ItemId='" + item +
                                 "' GROUP BY ItemId HAVING Sum(Quantity)>=" +
                                 std::to_string(d.quantity + 1));
    if (d.job.empty() || cost.empty()) continue;
    const std::string id =
        TextOf(ctx.db, "SELECT Coalesce(Max(TransactionId),0)+1 FROM Transactions");
    Execute(ctx.db,
            "INSERT INTO Transactions (TransactionId,Type,BatchId,Reference,Date,DateProcess,"
            "CreatedDate,LocationId,JobId) VALUES (" +
                id + ",43,'SC" + today.substr(0, 4) + today.substr(5, 2) + "','JDISB','" + today +
                "','" + today + "','" + today + "','" + warehouse + "','" + d.job + "')",
            "a disbursement to a job");
    Execute(ctx.db,
            "INSERT INTO TransactionLine (TransactionLineId,TransactionId,Type,DateProcess,ItemId,"
            "LocationId,DeptId,Description,Quantity,ItemCost) SELECT Coalesce(Max("
            "TransactionLineId),0)+1," +
                id + ",43,'" + today + "','" + item + "','" + warehouse +
                "','WSH','Parts for job " + d.job + "',-" + quantity + ",-" + cost +
                " FROM TransactionLine",
            "a disbursement's line");
    Execute(ctx.db,
            "UPDATE ItemStocktake SET Quantity=Quantity-" + quantity + " WHERE LocationId='" +
                warehouse + "' AND ItemId='" + item + "' AND SerialNumber IS NULL",
            "the count after a disbursement");
    const std::int64_t value = std::stoll(cost);
    ctx.ledger->Post({ctx.calendar.Present(),
                      "SC",
                      "JDISB",
                      "Parts disbursed to job " + d.job,
                      0,
                      std::stoll(id),
                      ctx.branches[0],
                      "WSH",
                      {{account::kCostOfGoods, value}, {account::kStock, -value}}});
  }
}

}  // namespace trellin::demo
