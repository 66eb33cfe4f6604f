#pragma once
// Page models built by hand, and the command-line PDF tools the tests read outputs back with.

#include <filesystem>
#include <string>
#include <vector>

#include "platform/engine/PageModel.h"
#include "tests/support/TempFolder.h"

namespace trellin::render::testing {

// A fresh folder, removed with its contents; the files' readers and writer.
using ScratchDir = trellin::testing::TempFolder;
using trellin::testing::ReadFile;
using trellin::testing::WriteFile;

// Runs a shell command; returns its standard output. `status` gets the exit status.
std::string RunCommand(const std::string& command, int* status = nullptr);

// Builders for page items, in twips.
engine::TextRun Text(float left, float top, float width, std::string text,
                     engine::Align align = engine::Align::Left, engine::FontSpec font = {});
engine::LineItem Rule(float x1, float x2, float y, float thickness = 15);
engine::RectItem Shade(float left, float top, float width, float height, engine::Color fill);
engine::Page LetterPage(int number);
engine::DocumentInfo LetterDocument(std::string title);

// A printed ledger page: title, column captions, a group header, shaded alternate detail rows,
// a group footer with a single rule over and a double rule under the totals, a page footer.
// Its rows carry the data cells too. `first_row` numbers the detail rows across pages.
engine::Page SampleLedgerPage(int number, int detail_rows, int first_row = 0);

}  // namespace trellin::render::testing
