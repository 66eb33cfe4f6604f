// A job's summary lines: posted, open and budgeted.

#include "platform/business/CompanyJob.h"

#include <stdexcept>

#include "platform/business/CompanyBusinessObjects.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

enum Line : std::size_t {
  kCharges,
  kActualCharges,
  kOtherCosts,
  kDisbursements,
  kItemCosts,
  kPurchases,
  kTotalCosts,
  kProfit,
  kGP,
};

bool NonStock(const Variant& inventory) { return inventory.IsNull() || inventory.ToLong() == 0; }

Currency Money(const Variant& value) { return value.IsNull() ? Currency() : value.ToCurrency(); }

// Profit over charges; 0 when both are 0, -1 (a total loss) when only the charges are.
Currency GrossProfit(Currency profit, Currency charges) {
  if (charges == Currency()) return profit == Currency() ? Currency() : Currency::FromWhole(-1);
  return Currency::FromDouble(profit.ToDouble() / charges.ToDouble());
}

}  // namespace

CompanyJob::CompanyJob(std::shared_ptr<trellin::Database> database, const Tax& tax,
                       bool actual_charges)
    : database_(std::move(database)), costing_(database_, tax), actual_charges_(actual_charges) {}

void CompanyJob::Load(std::string_view job_id) {
  job_sql_.clear();
  lines_ = {};
  const std::string job = trellin::Database::SQLString(Trim(std::string(job_id)));
  if (database_->Query("SELECT JobId FROM Job WHERE JobId=" + job)->Eof()) {
    throw std::invalid_argument("There is no job \"" + std::string(job_id) + "\".");
  }
  auto add = [this](Line line, Currency posted, Currency open) {
    lines_[line].Actual += posted;
    lines_[line].Total += posted + open;
  };

  // Posted: the job's documents' lines, by type and by whether stock is kept of the item.
  auto posted = database_->Query(
      "SELECT TransactionLine.Type,Item.Inventory,Sum(TransactionLine.Value) AS SumOfValue,"
      "Sum(TransactionLine.Discount) AS SumOfDiscount,Sum(TransactionLine.ItemCost) AS "
      "SumOfItemCost,Sum(TransactionLine.Quantity*Item.CostPrice) AS SumOfCostPrice FROM "
      "(Transactions INNER JOIN TransactionLine ON Transactions.TransactionId = "
      "TransactionLine.TransactionId) LEFT JOIN Item ON TransactionLine.ItemId = Item.ItemId "
      "WHERE Transactions.JobId=" +
      job +
      " AND TransactionLine.Type In(20,21,30,31,43) GROUP BY TransactionLine.Type,Item.Inventory");
  for (; !posted->Eof(); posted->MoveNext()) {
    const long type = static_cast<long>(posted->Value(0).ToLong());
    const bool non_stock = NonStock(posted->Value(1));
    const Currency value = Money(posted->Value(2));
    const Currency discount = Money(posted->Value(3));
    const Currency cost = Money(posted->Value(4));
    if (type == 30 || type == 31) {
      add(kCharges, -(value + discount), {});
      add(kActualCharges, -value, {});
      if (non_stock) {
        // Money of a quantity times a price: to the cent.
        add(kOtherCosts,
            -Currency::FromDouble(posted->Value(5).IsNull() ? 0 : posted->Value(5).ToDouble())
                 .Round(2),
            {});
      } else {
        add(kItemCosts, -cost, {});
      }
    } else if (type == 43) {
      add(kDisbursements, -cost, {});
    } else {
      add(kPurchases, value, {});
    }
  }

  // Open: the job's unposted documents' lines. A charge line's stock is priced as an issue at its
  // date and location; labour and other non-stock lines at the item's cost price.
  auto open = database_->Query(
      "SELECT acBatchTransactionLine.Type,acBatchTransactionLine.ItemId,"
      "acBatchTransactionLine.Quantity,acBatchTransactionLine.DateProcess,"
      "acBatchTransactionLine.LocationId,acBatchTransactionLine.SerialNumber,"
      "acBatchTransactionLine.[Value],acBatchTransactionLine.Discount,Item.Inventory,"
      "Item.CostPrice FROM (acBatchTransaction INNER JOIN acBatchTransactionLine ON "
      "acBatchTransaction.acBatchTransactionId = acBatchTransactionLine.acBatchTransactionId) "
      "LEFT JOIN Item ON acBatchTransactionLine.ItemId = Item.ItemId WHERE "
      "acBatchTransactionLine.Type In(20,21,42) AND acBatchTransaction.JobId=" +
      job);
  for (; !open->Eof(); open->MoveNext()) {
    const long type = static_cast<long>(open->Value(0).ToLong());
    const Currency value = Money(open->Value(6));
    if (type != 42) {
      add(kPurchases, {}, value);
      continue;
    }
    add(kCharges, {}, value + Money(open->Value(7)));
    add(kActualCharges, {}, value);
    const double quantity = open->Value(2).IsNull() ? 0 : open->Value(2).ToDouble();
    if (NonStock(open->Value(8))) {
      const double price = open->Value(9).IsNull() ? 0 : open->Value(9).ToDouble();
      add(kOtherCosts, {}, Currency::FromDouble(quantity * price).Round(2));
      continue;
    }
    const Variant date = open->Value(3);
    const ItemCost issue =
        costing_.Cost(open->Value(1).Text(), -quantity,
                      date.IsNull() ? std::nullopt : std::optional<Date>(date.ToDate()),
                      open->Value(4).Text(), open->Value(5).Text(), true);
    add(kItemCosts, {}, -issue.Value);
  }

  auto budget = database_->Query(
      "SELECT Charges,ItemCosts,Purchases,OtherCosts,Disbursements FROM JobBudget WHERE JobId=" +
      job);
  if (!budget->Eof()) {
    lines_[kCharges].Budget = lines_[kActualCharges].Budget = Money(budget->Value(0));
    lines_[kItemCosts].Budget = Money(budget->Value(1));
    lines_[kPurchases].Budget = Money(budget->Value(2));
    lines_[kOtherCosts].Budget = Money(budget->Value(3));
    lines_[kDisbursements].Budget = Money(budget->Value(4));
  }

  // The totals, profit and GP of each column from the lines above.
  const JobSummaryLine& charges = lines_[actual_charges_ ? kActualCharges : kCharges];
  auto work = [&](Currency JobSummaryLine::*column) {
    Currency costs;
    for (Line line : {kOtherCosts, kDisbursements, kItemCosts, kPurchases}) {
      costs += lines_[line].*column;
    }
    lines_[kTotalCosts].*column = costs;
    lines_[kProfit].*column = charges.*column - costs;
    lines_[kGP].*column = GrossProfit(lines_[kProfit].*column, charges.*column);
  };
  work(&JobSummaryLine::Actual);
  work(&JobSummaryLine::Total);
  work(&JobSummaryLine::Budget);
  job_sql_ = job;
}

const JobSummaryLine& CompanyJob::Summary(std::string_view name) const {
  if (job_sql_.empty()) throw std::logic_error("No job is loaded.");
  for (std::size_t i = 0; i < std::size(kJobSummaryLines); ++i) {
    if (EqualsIgnoreCase(kJobSummaryLines[i], name)) return lines_[i];
  }
  throw std::out_of_range("A job has no summary line \"" + std::string(name) + "\".");
}

std::unique_ptr<trellin::Job> CompanyBusinessObjects::CreateJob(bool actual_charges,
                                                                const Tax& tax) {
  return std::make_unique<CompanyJob>(database_, tax, actual_charges);
}

}  // namespace trellin::business
