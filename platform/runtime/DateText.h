#pragma once
// Reading dates typed by a person.

#include <optional>
#include <string_view>

#include "platform/runtime/Date.h"

namespace trellin {

// Two-digit years below this pivot are 20yy, the rest 19yy ("29" -> 2029, "30" -> 1930).
inline constexpr int kTwoDigitYearPivot = 30;

// Parses a date as written in New Zealand and Australia: day first ("d/m/yyyy", "d/m/yy",
// "d-m-yyyy", "d.m.yyyy"), ISO "yyyy-mm-dd", or "d mmm yyyy" ("5 Mar 2024", "5 March 2024"),
// each optionally followed by a time "h:nn", "h:nn:ss" with optional "am"/"pm". Leading and
// trailing blanks are ignored. Anything else is refused with nullopt: "31/12/2030+1D", "+1D",
// "EOM", bare numbers, impossible days.
[[nodiscard]] std::optional<Date> ParseDateText(std::string_view text);

}  // namespace trellin
