#pragma once
// The stock status ("StockStatus"): as at a date, each stock item's quantity and value on hand,
// its unit cost, its value at the current cost and selling price, and the margin between them.
// Quantities and values are sums of the item's stock lines; group and report footers show unit
// cost and margin as ratios of their sums.

#include <string>

#include "reports/stock/arscStockBase.h"

namespace trellin {

class arscStatusReport : public arscStockBase {
 public:
  arscStatusReport() : arscStockBase("arscStatusReport") {}

  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The query routine: reads the parameters, builds the query and the run's description, defines
  // the groups and shows the columns the choices ask for. Needs a host with the parameters and
  // columns declared. Throws std::invalid_argument for a grouping this report does not know or a
  // bound that is not a number, and what the range builder throws for a list it cannot read.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }

 private:
  void Detail_Format() override;
  void FooterFormat(Section& section) override;

  bool summary_ = false;
  std::string sql_;
  std::string description_;
};

// The worked fields of one line: from the quantity Q and value V on hand and the item's prices.
struct StatusFigures {
  Currency unit_cost;
  Currency current_cost;
  Currency current_sell;
  double margin = 0;
};
// Q of 0 gives zeros. The cost takes the tax of a known `cost_tax` out of the unit price and
// then multiplies by Q; the sell side multiplies first and takes the tax out of the whole. The
// margin is (1 - V / sell) x 100, 0 when the sell value is 0.
[[nodiscard]] StatusFigures WorkStatusFigures(double quantity, Currency value, Currency cost_price,
                                              const std::string& cost_tax, Currency sell_price,
                                              const std::string& sell_tax);

[[nodiscard]] DesignerPtr CreatearscStatusReport();

}  // namespace trellin
