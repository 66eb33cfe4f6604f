#pragma once
// Whole numbers and money amounts written out in words, as a cheque spells them.

#include <cstdint>
#include <string>

#include "platform/runtime/Currency.h"

namespace trellin::business {

// "one hundred and twenty-one", "one thousand and five", "two million three hundred thousand";
// "zero" for 0; "minus " in front of a negative number. All lower case.
[[nodiscard]] std::string NumberInWords(std::int64_t number);

// The amount rounded to cents (half away from zero), in words with the unit words given:
// "One hundred and twenty dollars and fifty cents" (cents spelt) or "... and 50 cents". Whole
// amounts say nothing of cents ("Twenty dollars"); an amount under one unit reads in cents
// alone ("Fifty cents"); zero reads "Zero dollars". The singular words are used for one. The
// first letter is upper case.
[[nodiscard]] std::string AmountInWords(Currency amount, bool cents_as_words,
                                        const std::string& unit, const std::string& units,
                                        const std::string& cent, const std::string& cents);

}  // namespace trellin::business
