// The trellin command as a user meets it: help, exit codes, messages, and what it prints.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/cli/CliSupport.h"

namespace trellin::testing {
namespace {

TEST(Cli, HelpAndUsageErrors) {
  RunResult help = RunTrellin({"--help"});
  EXPECT_EQ(help.exit_code, 0);
  EXPECT_NE(help.out.find("usage: trellin"), std::string::npos);
  EXPECT_NE(
      help.out.find(
          "Exit codes: 0 success, 1 report errors, 2 bad usage or input, 3 database problems"),
      std::string::npos);

  struct Case {
    std::vector<std::string> args;
    std::string message;
  } cases[] = {
      {{}, "usage: trellin"},
      {{"frobnicate"}, "trellin: unknown command 'frobnicate' (see 'trellin --help')"},
      {{"list", "--bogus"}, "trellin list: unknown option '--bogus' (see 'trellin list --help')"},
      {{"list", "extra"}, "trellin list: list takes no arguments"},
      {{"sql"}, "trellin sql: sql takes exactly one statement (quote it)"},
      {{"sql", "--db"}, "trellin sql: option '--db' needs a value (FILE|URL)"},
  };
  for (const Case& c : cases) {
    RunResult r = RunTrellin(c.args);
    EXPECT_EQ(r.exit_code, 2) << c.message;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << "stderr was: " << r.err;
  }
}

TEST(Cli, ListShowsRunnableKeysAndAllWithFlag) {
  RunResult runnable = RunTrellin({"list"});
  ASSERT_EQ(runnable.exit_code, 0) << runnable.err;
  EXPECT_NE(runnable.out.find("CustomerTypeList"), std::string::npos);
  EXPECT_EQ(runnable.out.find("not built yet"), std::string::npos);

  RunResult all = RunTrellin({"list", "--all"});
  ASSERT_EQ(all.exit_code, 0);
  EXPECT_NE(all.out.find("TrialBalance"), std::string::npos);
  EXPECT_NE(all.out.find("[not built yet]"), std::string::npos);
  EXPECT_NE(all.err.find("of 164 report keys run"), std::string::npos);
}

TEST(Cli, SqlPrintsTypedRowsAsTableOrCsv) {
  TempFolder folder;
  std::filesystem::path db = folder.Path() / "company.db";
  WriteSmallCompany(db);

  RunResult table =
      RunTrellin({"sql", "--db", db.string(),
                  "SELECT FieldValue, ItemId, Price FROM SpecialPrice ORDER BY ItemId"});
  ASSERT_EQ(table.exit_code, 0) << table.err;
  EXPECT_EQ(table.out,
            "FieldValue  ItemId  Price\n"
            "----------  ------  -----\n"
            "TRADE       BOLT10   0.45\n"
            "TRADE       NUT10    NULL\n");

  RunResult csv = RunTrellin(
      {"sql", "--csv", "--db", db.string(),
       "SELECT CustomerTypeId, Description FROM CustomerType WHERE CustomerTypeId='whole'"});
  ASSERT_EQ(csv.exit_code, 0) << csv.err;
  EXPECT_EQ(csv.out, "CustomerTypeId,Description\nWHOLE,\"Wholesale, \"\"bulk\"\" buyers\"\n");

  RunResult translated =
      RunTrellin({"sql", "--translate", "--db", db.string(),
                  "SELECT Description + ' (' + CustomerTypeId + ')' AS Label FROM CustomerType"});
  ASSERT_EQ(translated.exit_code, 0) << translated.err;
  EXPECT_NE(translated.out.find("||"), std::string::npos) << translated.out;
  EXPECT_NE(translated.err.find("-- Label: Text"), std::string::npos) << translated.err;
}

TEST(Cli, SqlFailuresSayWhatAndExitWithTheirCode) {
  TempFolder folder;
  std::filesystem::path db = folder.Path() / "company.db";
  WriteSmallCompany(db);

  RunResult missing = RunTrellin({"sql", "--db", (folder.Path() / "nope.db").string(), "SELECT 1"});
  EXPECT_EQ(missing.exit_code, 3);
  EXPECT_NE(missing.err.find("nope.db"), std::string::npos) << missing.err;

  std::filesystem::path junk = folder.Path() / "junk.db";
  { std::ofstream(junk) << "this is not a database"; }
  RunResult corrupt = RunTrellin({"sql", "--db", junk.string(), "SELECT 1"});
  EXPECT_EQ(corrupt.exit_code, 3) << corrupt.err;

  RunResult bad_sql = RunTrellin({"sql", "--db", db.string(), "SELECT Nonsense FROM CustomerType"});
  EXPECT_EQ(bad_sql.exit_code, 2);
  EXPECT_NE(bad_sql.err.find("Nonsense"), std::string::npos) << bad_sql.err;

  RunResult from_env =
      RunTrellin({"sql", "SELECT Count(*) AS N FROM CustomerType"}, {"TRELLIN_DB=" + db.string()});
  EXPECT_EQ(from_env.exit_code, 0) << from_env.err;
  EXPECT_NE(from_env.out.find("3"), std::string::npos);
}

}  // namespace
}  // namespace trellin::testing
