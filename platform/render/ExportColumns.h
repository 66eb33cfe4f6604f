#pragma once
// The columns of a data export: the report's table as it declared it before its first row
// (DocumentInfo::columns), in print order, each with its printed heading. A row's cells go under
// the column that holds their field, else under the column they print beneath, so that a group
// footer's total lands under the detail column it totals and a sub-report's line under the
// headings its figures print below.
//
// Which rows are exported: every printed row that shows a value, of the report and its
// sub-reports; page headers and footers are left out, and so is the run's description
// (txtParameters), which heads a spreadsheet instead. A group header that prints only its label
// gives that label in the first column, unless its labels are only the columns' captions. A cell
// that printed blank holds nothing, whatever value lies behind it.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/engine/PageModel.h"

namespace trellin::render {

struct ExportColumn {
  std::string caption;  // the heading
  float left = 0, width = 0;
  std::vector<std::string> fields;
};

// What one row holds under one column: no cell, one cell, or several cells that printed beneath
// the same heading (their texts are joined by a blank); or, for a group header's label, `text`.
struct ExportValue {
  std::vector<const engine::DataCell*> cells;
  std::string text;
  [[nodiscard]] bool Empty() const { return cells.empty() && text.empty(); }
};

// A heading made from a control name: the lower-case prefix dropped and the words parted,
// "txtDueDate" -> "Due Date", "gfGSTAmount" -> "GST Amount".
[[nodiscard]] std::string CaptionFromName(std::string_view name);

class ExportColumns {
 public:
  // The columns of the report described by `info`; a column the report printed no heading over
  // takes one made from its first field's name (CaptionFromName).
  explicit ExportColumns(const engine::DocumentInfo& info);

  [[nodiscard]] const std::vector<ExportColumn>& Columns() const { return columns_; }

  // The row's values by column, one entry per column; nullopt when the row is not exported (a
  // page header or footer, or a row that shows nothing).
  [[nodiscard]] std::optional<std::vector<ExportValue>> Assign(const engine::DataRow& row) const;

 private:
  std::vector<ExportColumn> columns_;
};

}  // namespace trellin::render
