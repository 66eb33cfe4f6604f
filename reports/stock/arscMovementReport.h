#pragma once
// The stock movement ("StockMovement"): for each stock item, the opening stock, what came in,
// what went out, the adjustments and the closing stock of a period, in value or in quantity.
// The query picks the items; each row's figures come from two queries of its own lines, the
// opening before the period and the movements of it by line type. Under a location or
// department group a row counts only the lines of its group.

#include <cstdint>
#include <string>

#include "reports/stock/arscStockBase.h"

namespace trellin {

// The movement column a stock line's type falls in.
enum class MovementColumn : std::int16_t { Inwards = 0, Outwards = 1, Adjustments = 2 };

// The column of `TransactionLine.Type` `type` and the sign its sum takes there: 18 and 20 to 29
// come in, 30 and up go out with the sign turned (so stock going out is positive), and the
// rest below 20 are adjustments.
struct MovementPlace {
  MovementColumn column;
  int sign;
};
[[nodiscard]] MovementPlace MovementPlaceOfType(std::int64_t type);

// One row's figures; `Closing` = `Opening` + `Inwards` - `Outwards` + `Adjustments`.
struct MovementFigures {
  Currency Opening, Inwards, Outwards, Adjustments;
  // Adds the sum of one line type's lines to its column.
  void Add(std::int64_t type, Currency sum);
  [[nodiscard]] Currency Closing() const { return Opening + Inwards - Outwards + Adjustments; }
};

class arscMovementReport : public arscStockBase {
 public:
  arscMovementReport() : arscStockBase("arscMovementReport") {}

  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The query routine: reads the parameters, builds the query, the line filter of the row
  // queries and the run's description, and defines the groups. Throws std::invalid_argument
  // for a Custom period whose first date is after its last, or a grouping this report does not
  // know, and what the range builder throws for a list it cannot read.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }

 private:
  void Detail_Format() override;
  // The figures of the current row, from its opening and movement queries.
  [[nodiscard]] MovementFigures RowFigures();

  bool summary_ = false;
  bool quantity_ = false;
  bool all_time_ = false;
  Variant date_from_, date_to_;
  bool by_location_ = false, by_department_ = false;
  std::string line_filter_;  // the run's conditions on the stock lines, " AND ..." or ""
  std::string sql_;
  std::string description_;
};

[[nodiscard]] DesignerPtr CreatearscMovementReport();

}  // namespace trellin
