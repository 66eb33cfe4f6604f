// WHERE text and description builders.

#include <gtest/gtest.h>

#include "Fakes.h"
#include "core/ReportUtilities.h"
#include "platform/runtime/Date.h"

namespace trellin::testing {
namespace {

const Variant kNull = Variant::Null();
Variant Day(int y, int m, int d) { return Variant(Date::FromYmd(y, m, d)); }

TEST(AppendSQLCondition, EveryConditionEndsInOneBlankAndTheyJoinWithAnd) {
  struct Case {
    std::string where, condition, expected;
  } cases[] = {
      {"", "a=1", "a=1 "},
      {"a=1 ", "b=2", "a=1  AND b=2 "},
      {"a=1  AND b=2 ", "c=3", "a=1  AND b=2  AND c=3 "},
      {"a=1 ", "", "a=1 "},
      {"", "", ""},
  };
  for (const Case& c : cases) {
    std::string where = c.where;
    AppendSQLCondition(where, c.condition);
    EXPECT_EQ(where, c.expected) << "'" << c.where << "' + '" << c.condition << "'";
  }
}

TEST(AppendDescription, NewLineOrInlineComma) {
  struct Case {
    std::string description, text;
    bool inline_;
    std::string expected;
  } cases[] = {
      {"", "Customers: A1", false, "Customers: A1"},
      {"Summary", "Customers: A1", false, "Summary\r\nCustomers: A1"},
      {"", "sorted by code", true, ", sorted by code"},
      {"Summary", "sorted by code", true, "Summary, sorted by code"},
      {"Summary", "", true, "Summary"},
      {"Summary", "", false, "Summary"},
  };
  for (const Case& c : cases) {
    std::string description = c.description;
    AppendDescription(description, c.text, c.inline_);
    EXPECT_EQ(description, c.expected) << "'" << c.description << "' + '" << c.text << "'";
  }
  std::string description = "Summary";
  AppendNamedValueDescription(description, "Customers", "A100..A199");
  EXPECT_EQ(description, "Summary\r\nCustomers: A100..A199");
}

TEST(AppendDateRangeCondition, UpperBoundIsTheNextDayExclusive) {
  ServiceFixture service;
  struct Case {
    Variant from, to;
    std::string title, where, description;
  } cases[] = {
      {kNull, Day(2024, 3, 31), "Dated", "Transactions.Date<#2024-04-01# ", "Dated to 31/03/2024"},
      {Day(2024, 3, 1), Day(2024, 3, 31), "Dated",
       "Transactions.Date>=#2024-03-01#  AND Transactions.Date<#2024-04-01# ",
       "Dated from 01/03/2024 to 31/03/2024"},
      {Day(2024, 3, 1), kNull, "Dated", "Transactions.Date>=#2024-03-01# ",
       "Dated from 01/03/2024"},
      {kNull, kNull, "Dated", "", ""},
      {Variant::Missing(), Variant(), "Dated", "", ""},
      {Variant(""), Variant("  "), "Dated", "", ""},
      // The last day of a year rolls over into the next.
      {kNull, Day(2023, 12, 31), "", "Transactions.Date<#2024-01-01# ", ""},
      // Date text from the dialogue is read as a date.
      {Variant("1/02/2024"), Variant("29/02/2024"), "",
       "Transactions.Date>=#2024-02-01#  AND Transactions.Date<#2024-03-01# ", ""},
      // A time on the last day does not move the bound past midnight.
      {kNull, Variant(Date::FromYmdHms(2024, 3, 31, 17, 5, 0)), "",
       "Transactions.Date<#2024-04-01# ", ""},
  };
  for (const Case& c : cases) {
    std::string where, description;
    AppendDateRangeCondition(where, "Transactions.Date", c.from, c.to, c.title, description);
    EXPECT_EQ(where, c.where) << c.from.Text() << " .. " << c.to.Text();
    EXPECT_EQ(description, c.description) << c.from.Text() << " .. " << c.to.Text();
  }
}

TEST(AppendDateRangeCondition, TextThatIsNoDateIsATypeMismatch) {
  ServiceFixture service;
  std::string where, description;
  EXPECT_THROW(AppendDateRangeCondition(where, "Date", kNull, Variant("soon"), "", description),
               TypeMismatch);
}

TEST(AppendSQLWhereFromDateRange, AddsConditionsOnlyAndReturnsNothing) {
  ServiceFixture fixture;
  std::string where = "Posted=True ";
  EXPECT_EQ(fixture.service.AppendSQLWhereFromDateRange(where, "Date", Day(2024, 1, 1), kNull), "");
  EXPECT_EQ(where, "Posted=True  AND Date>=#2024-01-01# ");
}

TEST(AppendNumberRangeCondition, SentinelEndsAreOpen) {
  ServiceFixture service;
  const Currency lo = kNumberRangeMinimum;
  const Currency hi = kNumberRangeMaximum;
  struct Case {
    Currency from, to;
    std::string where, description;
  } cases[] = {
      {lo, hi, "", ""},
      {Currency::FromWhole(0), hi, "Value>=0 ", "Amount from 0.00"},
      {lo, Currency::FromWhole(100), "Value<=100 ", "Amount to 100.00"},
      {Currency::FromRaw(105000), Currency::FromRaw(992500), "Value>=10.5  AND Value<=99.25 ",
       "Amount from 10.50 to 99.25"},
      {Currency::FromWhole(-5), Currency::FromWhole(-5), "Value>=-5  AND Value<=-5 ",
       "Amount from -5.00 to -5.00"},
  };
  for (const Case& c : cases) {
    std::string where, description;
    AppendNumberRangeCondition(where, "Value", c.from, c.to, lo, hi, "Amount", description, "0.00");
    EXPECT_EQ(where, c.where) << c.from.ToString() << " .. " << c.to.ToString();
    EXPECT_EQ(description, c.description) << c.from.ToString() << " .. " << c.to.ToString();
  }
}

TEST(CreateSQLWhereFromNumberRange, TurnsValuesToMoneyAndSkipsTheSentinels) {
  ServiceFixture fixture;
  struct Case {
    Variant from, to;
    std::string where;
  } cases[] = {
      {Variant(std::int64_t{-9999999999}), Variant(std::int64_t{9999999999}), ""},
      {Variant(0), Variant(std::int64_t{9999999999}), "Value>=0 "},
      {Variant("12.5"), Variant(std::int64_t{9999999999}), "Value>=12.5 "},
      {Variant(std::int64_t{-9999999999}), Variant(250.75), "Value<=250.75 "},
  };
  for (const Case& c : cases) {
    std::string where;
    EXPECT_EQ(fixture.service.CreateSQLWhereFromNumberRange(where, "Value", c.from, c.to), "");
    EXPECT_EQ(where, c.where) << c.from.Text() << " .. " << c.to.Text();
  }
  std::string where;
  EXPECT_THROW(
      (void)fixture.service.CreateSQLWhereFromNumberRange(where, "Value", Variant("abc"), 0),
      TypeMismatch);
}

}  // namespace
}  // namespace trellin::testing
