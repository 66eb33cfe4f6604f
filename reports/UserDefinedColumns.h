#pragma once
// The company's named user-defined fields of one kind as list columns: each captioned by its
// name, hidden until picked. The lists of items, assets and jobs offer them.

#include <string>

#include "core/TrellinReportGlobals.h"
#include "core/host/DataColumns.h"
#include "reports/ReportShapes.h"

namespace trellin {

// Adds "UserDefined1" to "UserDefined`count`" for each field of `kind` the company has named;
// the query must select them under those names.
inline void AddUserDefinedColumns(DataColumns& columns, UserDefinedKind kind, int count = 20) {
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  for (int n = 1; n <= count; ++n) {
    const UserDefinedField field = options.UserDefinedFields(kind, n);
    if (field.Name.empty()) continue;
    const std::string name = "UserDefined" + std::to_string(n);
    columns
        .Add(name, name, kColumnText, field.Name, "", 1200, -1, -1, -1, "(auto)", 0, 0, "", true,
             "", false, false)
        .Hidden = true;
  }
}

}  // namespace trellin
