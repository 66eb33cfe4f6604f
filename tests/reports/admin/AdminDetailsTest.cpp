// What the master lists show beside a record's own columns, fetched from the business objects,
// and the columns that depend on the company.

#include <gtest/gtest.h>

#include "core/TrellinReportGlobals.h"
#include "reports/admin/arAdminBase.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class AdminDetailsTest : public DemoReports {};

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
  auto Description = [&database](const std::string& account) {
    return database->Query("SELECT Description FROM Account WHERE AccountId='" + account + "'")
        ->Value(0)
        .Text();
  };
  const struct {
    const char* key;
    const char* code;
    std::vector<std::string> texts;
  } cases[] = {
      {"BankList",
       "chq",
       {"Harbour Bank\r\nAuckland\r\n12-3108-0456123-00", "3010, " + Description("3010"),
        "1255, " + Description("1255")}},
      {"BranchList",
       "AKL",
       {"12 Wharf Road\r\nAuckland",
        "Bus: 0800 884 627\r\nFax: 09 884 6271\r\nEmail: accounts.AKL@tuibay.example"}},
      {"EmployeeList", "MW", {"Mobile\r\n021 555 01MW", "021 555 01MW"}},
      {"AssetCategoryList", "VEHICLE", {"Motor vehicles", "Monthly", "Market", "Sale"}},
  };
  std::unique_ptr<BusinessObjects> objects =
      TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  for (const auto& c : cases) {
    EXPECT_EQ(AdminDetailTexts(*objects, c.key, c.code), c.texts) << c.key << " " << c.code;
  }
}

TEST_F(AdminDetailsTest, ARowWithoutDetailsShowsNoneOfTheRowBefore) {
  std::unique_ptr<BusinessObjects> objects =
      TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  EXPECT_EQ(AdminDetailTexts(*objects, "BankList", "NOSUCHBANK"), std::vector<std::string>(3, ""));
  EXPECT_EQ(AdminDetailTexts(*objects, "CustomerCategoryList", "RETAIL"),
            std::vector<std::string>());
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
