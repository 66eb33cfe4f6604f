// User-defined fields: the company names up to 20 extra fields on each kind of record.

#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr int kUserDefinedPositions = 20;

struct KindOfRecord {
  int kind;
  UserDefinedKind options_kind;
};

// Accounts (kind 8) have no user-defined fields in the company options, so no field of theirs
// is ever found.
constexpr KindOfRecord kKinds[] = {
    {1, UserDefinedKind::Asset},      {2, UserDefinedKind::Item},         {3, UserDefinedKind::Job},
    {4, UserDefinedKind::OtherParty}, {5, UserDefinedKind::Transactions},
};

// The pick-list behind a field of each type: fields that refer to a party, an employee, an
// asset or a job list those records; an item field lists its own distinct values.
struct ListByType {
  int type;
  const char* list_sql;
  bool distinct_values;
};

constexpr ListByType kListsByType[] = {
    {1, "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId", false},
    {2, "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId", false},
    {3, "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId", false},
    {4, "SELECT EmployeeId,Name FROM Employee ORDER BY EmployeeId", false},
    {5, nullptr, true},
    {7, "SELECT AssetId,Description FROM Asset ORDER BY AssetId", false},
    {8, "SELECT JobId,Description FROM Job ORDER BY JobId", false},
};

std::string ListSQLFor(int type, const std::string& field) {
  for (const ListByType& entry : kListsByType) {
    if (entry.type != type) continue;
    if (entry.distinct_values) return "SELECT DISTINCT " + field + ",'' FROM Item";
    return entry.list_sql;
  }
  return "";
}

}  // namespace

void ResolveUserDefinedField(const std::string& FieldName, std::string& Field, std::string& ListSQL,
                             int Kind) {
  Field.clear();
  ListSQL.clear();
  // An unused position has an empty name; an empty name must not pick one of those.
  if (FieldName.empty()) return;
  const KindOfRecord* kind = nullptr;
  for (const KindOfRecord& entry : kKinds) {
    if (entry.kind == Kind) kind = &entry;
  }
  if (kind == nullptr) return;
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  for (int position = 1; position <= kUserDefinedPositions; ++position) {
    const UserDefinedField field = options.UserDefinedFields(kind->options_kind, position);
    if (!EqualsIgnoreCase(field.Name, FieldName)) continue;
    Field = "UserDefined" + std::to_string(position);
    ListSQL = ListSQLFor(field.Type, Field);
    return;
  }
}

}  // namespace trellin
