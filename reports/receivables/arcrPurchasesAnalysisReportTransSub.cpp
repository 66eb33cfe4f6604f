#include "reports/receivables/arcrPurchasesAnalysisReportTransSub.h"

namespace trellin {

namespace {

constexpr const char* kCopied[] = {
    "Code", "Name",  "JobDescription", "AddressId", "DateProcess", "Reference",
    "Qty",  "Gross", "Discount",       "Net",       "Tax",         "Inclusive"};

}  // namespace

arcrPurchasesAnalysisReportTransSub::arcrPurchasesAnalysisReportTransSub()
    : ardsSalesAnalysisReportTransSub("arcrPurchasesAnalysisReportTransSub", kCopied, false) {}

}  // namespace trellin
