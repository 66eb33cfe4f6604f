#pragma once
// Shared routines of the report code: SQL WHERE text and the matching description of a run,
// grouping lists, and the comma lists of SELECT, GROUP BY and ORDER BY.
//
// A WHERE text never holds the word WHERE; conditions are joined by " AND " and each one is
// followed by a single blank ("a=1  AND b=2 "). A description is a text of phrases, one a line,
// that the report footer prints as the run's parameters. Both are owned by the calling report
// routine and passed by reference. Routines that place values in SQL, format dates or build
// range conditions use the business layer of TrellinReportGlobals, and throw ObjectNotSet when
// the service is not initialised.

#include <string>
#include <vector>

#include "core/host/ActiveReport.h"
#include "core/host/DataControl.h"
#include "core/host/Parameters.h"
#include "core/host/Section.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"

namespace trellin {

// The open ends of a number range.
inline constexpr Currency kNumberRangeMinimum = Currency::FromWhole(-9999999999);
inline constexpr Currency kNumberRangeMaximum = Currency::FromWhole(9999999999);

// `DataType` of a range condition.
inline constexpr int kRangeText = 8;
inline constexpr int kRangeNumber = 3;

// Appends `Condition` and one blank, after " AND " when SQLWhere already holds a condition.
// An empty Condition changes nothing.
void AppendSQLCondition(std::string& SQLWhere, const std::string& Condition);

// Appends `Text`: after ", " when Inline (even to an empty description), otherwise on a new
// line (CR LF) when the description is not empty. An empty Text changes nothing.
void AppendDescription(std::string& Description, const std::string& Text, bool Inline = false);

// Appends "Title: Value" on a line of its own.
void AppendNamedValueDescription(std::string& Description, const std::string& Title,
                                 const std::string& Value);

// Appends "Title from d1 to d2", "Title from d1" or "Title to d2" on a line of its own, with the
// dates in the business layer's DateFormat; nothing when both dates are absent. A date is absent
// when it is Null, Empty, Missing or blank text.
void AppendDateRangeDescription(std::string& Description, const std::string& Title,
                                const Variant& DateFrom, const Variant& DateTo);

// Adds Field>=DateFrom and Field<DateTo+1 (a strict bound on the following day) for the dates
// that are present, as Database.SQLDate literals, then the date range description when Title
// is not empty. Throws TypeMismatch for a present value that is not a date.
void AppendDateRangeCondition(std::string& SQLWhere, const std::string& Field,
                              const Variant& DateFrom, const Variant& DateTo,
                              const std::string& Title, std::string& Description);

// Adds Field>=ValueFrom when ValueFrom differs from Minimum, and Field<=ValueTo when ValueTo
// differs from Maximum, the values as plain text ("1234.5"); then the number range description
// when Title is not empty.
void AppendNumberRangeCondition(std::string& SQLWhere, const std::string& Field, Currency ValueFrom,
                                Currency ValueTo, Currency Minimum, Currency Maximum,
                                const std::string& Title, std::string& Description,
                                const std::string& Format);

// Appends "Title from a to b", "Title from a" or "Title to b", values in the mask `Format`, on a
// line of its own; an end equal to its sentinel counts as open. Nothing when both are open.
void AppendNumberRangeDescription(std::string& Description, const std::string& Title,
                                  Currency ValueFrom, Currency ValueTo, Currency Minimum,
                                  Currency Maximum, const std::string& Format);

// The condition and phrase of one list parameter: nothing when the parameter is absent or its
// value is empty; otherwise "Caption: value" in the description and "(" + the business layer's
// BuildRangeCondition(Field, value, DataType) + ")" in the WHERE text. DataType is kRangeText
// or kRangeNumber. Errors of BuildRangeCondition (text it cannot read) reach the caller.
void AppendListParameterCondition(std::string& SQLWhere, const std::string& Field,
                                  const std::string& ParameterName,
                                  const trellin::Parameters& Parameters, std::string& Description,
                                  int DataType);

// Over the parameters' list parameters (type 4) with a value, in order: "(condition)" on each
// one's SQLField, text or numeric as the field requires, and "Caption: value" in the
// description. "AddressId" gets the phrase but no condition, for it needs a join only the report
// knows. Returns the WHERE text.
[[nodiscard]] std::string CreateSQLWhereFromRangeParams(const trellin::Parameters& Parameters,
                                                        std::string& Description);

// The Boolean parameters whose Name starts with Prefix (and not with a non-empty
// ExcludePrefix), as a quoted list of the checked ones for an IN clause: "'Good','Bad'". Each is
// named by its Caption, or by its Name without Prefix when the Caption is the Name or empty.
// AllSelected tells whether every one of them was checked (True when there are none).
[[nodiscard]] std::string SelectedBooleanNames(const trellin::Parameters& Parameters,
                                               const std::string& Prefix, bool& AllSelected,
                                               const std::string& ExcludePrefix = "");

// Puts Item (trimmed; with CutAlias, cut before " AS ") at the front (First) or the end of the
// comma list, first taking out an earlier entry of it. Presence is tested by substring while
// removal is by whole item, so with "ItemId" in the list the item "Item" is added a second time.
// A blank Item changes nothing.
void MoveInCommaList(std::string& List, const std::string& Item, bool First, bool CutAlias);

// Splits a Groupings value into names and page-break flags: items parted by commas, each
// possibly ending in " [Page Break]" and possibly prefixed by text up to a tab. Returns False,
// with both lists empty, for Null or empty text. More than 101 items throw std::out_of_range.
[[nodiscard]] bool SplitGroupings(const Variant& Value, std::vector<std::string>& Names,
                                  std::vector<bool>& PageBreaks);

// Points a designer's data control at the business layer's database through a read-only,
// client-side, forward cursor (location 3, type 0, lock 1), so every report shares the open
// connection.
void PrepareDataControl(DataControl& datData);

// Rounding modes of the Rounding parameter.
inline constexpr int kRoundingNormal = 2;
inline constexpr int kRoundingWhole = 0;
inline constexpr int kRoundingThousands = -3;

// For modes 0 and -3 only: every Field control whose OutputFormat is the business layer's
// CurrencyFormat(0) or "Currency" gets the OutputFormat "Round", for ApplySectionRounding to
// fill. Called once, as the run starts.
void ApplyReportRounding(ActiveReport& Designer, int Mode);

// Sets the Text of every Field control of Section whose OutputFormat is "Round" (any case) from
// its DataValue: in thousands (-3) or whole units (0) in "#,###,##0;(#,###,##0)", rounded half
// away from zero by the business layer's Rounder, else in the business layer's currency format.
// Called from each Format event that shows numbers.
void ApplySectionRounding(Section& Section, int Mode);

}  // namespace trellin
