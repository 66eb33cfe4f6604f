#pragma once
// The masks a company uses unless its settings say otherwise.

#include <string_view>

#include "platform/runtime/Format.h"

namespace trellin::business {

inline constexpr std::string_view kCompanyDateFormat = "d/mm/yyyy";
inline constexpr std::string_view kCompanyLongDateFormat = "d mmmm yyyy";
// Money with two decimals, negatives in brackets: the runtime's own money mask.
inline constexpr std::string_view kCompanyCurrencyFormat = kDefaultCurrencyFormat;

}  // namespace trellin::business
