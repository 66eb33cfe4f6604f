#pragma once
// The special prices of one customer, customer category or customer type, under its row in a
// parent list. A sub-report: the parent sets SType and FieldValue before each run.

#include <string>

#include "core/host/ActiveReport.h"

namespace trellin {

class arDetailSpecialPricingSub : public ActiveReport {
 public:
  arDetailSpecialPricingSub() : ActiveReport("arDetailSpecialPricingSub") {}

  // Whose prices: 1 a customer, 2 a customer category, 3 a customer type.
  int SType = 3;
  // The code of that customer, category or type.
  std::string FieldValue;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;

  // The SELECT of the prices for the present SType and FieldValue.
  [[nodiscard]] std::string SQL() const;
};

}  // namespace trellin
