#pragma once
// The Job object over the company file: a job's posted lines, its unposted batches and its
// budget, read in four queries a load (platform/business/README.md, "Jobs").

#include <array>
#include <memory>
#include <string>

#include "core/host/Application.h"
#include "core/host/Database.h"
#include "core/host/Job.h"
#include "platform/business/CompanyItemCosting.h"

namespace trellin::business {

class CompanyJob : public trellin::Job {
 public:
  // `database` must not be null; `tax` must outlive the object.
  CompanyJob(std::shared_ptr<trellin::Database> database, const Tax& tax, bool actual_charges);

  void Load(std::string_view job_id) override;
  [[nodiscard]] const std::string& JobId() const override { return job_sql_; }
  [[nodiscard]] const JobSummaryLine& Summary(std::string_view name) const override;

 private:
  std::shared_ptr<trellin::Database> database_;
  CompanyItemCosting costing_;
  bool actual_charges_;
  std::string job_sql_;
  std::array<JobSummaryLine, std::size(kJobSummaryLines)> lines_{};
};

}  // namespace trellin::business
