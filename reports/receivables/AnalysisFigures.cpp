#include "reports/receivables/AnalysisFigures.h"

#include "platform/runtime/Strings.h"

namespace trellin {

double GrossProfitPercent(Currency net, Currency costs) {
  if (net == Currency()) return costs == Currency() ? 0.0 : -100.0;
  return (net - costs).ToDouble() / net.ToDouble() * 100.0;
}

Currency FigureOf(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

std::string AnalysisSort(std::span<const AnalysisOrder> orders, const std::string& order_by,
                         const std::string& key_field) {
  for (const AnalysisOrder& order : orders) {
    if (EqualsIgnoreCase(order.choice, order_by)) return std::string(order.sort);
  }
  return key_field;
}

int RoundingDecimals(const std::string& rounding) {
  if (EqualsIgnoreCase(rounding, "Whole")) return 0;
  if (EqualsIgnoreCase(rounding, "Thousands")) return -3;
  return 2;
}

void FooterGrossProfit(Section& footer, const GrossProfitColumns& columns, bool include_costs) {
  // The footers' totals are named as the column layout names them: section, "Summary", column.
  auto total = [&](std::string_view column) {
    return footer.Controls().Find(footer.Name() + "Summary" + std::string(column));
  };
  Control* gross_profit = total(columns.gross_profit);
  Control* percent = total(columns.percent);
  if (!include_costs) {
    for (Control* control : {gross_profit, percent}) {
      if (control == nullptr) continue;
      control->SetDataValue(Variant::Null());
      control->SetText("");
    }
    return;
  }
  const Control* net_total = total(columns.net);
  const Currency net = net_total == nullptr ? Currency() : FigureOf(net_total->DataValue());
  Currency costs;
  for (std::string_view column : columns.costs) {
    if (const Control* cost = total(column)) costs += FigureOf(cost->DataValue());
  }
  // The gross profit's own total is the sum of the rows' net less costs, exact as it stands.
  if (percent != nullptr) {
    percent->SetDataValue(GrossProfitPercent(net, costs));
  }
}

}  // namespace trellin
