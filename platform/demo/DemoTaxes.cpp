// The tax the ledger carries beside its standard and zero-rated trading lines, so that every box
// of the GST and BAS returns and every kind of line of the tax detail has rows to show: exempt
// interest and bank fees, the GST settlements marked not reported, adjustments on both sides,
// input tax on a capital purchase, GST-free services on the Australian file, and one supplier's
// invoice whose GST is a few dollars off. Written last, by place and with no random draw; new rows
// take the ids after the last, so every row written before stays where it was.

#include <cmath>
#include <string>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"
#include "platform/demo/DemoTable.h"

namespace trellin::demo {

namespace {

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

}  // namespace

// The deliberate exception: the GST a supplier charged over the rate on its invoice.
inline constexpr std::int64_t kSupplierGstOver = 30000;  // 3.00

void WriteTaxExtras(DemoContext& ctx) {
  sqlite3* db = ctx.db;
  const CountryFacts& f = ctx.facts;
  const bool australia = f.state[0] != 0;
  const std::string exempt = Quoted(f.exempt);
  const Date present = ctx.calendar.Present();
  Date open_from = present;
  for (const TaxPeriodSpan& period : ctx.calendar.TaxPeriods()) {
    if (!period.filed && period.from <= present) open_from = period.from;
  }
  // The filed period holding a ledger line's day (Null in the open period).
  const std::string period_of =
      "(SELECT p.TaxPeriodId FROM TaxPeriod p WHERE date(glTransaction.Date) BETWEEN p.DateFrom "
      "AND p.DateTo)";

  DemoTable categories(db, "TaxCategory", {"TaxCategoryId", "Description", "Rate", "Inclusive"});
  categories.Insert({"A", "Adjustments", f.tax_rate, false});
  if (australia) {
    categories.Insert({"Z", "GST free", 0.0, false});
    categories.Insert({"C", "Capital purchases", f.tax_rate, false});
  }

  // Interest earned and bank fees are exempt (input taxed) supplies: on the returns' lists, in
  // no box.
  Execute(db,
          "UPDATE glTransaction SET TaxIO = CASE AccountId WHEN '" +
              std::string(account::kInterestReceived) + "' THEN 'O' ELSE 'I' END, TaxCategory = " +
              exempt + ", CashTaxCategory = " + exempt + ", TaxPeriodId = " + period_of +
              " WHERE AccountId IN ('" + account::kInterestReceived + "', '" + account::kBankFees +
              "') AND glSourceId = 'CB' AND TaxIO IS NULL",
          "exempt lines");
  // The GST paid to or refunded by the tax office is not itself reported.
  Execute(db,
          "UPDATE glTransaction SET TaxIO = CASE WHEN Value > 0 THEN 'I' ELSE 'O' END, "
          "TaxCategory = '*', CashTaxCategory = '*', TaxPeriodId = " +
              period_of + " WHERE AccountId = '" + account::kGstPayable +
              "' AND glSourceId = 'GL' AND Reference LIKE 'GST%' AND glBankTransactionId IS NOT "
              "NULL",
          "GST settlements");
  // Australia: the workshop's work on visiting boats from overseas is a GST-free service (G3),
  // the goods shipped overseas exports (G2).
  if (australia) {
    const std::string zero = Quoted(f.zero);
    Execute(db,
            "UPDATE TransactionLine SET TaxCategory = 'Z' WHERE TaxCategory = " + zero +
                " AND DeptId = 'WSH'",
            "GST-free services");
    Execute(db,
            "UPDATE acBatchTransactionLine SET TaxCategory = 'Z' WHERE TaxCategory = " + zero +
                " AND DeptId = 'WSH'",
            "GST-free services in batches");
    Execute(db,
            "UPDATE glTransaction SET TaxCategory = 'Z', CashTaxCategory = 'Z' WHERE TaxCategory "
            "= " +
                zero + " AND DeptId = 'WSH'",
            "GST-free services in the ledger");
  }

  DemoTable gl(db, "glTransaction",
               {"AccountId", "Date", "Value", "TaxValue", "BranchId", "DeptId", "glSourceId",
                "Reference", "Comment", "TaxCategory", "TaxIO", "CashTaxCategory", "CashTaxValue",
                "glBankTransactionId", "glBankTransactionSequence"});
  const std::string branch = f.branches[0][0];
  const Cell none = Cell::Null{};
  auto tax_in = [&](std::int64_t gross) {
    return ToCents(static_cast<double>(gross) * f.tax_rate / (100.0 + f.tax_rate));
  };

  // Input adjustment: the GST held in the debts written off this period is claimed back. The
  // journal takes the write-offs out of Bad Debts and puts them back less their GST, as a line of
  // category "A" with that GST as its tax.
  const std::int64_t written_off =
      SumOf(db, "SELECT Coalesce(Sum(Value), 0) FROM glTransaction WHERE AccountId = '" +
                    std::string(account::kBadDebts) +
                    "' AND TransactionId IS NOT NULL AND Date >= '" + open_from.ToIso() + "'");
  if (written_off != 0) {
    const std::int64_t gst = tax_in(written_off);
    const Date day = present.AddDays(-1);
    const char* comment = "GST on bad debts written off";
    gl.Insert({account::kBadDebts, day, -written_off, std::int64_t{0}, branch, "ADM", "GL",
               "GSTADJ1", comment, none, none, none, std::int64_t{0}, none, none});
    gl.Insert({account::kBadDebts, day, written_off - gst, gst, branch, "ADM", "GL", "GSTADJ1",
               comment, "A", "I", "A", gst, none, none});
    gl.Insert({account::kGstPayable, day, gst, std::int64_t{0}, branch, "ADM", "GL", "GSTADJ1",
               comment, none, none, none, std::int64_t{0}, none, none});
  }
  // Output adjustment: the service ute's private use this period bears GST on its value.
  {
    const std::int64_t value = DemoContext::Dollars(600);
    const std::int64_t gst = ctx.TaxOn(value);
    const Date day = present.AddDays(-2);
    const char* comment = "GST on private use of the service ute";
    gl.Insert({account::kMotorVehicle, day, -value, -gst, branch, "ADM", "GL", "GSTADJ2", comment,
               "A", "O", "A", -gst, none, none});
    gl.Insert({account::kMotorVehicle, day, value + gst, std::int64_t{0}, branch, "ADM", "GL",
               "GSTADJ2", comment, none, none, none, std::int64_t{0}, none, none});
    gl.Insert({account::kGstPayable, day, -gst, std::int64_t{0}, branch, "ADM", "GL", "GSTADJ2",
               comment, none, none, none, std::int64_t{0}, none, none});
  }
  // Input tax on a capital purchase: an addition to the first lathe still in use, paid through
  // the bank with its GST (category "C" on the BAS, standard on the GST 101).
  {
    const std::string asset = [&] {
      sqlite3_stmt* stmt = nullptr;
      std::string id;
      sqlite3_prepare_v2(db,
                         "SELECT AssetId FROM Asset WHERE Description = 'Lathe' AND AssetId NOT IN "
                         "(SELECT AssetId FROM AssetTransaction WHERE Type IN (11, 40)) ORDER BY "
                         "AssetId LIMIT 1",
                         -1, &stmt, nullptr);
      if (sqlite3_step(stmt) == SQLITE_ROW) {
        id = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
      }
      sqlite3_finalize(stmt);
      return id;
    }();
    if (!asset.empty()) {
      const std::int64_t value = DemoContext::Dollars(2400);
      const std::int64_t gst = ctx.TaxOn(value);
      const Date day = present.AddDays(-6);
      const std::string reference = "FA" + asset + "A";
      const std::string description = "Digital readout";
      DemoTable bank(db, "glBankTransaction", {"BankId", "Date", "Reference", "Comment"});
      bank.Insert({"CHQ", day, reference, "Addition to " + asset});
      const std::int64_t entry = sqlite3_last_insert_rowid(db);
      gl.Insert({account::kBankCheque, day, -(value + gst), std::int64_t{0}, branch, "ADM", "FA",
                 reference, description, none, none, none, std::int64_t{0}, entry, 0});
      const char* capital = australia ? "C" : f.standard;
      gl.Insert({"3320", day, value, gst, branch, "ADM", "FA", reference, description, capital, "I",
                 capital, gst, entry, 1});
      gl.Insert({account::kGstPayable, day, gst, std::int64_t{0}, branch, "ADM", "FA", reference,
                 description, none, none, none, std::int64_t{0}, entry, 2});
      DemoTable additions(db, "AssetTransaction",
                          {"AssetId", "Type", "Date", "Value", "TaxValue", "Reference", "Comment"});
      additions.Insert({asset, 11, day, value, value, "ADD" + asset, "Addition"});
    }
  }
  // The deliberate exception: the last supplier invoice of the open period with one taxed line
  // and nothing paid on it charged GST 3.00 over the rate, and was entered as charged.
  const std::int64_t bill =
      SumOf(db,
            "SELECT Coalesce(Max(t.TransactionId), 0) FROM Transactions t WHERE t.Type = 20 AND "
            "t.DateProcess >= '" +
                open_from.ToIso() +
                "' AND t.ValueRemaining = t.Value AND (SELECT count(*) FROM TransactionLine l "
                "WHERE l.TransactionId = t.TransactionId) = 1 AND (SELECT Sum(l.TaxValue) FROM "
                "TransactionLine l WHERE l.TransactionId = t.TransactionId) > 0 AND NOT EXISTS "
                "(SELECT 1 FROM TransactionAllocation a WHERE a.TransactionId2 = t.TransactionId)");
  if (bill != 0) {
    const std::string id = std::to_string(bill);
    const std::string over = std::to_string(kSupplierGstOver);
    Execute(
        db,
        "UPDATE TransactionLine SET TaxValue = TaxValue + " + over + " WHERE TransactionId = " + id,
        "supplier GST over");
    Execute(db,
            "UPDATE Transactions SET Value = Value + " + over +
                ", ValueRemaining = ValueRemaining + " + over + " WHERE TransactionId = " + id,
            "supplier GST over");
    Execute(db,
            "UPDATE glTransaction SET TaxValue = TaxValue + " + over +
                ", CashTaxValue = CashTaxValue + " + over + " WHERE TransactionId = " + id +
                " AND TaxIO = 'I'",
            "supplier GST over");
    Execute(db,
            "UPDATE glTransaction SET Value = Value + CASE AccountId WHEN '" +
                std::string(account::kGstPayable) + "' THEN " + over + " ELSE -" + over +
                " END WHERE TransactionId = " + id + " AND AccountId IN ('" + account::kGstPayable +
                "', '" + account::kPayables + "')",
            "supplier GST over");
  }
}

}  // namespace trellin::demo
