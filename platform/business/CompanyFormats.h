#pragma once
// The masks a company uses unless its settings say otherwise.

#include <string_view>

namespace trellin::business {

inline constexpr std::string_view kCompanyDateFormat = "d/mm/yyyy";
inline constexpr std::string_view kCompanyLongDateFormat = "d mmmm yyyy";
// Money with two decimals, negatives in brackets.
inline constexpr std::string_view kCompanyCurrencyFormat = "#,##0.00;(#,##0.00)";

}  // namespace trellin::business
