#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/business/CompanyRounder.h"

namespace trellin::business {
namespace {

struct RoundCase {
  double value;
  int digits;
  double expected;
};

TEST(RounderTest, RoundsDoublesHalfAwayFromZeroAtEveryDigits) {
  const RoundCase cases[] = {
      {1.23456, 4, 1.2346}, {1.23455, 4, 1.2346}, {-1.23455, 4, -1.2346},
      {2.675, 2, 2.68},     {-2.675, 2, -2.68},   {1.005, 2, 1.01},
      {0.125, 2, 0.13},     {1.2345, 3, 1.235},   {-1.2345, 3, -1.235},
      {0.05, 1, 0.1},       {-0.05, 1, -0.1},     {2.5, 0, 3},
      {-2.5, 0, -3},        {1.4999, 0, 1},       {15, -1, 20},
      {-15, -1, -20},       {14.9, -1, 10},       {150, -2, 200},
      {-149.99, -2, -100},  {499, -3, 0},         {500, -3, 1000},
      {-500, -3, -1000},    {1499.99, -3, 1000},  {123456789.5, 0, 123456790},
  };
  CompanyRounder rounder;
  for (const RoundCase& c : cases) {
    Variant result = rounder.Round(Variant(c.value), c.digits);
    ASSERT_TRUE(result.Get<double>()) << c.value << " to " << c.digits;
    EXPECT_DOUBLE_EQ(*result.Get<double>(), c.expected) << c.value << " to " << c.digits;
  }
}

TEST(RounderTest, CurrencyStaysExactAndOtherKindsBecomeDouble) {
  CompanyRounder rounder;
  EXPECT_EQ(rounder.Round(Variant(Currency::FromRaw(4995000)), -3),
            Variant(Currency::FromWhole(0)));
  EXPECT_EQ(rounder.Round(Variant(Currency::FromRaw(5000000)), -3),
            Variant(Currency::FromWhole(1000)));
  EXPECT_EQ(rounder.Round(Variant(Currency::FromRaw(-12345)), 2),
            Variant(Currency::FromRaw(-12300)));
  EXPECT_EQ(rounder.Round(Variant(Currency::FromRaw(-12350)), 2),
            Variant(Currency::FromRaw(-12400)));
  EXPECT_EQ(rounder.Round(Variant(std::int64_t{1500}), -3), Variant(2000.0));
  EXPECT_EQ(rounder.Round(Variant("2.675"), 2), Variant(2.68));
  EXPECT_TRUE(rounder.Round(Variant::Null(), 2).IsNull());
  EXPECT_TRUE(rounder.Round(Variant(), 2).IsEmpty());
}

TEST(RounderTest, RefusesDigitsOutOfRangeAndValuesThatAreNotNumbers) {
  CompanyRounder rounder;
  for (int digits : {5, -4}) {
    try {
      (void)rounder.Round(Variant(1.0), digits);
      ADD_FAILURE() << "digits " << digits;
    } catch (const std::invalid_argument& e) {
      EXPECT_EQ(std::string(e.what()),
                "Round takes 4 down to -3 digits, not " + std::to_string(digits) + ".");
    }
  }
  EXPECT_THROW((void)rounder.Round(Variant("abc"), 2), TypeMismatch);
  EXPECT_THROW((void)rounder.Round(Variant(true), 2), TypeMismatch);
}

}  // namespace
}  // namespace trellin::business
