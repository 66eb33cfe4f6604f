// Budgets, the work not yet posted (open batches, sales orders, job invoices), the notes kept
// on parties, items, jobs and assets, and the two hand journals on the control accounts.

#include <cmath>

#include "platform/demo/DemoChart.h"
#include "platform/demo/DemoContext.h"

namespace trellin::demo {

void WriteBudgets(DemoContext& ctx) {
  // Each year's budget is last year's actual for the month with 6% growth, in whole hundreds;
  // the first year is budgeted at its own actual. Revised trims the budget by 3% from the
  // current year's fourth month on; Alternate is the optimistic plan, 10% up.
  const DemoCalendar& cal = ctx.calendar;
  DemoTable budgets(ctx.db, "glBudget",
                    {"AccountId", "Month", "BranchId", "DeptId", "Budget", "Revised", "Alternate"});
  const int months = static_cast<int>(cal.Years().size()) * 12;
  for (const auto& [id, type] : ctx.ledger->Accounts()) {
    if (type > 5) continue;
    for (int m = 0; m < months; ++m) {
      const int base_month = m >= 12 ? m - 12 : m;
      const std::int64_t actual = ctx.ledger->MonthMovement(id, base_month);
      if (actual == 0) continue;
      const double grown = static_cast<double>(actual) * (m >= 12 ? 1.06 : 1.0);
      const std::int64_t budget = std::llround(grown / 1000000.0) * 1000000;
      const std::int64_t revised =
          m % 12 >= 3 ? std::llround(static_cast<double>(budget) * 0.97 / 1000000.0) * 1000000
                      : budget;
      const std::int64_t alternate =
          std::llround(static_cast<double>(budget) * 1.1 / 1000000.0) * 1000000;
      if (type != 1) {
        budgets.Insert({id, cal.FirstDay().AddMonths(m), Cell::Null{}, Cell::Null{}, budget,
                        revised, alternate});
        continue;
      }
      // Sales are budgeted by branch, seven tenths at the first; the rows add up to the whole.
      auto share = [](std::int64_t whole) {
        return static_cast<std::int64_t>(std::llround(static_cast<double>(whole) * 0.7 / 1e6)) *
               1000000;
      };
      budgets.Insert({id, cal.FirstDay().AddMonths(m), ctx.branches[0], Cell::Null{}, share(budget),
                      share(revised), share(alternate)});
      budgets.Insert({id, cal.FirstDay().AddMonths(m), ctx.branches[1], Cell::Null{},
                      budget - share(budget), revised - share(revised),
                      alternate - share(alternate)});
    }
  }
}

void WriteOpenWork(DemoContext& ctx) {
  DemoRandom& r = ctx.random;
  const Date present = ctx.calendar.Present();
  DemoTable headers(ctx.db, "acBatchHeader",
                    {"acBatchSId", "acBatchHeaderId", "Type", "CreatedDate", "LastDate"});
  DemoTable documents(ctx.db, "acBatchTransaction",
                      {"acBatchTransactionId", "acBatchSId", "Type", "TransactionTypeId",
                       "OtherPartyId", "BatchId", "Reference", "Date", "DateProcess", "DatePayment",
                       "CreatedDate", "Value", "EmployeeId", "LocationId", "JobId", "AddressId"});
  DemoTable lines(ctx.db, "acBatchTransactionLine",
                  {"acBatchTransactionId", "Type", "DateProcess", "ItemId", "LocationId", "DeptId",
                   "Hold", "Description", "OrderQuantity", "Quantity", "UnitPrice", "Extension",
                   "Value", "TaxCategory", "TaxValue"});
  struct Batch {
    int type;
    const char* type_id;
    const char* name;
    int count;
  };
  // The invoices and bills keyed in and not yet posted, the sales orders waiting on stock, and
  // the job invoices drafted for the open jobs; one older saved batch too.
  constexpr Batch kBatches[] = {{30, "INV", "Open", 12}, {20, "SINV", "Open", 6},
                                {90, "SO", "Open", 15},  {42, "JINV", "Open", 8},
                                {31, "CRN", "Open", 2},  {30, "INV", "Saved", 4}};
  std::int64_t batch_id = 1;
  std::int64_t doc_id = 1;
  for (const Batch& batch : kBatches) {
    headers.Insert({batch_id, batch.name, batch.type, present.AddDays(-10), present});
    for (int n = 0; n < batch.count * ctx.options.scale; ++n) {
      const bool payables = batch.type < 30;
      const auto& pool = payables ? ctx.suppliers : ctx.customers;
      const PartyInfo& party = ctx.parties[pool[static_cast<std::size_t>(
          r.Below(static_cast<std::int64_t>(pool.size())))]];
      const Date date = present.AddDays(-static_cast<int>(r.Between(0, 9)));
      const std::string job = batch.type == 42 && !ctx.jobs.empty()
                                  ? ctx.jobs[ctx.jobs.size() - 1 - static_cast<std::size_t>(n) % 10]
                                  : std::string();
      std::int64_t total = 0;
      const int count = static_cast<int>(r.Between(1, 3));
      for (int l = 0; l < count; ++l) {
        const ItemInfo& item = ctx.items[static_cast<std::size_t>(
            r.Below(static_cast<std::int64_t>(ctx.items.size())))];
        const double quantity = static_cast<double>(r.Between(1, 4));
        const std::int64_t price = payables ? item.cost : item.price;
        const std::int64_t value = ToCents(quantity * static_cast<double>(price));
        const std::int64_t tax = ctx.TaxOn(value);
        total += value + tax;
        const double ordered =
            batch.type == 90 ? quantity + static_cast<double>(r.Between(0, 2)) : 0;
        lines.Insert({doc_id, batch.type, date, item.id, party.location, item.dept, r.Chance(0.05),
                      item.description, ordered, quantity, price, value, value, ctx.facts.standard,
                      tax});
      }
      documents.Insert({doc_id, batch_id, batch.type, batch.type_id, party.id,
                        std::string(batch.name) + std::to_string(batch_id),
                        std::string(batch.type == 90 ? "SO" : "B") + std::to_string(9000 + doc_id),
                        date, date, DueDate(date, party.term), date, total, party.employee,
                        party.location, OrNull(job), "Postal"});
      ++doc_id;
    }
    ++batch_id;
  }
}

void WriteLogs(DemoContext& ctx) {
  DemoRandom& r = ctx.random;
  const Date present = ctx.calendar.Present();
  constexpr const char* kSubjects[] = {
      "Phone call",   "Quote sent",         "Follow up overdue account",
      "Visited site", "Complaint resolved", "Price query"};
  auto note_date = [&](int within_days) {
    return present.AddDays(-static_cast<int>(r.Between(0, within_days)));
  };
  DemoTable party_log(ctx.db, "OtherPartyLog",
                      {"OtherPartyId", "Date", "Subject", "ActionDate", "CompleteDate", "Notes",
                       "Document", "EmployeeId", "ContactId"});
  for (std::size_t i = 0; i < ctx.parties.size(); i += 3) {
    const Date date = note_date(700);
    const bool done = r.Chance(0.7);
    party_log.Insert({ctx.parties[i].id, date, kSubjects[r.Below(6)], date.AddDays(7),
                      done ? Cell(date.AddDays(5)) : Cell(Cell::Null{}),
                      "Spoke with " + ctx.parties[i].name + " about their account.", Cell::Null{},
                      ctx.parties[i].employee,
                      r.Chance(0.5) ? Cell(static_cast<int>(1 + r.Below(6))) : Cell(Cell::Null{})});
  }
  DemoTable item_log(ctx.db, "ItemLog", {"ItemId", "Date", "Subject", "Notes", "EmployeeId"});
  for (std::size_t i = 0; i < ctx.items.size(); i += 5) {
    item_log.Insert({ctx.items[i].id, note_date(500), "Supplier price change",
                     "New price list received.", "SF"});
  }
  DemoTable job_log(ctx.db, "JobLog", {"JobId", "Date", "Subject", "Notes", "EmployeeId"});
  for (std::size_t i = 0; i < ctx.jobs.size(); i += 4) {
    job_log.Insert(
        {ctx.jobs[i], note_date(900), "Work note", "Parts ordered; customer advised.", "TK"});
  }
  DemoTable asset_log(ctx.db, "AssetLog", {"AssetId", "Date", "Subject", "Notes", "EmployeeId"});
  asset_log.Insert(
      {"PLA101", note_date(300), "Annual inspection", "Hoist certified for a year.", "TK"});
  asset_log.Insert({"VEH105", note_date(300), "Service", "Serviced; tyres replaced.", "TK"});
}

void WriteControlDifferences(DemoContext& ctx) {
  // Two hand journals on the control accounts that no sub-ledger document matches: what the
  // control reports are there to find. Their department was deleted afterwards, so the lines
  // also carry the company's one dangling department code.
  const Date day = ctx.calendar.Present().AddDays(-3);
  ctx.ledger->Post({day,
                    "GL",
                    "JNL-ADJ1",
                    "Correction to debtors control",
                    0,
                    0,
                    ctx.branches[0],
                    "MKT",
                    {{account::kReceivables, kReceivablesControlDifference},
                     {account::kBadDebts, -kReceivablesControlDifference}}});
  ctx.ledger->Post({day,
                    "GL",
                    "JNL-ADJ2",
                    "Accrual posted to creditors control",
                    0,
                    0,
                    ctx.branches[0],
                    "MKT",
                    {{account::kPayables, kPayablesControlDifference},
                     {account::kRepairs, -kPayablesControlDifference}}});
}

}  // namespace trellin::demo
