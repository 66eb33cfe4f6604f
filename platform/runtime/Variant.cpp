#include "platform/runtime/Variant.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/runtime/DateText.h"
#include "platform/runtime/Strings.h"

namespace trellin {
namespace {

[[noreturn]] void Mismatch(const Variant& v, const char* target) {
  throw TypeMismatch("Type mismatch: " + std::string(KindName(v.Kind())) + " cannot become " +
                     target);
}

[[noreturn]] void TextMismatch(const std::string& text, const char* target) {
  throw TypeMismatch("Type mismatch: \"" + text + "\" is not " + target);
}

// Doubles convert to whole numbers half to even, as CLng does: 2.5 -> 2, 3.5 -> 4.
std::int64_t RoundHalfEven(double value) {
  double rounded = std::nearbyint(value);
  // 2^63 as a double is the first value out of range; its negative is the last one in.
  if (!(rounded >= -9223372036854775808.0 && rounded < 9223372036854775808.0)) {
    throw TypeMismatch("Overflow: " + Variant(value).ToString() + " is too large for a Long");
  }
  return static_cast<std::int64_t>(rounded);
}

std::string DoubleText(double value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
  if (value == 0) return "0";  // no "-0"
  // Fifteen significant digits, as the report language shows a Double: 0.1 + 0.2 reads 0.3,
  // and very large or small values take the "1.5E+20" form.
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.15G", value);
  return buf;
}

std::string DateText(const Date& d) {
  char buf[96];
  int len = std::snprintf(buf, sizeof buf, "%02d/%02d/%04d", d.Day(), d.Month(), d.Year());
  if (d.HasTime()) {
    int hour12 = d.Hour() % 12 == 0 ? 12 : d.Hour() % 12;
    std::snprintf(buf + len, sizeof buf - len, " %d:%02d:%02d %s", hour12, d.Minute(), d.Second(),
                  d.Hour() < 12 ? "am" : "pm");
  }
  return buf;
}

}  // namespace

std::string_view KindName(VariantKind kind) {
  static constexpr std::string_view kNames[] = {"Empty",  "Null",   "Missing",  "Boolean",
                                                "Long",   "Double", "Currency", "Date",
                                                "String", "Object"};
  return kNames[static_cast<int>(kind)];
}

VariantKind Variant::Kind() const { return static_cast<VariantKind>(value_.index()); }

bool Variant::IsNumber() const {
  VariantKind k = Kind();
  return k == VariantKind::Long || k == VariantKind::Double || k == VariantKind::Currency;
}

bool Variant::ToBool() const {
  switch (Kind()) {
    case VariantKind::Empty:
      return false;
    case VariantKind::Boolean:
      return *Get<bool>();
    case VariantKind::Long:
      return *Get<std::int64_t>() != 0;
    case VariantKind::Double:
      return *Get<double>() != 0;
    case VariantKind::Currency:
      return Get<Currency>()->Raw() != 0;
    case VariantKind::Date:
      return Get<Date>()->ToDouble() != 0;
    case VariantKind::String: {
      const std::string& s = *Get<std::string>();
      std::string t = Trim(s);
      if (EqualsIgnoreCase(t, "True")) return true;
      if (EqualsIgnoreCase(t, "False")) return false;
      if (std::optional<double> n = ParseNumber(t)) return *n != 0;
      TextMismatch(s, "True or False");
    }
    default:
      Mismatch(*this, "a Boolean");
  }
}

std::int64_t Variant::ToLong() const {
  switch (Kind()) {
    case VariantKind::Empty:
      return 0;
    case VariantKind::Boolean:
      return *Get<bool>() ? -1 : 0;  // True is -1 in the report language
    case VariantKind::Long:
      return *Get<std::int64_t>();
    case VariantKind::Double:
      return RoundHalfEven(*Get<double>());
    case VariantKind::Currency: {
      std::int64_t raw = Get<Currency>()->Raw();
      std::int64_t q = raw / Currency::kScale;
      std::int64_t r = raw % Currency::kScale;
      std::int64_t twice = 2 * (r < 0 ? -r : r);
      if (twice > Currency::kScale || (twice == Currency::kScale && q % 2 != 0)) {
        q += raw < 0 ? -1 : 1;
      }
      return q;
    }
    case VariantKind::Date:
      return RoundHalfEven(Get<Date>()->ToDouble());
    case VariantKind::String: {
      const std::string& s = *Get<std::string>();
      if (std::optional<double> n = ParseNumber(s)) return RoundHalfEven(*n);
      TextMismatch(s, "a number");
    }
    default:
      Mismatch(*this, "a Long");
  }
}

double Variant::ToDouble() const {
  switch (Kind()) {
    case VariantKind::Empty:
      return 0;
    case VariantKind::Boolean:
      return *Get<bool>() ? -1 : 0;
    case VariantKind::Long:
      return static_cast<double>(*Get<std::int64_t>());
    case VariantKind::Double:
      return *Get<double>();
    case VariantKind::Currency:
      return Get<Currency>()->ToDouble();
    case VariantKind::Date:
      return Get<Date>()->ToDouble();
    case VariantKind::String: {
      const std::string& s = *Get<std::string>();
      if (std::optional<double> n = ParseNumber(s)) return *n;
      TextMismatch(s, "a number");
    }
    default:
      Mismatch(*this, "a Double");
  }
}

Currency Variant::ToCurrency() const {
  try {
    switch (Kind()) {
      case VariantKind::Empty:
        return Currency();
      case VariantKind::Boolean:
        return Currency::FromWhole(*Get<bool>() ? -1 : 0);
      case VariantKind::Long: {
        std::int64_t n = *Get<std::int64_t>();
        if (n > std::numeric_limits<std::int64_t>::max() / Currency::kScale ||
            n < std::numeric_limits<std::int64_t>::min() / Currency::kScale) {
          throw std::range_error("out of range");
        }
        return Currency::FromWhole(n);
      }
      case VariantKind::Double:
        return Currency::FromDouble(*Get<double>());
      case VariantKind::Currency:
        return *Get<Currency>();
      case VariantKind::Date:
        return Currency::FromDouble(Get<Date>()->ToDouble());
      case VariantKind::String: {
        // Exact where the text allows it, so "0.1" is one thousand ten-thousandths.
        const std::string& s = *Get<std::string>();
        if (std::optional<Currency> c = Currency::Parse(s)) return *c;
        if (std::optional<double> n = ParseNumber(s)) return Currency::FromDouble(*n);
        TextMismatch(s, "a number");
      }
      default:
        Mismatch(*this, "a Currency");
    }
  } catch (const std::range_error&) {
    throw TypeMismatch("Overflow: " + ToString() + " is too large for a Currency");
  }
}

Date Variant::ToDate() const {
  switch (Kind()) {
    case VariantKind::Empty:
      return Date();
    case VariantKind::Date:
      return *Get<Date>();
    case VariantKind::Long:
    case VariantKind::Double:
    case VariantKind::Currency: {
      // A number is days and a fraction of a day, counted on from day 0 whatever the sign, so
      // that Date::ToDouble gives the number back: -1.5 is noon on day -2.
      double value = ToDouble();
      // Serials of 1 January of the year 1 and 31 December 9999: the dates there are.
      if (!(value > -693594.0 && value < 2958466.0)) {
        throw TypeMismatch("Overflow: " + ToString() + " is no date");
      }
      double whole = std::floor(value);
      auto day = static_cast<std::int32_t>(whole);
      auto seconds = static_cast<std::int32_t>(std::llround((value - whole) * 86400));
      if (seconds >= 86400) {  // within half a second of the next midnight
        seconds -= 86400;
        day += 1;
      }
      return Date::FromSerial(day, seconds);
    }
    case VariantKind::String: {
      const std::string& s = *Get<std::string>();
      if (std::optional<Date> d = ParseDateText(s)) return *d;
      TextMismatch(s, "a date");
    }
    default:
      Mismatch(*this, "a Date");
  }
}

std::string Variant::ToString() const {
  switch (Kind()) {
    case VariantKind::Empty:
      return "";
    case VariantKind::Boolean:
      return *Get<bool>() ? "True" : "False";
    case VariantKind::Long:
      return std::to_string(*Get<std::int64_t>());
    case VariantKind::Double:
      return DoubleText(*Get<double>());
    case VariantKind::Currency:
      return Get<Currency>()->ToString();
    case VariantKind::Date:
      return DateText(*Get<Date>());
    case VariantKind::String:
      return *Get<std::string>();
    default:
      Mismatch(*this, "a String");
  }
}

std::string Variant::Text() const {
  if (IsNull() || IsMissing()) return "";
  return ToString();
}

std::shared_ptr<Object> Variant::ToObject() const {
  if (const auto* o = Get<std::shared_ptr<Object>>()) return *o;
  Mismatch(*this, "an object");
}

Variant Variant::NullToZero() const {
  if (IsNull() || IsEmpty()) return Variant(0);
  return *this;
}

bool Variant::operator==(const Variant& other) const {
  if (value_.index() != other.value_.index()) return false;
  return std::visit(
      [&other](const auto& mine) {
        using T = std::decay_t<decltype(mine)>;
        if constexpr (std::is_same_v<T, NullTag> || std::is_same_v<T, MissingTag> ||
                      std::is_same_v<T, std::monostate>) {
          return true;
        } else {
          return mine == *other.Get<T>();
        }
      },
      value_);
}

}  // namespace trellin
