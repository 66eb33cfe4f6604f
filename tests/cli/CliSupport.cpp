#include "tests/cli/CliSupport.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include <sqlite3.h>

#include "platform/data/CompanyFile.h"

extern char** environ;

namespace trellin::testing {

RunResult RunTrellin(const std::vector<std::string>& args, const std::vector<std::string>& env) {
  TempFolder scratch;
  std::filesystem::path out_path = scratch.Path() / "out", err_path = scratch.Path() / "err";
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0644);
  posix_spawn_file_actions_addopen(&actions, 2, err_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0644);

  std::vector<std::string> argv_text = {TRELLIN_BINARY};
  argv_text.insert(argv_text.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (auto& a : argv_text) argv.push_back(a.data());
  argv.push_back(nullptr);

  // The test's own HOME keeps a default demo company out of the user's data folder.
  std::vector<std::string> env_text = {"HOME=" + scratch.Path().string(),
                                       "XDG_DATA_HOME=", "TRELLIN_DB="};
  for (char** e = environ; *e != nullptr; ++e) {
    std::string entry = *e;
    if (entry.rfind("HOME=", 0) == 0 || entry.rfind("XDG_DATA_HOME=", 0) == 0 ||
        entry.rfind("TRELLIN_DB=", 0) == 0) {
      continue;
    }
    env_text.push_back(entry);
  }
  for (const auto& e : env) {
    std::string name = e.substr(0, e.find('=') + 1);
    std::erase_if(env_text, [&](const std::string& x) { return x.rfind(name, 0) == 0; });
    env_text.push_back(e);
  }
  std::vector<char*> envp;
  for (auto& e : env_text) envp.push_back(e.data());
  envp.push_back(nullptr);

  pid_t pid = 0;
  int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) throw std::runtime_error("cannot start " + argv_text[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  RunResult result;
  result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  result.out = ReadFile(out_path);
  result.err = ReadFile(err_path);
  return result;
}

void WriteSmallCompany(const std::filesystem::path& path) {
  auto writer = data::CreateCompanyFile(path.string());
  const char* rows =
      "INSERT INTO CompanySetting (Section, Key, Value) VALUES ('Company', 'Name', 'Kereru "
      "Supplies Ltd');"
      "INSERT INTO CustomerType VALUES ('RETAIL', 'Retail customers');"
      "INSERT INTO CustomerType VALUES ('TRADE', 'Trade accounts');"
      "INSERT INTO CustomerType VALUES ('WHOLE', 'Wholesale, \"bulk\" buyers');"
      "INSERT INTO Item (ItemId, Description) VALUES ('BOLT10', 'Bolt 10mm');"
      "INSERT INTO Item (ItemId, Description) VALUES ('NUT10', 'Nut 10mm');"
      "INSERT INTO SpecialPrice (SType, FieldValue, ItemId, Price) VALUES (3, 'TRADE', 'BOLT10', "
      "4500);"
      "INSERT INTO SpecialPrice (SType, FieldValue, ItemId, DiscountRate) VALUES (3, 'TRADE', "
      "'NUT10', 12.5);";
  char* error = nullptr;
  if (sqlite3_exec(writer->Handle(), rows, nullptr, nullptr, &error) != SQLITE_OK) {
    std::string message = error ? error : "unknown";
    sqlite3_free(error);
    throw std::runtime_error("small company: " + message);
  }
  writer->Commit();
}

}  // namespace trellin::testing
