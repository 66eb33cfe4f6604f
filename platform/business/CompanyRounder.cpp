#include "platform/business/CompanyRounder.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "platform/business/AmountInWords.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

constexpr double kPowersOfTen[] = {1, 10, 100, 1000, 10000};

// The double closest to what a person reads in `value`: fifteen significant digits drop the
// binary dust, so 267.49999999999997 (2.675 times 100) reads 267.5 and rounds up.
double Cleaned(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.15g", value);
  return std::strtod(text, nullptr);
}

double RoundDouble(double value, int digits) {
  if (!std::isfinite(value)) return value;
  // Negative digits divide by a power of ten rather than multiply by its inverse, which
  // is not exact in binary.
  double scale = kPowersOfTen[std::abs(digits)];
  double scaled = digits >= 0 ? value * scale : value / scale;
  double rounded = std::round(Cleaned(scaled));  // std::round goes half away from zero
  return digits >= 0 ? rounded / scale : rounded * scale;
}

}  // namespace

Variant CompanyRounder::Round(const Variant& value, int digits) {
  if (digits > kMostRoundingDigits || digits < kFewestRoundingDigits) {
    throw std::invalid_argument("Round takes 4 down to -3 digits, not " + std::to_string(digits) +
                                ".");
  }
  if (value.IsNull() || value.IsEmpty()) return value;
  if (const Currency* money = value.Get<Currency>()) return money->Round(digits);
  if (const std::int64_t* whole = value.Get<std::int64_t>()) {
    return RoundDouble(static_cast<double>(*whole), digits);
  }
  if (const double* number = value.Get<double>()) return RoundDouble(*number, digits);
  if (const std::string* text = value.Get<std::string>()) {
    if (std::optional<double> number = ParseNumber(*text)) return RoundDouble(*number, digits);
  }
  throw TypeMismatch("Round needs a number, not \"" + value.Text() + "\".");
}

std::string CompanyRounder::AmountInWords(Currency amount, bool cents_as_words,
                                          const std::string& unit, const std::string& units,
                                          const std::string& cent, const std::string& cents) {
  return business::AmountInWords(amount, cents_as_words, unit, units, cent, cents);
}

}  // namespace trellin::business
