#include "platform/runtime/Strings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include "tests/support/CaseFile.h"

namespace trellin {
namespace {

std::size_t Number(const std::string& text) {
  return text == "all" ? std::string::npos : std::stoul(text);
}

// The result of one row of strings.tsv: the function applied to the fields between the first
// and the last.
std::string Apply(const std::vector<std::string>& f) {
  const std::string& op = f[0];
  if (op == "trim") return Trim(f[1]);
  if (op == "ltrim") return LTrim(f[1]);
  if (op == "rtrim") return RTrim(f[1]);
  if (op == "ucase") return UCase(f[1]);
  if (op == "lcase") return LCase(f[1]);
  if (op == "mid") return Mid(f[1], Number(f[2]), Number(f[3]));
  if (op == "left") return Left(f[1], Number(f[2]));
  if (op == "right") return Right(f[1], Number(f[2]));
  if (op == "space") return Space(Number(f[1]));
  if (op == "instr") return std::to_string(InStr(f[1], f[2], Number(f[3]), f[4] == "ic"));
  if (op == "replace") return Replace(f[1], f[2], f[3], f[4] == "ic");
  if (op == "strcomp") return std::to_string(StrComp(f[1], f[2], f[3] == "ic"));
  if (op == "split") {
    const std::vector<std::string> items = Split(f[1], f[2]);
    EXPECT_EQ(Join(items, f[2]), f[1]) << "Join undoes Split";
    return Join(items, "|");
  }
  if (op == "numeric") {
    if (!IsNumeric(f[1])) return "-";
    const double value = *ParseNumber(f[1]);
    const double expected = std::strtod(f.back().c_str(), nullptr);
    return value == expected || std::abs(value - expected) <= 1e-12 * std::abs(expected)
               ? f.back()
               : std::to_string(value);
  }
  ADD_FAILURE() << "no function " << op;
  return {};
}

// strings.tsv: the function, its arguments, the result.
TEST(StringsTest, FunctionsOfTheReportLanguageAsListed) {
  const auto rows = testing::ReadCases("runtime/strings.tsv", 2, /*escapes=*/true);
  ASSERT_GT(rows.size(), 70u);
  for (const testing::CaseRow& row : rows) {
    EXPECT_EQ(Apply(row.fields), row.fields.back()) << row.Where();
  }
}

TEST(StringsTest, PositionsCountFromOne) {
  EXPECT_THROW((void)Mid("abc", 0), std::out_of_range);
  EXPECT_THROW((void)InStr("abc", "a", 0), std::out_of_range);
  EXPECT_TRUE(EqualsIgnoreCase("Round", "ROUND"));
  EXPECT_FALSE(EqualsIgnoreCase("Round", "Rounds"));
}

}  // namespace
}  // namespace trellin
