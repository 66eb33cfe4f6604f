#pragma once
// The disposal movements of one asset under its line in the disposal summary: as the purchase
// summary's, with each movement's kind ("Disposal", "Gain/Loss", "Revaluation").

#include <string>

#include "reports/assets/arfaPurchaseSummarySub.h"

namespace trellin {

class arfaDisposalSummarySub : public arfaPurchaseSummarySub {
 public:
  arfaDisposalSummarySub() : arfaPurchaseSummarySub("arfaDisposalSummarySub") {}

  // No test on the amount, so a movement of nothing prints; the period counts from DateFrom
  // itself.
  [[nodiscard]] std::string MovementsSQL() const override;
  void ActiveReport_DataInitialize() override;

 protected:
  void FillRow(const Recordset& rs) override;
};

}  // namespace trellin
