#include "platform/runtime/DateText.h"

#include <gtest/gtest.h>

#include "tests/support/CaseFile.h"

namespace trellin {
namespace {

// date_text.tsv: the text, the date it reads as, or "-" when it is refused.
TEST(DateTextTest, AcceptsDayFirstIsoAndNamedMonthFormsAndRefusesTheRest) {
  const auto rows = testing::ReadCases("runtime/date_text.tsv", 2, /*escapes=*/true);
  ASSERT_GT(rows.size(), 50u);
  for (const testing::CaseRow& row : rows) {
    const std::optional<Date> date = ParseDateText(row.fields[0]);
    if (row.fields[1] == "-") {
      EXPECT_FALSE(date.has_value()) << row.Where() << ": \"" << row.fields[0] << '"';
    } else {
      ASSERT_TRUE(date.has_value()) << row.Where() << ": \"" << row.fields[0] << '"';
      EXPECT_EQ(date->ToIso(), row.fields[1]) << row.Where() << ": \"" << row.fields[0] << '"';
    }
  }
}

}  // namespace
}  // namespace trellin
