#pragma once
// Orders still open, one designer told apart by the report's key: purchase order lines still
// expected ("StockOnOrder") and sales order lines still to be supplied ("StockOnSalesOrders").
// What remains of a line is the sum over its like lines, so a received or supplied part nets it
// down. The same designer serves the stocktake's variances ("StocktakeVarianceReport").
//   arscStockOnOrderReport.cpp            parameters, columns, events
//   arscStockOnOrderReport_sql.cpp        the two order queries
//   arscStockOnOrderReport_stocktake.cpp  the stocktake's parameters, query and variances

#include <memory>
#include <string>

#include "core/host/BusinessObjects.h"
#include "reports/stock/arscStockBase.h"

namespace trellin {

class arscStockOnOrderReport : public arscStockBase {
 public:
  arscStockOnOrderReport() : arscStockBase("arscStockOnOrderReport") {}

  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The query routine of the key: the query, the description and the groups. Needs a host with
  // the parameters and columns declared. Throws std::invalid_argument for a grouping the key does
  // not offer or a key this designer does not serve, and what the range builder throws.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }

 private:
  // --- the queries (arscStockOnOrderReport_sql.cpp) ---
  void BuildPurchaseSQL();
  void BuildSalesSQL();
  // --- the stocktake (arscStockOnOrderReport_stocktake.cpp) ---
  void RefreshStocktakeParameters();
  void RefreshStocktakeColumns();
  void BuildStocktakeSQL();
  // On hand at the end of `as_at` for each row of the query, the quantity and value of its
  // variance, and the rows of no variance deleted unless asked for.
  void WorkOutVariances(Date as_at);

  void Detail_Format() override;
  void GroupHeaderFormat(Section& section, int level) override;
  [[nodiscard]] bool Purchases() const;
  [[nodiscard]] bool Stocktake() const;

  bool summary_ = false;
  std::string sql_;
  std::string description_;
  std::unique_ptr<BusinessObjects> objects_;
  std::shared_ptr<Recordset> rows_;  // the stocktake's worked rows
};

[[nodiscard]] DesignerPtr CreatearscStockOnOrderReport();

}  // namespace trellin
