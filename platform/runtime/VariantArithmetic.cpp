#include <cmath>
#include <limits>

#include "platform/runtime/Strings.h"
#include "platform/runtime/Variant.h"

namespace trellin {
namespace {

using Int128 = __int128;

// The number an operand stands for, in the smallest of the three numeric kinds that holds it.
// Rank decides the result: Long < Double < Currency, so money stays money when a Double rate
// or factor meets it (rounded to the ten-thousandth, half away from zero).
enum class NumberKind { Long, Double, Currency };

struct Number {
  NumberKind kind = NumberKind::Long;
  std::int64_t n = 0;
  double d = 0;
  Currency c;

  [[nodiscard]] double AsDouble() const {
    switch (kind) {
      case NumberKind::Long:
        return static_cast<double>(n);
      case NumberKind::Double:
        return d;
      case NumberKind::Currency:
        return c.ToDouble();
    }
    return 0;
  }
  [[nodiscard]] Currency AsCurrency() const {
    switch (kind) {
      case NumberKind::Long:
        return Variant(n).ToCurrency();
      case NumberKind::Double:
        return Currency::FromDouble(d);
      case NumberKind::Currency:
        return c;
    }
    return c;
  }
};

Number LongNumber(std::int64_t n) { return {NumberKind::Long, n, 0, {}}; }
Number DoubleNumber(double d) { return {NumberKind::Double, 0, d, {}}; }
Number CurrencyNumber(Currency c) { return {NumberKind::Currency, 0, 0, c}; }

[[noreturn]] void Unsupported(const char* operation, const Variant& a, const Variant& b) {
  throw TypeMismatch(std::string("Type mismatch: cannot ") + operation + " " +
                     std::string(KindName(a.Kind())) + " and " + std::string(KindName(b.Kind())));
}

// Empty, Boolean (True is -1), the numbers and numeric text; nullopt for the rest.
std::optional<Number> NumberOf(const Variant& v) {
  switch (v.Kind()) {
    case VariantKind::Empty:
      return LongNumber(0);
    case VariantKind::Boolean:
      return LongNumber(*v.Get<bool>() ? -1 : 0);
    case VariantKind::Long:
      return LongNumber(*v.Get<std::int64_t>());
    case VariantKind::Double:
      return DoubleNumber(*v.Get<double>());
    case VariantKind::Currency:
      return CurrencyNumber(*v.Get<Currency>());
    case VariantKind::String:
      if (std::optional<double> d = ParseNumber(*v.Get<std::string>())) return DoubleNumber(*d);
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

NumberKind ResultKind(const Number& a, const Number& b) { return std::max(a.kind, b.kind); }

Variant CurrencyOrOverflow(Int128 raw, double fallback) {
  if (raw > std::numeric_limits<std::int64_t>::max() ||
      raw < std::numeric_limits<std::int64_t>::min()) {
    throw std::range_error("Overflow: " + Variant(fallback).ToString() +
                           " is too large for a Currency");
  }
  return Currency::FromRaw(static_cast<std::int64_t>(raw));
}

enum class Op { Add, Subtract, Multiply };

Variant Numeric(Op op, const Number& a, const Number& b) {
  switch (ResultKind(a, b)) {
    case NumberKind::Long: {
      std::int64_t r = 0;
      bool overflow = op == Op::Add        ? __builtin_add_overflow(a.n, b.n, &r)
                      : op == Op::Subtract ? __builtin_sub_overflow(a.n, b.n, &r)
                                           : __builtin_mul_overflow(a.n, b.n, &r);
      if (!overflow) return r;
      [[fallthrough]];  // Long overflow goes on in Double
    }
    case NumberKind::Double: {
      double x = a.AsDouble(), y = b.AsDouble();
      return op == Op::Add ? x + y : op == Op::Subtract ? x - y : x * y;
    }
    case NumberKind::Currency: {
      if (op == Op::Multiply) {
        // Exact for whole numbers, rounded to the ten-thousandth otherwise.
        const Number& money = a.kind == NumberKind::Currency ? a : b;
        const Number& other = a.kind == NumberKind::Currency ? b : a;
        switch (other.kind) {
          case NumberKind::Long:
            return CurrencyOrOverflow(static_cast<Int128>(money.c.Raw()) * other.n,
                                      money.c.ToDouble() * static_cast<double>(other.n));
          case NumberKind::Double:
            return money.c.Times(other.d);
          case NumberKind::Currency: {
            Int128 p = static_cast<Int128>(money.c.Raw()) * other.c.Raw();
            Int128 q = p / Currency::kScale, r = p % Currency::kScale;
            if (2 * (r < 0 ? -r : r) >= Currency::kScale) q += p < 0 ? -1 : 1;
            return CurrencyOrOverflow(q, money.c.ToDouble() * other.c.ToDouble());
          }
        }
      }
      Int128 x = a.AsCurrency().Raw(), y = b.AsCurrency().Raw();
      return CurrencyOrOverflow(op == Op::Add ? x + y : x - y, a.AsDouble() + b.AsDouble());
    }
  }
  return Variant();
}

// Serials of 1 January of year 1 and 31 December 9999, the range a Date holds.
constexpr std::int64_t kFirstSerial = -693593;
constexpr std::int64_t kLastSerial = 2958465;

// A date moved by a number of days; a fraction of a day moves the time, to the nearest second.
Date Shift(const Date& date, const Number& days) {
  double seconds =
      days.kind == NumberKind::Long ? static_cast<double>(days.n) * 86400 : days.AsDouble() * 86400;
  if (!(std::fabs(seconds) < 1e12)) throw std::range_error("Overflow: date out of range");
  std::int64_t total = static_cast<std::int64_t>(date.Serial()) * 86400 + date.SecondsOfDay() +
                       (days.kind == NumberKind::Long ? days.n * 86400 : std::llround(seconds));
  std::int64_t day = total >= 0 ? total / 86400 : (total - 86399) / 86400;
  if (day < kFirstSerial || day > kLastSerial)
    throw std::range_error("Overflow: date out of range");
  return Date::FromSerial(static_cast<std::int32_t>(day),
                          static_cast<std::int32_t>(total - day * 86400));
}

Number Negated(Number n) {
  n.n = -n.n;
  n.d = -n.d;
  n.c = -n.c;
  return n;
}

bool IsNullIn(const Variant& a, const Variant& b) { return a.IsNull() || b.IsNull(); }

Number Require(const Variant& v, const char* operation, const Variant& a, const Variant& b) {
  std::optional<Number> n = NumberOf(v);
  if (!n) Unsupported(operation, a, b);
  return *n;
}

}  // namespace

Variant Add(const Variant& a, const Variant& b) {
  if (IsNullIn(a, b)) return Variant::Null();
  if (a.IsString() && (b.IsString() || b.IsEmpty())) return a.ToString() + b.ToString();
  if (b.IsString() && a.IsEmpty()) return b.ToString();
  if (a.IsDate() || b.IsDate()) {
    if (a.IsDate() && b.IsDate()) Unsupported("add", a, b);
    const Variant& date = a.IsDate() ? a : b;
    const Variant& other = a.IsDate() ? b : a;
    return Shift(*date.Get<Date>(), Require(other, "add", a, b));
  }
  return Numeric(Op::Add, Require(a, "add", a, b), Require(b, "add", a, b));
}

Variant Subtract(const Variant& a, const Variant& b) {
  if (IsNullIn(a, b)) return Variant::Null();
  if (a.IsDate()) {
    const Date& da = *a.Get<Date>();
    if (const Date* db = b.Get<Date>()) {
      // Days between, with the time of day as a fraction.
      return static_cast<double>(da.Serial() - db->Serial()) +
             (da.SecondsOfDay() - db->SecondsOfDay()) / 86400.0;
    }
    return Shift(da, Negated(Require(b, "subtract", a, b)));
  }
  if (b.IsDate()) Unsupported("subtract", a, b);
  return Numeric(Op::Subtract, Require(a, "subtract", a, b), Require(b, "subtract", a, b));
}

Variant Multiply(const Variant& a, const Variant& b) {
  if (IsNullIn(a, b)) return Variant::Null();
  return Numeric(Op::Multiply, Require(a, "multiply", a, b), Require(b, "multiply", a, b));
}

Variant Divide(const Variant& a, const Variant& b) {
  if (IsNullIn(a, b)) return Variant::Null();
  Number x = Require(a, "divide", a, b);
  Number y = Require(b, "divide", a, b);
  if (y.AsDouble() == 0) throw std::domain_error("Division by zero");
  if (x.kind == NumberKind::Currency && y.kind != NumberKind::Currency) {
    return x.c.DividedBy(y.AsDouble());
  }
  return x.AsDouble() / y.AsDouble();
}

Variant Negate(const Variant& a) {
  if (a.IsNull()) return Variant::Null();
  std::optional<Number> n = NumberOf(a);
  if (!n) Unsupported("negate", a, a);
  switch (n->kind) {
    case NumberKind::Long:
      if (n->n == std::numeric_limits<std::int64_t>::min()) return -static_cast<double>(n->n);
      return -n->n;
    case NumberKind::Double:
      return -n->d;
    case NumberKind::Currency:
      return -n->c;
  }
  return Variant();
}

Variant Concat(const Variant& a, const Variant& b) { return a.Text() + b.Text(); }

}  // namespace trellin
