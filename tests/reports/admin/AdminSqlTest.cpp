// The queries of the master lists: the filter of each key, every order it offers, and the
// orders that fall to the code.

#include <gtest/gtest.h>

#include "reports/admin/arAdminBase.h"
#include "reports/admin/arDepartmentList.h"
#include "reports/admin/arPostcodeList.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class AdminSql : public DemoReports {};

struct SqlCase {
  const char* key;
  std::vector<std::string> assignments;
  const char* sql;
};

// The site and type lists' subqueries, as the lists keep them.
#define SITE_SQL                                                                                \
  "SELECT AssetSiteId,Description,Active,ParentAssetSiteId,(SELECT Description FROM AssetSite " \
  "as A WHERE AssetSite.ParentAssetSiteId = A.AssetSiteId) as ParentDescription FROM AssetSite"
#define TYPE_SQL                                                                              \
  "SELECT AssetTypeId,Description,ParentAssetTypeId,(SELECT Description FROM AssetType as A " \
  "WHERE AssetType.ParentAssetTypeId = A.AssetTypeId) as ParentDescription FROM AssetType"
#define EMPLOYEE_SQL                                                                   \
  "SELECT EmployeeId,Name,Title,Active,ReportsTo,(SELECT Name FROM Employee em WHERE " \
  "em.EmployeeId=Employee.ReportsTo) AS ReportsToName FROM Employee"

TEST_F(AdminSql, AdminBaseByKeyFilterAndOrder) {
  const SqlCase cases[] = {
      {"AssetCategoryList",
       {},
       "SELECT AssetCategoryId FROM AssetCategory ORDER BY AssetCategoryId"},
      {"AssetCategoryList",
       {"OrderBy=Description", "AssetCategories=PLANT..TOOLS"},
       "SELECT AssetCategoryId FROM AssetCategory WHERE ((AssetCategoryId>='PLANT' AND "
       "AssetCategoryId<='TOOLS')) ORDER BY Description"},
      {"AssetSiteList", {}, SITE_SQL " ORDER BY AssetSiteId"},
      {"AssetSiteList", {"OrderBy=Description"}, SITE_SQL " ORDER BY Description"},
      // The choice offered does not match the parent order's test: the code order stands.
      {"AssetSiteList", {"OrderBy=Parent Site"}, SITE_SQL " ORDER BY AssetSiteId"},
      {"AssetSiteList",
       {"AssetSites=HQ,BR2"},
       SITE_SQL " WHERE (AssetSiteId IN ('HQ','BR2')) ORDER BY AssetSiteId"},
      {"AssetTypeList", {"OrderBy=Parent Type"}, TYPE_SQL " ORDER BY AssetTypeId"},
      {"AssetTypeList",
       {"OrderBy=Description", "AssetTypes=VEH"},
       TYPE_SQL " WHERE (AssetTypeId='VEH') ORDER BY Description"},
      {"BankList", {}, "SELECT * FROM Bank ORDER BY BankId"},
      {"BankList", {"OrderBy=Account Name"}, "SELECT * FROM Bank ORDER BY AccountName"},
      {"BankList", {"Banks=CHQ"}, "SELECT * FROM Bank WHERE (BankId='CHQ') ORDER BY BankId"},
      {"BranchList", {"OrderBy=Name"}, "SELECT * FROM Branch ORDER BY Name"},
      {"BranchList",
       {"Branches=TGA"},
       "SELECT * FROM Branch WHERE (BranchId='TGA') ORDER BY BranchId"},
      {"CustomerCategoryList",
       {"OrderBy=Description"},
       "SELECT * FROM CustomerCategory ORDER BY Description"},
      {"CustomerCategoryList",
       {"CustomerCategories=RETAIL,TRADE"},
       "SELECT * FROM CustomerCategory WHERE (CustomerCategoryId IN ('RETAIL','TRADE')) ORDER BY "
       "CustomerCategoryId"},
      {"EmployeeList", {}, EMPLOYEE_SQL " ORDER BY EmployeeId"},
      {"EmployeeList",
       {"OrderBy=Name", "Employees=AP..JS"},
       EMPLOYEE_SQL " WHERE ((EmployeeId>='AP' AND EmployeeId<='JS')) ORDER BY Name"},
      {"JobCategoryList",
       {"OrderBy=Description"},
       "SELECT * FROM JobCategory ORDER BY Description"},
      {"JobCategoryList",
       {"JobCategories=SERVICE"},
       "SELECT * FROM JobCategory WHERE (JobCategoryId='SERVICE') ORDER BY JobCategoryId"},
  };
  for (const SqlCase& c : cases) {
    SCOPED_TRACE(std::string(c.key) + " " + ::testing::PrintToString(c.assignments));
    DesignerPtr designer = Open(c.key, c.assignments);
    auto& admin = dynamic_cast<arAdminBase&>(*designer);
    admin.BuildSQL();
    EXPECT_EQ(admin.SQL(), c.sql);
    designer->TLReport()->SetArReport(nullptr);
  }
}

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

TEST_F(AdminSql, DepartmentList) {
  const SqlCase cases[] = {
      {"DepartmentList", {}, "SELECT DeptId,Description FROM Department ORDER BY DeptId"},
      {"DepartmentList",
       {"OrderBy=Description"},
       "SELECT DeptId,Description FROM Department ORDER BY Description"},
      {"DepartmentList",
       {"Departments=RET,WSH"},
       "SELECT DeptId,Description FROM Department WHERE (DeptId IN ('RET','WSH')) ORDER BY DeptId"},
  };
  for (const SqlCase& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.assignments));
    DesignerPtr designer = Open(c.key, c.assignments);
    auto& report = dynamic_cast<arDepartmentList&>(*designer);
    report.BuildSQL();
    EXPECT_EQ(report.SQL(), c.sql);
    designer->TLReport()->SetArReport(nullptr);
  }
}

TEST_F(AdminSql, PostcodeListWithoutFiltersHasNoWhere) {
  const SqlCase cases[] = {
      {"PostCodeList",
       {},
       "SELECT City,State,Country,Postcode,Comments FROM PostCodes ORDER BY Country,State,City"},
      {"PostCodeList",
       {"OrderBy=Postcode"},
       "SELECT City,State,Country,Postcode,Comments FROM PostCodes ORDER BY "
       "Country,State,Postcode"},
      {"PostCodeList",
       {"Countries=NZ"},
       "SELECT City,State,Country,Postcode,Comments FROM PostCodes WHERE (Country='NZ')  ORDER BY "
       "Country,State,City"},
      {"PostCodeList",
       {"Countries=NZ,AU", "States=NSW"},
       "SELECT City,State,Country,Postcode,Comments FROM PostCodes WHERE (Country IN ('NZ','AU'))  "
       "AND (State='NSW')  ORDER BY Country,State,City"},
  };
  for (const SqlCase& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.assignments));
    DesignerPtr designer = Open(c.key, c.assignments);
    auto& report = dynamic_cast<arPostcodeList&>(*designer);
    report.BuildSQL();
    EXPECT_EQ(report.SQL(), c.sql);
    designer->TLReport()->SetArReport(nullptr);
  }
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
