// The control report's figures: last month's closing, the blocks of documents, the control
// account, the two ageing tables and the sales or purchases summary, each from its own query.

#include <algorithm>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/RemainderAsAt.h"
#include "reports/receivables/ardscrControlReport.h"

namespace trellin {

namespace {

constexpr const char* kPartyJoin =
    " FROM OtherParty RIGHT JOIN Transactions ON OtherParty.OtherPartyId = "
    "Transactions.OtherPartyId";

// The restore runs the allocation pair for this many documents at a time.
constexpr std::size_t kRestoreBatch = 400;

}  // namespace

std::string ardscrControlReport::Types() const {
  return debtor_ ? "(Transactions.Type>=30 And Transactions.Type<40)"
                 : "(Transactions.Type>=20 And Transactions.Type<30)";
}

std::string ardscrControlReport::AndFilter() const {
  return filter_.empty() ? std::string() : " AND " + filter_;
}

std::shared_ptr<Recordset> ardscrControlReport::Run(const std::string& sql) {
  if (query_log_) query_log_(sql);
  return TrellinReportGlobals::RequireDatabase()->Query(sql);
}

Currency ardscrControlReport::Scalar(const std::string& sql) {
  if (query_log_) query_log_(sql);
  return TrellinReportGlobals::RequireDatabase()->ExecuteScalarCurrency(sql, Currency());
}

void ardscrControlReport::WorkOutClosing() {
  // What is open today, less what the month and after brought: the balance at the month's start.
  const std::string since_head =
      debtor_ ? "SELECT -Sum(Value) AS SumOfValue" : "SELECT Sum(Value) AS SumOfValue";
  const Currency since =
      Scalar(since_head + kPartyJoin + " WHERE DateProcess>=" + Database::SQLDate(month_start_) +
             " AND " + Types() + AndFilter());
  const std::string now_head = debtor_ ? "SELECT Sum(-ValueRemaining) AS SumOfValue"
                                       : "SELECT Sum(ValueRemaining) AS SumOfValue";
  const Currency now = Scalar(now_head + kPartyJoin + " WHERE " + Types() + AndFilter());
  closing_last_month_ = now - since;
}

void ardscrControlReport::WorkOutBlock(const std::string& range, ControlBlock& block) {
  block = ControlBlock{};
  std::shared_ptr<Recordset> counts =
      Run("SELECT Count(Transactions.TransactionId) AS "
          "CountOfTransactionId,Transactions.TransactionTypeId" +
          std::string(kPartyJoin) + " WHERE " + range + " AND " + Types() + AndFilter() +
          " GROUP BY Transactions.TransactionTypeId");
  const std::string value =
      debtor_ ? ",Sum(-TransactionLine.Discount) AS SumOfDiscount,Sum(" +
                    Database::SQLIIf("[Transactions].[Type]=35", "-[Transactions].[Value]",
                                     "-([TransactionLine].[Value]+[TransactionLine].[TaxValue])") +
                    ") AS SumOfValue"
              : ",Sum(TransactionLine.Discount) AS SumOfDiscount,Sum(" +
                    Database::SQLIIf("[Transactions].[Type]=25", "[Transactions].[Value]",
                                     "([TransactionLine].[Value]+[TransactionLine].[TaxValue])") +
                    ") AS SumOfValue";
  std::shared_ptr<Recordset> values =
      Run("SELECT Transactions.Type,Transactions.TransactionTypeId,TransactionType.Description" +
          value +
          " FROM OtherParty RIGHT JOIN (TransactionType INNER JOIN (Transactions LEFT JOIN "
          "TransactionLine ON Transactions.TransactionId = TransactionLine.TransactionId) ON "
          "TransactionType.TransactionTypeId = Transactions.TransactionTypeId) ON "
          "OtherParty.OtherPartyId = Transactions.OtherPartyId WHERE (" +
          range + ") AND " + Types() + AndFilter() +
          " GROUP BY Transactions.Type,Transactions.TransactionTypeId,TransactionType.Description"
          " ORDER BY Transactions.Type,Transactions.TransactionTypeId");
  const std::string money = "#,##0.00;(#,##0.00)";
  for (; !values->Eof(); values->MoveNext()) {
    block.any = true;
    const std::string type_id = values->Value("TransactionTypeId").Text();
    ControlCategoryBlock& category = block.categories[static_cast<std::size_t>(
        ControlCategoryOf(values->Value("Type").ToLong()))];
    const Variant& net_value = values->Value("SumOfValue");
    const Variant& discount_value = values->Value("SumOfDiscount");
    const Currency net = net_value.IsNull() ? Currency() : net_value.ToCurrency();
    const Currency discount = discount_value.IsNull() ? Currency() : discount_value.ToCurrency();
    const Currency gross = discount != Currency() ? net + discount : net;
    std::int64_t count = 0;
    counts->MoveFirst();
    counts->Find("TransactionTypeId='" + type_id + "'");
    if (!counts->Eof()) count = counts->Value("CountOfTransactionId").ToLong();
    category.labels.push_back(type_id + " " + values->Value("Description").Text());
    category.counts.push_back(std::to_string(count));
    category.gross.push_back(Format(Variant(gross), money));
    category.discount.push_back(Format(Variant(discount), money));
    category.net.push_back(Format(Variant(net), money));
    category.count += count;
    category.gross_sum += gross;
    category.discount_sum += discount;
    category.net_sum += net;
  }
}

void ardscrControlReport::WorkOutControlAccount() {
  // The account's balance in the sub-ledger's own sense, so that the variance is 0 when the two
  // agree: debits positive for the receivables control, credits positive for the payables one.
  // (glTransaction.Value is positive for a debit, while the sub-ledger's month end shows what
  // customers owe and what is owed to suppliers as positive.)
  const trellin::Options& options = TrellinReportGlobals::RequireApplication().Options();
  const std::string account =
      debtor_ ? options.ReceivablesControlAccount() : options.PayablesControlAccount();
  control_account_ =
      Scalar("SELECT Sum(" + std::string(debtor_ ? "" : "-") +
             "Value) FROM glTransaction WHERE AccountId=" + Database::SQLString(account) +
             " AND Date<" + Database::SQLDate(as_at_.AddDays(1)));
}

void ardscrControlReport::WorkOutAgeing(bool month_end, ControlAgeing& ageing) {
  ageing = ControlAgeing{};
  const std::string due = Database::SQLIIf("[DatePayment] Is Null", "[Date]", "[DatePayment]");
  std::shared_ptr<Recordset> rows =
      Run(std::string("SELECT") +
          (debtor_ ? " -Transactions.ValueRemaining AS Remaining"
                   : " Transactions.ValueRemaining AS Remaining") +
          ",DateProcess," + due + " AS Due" + kPartyJoin + " WHERE " + Types() +
          (month_end ? " AND DateProcess<" + Database::SQLDate(as_at_.AddDays(1)) : "") +
          " AND (Transactions.ValueRemaining<>0)" + AndFilter() + " ORDER BY " + due);
  for (; !rows->Eof(); rows->MoveNext()) {
    const Variant& remaining = rows->Value("Remaining");
    const Variant& when = rows->Value("Due");
    if (remaining.IsNull() || when.IsNull()) continue;
    ageing.buckets[static_cast<std::size_t>(ControlAgeingBucket(when.ToDate(), as_at_))] +=
        remaining.ToCurrency();
  }
  if (month_end) RestoreAllocations(ageing);
}

void ardscrControlReport::RestoreAllocations(ControlAgeing& ageing) {
  // What documents processed after the date took from those processed by it goes back to the
  // older ones, aged by their own due dates.
  std::shared_ptr<Recordset> later =
      Run("SELECT TransactionId" + std::string(kPartyJoin) +
          " WHERE [ValueRemaining]<>[Value] AND ([DateProcess]>" + Database::SQLDate(as_at_) +
          ") AND " + Types() + AndFilter());
  std::vector<std::string> ids;
  for (; !later->Eof(); later->MoveNext()) ids.push_back(later->Value(0).Text());
  const std::string due =
      Database::SQLIIf("[DatePayment] Is Null", "[Date]", "[DatePayment]") + " AS Due";
  const std::string first_sign = debtor_ ? "-" : "";
  const std::string second_sign = debtor_ ? "" : "-";
  const std::string bound = Database::SQLDate(as_at_.AddDays(1));
  Database& database = *TrellinReportGlobals::RequireDatabase();
  for (std::size_t start = 0; start < ids.size(); start += kRestoreBatch) {
    const std::vector<std::string> batch(
        ids.begin() + static_cast<std::ptrdiff_t>(start),
        ids.begin() + static_cast<std::ptrdiff_t>(std::min(ids.size(), start + kRestoreBatch)));
    const std::string list = Join(batch, ",");
    const std::string sql =
        "SELECT TransactionAllocationId," + first_sign + "ValueAllocated AS AllocatedValue," + due +
        " FROM Transactions INNER JOIN TransactionAllocation ON "
        "Transactions.TransactionId=TransactionAllocation.TransactionId1 WHERE TransactionId2 "
        "In(" +
        list + ") AND Transactions.DateProcess<" + bound +
        " UNION SELECT TransactionAllocationId," + second_sign +
        "ValueAllocated AS AllocatedValue," + due +
        " FROM Transactions INNER JOIN TransactionAllocation ON "
        "Transactions.TransactionId=TransactionAllocation.TransactionId2 WHERE TransactionId1 "
        "In(" +
        list + ") AND Transactions.DateProcess<" + bound;
    if (query_log_) query_log_(sql);
    ForEachAllocatedValue(database, sql, [&](Currency value, const Recordset& row) {
      const Variant& when = row.Value("Due");
      if (when.IsNull()) return;
      ageing.buckets[static_cast<std::size_t>(ControlAgeingBucket(when.ToDate(), as_at_))] += value;
    });
  }
}

ControlSales ardscrControlReport::WorkOutSales(Date from) {
  const std::string sign = debtor_ ? "-" : "";
  std::shared_ptr<Recordset> row = Run(
      "SELECT Sum(" + sign + "TransactionLine.Value) AS SumOfValue,Sum(" + sign +
      "TransactionLine.TaxValue) AS SumOfTaxValue,Sum(" + sign +
      "TransactionLine.Discount) AS SumOfDiscount FROM OtherParty RIGHT JOIN (Transactions "
      "LEFT JOIN TransactionLine ON Transactions.TransactionId = TransactionLine.TransactionId) "
      "ON OtherParty.OtherPartyId = Transactions.OtherPartyId Where "
      "(TransactionLine.DateProcess>=" +
      Database::SQLDate(from) + " And TransactionLine.DateProcess<" +
      Database::SQLDate(as_at_.AddDays(1)) + ")" +
      (debtor_ ? " And (TransactionLine.Type>=30 And TransactionLine.Type<35)"
               : " And (TransactionLine.Type>=20 And TransactionLine.Type<25)") +
      AndFilter());
  ControlSales sales;
  if (row->Eof()) return sales;
  auto money = [&](const char* field) {
    const Variant& v = row->Value(field);
    return v.IsNull() ? Currency() : v.ToCurrency();
  };
  sales.excl = money("SumOfValue");
  sales.discount = money("SumOfDiscount");
  sales.tax = money("SumOfTaxValue");
  return sales;
}

}  // namespace trellin
