#pragma once
// Plain, locale-free text for the values of the data exports: what a CSV file carries.

#include <optional>
#include <string>

#include "platform/engine/PageModel.h"

namespace trellin::render {

// Money as a plain decimal with at least two decimals and no more than it needs (at most four):
// -1234.5 gives "-1234.50", 0.1234 gives "0.1234".
[[nodiscard]] std::string MoneyText(Currency amount);
// "yyyy-mm-dd", with " hh:mm:ss" when the date has a time of day.
[[nodiscard]] std::string IsoDateText(Date date);
// The shortest text that reads back as the same double; "" for infinities and NaN.
[[nodiscard]] std::string NumberText(double value);

// Whether a cell printed something: text that is not all blanks, or a check box's state. A
// field that printed blank exports nothing, whatever value lies behind it.
[[nodiscard]] bool PrintedSomething(const engine::DataCell& cell);

// The figure a number cell printed, as a plain decimal without grouping: "(1,234.50)" gives
// "-1234.50", "81,245.74" gives "81245.74", "1,235" gives "1235". Read from the printed text
// when that is a plain figure (digits, grouping commas, one point; negative by a minus or
// brackets; a "$" before) and lies within half a unit of its last digit of the value behind it;
// nullopt otherwise (a percentage sign, words, a value that is no number).
[[nodiscard]] std::optional<std::string> PrintedFigure(const engine::DataCell& cell);

// The cell's value unformatted: numbers as they printed (PrintedFigure), else plain, money by
// MoneyText; dates by IsoDateText, booleans "True"/"False", text as it printed, Null "". A cell
// with no value (Empty) gives the text it printed; one that printed nothing gives "".
[[nodiscard]] std::string PlainCellText(const engine::DataCell& cell);

}  // namespace trellin::render
