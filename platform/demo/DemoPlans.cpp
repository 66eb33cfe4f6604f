// Budgets, the work not yet posted (open batches, sales orders, job invoices), the notes kept
// on parties, items, jobs and assets, and the two hand journals on the control accounts.

#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

  // A batch of job invoices saved a fortnight ago for the newest jobs and not yet committed, so
  // that the job invoice batches are two. Its draws are a stream of their own: everything drawn
  // after it is drawn as before.
  DemoRandom own(ctx.options.seed * 7919 + 42);
  const Date saved = present.AddDays(-14);
  headers.Insert({batch_id, "Saved", 42, saved, saved.AddDays(2)});
  for (int n = 0; n < 3 * ctx.options.scale && !ctx.jobs.empty(); ++n) {
    const PartyInfo& party = ctx.parties[ctx.customers[static_cast<std::size_t>(
        own.Below(static_cast<std::int64_t>(ctx.customers.size())))]];
    const std::string& job =
        ctx.jobs[ctx.jobs.size() - 1 - static_cast<std::size_t>(n * 3) % ctx.jobs.size()];
    const Date date = saved.AddDays(static_cast<int>(own.Between(0, 2)));
    std::int64_t total = 0;
    const int count = static_cast<int>(own.Between(1, 2));
    for (int l = 0; l < count; ++l) {
      const ItemInfo& item = ctx.items[static_cast<std::size_t>(
          own.Below(static_cast<std::int64_t>(ctx.items.size())))];
      const double quantity = static_cast<double>(own.Between(1, 3));
      const std::int64_t value = ToCents(quantity * static_cast<double>(item.price));
      const std::int64_t tax = ctx.TaxOn(value);
      total += value + tax;
      lines.Insert({doc_id, 42, date, item.id, party.location, item.dept, false, item.description,
                    0.0, quantity, item.price, value, value, ctx.facts.standard, tax});
    }
    documents.Insert({doc_id, batch_id, 42, "JINV", party.id, "Saved" + std::to_string(batch_id),
                      "B" + std::to_string(9000 + doc_id), date, date, DueDate(date, party.term),
                      date, total, party.employee, party.location, job, "Postal"});
    ++doc_id;
  }
}

// The notes a business keeps on its parties, items, jobs and assets. An owner has one to four
// notes of different subjects and dates; most carry an action date, some are completed, a few
// name a document, and some have no employee (or, on parties, no contact).
void WriteLogs(DemoContext& ctx) {
  DemoRandom& r = ctx.random;
  const Date present = ctx.calendar.Present();
  const std::string kBuyer = "SF";
  const std::string kWorkshop = "TK";
  constexpr const char* kPartySubjects[] = {
      "Phone call",   "Quote sent",         "Follow up overdue account",
      "Visited site", "Complaint resolved", "Price query"};
  constexpr const char* kItemSubjects[] = {"Supplier price change", "Stock count query",
                                           "Quality issue", "Reorder level review"};
  constexpr const char* kJobSubjects[] = {"Work note", "Parts ordered", "Customer approval",
                                          "Safety check"};
  constexpr const char* kAssetSubjects[] = {"Annual inspection", "Service", "Repair",
                                            "Insurance renewal"};
  // One note: its date within the window, an action date a week on for most, a completion
  // date for some of those (the rest are still open), a document on one in six, and no
  // employee on some. Cells only view their text, so the note keeps its own.
  struct Note {
    Date date;
    std::optional<Date> action;
    std::optional<Date> complete;
    std::string document;
    bool by_employee = true;
    [[nodiscard]] Cell Action() const { return action ? Cell(*action) : Cell(Cell::Null{}); }
    [[nodiscard]] Cell Complete() const { return complete ? Cell(*complete) : Cell(Cell::Null{}); }
    [[nodiscard]] Cell Document() const { return OrNull(document); }
    [[nodiscard]] Cell Employee(const std::string& id) const {
      return by_employee ? Cell(id) : Cell(Cell::Null{});
    }
  };
  int document_number = 1000;
  auto next_note = [&](int within_days) {
    Note n;
    n.date = present.AddDays(-static_cast<int>(r.Between(0, within_days)));
    if (r.Chance(0.8)) {
      n.action = n.date.AddDays(7);
      if (r.Chance(0.6)) n.complete = n.date.AddDays(static_cast<int>(r.Between(1, 20)));
    }
    if (r.Chance(1.0 / 6)) n.document = "DOC" + std::to_string(++document_number) + ".pdf";
    n.by_employee = !r.Chance(0.15);
    return n;
  };
  // A count of notes and the first subject; the subjects follow on from it, so an owner's
  // notes differ in subject.
  auto notes_of = [&](std::size_t subjects) {
    return std::pair<int, std::size_t>{static_cast<int>(r.Between(1, 4)), r.Below(subjects)};
  };

  DemoTable party_log(ctx.db, "OtherPartyLog",
                      {"OtherPartyId", "Date", "Subject", "ActionDate", "CompleteDate", "Notes",
                       "Document", "EmployeeId", "ContactId"});
  for (std::size_t i = 0; i < ctx.parties.size(); i += 3) {
    const PartyInfo& party = ctx.parties[i];
    const auto [count, first] = notes_of(std::size(kPartySubjects));
    for (int k = 0; k < count; ++k) {
      const Note n = next_note(700);
      party_log.Insert(
          {party.id, n.date, kPartySubjects[(first + k) % std::size(kPartySubjects)], n.Action(),
           n.Complete(), "Spoke with " + party.name + " about their account.", n.Document(),
           n.Employee(party.employee),
           r.Chance(0.5) ? Cell(static_cast<int>(1 + r.Below(6))) : Cell(Cell::Null{})});
    }
  }
  DemoTable item_log(ctx.db, "ItemLog",
                     {"ItemId", "Date", "Subject", "ActionDate", "CompleteDate", "Notes",
                      "Document", "EmployeeId"});
  for (std::size_t i = 0; i < ctx.items.size(); i += 5) {
    const auto [count, first] = notes_of(std::size(kItemSubjects));
    for (int k = 0; k < count; ++k) {
      const Note n = next_note(500);
      item_log.Insert({ctx.items[i].id, n.date,
                       kItemSubjects[(first + k) % std::size(kItemSubjects)], n.Action(),
                       n.Complete(), "New price list received.", n.Document(), n.Employee(kBuyer)});
    }
  }
  DemoTable job_log(ctx.db, "JobLog",
                    {"JobId", "Date", "Subject", "ActionDate", "CompleteDate", "Notes", "Document",
                     "EmployeeId"});
  for (std::size_t i = 0; i < ctx.jobs.size(); i += 4) {
    const auto [count, first] = notes_of(std::size(kJobSubjects));
    for (int k = 0; k < count; ++k) {
      const Note n = next_note(900);
      job_log.Insert({ctx.jobs[i], n.date, kJobSubjects[(first + k) % std::size(kJobSubjects)],
                      n.Action(), n.Complete(), "Parts ordered; customer advised.", n.Document(),
                      n.Employee(kWorkshop)});
    }
  }
  // Every second asset, in the order of their codes.
  std::vector<std::string> assets;
  sqlite3_stmt* stmt = nullptr;
  sqlite3_prepare_v2(ctx.db, "SELECT AssetId FROM Asset ORDER BY AssetId", -1, &stmt, nullptr);
  while (sqlite3_step(stmt) == SQLITE_ROW) {
    assets.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
  }
  sqlite3_finalize(stmt);
  DemoTable asset_log(ctx.db, "AssetLog",
                      {"AssetId", "Date", "Subject", "ActionDate", "CompleteDate", "Notes",
                       "Document", "EmployeeId"});
  for (std::size_t i = 0; i < assets.size(); i += 2) {
    const auto [count, first] = notes_of(std::size(kAssetSubjects));
    for (int k = 0; k < count; ++k) {
      const Note n = next_note(300);
      asset_log.Insert({assets[i], n.date, kAssetSubjects[(first + k) % std::size(kAssetSubjects)],
                        n.Action(), n.Complete(), "Inspected and serviced; next due in a year.",
                        n.Document(), n.Employee(kWorkshop)});
    }
  }
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
