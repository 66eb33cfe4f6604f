#pragma once
// The four period ends an open item is aged against, for each ageing frequency the receivables
// and payables reports offer, and the captions of the columns they head.

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/Date.h"

namespace trellin {

// The frequencies, in the order a user is offered them.
inline constexpr std::string_view kAgeingFrequencies =
    "Daily,Weekly,F/Nightly,30 Days,Monthly,EOM,Quarterly,Six Monthly,Yearly";

// D0 to D3, the last days of the four columns, oldest first.
using AgeingEnds = std::array<Date, 4>;

// The period ends of `frequency` for the as-at date `as_at`: under "EOM" and "Quarterly" month
// ends (D2 the end of as_at's month), under the others steps of days or calendar months around
// as_at (D2 as_at itself), a month step shortened at a month's end. nullopt for a frequency
// outside the list (names compared exactly).
[[nodiscard]] std::optional<AgeingEnds> AgeingPeriodEnds(std::string_view frequency, Date as_at);

// The caption of column `column` (1 to 4): "90 days", "60 days", "30 days" and "Current" under
// "30 Days"; otherwise D(column-1) in `date_format`.
[[nodiscard]] std::string AgeingColumnCaption(std::string_view frequency, int column,
                                              const AgeingEnds& ends,
                                              const std::string& date_format);

// Which of the five figures a date falls in: 0 to 3 for Column1 to Column4, 4 for Future. A date
// after D3 is Future, after D2 Column4, after D1 Column3, after D0 Column2, else Column1.
[[nodiscard]] int AgeingBucket(Date date, const AgeingEnds& ends);

}  // namespace trellin
