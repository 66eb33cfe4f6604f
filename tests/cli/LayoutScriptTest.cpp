// A user's copy of a designer's layout in the template folder, with a script: the script runs
// after the designer, and a script that fails or never ends fails the run with exit 1.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "platform/runtime/Strings.h"
#include "tests/cli/CliSupport.h"
#include "tests/support/CaseFile.h"
#include "tests/support/TestPaths.h"

namespace trellin::testing {
namespace {

class UserLayout : public ::testing::Test {
 protected:
  void SetUp() override {
    db_ = folder_.Path() / "company.db";
    WriteSmallCompany(db_);
    std::filesystem::create_directory(folder_.Path() / "templates");
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(db_.c_str(), &db), SQLITE_OK);
    std::string sql =
        "INSERT INTO CompanySetting (Section, Key, Value) VALUES ('Options', "
        "'TemplateFolder', '" +
        (folder_.Path() / "templates").string() + "')";
    ASSERT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
  }
  // The stored customer type list, as `trellin layout` writes it, with `script` added: the
  // user's copy in the template folder.
  void WriteUserLayout(const std::string& script) const {
    const std::filesystem::path copy = folder_.Path() / "templates" / "arCustomerTypeList.yaml";
    RunResult written = RunTrellin({"layout", "CustomerTypeList", "-o", copy.string()});
    ASSERT_EQ(written.exit_code, 0) << written.err;
    EXPECT_EQ(ReadFile(copy), ReadFile(SourceDir() / "layouts/admin/arCustomerTypeList.yaml"));
    std::ofstream(copy, std::ios::app) << "Script: |\n" << script;
  }
  RunResult RunTypes(const std::string& out) const {
    return RunTrellin(
        {"run", "CustomerTypeList", "--db", db_.string(), "-o", (folder_.Path() / out).string()});
  }

  TempFolder folder_;
  std::filesystem::path db_;
};

TEST_F(UserLayout, ItsScriptChangesThePrintedRows) {
  WriteUserLayout(
      "  -- Retail types are left out; the others say how many came before.\n"
      "  local n = 0\n"
      "  function Detail_Format()\n"
      "    rpt.Detail.Visible = rpt.Fields.CustomerTypeId ~= 'RETAIL'\n"
      "    if rpt.Detail.Visible then\n"
      "      n = n + 1\n"
      "      rpt.txtDescription.Text = n .. '. ' .. rpt.Fields.Description\n"
      "    end\n"
      "  end\n"
      "  function ActiveReport_ReportEnd() print('shown', n, rpx.Parameters.OrderBy.Value) end\n");
  RunResult r = RunTypes("types.txt");
  ASSERT_EQ(r.exit_code, 0) << r.err;
  std::string page = ReadFile(folder_.Path() / "types.txt");
  EXPECT_EQ(page.find("RETAIL"), std::string::npos) << page;
  EXPECT_NE(page.find("1. Trade accounts"), std::string::npos) << page;
  EXPECT_NE(page.find("2. Wholesale"), std::string::npos) << page;
  // Any layout's script has rpx; print is for the layout's writer: stderr, never the report or
  // the command's answer.
  EXPECT_NE(r.err.find("shown\t2\tCode\n"), std::string::npos) << r.err;
  EXPECT_EQ(r.out.find("shown"), std::string::npos) << r.out;
  EXPECT_EQ(page.find("shown"), std::string::npos) << page;
}

TEST_F(UserLayout, AScriptThatFailsOrNeverEndsFailsTheRun) {
  struct Case {
    std::string script;
    int code;
    std::string message;
  } cases[] = {
      {"  function Detail_Format()\n    while true do end\n  end\n", 1,
       "Detail_Format: " + (folder_.Path() / "templates/arCustomerTypeList.yaml").string() +
           ":32: Detail_Format ran past its 20000000 steps and was stopped"},
      {"  function Detail_Format()\n    rpt.txtNothing.Text = 'x'\n  end\n", 1,
       "Detail_Format: " + (folder_.Path() / "templates/arCustomerTypeList.yaml").string() +
           ":32: arCustomerTypeList has no member 'txtNothing'"},
      {"  function Detail_Format(\n  end\n", 1,
       (folder_.Path() / "templates/arCustomerTypeList.yaml").string() + ":32: "},
      {"  function ActiveReport_ReportStart()\n    os.exit(3)\n  end\n", 1,
       ":32: attempt to index a nil value (global 'os')"},
  };
  for (const Case& c : cases) {
    WriteUserLayout(c.script);
    RunResult r = RunTypes("types.pdf");
    EXPECT_EQ(r.exit_code, c.code) << c.script << r.err;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << c.script << r.err;
  }
}

TEST_F(UserLayout, ADocumentKeyNeedsItsLayoutFile) {
  const std::string templates = (folder_.Path() / "templates").string();
  struct Case {
    std::vector<std::string> set;
    int code;
    std::string message;
  } cases[] = {
      {{}, 2, "DocumentId: name the layout to print"},
      {{"--set", "DocumentId=Nope.yaml"},
       2,
       "DocumentId: there is no layout file \"" + templates +
           "/Nope.yaml\" (the template folder "
           "is \"" +
           templates + "\")."},
      {{"--set", "DocumentId=/no/such/Letter.yaml"},
       2,
       "there is no layout file \"/no/such/Letter.yaml\""},
      {{"--set", "DocumentId=Letter.yaml"}, 0, ""},
  };
  std::filesystem::copy_file(SourceDir() / "examples/templates/CustomerLetter.yaml",
                             folder_.Path() / "templates" / "Letter.yaml");
  for (const Case& c : cases) {
    std::vector<std::string> args = {
        "run", "DocumentAR", "--db", db_.string(), "-o", (folder_.Path() / "letters.pdf").string()};
    args.insert(args.end(), c.set.begin(), c.set.end());
    RunResult r = RunTrellin(args);
    EXPECT_EQ(r.exit_code, c.code) << r.err;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
    if (c.code == 2) {
      EXPECT_NE(r.err.find(templates), std::string::npos) << r.err;
    }
  }
  EXPECT_TRUE(std::filesystem::exists(folder_.Path() / "letters.pdf"));
}

// document_params.tsv: each Document key's parameters, captions, defaults and choices in order.
TEST_F(UserLayout, ParamsShowEachDocumentKeysDialogue) {
  for (const CaseRow& row : ReadCaseBlocks("cli/document_params.tsv", 1)) {
    RunResult r = RunTrellin({"params", row.fields[0], "--db", db_.string()});
    ASSERT_EQ(r.exit_code, 0) << row.Where() << r.err;
    std::vector<std::string> shown;
    for (std::string line : Split(r.out, "\n")) {
      if (line.empty() || (line[0] == ' ' && line.find("default:") == std::string::npos &&
                           line.find("choices:") == std::string::npos)) {
        continue;
      }
      line = Trim(line);
      // A date default's value moves with the day: its expression is what is checked.
      if (const std::size_t colon = line.find(": ", 9);
          line.starts_with("default: ") && colon != std::string::npos) {
        line.erase(colon);
      }
      shown.push_back(line);
    }
    EXPECT_EQ(shown, row.lines) << row.Where();
  }
}

}  // namespace
}  // namespace trellin::testing
