#pragma once
// Purchase summary ("PurchaseSummaryAP", "ItemPurchaseSummary"): each supplier's or item's
// purchases, discount and net in two periods side by side. The sales summary's run (one
// aggregate query whose WHERE spans both periods and whose columns each sum their own period,
// sorted on the client, up to five groups) with the purchase lines and no costs or gross profit.

#include "reports/receivables/ardsSalesSummaryReport.h"

namespace trellin {

class arcrPurchasesSummaryReport : public ardsSalesSummaryReport {
 public:
  arcrPurchasesSummaryReport() : ardsSalesSummaryReport("arcrPurchasesSummaryReport", false) {}

  // Throws std::invalid_argument for a key the designer does not serve.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

 protected:
  [[nodiscard]] bool PartiesKey(const std::string& key) const override;
  [[nodiscard]] std::string PartyWord() const override { return "Suppliers "; }
  [[nodiscard]] std::span<const AnalysisOrder> Orders() const override;
  void AddSideHeadings() override;
  void AddSideFilters(std::string& where) override;
  [[nodiscard]] bool OwnGrouping(ChosenGrouping& grouping, const std::string& base) const override;
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> Figures() const override;
  [[nodiscard]] std::string FigureSign() const override { return ""; }
};

[[nodiscard]] DesignerPtr CreatearcrPurchasesSummaryReport();

}  // namespace trellin
