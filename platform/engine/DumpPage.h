#pragma once
// A plain-text picture of a page, line by line and stable from run to run: the form of the
// end-to-end golden files.

#include <string>

#include "platform/engine/PageModel.h"

namespace trellin::engine {

// One line per item in drawing order, then the bookmarks and the data rows:
//   page 1 11906x16838
//   text 1080,720 4000x230 "Customer Type List" Arial 10 B left
//   line 1080,950-11000,950
//   rect 1080,1200 9746x240 fill #EEEEEE
//   bookmark "Country\State" @1200
//   row Detail Detail txtId=1 "1" | txtDescription="Retail" "Retail"
// Measures are rounded to whole twips.
[[nodiscard]] std::string DumpPage(const Page& page);

}  // namespace trellin::engine
