#pragma once
// The portions of one asset of a depreciation run, under its line: each portion's date, cost,
// book value and depreciation, on the normal basis and, when the two bases differ in method or
// rate, again on the tax basis under "Normal" and "Tax" headings with their sums.

#include "core/host/ActiveReport.h"
#include "core/host/AssetDepreciation.h"

namespace trellin {

class arfaDepreciationCalculationSub : public ActiveReport {
 public:
  arfaDepreciationCalculationSub() : ActiveReport("arfaDepreciationCalculationSub") {}

  // Set by the parent before each asset; owned by the run, which outlives the report.
  const AssetDepreciation* DepnTransactions = nullptr;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  std::int64_t index_ = 0;
  bool tax_pass_ = false;
  bool differ_ = false;
};

}  // namespace trellin
