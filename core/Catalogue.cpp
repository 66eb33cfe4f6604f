// The catalogue of report keys, in comparison order.

#include <algorithm>

#include "core/Catalogue.h"
#include "core/DesignerFactories.h"

namespace trellin {

namespace {

constexpr CaptionRule kLayout = CaptionRule::kLayout;
constexpr CaptionRule kGiven = CaptionRule::kGiven;
constexpr CaptionRule kDocumentKey = CaptionRule::kDocumentKey;

// The keys with a blank ("Sales Order", "Delivery Docket"), the caption pair that names no
// ledger ("SalesAnalysisAR") and the two reports captioned "Cheque List" are as the application
// and its saved reports know them; they are kept exactly.
// clang-format off
constexpr CatalogueEntry kCatalogue[] = {
    {"AssetCategoryList", "arAdminBase", kGiven, "Asset Category List", "Asset Category List", "admin", CreatearAdminBase},
    {"AssetDeferredTaxSchedule", "arfaDeferredTaxSchedule", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetDepreciationCalculation", "arfaDepreciationCalculation", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetDepreciationSchedule", "arfaDepreciationSchedule", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetFutureValueSchedule", "arfaFutureValueSchedule", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetLog", "arLog", kGiven, "Asset Log", "Asset Log", "admin", nullptr},
    {"AssetSiteList", "arAdminBase", kGiven, "Asset Site List", "Asset Site List", "admin", CreatearAdminBase},
    {"AssetStockSheets", "arfaStockSheets", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetTransactionList", "arfaTransactionList", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetTypeList", "arAdminBase", kGiven, "Asset Type List", "Asset Type List", "admin", CreatearAdminBase},
    {"AssetList", "arfaAssetList", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetDetails", "arfaAssetDetail", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetDisposalSummary", "arfaDisposalSummary", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetPurchaseSummary", "arfaPurchaseSummary", kLayout, nullptr, nullptr, "assets", nullptr},
    {"AssetBatchTransactionList", "arfaAssetTransactionList", kGiven, "Asset Transaction List", "Asset Transaction List", "assets", nullptr},
    {"DocumentList", "arDocumentList", kLayout, nullptr, nullptr, "admin", nullptr},
    {"ManagementReport", "arglManagementReport", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"AgedOverdueAR", "ardscrAgedOverdueReport", kGiven, "AR Aged Overdue Report", "Accounts Receivable Aged Overdue Report", "receivables", nullptr},
    {"AgedOverdueAP", "ardscrAgedOverdueReport", kGiven, "AP Aged Overdue Report", "Accounts Payable Aged Overdue Report", "receivables", nullptr},
    {"BatchTransactions", "ardsBatchTransactions", kGiven, "Batch Transactions", "Batch Transactions", "receivables", nullptr},
    {"ControlReportAP", "ardscrControlReport", kGiven, "Accounts Payable Control Report", "Accounts Payable Control Report", "receivables", nullptr},
    {"ControlReportAR", "ardscrControlReport", kGiven, "Accounts Receivable Control Report", "Accounts Receivable Control Report", "receivables", nullptr},
    {"Chart", "arChart", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"DocumentAP", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin", nullptr},
    {"DocumentAR", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin", nullptr},
    {"DocumentFA", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin", nullptr},
    {"DocumentGL", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin", nullptr},
    {"DocumentOP", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin", nullptr},
    {"DocumentSC", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin", nullptr},
    {"DocumentJO", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin", nullptr},
    {"PurchaseAnalysisAP", "arcrPurchasesAnalysisReport", kGiven, "Purchases Analysis Report", "Purchases Analysis Report", "receivables", nullptr},
    {"GridContent", "arGridContent", kLayout, nullptr, nullptr, "admin", nullptr},
    {"PurchaseSummaryAP", "arcrPurchasesSummaryReport", kGiven, "AP Purchases Summary", "Accounts Payable Purchases Summary", "receivables", nullptr},
    {"PurchaseTrendAP", "arscTrend", kGiven, "AP Purchases Trend", "Accounts Payable Purchases Trend", "stock", nullptr},
    {"RemittanceAP", "arcrRemittance", kGiven, "AP Remittance", "Accounts Payable Remittance", "receivables", nullptr},
    {"CustomerCategoryList", "arAdminBase", kGiven, "Customer Category List", "Customer Category List", "admin", CreatearAdminBase},
    {"CustomerTypeList", "arCustomerTypeList", kLayout, nullptr, nullptr, "admin", CreatearCustomerTypeList},
    {"DeliveryDocketList", "arcrDeliveryDocketList", kGiven, "Delivery Docket List", "Delivery Docket List", "receivables", nullptr},
    {"DirectCreditSchedule", "ardsDirectCreditSchedule", kGiven, "Direct Credit Schedule", "Direct Credit Schedule", "receivables", nullptr},
    {"SalesAnalysisAR", "ardsSalesAnalysisReport", kGiven, "AR Sales Analysis", "Sales Analysis Report", "receivables", nullptr},
    {"SalesSummaryAR", "ardsSalesSummaryReport", kGiven, "AR Sales Summary", "Accounts Receivable Sales Summary", "receivables", nullptr},
    {"SalesTrendAR", "arscTrend", kGiven, "AR Sales Trend", "Accounts Receivable Sales Trend", "stock", nullptr},
    {"StatementAR", "ardsStatement", kGiven, "AR Statement", "Accounts Receivable Statement", "receivables", nullptr},
    {"ErrorsList", "ardsImportErrorsList", kGiven, "Import Errors List", "Import Errors List", "receivables", nullptr},
    {"CommitList", "ardsImportErrorsList", kGiven, "Commit Errors List", "Commit Errors List", "receivables", nullptr},
    {"PurgeTestList", "ardsImportErrorsList", kGiven, "Purge Test List", "Purge Test List", "receivables", nullptr},
    {"OtherPartyExceptions", "ardsExceptionReport", kGiven, "Exception Report", "Exception Report", "receivables", nullptr},
    {"InvoiceAR", "ardsInvoice", kGiven, "AR Invoice", "Accounts Receivable Invoice", "receivables", nullptr},
    {"InvoiceAP", "ardsInvoice", kGiven, "AP Invoice", "Accounts Payable Invoice", "receivables", nullptr},
    {"Sales Order", "ardsInvoice", kGiven, "Sales Order", "Sales Order", "receivables", nullptr},
    {"Delivery Docket", "ardsInvoice", kGiven, "Delivery Docket", "Delivery Docket", "receivables", nullptr},
    {"OpenTransactionListAP", "ardscrTransactionList", kGiven, "AP Open Transaction List", "Accounts Payable Open Transaction List", "receivables", nullptr},
    {"OpenTransactionListAR", "ardscrTransactionList", kGiven, "AR Open Transaction List", "Accounts Receivable Open Transaction List", "receivables", nullptr},
    {"JobInvoiceList", "ardscrTransactionList", kGiven, "Job Invoice List", "Job Invoice List", "receivables", nullptr},
    {"SalesOrderList", "ardscrTransactionList", kGiven, "Sales Order List", "Sales Order List", "receivables", nullptr},
    {"InvoiceCommitBatch", "ardsInvoiceBatchTransactions", kGiven, "Commit Transaction", "Commit Transaction", "receivables", nullptr},
    {"SavedTransactionListAP", "ardsInvoiceBatchTransactions", kGiven, "AP Saved Transaction List", "Accounts Payable Saved Transaction List", "receivables", nullptr},
    {"SavedTransactionListAR", "ardsInvoiceBatchTransactions", kGiven, "AR Saved Transaction List", "Accounts Receivable Saved Transaction List", "receivables", nullptr},
    {"ItemAdjustments", "arItemAdjustment", kLayout, nullptr, nullptr, "stock", nullptr},
    {"ItemCategoryList", "arItemCategoryList", kGiven, "Item Category List", "Item Category List", "stock", nullptr},
    {"ItemDetails", "arItemDetail", kLayout, nullptr, nullptr, "stock", nullptr},
    {"ItemList", "arItemList", kLayout, nullptr, nullptr, "stock", nullptr},
    {"ItemPriceList", "arscItemPriceList", kGiven, "Item Price List", "Item Price List", "stock", nullptr},
    {"ItemTypeList", "arItemTypeList", kGiven, "Item Type List", "Item Type List", "stock", nullptr},
    {"JobAnalysis", "ardsSalesAnalysisReport", kGiven, "Job Analysis", "Job Analysis Report", "receivables", nullptr},
    {"JobSummary", "arJobSummary", kLayout, nullptr, nullptr, "jobs", nullptr},
    {"ItemJobAnalysis", "ardsSalesAnalysisReport", kGiven, "Item Job Analysis", "Item Job Analysis Report", "receivables", nullptr},
    {"JobCategoryList", "arAdminBase", kGiven, "Job Category List", "Job Category List", "admin", CreatearAdminBase},
    {"JobDetails", "arJobDetail", kLayout, nullptr, nullptr, "jobs", nullptr},
    {"JobInvoiceBatchList", "arJobInvoiceBatchList", kLayout, nullptr, nullptr, "jobs", nullptr},
    {"JobList", "arJobList", kLayout, nullptr, nullptr, "jobs", nullptr},
    {"JobSheets", "arJobDetail", kGiven, "Job Sheets", "Job Sheets", "jobs", nullptr},
    {"JobStatusReport", "arJobStatusReport", kLayout, nullptr, nullptr, "jobs", nullptr},
    {"LedgerAP", "ardscrLedger", kGiven, "AP Ledger", "Accounts Payable Ledger", "receivables", nullptr},
    {"LedgerAR", "ardscrLedger", kGiven, "AR Ledger", "Accounts Receivable Ledger", "receivables", nullptr},
    {"Lodgements", "arLodgementSchedule", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"OpeningBalances", "ardscrOpeningBalances", kLayout, nullptr, nullptr, "receivables", nullptr},
    {"OverdueListAP", "ardscrOverdueList", kGiven, "AP Overdue List", "Accounts Payable Overdue List", "receivables", nullptr},
    {"OverdueListAR", "ardscrOverdueList", kGiven, "AR Overdue List", "Accounts Receivable Overdue List", "receivables", nullptr},
    {"PackingSlip", "ardsInvoice", kGiven, "Packing Slip", "Packing Slip", "receivables", nullptr},
    {"PaymentReceipt", "ardscrPaymentReceipt", kLayout, nullptr, nullptr, "receivables", nullptr},
    {"PaymentTermList", "arPaymentTermList", kGiven, "Payment Term List", "Payment Term List", "admin", nullptr},
    {"PenaltyInterests", "ardsPenaltyInterests", kGiven, "Penalty Interest List", "Penalty Interest List", "receivables", nullptr},
    {"PenaltyInterestTypeList", "arPenaltyInterestList", kGiven, "Penalty Interest", "Penalty Interest", "admin", nullptr},
    {"PurchaseOrder", "ardsInvoice", kGiven, "Purchase Order", "Purchase Order", "receivables", nullptr},
    {"PurchaseOrderBatch", "arcrPurchaseOrdersBatch", kGiven, "Purchase Order Batch", "Purchase Order Batch", "receivables", nullptr},
    {"PurchaseOrderList", "arcrPurchaseOrderList", kGiven, "Purchase Order List", "Purchase Order List", "receivables", nullptr},
    {"StockMovement", "arscMovementReport", kGiven, "Stock Movement Report", "Stock Movement Report", "stock", nullptr},
    {"ItemSalesAnalysis", "ardsSalesAnalysisReport", kGiven, "Item Sales Analysis", "Item Sales Analysis Report", "receivables", nullptr},
    {"ItemSalesSummary", "ardsSalesSummaryReport", kGiven, "Item Sales Summary Report", "Item Sales Summary Report", "receivables", nullptr},
    {"SCPriceChange", "arscPriceChange", kGiven, "Price Change Schedule", "Price Change Schedule", "stock", nullptr},
    {"ItemPurchaseAnalysis", "arcrPurchasesAnalysisReport", kGiven, "Item Purchases Analysis Report", "Item Purchases Analysis Report", "receivables", nullptr},
    {"ItemPurchaseSummary", "arcrPurchasesSummaryReport", kGiven, "Item Purchases Summary Report", "Item Purchases Summary Report", "receivables", nullptr},
    {"ItemPurchaseTrend", "arscTrend", kGiven, "Item Purchase Trend", "Item Purchase Trend", "stock", nullptr},
    {"ItemSalesTrend", "arscTrend", kGiven, "Item Sales Trend", "Item Sales Trend", "stock", nullptr},
    {"StockLevel", "arscStockReorderReport", kGiven, "Stock Level Report", "Stock Level Report", "stock", nullptr},
    {"StockOnOrder", "arscStockOnOrderReport", kGiven, "Stock On Order Report", "Stock On Order Report", "stock", nullptr},
    {"StockOnSalesOrders", "arscStockOnOrderReport", kGiven, "Stock Sales Order Report", "Stock Sales Order Report", "stock", nullptr},
    {"StockStatus", "arscStatusReport", kGiven, "Stock Status Report", "Stock Status Report", "stock", nullptr},
    {"StockSheets", "arscStockSheets", kGiven, "Stock Sheets", "Stock Sheets", "stock", nullptr},
    {"StocktakeVarianceReport", "arscStockOnOrderReport", kGiven, "Stocktake Variances", "Stocktake Variances", "stock", nullptr},
    {"SerialNumbers", "arscSerialNumberReport", kLayout, nullptr, nullptr, "stock", nullptr},
    {"StockReorder", "arscStockReorderReport", kGiven, "Stock Reorder Report", "Stock Reorder Report", "stock", nullptr},
    {"SupplierCategoryList", "arSupplierCategoryList", kGiven, "Supplier Category List", "Supplier Category List", "admin", nullptr},
    {"SupplierTypeList", "arSupplierTypeList", kGiven, "Supplier Type List", "Supplier Type List", "admin", nullptr},
    {"TransactionListAP", "ardscrTransactionList", kGiven, "AP Transaction List", "Accounts Payable Transaction List", "receivables", nullptr},
    {"TransactionListAR", "ardscrTransactionList", kGiven, "AR Transaction List", "Accounts Receivable Transaction List", "receivables", nullptr},
    {"TransactionListSC", "arscTransactionList", kLayout, nullptr, nullptr, "stock", nullptr},
    {"TransactionTypeDetails", "ardsTransactionTypeDetail", kLayout, nullptr, nullptr, "receivables", nullptr},
    {"TransactionTypeList", "ardsTransactionTypeList", kLayout, nullptr, nullptr, "receivables", nullptr},
    {"BankHighLow", "arglBankHighLow", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"BankList", "arAdminBase", kGiven, "Bank List", "Bank List", "admin", CreatearAdminBase},
    {"BranchList", "arAdminBase", kGiven, "Branch List", "Branch List", "admin", CreatearAdminBase},
    {"AccountMatrix", "arAccountMatrix", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"ChartofAccounts", "arChartofAccounts", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"ContactList", "arContactList", kLayout, nullptr, nullptr, "admin", nullptr},
    {"ContactDetailsList", "arContactDetailList", kLayout, nullptr, nullptr, "admin", nullptr},
    {"DepartmentList", "arDepartmentList", kLayout, nullptr, nullptr, "admin", CreatearDepartmentList},
    {"EmployeeList", "arAdminBase", kGiven, "Employee List", "Employee List", "admin", CreatearAdminBase},
    {"LabelsAP", "arLabels", kGiven, "Accounts Payable Labels", "Accounts Payable Labels", "admin", nullptr},
    {"LabelsAR", "arLabels", kGiven, "Accounts Receivable Labels", "Accounts Receivable Labels", "admin", nullptr},
    {"OtherPartyLabels", "arLabels", kGiven, "Other Party Labels", "Other Party Labels", "admin", nullptr},
    {"ContactLabels", "arLabels", kGiven, "Contact Labels", "Contact Labels", "admin", nullptr},
    {"LocationDetails", "arLocationList", kGiven, "Location Details", "Location Details", "admin", nullptr},
    {"LocationList", "arLocationList", kLayout, nullptr, nullptr, "admin", nullptr},
    {"ItemLog", "arLog", kGiven, "Item Log", "Item Log", "admin", nullptr},
    {"JobLog", "arLog", kGiven, "Job Log", "Job Log", "admin", nullptr},
    {"OtherPartyLog", "arLog", kGiven, "Other Party Log", "Other Party Log", "admin", nullptr},
    {"LogAP", "arLog", kGiven, "Supplier Log", "Supplier Log", "admin", nullptr},
    {"LogAR", "arLog", kGiven, "Customer Log", "Customer Log", "admin", nullptr},
    {"OtherPartyDetails", "arOtherPartyDetail", kLayout, nullptr, nullptr, "admin", nullptr},
    {"OtherPartyList", "arOtherPartyList", kGiven, "Other Party List", "Other Party List", "admin", nullptr},
    {"SupplierList", "arOtherPartyList", kGiven, "Supplier List", "Supplier List", "admin", nullptr},
    {"CustomerList", "arOtherPartyList", kGiven, "Customer List", "Customer List", "admin", nullptr},
    {"AccountReportsNew", "arglAccountReportsNew", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"AccountDetails", "arAccountDetail", kGiven, "Account Details", "Account Details", "ledger", nullptr},
    {"BankBatch", "arglBankBatch", kGiven, "Bank Entry List", "Bank Entry List", "ledger", nullptr},
    {"BankLedger", "arglBankLedger", kGiven, "Bank Ledger", "Bank Ledger", "ledger", nullptr},
    {"BankReconciliation", "arglBankReconciliation", kGiven, "Bank Reconciliation", "Bank Reconciliation", "ledger", nullptr},
    {"BankTransactionList", "arglBankTransactionList", kGiven, "Bank Transaction List", "Bank Transaction List", "ledger", nullptr},
    {"BudgetCashFlow", "arglAccountReports", kGiven, "Budget Cash Flow", "Budget Cash Flow", "ledger", CreatearglAccountReports},
    {"BudgetSummary", "arglAccountReports", kGiven, "Budget Summary", "Budget Summary", "ledger", CreatearglAccountReports},
    {"BudgetVarianceReport", "arglAccountReports", kGiven, "Budget Variance Report", "Budget Variance Report", "ledger", CreatearglAccountReports},
    {"ChequeStandard", "arglChequeStandard", kLayout, nullptr, nullptr, "ledger", nullptr},
    {"Cheques", "arChequeList", kGiven, "Cheque List", "Cheque List", "ledger", nullptr},
    {"ChequeList", "arglChequeList", kGiven, "Cheque List", "Cheque List", "ledger", nullptr},
    {"EndOfYearTrialBalance", "arglAccountReports", kGiven, "End of Year Trial Balance", "End of Year Trial Balance", "ledger", CreatearglAccountReports},
    {"FinancialStatement", "arglAccountReports", kGiven, "Financial Statement", "Financial Statement", "ledger", CreatearglAccountReports},
    {"FiveYearSummary", "arglAccountReports", kGiven, "Five Year Summary", "Five Year Summary", "ledger", CreatearglAccountReports},
    {"GeneralLedger", "arglAccountReports", kGiven, "General Ledger", "General Ledger", "ledger", CreatearglAccountReports},
    {"GST101Return", "arglGST101BAS", kGiven, "GST 101 Return", "GST 101 Return", "ledger", nullptr},
    {"BASReturn", "arglGST101BAS", kGiven, "Business Activity Statement", "Business Activity Statement", "ledger", nullptr},
    {"JournalList", "arglJournalList", kGiven, "Journal List", "Journal List", "ledger", nullptr},
    {"LastYearComparison", "arglAccountReports", kGiven, "Last Year Comparison", "Last Year Comparison", "ledger", CreatearglAccountReports},
    {"MovementReport", "arglAccountReports", kGiven, "Movement Report", "Movement Report", "ledger", CreatearglAccountReports},
    {"PeriodSummary", "arglAccountReports", kGiven, "Period Summary", "Period Summary", "ledger", CreatearglAccountReports},
    {"PostCodeList", "arPostcodeList", kLayout, nullptr, nullptr, "admin", CreatearPostcodeList},
    {"ScriptList", "arScriptList", kLayout, nullptr, nullptr, "admin", nullptr},
    {"SourceList", "arglSourceList", kGiven, "Source List", "Source List", "ledger", nullptr},
    {"TaxDetailReport", "arglTaxDetailReport", kGiven, "Tax Detail Report", "Tax Detail Report", "ledger", nullptr},
    {"GLTransactionList", "arglTransactionList", kGiven, "GL Transaction List", "GL Transaction List", "ledger", nullptr},
    {"TrialBalance", "arglAccountReports", kGiven, "Trial Balance", "Trial Balance", "ledger", CreatearglAccountReports},
    {"UserRolePermissionList", "arUserRolePermissionList", kLayout, nullptr, nullptr, "admin", nullptr},
    {"VarianceReport", "arglAccountReports", kGiven, "Variance Report", "Variance Report", "ledger", CreatearglAccountReports},
};
// clang-format on

static_assert(std::size(kCatalogue) == 164, "the catalogue holds 164 keys");

}  // namespace

std::span<const CatalogueEntry> Catalogue() { return kCatalogue; }

const CatalogueEntry* FindCatalogueEntry(std::span<const CatalogueEntry> catalogue,
                                         std::string_view key) {
  const auto found = std::find_if(catalogue.begin(), catalogue.end(),
                                  [key](const CatalogueEntry& entry) { return entry.key == key; });
  return found == catalogue.end() ? nullptr : &*found;
}

std::vector<std::string> UnbuiltReportKeys() {
  std::vector<std::string> keys;
  for (const CatalogueEntry& entry : kCatalogue) {
    if (entry.factory == nullptr) keys.emplace_back(entry.key);
  }
  return keys;
}

CatalogueCaptions CaptionsFor(const CatalogueEntry& entry, std::string_view key) {
  switch (entry.caption_rule) {
    case CaptionRule::kLayout:
      return {};
    case CaptionRule::kGiven:
      return {entry.caption, entry.document_name};
    case CaptionRule::kDocumentKey: {
      // "DocumentJO" is the "JO Document"; its document name is read back from the caption.
      std::string caption =
          std::string(key.substr(key.size() >= 2 ? key.size() - 2 : 0)) + " Document";
      return {caption, caption};
    }
  }
  return {};
}

}  // namespace trellin
