#pragma once
// "GridContent": what a grid of the application shows, printed. The grid hands over its query
// (GridSQL, hidden) and its title (GridTitle); the columns are made at run time from the query's
// fields and their types, money totalled at the end. Only one SELECT that reads is run: anything
// else is refused with a message naming what is wrong. The shared list layout.

#include <optional>
#include <string>
#include <string_view>

#include "core/Designer.h"

namespace trellin {

// Why `sql` may not run as a grid's query, as the message the user sees; nullopt when it is one
// SELECT that reads (a trailing ";" allowed). Looks at the words outside quoted text and
// bracketed names.
[[nodiscard]] std::optional<std::string> GridSQLRefusal(std::string_view sql);

class arGridContent : public Designer {
 public:
  arGridContent() : Designer("arGridContent") {}

  void RefreshParameters(std::string& ReportName) override;
  void ActiveReport_Initialize() override;
  // Checks the query (std::invalid_argument with GridSQLRefusal's message), makes a column for
  // each of its fields and starts it.
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
};

[[nodiscard]] DesignerPtr CreatearGridContent();

}  // namespace trellin
