#pragma once
// String routines with the report language's meaning where it differs from C++'s:
// positions are 1-based, "not found" is 0, text comparisons may ignore case (ASCII).

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellin {

[[nodiscard]] std::string Trim(std::string_view s);  // blanks (spaces and tabs) both ends
[[nodiscard]] std::string LTrim(std::string_view s);
[[nodiscard]] std::string RTrim(std::string_view s);
[[nodiscard]] std::string UCase(std::string_view s);
[[nodiscard]] std::string LCase(std::string_view s);
[[nodiscard]] std::string Left(std::string_view s, std::size_t n);
[[nodiscard]] std::string Right(std::string_view s, std::size_t n);
// Mid(s, start) and Mid(s, start, length) with 1-based start; past the end gives "".
// Throws std::out_of_range for start 0.
[[nodiscard]] std::string Mid(std::string_view s, std::size_t start,
                              std::size_t length = std::string::npos);
[[nodiscard]] std::string Space(std::size_t n);
// 1-based position of `find` in `s` at or after `start`, 0 when absent. "" is found at start
// when start is at most Len(s) + 1; nothing is found in "". Throws std::out_of_range for start 0.
[[nodiscard]] std::size_t InStr(std::string_view s, std::string_view find, std::size_t start = 1,
                                bool ignore_case = false);
[[nodiscard]] std::string Replace(std::string_view s, std::string_view find, std::string_view with,
                                  bool ignore_case = false);
// Splits on `delimiter`, keeping empty items: "a,,b" -> {"a", "", "b"}; "" -> {""}.
[[nodiscard]] std::vector<std::string> Split(std::string_view s, std::string_view delimiter = ",");
[[nodiscard]] std::string Join(const std::vector<std::string>& items,
                               std::string_view delimiter = ",");
// -1, 0 or 1; ASCII case folded when `ignore_case`.
[[nodiscard]] int StrComp(std::string_view a, std::string_view b, bool ignore_case = false);
[[nodiscard]] bool EqualsIgnoreCase(std::string_view a, std::string_view b);
// The report language's IsNumeric for text: optional blanks, sign, a '$', digits with grouping
// commas, a decimal point, an exponent, or parentheses for a negative; "" is not numeric.
[[nodiscard]] bool IsNumeric(std::string_view s);
// The value of text that IsNumeric accepts; nullopt otherwise.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view s);

}  // namespace trellin
