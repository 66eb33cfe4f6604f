#pragma once
// The direct credit schedule ("DirectCreditSchedule"): the supplier payments by direct credit of
// one bank run, as the application hands them over for the bank account and date the parameters
// choose, a line each, with the bank and the date in the heading and the total of the amounts.

#include <string>

#include "core/Designer.h"
#include "core/host/Application.h"

namespace trellin {

// The heading's bank: the bank's name and number joined by ", ", either left out when empty.
[[nodiscard]] std::string DirectCreditBankText(const DirectCreditRun& run);

class ardsDirectCreditSchedule : public Designer {
 public:
  ardsDirectCreditSchedule() : Designer("ardsDirectCreditSchedule") {}

  void RefreshParameters(std::string& ReportName) override;
  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

  // After ReportStart: the run as the application gave it.
  [[nodiscard]] const DirectCreditRun& Run() const { return run_; }

 private:
  DirectCreditRun run_;
  long index_ = 0;
};

[[nodiscard]] DesignerPtr CreateardsDirectCreditSchedule();

}  // namespace trellin
