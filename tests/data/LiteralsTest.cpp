#include <gtest/gtest.h>

#include "core/host/Database.h"

namespace trellin {
namespace {

TEST(Literals, Dates) {
  struct Case {
    Date date;
    const char* expected;
  } cases[] = {
      {Date::FromYmd(2024, 3, 31), "#2024-03-31#"},
      {Date::FromYmd(1999, 1, 2), "#1999-01-02#"},
      {Date::FromYmdHms(2024, 3, 31, 17, 5, 9), "#2024-03-31 17:05:09#"},
      {Date::FromYmdHms(2024, 6, 30, 0, 0, 1), "#2024-06-30 00:00:01#"},
  };
  for (const auto& c : cases) EXPECT_EQ(Database::SQLDate(c.date), c.expected) << c.expected;
}

TEST(Literals, Strings) {
  struct Case {
    const char* text;
    const char* expected;
  } cases[] = {
      {"", "''"},
      {"ABC", "'ABC'"},
      {"O'Brien", "'O''Brien'"},
      {"''", "''''''"},
      {"Smith & Sons \"Ltd\"", "'Smith & Sons \"Ltd\"'"},
  };
  for (const auto& c : cases) EXPECT_EQ(Database::SQLString(c.text), c.expected) << c.text;
}

TEST(Literals, Numbers) {
  EXPECT_EQ(Database::SQLNumber(90), "90");
  EXPECT_EQ(Database::SQLNumber(std::int64_t{-9999999999}), "-9999999999");
  EXPECT_EQ(Database::SQLNumber(12.5), "12.5");
  EXPECT_EQ(Database::SQLNumber(0.1), "0.1");
  EXPECT_EQ(Database::SQLNumber(-3.0), "-3");
  struct MoneyCase {
    std::int64_t raw;
    const char* expected;
  } money[] = {
      {0, "0"},
      {10000, "1"},
      {12345678, "1234.5678"},
      {-1, "-0.0001"},
      {-1234500, "-123.45"},
      {123456789012340000, "12345678901234"},
      {INT64_MIN, "-922337203685477.5808"},
  };
  for (const auto& c : money) {
    EXPECT_EQ(Database::SQLNumber(Currency::FromRaw(c.raw)), c.expected) << c.raw;
  }
  EXPECT_EQ(Database::SQLNumber(Variant(Currency::FromRaw(5))), "0.0005");
  EXPECT_EQ(Database::SQLNumber(Variant(std::int64_t{42})), "42");
  EXPECT_EQ(Database::SQLNumber(Variant("1,234.50")), "1234.5");
  EXPECT_THROW((void)Database::SQLNumber(Variant::Null()), DatabaseError);
  EXPECT_THROW((void)Database::SQLNumber(Variant("abc")), DatabaseError);
  EXPECT_THROW((void)Database::SQLNumber(1.0 / 0.0), DatabaseError);
}

TEST(Literals, BooleansAndExpressions) {
  EXPECT_EQ(Database::SQLBoolean(true), "True");
  EXPECT_EQ(Database::SQLBoolean(false), "False");
  EXPECT_EQ(Database::SQLIIf("[Value]<0", "[Value]", "0"), "IIf([Value]<0,[Value],0)");
  EXPECT_EQ(Database::SQLIsNull("Sum(Value)", "0"), "IIf(Sum(Value) Is Null,0,Sum(Value))");
}

}  // namespace
}  // namespace trellin
