// trellin on real company files, sound and damaged: what it refuses and how it says so, case by
// case from refusals.txt (the exit code, the one line on stderr, the files a refused run must not
// leave, the company files unchanged); a run stopped by a signal; what list and params show.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <sqlite3.h>

#include "tests/cli/CliSupport.h"
#include "tests/support/CaseFile.h"
#include "tests/support/DemoCache.h"
#include "tests/support/TestPaths.h"

extern char** environ;

namespace trellin::testing {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> SplitArguments(const std::string& text) {
  std::vector<std::string> args;
  std::string current;
  bool quoted = false, any = false;
  for (char c : text) {
    if (c == '"') {
      quoted = !quoted;
      any = true;
    } else if (c == ' ' && !quoted) {
      if (any) args.push_back(current);
      current.clear();
      any = false;
    } else {
      current += c;
      any = true;
    }
  }
  if (any) args.push_back(current);
  return args;
}

std::string Ranges(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += (i ? "," : "") + std::to_string(i) + ".." + std::to_string(i);
  return text;
}

class Companies : public ::testing::Test {
 public:
  static void SetUpTestSuite() {
    folder_ = new TempFolder();
    const fs::path top = folder_->Path();
    WriteSmallCompany(top / "company.db");
    fs::create_symlink(top / "company.db", top / "link.db");
    fs::create_hard_link(top / "company.db", top / "second-name.db");
    ::mkfifo((top / "pipe").c_str(), 0600);
    // Company files that are wrong in one way each.
    Altered(top / "company.db", top / "no-column.db",
            "ALTER TABLE SpecialPrice DROP COLUMN DiscountRate");
    Altered(top / "company.db", top / "wrong-type.db",
            "UPDATE SpecialPrice SET Price = 'abc' WHERE ItemId = 'BOLT10'");
    fs::create_directory(top / "templates");
    { std::ofstream(top / "templates" / "arCustomerTypeList.yaml") << "sections: [unclosed\n"; }
    Altered(
        top / "company.db", top / "templated.db",
        "INSERT INTO CompanySetting (Section, Key, Value) VALUES ('Options', 'TemplateFolder', '" +
            (top / "templates").string() + "')");
    {
      // Every page after the first two zeroed: the schema still reads, the tables do not.
      std::string bytes = ReadFile(top / "company.db");
      for (std::size_t i = 8192; i < bytes.size(); ++i) bytes[i] = '\0';
      std::ofstream(top / "damaged.db", std::ios::binary) << bytes;
    }
    { std::ofstream(top / "big.json") << std::string(2 << 20, ' '); }
    // The demo company, with its books to a fixed date so that its years are known.
    fs::copy_file(trellin::testing::CachedDemoCompany("NZ", nullptr, Date::FromYmd(2026, 10, 31)),
                  top / "demo.db");
    Altered(top / "demo.db", top / "wrong-sum.db",
            "UPDATE glTransaction SET Value = 'abc' WHERE rowid = (SELECT MIN(rowid) FROM "
            "glTransaction)");
  }
  // A copy of `from` at `to`, changed by `sql`.
  static void Altered(const fs::path& from, const fs::path& to, const std::string& sql) {
    fs::copy_file(from, to);
    sqlite3* db = nullptr;
    sqlite3_open(to.c_str(), &db);
    char* error = nullptr;
    sqlite3_exec(db, ("PRAGMA journal_mode=DELETE; " + sql).c_str(), nullptr, nullptr, &error);
    ASSERT_EQ(error, nullptr) << error;
    sqlite3_close(db);
  }

  static void TearDownTestSuite() {
    delete folder_;
    folder_ = nullptr;
  }

  // The text with its placeholders filled in; files a placeholder names are made on first use.
  static std::string Fill(std::string text, const fs::path& dir) {
    const fs::path top = folder_->Path();
    const std::map<std::string, std::string> fixed = {
        {"{db}", (top / "company.db").string()},
        {"{link}", (top / "link.db").string()},
        {"{hardlink}", (top / "second-name.db").string()},
        {"{demo}", (top / "demo.db").string()},
        {"{fifo}", (top / "pipe").string()},
        {"{big}", (top / "big.json").string()},
        {"{no-column}", (top / "no-column.db").string()},
        {"{wrong-type}", (top / "wrong-type.db").string()},
        {"{wrong-sum}", (top / "wrong-sum.db").string()},
        {"{templated}", (top / "templated.db").string()},
        {"{damaged}", (top / "damaged.db").string()},
        {"{cases}", (TestDir("cli") / "cases").string()},
        {"{dir}", dir.string()},
        {"{older}", (dir / "older.pdf").string()},
    };
    for (const auto& [name, value] : fixed) {
      for (std::size_t at; (at = text.find(name)) != std::string::npos;)
        text.replace(at, name.size(), value);
    }
    for (const std::string kind : {"ranges", "rangefile"}) {
      const std::string mark = "{" + kind + ":";
      for (std::size_t at; (at = text.find(mark)) != std::string::npos;) {
        const std::size_t close = text.find('}', at);
        const std::string count = text.substr(at + mark.size(), close - at - mark.size());
        std::string value = Ranges(std::stoi(count));
        if (kind == "rangefile") {
          const fs::path file = dir / ("ranges-" + count + ".json");
          std::ofstream(file) << "{\"Accounts\": \"" << value << "\"}";
          value = file.string();
        }
        text.replace(at, close + 1 - at, value);
      }
    }
    return text;
  }

  static TempFolder* folder_;
};

TempFolder* Companies::folder_ = nullptr;

// Every other case of refusals.txt, from the `part`th (0 or 1): two tests, each well within the
// time one test may take.
void RunCases(TempFolder& folder, int part) {
  const fs::path top = folder.Path();
  const std::string company = ReadFile(top / "company.db");
  const std::string demo = ReadFile(top / "demo.db");
  int count = 0;
  for (const CaseRow& row : ReadCases("cli/refusals.txt", 3)) {
    if (count++ % 2 != part) continue;
    const std::vector<std::string>& fields = row.fields;
    SCOPED_TRACE(row.Where());
    TempFolder dir;
    const bool older = fields[1].find("{older}") != std::string::npos;
    if (older) std::ofstream(dir.Path() / "older.pdf") << "older";
    const std::vector<std::string> args = SplitArguments(Companies::Fill(fields[1], dir.Path()));
    std::string expected = fields[2] == "-" ? "" : Companies::Fill(fields[2], dir.Path()) + "\n";
    // The leak checker of the sanitizer build reports its suppressions on stderr; not ours.
    const char* asan = std::getenv("ASAN_OPTIONS");
    RunResult r = RunTrellin(
        args, {std::string("ASAN_OPTIONS=") + (asan ? asan : "") + ":print_suppressions=0"});
    EXPECT_EQ(r.exit_code, std::stoi(fields[0])) << fields[1] << "\n" << r.err;
    // A line ending in "..." is the start of the line; the rest (a query's text) is not pinned.
    if (expected.size() > 4 && expected.compare(expected.size() - 4, 4, "...\n") == 0) {
      expected.resize(expected.size() - 4);
      EXPECT_EQ(r.err.substr(0, expected.size()), expected) << fields[1];
      EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
    } else {
      EXPECT_EQ(r.err, expected) << fields[1];
    }
    if (fields.size() > 3) {
      for (const std::string& path : SplitArguments(Companies::Fill(fields[3], dir.Path()))) {
        EXPECT_FALSE(fs::exists(fs::symlink_status(path))) << path << " is left by: " << fields[1];
      }
    }
    if (older) {
      EXPECT_EQ(ReadFile(dir.Path() / "older.pdf"), "older") << fields[1];
    }
    EXPECT_EQ(ReadFile(top / "company.db"), company) << "the company file changed: " << fields[1];
    EXPECT_EQ(ReadFile(top / "demo.db"), demo) << "the demo company changed: " << fields[1];
  }
  EXPECT_GT(count, 40);
}

TEST_F(Companies, EachCaseExitsWithItsCodeAndOneLineAndLeavesTheCompanyAsItWas) {
  RunCases(*folder_, 0);
}

TEST_F(Companies, EachOtherCaseExitsWithItsCodeAndOneLineAndLeavesTheCompanyAsItWas) {
  RunCases(*folder_, 1);
}

// Starts trellin without waiting for it; its output goes nowhere.
pid_t StartTrellin(const std::vector<std::string>& args) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (int fd : {0, 1, 2}) posix_spawn_file_actions_addopen(&actions, fd, "/dev/null", O_RDWR, 0);
  std::vector<std::string> text = {TRELLIN_BINARY};
  text.insert(text.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (auto& a : text) argv.push_back(a.data());
  argv.push_back(nullptr);
  pid_t pid = 0;
  posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return pid;
}

// The names in `dir` that start with a dot: the outputs being written.
std::vector<std::string> Hidden(const fs::path& dir) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(dir)) {
    if (entry.path().filename().string().rfind('.', 0) == 0)
      names.push_back(entry.path().filename());
  }
  return names;
}

TEST_F(Companies, AStoppedRunLeavesNothingAndKeepsTheOlderFile) {
  const std::string demo = (folder_->Path() / "demo.db").string();
  struct Case {
    int signal_number;
    int exit_code;
    const char* output;
  } cases[] = {{SIGINT, 130, "gl.png"}, {SIGTERM, 143, "gl.pdf"}};
  for (const Case& c : cases) {
    TempFolder dir;
    const fs::path output = dir.Path() / c.output;
    { std::ofstream(output) << "older"; }
    pid_t pid = StartTrellin({"run", "GeneralLedger", "--db", demo, "-o", output.string()});
    // Stopped as soon as the run is seen writing (a hidden file is there); the images of a
    // series come and go page by page, so it is not looked for a second time before the stop.
    bool writing = false;
    for (int i = 0; i < 6000 && !writing; ++i) {
      writing = !Hidden(dir.Path()).empty();
      if (!writing) ::usleep(10'000);
    }
    if (writing) ::kill(pid, c.signal_number);
    ASSERT_TRUE(writing) << "the run never began writing " << c.output;
    int status = 0;
    ::waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFEXITED(status)) << c.output;
    EXPECT_EQ(WEXITSTATUS(status), c.exit_code) << c.output;
    EXPECT_TRUE(Hidden(dir.Path()).empty()) << c.output;
    EXPECT_EQ(ReadFile(output), "older") << c.output;
  }
}

TEST_F(Companies, ListAndParamsSayWhatTheLayoutAndTheCompanySay) {
  RunResult list = RunTrellin({"list"});
  ASSERT_EQ(list.exit_code, 0) << list.err;
  EXPECT_NE(list.out.find("Customer Type List"), std::string::npos) << "the layout's caption";
  EXPECT_EQ(list.out.find("(arCustomerTypeList)"), std::string::npos);

  const std::string demo = (folder_->Path() / "demo.db").string();
  RunResult params = RunTrellin({"params", "MovementReport", "--db", demo});
  ASSERT_EQ(params.exit_code, 0) << params.err;
  // The default is named by its expression, with the date it stands for in the company's format.
  EXPECT_NE(params.out.find("    default: GLCURRENT: 31/10/2026\n"), std::string::npos)
      << params.out;

  RunResult columns = RunTrellin({"params", "BankList", "--db", demo});
  ASSERT_EQ(columns.exit_code, 0) << columns.err;
  EXPECT_NE(columns.out.find("    prompt:  Columns to print, in order (blank for all)\n"),
            std::string::npos)
      << columns.out;
}

}  // namespace
}  // namespace trellin::testing
