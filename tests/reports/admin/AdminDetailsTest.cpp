// What the master lists show beside a record's own columns, read through the look-ups, and the
// columns that depend on the company.

#include <gtest/gtest.h>

#include "core/TrellinReportGlobals.h"
#include "reports/admin/AdminDetails.h"
#include "reports/admin/arAdminBase.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class AdminDetailsTest : public DemoReports {};

TEST(AdminDetailsJoin, LeavesOutEmptyParts) {
  const struct {
    std::vector<std::string> parts;
    const char* separator;
    const char* joined;
  } cases[] = {
      {{"3010", "Cheque account"}, ", ", "3010, Cheque account"},
      {{"", "Cheque account"}, ", ", "Cheque account"},
      {{"3010", ""}, ", ", "3010"},
      {{"", ""}, ", ", ""},
      {{"Bus: 1", "", "Email: a@b"}, "\r\n", "Bus: 1\r\nEmail: a@b"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(AdminDetails::JoinPresent(c.parts, c.separator), c.joined)
        << ::testing::PrintToString(c.parts);
  }
}

TEST_F(AdminDetailsTest, UnboundFieldsByKey) {
  const struct {
    const char* key;
    std::vector<std::string_view> fields;
  } cases[] = {
      {"AssetCategoryList", {"Description", "CalculationPeriod", "Revaluation", "DisposalType"}},
      {"BankList", {"BankDetails", "AssetAccount", "FeesAccount"}},
      {"BranchList", {"AddressDetails", "ContactDetails"}},
      {"EmployeeList", {"ContactMethod", "ContactDetail"}},
      // The parent's description of sites and types comes from the query, never a look-up.
      {"AssetSiteList", {}},
      {"AssetTypeList", {}},
      {"CustomerCategoryList", {}},
      {"JobCategoryList", {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(AdminUnboundFields(c.key), c.fields) << c.key;
  }
}

TEST_F(AdminDetailsTest, DetailsOfTheDemoCompany) {
  auto database = TrellinReportGlobals::RequireDatabase();
  const struct {
    const char* key;
    const char* code;
    AdminDetails::Details details;
  } cases[] = {
      {"BankList",
       "chq",
       {{"BankDetails", "Harbour Bank\r\nAuckland\r\n12-3108-0456123-00"},
        {"AssetAccount", "3010, " + database
                                        ->Query("SELECT Description FROM Account WHERE "
                                                "AccountId='3010'")
                                        ->Value(0)
                                        .Text()},
        {"FeesAccount", "1255, " + database
                                       ->Query("SELECT Description FROM Account WHERE "
                                               "AccountId='1255'")
                                       ->Value(0)
                                       .Text()}}},
      {"BranchList",
       "AKL",
       {{"AddressDetails", "12 Wharf Road\r\nAuckland"},
        {"ContactDetails", "Bus: 0800 884 627\r\nEmail: accounts.AKL@tuibay.example"}}},
      {"EmployeeList",
       "MW",
       {{"ContactMethod", "Mobile\r\n021 555 01MW"}, {"ContactDetail", "021 555 01MW"}}},
      {"AssetCategoryList",
       "VEHICLE",
       {{"Description", "Motor vehicles"},
        {"CalculationPeriod", "Monthly"},
        {"Revaluation", "Market"},
        {"DisposalType", "Sale"}}},
  };
  for (const auto& c : cases) {
    AdminDetails details(database, c.key);
    const AdminDetails::Details* found = details.Find(c.code);
    ASSERT_NE(found, nullptr) << c.key << " " << c.code;
    EXPECT_EQ(*found, c.details) << c.key << " " << c.code;
  }
}

TEST_F(AdminDetailsTest, ARowWithoutDetailsShowsNoneOfTheRowBefore) {
  AdminDetails details(TrellinReportGlobals::RequireDatabase(), "BankList");
  Fields fields;
  details.Fill("CHQ", fields);
  ASSERT_EQ(fields.Count(), 3u);
  details.Fill("NOSUCHBANK", fields);
  for (std::size_t i = 0; i < fields.Count(); ++i) {
    EXPECT_EQ(fields.Item(i).Value().Text(), "") << fields.Item(i).Name();
  }
}

TEST_F(AdminDetailsTest, BranchTaxColumnIsCaptionedWithTheTaxName) {
  DesignerPtr designer = Open("BranchList", {});
  designer->RefreshDataColumns();
  DataColumns& columns = designer->TLReport()->DataColumns();
  ASSERT_TRUE(columns.Exists("TaxNumber"));
  EXPECT_EQ(columns.Item("TaxNumber").Caption,
            TrellinReportGlobals::RequireApplication().Tax().TaxName() + " Reg");
  EXPECT_EQ(columns.Item("TaxNumber").Caption, "GST Reg");
  designer->TLReport()->SetArReport(nullptr);
}

}  // namespace
}  // namespace trellin::reports::testing
