#pragma once
// Purchase analysis ("PurchaseAnalysisAP", "ItemPurchaseAnalysis"): quantity, gross, discount,
// net, tax and the tax-inclusive value of what each supplier billed, or of each item bought, over
// one period. The sales analysis's run (one aggregate query into a client-side recordset sorted
// on the client, up to five groups, each row's lines under it with ShowTransactions) with the
// purchase lines and figures and no costs or gross profit.

#include "reports/receivables/ardsSalesAnalysisReport.h"

namespace trellin {

class arcrPurchasesAnalysisReport : public ardsSalesAnalysisReport {
 public:
  arcrPurchasesAnalysisReport()
      : ardsSalesAnalysisReport("arcrPurchasesAnalysisReport", false, "") {}

  // Throws std::invalid_argument for a key the designer does not serve.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

 protected:
  [[nodiscard]] const AnalysisKey& KeyOf(const std::string& key) const override;
  [[nodiscard]] std::span<const AnalysisOrder> Orders() const override;
  void AddSideHeadings() override;
  void AddFilters(std::string& where) override;
  void AddLineTypes(std::string& where) override;
  [[nodiscard]] std::string FiguresSQL(bool per_line) const override;
  [[nodiscard]] bool OwnGrouping(ChosenGrouping& grouping, const std::string& base) const override;
  [[nodiscard]] std::string LinesOrder() const override;
  [[nodiscard]] std::shared_ptr<ardsSalesAnalysisReportTransSub> MakeLines() const override;
};

[[nodiscard]] DesignerPtr CreatearcrPurchasesAnalysisReport();

}  // namespace trellin
