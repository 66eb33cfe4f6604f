// The company's own cash and its year: wages, bank charges and interest, the loan, GST
// returns, income tax, stocktakes.

#include <cmath>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoTrader.h"

namespace trellin::demo {

namespace {

// A bank entry of `amount` (positive into the bank) against one other account.
void Cash(DemoContext& ctx, const char* bank_account, Date date, const char* source,
          const std::string& reference, const std::string& comment, const char* other,
          std::int64_t amount) {
  if (amount == 0) return;
  const char* bank = bank_account == account::kBankSaver ? "SAVE" : "CHQ";
  ctx.ledger->PostBank({bank, date, "", reference, comment},
                       {date,
                        source,
                        reference,
                        comment,
                        0,
                        0,
                        ctx.branches[0],
                        "ADM",
                        {{bank_account, amount}, {other, -amount}}});
}

}  // namespace

void Trader::CashMonth(Date month_start) {
  DemoLedger& gl = *ctx_.ledger;
  const DemoCalendar& cal = ctx_.calendar;
  const Date present = cal.Present();
  const std::int64_t scale = ctx_.options.scale;
  const std::string month = month_start.ToIso().substr(0, 7);
  // What is owed for PAYE at the month's start is last month's, paid on the 20th.
  const std::int64_t paye_owed = gl.Balance(account::kPayePayable);
  for (int fortnight : {13, 27}) {
    const Date payday = month_start.AddDays(fortnight);
    if (payday > present) break;
    const std::int64_t gross = DemoContext::Dollars(52000 + r_.Below(4000)) * scale;
    const std::int64_t paye = gross / 500 * 100;  // a fifth, to the cent
    const std::int64_t super = gross * 3 / 10000 * 100;
    gl.PostBank({"CHQ", payday, "", "WAGES", "Wages " + payday.ToIso()},
                {payday,
                 "PR",
                 "WAGES",
                 "Wages",
                 0,
                 0,
                 ctx_.branches[0],
                 "ADM",
                 {{account::kBankCheque, -(gross - paye)},
                  {account::kWages, gross},
                  {account::kSuperannuation, super},
                  {account::kPayePayable, -(paye + super)}}});
  }
  const Date twentieth = month_start.AddDays(19);
  if (twentieth <= present && month_start > cal.FirstDay()) {
    // Last month's PAYE goes to the tax department on the 20th.
    Cash(ctx_, account::kBankCheque, twentieth, "PR", "PAYE", "PAYE " + month,
         account::kPayePayable, paye_owed);
  }
  // A few customers pay in advance, on account; the money waits for their next invoice.
  for (std::int64_t k = 0; k < scale; ++k) {
    const Date day = month_start.AddDays(static_cast<int>(r_.Between(0, 25)));
    const std::size_t party = ctx_.customers[static_cast<std::size_t>(
        r_.Below(static_cast<std::int64_t>(ctx_.customers.size())))];
    if (day <= present) {
      due_.push({day, order_++, 35, party, 0, DemoContext::Dollars(r_.Between(50, 500)),
                 ctx_.parties[party].location});
    }
  }
  const Date last = month_start.LastOfMonth();
  if (last > present) return;
  Cash(ctx_, account::kBankCheque, last, "CB", "FEES", "Account fees " + month, account::kBankFees,
       -DemoContext::Dollars(25 + r_.Below(40)));
  Cash(ctx_, account::kBankSaver, last, "CB", "INT", "Interest " + month,
       account::kInterestReceived,
       ToCents(static_cast<double>(gl.Balance(account::kBankSaver)) * 0.003));
  // The term loan: a fixed monthly instalment, interest first.
  const std::int64_t loan = -gl.Balance(account::kBankLoan);
  if (loan > 0) {
    const std::int64_t interest = ToCents(static_cast<double>(loan) * 0.0055);
    const std::int64_t principal = std::min(loan, DemoContext::Dollars(20000) * scale);
    gl.PostBank({"CHQ", last, "", "LOAN", "Loan instalment " + month},
                {last,
                 "CB",
                 "LOAN",
                 "Loan instalment",
                 0,
                 0,
                 ctx_.branches[0],
                 "ADM",
                 {{account::kBankCheque, -(interest + principal)},
                  {account::kInterestPaid, interest},
                  {account::kBankLoan, principal}}});
  }
  // Income tax provided at a year end is paid seven months later.
  for (std::size_t y = 0; y < cal.Years().size(); ++y) {
    if (cal.Years()[y].end.AddDays(1).AddMonths(7) == month_start) {
      Cash(ctx_, account::kBankCheque, month_start.AddDays(6), "GL", "IRTAX",
           "Income tax " + cal.Years()[y].name, account::kIncomeTaxPayable,
           gl.Balance(account::kIncomeTaxPayable));
    }
  }
}

void Trader::SweepCash(Date day) {
  DemoLedger& gl = *ctx_.ledger;
  const std::int64_t scale = ctx_.options.scale;
  // Surplus cash goes to the saver account at the month's end.
  const std::int64_t surplus =
      gl.Balance(account::kBankCheque) - DemoContext::Dollars(200000) * scale;
  if (surplus > DemoContext::Dollars(10000)) {
    const std::int64_t transfer = surplus / 1000000 * 1000000;
    gl.PostBank({"CHQ", day, "", "TFR", "Transfer to saver"},
                {day,
                 "CB",
                 "TFR",
                 "Transfer to saver",
                 0,
                 0,
                 ctx_.branches[0],
                 "ADM",
                 {{account::kBankCheque, -transfer}, {account::kBankSaver, transfer}}});
  } else if (surplus < -DemoContext::Dollars(40000) * scale &&
             gl.Balance(account::kBankSaver) > DemoContext::Dollars(60000) * scale) {
    Cash(ctx_, account::kBankCheque, day, "CB", "TFR", "Transfer from saver", account::kBankSaver,
         std::min(-surplus / 100000000 * 100000000 + DemoContext::Dollars(10000),
                  gl.Balance(account::kBankSaver) / 1000000 * 1000000));
  }
}

void Trader::TaxReturns(Date day) {
  // Each filed period's GST is settled 28 days after the period ends.
  for (const TaxPeriodSpan& period : ctx_.calendar.TaxPeriods()) {
    if (!period.filed || period.to.AddDays(28) != day) continue;
    const std::int64_t net = tax_by_period_[static_cast<std::size_t>(
        ctx_.calendar.MonthIndex(period.from) / ctx_.calendar.TaxMonths())];
    Cash(ctx_, account::kBankCheque, day, "GL", "GST" + std::to_string(period.id),
         "GST return " + period.from.ToIso() + " to " + period.to.ToIso(), account::kGstPayable,
         net);
  }
}

void Trader::YearEnd(int year_index) {
  const YearSpan& year = ctx_.calendar.Years()[static_cast<std::size_t>(year_index)];
  StocktakeAdjustments(year.end);
  std::int64_t profit = 0;
  for (const auto& [id, type] : ctx_.ledger->Accounts()) {
    if (type > 5) continue;
    for (Date m = year.start; m <= year.end; m = m.AddMonths(1)) {
      profit -= ctx_.ledger->MonthMovement(id, ctx_.calendar.MonthIndex(m));
    }
  }
  if (profit > 0) {
    const std::int64_t tax = ToCents(static_cast<double>(profit) * 0.28);
    ctx_.ledger->Post({year.end,
                       "GL",
                       "TAX" + year.name,
                       "Income tax provision " + year.name,
                       0,
                       0,
                       ctx_.branches[0],
                       "ADM",
                       {{account::kIncomeTax, tax}, {account::kIncomeTaxPayable, -tax}}});
    Cash(ctx_, account::kBankCheque, year.end, "GL", "DIV" + year.name, "Dividend " + year.name,
         account::kDividends, -ToCents(static_cast<double>(profit - tax) * 0.3));
  }
}

void Trader::StocktakeAdjustments(Date day) {
  // The year-end count finds a few plain items at the warehouse a unit or two out.
  std::int64_t total = 0;
  for (std::size_t item = 0; item < ctx_.items.size(); ++item) {
    const ItemInfo& info = ctx_.items[item];
    if (info.inventory != 1 || !r_.Chance(0.15)) continue;
    double delta = static_cast<double>(r_.Between(1, 2)) * (r_.Chance(0.7) ? -1 : 1);
    std::int64_t cost = 0;
    if (delta < 0) {
      const auto taken = stock_.Take(item, 0, -delta, false);
      if (taken.empty()) continue;
      delta = -taken.front().quantity;
      cost = -taken.front().cost;
    } else {
      cost = ToCents(delta * static_cast<double>(info.cost));
      stock_.Receive(item, 0, "", delta, cost);
    }
    lines_.Insert({ctx_.next_line++, Cell::Null{}, 11, day, info.id, ctx_.locations[0],
                   Cell::Null{}, "Stocktake adjustment", Cell::Null{}, delta, std::int64_t{0},
                   std::int64_t{0}, std::int64_t{0}, 0.0, std::int64_t{0}, Cell::Null{},
                   std::int64_t{0}, cost});
    total += cost;
  }
  if (total != 0) {
    ctx_.ledger->Post({day,
                       "SC",
                       "STKTAKE",
                       "Stocktake " + day.ToIso(),
                       0,
                       0,
                       ctx_.branches[0],
                       "ADM",
                       {{account::kStock, total}, {account::kStockAdjustments, -total}}});
  }
}

}  // namespace trellin::demo
