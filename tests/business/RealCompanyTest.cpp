#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/business/CompanyApplication.h"
#include "platform/business/CompanyBusinessLayer.h"
#include "platform/runtime/Strings.h"
#include "tests/business/RealCompany.h"

namespace trellin::business {
namespace {

std::vector<std::string> Column(Database& database, const std::string& sql) {
  std::vector<std::string> values;
  for (auto rs = database.Query(sql); !rs->Eof(); rs->MoveNext()) {
    values.push_back(rs->Value(0).Text());
  }
  return values;
}

TEST(RealCompanyTest, ReadsSettingsAndCalendarFromTheCompanyFile) {
  testing::RealCompany company;
  CompanyBusinessLayer layer(company.Database());
  CompanyApplication application(company.Database());
  EXPECT_EQ(layer.DateFormat(), "dd/mm/yyyy");
  EXPECT_EQ(layer.LongDateFormat(), "d mmmm yyyy");
  EXPECT_EQ(layer.CurrencyFormat(0), "$#,##0.00;($#,##0.00)");
  EXPECT_DOUBLE_EQ(application.Tax().Rate(), 12.5);
  EXPECT_EQ(application.FinancialCalendar().YearIdFromDate(Date::FromYmd(2025, 1, 15)), 2);
  EXPECT_EQ(application.FinancialCalendar().YearIdFromDate(Date::FromYmd(2025, 4, 1)), 0);
  EXPECT_EQ(application.FinancialCalendar().Year(1).DateEnd, Date::FromYmd(2024, 3, 31));
  EXPECT_THROW((void)application.FinancialCalendar().Year(3), NoSuchYear);
  EXPECT_EQ(application.FinancialCalendar().CurrentDateAR(), Date::FromYmd(2025, 3, 31));
  EXPECT_EQ(application.SubstituteString("<Company>, <Year>", Date::FromYmd(2024, 6, 30)),
            "Harbour Traders, 2024/25");
}

TEST(RealCompanyTest, ListConditionsSelectTheRightRows) {
  testing::RealCompany company;
  Database& database = *company.Database();
  CompanyRangeBuilder builder;
  const struct {
    const char* field;
    const char* value;
    int data_type;
    std::vector<std::string> expected;
  } cases[] = {
      // Codes compare without regard to case, as the company file keeps them.
      {"OtherPartyId", "A100..A199", 8, {"A100", "a150", "A199"}},
      {"OtherPartyId", "..A150", 8, {"A100", "a150"}},
      {"OtherPartyId", "a199..", 8, {"A199", "B7", "O'Neil", "X,Y"}},
      {"OtherPartyId", "'X,Y', b7", 8, {"B7", "X,Y"}},
      {"OtherPartyId", "O'Neil", 8, {"O'Neil"}},
      {"OtherPartyId", "A100,B7..B9", 8, {"A100", "B7"}},
      {"Status", "2..3, 5", 3, {"A199", "X,Y", "a150"}},
  };
  for (const auto& c : cases) {
    std::string sql = "SELECT OtherPartyId FROM OtherParty WHERE " +
                      builder.BuildRangeCondition(c.field, c.value, c.data_type) +
                      " ORDER BY OtherPartyId";
    std::vector<std::string> found = Column(database, sql);
    std::sort(found.begin(), found.end());
    std::vector<std::string> expected = c.expected;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(found, expected) << c.value;
  }
  EXPECT_EQ(Column(database, "SELECT AccountId FROM Account WHERE " +
                                 builder.BuildRangeCondition("AccountId", "1-1100..1-1999", 8)),
            (std::vector<std::string>{"1-1100", "1-1999"}));
}

TEST(RealCompanyTest, UserDefinedPickListRunsOnTheCompanyFile) {
  testing::RealCompany company;
  CompanyApplication application(company.Database());
  Parameters parameters;
  application.AddUserDefinedParametersOtherParty(parameters, false);
  ASSERT_TRUE(parameters.Exists("OtherParty.UserDefined1"));
  EXPECT_EQ(Column(*company.Database(), parameters.Item("OtherParty.UserDefined1").ListSQL),
            (std::vector<std::string>{"North", "South"}));
}

}  // namespace
}  // namespace trellin::business
