#include "platform/runtime/Date.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/CaseFile.h"

namespace trellin {
namespace {

TEST(DateTest, SerialsFollowTheSpreadsheetConvention) {
  struct Case {
    int year, month, day;
    std::int32_t serial;
    Weekday weekday;
  } cases[] = {
      {1899, 12, 30, 0, Weekday::Saturday},     {1899, 12, 31, 1, Weekday::Sunday},
      {1900, 1, 1, 2, Weekday::Monday},         {1900, 3, 1, 61, Weekday::Thursday},
      {2000, 2, 29, 36585, Weekday::Tuesday},   {2024, 3, 5, 45356, Weekday::Tuesday},
      {1800, 1, 1, -36522, Weekday::Wednesday},
  };
  for (const Case& c : cases) {
    Date d = Date::FromYmd(c.year, c.month, c.day);
    EXPECT_EQ(d.Serial(), c.serial) << c.year << "-" << c.month << "-" << c.day;
    EXPECT_EQ(d.DayOfWeek(), c.weekday) << c.serial;
    Date back = Date::FromSerial(c.serial);
    EXPECT_EQ(back.Year(), c.year);
    EXPECT_EQ(back.Month(), c.month);
    EXPECT_EQ(back.Day(), c.day);
  }
}

TEST(DateTest, RefusesDaysThatDoNotExist) {
  struct Case {
    int year, month, day;
    bool exists;
  } cases[] = {
      {2023, 2, 29, false}, {2024, 2, 29, true},  {1900, 2, 29, false}, {2000, 2, 29, true},
      {2024, 4, 31, false}, {2024, 13, 1, false}, {2024, 0, 1, false},  {2024, 1, 0, false},
      {10000, 1, 1, false}, {9999, 12, 31, true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Date::TryFromYmd(c.year, c.month, c.day).has_value(), c.exists)
        << c.year << "-" << c.month << "-" << c.day;
    if (!c.exists) {
      EXPECT_THROW((void)Date::FromYmd(c.year, c.month, c.day), std::invalid_argument);
    }
  }
  EXPECT_THROW((void)Date::FromYmdHms(2024, 1, 1, 24, 0, 0), std::invalid_argument);
}

// AddMonths, FirstOfMonth and LastOfMonth as listed in date_arithmetic.tsv.
TEST(DateTest, MonthArithmeticAsListed) {
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("runtime/date_arithmetic.tsv", 4)) {
    const std::vector<std::string>& f = row.fields;
    const Date date = *Date::FromIso(f[1]);
    if (f[0] == "months") {
      EXPECT_EQ(date.AddMonths(std::stoi(f[2])).ToIso(), f[3]) << row.Where();
    } else {
      EXPECT_EQ(date.FirstOfMonth().ToIso(), f[2]) << row.Where();
      EXPECT_EQ(date.LastOfMonth().ToIso(), f[3]) << row.Where();
    }
  }
  EXPECT_EQ(Date::FromYmd(2024, 2, 29).AddYears(1).ToIso(), "2025-02-28");
  EXPECT_EQ(Date::FromYmd(2024, 2, 29).AddYears(-4).ToIso(), "2020-02-29");
  EXPECT_THROW((void)Date::FromYmd(9999, 12, 1).AddMonths(1), std::out_of_range);
}

TEST(DateTest, IsoTextReadsAndWritesTheStorageForm) {
  struct Case {
    const char* text;
    const char* stored;  // nullptr when refused
  } cases[] = {
      {"2024-03-05", "2024-03-05"},
      {"2024-03-05 14:05:09", "2024-03-05 14:05:09"},
      {"2024-03-05T14:05:09", "2024-03-05 14:05:09"},
      {"2024-03-05 14:05", "2024-03-05 14:05:00"},
      {"2024-03-05 14:05:09.250", "2024-03-05 14:05:09"},
      {"2024-03-05 00:00:00", "2024-03-05"},
      {"2024-3-5", nullptr},
      {"2024-02-30", nullptr},
      {"2024-03-05 24:00:00", nullptr},
      {"2024-03-05x", nullptr},
      {"05/03/2024", nullptr},
      {"", nullptr},
  };
  for (const Case& c : cases) {
    std::optional<Date> d = Date::FromIso(c.text);
    if (c.stored) {
      ASSERT_TRUE(d.has_value()) << c.text;
      EXPECT_EQ(d->ToIso(), c.stored) << c.text;
    } else {
      EXPECT_FALSE(d.has_value()) << c.text;
    }
  }
}

TEST(DateTest, TimeOfDayIsExactAndOrdersAfterTheDay) {
  Date d = Date::FromYmdHms(2024, 3, 5, 23, 59, 59);
  EXPECT_EQ(d.Hour(), 23);
  EXPECT_EQ(d.Minute(), 59);
  EXPECT_EQ(d.Second(), 59);
  EXPECT_TRUE(d.HasTime());
  EXPECT_EQ(d.DateOnly(), Date::FromYmd(2024, 3, 5));
  EXPECT_LT(Date::FromYmd(2024, 3, 5), d);
  EXPECT_LT(d, Date::FromYmd(2024, 3, 6));
  EXPECT_DOUBLE_EQ(Date::FromYmdHms(1899, 12, 31, 12, 0, 0).ToDouble(), 1.5);
  EXPECT_EQ(d.AddDays(1).ToIso(), "2024-03-06 23:59:59");
}

}  // namespace
}  // namespace trellin
