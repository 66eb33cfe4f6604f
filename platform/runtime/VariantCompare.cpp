#include "platform/runtime/Strings.h"
#include "platform/runtime/Variant.h"

namespace trellin {
namespace {

template <typename T>
int Order(const T& a, const T& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

// Kinds that compare as numbers: Empty (0), Boolean (True is -1) and the three numeric kinds.
bool IsNumberLike(const Variant& v) { return v.IsEmpty() || v.IsBoolean() || v.IsNumber(); }

int CompareNumbers(const Variant& a, const Variant& b) {
  // Exact where both are whole or money: the count of ten-thousandths of each.
  const auto exact = [](const Variant& v) -> std::optional<__int128> {
    if (v.IsEmpty()) return 0;
    if (const bool* b = v.Get<bool>()) return *b ? -Currency::kScale : 0;
    if (const auto* n = v.Get<std::int64_t>()) return static_cast<__int128>(*n) * Currency::kScale;
    if (const Currency* c = v.Get<Currency>()) return c->Raw();
    return std::nullopt;
  };
  std::optional<__int128> x = exact(a), y = exact(b);
  if (x && y) return Order(*x, *y);
  return Order(a.ToDouble(), b.ToDouble());
}

[[noreturn]] void NotComparable(const Variant& a, const Variant& b) {
  throw TypeMismatch(std::string("Type mismatch: cannot compare ") +
                     std::string(KindName(a.Kind())) + " with " + std::string(KindName(b.Kind())));
}

}  // namespace

std::optional<int> Compare(const Variant& a, const Variant& b, bool ignore_case) {
  if (a.IsNull() || b.IsNull()) return std::nullopt;
  if (a.IsMissing() || b.IsMissing() || a.IsObject() || b.IsObject()) NotComparable(a, b);

  if (a.IsString() && b.IsString()) {
    return StrComp(*a.Get<std::string>(), *b.Get<std::string>(), ignore_case);
  }
  // Empty meets text as "".
  if (a.IsString() && b.IsEmpty()) return StrComp(*a.Get<std::string>(), "", ignore_case);
  if (a.IsEmpty() && b.IsString()) return StrComp("", *b.Get<std::string>(), ignore_case);

  if (a.IsDate() || b.IsDate()) {
    // Dates order by day, then by time; a number stands for its serial, text must read as a date.
    Date da, db;
    try {
      da = a.ToDate();
      db = b.ToDate();
    } catch (const TypeMismatch&) {
      NotComparable(a, b);
    }
    return Order(da, db);
  }

  if (IsNumberLike(a) && IsNumberLike(b)) return CompareNumbers(a, b);
  // A number meets text by value when the text reads as a number.
  const Variant& text = a.IsString() ? a : b;
  if (!IsNumeric(*text.Get<std::string>())) NotComparable(a, b);
  return Order(a.ToDouble(), b.ToDouble());
}

bool ValuesEqual(const Variant& a, const Variant& b, bool ignore_case) {
  std::optional<int> order = Compare(a, b, ignore_case);
  return order && *order == 0;
}

}  // namespace trellin
