#pragma once
// Case tables kept as data files: one case a line, fields separated by tabs, "#" lines and blank
// lines skipped. A value field is typed by a prefix (ParseValue), so that a table of format masks,
// date texts or amounts reads row by row against what the reports print.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Variant.h"

namespace trellin::testing {

struct CaseRow {
  std::string file;  // as given to ReadCases
  int line = 0;      // in the file, from 1
  std::vector<std::string> fields;
  // With ReadCaseBlocks: the lines below the row that begin with a tab, without it.
  std::vector<std::string> lines;
  // "runtime/format_masks.tsv:12", for the failure message.
  [[nodiscard]] std::string Where() const;
};

// The rows of tests/<name>. Fields are kept exactly, blanks and empty trailing fields included;
// with `escapes`, "\t", "\n" and "\\" in a field stand for a tab, a line break and a backslash.
// A row with fewer than `columns` fields throws std::runtime_error naming its line.
[[nodiscard]] std::vector<CaseRow> ReadCases(std::string_view name, std::size_t columns,
                                             bool escapes = false);

// The rows of tests/<name> as ReadCases reads them, each with the lines below it that begin with a
// tab (a case and its expected lines). Such a line before the first row throws.
[[nodiscard]] std::vector<CaseRow> ReadCaseBlocks(std::string_view name, std::size_t columns);

// A value written as its type and text: "d:1.5" Double, "l:12" Long, "m:-499.99" Currency,
// "s:abc" String (the rest of the field, blanks kept), "t:2024-03-05" or "t:2024-03-05 14:05:09"
// Date, "b:true" / "b:false" Boolean, "null" Null, "empty" Empty, "missing" Missing. Throws
// std::invalid_argument for anything else.
[[nodiscard]] Variant ParseValue(std::string_view typed);

}  // namespace trellin::testing
