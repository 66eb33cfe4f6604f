// The WHERE text and description builders: plain conditions, date and number ranges.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr char kLineBreak[] = "\r\n";

// Dates reach these routines straight from parameters, where "no date" may be Null, Empty,
// Missing (never set) or blank text; all of them mean an open end, not an error.
bool IsAbsent(const Variant& value) {
  if (value.IsNull() || value.IsEmpty() || value.IsMissing()) return true;
  return value.IsString() && Trim(*value.Get<std::string>()).empty();
}

std::string DateText(const Variant& value) {
  return trellin::Format(Variant(value.ToDate()),
                         TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

}  // namespace

void AppendSQLCondition(std::string& SQLWhere, const std::string& Condition) {
  if (Condition.empty()) return;
  if (!SQLWhere.empty()) SQLWhere += " AND ";
  // Every condition carries its own trailing blank, so two of them are parted by two blanks and
  // "AND"; report code that shows the finished text relies on this exact spacing.
  SQLWhere += Condition;
  SQLWhere += ' ';
}

void AppendDescription(std::string& Description, const std::string& Text, bool Inline) {
  if (Text.empty()) return;
  if (Inline) {
    // Inline phrases continue the line even when it is the first phrase.
    Description += ", ";
  } else if (!Description.empty()) {
    Description += kLineBreak;
  }
  Description += Text;
}

void AppendNamedValueDescription(std::string& Description, const std::string& Title,
                                 const std::string& Value) {
  AppendDescription(Description, Title + ": " + Value, false);
}

void AppendDateRangeDescription(std::string& Description, const std::string& Title,
                                const Variant& DateFrom, const Variant& DateTo) {
  const bool has_from = !IsAbsent(DateFrom);
  const bool has_to = !IsAbsent(DateTo);
  std::string phrase;
  if (has_from && has_to) {
    phrase = Title + " from " + DateText(DateFrom) + " to " + DateText(DateTo);
  } else if (has_from) {
    phrase = Title + " from " + DateText(DateFrom);
  } else if (has_to) {
    phrase = Title + " to " + DateText(DateTo);
  }
  AppendDescription(Description, phrase, false);
}

void AppendDateRangeCondition(std::string& SQLWhere, const std::string& Field,
                              const Variant& DateFrom, const Variant& DateTo,
                              const std::string& Title, std::string& Description) {
  if (!IsAbsent(DateFrom)) {
    const Date from = DateFrom.ToDate();
    AppendSQLCondition(SQLWhere,
                       Field + ">=" + TrellinReportGlobals::RequireDatabase()->SQLDate(from));
  }
  if (!IsAbsent(DateTo)) {
    // The upper bound is the next day, exclusive, so a time stamp on the last day still counts.
    // A time on DateTo itself is dropped, or the bound would reach into the next day.
    const Date next_day = DateTo.ToDate().DateOnly().AddDays(1);
    AppendSQLCondition(SQLWhere,
                       Field + "<" + TrellinReportGlobals::RequireDatabase()->SQLDate(next_day));
  }
  if (!Title.empty()) AppendDateRangeDescription(Description, Title, DateFrom, DateTo);
}

void AppendNumberRangeCondition(std::string& SQLWhere, const std::string& Field, Currency ValueFrom,
                                Currency ValueTo, Currency Minimum, Currency Maximum,
                                const std::string& Title, std::string& Description,
                                const std::string& Format) {
  // Numbers go in as plain invariant text; a sentinel end is open and adds nothing.
  if (ValueFrom != Minimum) AppendSQLCondition(SQLWhere, Field + ">=" + ValueFrom.ToString());
  if (ValueTo != Maximum) AppendSQLCondition(SQLWhere, Field + "<=" + ValueTo.ToString());
  if (!Title.empty()) {
    AppendNumberRangeDescription(Description, Title, ValueFrom, ValueTo, Minimum, Maximum, Format);
  }
}

void AppendNumberRangeDescription(std::string& Description, const std::string& Title,
                                  Currency ValueFrom, Currency ValueTo, Currency Minimum,
                                  Currency Maximum, const std::string& Format) {
  const bool has_from = ValueFrom != Minimum;
  const bool has_to = ValueTo != Maximum;
  const auto text = [&Format](Currency value) { return trellin::Format(Variant(value), Format); };
  std::string phrase;
  if (has_from && has_to) {
    phrase = Title + " from " + text(ValueFrom) + " to " + text(ValueTo);
  } else if (has_to) {
    phrase = Title + " to " + text(ValueTo);
  } else if (has_from) {
    phrase = Title + " from " + text(ValueFrom);
  }
  AppendDescription(Description, phrase, false);
}

}  // namespace trellin
