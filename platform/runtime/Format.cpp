#include "platform/runtime/Format.h"

#include <array>
#include <cmath>
#include <mutex>
#include <unordered_map>

#include "platform/runtime/DateFormat.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/DecimalNumber.h"
#include "platform/runtime/NumberFormat.h"
#include "platform/runtime/Strings.h"

namespace trellin {
namespace {

// Masks that print a value in its general form rather than through placeholders.
enum class General { NumberForm, DateForm };

// The named formats and what each means. A named format is matched in any case.
struct NamedFormat {
  std::string_view name;
  std::string_view mask;  // empty for the general forms
  General general;
};
constexpr std::array<NamedFormat, 15> kNamedFormats = {{
    {"Currency", kDefaultCurrencyFormat, General::NumberForm},
    {"Percent", "0.00%", General::NumberForm},
    {"Fixed", "0.00", General::NumberForm},
    {"Standard", "#,##0.00", General::NumberForm},
    {"Scientific", "0.00E+00", General::NumberForm},
    {"General Number", "", General::NumberForm},
    {"General Date", "", General::DateForm},
    {"Short Date", "dd/mm/yyyy", General::NumberForm},
    {"Medium Date", "dd-mmm-yy", General::NumberForm},
    {"Long Date", "d mmmm yyyy", General::NumberForm},
    {"Short Time", "hh:nn", General::NumberForm},
    {"Medium Time", "hh:nn AM/PM", General::NumberForm},
    {"Long Time", "h:nn:ss AM/PM", General::NumberForm},
    {"Yes/No", "\"Yes\";\"Yes\";\"No\"", General::NumberForm},
    {"True/False", "\"True\";\"True\";\"False\"", General::NumberForm},
}};

// A value as exact decimal digits, when it is a number or reads as one.
std::optional<decimal::DecimalNumber> NumberOf(const Variant& value) {
  switch (value.Kind()) {
    case VariantKind::Long:
      return decimal::FromInt(*value.Get<std::int64_t>());
    case VariantKind::Currency:
      return decimal::FromInt(value.Get<Currency>()->Raw(), -4);
    case VariantKind::Double: {
      double d = *value.Get<double>();
      if (!std::isfinite(d)) return std::nullopt;
      return decimal::FromDouble(d);
    }
    case VariantKind::Boolean:
      return decimal::FromInt(*value.Get<bool>() ? -1 : 0);
    case VariantKind::Date:
      return decimal::FromDouble(value.Get<Date>()->ToDouble());
    case VariantKind::String:
      return decimal::Parse(*value.Get<std::string>());
    default:
      return std::nullopt;
  }
}

class PassThroughMask final : public FormatMask {
 public:
  explicit PassThroughMask(std::string mask) : FormatMask(std::move(mask), true) {}

 private:
  std::string DoApply(const Variant& value) const override { return value.Text(); }
};

class GeneralMask final : public FormatMask {
 public:
  GeneralMask(std::string mask, General general)
      : FormatMask(std::move(mask), false), general_(general) {}

 private:
  std::string DoApply(const Variant& value) const override {
    if (general_ == General::DateForm) {
      // Numbers and date text show as the date they stand for; other text stays as it is.
      if (value.IsNumber()) return Variant(value.ToDate()).ToString();
      if (const std::string* s = value.Get<std::string>()) {
        std::optional<Date> d = ParseDateText(*s);
        return d ? Variant(*d).ToString() : *s;
      }
      return value.Text();
    }
    // A date shows as its serial; numeric text as the number it reads as.
    if (const Date* d = value.Get<Date>()) return Variant(d->ToDouble()).ToString();
    if (const bool* b = value.Get<bool>()) return *b ? "-1" : "0";
    if (const std::string* s = value.Get<std::string>()) {
      std::optional<double> n = ParseNumber(*s);
      return n ? Variant(*n).ToString() : *s;
    }
    return value.Text();
  }

  General general_;
};

// A mask of placeholders and literals, read as a number mask, a date mask, or both.
class PatternMask final : public FormatMask {
 public:
  PatternMask(std::string mask, std::string_view pattern)
      : FormatMask(std::move(mask), false),
        number_(NumberFormat::Compile(pattern)),
        date_(DateFormat::Compile(pattern)),
        prefer_number_(number_.HasPlaceholders() || number_.HasSections() || !date_) {}

 private:
  std::string DoApply(const Variant& value) const override {
    switch (value.Kind()) {
      case VariantKind::Null:
        return prefer_number_ ? number_.ApplyNull() : "";
      case VariantKind::Empty:
      case VariantKind::Missing:
        return "";
      case VariantKind::Date:
        if (date_) return date_->Apply(*value.Get<Date>());
        return number_.Apply(*NumberOf(value));
      case VariantKind::String: {
        // Text passes through unchanged unless it reads as what the mask shows.
        const std::string& s = *value.Get<std::string>();
        if (prefer_number_) {
          std::optional<decimal::DecimalNumber> n = decimal::Parse(s);
          return n ? number_.Apply(*n) : s;
        }
        std::optional<Date> d = ParseDateText(s);
        return d ? date_->Apply(*d) : s;
      }
      case VariantKind::Object:
        return value.Text();  // an object has no text: TypeMismatch
      default:
        break;
    }
    if (!prefer_number_) {
      try {
        return date_->Apply(value.ToDate());
      } catch (const TypeMismatch&) {
        return value.Text();
      }
    }
    std::optional<decimal::DecimalNumber> n = NumberOf(value);
    return n ? number_.Apply(*n) : value.Text();
  }

  NumberFormat number_;
  std::optional<DateFormat> date_;
  bool prefer_number_;
};

std::shared_ptr<const FormatMask> Compile(std::string_view mask) {
  std::string text(mask);
  if (mask.empty() || EqualsIgnoreCase(mask, "Round") || EqualsIgnoreCase(mask, "(auto)")) {
    return std::make_shared<PassThroughMask>(std::move(text));
  }
  for (const NamedFormat& named : kNamedFormats) {
    if (!EqualsIgnoreCase(mask, named.name)) continue;
    if (named.mask.empty()) return std::make_shared<GeneralMask>(std::move(text), named.general);
    return std::make_shared<PatternMask>(std::move(text), named.mask);
  }
  return std::make_shared<PatternMask>(text, mask);
}

struct StringHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
};

// Reports use a handful of masks, but user layouts could bring any number: past this many the
// cache starts afresh rather than grow without end.
constexpr std::size_t kMaxCachedMasks = 4096;

}  // namespace

std::shared_ptr<const FormatMask> FormatMask::Get(std::string_view mask) {
  static std::mutex mutex;
  static std::unordered_map<std::string, std::shared_ptr<const FormatMask>, StringHash,
                            std::equal_to<>>
      cache;
  std::lock_guard lock(mutex);
  if (auto it = cache.find(mask); it != cache.end()) return it->second;
  if (cache.size() >= kMaxCachedMasks) cache.clear();
  std::shared_ptr<const FormatMask> compiled = Compile(mask);
  cache.emplace(std::string(mask), compiled);
  return compiled;
}

std::string FormatMask::Apply(const Variant& value) const {
  if (pass_through_) return value.Text();
  return DoApply(value);
}

std::string Format(const Variant& value, std::string_view mask) {
  // Report code formats cell after cell with the same mask: remember the last one per thread
  // and skip the shared cache's lock.
  thread_local std::shared_ptr<const FormatMask> last;
  if (!last || last->Mask() != mask) last = FormatMask::Get(mask);
  return last->Apply(value);
}

}  // namespace trellin
