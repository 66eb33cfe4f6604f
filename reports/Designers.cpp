// The built designers, one row each, in the order of their folders. A third column names the
// keys of a designer whose branch is not built yet: they stay off the list until it is.

#include "reports/Designers.h"

#include "reports/admin/arAdminBase.h"
#include "reports/admin/arCodeLists.h"
#include "reports/admin/arContactDetailList.h"
#include "reports/admin/arContactList.h"
#include "reports/admin/arCustomerTypeList.h"
#include "reports/admin/arDepartmentList.h"
#include "reports/admin/arDocumentList.h"
#include "reports/admin/arGridContent.h"
#include "reports/admin/arLog.h"
#include "reports/admin/arOtherPartyDetail.h"
#include "reports/admin/arOtherPartyList.h"
#include "reports/admin/arPostcodeList.h"
#include "reports/admin/arScriptList.h"
#include "reports/admin/arUserRolePermissionList.h"
#include "reports/assets/arfaAssetList.h"
#include "reports/assets/arfaDeferredTaxSchedule.h"
#include "reports/assets/arfaDepreciationCalculation.h"
#include "reports/assets/arfaDepreciationSchedule.h"
#include "reports/assets/arfaDisposalSummary.h"
#include "reports/assets/arfaFutureValueSchedule.h"
#include "reports/assets/arfaPurchaseSummary.h"
#include "reports/assets/arfaTransactionList.h"
#include "reports/jobs/arJobList.h"
#include "reports/ledger/arAccountDetail.h"
#include "reports/ledger/arAccountMatrix.h"
#include "reports/ledger/arChartofAccounts.h"
#include "reports/ledger/arChequeList.h"
#include "reports/ledger/arLodgementSchedule.h"
#include "reports/ledger/arglAccountReports.h"
#include "reports/ledger/arglAccountReportsNew.h"
#include "reports/ledger/arglBankBatch.h"
#include "reports/ledger/arglBankHighLow.h"
#include "reports/ledger/arglBankLedger.h"
#include "reports/ledger/arglBankReconciliation.h"
#include "reports/ledger/arglBankTransactionList.h"
#include "reports/ledger/arglChequeList.h"
#include "reports/ledger/arglJournalList.h"
#include "reports/ledger/arglSourceList.h"
#include "reports/ledger/arglTransactionList.h"
#include "reports/receivables/arcrRemittance.h"
#include "reports/receivables/ardsBatchTransactions.h"
#include "reports/receivables/ardsDirectCreditSchedule.h"
#include "reports/receivables/ardsImportErrorsList.h"
#include "reports/receivables/ardsInvoice.h"
#include "reports/receivables/ardsPenaltyInterests.h"
#include "reports/receivables/ardsSalesAnalysisReport.h"
#include "reports/receivables/ardsSalesSummaryReport.h"
#include "reports/receivables/ardsStatement.h"
#include "reports/receivables/ardsTransactionTypeDetail.h"
#include "reports/receivables/ardsTransactionTypeList.h"
#include "reports/receivables/ardscrAgedOverdueReport.h"
#include "reports/receivables/ardscrControlReport.h"
#include "reports/receivables/ardscrLedger.h"
#include "reports/receivables/ardscrOpeningBalances.h"
#include "reports/receivables/ardscrOverdueList.h"
#include "reports/receivables/ardscrTransactionList.h"
#include "reports/stock/arItemAdjustment.h"
#include "reports/stock/arItemDetail.h"
#include "reports/stock/arItemList.h"
#include "reports/stock/arLocationList.h"
#include "reports/stock/arscItemPriceList.h"
#include "reports/stock/arscMovementReport.h"
#include "reports/stock/arscPriceChange.h"
#include "reports/stock/arscSerialNumberReport.h"
#include "reports/stock/arscStatusReport.h"
#include "reports/stock/arscStockOnOrderReport.h"
#include "reports/stock/arscStockReorderReport.h"
#include "reports/stock/arscStockSheets.h"
#include "reports/stock/arscTransactionList.h"

namespace trellin {

namespace {

constexpr DesignerEntry kDesigners[] = {
    // reports/ledger
    {"arglAccountReports", CreatearglAccountReports},
    {"arChartofAccounts", CreatearChartofAccounts},
    {"arglAccountReportsNew", CreatearglAccountReportsNew},
    {"arAccountMatrix", CreatearAccountMatrix},
    {"arAccountDetail", CreatearAccountDetail},
    {"arglBankBatch", CreatearglBankBatch},
    {"arglBankHighLow", CreatearglBankHighLow},
    {"arChequeList", CreatearChequeList},
    {"arLodgementSchedule", CreatearLodgementSchedule},
    {"arglBankLedger", CreatearglBankLedger},
    {"arglBankReconciliation", CreatearglBankReconciliation},
    {"arglBankTransactionList", CreatearglBankTransactionList},
    {"arglChequeList", CreatearglChequeList},
    {"arglJournalList", CreatearglJournalList},
    {"arglSourceList", CreatearglSourceList},
    {"arglTransactionList", CreatearglTransactionList},
    // reports/receivables
    {"ardscrLedger", CreateardscrLedger},
    {"ardscrAgedOverdueReport", CreateardscrAgedOverdueReport},
    {"ardscrControlReport", CreateardscrControlReport},
    {"ardscrOverdueList", CreateardscrOverdueList},
    {"ardscrTransactionList", CreateardscrTransactionList},
    {"ardsStatement", CreateardsStatement},
    {"arcrRemittance", CreatearcrRemittance},
    {"ardsDirectCreditSchedule", CreateardsDirectCreditSchedule},
    {"ardsImportErrorsList", CreateardsImportErrorsList},
    {"ardsBatchTransactions", CreateardsBatchTransactions},
    {"ardsPenaltyInterests", CreateardsPenaltyInterests},
    {"ardscrOpeningBalances", CreateardscrOpeningBalances},
    {"ardsTransactionTypeList", CreateardsTransactionTypeList},
    {"ardsTransactionTypeDetail", CreateardsTransactionTypeDetail},
    {"ardsInvoice", CreateardsInvoice},
    {"ardsSalesAnalysisReport", CreateardsSalesAnalysisReport},
    {"ardsSalesSummaryReport", CreateardsSalesSummaryReport},
    // reports/stock
    {"arscStatusReport", CreatearscStatusReport},
    {"arscMovementReport", CreatearscMovementReport},
    {"arscStockOnOrderReport", CreatearscStockOnOrderReport},
    {"arscStockReorderReport", CreatearscStockReorderReport},
    {"arItemList", CreatearItemList},
    {"arItemAdjustment", CreatearItemAdjustment},
    {"arscTransactionList", CreatearscTransactionList},
    {"arscPriceChange", CreatearscPriceChange},
    {"arscItemPriceList", CreatearscItemPriceList},
    {"arscSerialNumberReport", CreatearscSerialNumberReport},
    {"arLocationList", CreatearLocationList},
    {"arItemDetail", CreatearItemDetail},
    {"arscStockSheets", CreatearscStockSheets},
    // reports/assets
    {"arfaDeferredTaxSchedule", CreatearfaDeferredTaxSchedule},
    {"arfaDepreciationCalculation", CreatearfaDepreciationCalculation},
    {"arfaDepreciationSchedule", CreatearfaDepreciationSchedule},
    {"arfaFutureValueSchedule", CreatearfaFutureValueSchedule},
    {"arfaPurchaseSummary", CreatearfaPurchaseSummary},
    {"arfaDisposalSummary", CreatearfaDisposalSummary},
    {"arfaAssetList", CreatearfaAssetList},
    {"arfaTransactionList", CreatearfaTransactionList},
    // reports/jobs
    {"arJobList", CreatearJobList},
    // reports/admin
    {"arAdminBase", CreatearAdminBase},
    {"arCustomerTypeList", CreatearCustomerTypeList},
    {"arDepartmentList", CreatearDepartmentList},
    {"arLog", CreatearLog},
    {"arPostcodeList", CreatearPostcodeList},
    {"arPaymentTermList", CreatearPaymentTermList},
    {"arPenaltyInterestList", CreatearPenaltyInterestList},
    {"arSupplierCategoryList", CreatearSupplierCategoryList},
    {"arSupplierTypeList", CreatearSupplierTypeList},
    {"arItemCategoryList", CreatearItemCategoryList},
    {"arItemTypeList", CreatearItemTypeList},
    {"arContactList", CreatearContactList},
    {"arScriptList", CreatearScriptList},
    {"arUserRolePermissionList", CreatearUserRolePermissionList},
    {"arOtherPartyList", CreatearOtherPartyList},
    {"arGridContent", CreatearGridContent},
    {"arDocumentList", CreatearDocumentList},
    {"arContactDetailList", CreatearContactDetailList},
    {"arOtherPartyDetail", CreatearOtherPartyDetail},
};

}  // namespace

std::span<const DesignerEntry> Designers() { return kDesigners; }

}  // namespace trellin
