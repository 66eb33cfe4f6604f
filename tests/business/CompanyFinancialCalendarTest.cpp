#include <gtest/gtest.h>

#include "platform/business/CompanyFinancialCalendar.h"
#include "platform/runtime/Clock.h"
#include "tests/business/CompanyFixture.h"

namespace trellin::business {
namespace {

TEST(CompanyFinancialCalendarTest, FindsTheYearHoldingADate) {
  auto database = testing::MakeCompany();
  CompanyFinancialCalendar calendar(*database);
  const struct {
    Date date;
    std::int64_t id;
  } cases[] = {
      {Date::FromYmd(2023, 4, 1), 3},
      {Date::FromYmd(2024, 3, 31), 3},
      // Closing entries carry a time on the last day; they still belong to that year.
      {Date::FromYmdHms(2024, 3, 31, 23, 59, 0), 3},
      {Date::FromYmd(2024, 4, 1), 4},
      {Date::FromYmd(2026, 2, 28), 5},
      {Date::FromYmd(2023, 3, 31), 0},
      {Date::FromYmd(2026, 4, 1), 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(calendar.YearIdFromDate(c.date), c.id) << c.date.ToIso();
  }
  FinancialYear year = calendar.Year(4);
  EXPECT_EQ(year.Name, "2024/25");
  EXPECT_EQ(year.DateStart, Date::FromYmd(2024, 4, 1));
  EXPECT_EQ(year.DateEnd, Date::FromYmd(2025, 3, 31));
  ASSERT_EQ(calendar.Years().size(), 3u);
  EXPECT_EQ(calendar.Years().front().Id, 3);
}

TEST(CompanyFinancialCalendarTest, UnknownYearIsNoSuchYear) {
  auto database = testing::MakeCompany();
  CompanyFinancialCalendar calendar(*database);
  try {
    (void)calendar.Year(99);
    ADD_FAILURE() << "year 99 found";
  } catch (const NoSuchYear& e) {
    EXPECT_STREQ(e.what(), "The company has no financial year with id 99.");
  }
}

TEST(CompanyFinancialCalendarTest, CurrentDatesComeFromSettingsElseToday) {
  SetClockForTesting(Date::FromYmdHms(2025, 6, 15, 10, 30, 0));
  auto database = testing::MakeCompany();
  database->SetSetting("Periods", "CurrentDateAR", "2025-05-31");
  database->SetSetting("Periods", "CurrentDateAP", "30/04/2025");
  CompanyFinancialCalendar calendar(*database);
  EXPECT_EQ(calendar.CurrentDateAR(), Date::FromYmd(2025, 5, 31));
  EXPECT_EQ(calendar.CurrentDateAP(), Date::FromYmd(2025, 4, 30));
  EXPECT_EQ(calendar.CurrentDateGL(), Date::FromYmd(2025, 6, 15));
  SetClockForTesting(std::nullopt);
}

TEST(CompanyFinancialCalendarTest, RefusesBadYearsAndSettings) {
  auto database = testing::MakeCompany();
  database->SetSetting("Periods", "CurrentDateGL", "soon");
  try {
    CompanyFinancialCalendar calendar(*database);
    ADD_FAILURE() << "bad current date accepted";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(),
                 "The company setting Periods/CurrentDateGL is \"soon\", which is not a date.");
  }
  try {
    CompanyFinancialCalendar calendar(
        {{7, "Odd", Date::FromYmd(2025, 4, 1), Date::FromYmd(2025, 3, 31)}}, {}, {}, {});
    ADD_FAILURE() << "backwards year accepted";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "The financial year \"Odd\" (id 7) ends before it starts.");
  }
  testing::FakeDatabase empty;
  EXPECT_THROW(CompanyFinancialCalendar{empty}, DatabaseError);
}

}  // namespace
}  // namespace trellin::business
