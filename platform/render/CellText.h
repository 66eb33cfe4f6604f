#pragma once
// Plain, locale-free text for the values of the data exports: what a CSV file carries.

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

// The cell's value unformatted: numbers plain, money by MoneyText, dates by IsoDateText,
// booleans "True"/"False", text as it stands, Null "". A cell with no value (Empty) gives the
// text it printed.
[[nodiscard]] std::string PlainCellText(const engine::DataCell& cell);

}  // namespace trellin::render
