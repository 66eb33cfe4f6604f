#pragma once
// Rounding of report figures and amounts in words.

#include <string>

#include "core/host/BusinessLayer.h"

namespace trellin::business {

inline constexpr int kMostRoundingDigits = 4;
inline constexpr int kFewestRoundingDigits = -3;

// Round: half away from zero; Null and Empty come back as they are; a Currency stays exact;
// Long, Double and numeric text come back as Double, rounded on their decimal form, so 2.675
// rounds to 2.68 although the nearest double lies below it. Throws std::invalid_argument for
// digits outside 4 to -3, TypeMismatch for a value that is not a number.
// AmountInWords: as business::AmountInWords.
class CompanyRounder : public Rounder {
 public:
  [[nodiscard]] Variant Round(const Variant& value, int digits) override;
  [[nodiscard]] std::string AmountInWords(Currency amount, bool cents_as_words,
                                          const std::string& unit, const std::string& units,
                                          const std::string& cent,
                                          const std::string& cents) override;
};

}  // namespace trellin::business
