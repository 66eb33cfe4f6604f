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
