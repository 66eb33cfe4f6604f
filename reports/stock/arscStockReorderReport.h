#pragma once
// Stock levels ("StockLevel") and reorder suggestions ("StockReorder"), one designer told apart
// by the report's key. StockLevel shows each item's figures from the business layer's stock
// levels: on hand, on open documents, on order, allocated and available. StockReorder works out,
// before the run, how much of each item to order at each location to restore its levels, and
// prints only the rows that need ordering.
//   arscStockReorderReport.cpp         parameters, columns, events
//   arscStockReorderReport_level.cpp   the stock level query and its rows
//   arscStockReorderReport_reorder.cpp the reorder query and the working out

#include <memory>
#include <optional>
#include <string>

#include "core/host/BusinessObjects.h"
#include "reports/stock/arscStockBase.h"

namespace trellin {

// How much to order: `maximum` less `available`, less what is on order unless that is left out,
// when the available quantity is at or below `minimum` or the levels are to be filled; else 0.
// `on_order` is Null (nullopt) when nothing is on order.
[[nodiscard]] double ReorderQuantity(double available, double minimum, double maximum,
                                     std::optional<double> on_order, bool fill_to_maximum,
                                     bool exclude_on_order);

// The sales order (or job invoice) figure the options ask for: to supply or on order, less what
// is held when asked.
[[nodiscard]] double ChosenOrderFigure(bool to_supply, bool less_held, double on_order,
                                       double on_order_held, double to_supply_quantity,
                                       double to_supply_held);

class arscStockReorderReport : public arscStockBase {
 public:
  arscStockReorderReport() : arscStockBase("arscStockReorderReport") {}

  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The query routine of the key: the query, the description and the groups; for StockReorder
  // the reorder is worked out on an updatable copy of the rows, which the run then reads. Needs a
  // host with the parameters and columns declared. Throws std::invalid_argument for a grouping
  // the key does not offer, and what the database and range builder throw.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }
  [[nodiscard]] bool Reorder() const { return reorder_; }

 private:
  // --- the stock level (arscStockReorderReport_level.cpp) ---
  void BuildLevelSQL();
  void FetchLevel();
  // --- the reorder (arscStockReorderReport_reorder.cpp) ---
  void BuildReorderSQL();
  void WorkOutReorder();

  void Detail_Format() override;

  bool reorder_ = false;
  bool summary_ = false;
  std::string sql_;
  std::string description_;
  std::shared_ptr<Recordset> rows_;  // the worked reorder rows
  std::unique_ptr<BusinessObjects> objects_;
  std::unique_ptr<ItemStockLevel> levels_;
};

[[nodiscard]] DesignerPtr CreatearscStockReorderReport();

}  // namespace trellin
