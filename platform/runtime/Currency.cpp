#include "platform/runtime/Currency.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "platform/runtime/DecimalNumber.h"

namespace trellin {
namespace {

using Int128 = __int128;

constexpr std::int64_t kInt64Max = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kInt64Min = std::numeric_limits<std::int64_t>::min();

// 10^n for n in [0, kMaxPower].
Int128 PowerOfTen(int n) {
  Int128 p = 1;
  for (int i = 0; i < n; ++i) p *= 10;
  return p;
}

constexpr int kMaxPower = 37;  // 10^37 is the largest power of ten well inside 128 bits

// Quotient rounded half away from zero; `den` is positive.
Int128 DivideRounded(Int128 num, Int128 den) {
  Int128 q = num / den;
  Int128 r = num % den;
  if (r < 0) r = -r;
  if (r * 2 >= den) q += num < 0 ? -1 : 1;
  return q;
}

Currency CheckedFromWide(Int128 raw, const char* operation) {
  if (raw > kInt64Max || raw < kInt64Min) {
    throw std::range_error(std::string("Currency overflow in ") + operation);
  }
  return Currency::FromRaw(static_cast<std::int64_t>(raw));
}

// The exact decimal of a double as mantissa x 10^exponent; at most 17 digits of mantissa.
struct Factor {
  Int128 mantissa = 0;
  int exponent = 0;
};

Factor FactorOf(double value, const char* operation) {
  if (!std::isfinite(value)) {
    throw std::range_error(std::string("Currency ") + operation +
                           " by a number that is not finite");
  }
  decimal::DecimalNumber d = decimal::FromDouble(value);
  Factor f;
  for (char c : d.Digits()) f.mantissa = f.mantissa * 10 + (c - '0');
  if (d.negative) f.mantissa = -f.mantissa;
  f.exponent = d.exponent;
  return f;
}

}  // namespace

Currency Currency::FromDouble(double value) {
  if (!std::isfinite(value)) throw std::range_error("Currency from a number that is not finite");
  // Rounding the shortest decimal text rather than value * 10000 keeps 2.675 at 2.675: the
  // binary double is a hair below it and would otherwise drop to 2.6749.
  std::optional<std::int64_t> raw = decimal::ToScaled(decimal::FromDouble(value), 4);
  if (!raw) throw std::range_error("Currency out of range: " + std::to_string(value));
  return FromRaw(*raw);
}

std::optional<Currency> Currency::Parse(std::string_view text) {
  std::optional<decimal::DecimalNumber> d = decimal::Parse(text);
  if (!d || d->truncated) return std::nullopt;
  // Normalised, so trailing zeros do not count as decimals: "1.50000" is fine.
  if (d->exponent < -4) return std::nullopt;
  std::optional<std::int64_t> raw = decimal::ToScaled(*d, 4);
  if (!raw) return std::nullopt;
  return FromRaw(*raw);
}

std::string Currency::ToString() const {
  std::uint64_t magnitude =
      raw_ < 0 ? ~static_cast<std::uint64_t>(raw_) + 1 : static_cast<std::uint64_t>(raw_);
  std::uint64_t whole = magnitude / kScale;
  std::uint64_t fraction = magnitude % kScale;
  std::string text = raw_ < 0 ? "-" : "";
  text += std::to_string(whole);
  if (fraction != 0) {
    char buf[5];
    for (int i = 3; i >= 0; --i) {
      buf[i] = static_cast<char>('0' + fraction % 10);
      fraction /= 10;
    }
    int len = 4;
    while (buf[len - 1] == '0') --len;
    text += '.';
    text.append(buf, static_cast<std::size_t>(len));
  }
  return text;
}

Currency Currency::Round(int digits) const {
  if (digits > 4 || digits < -3) {
    throw std::out_of_range("Currency rounding to " + std::to_string(digits) +
                            " digits; 4 down to -3 are allowed");
  }
  Int128 unit = PowerOfTen(4 - digits);
  return CheckedFromWide(DivideRounded(raw_, unit) * unit, "rounding");
}

Currency Currency::Times(double factor) const {
  Factor f = FactorOf(factor, "multiplied");
  // |raw| < 2^63 and the mantissa < 10^17, so the product stays well inside 128 bits.
  Int128 product = static_cast<Int128>(raw_) * f.mantissa;
  if (product == 0) return Currency();
  if (f.exponent >= 0) {
    Int128 scaled = 0;
    if (f.exponent > kMaxPower ||
        __builtin_mul_overflow(product, PowerOfTen(f.exponent), &scaled)) {
      throw std::range_error("Currency overflow in multiplication");
    }
    return CheckedFromWide(scaled, "multiplication");
  }
  // Dividing by more than 10^37 leaves less than half a ten-thousandth.
  if (-f.exponent > kMaxPower) return Currency();
  return CheckedFromWide(DivideRounded(product, PowerOfTen(-f.exponent)), "multiplication");
}

Currency Currency::DividedBy(double divisor) const {
  if (divisor == 0) throw std::domain_error("Currency divided by zero");
  Factor f = FactorOf(divisor, "divided");
  Int128 num = raw_;
  Int128 den = f.mantissa;
  if (den < 0) {
    den = -den;
    num = -num;
  }
  if (f.exponent <= 0) {
    // raw / (m x 10^-k) = raw x 10^k / m. When raw x 10^k leaves 128 bits the quotient is past
    // 10^21 (m < 10^17), far beyond what a Currency holds.
    if (-f.exponent > kMaxPower) {
      if (num == 0) return Currency();
      throw std::range_error("Currency overflow in division");
    }
    if (__builtin_mul_overflow(num, PowerOfTen(-f.exponent), &num)) {
      throw std::range_error("Currency overflow in division");
    }
  } else {
    if (f.exponent > 19) return Currency();  // the divisor is past 10^19: the quotient rounds to 0
    den *= PowerOfTen(f.exponent);
  }
  return CheckedFromWide(DivideRounded(num, den), "division");
}

}  // namespace trellin
