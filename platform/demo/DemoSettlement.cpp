// When and how the parties settle: receipts, payments, credits and discounts, each allocated to
// the document it settles.

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoTrader.h"

namespace trellin::demo {

namespace {

// A document's number as the references print it: seven digits, zeros in front.
std::string DocumentNumber(std::int64_t id) {
  char text[24];
  std::snprintf(text, sizeof text, "%07lld", static_cast<long long>(id));
  return text;
}

}  // namespace

void Trader::PlanSettlements(Side side, std::size_t party, std::int64_t document, Date date,
                             std::int64_t gross, const std::string& location,
                             std::vector<Settlement>& plan) {
  const PartyInfo& p = ctx_.parties[party];
  const Date present = ctx_.calendar.Present();
  const bool receivable = side == Side::kReceivables;
  const Date due = receivable ? DueDate(date, p.term) : DueDate(date, 0);
  auto add = [&](Date when, int type, std::int64_t amount) {
    if (amount <= 0 || when > present) return;
    plan.push_back({when, order_++, type, party, document, amount, location});
  };
  std::int64_t left = gross;
  // A few documents are partly credited a week or two later: a return, a price put right.
  if (r_.Chance(0.03)) {
    const std::int64_t credit = ToCents(static_cast<double>(gross) * (0.1 + 0.2 * r_.Unit()));
    add(date.AddDays(static_cast<int>(r_.Between(3, 20))), receivable ? 31 : 21, credit);
    left -= credit;
  }
  const int pay_type = receivable ? 35 : 25;
  if (!receivable) {
    // The company pays its suppliers on the 20th, some bills a little late when cash is short.
    // Now and then the bill differs from the order by a few dollars, put right by a journal.
    if (r_.Chance(0.03)) {
      const std::int64_t difference = std::min(left, r_.Between(1, 500) * 100);
      add(due.AddDays(-1), 23, difference);
      left -= difference;
    }
    add(due.AddDays(r_.Chance(0.1) ? static_cast<int>(r_.Between(10, 40)) : 0), pay_type, left);
    return;
  }
  const int late_low[] = {-5, 0, 20, 5, 30};
  const int late_high[] = {0, 10, 75, 20, 90};
  const int kind = static_cast<int>(p.payer);
  Date pay = due.AddDays(static_cast<int>(r_.Between(late_low[kind], late_high[kind])));
  if (pay < date) pay = date;
  switch (p.payer) {
    case Payer::kPrompt:
      // Prompt trade payers take the prompt payment discount.
      if (p.weight > 1 && pay <= date.AddDays(10)) {
        const std::int64_t discount = ToCents(static_cast<double>(gross) * 0.025);
        add(pay, 32, discount);
        left -= discount;
      }
      add(pay, pay_type, left);
      break;
    case Payer::kPartial: {
      const std::int64_t half = left / 200 * 100;
      add(pay, pay_type, half);
      // The second half comes much later; one time in five it never comes, and then half the
      // time it is written off by a journal six months on.
      if (!r_.Chance(0.2)) {
        add(pay.AddDays(static_cast<int>(r_.Between(40, 100))), pay_type, left - half);
      } else if (r_.Chance(0.5)) {
        add(pay.AddDays(180), 33, left - half);
      }
      break;
    }
    case Payer::kBad:
      // A bad payer paid in its early years; lately it pays one document in three.
      if (date.Serial() < present.Serial() - 400 || r_.Chance(0.33)) add(pay, pay_type, left);
      break;
    default:
      add(pay, pay_type, left);
  }
}

void Trader::OpenSupplierItems() {
  // Written once the days are done, with no random draw and the last ids, so the rest of the
  // company stays as it was; the lines carry no tax, so no tax return changes either.
  const Date present = ctx_.calendar.Present();
  const std::int64_t scale = ctx_.options.scale;
  auto write = [&](std::size_t party, int type, const char* type_id, const std::string& prefix,
                   Date date, Cell due, std::int64_t value, std::int64_t held,
                   std::int64_t bank_entry, std::int64_t id) {
    const PartyInfo& p = ctx_.parties[party];
    const bool payment = type == 25;
    transactions_.Insert(
        {id,
         p.id,
         type,
         type_id,
         "AP" + date.ToIso().substr(0, 4) + date.ToIso().substr(5, 2),
         prefix + DocumentNumber(id),
         Cell::Null{},
         date,
         date,
         due,
         date,
         value,
         value,
         held,
         p.employee,
         p.location,
         Cell::Null{},
         payment ? Cell(Cell::Null{}) : Cell("Postal"),
         Cell::Null{},
         std::int64_t{0},
         payment ? Cell("C") : Cell(Cell::Null{}),
         payment ? Cell(p.name) : Cell(Cell::Null{}),
         Cell::Null{},
         payment ? Cell("12-3456-" + std::to_string(2000000 + id)) : Cell(Cell::Null{}),
         bank_entry == 0 ? Cell(Cell::Null{}) : Cell(bank_entry),
         held != 0 ? Cell("Disputed") : Cell(Cell::Null{})});
  };
  auto line = [&](std::int64_t id, int type, Date date, const PartyInfo& p, const char* item,
                  const char* text, std::int64_t value) {
    lines_.Insert({ctx_.next_line++, id, type, date, item, p.location, "ADM", text, Cell::Null{},
                   1.0, value, value, std::int64_t{0}, 0.0, value, Cell::Null{}, std::int64_t{0},
                   std::int64_t{0}});
  };
  // One supplier in twelve has lately waited for its money: a freight bill on the 5th of each
  // of the last six months, none paid, so bills stand in every column of the aged report. The
  // fourth month's is disputed and half of it held. Nothing is dated before the open year, whose
  // closing has been done.
  const Date year_start = ctx_.calendar.Years().back().start;
  for (std::size_t i = 0; i < ctx_.suppliers.size(); ++i) {
    if (i % 12 != 5) continue;
    const std::size_t party = ctx_.suppliers[i];
    const PartyInfo& p = ctx_.parties[party];
    for (int k = 5; k >= 0; --k) {
      const Date date = present.FirstOfMonth().AddMonths(-k).AddDays(4);
      if (date < year_start) continue;
      const std::int64_t gross =
          DemoContext::Dollars(300 + 90 * k + 40 * static_cast<std::int64_t>(i % 7)) * scale;
      const std::int64_t held = k == 3 ? gross / 200 * 100 : 0;
      const std::int64_t id = ctx_.next_transaction++;
      write(party, 20, "SINV", "S", date, Cell(DueDate(date, 0)), gross, held, 0, id);
      line(id, 20, date, p, ledger_item::kFreight, "Freight - carrier's account", gross);
      ctx_.ledger->Post({date,
                         "AP",
                         "S" + DocumentNumber(id),
                         p.name,
                         0,
                         id,
                         p.branch,
                         "",
                         {{account::kPayables, -gross},
                          {account::kFreightInwards, gross, 0, "", "", "", "ADM"}}});
    }
  }
  // For each unit of scale, one supplier is paid on account and another gives a credit for
  // goods returned, on the 11th and 14th of the present's month; neither is allocated, so both
  // stand open as the suppliers' debits.
  const std::size_t count = ctx_.suppliers.size();
  for (std::int64_t k = 0; k < scale; ++k) {
    const std::size_t paid = ctx_.suppliers[static_cast<std::size_t>(3 + 7 * k) % count];
    const PartyInfo& payee = ctx_.parties[paid];
    const Date paid_on = present.FirstOfMonth().AddDays(10);
    const std::int64_t amount = DemoContext::Dollars(1200);
    const std::int64_t payment_id = ctx_.next_transaction++;
    const std::string reference = "P" + std::to_string(payment_id);
    const std::int64_t bank_entry = ctx_.ledger->PostBankPresented(
        {"CHQ", paid_on, payee.id, reference, "Payment on account"},
        {paid_on,
         "CB",
         reference,
         payee.name,
         0,
         payment_id,
         payee.branch,
         "",
         {{account::kBankCheque, -amount}, {account::kPayables, amount}}},
        paid_on.AddDays(3));
    write(paid, 25, "PAY", "P", paid_on, Cell(Cell::Null{}), -amount, 0, bank_entry, payment_id);

    const std::size_t credited = ctx_.suppliers[static_cast<std::size_t>(8 + 7 * k) % count];
    const PartyInfo& creditor = ctx_.parties[credited];
    const Date credited_on = present.FirstOfMonth().AddDays(13);
    const std::int64_t credit = DemoContext::Dollars(345);
    const std::int64_t credit_id = ctx_.next_transaction++;
    write(credited, 21, "SCRN", "SC", credited_on, Cell(Cell::Null{}), -credit, 0, 0, credit_id);
    line(credit_id, 21, credited_on, creditor, ledger_item::kReturned, "Credit - returned goods",
         -credit);
    ctx_.ledger->Post(
        {credited_on,
         "AP",
         "SC" + DocumentNumber(credit_id),
         creditor.name,
         0,
         credit_id,
         creditor.branch,
         "",
         {{account::kPayables, credit}, {account::kPurchases, -credit, 0, "", "", "", "ADM"}}});
  }
  SupplierPaymentRun();
}

void Trader::SupplierPaymentRun() {
  // Last month's payment run on the 20th, as the business pays: for each unit of scale one
  // supplier is paid by direct credit for two bills of the month before, less a credit it gave
  // meanwhile, so its remittance advice lists two invoices and a credit. Once, the tenth
  // supplier's direct credit comes back from the bank three days later and is reversed by a
  // payment the other way, allocated to it; its bill stands open again. No random draw, the
  // last ids, no tax: nothing else in the company moves.
  const Date present = ctx_.calendar.Present();
  const Date run = present.FirstOfMonth().AddMonths(-1).AddDays(19);
  const Date billed = run.FirstOfMonth().AddMonths(-1);
  if (billed < ctx_.calendar.Years().back().start) return;
  const std::size_t count = ctx_.suppliers.size();
  auto document = [&](const PartyInfo& p, int type, const char* type_id, const std::string& prefix,
                      Date date, std::int64_t value, const char* item, const char* text,
                      bool settled) {
    const std::int64_t id = ctx_.next_transaction++;
    const bool bill = type == 20;
    transactions_.Insert({id,
                          p.id,
                          type,
                          type_id,
                          "AP" + date.ToIso().substr(0, 4) + date.ToIso().substr(5, 2),
                          prefix + DocumentNumber(id),
                          Cell::Null{},
                          date,
                          date,
                          bill ? Cell(DueDate(date, 0)) : Cell(Cell::Null{}),
                          date,
                          value,
                          settled ? std::int64_t{0} : value,
                          std::int64_t{0},
                          p.employee,
                          p.location,
                          Cell::Null{},
                          Cell("Postal"),
                          Cell::Null{},
                          std::int64_t{0},
                          Cell::Null{},
                          Cell::Null{},
                          Cell::Null{},
                          Cell::Null{},
                          Cell::Null{},
                          Cell::Null{}});
    lines_.Insert({ctx_.next_line++, id, type, date, item, p.location, "ADM", text, Cell::Null{},
                   1.0, value, value, std::int64_t{0}, 0.0, value, Cell::Null{}, std::int64_t{0},
                   std::int64_t{0}});
    const std::string account = bill ? account::kFreightInwards : account::kPurchases;
    ctx_.ledger->Post({date,
                       "AP",
                       prefix + DocumentNumber(id),
                       p.name,
                       0,
                       id,
                       p.branch,
                       "",
                       {{account::kPayables, -value}, {account, value, 0, "", "", "", "ADM"}}});
    return id;
  };
  // A payment of `amount` (positive: money out) on `date`, by direct credit to the supplier's
  // account; negative, the bank's return of one.
  auto payment = [&](const PartyInfo& p, Date date, std::int64_t amount, const char* comment) {
    const std::int64_t id = ctx_.next_transaction++;
    const std::string reference = "P" + std::to_string(id);
    const std::int64_t bank_entry = ctx_.ledger->PostBankPresented(
        {"CHQ", date, p.id, reference, comment},
        {date,
         "CB",
         reference,
         p.name,
         0,
         id,
         p.branch,
         "",
         {{account::kBankCheque, -amount}, {account::kPayables, amount}}},
        date.AddDays(1));
    transactions_.Insert({id,
                          p.id,
                          25,
                          "PAY",
                          "AP" + date.ToIso().substr(0, 4) + date.ToIso().substr(5, 2),
                          reference,
                          Cell::Null{},
                          date,
                          date,
                          Cell::Null{},
                          date,
                          -amount,
                          std::int64_t{0},
                          std::int64_t{0},
                          p.employee,
                          p.location,
                          Cell::Null{},
                          Cell::Null{},
                          Cell::Null{},
                          std::int64_t{0},
                          Cell("C"),
                          Cell(p.name),
                          Cell::Null{},
                          Cell("12-3456-" + std::to_string(3000000 + id)),
                          Cell(bank_entry),
                          Cell::Null{}});
    return id;
  };
  for (std::int64_t k = 0; k < ctx_.options.scale; ++k) {
    const PartyInfo& p = ctx_.parties[ctx_.suppliers[static_cast<std::size_t>(4 + 7 * k) % count]];
    const std::int64_t first = DemoContext::Dollars(860 + 10 * k);
    const std::int64_t second = DemoContext::Dollars(1415);
    const std::int64_t credit = DemoContext::Dollars(215);
    const std::int64_t bill1 = document(p, 20, "SINV", "S", billed.AddDays(5), first,
                                        ledger_item::kFreight, "Freight - carrier's account", true);
    const std::int64_t bill2 = document(p, 20, "SINV", "S", billed.AddDays(20), second,
                                        ledger_item::kFreight, "Freight - carrier's account", true);
    const std::int64_t returned = document(p, 21, "SCRN", "SC", run.AddDays(-11), -credit,
                                           ledger_item::kReturned, "Credit - returned goods", true);
    const std::int64_t paid = payment(p, run, first + second - credit, "Payment run");
    // The payment takes up both bills whole; the credit, first of its pair, takes up the rest.
    allocations_.Insert({paid, bill1, -first});
    allocations_.Insert({paid, bill2, -second});
    allocations_.Insert({returned, paid, -credit});
  }
  const PartyInfo& p = ctx_.parties[ctx_.suppliers[9 % count]];
  const std::int64_t amount = DemoContext::Dollars(642) + 3500;  // 642.35
  document(p, 20, "SINV", "S", billed.AddDays(11), amount, ledger_item::kFreight,
           "Freight - carrier's account", false);
  const std::int64_t sent = payment(p, run, amount, "Payment run");
  const std::int64_t returned = payment(p, run.AddDays(3), -amount, "Direct credit returned");
  allocations_.Insert({returned, sent, amount});
}

void Trader::Settle(const Settlement& s,
                    const std::vector<std::pair<std::int64_t, std::int64_t>>* shares) {
  const bool receivable = s.type >= 30;
  const std::int64_t sign = receivable ? -1 : 1;
  const PartyInfo& p = ctx_.parties[s.party];
  const std::int64_t id = ctx_.next_transaction++;
  const char* control = receivable ? account::kReceivables : account::kPayables;
  struct Kind {
    int type;
    const char* type_id;
    const char* prefix;
  };
  constexpr Kind kKinds[] = {{35, "REC", "R"}, {31, "CRN", "CR"},  {32, "DSC", "D"},
                             {25, "PAY", "P"}, {21, "SCRN", "SC"}, {22, "PPD", "PD"},
                             {33, "JNL", "J"}, {23, "SJNL", "SJ"}};
  const Kind* kind = &kKinds[0];
  for (const Kind& k : kKinds) {
    if (k.type == s.type) kind = &k;
  }
  const std::string reference = std::string(kind->prefix) + std::to_string(id);
  std::int64_t bank_entry = 0;
  Journal journal{s.date, receivable ? "AR" : "AP", reference, p.name, 0, id, p.branch, ""};
  if (s.type == 35 || s.type == 25) {
    journal.source = "CB";
    journal.lines.push_back({account::kBankCheque, -sign * s.amount});
    journal.lines.push_back({control, sign * s.amount});
    bank_entry = ctx_.ledger->PostBank(
        {"CHQ", s.date, p.id, reference, receivable ? "Receipt" : "Payment"}, journal);
  } else if (s.type == 32 || s.type == 22 || s.type == 33 || s.type == 23) {
    // Discounts go to their own accounts; journals write a bad debt off, or a bill's
    // difference back to purchases.
    const bool discount = s.type == 32 || s.type == 22;
    const char* other = receivable ? (discount ? account::kDiscountsAllowed : account::kBadDebts)
                                   : (discount ? account::kDiscountsReceived : account::kPurchases);
    journal.lines.push_back({control, sign * s.amount});
    journal.lines.push_back({other, -sign * s.amount});
    ctx_.ledger->Post(journal);
    // Its one line carries the whole amount and no tax, as the ledger posts it.
    const char* item = discount     ? ledger_item::kDiscount
                       : receivable ? ledger_item::kWriteOff
                                    : ledger_item::kBillDifference;
    const char* text = discount     ? "Prompt payment discount"
                       : receivable ? "Bad debt written off"
                                    : "Difference between bill and order";
    lines_.Insert({ctx_.next_line++, id, s.type, s.date, item, s.location, "ADM", text,
                   Cell::Null{}, 0.0, std::int64_t{0}, -sign * s.amount, std::int64_t{0}, 0.0,
                   -sign * s.amount, Cell::Null{}, std::int64_t{0}, std::int64_t{0}});
  } else {
    // A credit: one line, tax included in the amount, turned against the document.
    const std::int64_t net =
        ToCents(static_cast<double>(s.amount) * 100.0 / (100.0 + ctx_.facts.tax_rate));
    const std::int64_t tax = s.amount - net;
    const char* account = receivable ? account::kSalesShop : account::kPurchases;
    lines_.Insert({ctx_.next_line++, id, s.type, s.date,
                   receivable ? ledger_item::kPriceAdjustment : ledger_item::kReturned, s.location,
                   Cell::Null{},
                   receivable ? "Credit - price adjustment" : "Credit - returned goods",
                   Cell::Null{}, 0.0, std::int64_t{0}, -sign * net, std::int64_t{0}, 0.0,
                   -sign * net, ctx_.facts.standard, -sign * tax, std::int64_t{0}});
    journal.lines.push_back({control, sign * s.amount});
    journal.lines.push_back(
        {account, -sign * net, -sign * tax, ctx_.facts.standard, receivable ? "O" : "I"});
    journal.lines.push_back({account::kGstPayable, -sign * tax});
    const TaxPeriodSpan& period = ctx_.calendar.TaxPeriodOf(s.date);
    tax_by_period_[static_cast<std::size_t>(ctx_.calendar.MonthIndex(period.from) /
                                            ctx_.calendar.TaxMonths())] += -sign * tax;
    ctx_.ledger->Post(journal);
  }
  // How it was paid: a customer by any means, the company by cheque, bank transfer or direct
  // credit. The letter's draw is the one it always was; the card number follows from the draw of
  // the bank details, so nothing else in the company moves. A receipt by none of the letters is
  // cash, with no pay type.
  static constexpr const char* kReceiptTypes[] = {"Q", "D", "E", "A", "B", "C",
                                                  "F", "M", "O", "V", ""};
  static constexpr const char* kPaymentTypes[] = {"Q", "B", "C"};
  const bool payment = s.type == 35 || s.type == 25;
  const char* pay_type = "";
  if (payment) {
    pay_type = receivable
                   ? kReceiptTypes[r_.Below(static_cast<std::int64_t>(std::size(kReceiptTypes)))]
                   : kPaymentTypes[r_.Below(static_cast<std::int64_t>(std::size(kPaymentTypes)))];
  }
  const std::string details =
      payment ? "12-3456-" + std::to_string(1000000 + r_.Below(8999999)) : std::string();
  const std::string_view letter = pay_type;
  const bool card = letter == "A" || letter == "D" || letter == "M" || letter == "V";
  // The card's last four digits from the details drawn, the rest masked, as a terminal prints.
  const std::string card_number =
      card ? "XXXX-XXXX-XXXX-" + details.substr(details.size() - 4) : std::string();
  // A few receipts of a month's first working day are dated the last day of the month before.
  const Date document_date = s.type == 35 ? MonthEndDate(s.date, id, 3) : s.date;
  transactions_.Insert({id,
                        p.id,
                        s.type,
                        kind->type_id,
                        std::string(receivable ? "AR" : "AP") + s.date.ToIso().substr(0, 4) +
                            s.date.ToIso().substr(5, 2),
                        reference,
                        Cell::Null{},
                        document_date,
                        s.date,
                        Cell::Null{},
                        s.date,
                        -sign * s.amount,
                        s.document == 0 && shares == nullptr ? -sign * s.amount : std::int64_t{0},
                        std::int64_t{0},
                        p.employee,
                        s.location,
                        Cell::Null{},
                        Cell::Null{},
                        Cell::Null{},
                        std::int64_t{0},
                        OrNull(pay_type),
                        payment ? Cell(p.name) : Cell(Cell::Null{}),
                        OrNull(card_number),
                        card || letter.empty() ? Cell(Cell::Null{}) : OrNull(details),
                        bank_entry == 0 ? Cell(Cell::Null{}) : Cell(bank_entry),
                        Cell::Null{}});
  // A receipt on account settles nothing yet: it stays open as the customer's credit.
  if (shares != nullptr) {
    for (const auto& [document, amount] : *shares)
      allocations_.Insert({id, document, -sign * amount});
  } else if (s.document != 0) {
    allocations_.Insert({id, s.document, -sign * s.amount});
  }
}

}  // namespace trellin::demo
