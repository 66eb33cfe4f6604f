#pragma once
// What a report declares about its table once its start is done, before any row prints: the
// columns of its rows with their headings, the lines that head its first page, and the run's
// description. The data exports are laid out from it (DocumentInfo).

#include "core/host/ActiveReport.h"
#include "platform/engine/PageModel.h"

namespace trellin::engine {

// Fills `info.columns`, `info.title_lines` and `info.description` from the report's sections as
// they stand. Call after ActiveReport_ReportStart and before any section formats, so that what a
// row's formatting shows or hides does not count. `x0` is the left edge of the sections on the
// paper (the left margin), so that spans are measured as the page model measures them.
//
// The fields are the visible fields and check boxes of the detail section; when the detail is
// hidden or has none, those of the innermost group footer that has some, else of the group
// headers. The headings are the visible labels of the page header (else of the group headers,
// else of the report header) on the row of labels nearest above the fields: every label of that
// row is a column, also one with no field beneath it (its values come from sub-reports), and each
// field joins the heading it lies under most. A field under no heading is a column of its own,
// with no heading. Page furniture (title, print line, notice, page number, the run's
// description) is never a column.
void DescribeTable(const ActiveReport& report, float x0, DocumentInfo& info);

}  // namespace trellin::engine
