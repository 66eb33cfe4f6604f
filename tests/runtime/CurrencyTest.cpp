#include "platform/runtime/Currency.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace trellin {
namespace {

TEST(CurrencyTest, MillionAdditionsOfOneTenThousandthIsExactlyOneHundred) {
  Currency step = Currency::FromDouble(0.0001);
  Currency sum;
  for (int i = 0; i < 1000000; ++i) sum += step;
  EXPECT_EQ(sum, Currency::FromWhole(100));
  EXPECT_EQ(sum.ToString(), "100");
}

TEST(CurrencyTest, FromDoubleRoundsTheDecimalTheUserWrote) {
  struct Case {
    double value;
    std::int64_t raw;
  } cases[] = {
      {2.675, 26750},
      {0.1 + 0.2, 3000},
      {1.00005, 10001},
      {-1.00005, -10001},
      {1.00004999, 10000},
      {-0.00005, -1},
      {0.00004, 0},
      {1234567.8912, 12345678912},
      {-2.675, -26750},
      {1e14, 1000000000000000000},
      {0.0, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Currency::FromDouble(c.value).Raw(), c.raw) << c.value;
  }
}

TEST(CurrencyTest, FromDoubleRefusesWhatItCannotHold) {
  for (double bad : {std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::quiet_NaN(), 1e15, -1e16}) {
    EXPECT_THROW((void)Currency::FromDouble(bad), std::range_error) << bad;
  }
}

TEST(CurrencyTest, ParseAcceptsMoneyTextAndRefusesTheRest) {
  struct Case {
    const char* text;
    std::optional<std::int64_t> raw;
  } cases[] = {
      {"-1234.5", -12345000},
      {"1,234.56", 12345600},
      {"(12.00)", -120000},
      {"$5", 50000},
      {" -$5.25 ", -52500},
      {"1.50000", 15000},
      {"0.0001", 1},
      {"922337203685477.5807", std::numeric_limits<std::int64_t>::max()},
      {"1.00001", std::nullopt},
      {"922337203685477.5808", std::nullopt},
      {"", std::nullopt},
      {"abc", std::nullopt},
      {"1,2,", std::nullopt},
      {",12", std::nullopt},
      {"12-", std::nullopt},
      {"(-5)", std::nullopt},
      {"$", std::nullopt},
  };
  for (const Case& c : cases) {
    std::optional<Currency> parsed = Currency::Parse(c.text);
    if (c.raw) {
      ASSERT_TRUE(parsed.has_value()) << c.text;
      EXPECT_EQ(parsed->Raw(), *c.raw) << c.text;
    } else {
      EXPECT_FALSE(parsed.has_value()) << c.text;
    }
  }
}

TEST(CurrencyTest, ToStringUsesAsFewDecimalsAsNeeded) {
  struct Case {
    std::int64_t raw;
    const char* text;
  } cases[] = {
      {12345000, "1234.5"},
      {-1, "-0.0001"},
      {0, "0"},
      {-12345678, "-1234.5678"},
      {std::numeric_limits<std::int64_t>::min(), "-922337203685477.5808"},
  };
  for (const Case& c : cases) EXPECT_EQ(Currency::FromRaw(c.raw).ToString(), c.text) << c.raw;
}

TEST(CurrencyTest, RoundIsHalfAwayFromZeroFromFourDownToMinusThree) {
  struct Case {
    const char* value;
    int digits;
    const char* expected;
  } cases[] = {
      {"1.2346", 4, "1.2346"},  {"1.2345", 3, "1.235"},
      {"-1.2345", 3, "-1.235"}, {"1.2344", 3, "1.234"},
      {"2.675", 2, "2.68"},     {"-2.675", 2, "-2.68"},
      {"2.665", 2, "2.67"},     {"0.5", 0, "1"},
      {"-0.5", 0, "-1"},        {"1.4999", 0, "1"},
      {"2.5", 0, "3"},          {"15", -1, "20"},
      {"-15", -1, "-20"},       {"149.99", -2, "100"},
      {"150", -2, "200"},       {"499", -3, "0"},
      {"500", -3, "1000"},      {"-500", -3, "-1000"},
      {"-499.9999", -3, "0"},   {"1234567.8", -3, "1235000"},
  };
  for (const Case& c : cases) {
    std::optional<Currency> value = Currency::Parse(c.value);
    ASSERT_TRUE(value.has_value()) << c.value;
    EXPECT_EQ(value->Round(c.digits).ToString(), c.expected) << c.value << " to " << c.digits;
  }
  EXPECT_THROW((void)Currency::FromWhole(1).Round(5), std::out_of_range);
  EXPECT_THROW((void)Currency::FromWhole(1).Round(-4), std::out_of_range);
}

TEST(CurrencyTest, TimesAndDividedByRoundToTheTenThousandth) {
  struct Case {
    const char* amount;
    double factor;
    const char* times;
    const char* divided;
  } cases[] = {
      {"100", 0.15, "15", "666.6667"},
      {"-100", 0.15, "-15", "-666.6667"},
      {"10", 3, "30", "3.3333"},
      {"20", 3, "60", "6.6667"},
      {"0.0001", 0.5, "0.0001", "0.0002"},
      {"-0.0001", 0.5, "-0.0001", "-0.0002"},
      {"123.45", 1.1, "135.795", "112.2273"},
      {"1", 1e-30, "0", ""},
      {"1000000", 1e6, "1000000000000", "1"},
  };
  for (const Case& c : cases) {
    Currency amount = *Currency::Parse(c.amount);
    EXPECT_EQ(amount.Times(c.factor).ToString(), c.times) << c.amount << " * " << c.factor;
    if (*c.divided != '\0') {
      EXPECT_EQ(amount.DividedBy(c.factor).ToString(), c.divided) << c.amount << " / " << c.factor;
    }
  }
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
