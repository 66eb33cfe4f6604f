#pragma once
// Money: an exact fixed-point amount held as a 64-bit count of ten-thousandths.

#include <compare>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace trellin {

class Currency {
 public:
  static constexpr std::int64_t kScale = 10000;

  constexpr Currency() = default;

  // The amount whose count of ten-thousandths is `raw`.
  static constexpr Currency FromRaw(std::int64_t raw) {
    Currency c;
    c.raw_ = raw;
    return c;
  }
  // Throws std::range_error past what a Currency holds.
  static constexpr Currency FromWhole(std::int64_t units) { return FromRaw(units) * kScale; }
  // Nearest amount to `value`, half a ten-thousandth rounded away from zero.
  // Throws std::range_error when `value` is not finite or out of range.
  static Currency FromDouble(double value);
  // Parses "-1234.5", "1,234.56", "(12.00)", "$5"; nullopt for anything else or more than
  // four decimals that are not zero.
  [[nodiscard]] static std::optional<Currency> Parse(std::string_view text);

  [[nodiscard]] constexpr std::int64_t Raw() const { return raw_; }
  // The nearest double.
  [[nodiscard]] double ToDouble() const { return static_cast<double>(raw_) / kScale; }
  // Plain text with as few decimals as needed: "1234.5", "-0.0001", "0".
  [[nodiscard]] std::string ToString() const;

  // Rounds to `digits` decimal places, half away from zero; digits may be 4 down to -3
  // (-3 rounds to whole thousands: 499 -> 0, 500 -> 1000).
  [[nodiscard]] Currency Round(int digits) const;

  // Exact; each throws std::range_error past the +-922,337,203,685,477.5807 a Currency holds.
  constexpr Currency operator-() const { return *this * -1; }
  constexpr Currency operator+(Currency o) const {
    std::int64_t r = 0;
    if (__builtin_add_overflow(raw_, o.raw_, &r)) throw std::range_error("Currency overflow");
    return FromRaw(r);
  }
  constexpr Currency operator-(Currency o) const {
    std::int64_t r = 0;
    if (__builtin_sub_overflow(raw_, o.raw_, &r)) throw std::range_error("Currency overflow");
    return FromRaw(r);
  }
  constexpr Currency& operator+=(Currency o) { return *this = *this + o; }
  constexpr Currency& operator-=(Currency o) { return *this = *this - o; }
  // Exact for whole-number factors.
  constexpr Currency operator*(std::int64_t n) const {
    std::int64_t r = 0;
    if (__builtin_mul_overflow(raw_, n, &r)) throw std::range_error("Currency overflow");
    return FromRaw(r);
  }
  // Product rounded to the nearest ten-thousandth, half away from zero. The factor counts as the
  // decimal it is written as (its shortest text), so 100 x 0.15 is exactly 15. Throws
  // std::range_error for a factor that is not finite or a product out of range.
  [[nodiscard]] Currency Times(double factor) const;
  // Quotient rounded to the nearest ten-thousandth, half away from zero, the divisor read as
  // Times reads its factor: 100 / 3 is 33.3333. Throws std::domain_error on a zero divisor and
  // std::range_error for one that is not finite or a quotient out of range.
  [[nodiscard]] Currency DividedBy(double divisor) const;

  constexpr auto operator<=>(const Currency&) const = default;

 private:
  std::int64_t raw_ = 0;
};

}  // namespace trellin
