#pragma once
// "JobList": every job the job filters keep, on the contact it is charged to, with its status,
// category, customer, order number and dates; picked, its location, employee and user-defined
// fields. A column list on the list base.

#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arJobList : public ListDesigner {
 public:
  arJobList();

  // The list's columns, then each user-defined job field the company has named.
  void RefreshDataColumns() override;
  // Under Summary the job count is shown, so that each group says how many jobs it holds.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Each row counts one job.
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearJobList();

}  // namespace trellin
