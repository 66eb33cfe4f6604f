#pragma once
// "JobStatusReport": what the service desk still has to do on each job. Every job the job
// filters keep, once, on the contact it is charged to: its customer as "code, name", order
// number, status, dates, and the kinds of document still open on it (unposted batches, purchase
// orders not fully received) joined by ", ". A column list on the list base.

#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arJobStatusReport : public ListDesigner {
 public:
  arJobStatusReport();

  void ActiveReport_DataInitialize() override;
  // The row's customer and its outstanding kinds of document, one look-up each.
  void ActiveReport_FetchData(bool& eof) override;
};

// The kinds of document (TransactionTypeId) still open on job `job_sql`, the job's code as an
// SQL text literal: its unposted documents, and its purchase orders whose lines do not net to
// nothing. Read through the job indexes of both tables.
[[nodiscard]] std::string JobOutstandingSql(const std::string& job_sql);

[[nodiscard]] DesignerPtr CreatearJobStatusReport();

}  // namespace trellin
