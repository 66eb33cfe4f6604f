#include <string>

#include "platform/business/CompanyApplication.h"

namespace trellin::business {

namespace {

// The pick-list behind a field type that points at another table: key first, name second.
struct LookupRow {
  int Type;
  std::string_view ListSQL;
  std::string_view KeyField;
};

constexpr LookupRow kLookups[] = {
    {1, "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId", "OtherPartyId"},
    {2, "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId", "OtherPartyId"},
    {3, "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId", "OtherPartyId"},
    {4, "SELECT EmployeeId,Name FROM Employee ORDER BY EmployeeId", "EmployeeId"},
    {7, "SELECT AssetId,Description FROM Asset ORDER BY AssetId", "AssetId"},
    {8, "SELECT JobId,Description FROM Job ORDER BY JobId", "JobId"},
};

}  // namespace

void CompanyApplication::AddUserDefinedParameters(UserDefinedKind kind, Parameters& parameters,
                                                  bool primary, const Variant& value) const {
  const UserDefinedKindRow& info = UserDefinedKindInfo(kind);
  const std::string table(info.Table);
  // List parameters' values are strings; an absent value is the empty list.
  const Variant start =
      (value.IsEmpty() || value.IsMissing() || value.IsNull()) ? Variant("") : value;
  for (int position = 1; position <= kUserDefinedPositions; ++position) {
    UserDefinedField field = options_.UserDefinedFields(kind, position);
    if (field.Name.empty()) continue;
    const std::string column = "UserDefined" + std::to_string(position);
    const std::string name = table + "." + column;
    // A free-text field offers the values already in use, so a user picks rather than types.
    std::string list_sql = "SELECT DISTINCT " + column + ",'' AS Description FROM " + table +
                           " WHERE " + column + " Is Not Null ORDER BY " + column;
    std::string key_field = column;
    for (const LookupRow& lookup : kLookups) {
      if (lookup.Type == field.Type) {
        list_sql = lookup.ListSQL;
        key_field = lookup.KeyField;
      }
    }
    ParameterPtr parameter = parameters.AddSQLList(name, start, primary, "", Variant(""), list_sql,
                                                   key_field, false, field.Name);
    parameter->SQLField = name;
    parameter->FilterField = name;
  }
}

}  // namespace trellin::business
