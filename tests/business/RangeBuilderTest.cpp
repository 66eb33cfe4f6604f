#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "platform/business/CompanyRangeBuilder.h"
#include "tests/support/CaseFile.h"

namespace trellin::business {
namespace {

// range_text.tsv: the text typed, the data type, the condition or "! " and the refusal.
TEST(RangeBuilderTest, BuildsConditionsFromListTextAndRefusesBadTextNamingTheItem) {
  const auto rows = trellin::testing::ReadCases("business/range_text.tsv", 3);
  ASSERT_GT(rows.size(), 30u);
  CompanyRangeBuilder builder;
  for (const trellin::testing::CaseRow& row : rows) {
    const std::string& text = row.fields[0];
    const int data_type = std::stoi(row.fields[1]);
    const std::string& expected = row.fields[2];
    std::string built;
    try {
      built = builder.BuildRangeCondition("F", text, data_type);
    } catch (const std::invalid_argument& e) {
      built = std::string("! ") + e.what();
    }
    EXPECT_EQ(built, expected) << row.Where() << ": \"" << text << "\", data type " << data_type;
  }
}

}  // namespace
}  // namespace trellin::business
