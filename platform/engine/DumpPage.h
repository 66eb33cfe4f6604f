#pragma once
// A plain-text picture of a page, line by line and stable from run to run: the form of the
// end-to-end golden files.

#include <string>
#include <vector>

#include "platform/engine/PageModel.h"

namespace trellin::engine {

// One line per item in drawing order, then the bookmarks and the data rows:
//   page 1 11906x16838
//   text 1080,720 4000x230 "Customer Type List" Arial 10 B left
//   text 9000,960 1000x230 "1,250,000.00" Arial 10 right !wide
//   line 1080,950-11000,950
//   rect 1080,1200 9746x240 fill #EEEEEE
//   bookmark "Country\State" @1200
//   row Detail Detail txtId=1 "1" | txtDescription="Retail" "Retail"
// Measures are rounded to whole twips. A text that did not fit its box ends in its fit:
// " ellipsis", or a fault: " !cut", " !wide", " !broken".
[[nodiscard]] std::string DumpPage(const Page& page);

// One line for each text of the page that did not fit its box (a fault, not an ellipsis):
//   page 3 !wide "1,250,000.00" at 9000,960 in 1000
[[nodiscard]] std::vector<std::string> Misfits(const Page& page);

}  // namespace trellin::engine
