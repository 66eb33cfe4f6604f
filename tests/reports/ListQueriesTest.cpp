// Every list query the shared routines and the master lists build, run against the schema of the
// demo company: each standard parameter's pick-list, each grouping's list on each report table it
// applies to, each user-defined field's pick-list, and each master list's query in every order,
// filtered and not. A query that names a table or column the company lacks, or that the
// translator cannot read, fails here with the query in the message.

#include <gtest/gtest.h>

#include "core/TrellinReportGlobals.h"
#include "core/host/Application.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/admin/arAdminBase.h"
#include "reports/admin/arCustomerTypeList.h"
#include "reports/admin/arDepartmentList.h"
#include "reports/admin/arPostcodeList.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class ListQueries : public DemoReports {
 protected:
  // Runs `sql`; a failure names what built it.
  static void ExpectRuns(const std::string& sql, const std::string& what) {
    try {
      (void)Service().Database().Query(sql);
    } catch (const std::exception& e) {
      ADD_FAILURE() << what << ": " << e.what() << "\n  " << sql;
    }
  }
  static bool Runs(const std::string& sql) {
    try {
      (void)Service().Database().Query(sql);
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }
};

TEST_F(ListQueries, EveryStandardParameterList) {
  for (long index = 0; index <= kLastStandardParameter; ++index) {
    trellin::Parameters parameters;
    ParameterPtr p = CreateStandardParameter(index, parameters, false);
    ASSERT_FALSE(p->ListSQL.empty()) << "row " << index;
    ExpectRuns(p->ListSQL, "standard parameter " + std::to_string(index) + " " + p->Name);
  }
}

// The tables reports hand to GetGroupingDefinition.
constexpr const char* kReportTables[] = {"Transactions",
                                         "TransactionLine",
                                         "acBatchTransaction",
                                         "acBatchTransactionLine",
                                         "PurchaseOrder",
                                         "PurchaseOrderLine",
                                         "glTransaction",
                                         "OtherParty",
                                         "Item",
                                         "Job",
                                         "Asset"};

TEST_F(ListQueries, EveryGroupingOnTheTablesItAppliesTo) {
  int checked = 0;
  for (std::string name : GroupingNames()) {
    for (const std::string table : kReportTables) {
      std::string field, list_sql, key_field;
      GetGroupingDefinition(name, field, list_sql, key_field, table);
      // A grouping applies to a table whose rows reach its field; the others are never asked.
      const std::string field_table =
          field.find('.') == std::string::npos ? table : field.substr(0, field.find('.'));
      if (!Runs("SELECT " + field + " FROM " + field_table)) continue;
      ExpectRuns(list_sql, "grouping " + name + " on " + table);
      ++checked;
    }
  }
  EXPECT_GT(checked, static_cast<int>(GroupingNames().size()));
}

TEST_F(ListQueries, EveryUserDefinedFieldOfTheCompany) {
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  const struct {
    UserDefinedKind kind;
    int number;
  } kinds[] = {{UserDefinedKind::Asset, 1},
               {UserDefinedKind::Item, 2},
               {UserDefinedKind::Job, 3},
               {UserDefinedKind::OtherParty, 4},
               {UserDefinedKind::Transactions, 5}};
  int resolved = 0;
  for (const auto& kind : kinds) {
    for (int position = 1; position <= 20; ++position) {
      const UserDefinedField defined = options.UserDefinedFields(kind.kind, position);
      if (defined.Name.empty()) continue;
      std::string field, list_sql;
      ResolveUserDefinedField(defined.Name, field, list_sql, kind.number);
      EXPECT_EQ(field, "UserDefined" + std::to_string(position)) << defined.Name;
      ++resolved;
      if (!list_sql.empty()) ExpectRuns(list_sql, "user-defined field " + defined.Name);
    }
  }
  EXPECT_GT(resolved, 0) << "the demo company names no user-defined field";
}

// The master lists' queries, in every order each offers, with and without its filter.
TEST_F(ListQueries, EveryMasterListInEveryOrder) {
  const struct {
    const char* key;
    const char* filter;  // an assignment of the key's filter
  } lists[] = {
      {"AssetCategoryList", "AssetCategories=PLANT..TOOLS"},
      {"AssetSiteList", "AssetSites=HQ,BR2"},
      {"AssetTypeList", "AssetTypes=VEH"},
      {"BankList", "Banks=CHQ"},
      {"BranchList", "Branches=TGA"},
      {"CustomerCategoryList", "CustomerCategories=RETAIL,TRADE"},
      {"EmployeeList", "Employees=AP..JS"},
      {"JobCategoryList", "JobCategories=SERVICE"},
      {"CustomerTypeList", "CustomerTypes=GOVT..IND"},
      {"DepartmentList", "Departments=RET,WSH"},
      {"PostCodeList", "States=NSW"},
  };
  for (const auto& list : lists) {
    DesignerPtr probe = Open(list.key, {});
    const std::string choices = probe->TLReport()->Parameters().Item("OrderBy").Choices;
    probe->TLReport()->SetArReport(nullptr);
    for (const std::string& order : Split(choices, ",")) {
      for (const std::string filter : {std::string(), std::string(list.filter)}) {
        std::vector<std::string> assignments = {"OrderBy=" + order};
        if (!filter.empty()) assignments.push_back(filter);
        DesignerPtr designer = Open(list.key, assignments);
        std::string sql;
        if (auto* admin = dynamic_cast<arAdminBase*>(designer.get())) {
          admin->BuildSQL();
          sql = admin->SQL();
        } else if (auto* types = dynamic_cast<arCustomerTypeList*>(designer.get())) {
          types->BuildSQL();
          sql = types->SQL();
        } else if (auto* departments = dynamic_cast<arDepartmentList*>(designer.get())) {
          departments->BuildSQL();
          sql = departments->SQL();
        } else if (auto* postcodes = dynamic_cast<arPostcodeList*>(designer.get())) {
          postcodes->BuildSQL();
          sql = postcodes->SQL();
        }
        designer->TLReport()->SetArReport(nullptr);
        ASSERT_FALSE(sql.empty()) << list.key;
        ExpectRuns(sql, std::string(list.key) + " by " + order + " " + filter);
      }
    }
  }
}

}  // namespace
}  // namespace trellin::reports::testing
