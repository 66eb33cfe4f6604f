#pragma once
// The trends ("SalesTrendAR", "PurchaseTrendAP", "ItemSalesTrend", "ItemPurchaseTrend"): for each
// customer, supplier or item, the sales or purchases of twelve periods side by side ending at a
// date, with their total. One aggregate query sums each period's lines in a column of its own
// (TrendPeriods gives the periods); the fixed layout arscTrend closes the columns up to the right
// margin when the total is left out. SalesTrendAR may split a customer's row by the address each
// sale went to.

#include <string>

#include "reports/stock/TrendPeriods.h"
#include "reports/stock/arscStockBase.h"

namespace trellin {

// What the rows of a key are and which lines they sum.
enum class TrendRows { Customers, Suppliers, Items };

class arscTrend : public arscStockBase {
 public:
  arscTrend() : arscStockBase("arscTrend") {}

  // Throws std::invalid_argument for a key the designer does not serve.
  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The set-up routine: the period table, the options, the query, the description and the
  // groups. Needs a host with the parameters declared; throws std::invalid_argument for a
  // Frequency that is no choice or a grouping this key does not know, and what the range
  // builder throws for a list it cannot read.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }
  [[nodiscard]] const TrendPeriodTable& Periods() const { return periods_; }

 private:
  void Detail_Format() override;
  void FooterFormat(Section& section) override;
  // The labels, the code column, the total column and the rounding, once the query is built.
  void LayOut();
  // Puts the chosen groupings' fields before the row's own, defines the groups, and with
  // SplitByAddress the address group inside them.
  void AddGroupings(std::string& fields, std::string& group_by, std::string& order);

  TrendRows rows_ = TrendRows::Customers;
  bool summary_ = false;
  bool show_total_ = true;
  bool show_code_ = true;
  bool split_by_address_ = false;
  int decimals_ = 0;
  TrendFrequency frequency_ = TrendFrequency::EOM;
  TrendPeriodTable periods_{};
  std::string sql_;
  std::string description_;
};

[[nodiscard]] DesignerPtr CreatearscTrend();

}  // namespace trellin
