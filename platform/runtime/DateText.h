#pragma once
// Reading dates typed by a person.

#include <optional>
#include <string_view>

#include "platform/runtime/Date.h"

namespace trellin {

// Two-digit years below this pivot are 20yy, the rest 19yy ("29" -> 2029, "30" -> 1930).
inline constexpr int kTwoDigitYearPivot = 30;

// Parses a date as written in New Zealand and Australia: day first ("d/m/yyyy", "d/m/yy",
// "d-m-yyyy", "d.m.yyyy", each also with a two-digit year), ISO "yyyy-mm-dd", or "d mmm yyyy"
// ("5 Mar 2024", "5 March 2024", "5-Mar-2024"; month names in English, any case), each
// optionally followed by a blank (or 'T') and a time "h:nn" or "h:nn:ss", with "am"/"pm" for a
// 12-hour clock (12am is midnight). Leading and trailing blanks are ignored. Anything else is
// refused with nullopt: "31/12/2030+1D", "+1D", "EOM", bare numbers, impossible days.
[[nodiscard]] std::optional<Date> ParseDateText(std::string_view text);

}  // namespace trellin
