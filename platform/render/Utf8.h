#pragma once
// Text from the database is UTF-8 by contract but not always in fact; every output repairs it
// before a library that rejects bad text (cairo, the spreadsheet writer) sees it.

#include <string>
#include <string_view>

namespace trellin::render {

// The length of the well-formed UTF-8 sequence starting `text` (1 to 4), or 0 when the first
// bytes are not one (a stray continuation byte, a cut or overlong sequence, a surrogate).
[[nodiscard]] int Utf8SequenceLength(std::string_view text);
[[nodiscard]] bool IsValidUtf8(std::string_view text);
// `text` with each byte that does not start a well-formed sequence replaced by U+FFFD.
[[nodiscard]] std::string ValidUtf8(std::string_view text);

}  // namespace trellin::render
