#pragma once
// The twelve periods of a trend: thirteen dates, entries 0 to 12, by frequency. Column i (1 to
// 12) covers the days after entry i-1 up to and including entry i.

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/Date.h"

namespace trellin {

enum class TrendFrequency { Daily, Weekly, FNightly, Monthly, EOM, Quarterly, SixMonthly, Yearly };

inline constexpr int kTrendPeriods = 12;
using TrendPeriodTable = std::array<Date, kTrendPeriods + 1>;

// The choices of the Frequency list, in its order.
inline constexpr std::string_view kTrendFrequencies =
    "Daily,Weekly,F/Nightly,Monthly,EOM,Quarterly,Six Monthly,Yearly";

// The frequency of a choice of the list (case ignored); nullopt for any other text.
[[nodiscard]] std::optional<TrendFrequency> ParseTrendFrequency(std::string_view text);

// The period table ending at `end` (its time of day dropped). "EOM", "Quarterly" and "Yearly"
// end on the last day of `end`'s month and step back by month ends; "Monthly" takes each entry
// straight from `end` (31 March gives 28 or 29 February, then 31 January); "Six Monthly" steps
// back six months from the entry after, never snapping to a month end; the others by days.
[[nodiscard]] TrendPeriodTable MakeTrendPeriods(const Date& end, TrendFrequency frequency);

// The mask of the column headings: "dmmmyy" for the frequencies counted in days and "Monthly",
// "mmmyy" for those ending on month ends and "Six Monthly".
[[nodiscard]] std::string TrendLabelFormat(TrendFrequency frequency);

}  // namespace trellin
