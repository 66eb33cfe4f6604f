// The catalogue of report keys, in comparison order.

#include <algorithm>

#include "core/Catalogue.h"

#include "platform/runtime/Strings.h"

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
    {"AssetCategoryList", "arAdminBase", kGiven, "Asset Category List", "Asset Category List", "admin"},
    {"AssetDeferredTaxSchedule", "arfaDeferredTaxSchedule", kLayout, nullptr, nullptr, "assets"},
    {"AssetDepreciationCalculation", "arfaDepreciationCalculation", kLayout, nullptr, nullptr, "assets"},
    {"AssetDepreciationSchedule", "arfaDepreciationSchedule", kLayout, nullptr, nullptr, "assets"},
    {"AssetFutureValueSchedule", "arfaFutureValueSchedule", kLayout, nullptr, nullptr, "assets"},
    {"AssetLog", "arLog", kGiven, "Asset Log", "Asset Log", "admin"},
    {"AssetSiteList", "arAdminBase", kGiven, "Asset Site List", "Asset Site List", "admin"},
    {"AssetStockSheets", "arfaStockSheets", kLayout, nullptr, nullptr, "assets"},
    {"AssetTransactionList", "arfaTransactionList", kLayout, nullptr, nullptr, "assets"},
    {"AssetTypeList", "arAdminBase", kGiven, "Asset Type List", "Asset Type List", "admin"},
    {"AssetList", "arfaAssetList", kLayout, nullptr, nullptr, "assets"},
    {"AssetDetails", "arfaAssetDetail", kLayout, nullptr, nullptr, "assets"},
    {"AssetDisposalSummary", "arfaDisposalSummary", kLayout, nullptr, nullptr, "assets"},
    {"AssetPurchaseSummary", "arfaPurchaseSummary", kLayout, nullptr, nullptr, "assets"},
    {"AssetBatchTransactionList", "arfaAssetTransactionList", kGiven, "Asset Transaction List", "Asset Transaction List", "assets"},
    {"DocumentList", "arDocumentList", kLayout, nullptr, nullptr, "admin"},
    {"ManagementReport", "arglManagementReport", kLayout, nullptr, nullptr, "ledger"},
    {"AgedOverdueAR", "ardscrAgedOverdueReport", kGiven, "AR Aged Overdue Report", "Accounts Receivable Aged Overdue Report", "receivables"},
    {"AgedOverdueAP", "ardscrAgedOverdueReport", kGiven, "AP Aged Overdue Report", "Accounts Payable Aged Overdue Report", "receivables"},
    {"BatchTransactions", "ardsBatchTransactions", kGiven, "Batch Transactions", "Batch Transactions", "receivables"},
    {"ControlReportAP", "ardscrControlReport", kGiven, "Accounts Payable Control Report", "Accounts Payable Control Report", "receivables"},
    {"ControlReportAR", "ardscrControlReport", kGiven, "Accounts Receivable Control Report", "Accounts Receivable Control Report", "receivables"},
    {"Chart", "arChart", kLayout, nullptr, nullptr, "ledger"},
    {"DocumentAP", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin"},
    {"DocumentAR", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin"},
    {"DocumentFA", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin"},
    {"DocumentGL", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin"},
    {"DocumentOP", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin"},
    {"DocumentSC", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin"},
    {"DocumentJO", "arDocumentTemplate", kDocumentKey, nullptr, nullptr, "admin"},
    {"PurchaseAnalysisAP", "arcrPurchasesAnalysisReport", kGiven, "Purchases Analysis Report", "Purchases Analysis Report", "receivables"},
    {"GridContent", "arGridContent", kLayout, nullptr, nullptr, "admin"},
    {"PurchaseSummaryAP", "arcrPurchasesSummaryReport", kGiven, "AP Purchases Summary", "Accounts Payable Purchases Summary", "receivables"},
    {"PurchaseTrendAP", "arscTrend", kGiven, "AP Purchases Trend", "Accounts Payable Purchases Trend", "stock"},
    {"RemittanceAP", "arcrRemittance", kGiven, "AP Remittance", "Accounts Payable Remittance", "receivables"},
    {"CustomerCategoryList", "arAdminBase", kGiven, "Customer Category List", "Customer Category List", "admin"},
    {"CustomerTypeList", "arCustomerTypeList", kLayout, nullptr, nullptr, "admin"},
    {"DeliveryDocketList", "arcrDeliveryDocketList", kGiven, "Delivery Docket List", "Delivery Docket List", "receivables"},
    {"DirectCreditSchedule", "ardsDirectCreditSchedule", kGiven, "Direct Credit Schedule", "Direct Credit Schedule", "receivables"},
    {"SalesAnalysisAR", "ardsSalesAnalysisReport", kGiven, "AR Sales Analysis", "Sales Analysis Report", "receivables"},
    {"SalesSummaryAR", "ardsSalesSummaryReport", kGiven, "AR Sales Summary", "Accounts Receivable Sales Summary", "receivables"},
    {"SalesTrendAR", "arscTrend", kGiven, "AR Sales Trend", "Accounts Receivable Sales Trend", "stock"},
    {"StatementAR", "ardsStatement", kGiven, "AR Statement", "Accounts Receivable Statement", "receivables"},
    {"ErrorsList", "ardsImportErrorsList", kGiven, "Import Errors List", "Import Errors List", "receivables"},
    {"CommitList", "ardsImportErrorsList", kGiven, "Commit Errors List", "Commit Errors List", "receivables"},
    {"PurgeTestList", "ardsImportErrorsList", kGiven, "Purge Test List", "Purge Test List", "receivables"},
    {"OtherPartyExceptions", "ardsExceptionReport", kGiven, "Exception Report", "Exception Report", "receivables"},
    {"InvoiceAR", "ardsInvoice", kGiven, "AR Invoice", "Accounts Receivable Invoice", "receivables"},
    {"InvoiceAP", "ardsInvoice", kGiven, "AP Invoice", "Accounts Payable Invoice", "receivables"},
    {"Sales Order", "ardsInvoice", kGiven, "Sales Order", "Sales Order", "receivables"},
    {"Delivery Docket", "ardsInvoice", kGiven, "Delivery Docket", "Delivery Docket", "receivables"},
    {"OpenTransactionListAP", "ardscrTransactionList", kGiven, "AP Open Transaction List", "Accounts Payable Open Transaction List", "receivables"},
    {"OpenTransactionListAR", "ardscrTransactionList", kGiven, "AR Open Transaction List", "Accounts Receivable Open Transaction List", "receivables"},
    {"JobInvoiceList", "ardscrTransactionList", kGiven, "Job Invoice List", "Job Invoice List", "receivables"},
    {"SalesOrderList", "ardscrTransactionList", kGiven, "Sales Order List", "Sales Order List", "receivables"},
    {"InvoiceCommitBatch", "ardsInvoiceBatchTransactions", kGiven, "Commit Transaction", "Commit Transaction", "receivables"},
    {"SavedTransactionListAP", "ardsInvoiceBatchTransactions", kGiven, "AP Saved Transaction List", "Accounts Payable Saved Transaction List", "receivables"},
    {"SavedTransactionListAR", "ardsInvoiceBatchTransactions", kGiven, "AR Saved Transaction List", "Accounts Receivable Saved Transaction List", "receivables"},
    {"ItemAdjustments", "arItemAdjustment", kLayout, nullptr, nullptr, "stock"},
    {"ItemCategoryList", "arItemCategoryList", kGiven, "Item Category List", "Item Category List", "stock"},
    {"ItemDetails", "arItemDetail", kLayout, nullptr, nullptr, "stock"},
    {"ItemList", "arItemList", kLayout, nullptr, nullptr, "stock"},
    {"ItemPriceList", "arscItemPriceList", kGiven, "Item Price List", "Item Price List", "stock"},
    {"ItemTypeList", "arItemTypeList", kGiven, "Item Type List", "Item Type List", "stock"},
    {"JobAnalysis", "ardsSalesAnalysisReport", kGiven, "Job Analysis", "Job Analysis Report", "receivables"},
    {"JobSummary", "arJobSummary", kLayout, nullptr, nullptr, "jobs"},
    {"ItemJobAnalysis", "ardsSalesAnalysisReport", kGiven, "Item Job Analysis", "Item Job Analysis Report", "receivables"},
    {"JobCategoryList", "arAdminBase", kGiven, "Job Category List", "Job Category List", "admin"},
    {"JobDetails", "arJobDetail", kLayout, nullptr, nullptr, "jobs"},
    {"JobInvoiceBatchList", "arJobInvoiceBatchList", kLayout, nullptr, nullptr, "jobs"},
    {"JobList", "arJobList", kLayout, nullptr, nullptr, "jobs"},
    {"JobSheets", "arJobDetail", kGiven, "Job Sheets", "Job Sheets", "jobs"},
    {"JobStatusReport", "arJobStatusReport", kLayout, nullptr, nullptr, "jobs"},
    {"LedgerAP", "ardscrLedger", kGiven, "AP Ledger", "Accounts Payable Ledger", "receivables"},
    {"LedgerAR", "ardscrLedger", kGiven, "AR Ledger", "Accounts Receivable Ledger", "receivables"},
    {"Lodgements", "arLodgementSchedule", kLayout, nullptr, nullptr, "ledger"},
    {"OpeningBalances", "ardscrOpeningBalances", kLayout, nullptr, nullptr, "receivables"},
    {"OverdueListAP", "ardscrOverdueList", kGiven, "AP Overdue List", "Accounts Payable Overdue List", "receivables"},
    {"OverdueListAR", "ardscrOverdueList", kGiven, "AR Overdue List", "Accounts Receivable Overdue List", "receivables"},
    {"PackingSlip", "ardsInvoice", kGiven, "Packing Slip", "Packing Slip", "receivables"},
    {"PaymentReceipt", "ardscrPaymentReceipt", kLayout, nullptr, nullptr, "receivables"},
    {"PaymentTermList", "arPaymentTermList", kGiven, "Payment Term List", "Payment Term List", "admin"},
    {"PenaltyInterests", "ardsPenaltyInterests", kGiven, "Penalty Interest List", "Penalty Interest List", "receivables"},
    {"PenaltyInterestTypeList", "arPenaltyInterestList", kGiven, "Penalty Interest", "Penalty Interest", "admin"},
    {"PurchaseOrder", "ardsInvoice", kGiven, "Purchase Order", "Purchase Order", "receivables"},
    {"PurchaseOrderBatch", "arcrPurchaseOrdersBatch", kGiven, "Purchase Order Batch", "Purchase Order Batch", "receivables"},
    {"PurchaseOrderList", "arcrPurchaseOrderList", kGiven, "Purchase Order List", "Purchase Order List", "receivables"},
    {"StockMovement", "arscMovementReport", kGiven, "Stock Movement Report", "Stock Movement Report", "stock"},
    {"ItemSalesAnalysis", "ardsSalesAnalysisReport", kGiven, "Item Sales Analysis", "Item Sales Analysis Report", "receivables"},
    {"ItemSalesSummary", "ardsSalesSummaryReport", kGiven, "Item Sales Summary Report", "Item Sales Summary Report", "receivables"},
    {"SCPriceChange", "arscPriceChange", kGiven, "Price Change Schedule", "Price Change Schedule", "stock"},
    {"ItemPurchaseAnalysis", "arcrPurchasesAnalysisReport", kGiven, "Item Purchases Analysis Report", "Item Purchases Analysis Report", "receivables"},
    {"ItemPurchaseSummary", "arcrPurchasesSummaryReport", kGiven, "Item Purchases Summary Report", "Item Purchases Summary Report", "receivables"},
    {"ItemPurchaseTrend", "arscTrend", kGiven, "Item Purchase Trend", "Item Purchase Trend", "stock"},
    {"ItemSalesTrend", "arscTrend", kGiven, "Item Sales Trend", "Item Sales Trend", "stock"},
    {"StockLevel", "arscStockReorderReport", kGiven, "Stock Level Report", "Stock Level Report", "stock"},
    {"StockOnOrder", "arscStockOnOrderReport", kGiven, "Stock On Order Report", "Stock On Order Report", "stock"},
    {"StockOnSalesOrders", "arscStockOnOrderReport", kGiven, "Stock Sales Order Report", "Stock Sales Order Report", "stock"},
    {"StockStatus", "arscStatusReport", kGiven, "Stock Status Report", "Stock Status Report", "stock"},
    {"StockSheets", "arscStockSheets", kGiven, "Stock Sheets", "Stock Sheets", "stock"},
    {"StocktakeVarianceReport", "arscStockOnOrderReport", kGiven, "Stocktake Variances", "Stocktake Variances", "stock"},
    {"SerialNumbers", "arscSerialNumberReport", kLayout, nullptr, nullptr, "stock"},
    {"StockReorder", "arscStockReorderReport", kGiven, "Stock Reorder Report", "Stock Reorder Report", "stock"},
    {"SupplierCategoryList", "arSupplierCategoryList", kGiven, "Supplier Category List", "Supplier Category List", "admin"},
    {"SupplierTypeList", "arSupplierTypeList", kGiven, "Supplier Type List", "Supplier Type List", "admin"},
    {"TransactionListAP", "ardscrTransactionList", kGiven, "AP Transaction List", "Accounts Payable Transaction List", "receivables"},
    {"TransactionListAR", "ardscrTransactionList", kGiven, "AR Transaction List", "Accounts Receivable Transaction List", "receivables"},
    {"TransactionListSC", "arscTransactionList", kLayout, nullptr, nullptr, "stock"},
    {"TransactionTypeDetails", "ardsTransactionTypeDetail", kLayout, nullptr, nullptr, "receivables"},
    {"TransactionTypeList", "ardsTransactionTypeList", kLayout, nullptr, nullptr, "receivables"},
    {"BankHighLow", "arglBankHighLow", kLayout, nullptr, nullptr, "ledger"},
    {"BankList", "arAdminBase", kGiven, "Bank List", "Bank List", "admin"},
    {"BranchList", "arAdminBase", kGiven, "Branch List", "Branch List", "admin"},
    {"AccountMatrix", "arAccountMatrix", kLayout, nullptr, nullptr, "ledger"},
    {"ChartofAccounts", "arChartofAccounts", kLayout, nullptr, nullptr, "ledger"},
    {"ContactList", "arContactList", kLayout, nullptr, nullptr, "admin"},
    {"ContactDetailsList", "arContactDetailList", kLayout, nullptr, nullptr, "admin"},
    {"DepartmentList", "arDepartmentList", kLayout, nullptr, nullptr, "admin"},
    {"EmployeeList", "arAdminBase", kGiven, "Employee List", "Employee List", "admin"},
    {"LabelsAP", "arLabels", kGiven, "Accounts Payable Labels", "Accounts Payable Labels", "admin"},
    {"LabelsAR", "arLabels", kGiven, "Accounts Receivable Labels", "Accounts Receivable Labels", "admin"},
    {"OtherPartyLabels", "arLabels", kGiven, "Other Party Labels", "Other Party Labels", "admin"},
    {"ContactLabels", "arLabels", kGiven, "Contact Labels", "Contact Labels", "admin"},
    {"LocationDetails", "arLocationList", kGiven, "Location Details", "Location Details", "admin"},
    {"LocationList", "arLocationList", kLayout, nullptr, nullptr, "admin"},
    {"ItemLog", "arLog", kGiven, "Item Log", "Item Log", "admin"},
    {"JobLog", "arLog", kGiven, "Job Log", "Job Log", "admin"},
    {"OtherPartyLog", "arLog", kGiven, "Other Party Log", "Other Party Log", "admin"},
    {"LogAP", "arLog", kGiven, "Supplier Log", "Supplier Log", "admin"},
    {"LogAR", "arLog", kGiven, "Customer Log", "Customer Log", "admin"},
    {"OtherPartyDetails", "arOtherPartyDetail", kLayout, nullptr, nullptr, "admin"},
    {"OtherPartyList", "arOtherPartyList", kGiven, "Other Party List", "Other Party List", "admin"},
    {"SupplierList", "arOtherPartyList", kGiven, "Supplier List", "Supplier List", "admin"},
    {"CustomerList", "arOtherPartyList", kGiven, "Customer List", "Customer List", "admin"},
    {"AccountReportsNew", "arglAccountReportsNew", kLayout, nullptr, nullptr, "ledger"},
    {"AccountDetails", "arAccountDetail", kGiven, "Account Details", "Account Details", "ledger"},
    {"BankBatch", "arglBankBatch", kGiven, "Bank Entry List", "Bank Entry List", "ledger"},
    {"BankLedger", "arglBankLedger", kGiven, "Bank Ledger", "Bank Ledger", "ledger"},
    {"BankReconciliation", "arglBankReconciliation", kGiven, "Bank Reconciliation", "Bank Reconciliation", "ledger"},
    {"BankTransactionList", "arglBankTransactionList", kGiven, "Bank Transaction List", "Bank Transaction List", "ledger"},
    {"BudgetCashFlow", "arglAccountReports", kGiven, "Budget Cash Flow", "Budget Cash Flow", "ledger"},
    {"BudgetSummary", "arglAccountReports", kGiven, "Budget Summary", "Budget Summary", "ledger"},
    {"BudgetVarianceReport", "arglAccountReports", kGiven, "Budget Variance Report", "Budget Variance Report", "ledger"},
    {"ChequeStandard", "arglChequeStandard", kLayout, nullptr, nullptr, "ledger"},
    {"Cheques", "arChequeList", kGiven, "Cheque List", "Cheque List", "ledger"},
    {"ChequeList", "arglChequeList", kGiven, "Cheque List", "Cheque List", "ledger"},
    {"EndOfYearTrialBalance", "arglAccountReports", kGiven, "End of Year Trial Balance", "End of Year Trial Balance", "ledger"},
    {"FinancialStatement", "arglAccountReports", kGiven, "Financial Statement", "Financial Statement", "ledger"},
    {"FiveYearSummary", "arglAccountReports", kGiven, "Five Year Summary", "Five Year Summary", "ledger"},
    {"GeneralLedger", "arglAccountReports", kGiven, "General Ledger", "General Ledger", "ledger"},
    {"GST101Return", "arglGST101BAS", kGiven, "GST 101 Return", "GST 101 Return", "ledger"},
    {"BASReturn", "arglGST101BAS", kGiven, "Business Activity Statement", "Business Activity Statement", "ledger"},
    {"JournalList", "arglJournalList", kGiven, "Journal List", "Journal List", "ledger"},
    {"LastYearComparison", "arglAccountReports", kGiven, "Last Year Comparison", "Last Year Comparison", "ledger"},
    {"MovementReport", "arglAccountReports", kGiven, "Movement Report", "Movement Report", "ledger"},
    {"PeriodSummary", "arglAccountReports", kGiven, "Period Summary", "Period Summary", "ledger"},
    {"PostCodeList", "arPostcodeList", kLayout, nullptr, nullptr, "admin"},
    {"ScriptList", "arScriptList", kLayout, nullptr, nullptr, "admin"},
    {"SourceList", "arglSourceList", kGiven, "Source List", "Source List", "ledger"},
    {"TaxDetailReport", "arglTaxDetailReport", kGiven, "Tax Detail Report", "Tax Detail Report", "ledger"},
    {"GLTransactionList", "arglTransactionList", kGiven, "GL Transaction List", "GL Transaction List", "ledger"},
    {"TrialBalance", "arglAccountReports", kGiven, "Trial Balance", "Trial Balance", "ledger"},
    {"UserRolePermissionList", "arUserRolePermissionList", kLayout, nullptr, nullptr, "admin"},
    {"VarianceReport", "arglAccountReports", kGiven, "Variance Report", "Variance Report", "ledger"},
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

DesignerFactory FindDesignerFactory(std::span<const DesignerEntry> designers,
                                    std::string_view designer) {
  const auto found =
      std::find_if(designers.begin(), designers.end(),
                   [designer](const DesignerEntry& entry) { return entry.designer == designer; });
  return found == designers.end() ? nullptr : found->factory;
}

DesignerFactory FindKeyFactory(std::span<const DesignerEntry> designers,
                               const CatalogueEntry& entry) {
  const auto found =
      std::find_if(designers.begin(), designers.end(), [&entry](const DesignerEntry& row) {
        return std::string_view(row.designer) == entry.designer;
      });
  if (found == designers.end()) return nullptr;
  for (const std::string& key : Split(found->keys_not_built, ",")) {
    if (Trim(key) == entry.key) return nullptr;
  }
  return found->factory;
}

std::vector<std::string> UnbuiltReportKeys(std::span<const CatalogueEntry> catalogue,
                                           std::span<const DesignerEntry> designers) {
  std::vector<std::string> keys;
  for (const CatalogueEntry& entry : catalogue) {
    if (FindKeyFactory(designers, entry) == nullptr) keys.emplace_back(entry.key);
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
