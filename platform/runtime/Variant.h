#pragma once
// The loosely typed value that flows between data, parameters, fields and report code.

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Error.h"

namespace trellin {

// Base of anything a Variant can refer to (a designer, a recordset, a parameter).
class Object {
 public:
  virtual ~Object() = default;
};

enum class VariantKind {
  Empty,
  Null,
  Missing,
  Boolean,
  Long,
  Double,
  Currency,
  Date,
  String,
  Object
};

// The kind's name as messages spell it: "Empty", "Long", "Currency", ...
[[nodiscard]] std::string_view KindName(VariantKind kind);

// Raised when a value cannot become what the code asks for: Null where a value is needed,
// text that is not a number, a number out of range. The message says what and why.
class TypeMismatch : public Error {
 public:
  explicit TypeMismatch(const std::string& message) : Error(ErrorKind::Report, message) {}
};

class Variant {
 public:
  struct NullTag {};
  struct MissingTag {};

  Variant() = default;  // Empty
  Variant(NullTag) : value_(NullTag{}) {}
  Variant(MissingTag) : value_(MissingTag{}) {}
  Variant(bool b) : value_(b) {}
  Variant(int n) : value_(static_cast<std::int64_t>(n)) {}
  Variant(std::int64_t n) : value_(n) {}
  Variant(double d) : value_(d) {}
  Variant(Currency c) : value_(c) {}
  Variant(Date d) : value_(d) {}
  Variant(std::string s) : value_(std::move(s)) {}
  Variant(std::string_view s) : value_(std::string(s)) {}
  Variant(const char* s) : value_(std::string(s)) {}
  Variant(std::shared_ptr<Object> o) : value_(std::move(o)) {}

  static Variant Null() { return Variant(NullTag{}); }
  static Variant Missing() { return Variant(MissingTag{}); }

  [[nodiscard]] VariantKind Kind() const;
  [[nodiscard]] bool IsEmpty() const { return value_.index() == 0; }
  [[nodiscard]] bool IsNull() const { return std::holds_alternative<NullTag>(value_); }
  [[nodiscard]] bool IsMissing() const { return std::holds_alternative<MissingTag>(value_); }
  // Long, Double or Currency.
  [[nodiscard]] bool IsNumber() const;
  [[nodiscard]] bool IsString() const { return std::holds_alternative<std::string>(value_); }
  [[nodiscard]] bool IsDate() const { return std::holds_alternative<Date>(value_); }
  [[nodiscard]] bool IsBoolean() const { return std::holds_alternative<bool>(value_); }
  [[nodiscard]] bool IsObject() const {
    return std::holds_alternative<std::shared_ptr<Object>>(value_);
  }

  // Conversions in the manner of the report language's CBool, CLng, CDbl, CCur, CDate, CStr.
  // Each throws TypeMismatch for Null, Missing, an object, or text that does not convert.
  // Empty converts to False, 0, "" and day 0. Text converts when it reads as a number ("1,234.5")
  // or, for ToDate, as a date (ParseDateText). ToLong rounds a fraction half to even, as CLng.
  // True counts as -1. A number becomes a date as days on from day 0 with the fraction as the
  // time of day to the nearest second (-1.5 is noon on day -2), as Date::ToDouble reads it back.
  [[nodiscard]] bool ToBool() const;
  [[nodiscard]] std::int64_t ToLong() const;
  [[nodiscard]] double ToDouble() const;
  [[nodiscard]] Currency ToCurrency() const;
  [[nodiscard]] Date ToDate() const;
  // Booleans spell "True"/"False"; dates "dd/mm/yyyy" (the short date of New Zealand and
  // Australia) with " h:nn:ss am/pm" appended when timed ("05/03/2024 2:05:09 pm"); Long and
  // Currency in full ("1234.5"), Double to 15 significant digits ("0.3", "1E+20"); Empty gives "".
  [[nodiscard]] std::string ToString() const;
  // As ToString, but Null and Missing give "" (the report language's `"" & value`).
  [[nodiscard]] std::string Text() const;
  [[nodiscard]] std::shared_ptr<Object> ToObject() const;

  // Null (and Empty) counted as zero: the Nz of sums.
  [[nodiscard]] Variant NullToZero() const;

  // Direct access; nullptr when the kind differs.
  template <typename T>
  [[nodiscard]] const T* Get() const {
    return std::get_if<T>(&value_);
  }

  // Equality of kind and value (Null equals Null here): for containers and tests, not for
  // report logic, which uses Compare.
  bool operator==(const Variant& other) const;

 private:
  std::variant<std::monostate, NullTag, MissingTag, bool, std::int64_t, double, Currency, Date,
               std::string, std::shared_ptr<Object>>
      value_;
};

// Arithmetic with the report language's rules: Null in gives Null out; Long op Long stays Long
// (promoting to Double on overflow), with Double it is Double, with Currency it is Currency, and
// Currency with Double stays Currency (rounded to the ten-thousandth, half away from zero) so
// that money stays exact. Date + number and Date - number are Dates (a fraction moves the time);
// Date - Date is the Double of days between. Add joins two strings. Divide always gives Double
// (Currency / number keeps Currency) and throws std::domain_error on a zero divisor. Empty counts
// as 0 or "", True as -1, numeric text as its Double. Throws TypeMismatch for operands that do
// not fit (text that is no number, two dates added, Missing, objects) and std::range_error when
// a Currency or Date result is out of range.
[[nodiscard]] Variant Add(const Variant& a, const Variant& b);
[[nodiscard]] Variant Subtract(const Variant& a, const Variant& b);
[[nodiscard]] Variant Multiply(const Variant& a, const Variant& b);
[[nodiscard]] Variant Divide(const Variant& a, const Variant& b);
[[nodiscard]] Variant Negate(const Variant& a);
// The & operator: both sides as text, Null counted as "".
[[nodiscard]] Variant Concat(const Variant& a, const Variant& b);

// Three-way comparison: nullopt when either side is Null (the comparison is unknown).
// Numbers compare by value across kinds, dates with dates (and numbers as serials), text
// with text (binary, or case-insensitive when `ignore_case`), a number with numeric text
// by value. Throws TypeMismatch for kinds that do not compare.
[[nodiscard]] std::optional<int> Compare(const Variant& a, const Variant& b,
                                         bool ignore_case = false);
// True when Compare gives 0; false when unknown.
[[nodiscard]] bool ValuesEqual(const Variant& a, const Variant& b, bool ignore_case = false);

}  // namespace trellin
