// The Document keys: a user's layout run with a ledger's parameters, its WHERE and ORDER BY
// text, and `rpx`, the script's door to the data; the two sample layouts as page dumps.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>

#include "core/TLRPXSupport.h"
#include "platform/engine/LayoutLibrary.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "reports/admin/arDocumentTemplate.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/CaseFile.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::reports::testing {
namespace {

std::string DocumentAt(const std::string& path) {
  return "DocumentId=" + (trellin::testing::SourceDir() / path).string();
}

class DocumentTemplate : public DemoReports {
 protected:
  static std::shared_ptr<arDocumentTemplate> OpenDocument(const std::string& key,
                                                          std::vector<std::string> assignments) {
    assignments.push_back(DocumentAt("tests/reports/admin/documents/SupplierList.yaml"));
    return std::dynamic_pointer_cast<arDocumentTemplate>(Open(key, assignments));
  }
};

// document_where.tsv: what each key makes of its parameters (its lines parted by CR LF).
TEST_F(DocumentTemplate, WhereOrderAndTextByKey) {
  for (const auto& row : trellin::testing::ReadCases("reports/admin/document_where.tsv", 5, true)) {
    std::vector<std::string> assignments;
    for (const std::string& a : Split(row.fields[1], ";")) {
      if (!a.empty()) assignments.push_back(a);
    }
    auto designer = OpenDocument(row.fields[0], assignments);
    ASSERT_TRUE(designer) << row.Where();
    EXPECT_EQ(designer->GetSQLOrderBy(), row.fields[2]) << row.Where();
    EXPECT_EQ(designer->GetSQLWhere(), row.fields[3]) << row.Where();
    EXPECT_EQ(Replace(designer->GetParameterText(), "\r\n", "\n"), row.fields[4]) << row.Where();
    designer->TLReport()->SetArReport(nullptr);  // opened, never run: the host lets go
  }
}

// The samples of examples/templates/ and the small test layouts, read against the demo company.
TEST_F(DocumentTemplate, TheLayoutsPrint) {
  const struct {
    const char* golden;
    const char* key;
    std::vector<std::string> assignments;
  } runs[] = {
      {"DocumentAR-letter",
       "DocumentAR",
       {DocumentAt("examples/templates/CustomerLetter.yaml"), "Customers=A..C"}},
      {"DocumentSC-labels",
       "DocumentSC",
       {DocumentAt("examples/templates/ItemLabels.yaml"), "Items=A..F"}},
      {"DocumentAP-suppliers",
       "DocumentAP",
       {DocumentAt("tests/reports/admin/documents/SupplierList.yaml"), "SupplierCategories=SERV",
        "OrderBy=Name"}},
      {"DocumentOP-parties",
       "DocumentOP",
       {DocumentAt("tests/reports/admin/documents/OtherPartyList.yaml"), "OtherParties=W..Z"}},
      {"DocumentGL-accounts",
       "DocumentGL",
       {DocumentAt("tests/reports/admin/documents/AccountList.yaml"), "Accounts=1..3"}},
      {"DocumentFA-assets",
       "DocumentFA",
       {DocumentAt("tests/reports/admin/documents/AssetList.yaml"), "StatusIn Use=False",
        "OrderBy=Status"}},
      {"DocumentJO-jobs",
       "DocumentJO",
       {DocumentAt("tests/reports/admin/documents/JobList.yaml"), "Customers=ANCHO001..AROHA999",
        "OrderBy=Description"}},
  };
  for (const auto& run : runs) {
    std::vector<std::string> pages = RunPages(Open(run.key, run.assignments));
    ASSERT_FALSE(pages.empty()) << run.golden;
    EXPECT_FALSE(pages.back().starts_with("errors:")) << pages.back();
    ExpectGolden("admin", run.golden, Join(pages, "\n"));
  }
}

TEST_F(DocumentTemplate, SupportReachesTheDataAndSubstitutes) {
  SetClockForTesting(Date::FromYmd(2025, 11, 30));
  TLRPXSupport rpx;
  EXPECT_EQ(rpx.dateAsAt, Date::FromYmd(2025, 11, 30));
  EXPECT_FALSE(rpx.DesignMode());
  // "{now}" in any case; a dateAsAt never set is today.
  EXPECT_EQ(rpx.SubstituteString("{Now} {now} {DATEASAT}"),
            "#11/30/2025# #11/30/2025# #11/30/2025#");
  rpx.dateAsAt = Date::FromYmd(2025, 3, 1);
  EXPECT_EQ(rpx.SubstituteString("as at {DateAsAt}"), "as at #3/1/2025#");
  const std::string folder = rpx.SubstituteString("{TemplateFolder}");
  EXPECT_TRUE(folder.ends_with("/")) << folder;
  EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
  SetClockForTesting(std::nullopt);
  // The demo company is no other product's.
  EXPECT_EQ(rpx.KestraneBL(), nullptr);
  EXPECT_EQ(rpx.LundrelBL(), nullptr);
  EXPECT_EQ(rpx.MorvaneBL(), nullptr);
  EXPECT_EQ(TLRPXSupport::SQLBooleanToField(true), "True");
  EXPECT_EQ(TLRPXSupport::SQLDateToField(Date::FromYmd(2025, 3, 31)), "#2025-03-31#");
  EXPECT_EQ(TLRPXSupport::Format(Currency::FromRaw(12345678), "#,##0.00"), "1,234.57");

  // The company's own connection reads; another file opens read only; failure is nothing.
  const std::string own = Service().Database().ConnectionString();
  auto rs = rpx.GetRecordset(own, "SELECT Count(*) FROM Account");
  ASSERT_TRUE(rs);
  EXPECT_GT(rs->Value(0).ToLong(), 10);
  trellin::testing::TempFolder elsewhere;
  const std::string file = (elsewhere.Path() / "other.db").string();
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db,
                         "CREATE TABLE CompanySetting (Section TEXT, Key TEXT, Value TEXT);"
                         "CREATE TABLE Account (AccountId TEXT); "
                         "INSERT INTO Account VALUES ('1000'), ('2000');",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(db);
  for (const std::string& connection : {"Data Source=" + file + ";Mode=ReadOnly ", file}) {
    auto other = rpx.GetRecordset(connection, "SELECT Count(*) FROM Account");
    ASSERT_TRUE(other) << connection;
    EXPECT_EQ(other->Value(0).ToLong(), 2) << connection;
  }
  EXPECT_EQ(rpx.GetRecordset(own, "SELECT Nothing FROM Nowhere"), nullptr);
  EXPECT_EQ(rpx.GetRecordset("/no/such/company.db", "SELECT 1"), nullptr);
}

// A sub-report by bare name comes from the template folder, by path from where it says, and a
// bad name gives an empty report: from C++, and from a script that puts what it gets into its
// sub-report control, which then prints it (or nothing).
TEST_F(DocumentTemplate, GetSubreportFindsTheLayoutOrGivesAnEmptyReport) {
  trellin::testing::TempFolder templates;
  trellin::testing::TempFolder elsewhere;
  const auto sub = [](const std::string& caption) {
    return "Sections:\n  - Name: ReportHeader\n    Height: 300\n    Controls:\n"
           "      - {Class: Label, Name: lblFrom, Caption: " +
           caption + ", Rect: [0, 0, 4000, 260]}\n  - {Name: Detail, Height: 0}\n";
  };
  trellin::testing::WriteFile(templates.Path() / "Sub.yaml", sub("From the template folder"));
  trellin::testing::WriteFile(elsewhere.Path() / "Other.yaml", sub("From elsewhere"));
  auto saved = ActiveReport::GetLayoutProvider();
  ActiveReport::SetLayoutProvider(
      std::make_shared<engine::LayoutLibrary>(nullptr, templates.Path()));
  const struct {
    std::string name;
    std::size_t sections;
    std::string prints;  // the sub-report's label, empty for none
  } cases[] = {
      {"Sub.yaml", 2, "From the template folder"},
      {(elsewhere.Path() / "Other.yaml").string(), 2, "From elsewhere"},
      {"Other.yaml", 0, ""},
  };
  EXPECT_EQ(TLRPXSupport::GetSubreport("/no/such/Sub.yaml")->Sections().Count(), 0u);
  for (const auto& c : cases) {
    EXPECT_EQ(TLRPXSupport::GetSubreport(c.name)->Sections().Count(), c.sections) << c.name;
    const std::filesystem::path document = templates.Path() / "WithSub.yaml";
    trellin::testing::WriteFile(
        document,
        "Sections:\n  - Name: Detail\n    Height: 600\n    Controls:\n"
        "      - {Class: Field, Name: txtCode, DataField: AccountId, Rect: [0, 0, 2000, 260]}\n"
        "      - {Class: Subreport, Name: srptSub, Rect: [0, 300, 6000, 300]}\n"
        "Script: |\n  function ActiveReport_ReportStart()\n"
        "    rpt.DataControl.Source = \"SELECT AccountId FROM Account WHERE AccountId = '1000'\"\n"
        "    rpt.srptSub.object = rpx:GetSubreport('" +
            c.name + "')\n  end\n");
    const std::string pages =
        Join(RunPages(Open("DocumentGL", {"DocumentId=" + document.string()})), "\n");
    EXPECT_EQ(pages.find("errors:"), std::string::npos) << c.name << "\n" << pages;
    EXPECT_NE(pages.find("1000"), std::string::npos) << c.name << "\n" << pages;
    if (c.prints.empty()) {
      EXPECT_EQ(pages.find("From "), std::string::npos) << c.name << "\n" << pages;
    } else {
      EXPECT_NE(pages.find(c.prints), std::string::npos) << c.name << "\n" << pages;
    }
  }
  ActiveReport::SetLayoutProvider(saved);
}

// "DocumentGL" filters its branches and departments a second time on Account.BranchId and
// Account.DeptId, which the chart of accounts lacks: a layout that reads Account itself fails on
// the SQL error naming them, one that supplies the names runs.
TEST_F(DocumentTemplate, TheLedgersBranchFilterNeedsTheLayoutToSupplyItsNames) {
  trellin::testing::TempFolder folder;
  const struct {
    const char* from;
    const char* fails_naming;  // nullptr: the run prints its rows
  } cases[] = {
      {"Account", "unknown column 'BranchId'"},
      {"(SELECT AccountId, 'AKL' AS BranchId, 'ADM' AS DeptId FROM Account) AS Account", nullptr},
  };
  for (const auto& c : cases) {
    const std::filesystem::path document = folder.Path() / "Branches.yaml";
    trellin::testing::WriteFile(
        document,
        std::string("Sections:\n  - Name: Detail\n    Height: 300\n    Controls:\n"
                    "      - {Class: Field, Name: txtCode, DataField: AccountId, Rect: [0, 0, "
                    "2000, 260]}\n"
                    "Script: |\n  function ActiveReport_ReportStart()\n"
                    "    rpt.DataControl.Source = \"SELECT Account.AccountId FROM ") +
            c.from + " WHERE \" .. rpx.SQLWhere\n  end\n");
    const std::vector<std::string> assignments = {
        "DocumentId=" + document.string(), "Accounts=1000", "Branches=AKL", "Departments=ADM"};
    const std::string pages = Join(RunPages(Open("DocumentGL", assignments)), "\n");
    if (c.fails_naming != nullptr) {
      EXPECT_NE(pages.find("errors:"), std::string::npos) << c.from << "\n" << pages;
      EXPECT_NE(pages.find(c.fails_naming), std::string::npos) << c.from << "\n" << pages;
    } else {
      EXPECT_EQ(pages.find("errors:"), std::string::npos) << c.from << "\n" << pages;
      EXPECT_NE(pages.find("1000"), std::string::npos) << c.from << "\n" << pages;
    }
  }
}

}  // namespace
}  // namespace trellin::reports::testing
