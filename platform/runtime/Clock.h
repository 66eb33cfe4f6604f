#pragma once
// "Today" and "now" for the whole process, settable by tests.

#include <optional>

#include "platform/runtime/Date.h"

namespace trellin {

// The local date and time now, or the fixed moment a test has set.
[[nodiscard]] Date Now();
// Now() without its time part.
[[nodiscard]] Date Today();

// Fixes Now() at `moment` until cleared with std::nullopt. Tests only.
void SetClockForTesting(std::optional<Date> moment);

}  // namespace trellin
