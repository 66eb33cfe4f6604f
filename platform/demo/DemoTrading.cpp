// Sales, purchases and what the parties pay: the sub-ledgers and their postings.

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoTrader.h"

namespace trellin::demo {

namespace {

std::string Pad(std::int64_t n, int width) {
  std::string text = std::to_string(n);
  return std::string(static_cast<std::size_t>(std::max(0, width - static_cast<int>(text.size()))),
                     '0') +
         text;
}

bool IsWeekday(Date day) {
  return day.DayOfWeek() != Weekday::Saturday && day.DayOfWeek() != Weekday::Sunday;
}

}  // namespace

void WriteTrading(DemoContext& ctx) { Trader(ctx).Run(); }

Trader::Trader(DemoContext& ctx)
    : ctx_(ctx),
      r_(ctx.random),
      stock_(ctx.items.size(), ctx.locations.size()),
      tax_by_period_(ctx.calendar.TaxPeriods().size(), 0),
      transactions_(ctx.db, "Transactions",
                    {"TransactionId",
                     "OtherPartyId",
                     "Type",
                     "TransactionTypeId",
                     "BatchId",
                     "Reference",
                     "OrderNo",
                     "Date",
                     "DateProcess",
                     "DatePayment",
                     "CreatedDate",
                     "Value",
                     "ValueRemaining",
                     "Held",
                     "EmployeeId",
                     "LocationId",
                     "JobId",
                     "AddressId",
                     "PPDDate",
                     "PPDAllowed",
                     "PayType",
                     "Name",
                     "CardNumber",
                     "BankDetails",
                     "glBankTransactionId",
                     "UserDefined1"}),
      lines_(ctx.db, "TransactionLine",
             {"TransactionLineId", "TransactionId", "Type", "DateProcess", "ItemId", "LocationId",
              "DeptId", "Description", "SerialNumber", "Quantity", "UnitPrice", "Extension",
              "Discount", "DiscountRate", "Value", "TaxCategory", "TaxValue", "ItemCost"}),
      allocations_(ctx.db, "TransactionAllocation",
                   {"TransactionId1", "TransactionId2", "ValueAllocated"}) {}

void Trader::Run() {
  WriteJobs();
  const DemoCalendar& cal = ctx_.calendar;
  const Date present = cal.Present();
  // The company starts with its owners' capital and a loan, in the bank.
  ctx_.ledger->PostBank(
      {"CHQ", cal.FirstDay(), "", "OPEN", "Capital introduced and term loan drawn"},
      {cal.FirstDay(),
       "CB",
       "OPEN",
       "Opening capital and loan",
       0,
       0,
       ctx_.branches[0],
       "ADM",
       {{account::kBankCheque, DemoContext::Dollars(2500000) * ctx_.options.scale},
        {account::kShareCapital, -DemoContext::Dollars(1000000) * ctx_.options.scale},
        {account::kBankLoan, -DemoContext::Dollars(1500000) * ctx_.options.scale}}});
  const int months = cal.Months();
  for (Date day = cal.FirstDay(); day <= present; day = day.AddDays(1)) {
    if (day.Day() == 1) {
      OverheadsMonth(day);
      CashMonth(day);
      ctx_.Progress(0.05 + 0.8 * cal.MonthIndex(day) / months);
    }
    if (day.DayOfWeek() == Weekday::Monday || day == cal.FirstDay()) RestockWeek(day);
    if (IsWeekday(day)) SalesDay(day);
    JobsDay(day);
    while (!due_.empty() && due_.top().date <= day) {
      Settlement s = due_.top();
      due_.pop();
      Settle(s);
    }
    TaxReturns(day);
    if (day == day.LastOfMonth()) SweepCash(day);
    for (std::size_t y = 0; y + 1 < cal.Years().size(); ++y) {
      if (cal.Years()[y].end == day) YearEnd(static_cast<int>(y));
    }
  }
  OpenSupplierItems();
  FinishStock();
  ctx_.summary.transactions = transactions_.Rows();
  ctx_.summary.transaction_lines = lines_.Rows();
}

std::size_t Trader::LocationIndex(const std::string& location) const {
  for (std::size_t i = 0; i < ctx_.locations.size(); ++i) {
    if (ctx_.locations[i] == location) return i;
  }
  return 0;
}

Date Trader::MonthEndDate(Date day, std::int64_t id, int every) const {
  // The first working day: a weekday with only a weekend, if anything, before it in its month.
  // No random draw, so the rest of the company stays as it was.
  const bool first_working_day =
      IsWeekday(day) && (day.Day() == 1 || (day.Day() <= 3 && day.DayOfWeek() == Weekday::Monday));
  if (!first_working_day || id % every != 0 || ctx_.calendar.MonthIndex(day) == 0) return day;
  return day.FirstOfMonth().AddDays(-1);
}

std::int64_t Trader::Gross(const std::vector<DocLine>& lines) const {
  std::int64_t gross = 0;
  for (const DocLine& line : lines) gross += line.value + line.tax;
  return gross;
}

void Trader::StockLines(std::vector<DocLine>& lines, std::size_t item, std::size_t location,
                        double quantity, std::int64_t unit_price, double discount_rate) {
  const ItemInfo& info = ctx_.items[item];
  auto add = [&](double qty, const std::string& serial, std::int64_t cost) {
    DocLine line;
    line.item = item;
    line.description = info.description;
    line.account = info.sales_account;
    line.dept = info.dept;
    line.serial = serial;
    line.quantity = qty;
    line.unit_price = unit_price;
    const std::int64_t extension = ToCents(qty * static_cast<double>(unit_price));
    line.discount = ToCents(static_cast<double>(extension) * discount_rate / 100.0);
    line.value = extension - line.discount;
    line.cost = cost;
    lines.push_back(std::move(line));
  };
  if (info.inventory == 0) {
    add(quantity, "", 0);
    return;
  }
  for (const StockTake& take : stock_.Take(item, location, quantity, info.inventory != 1)) {
    add(take.quantity, take.number, take.cost);
  }
}

void Trader::SalesDay(Date day) {
  const DemoCalendar& cal = ctx_.calendar;
  const double growth = 1.0 + 0.08 * cal.MonthIndex(day) / 12.0;
  const int count =
      static_cast<int>(std::lround(11.0 * ctx_.options.scale * growth * (0.7 + 0.6 * r_.Unit())));
  std::vector<int> weights;
  weights.reserve(ctx_.customers.size());
  for (std::size_t c : ctx_.customers) weights.push_back(ctx_.parties[c].weight);
  for (int n = 0; n < count; ++n) {
    const std::size_t party = ctx_.customers[r_.Weighted(weights)];
    const PartyInfo& customer = ctx_.parties[party];
    const std::size_t location = LocationIndex(customer.location);
    std::vector<DocLine> lines;
    const int wanted = static_cast<int>(r_.Between(1, 4));
    for (int l = 0; l < wanted; ++l) {
      std::size_t item =
          static_cast<std::size_t>(r_.Below(static_cast<std::int64_t>(ctx_.items.size())));
      // Engines and electronics are a few sales a week; the counter trade is parts and gear.
      while (ctx_.items[item].cost > DemoContext::Dollars(1000) && !r_.Chance(0.05)) {
        item = static_cast<std::size_t>(r_.Below(static_cast<std::int64_t>(ctx_.items.size())));
      }
      const ItemInfo& info = ctx_.items[item];
      const bool big = info.cost > DemoContext::Dollars(1000);
      const double quantity = big ? 1.0 : static_cast<double>(r_.Between(1, 5));
      const double discount = customer.weight > 1 && r_.Chance(0.2) ? 5.0 : 0.0;
      StockLines(lines, item, location, quantity, info.price, discount);
    }
    if (lines.empty()) continue;
    const bool export_sale = customer.exporter;
    for (DocLine& line : lines) {
      line.tax_category = export_sale ? ctx_.facts.zero : ctx_.facts.standard;
      line.tax = export_sale ? 0 : ctx_.TaxOn(line.value);
      if (export_sale) line.account = account::kSalesExport;
    }
    WriteDocument(Side::kReceivables, 30, "INV", party, day, lines, "", customer.location);
  }
}

void WriteBusyAccount(DemoContext& ctx) {
  // The stock extras write lines of their own after the trading days: go on after the last ids.
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
  Trader(ctx).BusyAccount();
  ctx.random = stream;
}

void Trader::BusyAccount() {
  // A trade customer that pays within the week and takes the discount; a boatyard or a marina
  // when there is one.
  std::size_t busy = SIZE_MAX;
  for (std::size_t c : ctx_.customers) {
    const PartyInfo& p = ctx_.parties[c];
    if (p.payer != Payer::kPrompt || p.weight < 2 || p.term != 1 || p.exporter) continue;
    const bool yard = p.name.find("Boatbuilders") != std::string::npos ||
                      p.name.find("Marina") != std::string::npos;
    if (busy == SIZE_MAX || yard) busy = c;
    if (yard) break;
  }
  auto item_named = [&](std::string_view description) {
    for (std::size_t i = 0; i < ctx_.items.size(); ++i) {
      if (ctx_.items[i].description == description) return i;
    }
    return SIZE_MAX;
  };
  const std::size_t haul_out = item_named("Haul out and wash");
  const std::size_t labour = item_named("Workshop labour per hour");
  if (busy == SIZE_MAX || haul_out == SIZE_MAX || labour == SIZE_MAX) return;
  const PartyInfo& customer = ctx_.parties[busy];
  const std::size_t location = LocationIndex(customer.location);
  const Date present = ctx_.calendar.Present();
  for (Date day = present.FirstOfMonth(); day <= present; day = day.AddDays(1)) {
    if (!IsWeekday(day)) continue;
    std::vector<DocLine> lines;
    StockLines(lines, haul_out, location, 1.0, ctx_.items[haul_out].price, 0.0);
    StockLines(lines, labour, location, static_cast<double>(r_.Between(2, 8)),
               ctx_.items[labour].price, 0.0);
    for (DocLine& line : lines) {
      line.tax_category = ctx_.facts.standard;
      line.tax = ctx_.TaxOn(line.value);
    }
    WriteDocument(Side::kReceivables, 30, "INV", busy, day, lines, "", customer.location);
  }
  // What the month's bills planned to the present: one receipt a week for the bills paid that
  // week, on the week's last day of paying, allocated to each of them, with each bill's discount
  // taken the same day; anything else on its own day.
  struct Week {
    std::vector<Settlement> discounts;
    std::vector<Settlement> receipts;
  };
  std::map<std::int32_t, Week> weeks;            // by the serial of the week's Monday
  std::map<std::int64_t, std::int32_t> week_of;  // a bill's week, by its receipt
  std::vector<Settlement> discounts;
  while (!due_.empty()) {
    const Settlement s = due_.top();
    due_.pop();
    if (s.type == 35) {
      Date monday = s.date;
      while (monday.DayOfWeek() != Weekday::Monday) monday = monday.AddDays(-1);
      weeks[monday.Serial()].receipts.push_back(s);
      week_of[s.document] = monday.Serial();
    } else if (s.type == 32) {
      discounts.push_back(s);
    } else {
      Settle(s);
    }
  }
  for (const Settlement& s : discounts) {
    const auto week = week_of.find(s.document);
    if (week == week_of.end()) {
      Settle(s);
    } else {
      weeks[week->second].discounts.push_back(s);
    }
  }
  for (auto& [monday, week] : weeks) {
    Settlement paid = week.receipts.front();
    paid.amount = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> shares;
    for (const Settlement& s : week.receipts) {
      paid.date = std::max(paid.date, s.date);
      paid.amount += s.amount;
      shares.emplace_back(s.document, s.amount);
    }
    for (Settlement& discount : week.discounts) {
      discount.date = paid.date;
      Settle(discount);
    }
    Settle(paid, &shares);
  }
  ctx_.summary.transactions += transactions_.Rows();
  ctx_.summary.transaction_lines += lines_.Rows();
}

void Trader::RestockWeek(Date day) {
  // Stock is kept at the warehouse and the second branch; what has fallen below its minimum
  // is bought back up to its maximum, one supplier invoice per supplier.
  std::map<std::size_t, std::vector<std::pair<std::size_t, std::size_t>>> by_supplier;
  for (std::size_t item = 0; item < ctx_.items.size(); ++item) {
    const ItemInfo& info = ctx_.items[item];
    if (info.inventory == 0) continue;
    for (std::size_t location : {std::size_t{0}, std::size_t{2}}) {
      if (stock_.At(item, location).on_hand < info.min_reorder) {
        by_supplier[info.supplier].emplace_back(item, location);
      }
    }
  }
  for (const auto& [supplier, wants] : by_supplier) {
    std::vector<DocLine> lines;
    std::vector<std::pair<std::size_t, std::size_t>> placed;
    for (const auto& [item, location] : wants) {
      const ItemInfo& info = ctx_.items[item];
      const double quantity = info.max_reorder - stock_.At(item, location).on_hand;
      const std::int64_t unit = ToCents(static_cast<double>(info.cost) * (0.95 + 0.1 * r_.Unit()));
      auto add = [&](double qty, const std::string& number) {
        DocLine line;
        line.item = item;
        line.description = info.description;
        line.account = account::kStock;
        line.dept = info.dept;
        line.serial = number;
        line.location = ctx_.locations[location];
        line.quantity = qty;
        line.unit_price = unit;
        line.value = ToCents(qty * static_cast<double>(unit));
        line.cost = line.value;
        line.tax_category = ctx_.facts.standard;
        line.tax = ctx_.TaxOn(line.value);
        lines.push_back(line);
        placed.emplace_back(item, location);
      };
      if (info.inventory == 2) {
        for (int u = 0; u < static_cast<int>(quantity); ++u) {
          add(1, "SN" + Pad(serial_counter_++, 7));
        }
      } else if (info.inventory == 3) {
        add(quantity, "B" + day.ToIso().substr(2, 2) + day.ToIso().substr(5, 2) +
                          day.ToIso().substr(8, 2) + "-" + info.id);
      } else {
        add(quantity, "");
      }
    }
    const std::int64_t first_line = ctx_.next_line;
    WriteDocument(Side::kPayables, 20, "SINV", ctx_.suppliers[supplier], day, lines, "",
                  ctx_.locations[placed.front().second]);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const auto& [item, location] = placed[i];
      stock_.Receive(item, location, lines[i].serial, lines[i].quantity, lines[i].cost);
      stock_.At(item, location).last_purchase_line = first_line + static_cast<std::int64_t>(i);
    }
  }
}

void Trader::OverheadsMonth(Date month_start) {
  struct Overhead {
    const char* account;
    const char* item;
    const char* description;
    int dollars_low;
    int dollars_high;
    int every_months;
    bool taxed;
  };
  // The bills that come every month (or quarter) from the company's service suppliers.
  constexpr Overhead kOverheads[] = {
      {account::kRent, ledger_item::kRent, "Rent - premises", 6500, 6500, 1, true},
      {account::kPower, ledger_item::kPower, "Electricity", 600, 1100, 1, true},
      {account::kTelephone, ledger_item::kPhone, "Phone and internet", 240, 320, 1, true},
      {account::kInsurance, ledger_item::kInsurance, "Insurance premium", 2400, 2900, 3, true},
      {account::kAccountancy, ledger_item::kAccountancy, "Accounting services", 1800, 2600, 3,
       true},
      {account::kAdvertising, ledger_item::kAdvertising, "Advertising", 300, 2500, 1, true},
      {account::kFreightInwards, ledger_item::kFreight, "Freight", 400, 1500, 1, true},
      {account::kCleaning, ledger_item::kCleaning, "Cleaning", 350, 450, 1, true},
      {account::kRepairs, ledger_item::kRepairs, "Repairs and maintenance", 100, 1800, 1, true},
      {account::kMotorVehicle, ledger_item::kVehicle, "Fuel and vehicle costs", 700, 1400, 1, true},
      {account::kTraining, ledger_item::kTraining, "Staff training", 500, 1500, 6, true},
      {account::kPurchases, ledger_item::kConsumables, "Workshop consumables", 300, 1200, 1, true},
  };
  const int month = ctx_.calendar.MonthIndex(month_start);
  std::size_t supplier_slot = 0;
  for (const Overhead& o : kOverheads) {
    const std::size_t party = ctx_.suppliers[supplier_slot++ % ctx_.suppliers.size()];
    if (month % o.every_months != 0) continue;
    const Date date = month_start.AddDays(static_cast<int>(r_.Between(0, 24)));
    if (date > ctx_.calendar.Present()) continue;
    DocLine line;
    line.ledger_item = o.item;
    line.description = o.description;
    line.account = o.account;
    line.dept = "ADM";
    line.quantity = 1;
    line.value =
        DemoContext::Dollars(r_.Between(o.dollars_low, o.dollars_high)) * ctx_.options.scale;
    line.unit_price = line.value;
    line.tax_category = o.taxed ? ctx_.facts.standard : ctx_.facts.exempt;
    line.tax = o.taxed ? ctx_.TaxOn(line.value) : 0;
    std::vector<DocLine> lines{line};
    // The quarter's bills say which quarter they cover, on a line of text alone.
    if (o.every_months == 3) {
      DocLine text;
      static constexpr const char* kMonths[] = {"January",   "February", "March",    "April",
                                                "May",       "June",     "July",     "August",
                                                "September", "October",  "November", "December"};
      text.description = std::string("For the quarter from ") + kMonths[month_start.Month() - 1] +
                         " " + std::to_string(month_start.Year());
      lines.push_back(text);
    }
    WriteDocument(Side::kPayables, 20, "SINV", party, date, lines, "",
                  ctx_.parties[party].location);
  }
}

std::int64_t Trader::WriteDocument(Side side, int type, const char* type_id, std::size_t party,
                                   Date date, std::vector<DocLine>& lines, const std::string& job,
                                   const std::string& location) {
  const std::int64_t s = side == Side::kReceivables ? -1 : 1;
  const PartyInfo& p = ctx_.parties[party];
  const std::int64_t id = ctx_.next_transaction++;
  const std::int64_t gross = Gross(lines);
  std::vector<Settlement> plan;
  PlanSettlements(side, party, id, date, gross, location, plan);
  std::int64_t remaining = gross;
  for (const Settlement& settlement : plan) remaining -= settlement.amount;
  // Now and then a customer disputes part of what is still owed, and it is held.
  const std::int64_t held =
      remaining > 0 && side == Side::kReceivables && r_.Chance(0.02) ? remaining / 200 * 100 : 0;
  // A supplier's invoice is dated by the supplier, often a few days before it is entered and
  // processed; the period goes by the day it was processed. A few of the invoices processed on a
  // month's first working day were written on the last day of the month before.
  Date document_date = date;
  if (side == Side::kPayables && type == 20 && r_.Chance(0.5)) {
    document_date = date.AddDays(-static_cast<int>(r_.Between(1, 6)));
  } else if (side == Side::kReceivables && type == 30) {
    document_date = MonthEndDate(date, id, 4);
  }
  const Date due = side == Side::kReceivables ? DueDate(date, p.term) : DueDate(date, 0);
  const bool ppd = side == Side::kReceivables && p.payer == Payer::kPrompt && p.weight > 1;
  const std::string reference = (side == Side::kReceivables ? "" : "S") + Pad(id, 7);
  const std::string batch = std::string(side == Side::kReceivables ? "AR" : "AP") +
                            date.ToIso().substr(0, 4) + date.ToIso().substr(5, 2);
  // One trade invoice in four to a customer with a delivery address goes there.
  const char* address =
      side == Side::kReceivables && type == 30 && p.delivery_address && id % 4 == 0 ? "Delivery"
                                                                                    : "Postal";
  transactions_.Insert(
      {id,
       p.id,
       type,
       type_id,
       batch,
       reference,
       r_.Chance(0.3) ? Cell("PO" + Pad(r_.Between(1, 99999), 5)) : Cell(Cell::Null{}),
       document_date,
       date,
       due,
       date.AddDays(static_cast<int>(r_.Between(0, 2))),
       s * gross,
       s * remaining,
       s * held,
       p.employee,
       location,
       OrNull(job),
       address,
       ppd ? Cell(date.AddDays(10)) : Cell(Cell::Null{}),
       ppd ? s * ToCents(static_cast<double>(gross) * 0.025) : std::int64_t{0},
       Cell::Null{},
       Cell::Null{},
       Cell::Null{},
       Cell::Null{},
       Cell::Null{},
       held != 0 ? Cell("Disputed") : Cell(Cell::Null{})});
  Journal journal{date,      side == Side::kReceivables ? "AR" : "AP",
                  reference, std::string(p.name),
                  0,         id,
                  p.branch,  ""};
  journal.lines.push_back(
      {side == Side::kReceivables ? account::kReceivables : account::kPayables, -s * gross});
  std::int64_t tax = 0;
  const char* io = side == Side::kReceivables ? "O" : "I";
  for (DocLine& line : lines) {
    const bool stocked = line.item != SIZE_MAX && ctx_.items[line.item].inventory != 0;
    const double discount_rate = line.value + line.discount == 0
                                     ? 0.0
                                     : std::round(1000.0 * static_cast<double>(line.discount) /
                                                  static_cast<double>(line.value + line.discount)) /
                                           10.0;
    lines_.Insert({ctx_.next_line++, id, type, date,
                   line.item != SIZE_MAX ? Cell(ctx_.items[line.item].id)
                   : line.ledger_item    ? Cell(line.ledger_item)
                                         : Cell(Cell::Null{}),
                   line.location.empty() ? location : line.location, OrNull(line.dept),
                   line.description, OrNull(line.serial), static_cast<double>(s) * line.quantity,
                   line.unit_price, s * (line.value + line.discount), s * line.discount,
                   discount_rate, s * line.value, OrNull(line.tax_category), s * line.tax,
                   stocked ? s * line.cost : std::int64_t{0}});
    if (line.account.empty()) continue;  // a line of text alone posts nothing
    journal.lines.push_back(
        {line.account, s * line.value, s * line.tax, line.tax_category, io, "", line.dept});
    if (stocked && side == Side::kReceivables) {
      journal.lines.push_back({account::kCostOfGoods, line.cost, 0, "", "", "", line.dept});
      journal.lines.push_back({account::kStock, -line.cost, 0, "", "", "", line.dept});
    }
    tax += line.tax;
  }
  if (tax != 0) journal.lines.push_back({account::kGstPayable, s * tax});
  const TaxPeriodSpan& period = ctx_.calendar.TaxPeriodOf(date);
  tax_by_period_[static_cast<std::size_t>(ctx_.calendar.MonthIndex(period.from) /
                                          ctx_.calendar.TaxMonths())] += s * tax;
  ctx_.ledger->Post(journal);
  for (Settlement& settlement : plan) due_.push(settlement);
  return id;
}

}  // namespace trellin::demo
