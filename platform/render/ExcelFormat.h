#pragma once
// Spreadsheet number formats from the report's format masks, so an exported cell shows as it
// printed while holding its exact value.

#include <string>
#include <string_view>

namespace trellin::render {

enum class CellKind { Integer, Real, Money, Date, DateTime };

// The spreadsheet number format for a value of `kind` printed with `mask`. Named masks
// ("Currency", "Standard", "Short Date", ...) map to their spreadsheet equivalents; numeric masks
// keep their placeholders and sections (a fourth, Null, section is dropped: blank cells hold
// Null); date masks keep their tokens with minutes "n" as "m"; other literal characters are
// escaped. The empty mask, "Round" and "(auto)" give a default for the kind: "General" for
// numbers, "#,##0.00" style for money, "d/mm/yyyy" for dates.
[[nodiscard]] std::string ExcelNumberFormat(std::string_view mask, CellKind kind);

}  // namespace trellin::render
