#include "platform/runtime/Currency.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>

#include "tests/support/CaseFile.h"

namespace trellin {
namespace {

TEST(CurrencyTest, MillionAdditionsOfOneTenThousandthIsExactlyOneHundred) {
  Currency step = Currency::FromDouble(0.0001);
  Currency sum;
  for (int i = 0; i < 1000000; ++i) sum += step;
  EXPECT_EQ(sum, Currency::FromWhole(100));
  EXPECT_EQ(sum.ToString(), "100");
}

// currency.tsv: the operation, its input and argument, the result.
TEST(CurrencyTest, ConversionsRoundingAndScalingAsListed) {
  const auto rows = testing::ReadCases("runtime/currency.tsv", 4);
  ASSERT_GT(rows.size(), 60u);
  for (const testing::CaseRow& row : rows) {
    const std::string& op = row.fields[0];
    const std::string& input = row.fields[1];
    const std::string& argument = row.fields[2];
    std::string result;
    if (op == "from-double") {
      result = std::to_string(Currency::FromDouble(std::strtod(input.c_str(), nullptr)).Raw());
    } else if (op == "parse") {
      const std::optional<Currency> parsed = Currency::Parse(input);
      result = parsed ? std::to_string(parsed->Raw()) : "-";
    } else if (op == "to-string") {
      result = Currency::FromRaw(std::stoll(input)).ToString();
    } else if (op == "round") {
      result = Currency::Parse(input)->Round(std::stoi(argument)).ToString();
    } else if (op == "times") {
      result = Currency::Parse(input)->Times(std::strtod(argument.c_str(), nullptr)).ToString();
    } else if (op == "divided-by") {
      result = Currency::Parse(input)->DividedBy(std::strtod(argument.c_str(), nullptr)).ToString();
    } else {
      ADD_FAILURE() << row.Where() << ": no operation " << op;
    }
    EXPECT_EQ(result, row.fields[3])
        << row.Where() << ": " << op << " \"" << input << "\" " << argument;
  }
}

TEST(CurrencyTest, FromDoubleRefusesWhatItCannotHold) {
  for (double bad : {std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::quiet_NaN(), 1e15, -1e16}) {
    EXPECT_THROW((void)Currency::FromDouble(bad), std::range_error) << bad;
  }
}

TEST(CurrencyTest, RoundingAndScalingRefuseWhatTheyCannotDo) {
  EXPECT_THROW((void)Currency::FromWhole(1).Round(5), std::out_of_range);
  EXPECT_THROW((void)Currency::FromWhole(1).Round(-4), std::out_of_range);
  EXPECT_THROW((void)Currency::FromWhole(1).DividedBy(0), std::domain_error);
  EXPECT_THROW((void)Currency::FromWhole(1).DividedBy(1e-30), std::range_error);
  EXPECT_THROW((void)Currency::FromWhole(1000000000).Times(1e10), std::range_error);
}

TEST(CurrencyTest, OverflowIsAnErrorNotAWrapAround) {
  const Currency max = Currency::FromRaw(std::numeric_limits<std::int64_t>::max());
  const Currency min = Currency::FromRaw(std::numeric_limits<std::int64_t>::min());
  EXPECT_THROW((void)(max + Currency::FromRaw(1)), std::range_error);
  EXPECT_THROW((void)(min - Currency::FromRaw(1)), std::range_error);
  EXPECT_THROW((void)(-min), std::range_error);
  EXPECT_THROW((void)(max * 2), std::range_error);
  EXPECT_THROW((void)Currency::FromWhole(1000000000000000), std::range_error);
  EXPECT_EQ((max - max).Raw(), 0);
  EXPECT_EQ(-Currency::FromWhole(3), Currency::FromWhole(-3));
}

}  // namespace
}  // namespace trellin
