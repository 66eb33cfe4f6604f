// The cheques the company writes, and what the bank side of the books needs for them: three
// suppliers paid by cheque in the present's month (one with a cheque name of its own, one with an
// empty one, one with no postal address), a run of one cheque for 30 bills and one for exactly
// 25, a cheque written against ledger lines with its GST on a line never reported, a tax category
// on every line of a bank entry, each transfer between the banks entered on both of them, and a
// bank in use but not active.

#include <string>
#include <utility>
#include <vector>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"
#include "platform/demo/DemoTrader.h"

namespace trellin::demo {

namespace {

// The account a transfer passes through: each bank's entry posts to it, so it is nil at every
// day's end.
constexpr const char* kTransfers = "3015";

struct ChequeSupplier {
  const char* id;
  const char* name;
  const char* cheque_name;  // nullptr: the same as the name
  const char* address_kind;
  const char* address;
};

constexpr ChequeSupplier kChequeSuppliers[] = {
    {"CHANR901", "Channel Rigging", "Channel Rigging Supplies Limited", "Postal", "PO Box 4410"},
    {"HARBF901", "Harbour Fuel Co", "", "Postal", "Private Bag 92016"},
    {"SLIPW901", "Slipway Welding", nullptr, "Street", "17 Slipway Road"},
};

// Each bank entry's transfer line to or from the saver: the entry's own line stays on the cheque
// account, its other side moves to the transfer account, and the saver gets an entry of its own
// on the same day and statement page.
void EnterTransfersOnBothBanks(sqlite3* db) {
  // The transfers in the cheque account's entry order, each with its saver entry's id and the
  // first id of that entry's two lines.
  const std::string transfers =
      "WITH Transfer AS (SELECT b.glBankTransactionId AS OldId, t.glTransactionId AS SplitId, "
      "(SELECT max(glBankTransactionId) FROM glBankTransaction) + row_number() OVER (ORDER BY "
      "b.glBankTransactionId) AS NewId, (SELECT max(glTransactionId) FROM glTransaction) + 2 * "
      "row_number() OVER (ORDER BY b.glBankTransactionId) - 1 AS NewLine FROM glBankTransaction "
      "b JOIN glTransaction t ON t.glBankTransactionId = b.glBankTransactionId AND "
      "t.glBankTransactionSequence <> 0 AND t.AccountId = '3020' WHERE b.BankId = 'CHQ') ";
  // The lines first: the saver's entries do not exist yet, so the ids above stand.
  Execute(db,
          "INSERT INTO glTransaction (glTransactionId, glBankTransactionId, "
          "glBankTransactionSequence, AccountId, Date, Value, TaxValue, BranchId, DeptId, Type, "
          "glSourceId, Reference, Comment, TaxCategory, TaxIO, TaxPeriodId, CashTaxCategory, "
          "CashTaxValue, TransactionId) " +
              transfers +
              "SELECT d.NewLine + s.n, d.NewId, s.n, CASE s.n WHEN 0 THEN '3020' ELSE '" +
              kTransfers +
              "' END, t.Date, CASE s.n WHEN 0 THEN t.Value ELSE -t.Value END, t.TaxValue, "
              "t.BranchId, t.DeptId, t.Type, t.glSourceId, t.Reference, t.Comment, t.TaxCategory, "
              "t.TaxIO, t.TaxPeriodId, t.CashTaxCategory, t.CashTaxValue, t.TransactionId FROM "
              "Transfer d JOIN glTransaction t ON t.glTransactionId = d.SplitId CROSS JOIN "
              "(SELECT 0 AS n UNION ALL SELECT 1) s ORDER BY d.NewId, s.n",
          "saver's transfer lines");
  Execute(db,
          "INSERT INTO glBankTransaction (glBankTransactionId, BankId, Date, OtherPartyId, "
          "Reference, Comment, StmtPage, Presented) " +
              transfers +
              "SELECT d.NewId, 'SAVE', b.Date, b.OtherPartyId, b.Reference, b.Comment, "
              "b.StmtPage, b.Presented FROM Transfer d JOIN glBankTransaction b ON "
              "b.glBankTransactionId = d.OldId ORDER BY d.NewId",
          "saver's transfer entries");
  Execute(db,
          std::string("UPDATE glTransaction SET AccountId = '") + kTransfers +
              "' WHERE glBankTransactionSequence <> 0 AND AccountId = '3020' AND "
              "glBankTransactionId IN (SELECT glBankTransactionId FROM glBankTransaction WHERE "
              "BankId = 'CHQ')",
          "cheque account's transfer lines");
}

}  // namespace

void WriteChequeRuns(DemoContext& ctx) {
  auto next_id = [&](const char* sql) {
    sqlite3_stmt* stmt = nullptr;
    std::int64_t next = 1;
    if (sqlite3_prepare_v2(ctx.db, sql, -1, &stmt, nullptr) == SQLITE_OK &&
        sqlite3_step(stmt) == SQLITE_ROW) {
      next = sqlite3_column_int64(stmt, 0) + 1;
    }
    sqlite3_finalize(stmt);
    return next;
  };
  ctx.next_transaction = std::max(
      ctx.next_transaction, next_id("SELECT Coalesce(Max(TransactionId),0) FROM Transactions"));
  ctx.next_line = std::max(
      ctx.next_line, next_id("SELECT Coalesce(Max(TransactionLineId),0) FROM TransactionLine"));
  const DemoRandom stream = ctx.random;
  Trader(ctx).ChequeRuns();
  ctx.random = stream;

  // The transfer account, beside the bank accounts.
  Execute(ctx.db,
          std::string("INSERT INTO Account (AccountId, Description, Post, Type, ALevel, DrCr, "
                      "Ratio) SELECT '") +
              kTransfers +
              "', 'Transfers between Banks', Post, Type, ALevel, DrCr, Ratio FROM Account WHERE "
              "AccountId = '3030'",
          "transfer account");
  EnterTransfersOnBothBanks(ctx.db);
  // Every line of a bank entry has a tax category: the bank's own line is never reported ("*"),
  // the others are exempt unless posted with one. None of them is a return's line (no TaxIO).
  Execute(ctx.db,
          std::string("UPDATE glTransaction SET TaxCategory = CASE WHEN "
                      "glBankTransactionSequence = 0 THEN '*' ELSE '") +
              ctx.facts.exempt +
              "' END WHERE glBankTransactionId IS NOT NULL AND TaxCategory IS NULL",
          "bank lines' tax categories");
  // The petty cash tin: a bank in use but no longer active, with no entries.
  Execute(ctx.db,
          std::string("INSERT INTO Bank (BankId, AccountName, AccountNumber, BankName, BankNumber, "
                      "Branch, OverdraftLimit, AssetAccountId, FeesAccountId, Active, InUse) "
                      "VALUES ('PETTY', 'Petty cash tin', '', 'Cash on hand', '', 'Office', 0, '") +
              account::kPettyCash + "', '" + account::kBankFees + "', 0, 1)",
          "petty cash bank");
}

void Trader::ChequeRuns() {
  if (ctx_.suppliers.empty()) return;
  const PartyInfo& model = ctx_.parties[ctx_.suppliers.front()];
  DemoTable addresses(
      ctx_.db, "OtherPartyAddress",
      {"OtherPartyId", "AddressId", "Address", "City", "State", "Postcode", "Country"});
  std::vector<std::size_t> parties;
  // Each is a copy of the first supplier under its own code, name and cheque name.
  for (const ChequeSupplier& s : kChequeSuppliers) {
    Execute(ctx_.db,
            std::string("INSERT INTO OtherParty (OtherPartyId, Name, Type, IsCustomer, IsSupplier, "
                        "LocationId, EmployeeId, SupplierCategoryId, SupplierTypeId, "
                        "SupplierPayTermId, Status, SupplierActive, TaxNumber, ChqName) SELECT '") +
                s.id + "', '" + s.name +
                "', Type, 0, 1, LocationId, EmployeeId, SupplierCategoryId, SupplierTypeId, "
                "SupplierPayTermId, Status, 1, TaxNumber, " +
                (s.cheque_name == nullptr ? "'" + std::string(s.name) + "'"
                                          : "'" + std::string(s.cheque_name) + "'") +
                " FROM OtherParty WHERE OtherPartyId = '" + model.id + "'",
            "cheque suppliers");
    addresses.Insert({s.id, s.address_kind, s.address, ctx_.facts.branches[0][1],
                      ctx_.facts.state[0] == 0 ? Cell(Cell::Null{}) : Cell(ctx_.facts.state),
                      ctx_.facts.state[0] == 0 ? "1140" : "2000", ctx_.options.country});
    PartyInfo info = model;
    info.id = s.id;
    info.name = s.name;
    info.customer = false;
    info.supplier = true;
    parties.push_back(ctx_.parties.size());
    ctx_.parties.push_back(std::move(info));
    ++ctx_.summary.parties;
  }

  // The run is on the present month's 20th: a cheque for each supplier's bills of the weeks
  // before, allocated to each of them.
  const Date present = ctx_.calendar.Present();
  Date run = present.FirstOfMonth().AddDays(19);
  if (run > present) run = present;
  struct Bills {
    std::size_t party;
    int count;
    const char* item;
    const char* account;
    const char* description;
  };
  const Bills kRuns[] = {
      {parties[0], 30, ledger_item::kConsumables, account::kPurchases, "Rigging and fittings"},
      {parties[1], 25, ledger_item::kVehicle, account::kMotorVehicle, "Diesel for the workboat"},
  };
  std::vector<std::int64_t> payments;
  for (const Bills& b : kRuns) {
    const PartyInfo& p = ctx_.parties[b.party];
    std::vector<std::pair<std::int64_t, std::int64_t>> shares;
    std::int64_t total = 0;
    for (int k = 0; k < b.count; ++k) {
      DocLine line;
      line.ledger_item = b.item;
      line.description = b.description;
      line.account = b.account;
      line.dept = "ADM";
      line.quantity = 1;
      line.value = DemoContext::Dollars(r_.Between(40, 480)) + r_.Between(0, 99) * 100;
      line.unit_price = line.value;
      line.tax_category = ctx_.facts.standard;
      line.tax = ctx_.TaxOn(line.value);
      std::vector<DocLine> lines{line};
      const Date day = run.AddDays(-45 + k);
      const std::int64_t gross = line.value + line.tax;
      const std::int64_t bill =
          WriteDocument(Side::kPayables, 20, "SINV", b.party, day, lines, "", p.location);
      shares.emplace_back(bill, gross);
      total += gross;
    }
    // The bills' own settlements are not made: the cheque pays them all.
    while (!due_.empty()) due_.pop();
    Execute(ctx_.db,
            "UPDATE Transactions SET ValueRemaining = 0 WHERE TransactionId BETWEEN " +
                std::to_string(shares.front().first) + " AND " +
                std::to_string(shares.back().first),
            "bills paid by cheque");
    payments.push_back(ctx_.next_transaction);
    Settle({run, order_++, 25, b.party, shares.front().first, total, p.location}, &shares);
  }
  for (const std::int64_t payment : payments) {
    Execute(
        ctx_.db,
        "UPDATE Transactions SET PayType = 'Q' WHERE TransactionId = " + std::to_string(payment),
        "cheque payments");
  }

  // A cheque written against ledger lines, with no document: welding on the workboat, its GST on
  // a line of its own that is never reported.
  const PartyInfo& welder = ctx_.parties[parties[2]];
  const std::int64_t net = DemoContext::Dollars(1240) + 5000;
  const std::int64_t tax = ctx_.TaxOn(net);
  Journal journal{run,
                  "CB",
                  "CHQ1001",
                  "Welding - workboat",
                  0,
                  0,
                  welder.branch,
                  "ADM",
                  {{account::kBankCheque, -(net + tax)},
                   {account::kRepairs, net, tax, ctx_.facts.standard, "I"},
                   {account::kGstPayable, tax, 0, "*"}}};
  ctx_.ledger->PostBank({"CHQ", run, welder.id, "CHQ1001", "Welding - workboat"}, journal);
  ctx_.summary.transactions += transactions_.Rows();
  ctx_.summary.transaction_lines += lines_.Rows();
}

}  // namespace trellin::demo
