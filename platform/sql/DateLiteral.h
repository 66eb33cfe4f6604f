#pragma once
// Jet's #date# literals.

#include <optional>
#include <string>
#include <string_view>

namespace trellin::sql {

// The ISO text of what stands between the hashes of a date literal: "yyyy-mm-dd" or
// "yyyy-mm-dd hh:mm:ss" (a time of midnight is dropped, so that the text compares equal to a
// stored date without time). Accepts "yyyy-mm-dd", "yyyy-mm-dd hh:nn[:ss]", Jet's month-first
// "m/d/yyyy" with an optional "h:nn[:ss]" and optional AM or PM. nullopt when the text is not
// a valid date.
[[nodiscard]] std::optional<std::string> JetDateToIso(std::string_view text);

}  // namespace trellin::sql
