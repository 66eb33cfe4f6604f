#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "platform/business/CompanyRangeBuilder.h"

namespace trellin::business {
namespace {

struct ConditionCase {
  const char* value;
  int data_type;
  const char* expected;
};

TEST(RangeBuilderTest, BuildsConditionsFromListText) {
  const ConditionCase cases[] = {
      {"A100", 8, "F='A100'"},
      {"  A100  ", 8, "F='A100'"},
      {"A100,B7", 8, "F IN ('A100','B7')"},
      {"A100, B7, A100", 8, "F IN ('A100','B7')"},
      {"A100..A199", 8, "(F>='A100' AND F<='A199')"},
      {"A100 .. A199", 8, "(F>='A100' AND F<='A199')"},
      {"..A199", 8, "F<='A199'"},
      {"A100..", 8, "F>='A100'"},
      {"B7,A100..A199,C1..C9,D", 8,
       "F IN ('B7','D') OR (F>='A100' AND F<='A199') OR (F>='C1' AND F<='C9')"},
      {"X1,A100..", 8, "F='X1' OR F>='A100'"},
      // "-" is part of a code, never a range mark.
      {"1-1100", 8, "F='1-1100'"},
      {"1-1100..1-1999", 8, "(F>='1-1100' AND F<='1-1999')"},
      {"1-1100,2-2000", 8, "F IN ('1-1100','2-2000')"},
      // Quotes keep commas and dots in a code; a doubled quote stands for itself.
      {"'X,Y'", 8, "F='X,Y'"},
      {"\"X,Y\",Z", 8, "F IN ('X,Y','Z')"},
      {"'A..B'", 8, "F='A..B'"},
      {"'O''Brien'", 8, "F='O''Brien'"},
      {"\"O'Brien\"", 8, "F='O''Brien'"},
      {"O'Brien,D'Arcy", 8, "F IN ('O''Brien','D''Arcy')"},
      {"'X,Y'..'X,Z'", 8, "(F>='X,Y' AND F<='X,Z')"},
      {"a100..A199", 8, "(F>='a100' AND F<='A199')"},
      // Blank items are skipped; text with no code gives no condition.
      {"A,,B,", 8, "F IN ('A','B')"},
      {"", 8, ""},
      {" , ", 8, ""},
      // Numbers are placed as numbers.
      {"5", 3, "F=5"},
      {"5, 7,-2", 3, "F IN (5,7,-2)"},
      {"1..12.5", 3, "(F>=1 AND F<=12.5)"},
      {"'3'", 3, "F=3"},
      {"9..10", 3, "(F>=9 AND F<=10)"},
  };
  CompanyRangeBuilder builder;
  for (const ConditionCase& c : cases) {
    EXPECT_EQ(builder.BuildRangeCondition("F", c.value, c.data_type), c.expected)
        << "value: " << c.value << ", data type " << c.data_type;
  }
}

struct RefusalCase {
  const char* value;
  int data_type;
  const char* message;
};

TEST(RangeBuilderTest, RefusesBadTextNamingTheItem) {
  const RefusalCase cases[] = {
      {"A,'X,Y", 8, "The quote opened at position 3 is not closed in the list \"A,'X,Y\"."},
      {"'X'Y,Z", 8, "Unexpected text after the quoted code 'X' in the list \"'X'Y,Z\"."},
      {"A,..,B", 8, "\"..\" needs a code on at least one side in the list \"A,..,B\"."},
      {"A..B..C", 8, "A range has more than one \"..\" in the list \"A..B..C\"."},
      {"A199..A100", 8, "The range \"A199..A100\" runs backwards; put the lower code first."},
      {"10..9", 3, "The range \"10..9\" runs backwards; put the lower code first."},
      {"5,ABC", 3, "\"ABC\" is not a number, in the list \"5,ABC\"."},
      {"1-1100", 3, "\"1-1100\" is not a number, in the list \"1-1100\"."},
      {"$5", 3, "\"$5\" is not a number, in the list \"$5\"."},
      {"A", 5, "Data type 5 is not one a list condition is built for (8 text, 3 number)."},
  };
  CompanyRangeBuilder builder;
  for (const RefusalCase& c : cases) {
    try {
      (void)builder.BuildRangeCondition("F", c.value, c.data_type);
      ADD_FAILURE() << "accepted: " << c.value;
    } catch (const std::invalid_argument& e) {
      EXPECT_EQ(std::string(e.what()), c.message) << "value: " << c.value;
    }
  }
}

}  // namespace
}  // namespace trellin::business
