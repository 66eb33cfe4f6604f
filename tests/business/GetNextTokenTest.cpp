#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/business/CompanyUtilities.h"

namespace trellin::business {
namespace {

using Steps = std::vector<std::pair<std::string, std::int64_t>>;

// Every token of `text` with the position after it, read as the grouping split reads them: from
// position 1 until the position turns negative.
Steps ReadAll(const std::string& text, int delimiter) {
  CompanyUtilities utilities;
  Steps steps;
  std::int64_t position = 1;
  while (position >= 0 && steps.size() < 20) {
    std::string token = utilities.GetNextToken(text, position, delimiter);
    steps.emplace_back(token, position);
  }
  return steps;
}

TEST(GetNextTokenTest, ReadsTokensUntilThePositionTurnsNegative) {
  const struct {
    const char* text;
    int delimiter;
    Steps expected;
  } cases[] = {
      {"A", 44, {{"A", -1}}},
      {"A,B", 44, {{"A", 3}, {"B", -1}}},
      {"Customer [Page Break],Location", 44, {{"Customer [Page Break]", 23}, {"Location", -1}}},
      {" A , B ", 44, {{" A ", 5}, {" B ", -1}}},
      {"A,,B", 44, {{"A", 3}, {"", 4}, {"B", -1}}},
      {"A,", 44, {{"A", 3}, {"", -1}}},
      {"", 44, {{"", -1}}},
      {"\"X,Y\",Z", 44, {{"X,Y", 7}, {"Z", -1}}},
      {"\"say \"\"hi\"\"\",Z", 44, {{"say \"hi\"", 14}, {"Z", -1}}},
      {"A;B,C", 59, {{"A", 3}, {"B,C", -1}}},
      {"A\tB", 9, {{"A", 3}, {"B", -1}}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ReadAll(c.text, c.delimiter), c.expected) << "text: " << c.text;
  }
}

TEST(GetNextTokenTest, PositionOutsideTheTextGivesNoToken) {
  CompanyUtilities utilities;
  for (std::int64_t start : {0, -1, 5, 99}) {
    std::int64_t position = start;
    EXPECT_EQ(utilities.GetNextToken("A,B", position, 44), "") << "start " << start;
    EXPECT_EQ(position, -1) << "start " << start;
  }
  std::int64_t position = 3;
  EXPECT_EQ(utilities.GetNextToken("A,B", position, 44), "B");
  position = 1;
  EXPECT_THROW((void)utilities.GetNextToken("A,B", position, 300), std::invalid_argument);
}

}  // namespace
}  // namespace trellin::business
