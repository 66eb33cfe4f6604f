#pragma once
// The columns of a data export. The report's rows become lines of a table; their cells are put
// under columns by where they printed, so a group footer's total lands under the detail column it
// totals and a filter on the row kind followed by a sum gives the report's own figures.
//
// The columns are the detail section's fields (the first detail rows seen), ordered left to
// right; a report without detail rows takes the fields of its group footers, else group headers,
// else footers and headers of the report. Every line starts with two columns, "Row" (the section
// kind: "Report Header", "Group Header", "Detail", "Group Footer", "Report Footer") and "Level"
// (the group level, 1 innermost; blank for other rows). Page headers and footers are left out.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/engine/PageModel.h"

namespace trellin::render {

struct ExportColumn {
  std::string name;  // the control name, "txtBalance"
  float left = 0, width = 0;
  std::string caption;  // the heading
};

// The name a data export gives a row kind; nullopt for the kinds left out (page headers and
// footers).
[[nodiscard]] std::optional<std::string_view> RowKindCaption(engine::RowKind kind);

// A heading made from a control name: the lower-case prefix dropped and the words parted,
// "txtDueDate" -> "Due Date", "gfGSTAmount" -> "GST Amount".
[[nodiscard]] std::string CaptionFromName(std::string_view name);

class ExportColumns {
 public:
  // The columns for `rows` (the start of the report, including its page headers). A column's
  // heading is the header label that reads as its control name ("Date" for txtDate), else the
  // first that begins with it ("Reference" for txtRef), else the name made readable
  // (CaptionFromName). Label captions carry no position, so they are matched by name, never by
  // count or order.
  [[nodiscard]] static ExportColumns FromRows(const std::vector<engine::DataRow>& rows);

  [[nodiscard]] const std::vector<ExportColumn>& Columns() const { return columns_; }

  // The row's cells by column: at least one entry per column, null where the row has no cell.
  // A cell goes under the column of its own name, else the free column it overlaps most, else
  // the nearest free column; cells left over go into extra columns after the last.
  [[nodiscard]] std::vector<const engine::DataCell*> Assign(const engine::DataRow& row) const;

 private:
  std::vector<ExportColumn> columns_;
};

}  // namespace trellin::render
