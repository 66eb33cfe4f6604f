#include "platform/runtime/DecimalNumber.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace trellin::decimal {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Appends one digit, skipping leading zeros; past kMaxDigits the digit is dropped.
void PushDigit(DecimalNumber& n, char c, bool after_point) {
  if (n.count == 0 && c == '0') {
    if (after_point) --n.exponent;
    return;
  }
  if (n.count < DecimalNumber::kMaxDigits) {
    n.digits[n.count++] = c;
    if (after_point) --n.exponent;
  } else {
    // Out of room: an integer digit still scales the value, a fraction digit is lost.
    if (!after_point) ++n.exponent;
    if (c != '0') n.truncated = true;
  }
}

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

}  // namespace

DecimalNumber FromInt(std::int64_t value, int exponent) {
  DecimalNumber n;
  n.negative = value < 0;
  // Through unsigned so that the most negative value has a magnitude too.
  std::uint64_t magnitude =
      n.negative ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
  if (magnitude != 0) {
    auto [end, ec] = std::to_chars(n.digits, n.digits + DecimalNumber::kMaxDigits, magnitude);
    n.count = static_cast<int>(end - n.digits);
  }
  n.exponent = exponent;
  if (n.count == 0) n.negative = false;
  return n;
}

DecimalNumber FromDouble(double value) {
  DecimalNumber n;
  if (value == 0) return n;
  n.negative = value < 0;
  // The shortest round-trip text is the decimal the user meant: 0.1 + 0.2 prints as
  // 0.30000000000000004, and 2.675 as 2.675.
  char buf[64];
  auto [end, ec] =
      std::to_chars(buf, buf + sizeof buf, std::fabs(value), std::chars_format::scientific);
  std::string_view text(buf, static_cast<std::size_t>(end - buf));
  std::size_t e_pos = text.find('e');
  int exp10 = 0;
  std::from_chars(text.data() + e_pos + 1 + (text[e_pos + 1] == '+'), text.data() + text.size(),
                  exp10);
  int fraction_digits = 0;
  bool after_point = false;
  for (std::size_t i = 0; i < e_pos; ++i) {
    if (text[i] == '.') {
      after_point = true;
      continue;
    }
    n.digits[n.count++] = text[i];
    if (after_point) ++fraction_digits;
  }
  n.exponent = exp10 - fraction_digits;
  Normalize(n);
  return n;
}

std::optional<DecimalNumber> Parse(std::string_view text) {
  std::string_view s = TrimBlanks(text);
  DecimalNumber n;
  bool parenthesised = false;
  if (s.size() >= 2 && s.front() == '(' && s.back() == ')') {
    parenthesised = true;
    s = TrimBlanks(s.substr(1, s.size() - 2));
  }
  bool negative = false;
  if (!s.empty() && (s.front() == '-' || s.front() == '+')) {
    negative = s.front() == '-';
    s = TrimBlanks(s.substr(1));
  }
  if (!s.empty() && s.front() == '$') s = TrimBlanks(s.substr(1));
  if (parenthesised && negative) return std::nullopt;  // "(-5)" is no way to write a number

  std::size_t i = 0;
  bool any_digit = false;
  // Integer part: grouping commas only between digits.
  while (i < s.size() && (IsDigit(s[i]) || s[i] == ',')) {
    if (s[i] == ',') {
      if (!any_digit || i + 1 >= s.size() || !IsDigit(s[i + 1])) return std::nullopt;
    } else {
      PushDigit(n, s[i], false);
      any_digit = true;
    }
    ++i;
  }
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && IsDigit(s[i])) {
      PushDigit(n, s[i], true);
      any_digit = true;
      ++i;
    }
  }
  if (!any_digit) return std::nullopt;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    ++i;
    bool exp_negative = false;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) exp_negative = s[i++] == '-';
    if (i >= s.size() || !IsDigit(s[i])) return std::nullopt;
    int exp10 = 0;
    while (i < s.size() && IsDigit(s[i])) {
      // Anything past a few hundred is beyond every number we hold; keep it from overflowing.
      if (exp10 < 100000) exp10 = exp10 * 10 + (s[i] - '0');
      ++i;
    }
    n.exponent += exp_negative ? -exp10 : exp10;
  }
  if (i != s.size()) return std::nullopt;
  n.negative = (negative || parenthesised) && n.count > 0;
  Normalize(n);
  // Beyond the largest Double is no number the report language could hold.
  if (n.count > 0 && n.count + n.exponent > 309) return std::nullopt;
  return n;
}

void Normalize(DecimalNumber& n) {
  while (n.count > 0 && n.digits[n.count - 1] == '0') {
    --n.count;
    ++n.exponent;
  }
  if (n.count == 0) {
    n.negative = false;
    n.exponent = 0;
  }
}

void RoundTo(DecimalNumber& n, int places) {
  if (n.count == 0 || n.exponent >= -places) return;
  int drop = -places - n.exponent;  // digits to remove from the right
  if (drop > n.count) {
    // Everything goes: below half of the last kept place, so zero.
    n = DecimalNumber{};
    return;
  }
  int keep = n.count - drop;
  bool round_up = n.digits[keep] >= '5';  // half or more of the last kept place: away from zero
  n.count = keep;
  n.exponent = -places;
  if (round_up) {
    int i = keep - 1;
    while (i >= 0 && n.digits[i] == '9') n.digits[i--] = '0';
    if (i >= 0) {
      ++n.digits[i];
    } else {
      // All nines carried over: 999 -> 1000, one more digit in front.
      for (int k = n.count; k > 0; --k) n.digits[k] = n.digits[k - 1];
      n.digits[0] = '1';
      if (n.count < DecimalNumber::kMaxDigits) {
        ++n.count;
      } else {
        ++n.exponent;
      }
    }
  }
  bool negative = n.negative;
  Normalize(n);
  if (n.count > 0) n.negative = negative;
}

std::optional<std::int64_t> ToScaled(DecimalNumber n, int places) {
  RoundTo(n, places);
  if (n.count == 0) return 0;
  int shift = n.exponent + places;  // >= 0 after rounding
  if (n.count + shift > 19) return std::nullopt;
  unsigned __int128 magnitude = 0;
  for (int i = 0; i < n.count; ++i)
    magnitude = magnitude * 10 + static_cast<unsigned>(n.digits[i] - '0');
  for (int i = 0; i < shift; ++i) magnitude *= 10;
  const unsigned __int128 limit =
      static_cast<unsigned __int128>(std::numeric_limits<std::int64_t>::max()) +
      (n.negative ? 1 : 0);
  if (magnitude > limit) return std::nullopt;
  if (n.negative) return static_cast<std::int64_t>(-static_cast<__int128>(magnitude));
  return static_cast<std::int64_t>(magnitude);
}

double ToDouble(const DecimalNumber& n) {
  if (n.count == 0) return 0.0;
  char buf[DecimalNumber::kMaxDigits + 16];
  int len = 0;
  if (n.negative) buf[len++] = '-';
  for (int i = 0; i < n.count; ++i) buf[len++] = n.digits[i];
  buf[len++] = 'e';
  auto [end, ec] = std::to_chars(buf + len, buf + sizeof buf, n.exponent);
  double value = 0;
  auto result = std::from_chars(buf, end, value);
  if (result.ec == std::errc::result_out_of_range) {
    return n.exponent > 0 ? (n.negative ? -HUGE_VAL : HUGE_VAL) : (n.negative ? -0.0 : 0.0);
  }
  return value;
}

}  // namespace trellin::decimal
