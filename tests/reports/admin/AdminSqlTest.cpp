// The master lists' orders that fall to the code, and their filters' failures and descriptions.
// Every list's query, in every order, is run against the schema in ListQueriesTest.cpp.

#include <gtest/gtest.h>

#include "reports/admin/arAdminBase.h"
#include "reports/admin/arPostcodeList.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class AdminSql : public DemoReports {};

TEST_F(AdminSql, OrdersTheListsDoNotKnowFallToTheCode) {
  const struct {
    const char* key;
    const char* order_by;
    const char* field;
  } cases[] = {
      {"BankList", "Account Name", "AccountName"},
      {"BankList", "Whatever", "BankId"},
      {"AssetSiteList", "Parent Site", "AssetSiteId"},
      {"AssetSiteList", "Parent Asset", "ParentAssetSiteId"},
      {"AssetTypeList", "Parent Type", "AssetTypeId"},
      {"AssetTypeList", "Parent Asset", "ParentAssetTypeId"},
      {"JobCategoryList", "Parent Asset", "JobCategoryId"},
      {"EmployeeList", "Name", "Name"},
      {"EmployeeList", "", "EmployeeId"},
  };
  for (const auto& c : cases) {
    const AdminKey* row = FindAdminKey(c.key);
    ASSERT_NE(row, nullptr) << c.key;
    EXPECT_EQ(AdminSortField(*row, c.order_by), c.field) << c.key << " by " << c.order_by;
  }
  EXPECT_EQ(FindAdminKey("DepartmentList"), nullptr);
}

TEST_F(AdminSql, PostcodeListWithoutFiltersHasNoWhere) {
  DesignerPtr designer = Open("PostCodeList", {});
  auto& report = dynamic_cast<arPostcodeList&>(*designer);
  report.BuildSQL();
  EXPECT_EQ(report.SQL().find("WHERE"), std::string::npos) << report.SQL();
  designer->TLReport()->SetArReport(nullptr);
}

TEST_F(AdminSql, PostcodeFiltersAreDescribed) {
  DesignerPtr designer = Open("PostCodeList", {"Countries=NZ", "States=NSW"});
  auto& report = dynamic_cast<arPostcodeList&>(*designer);
  report.BuildSQL();
  EXPECT_EQ(report.Description(), "Countries: NZ\r\nStates: NSW");
  designer->TLReport()->SetArReport(nullptr);
}

TEST_F(AdminSql, AnUnreadableFilterIsAReportErrorNotACrash) {
  // A range that runs backwards is refused by the range builder as the query is built.
  DesignerPtr designer = Open("BankList", {});
  designer->TLReport()->Parameters().SetValue("Banks", Variant(std::string("SAVE..CHQ")));
  std::vector<std::string> pages = RunPages(designer);
  ASSERT_FALSE(pages.empty());
  EXPECT_NE(pages.back().find("errors:\nActiveReport_ReportStart: The range \"SAVE..CHQ\""),
            std::string::npos)
      << pages.back();
}

}  // namespace
}  // namespace trellin::reports::testing
