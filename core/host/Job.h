#pragma once
// A job as the business layer reckons it: what was charged and spent on it, posted and in its
// unposted batches, against its budget. The job summary reads each job through it; how each line
// is reckoned is the business layer's (platform/business/README.md, "Jobs").

#include <string>
#include <string_view>

#include "platform/runtime/Currency.h"

namespace trellin {

// One summary line of a job. Money lines are to the cent; the "GP %" line holds a fraction
// (0.25 for 25%) to Currency's four places.
struct JobSummaryLine {
  Currency Actual;  // posted
  Currency Total;   // posted and in the job's unposted batches
  Currency Budget;  // from the job's budget; 0 without one
  [[nodiscard]] Currency Variance() const { return Total - Budget; }
};

// The names of the summary lines, in the order they stand.
inline constexpr std::string_view kJobSummaryLines[] = {
    "Charges",   "Actual Charges", "Other Costs",    "Disbursements", "Item Costs",
    "Purchases", "Total Costs",    "Profit to date", "GP %"};

// One job, loaded by code. One thread at a time.
class Job {
 public:
  virtual ~Job() = default;
  // Reads job `job_id` and works out its lines. Throws std::invalid_argument naming a job the
  // company does not hold, and DatabaseError when the company cannot be read.
  virtual void Load(std::string_view job_id) = 0;
  // The loaded job's code as an SQL text literal ('J10001'); "" before a load.
  [[nodiscard]] virtual const std::string& JobId() const = 0;
  // The line `name` (a name of kJobSummaryLines, without regard to case). Throws
  // std::out_of_range for another name, std::logic_error before a load.
  [[nodiscard]] virtual const JobSummaryLine& Summary(std::string_view name) const = 0;
};

}  // namespace trellin
