// trellin run, params and demo: the main job as a user drives it.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>

#include "tests/cli/CliSupport.h"

namespace trellin::testing {
namespace {

class RunCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    db_ = folder_.Path() / "company.db";
    WriteSmallCompany(db_);
  }
  std::string Db() const { return db_.string(); }
  std::filesystem::path Out(const std::string& name) const { return folder_.Path() / name; }

  TempFolder folder_;
  std::filesystem::path db_;
};

TEST_F(RunCommand, WritesTheReportAndSaysWhere) {
  RunResult r =
      RunTrellin({"run", "CustomerTypeList", "--db", Db(), "-o", Out("types.pdf").string()});
  ASSERT_EQ(r.exit_code, 0) << r.err;
  EXPECT_NE(r.out.find("CustomerTypeList: 1 page, 3 rows, "), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("types.pdf"), std::string::npos);
  ASSERT_TRUE(std::filesystem::exists(Out("types.pdf")));
  EXPECT_EQ(ReadFile(Out("types.pdf")).substr(0, 5), "%PDF-");
}

TEST_F(RunCommand, FormatComesFromTheExtensionOrTheOption) {
  RunResult text =
      RunTrellin({"run", "CustomerTypeList", "--db", Db(), "-o", Out("types.txt").string()});
  ASSERT_EQ(text.exit_code, 0) << text.err;
  std::string page = ReadFile(Out("types.txt"));
  EXPECT_NE(page.find("Customer Type List"), std::string::npos) << page;
  EXPECT_NE(page.find("TRADE"), std::string::npos);
  EXPECT_NE(page.find("BOLT10"), std::string::npos) << "special prices print under their type";

  RunResult csv = RunTrellin({"run", "CustomerTypeList", "--db", Db(), "--format", "csv", "-o",
                              Out("types.data").string()});
  ASSERT_EQ(csv.exit_code, 0) << csv.err;
  EXPECT_NE(ReadFile(Out("types.data")).find("RETAIL"), std::string::npos);

  RunResult unknown =
      RunTrellin({"run", "CustomerTypeList", "--db", Db(), "-o", Out("types.doc").string()});
  EXPECT_EQ(unknown.exit_code, 2);
  EXPECT_NE(unknown.err.find("cannot tell the format of"), std::string::npos) << unknown.err;
  EXPECT_FALSE(std::filesystem::exists(Out("types.doc")));
}

TEST_F(RunCommand, SetWinsOverTheParameterFile) {
  {
    std::ofstream(Out("params.json")) << R"({"OrderBy": "Code", "CustomerTypes": "RETAIL..WHOLE"})";
  }
  RunResult r = RunTrellin({"run", "CustomerTypeList", "--db", Db(), "--params",
                            Out("params.json").string(), "--set", "OrderBy=Description", "--set",
                            "CustomerTypes=TRADE,WHOLE", "-o", Out("types.txt").string()});
  ASSERT_EQ(r.exit_code, 0) << r.err;
  std::string page = ReadFile(Out("types.txt"));
  EXPECT_EQ(page.find("RETAIL"), std::string::npos) << "the filter from --set applies";
  // By description "Trade accounts" comes before "Wholesale...".
  ASSERT_NE(page.find("TRADE"), std::string::npos);
  EXPECT_LT(page.find("TRADE"), page.find("WHOLE"));

  RunResult by_code = RunTrellin({"run", "CustomerTypeList", "--db", Db(), "--set",
                                  "OrderBy=Description", "-o", Out("all.txt").string()});
  ASSERT_EQ(by_code.exit_code, 0) << by_code.err;
  std::string all = ReadFile(Out("all.txt"));
  EXPECT_LT(all.find("RETAIL"), all.find("TRADE"));
}

TEST_F(RunCommand, BadInputIsNamedAndWritesNothing) {
  struct Case {
    std::vector<std::string> args;
    int code;
    std::string message;
  } cases[] = {
      {{"run", "CustomerTypelist"}, 2, "Did you mean CustomerTypeList"},
      {{"run", "NoSuchReport"}, 2, "There is no report named \"NoSuchReport\""},
      {{"run", "Chart"}, 2, "not available in this version"},
      {{"run", "CustomerTypeList", "--set", "OrderBy=Size"},
       2,
       "Order By: \"Size\" is not one of the choices"},
      {{"run", "CustomerTypeList", "--set", "Colour=Red"}, 2, "Colour"},
      {{"run", "CustomerTypeList", "--set", "CustomerTypes=Z..A"},
       2,
       "Cust. Types: The range \"Z..A\" runs backwards"},
      {{"run", "SalesAnalysisAR", "--set", "Customers=Z..A"},
       2,
       "Customers: The range \"Z..A\" runs backwards"},
      {{"run", "CustomerTypeList", "--format", "docx"}, 2, "unknown format 'docx'"},
      {{"run"}, 2, "run takes one report key"},
  };
  for (const Case& c : cases) {
    std::vector<std::string> args = c.args;
    args.insert(args.end(), {"--db", Db(), "-o", Out("x.pdf").string()});
    RunResult r = RunTrellin(args);
    EXPECT_EQ(r.exit_code, c.code) << c.message << "\n" << r.err;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << "stderr was: " << r.err;
    EXPECT_FALSE(std::filesystem::exists(Out("x.pdf"))) << c.message;
  }

  RunResult missing = RunTrellin(
      {"run", "CustomerTypeList", "--db", Out("none.db").string(), "-o", Out("x.pdf").string()});
  EXPECT_EQ(missing.exit_code, 3);
  EXPECT_NE(missing.err.find("none.db"), std::string::npos) << missing.err;
  { std::ofstream(Out("corrupt.db")) << "SQLite format 3 but not really"; }
  RunResult corrupt = RunTrellin(
      {"run", "CustomerTypeList", "--db", Out("corrupt.db").string(), "-o", Out("x.pdf").string()});
  EXPECT_EQ(corrupt.exit_code, 3) << corrupt.err;
  EXPECT_FALSE(std::filesystem::exists(Out("x.pdf")));
}

TEST_F(RunCommand, ParamsListsTheDialogue) {
  RunResult text = RunTrellin({"params", "CustomerTypeList", "--db", Db()});
  ASSERT_EQ(text.exit_code, 0) << text.err;
  EXPECT_NE(text.out.find("OrderBy (list)"), std::string::npos) << text.out;
  EXPECT_NE(text.out.find("choices: Code, Description"), std::string::npos) << text.out;
  EXPECT_NE(text.out.find("CustomerTypes (sqllist)  \"Cust. Types\""), std::string::npos)
      << text.out;
  EXPECT_NE(text.out.find("RETAIL"), std::string::npos) << "pick-list rows are shown";

  RunResult json = RunTrellin({"params", "CustomerTypeList", "--db", Db(), "--json"});
  ASSERT_EQ(json.exit_code, 0) << json.err;
  EXPECT_EQ(json.out.substr(0, 1), "[");
  EXPECT_NE(json.out.find("\"name\": \"CustomerTypes\""), std::string::npos) << json.out;

  // A default the report chose itself is explained where the user reads it.
  RunResult statement = RunTrellin({"params", "TrialBalance", "--db", Db()});
  ASSERT_EQ(statement.exit_code, 0) << statement.err;
  EXPECT_NE(statement.out.find("    help:    Left blank, the general ledger's current date"),
            std::string::npos)
      << statement.out;

  RunResult bad = RunTrellin({"params", "Nope", "--db", Db()});
  EXPECT_EQ(bad.exit_code, 2);
}

TEST(DemoCommand, BuildsACompanyTheReportsRunOn) {
  TempFolder folder;
  std::filesystem::path db = folder.Path() / "demo.db";
  RunResult built = RunTrellin({"demo", "--country", "au", "-o", db.string()});
  ASSERT_EQ(built.exit_code, 0) << built.err;
  EXPECT_NE(built.out.find("demo company: "), std::string::npos) << built.out;
  ASSERT_TRUE(std::filesystem::exists(db));

  RunResult country =
      RunTrellin({"sql", "--db", db.string(),
                  "SELECT Value FROM CompanySetting WHERE Section='Company' AND Key='Country'"});
  EXPECT_NE(country.out.find("AU"), std::string::npos) << country.out;

  RunResult bad = RunTrellin({"demo", "--scale", "0", "-o", (folder.Path() / "x.db").string()});
  EXPECT_EQ(bad.exit_code, 2);
  EXPECT_NE(bad.err.find("--scale must be from 1 to 200"), std::string::npos);
  RunResult bad_country =
      RunTrellin({"demo", "--country", "UK", "-o", (folder.Path() / "x.db").string()});
  EXPECT_EQ(bad_country.exit_code, 2);
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "x.db"));
}

TEST(DefaultCompany, IsTheDemoBuiltOnFirstUseAndAgainForAnotherSchema) {
  // The binary's HOME is the test's folder, so the demo company lands there.
  TempFolder folder;
  const std::vector<std::string> home = {"HOME=" + folder.Path().string()};
  const std::string out = (folder.Path() / "types.txt").string();
  RunResult first = RunTrellin({"run", "CustomerTypeList", "-o", out}, home);
  EXPECT_EQ(first.exit_code, 0) << first.err;
  EXPECT_NE(first.err.find("no company file given; building the demo company"), std::string::npos)
      << first.err;

  // A demo company an earlier version made for another schema is built afresh, not misread.
  const std::filesystem::path demo = folder.Path() / ".local" / "share" / "trellin" / "demo.db";
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(demo.c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db, "PRAGMA user_version=7", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(db);
  RunResult stale = RunTrellin({"run", "CustomerTypeList", "-o", out}, home);
  EXPECT_EQ(stale.exit_code, 0) << stale.err;
  EXPECT_NE(stale.err.find("was built by another version of trellin; building it afresh"),
            std::string::npos)
      << stale.err;
}

}  // namespace
}  // namespace trellin::testing
