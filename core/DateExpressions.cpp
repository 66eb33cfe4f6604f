// Date expressions: keywords, dates and parameter names, then modifiers left to right.

#include "core/DateExpressions.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr std::string_view kDateAsAt = "DateAsAt";

const FinancialCalendar& RequireCalendar(const FinancialCalendar* calendar) {
  if (calendar == nullptr) {
    throw ObjectNotSet("Object variable not set: Application.FinancialCalendar");
  }
  return *calendar;
}

Date BeginningOfMonth(Date base, const FinancialCalendar*) { return base.FirstOfMonth(); }
Date EndOfMonth(Date base, const FinancialCalendar*) { return base.LastOfMonth(); }
Date TodaysDate(Date, const FinancialCalendar*) { return Today(); }

// A date outside every financial year falls back to its calendar year.
Date BeginningOfYear(Date base, const FinancialCalendar* calendar) {
  const FinancialCalendar& years = RequireCalendar(calendar);
  const std::int64_t id = years.YearIdFromDate(base);
  if (id == 0) return Date::FromYmd(base.Year(), 1, 1);
  return years.Year(id).DateStart;
}

Date EndOfYear(Date base, const FinancialCalendar* calendar) {
  const FinancialCalendar& years = RequireCalendar(calendar);
  const std::int64_t id = years.YearIdFromDate(base);
  if (id == 0) return Date::FromYmd(base.Year(), 12, 31);
  return years.Year(id).DateEnd;
}

Date PayablesDate(Date, const FinancialCalendar* calendar) {
  return RequireCalendar(calendar).CurrentDateAP(true);
}
Date ReceivablesDate(Date, const FinancialCalendar* calendar) {
  return RequireCalendar(calendar).CurrentDateAR(true);
}
Date LedgerDate(Date, const FinancialCalendar* calendar) {
  return RequireCalendar(calendar).CurrentDateGL(true);
}

struct Keyword {
  std::string_view name;
  Date (*value)(Date base, const FinancialCalendar* calendar);
};

// clang-format off
constexpr Keyword kKeywords[] = {
    {"BOM", &BeginningOfMonth},
    {"EOM", &EndOfMonth},
    {"NOW", &TodaysDate},
    {"BOY", &BeginningOfYear},
    {"EOY", &EndOfYear},
    {"APCURRENT", &PayablesDate},
    {"ARCURRENT", &ReceivablesDate},
    {"GLCURRENT", &LedgerDate},
};
// clang-format on

std::optional<Date> AsDate(const Variant& value) {
  if (const Date* date = value.Get<Date>()) return *date;
  if (const std::string* text = value.Get<std::string>()) return ParseDateText(*text);
  return std::nullopt;
}

Date BaseDate(const trellin::Parameters* parameters) {
  if (parameters != nullptr && parameters->Exists(kDateAsAt)) {
    if (std::optional<Date> as_at = AsDate(parameters->Value(kDateAsAt))) {
      return as_at->DateOnly();
    }
  }
  return Today();
}

// Beyond these a modifier would leave the calendar; such a modifier does nothing.
constexpr std::int64_t kMaxDays = 3'660'000;
constexpr std::int64_t kMaxMonths = 120'000;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

std::optional<Date> Shift(Date date, std::int64_t count, char unit) {
  std::optional<Date> shifted;
  switch (unit) {
    case 'D':
      if (std::llabs(count) <= kMaxDays) shifted = date.AddDays(static_cast<int>(count));
      break;
    case 'M':
      if (std::llabs(count) <= kMaxMonths) shifted = date.AddMonths(static_cast<int>(count));
      break;
    case 'E':
      if (std::llabs(count) <= kMaxMonths) {
        shifted = date.AddMonths(static_cast<int>(count)).LastOfMonth();
      }
      break;
    case 'Y':
      if (std::llabs(count) * 12 <= kMaxMonths) shifted = date.AddYears(static_cast<int>(count));
      break;
    default:
      break;
  }
  if (shifted && (shifted->Year() < kFirstYear || shifted->Year() > kLastYear)) return std::nullopt;
  return shifted;
}

// One modifier: the text after its sign, such as "1D", "3m" or "2". A trailing letter is the
// unit; without one the unit is days.
Date ApplyModifier(Date date, char sign, const std::string& accumulated) {
  std::string number = accumulated;
  char unit = 'D';
  if (!IsNumeric(accumulated)) {
    number = accumulated.substr(0, accumulated.size() - 1);
    unit = UCase(accumulated.substr(accumulated.size() - 1)).front();
  }
  if (!IsNumeric(number)) return date;
  std::int64_t count = Variant(number).ToLong();
  if (sign == '-') count = -count;
  return Shift(date, count, unit).value_or(date);
}

// Reads the modifiers one character at a time. A sign closes the modifier before it; the last
// character closes the last one, even when it is itself a sign (which then spoils that
// modifier, as its unit).
Date ApplyModifiers(Date date, const std::string& modifiers) {
  std::string accumulated;
  char pending_sign = '\0';
  for (std::size_t i = 0; i < modifiers.size(); ++i) {
    const char c = modifiers[i];
    const bool last = i + 1 == modifiers.size();
    const bool sign = c == '+' || c == '-';
    if (!sign && !last) {
      accumulated += c;
      continue;
    }
    if (last) accumulated += c;
    if (pending_sign != '\0' && !accumulated.empty()) {
      date = ApplyModifier(date, pending_sign, accumulated);
    }
    pending_sign = c;
    accumulated.clear();
  }
  return date;
}

}  // namespace

Variant InterpretDateExpression(const Variant& Expression, const trellin::Parameters* parameters,
                                const FinancialCalendar* calendar) {
  // A date needs no interpreting: neither DateAsAt nor modifiers apply to it.
  if (std::optional<Date> date = AsDate(Expression)) return Variant(*date);

  const std::string text = Expression.Text();
  const std::size_t split = text.find_first_of("+-");
  const std::string keyword = Trim(text.substr(0, split));
  const std::string modifiers = split == std::string::npos ? "" : Trim(text.substr(split));

  std::optional<Date> result;
  const std::string upper = UCase(keyword);
  bool matched = false;
  for (const Keyword& entry : kKeywords) {
    if (entry.name != upper) continue;
    result = entry.value(BaseDate(parameters), calendar);
    matched = true;
    break;
  }
  if (!matched) {
    result = ParseDateText(keyword);
    // Another parameter's name stands for its present value, as it is: it is not interpreted a
    // second time, so parameters must be resolved in order for one to build on another.
    if (!result && parameters != nullptr && !keyword.empty() && parameters->Exists(keyword)) {
      result = AsDate(parameters->Value(keyword));
    }
  }
  if (!result) return Variant::Null();
  return Variant(ApplyModifiers(*result, modifiers));
}

void ResolveDateParameters(trellin::Parameters& Parameters, bool ResolvePrompted,
                           bool ResolveUnprompted, const FinancialCalendar* calendar) {
  for (const ParameterPtr& parameter : Parameters) {
    const bool prompted = !parameter->Prompt.empty();
    if (prompted ? !ResolvePrompted : !ResolveUnprompted) continue;
    if (parameter->Kind != ParameterType::Date) continue;
    parameter->Value = InterpretDateExpression(parameter->DefaultValue, &Parameters, calendar);
  }
}

}  // namespace trellin
