#include <gtest/gtest.h>

#include "platform/business/CompanyApplication.h"
#include "platform/runtime/Clock.h"
#include "tests/business/CompanyFixture.h"

namespace trellin::business {
namespace {

// Defaults where the company says nothing; each kind of setting (text, Boolean in its spellings,
// number) read from its own; a setting that does not read as its kind is an error naming it.
TEST(CompanyApplicationTest, ReadsOptionsAndTaxFromSettings) {
  auto database = testing::MakeCompany();
  CompanyApplication defaults(database);
  EXPECT_EQ(defaults.Options().Country(), "NZ");
  EXPECT_TRUE(defaults.Options().SuburbInCityField());
  EXPECT_EQ(defaults.Tax().TaxName(), "GST");
  EXPECT_DOUBLE_EQ(defaults.Tax().Rate(), 15);

  database->SetSetting("Company", "Country", "AU");
  database->SetSetting("Options", "SuburbInCityField", "False");
  database->SetSetting("Options", "ItemCodeSetting", "3");
  database->SetSetting("Options", "JobActualCharges", "Yes");
  database->SetSetting("Tax", "Rate", "10");
  database->SetSetting("UserDefinedFields", "Item.2.Name", "Colour");
  CompanyApplication own(database);
  EXPECT_EQ(own.Options().Country(), "AU");
  EXPECT_FALSE(own.Options().SuburbInCityField());
  EXPECT_EQ(own.Options().ItemCodeSetting(), 3);
  EXPECT_TRUE(own.Options().JobActualCharges());
  EXPECT_DOUBLE_EQ(own.Tax().Rate(), 10);
  EXPECT_EQ(own.Options().UserDefinedFields(UserDefinedKind::Item, 2).Name, "Colour");
  EXPECT_THROW((void)own.Options().UserDefinedFields(UserDefinedKind::Item, 21), std::out_of_range);

  database->SetSetting("Options", "SuburbInCityField", "Perhaps");
  try {
    CompanyApplication bad(database);
    ADD_FAILURE() << "bad Boolean accepted";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(),
                 "The company setting Options/SuburbInCityField is \"Perhaps\", which is not True "
                 "or False.");
  }
}

TEST(CompanyApplicationTest, AddsOneListParameterPerUserDefinedField) {
  auto database = testing::MakeCompany();
  database->SetSetting("UserDefinedFields", "OtherParty.1.Name", "Region");
  database->SetSetting("UserDefinedFields", "OtherParty.3.Name", "Rep");
  database->SetSetting("UserDefinedFields", "OtherParty.3.Type", "4");
  database->SetSetting("UserDefinedFields", "Item.1.Name", "Colour");
  CompanyApplication application(database);

  Parameters parameters;
  application.AddUserDefinedParametersOtherParty(parameters, true);
  ASSERT_EQ(parameters.Count(), 2u);
  const Parameter& region = parameters.Item("OtherParty.UserDefined1");
  EXPECT_EQ(region.Caption, "Region");
  EXPECT_EQ(region.Type(), 4);
  EXPECT_TRUE(region.Primary);
  EXPECT_EQ(region.Value, Variant(""));
  EXPECT_EQ(region.SQLField, "OtherParty.UserDefined1");
  EXPECT_EQ(region.KeyField, "UserDefined1");
  EXPECT_EQ(region.ListSQL,
            "SELECT DISTINCT UserDefined1,'' AS Description FROM OtherParty WHERE UserDefined1 Is "
            "Not Null ORDER BY UserDefined1");
  const Parameter& rep = parameters.Item("OtherParty.UserDefined3");
  EXPECT_EQ(rep.ListSQL, "SELECT EmployeeId,Name FROM Employee ORDER BY EmployeeId");
  EXPECT_EQ(rep.KeyField, "EmployeeId");
  EXPECT_EQ(rep.SQLField, "OtherParty.UserDefined3");

  application.AddUserDefinedParametersItem(parameters, false, Variant("Red"));
  EXPECT_EQ(parameters.Value("Item.UserDefined1"), Variant("Red"));
  EXPECT_FALSE(parameters.Item("Item.UserDefined1").Primary);
  application.AddUserDefinedParametersAsset(parameters, false);
  application.AddUserDefinedParametersTransactions(parameters, false);
  EXPECT_EQ(parameters.Count(), 3u);
}

TEST(CompanyApplicationTest, SubstitutesPlaceHolders) {
  SetClockForTesting(Date::FromYmd(2025, 7, 9));
  auto database = testing::MakeCompany();
  database->SetSetting("Company", "Name", "Harbour Traders <Date> Ltd");
  CompanyApplication application(database);
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"Statement for <Company>", "Statement for Harbour Traders <Date> Ltd"},
      {"as at <DateAsAt>, printed <date>", "as at 31/03/2025, printed 9/07/2025"},
      {"<LongDateAsAt>", "31 March 2025"},
      {"Year <Year> from <YearStart> to <YearEnd>", "Year 2024/25 from 1/04/2024 to 31/03/2025"},
      {"<TaxName> return", "GST return"},
      {"<Unknown> and < stay", "<Unknown> and < stay"},
      {"no holders", "no holders"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(application.SubstituteString(c.text, Date::FromYmd(2025, 3, 31)), c.expected)
        << c.text;
  }
  EXPECT_EQ(application.SubstituteString("[<Year>]", Date::FromYmd(2030, 1, 1)), "[]");
  SetClockForTesting(std::nullopt);
}

}  // namespace
}  // namespace trellin::business
