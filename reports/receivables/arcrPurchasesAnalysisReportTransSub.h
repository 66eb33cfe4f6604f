#pragma once
// The transaction lines under one row of the purchase analysis: date, reference, the other
// side's code and name (the item under a supplier, the supplier under an item), the job, and the
// line's quantity, gross, discount, net, tax and tax-inclusive value. The sales analysis's lines
// with the purchase figures.

#include "reports/receivables/ardsSalesAnalysisReportTransSub.h"

namespace trellin {

class arcrPurchasesAnalysisReportTransSub : public ardsSalesAnalysisReportTransSub {
 public:
  arcrPurchasesAnalysisReportTransSub();
};

}  // namespace trellin
