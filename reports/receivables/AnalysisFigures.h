#pragma once
// What the sales and purchase analysis designers share: the gross profit rules, the client-side
// order of the rows, the decimals of "Round" columns, and the footers that work their gross
// profit percentage out of their own sums.

#include <span>
#include <string>
#include <string_view>

#include "core/host/Section.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"

namespace trellin {

// Net less costs as a percentage of net: -100 when net is 0 and costs are not, 0 when both are.
[[nodiscard]] double GrossProfitPercent(Currency net, Currency costs);

// A money figure of a row or a footer, Null and Empty as 0.
[[nodiscard]] Currency FigureOf(const Variant& value);

// One OrderBy choice and the recordset's sort keys it stands for.
struct AnalysisOrder {
  std::string_view choice;
  std::string_view sort;
};

// The sort keys of `order_by` among `orders`; `key_field` for a choice not among them ("Code").
[[nodiscard]] std::string AnalysisSort(std::span<const AnalysisOrder> orders,
                                       const std::string& order_by, const std::string& key_field);

// The decimals of the "Round" columns for a Rounding value: "Whole" 0, "Thousands" -3, else 2.
[[nodiscard]] int RoundingDecimals(const std::string& rounding);

// The column names a footer's gross profit is worked from: the sums of net and of every cost
// column, and the two columns it fills.
struct GrossProfitColumns {
  std::string_view net;
  std::span<const std::string_view> costs;
  std::string_view gross_profit;
  std::string_view percent;
};

// For a group footer or the report footer laid out by the report's data columns: reads the sums
// of `columns.net` and of the cost columns from the footer's totals and sets the percentage from
// them, so a group's percentage is never a sum of its rows' percentages. With `include_costs` off
// the gross profit and its percentage stay blank. Totals the footer does not hold count as 0.
void FooterGrossProfit(Section& footer, const GrossProfitColumns& columns, bool include_costs);

}  // namespace trellin
