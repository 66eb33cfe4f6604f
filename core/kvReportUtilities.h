#pragma once
// The standard parameters and grouping definitions that make a customer filter or a grouping by
// item look and work alike in every report.

#include <climits>
#include <functional>
#include <string>
#include <vector>

#include "core/host/Parameters.h"

namespace trellin {

// The last row of the standard parameter table; any higher index adds a nameless parameter.
inline constexpr long kLastStandardParameter = 48;

// Builds the standard list parameter of row `Index` (0 to 48) and adds it to Parameters:
// Name, Caption (only where the row has one), ListSQL, KeyField and SQLField from the row,
// Primary from the argument, type SQL list. A non-empty Name, Caption or SQLField replaces the
// row's; FilterField is stored as given. Rows 42 and 43 follow the company's country and
// address options; rows 8, 33, 46, 47 and 48 take their literals from the business layer's
// database, so those rows need the service initialised (ObjectNotSet otherwise). An Index
// outside the table still adds a parameter, with nothing filled but Primary and the type.
// Returns the parameter as added.
ParameterPtr CreateStandardParameter(long Index, trellin::Parameters& Parameters, bool Primary,
                                     const std::string& Name = "", const std::string& Caption = "",
                                     const std::string& FilterField = "",
                                     const std::string& SQLField = "");

// What a grouping picked by name means in a report that reads `Table`: the field to group on,
// the query giving a group code's description (code first, description second) and the code's
// column in the report's recordset. Names outside the grouping table are user-defined fields,
// "Table:Field" (or a bare field of `FieldTable`), resolved through the company's options; for
// them Field comes back ready for a SELECT list ("Item.UserDefined3 AS ItemUserDefined3") and
// KeyField is the table followed by the field, or the bare table when the field is unknown.
// Name is not changed. Field, ListSQL and KeyField are replaced.
void GetGroupingDefinition(std::string& Name, std::string& Field, std::string& ListSQL,
                           std::string& KeyField, const std::string& Table,
                           const std::string& FieldTable = "");

// The names of the grouping table, in its order: what GetGroupingDefinition knows besides the
// user-defined fields.
[[nodiscard]] std::vector<std::string> GroupingNames();

// Finds the user-defined field named FieldName (case ignored) among positions 1 to 20 of
// `Kind` (1 asset, 2 item, 3 job, 4 other party, 5 transactions) and gives "UserDefined" + its
// position as Field, with the pick-list query its type calls for (empty for free text). Field
// and ListSQL come back empty when there is no such field, for an empty name, and for kind 8
// (accounts), which the company options give no user-defined fields.
void ResolveUserDefinedField(const std::string& FieldName, std::string& Field, std::string& ListSQL,
                             int Kind);

// One level of the groupings a run asked for, as the report is to define it.
struct ChosenGrouping {
  int level = 0;           // 1 for the innermost (the last name chosen)
  std::string name;        // the group's name, as DefineGroup takes it
  std::string field;       // for the select list ("Table.Field" or "... AS Alias")
  std::string list_sql;    // the group's code and description
  std::string key_field;   // the code's column in the report's recordset
  std::string also_field;  // a further field the query needs; empty for none
  bool page_break = false;
};

// Fills a grouping that is the report's own (not the standard table's) and says so; it may
// change the name or call GetGroupingDefinition itself under another name.
using OwnGroupingRule = std::function<bool(ChosenGrouping&)>;

// What becomes of a name neither the report's own rule nor the standard table knows.
enum class UnknownGrouping {
  kSkip,    // left out; its level number stays unused
  kRefuse,  // std::invalid_argument: Groupings: "X" is not a grouping of this report.
};

// The groupings of `Names` (outermost first, with their page breaks), innermost first: the order
// in which MoveInCommaList, putting each field at the front, leaves the outermost leading the
// sort. Each name is offered to `Own` (when set) and else to the standard table for `Table`.
[[nodiscard]] std::vector<ChosenGrouping> ResolveGroupings(const std::vector<std::string>& Names,
                                                           const std::vector<bool>& PageBreaks,
                                                           const std::string& Table,
                                                           const OwnGroupingRule& Own,
                                                           UnknownGrouping Unknown);

// The same for a Groupings parameter's value, keeping at most `MaxLevels` names from the
// outermost. Empty for a Null or empty value.
[[nodiscard]] std::vector<ChosenGrouping> ChooseGroupings(const Variant& Groupings,
                                                          const std::string& Table,
                                                          const OwnGroupingRule& Own,
                                                          UnknownGrouping Unknown,
                                                          int MaxLevels = INT_MAX);

}  // namespace trellin
