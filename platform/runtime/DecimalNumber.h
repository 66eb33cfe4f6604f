#pragma once
// Numbers as exact decimal digits: the common ground of Currency, number text and number masks.
// Internal to the runtime library.

#include <cstdint>
#include <optional>
#include <string_view>

namespace trellin::decimal {

// A number as sign, significant digits and a power of ten: |value| = digits x 10^exponent.
// Digits carry no leading zeros; zero has no digits at all.
struct DecimalNumber {
  static constexpr int kMaxDigits = 40;

  bool negative = false;
  int count = 0;
  int exponent = 0;
  // True when digits beyond kMaxDigits that were not zero had to be dropped.
  bool truncated = false;
  char digits[kMaxDigits] = {};

  [[nodiscard]] bool IsZero() const { return count == 0; }
  [[nodiscard]] std::string_view Digits() const {
    return {digits, static_cast<std::size_t>(count)};
  }
};

[[nodiscard]] DecimalNumber FromInt(std::int64_t value, int exponent = 0);
// The shortest decimal that reads back as `value`, so 2.675 is 2.675 and not 2.67499999...
// Requires a finite value.
[[nodiscard]] DecimalNumber FromDouble(double value);
// Number text: optional blanks, a sign or enclosing parentheses for a negative, an optional '$',
// digits with grouping commas, a decimal point, an exponent ("1,234.5", "(12.00)", "-$5", "1E3").
// nullopt for anything else, including "", a lone sign or point, and values past 1E+309.
[[nodiscard]] std::optional<DecimalNumber> Parse(std::string_view text);

// Rounds to `places` decimals (negative places round to tens, hundreds...), half away from zero.
// Afterwards the exponent is at least -places.
void RoundTo(DecimalNumber& n, int places);
// Drops trailing zero digits into the exponent.
void Normalize(DecimalNumber& n);
// The value rounded to `places` decimals as a whole count of 10^-places; nullopt on overflow.
[[nodiscard]] std::optional<std::int64_t> ToScaled(DecimalNumber n, int places);
[[nodiscard]] double ToDouble(const DecimalNumber& n);

}  // namespace trellin::decimal
