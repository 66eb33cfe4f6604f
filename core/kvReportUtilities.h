#pragma once
// The standard parameters and grouping definitions that make a customer filter or a grouping by
// item look and work alike in every report.

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

}  // namespace trellin
