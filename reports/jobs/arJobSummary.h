#pragma once
// "JobSummary": for each job the job filters keep (once, on the contact it is charged to) its
// code, description and status, and beside them up to five stacked lines of figures: Actual
// (posted), Open (in unposted batches), Total (the two), Budget and Variance, each with charges,
// costs, purchases, other costs, total costs, profit and GP. The lines and their fields are laid
// out at run time for the detail, each group footer and the report footer; the footers total
// the money and work their GP from their own totals. A job's figures come from the business
// layer's Job object.

#include <memory>
#include <string>

#include "core/ListDesigner.h"
#include "core/host/BusinessObjects.h"

namespace trellin {

// Which lines a run prints, from its Show options.
struct JobSummaryLines {
  bool actual = false;
  bool open = false;
  bool budget = false;
  [[nodiscard]] bool Total() const { return actual && open; }
  [[nodiscard]] bool Variance() const { return budget && (actual || open); }
  [[nodiscard]] bool Any() const { return actual || open || budget; }
};

// GP as the job summary works it: profit over charges; with no charges 0 when there is no profit
// either, else -1 (a total loss).
[[nodiscard]] double JobGrossProfit(double profit, double charges);

class arJobSummary : public ListDesigner {
 public:
  arJobSummary();

  void RefreshParameters(std::string& ReportName) override;
  // The filter, then the stacked lines laid out in the detail, the group footers and the report
  // footer; the job and item costing objects made once for the run.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The job's figures for the lines that print; nothing is worked out with no line chosen.
  void ActiveReport_FetchData(bool& eof) override;
  // Footers work out their GP from their own totals.
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

 private:
  void LayOutLines(Section& section, const std::string& prefix, float top, int summary);
  void FooterGP(Section& section, const std::string& prefix);
  void FillFigures();

  JobSummaryLines lines_;
  bool extra_detail_ = false;
  std::unique_ptr<BusinessObjects> objects_;
  std::unique_ptr<Job> job_;
  std::unique_ptr<ItemCosting> costing_;
};

[[nodiscard]] DesignerPtr CreatearJobSummary();

}  // namespace trellin
