#pragma once
// The text of a list parameter, read into codes and ranges of codes.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellin::business {

// The mark between the two ends of a range. "-" is never a range mark: codes such as "1-1100"
// are common.
inline constexpr std::string_view kRangeMark = "..";

// One item of the list: a single code (From only, no Through), or a range with one or both ends.
struct RangeItem {
  std::optional<std::string> From;
  std::optional<std::string> Through;
  bool IsRange = false;
};

// Reads comma-separated items: a code ("A100", "1-1100"), a range ("A100..A199"), an open range
// ("..A199", "A100.."), or a code in single or double quotes ('X,Y', "X,Y"; a quote doubled
// inside stands for itself) wherever a code may stand. A quote inside a bare code is part of it
// (O'Neil). Blanks around codes are dropped; blank
// items are skipped. Throws std::invalid_argument with a message quoting the text and naming
// the bad item: an unclosed quote, text after a closing quote, a range with no ends or more
// than one "..".
[[nodiscard]] std::vector<RangeItem> ParseRangeText(std::string_view text);

}  // namespace trellin::business
