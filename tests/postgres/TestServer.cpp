#include "TestServer.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <vector>

#include "platform/data/postgres/PostgresCompany.h"
#include "tests/support/DemoCache.h"

namespace trellin::testing {
namespace {

namespace fs = std::filesystem;

// Debian keeps the server's programs out of PATH, under /usr/lib/postgresql/<version>/bin.
fs::path ProgramFolder() {
  std::vector<fs::path> found;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", error)) {
    if (fs::exists(entry.path() / "bin" / "initdb")) found.push_back(entry.path() / "bin");
  }
  if (!found.empty()) return *std::max_element(found.begin(), found.end());
  for (const char* folder : {"/usr/local/bin", "/usr/bin"}) {
    if (fs::exists(fs::path(folder) / "initdb") && fs::exists(fs::path(folder) / "pg_ctl")) {
      return folder;
    }
  }
  return {};
}

std::string ShellQuoted(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

class Server {
 public:
  Server() {
    const fs::path programs = ProgramFolder();
    if (programs.empty()) {
      why_ = "no PostgreSQL server programs (initdb, pg_ctl): install Debian's postgresql";
      return;
    }
    // The server refuses to run as root: it then runs as the "postgres" user.
    if (geteuid() == 0) {
      const passwd* user = getpwnam("postgres");
      if (user == nullptr) {
        why_ = "running as root, and there is no postgres user to run the server as";
        return;
      }
      as_user_ = "runuser -u postgres -- ";
      owner_ = user->pw_uid;
      group_ = user->pw_gid;
    }
    std::string pattern = (fs::temp_directory_path() / "trellin-pg-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make " + pattern);
    folder_ = pattern;
    if (!as_user_.empty() && chown(folder_.c_str(), owner_, group_) != 0) {
      throw std::runtime_error("cannot give " + folder_.string() + " to the postgres user");
    }
    const std::string data = (folder_ / "data").string();
    Run(as_user_ + ShellQuoted((programs / "initdb").string()) + " -D " + ShellQuoted(data) +
            " -A trust -U trellin -E UTF8 --locale=C --no-sync > " +
            ShellQuoted((folder_ / "initdb.log").string()) + " 2>&1",
        "initdb");
    // One role logs in with a password, to see a wrong one refused; the rest are trusted.
    std::ofstream((fs::path(data) / "pg_hba.conf").string(), std::ios::trunc)
        << "local all " << kPasswordRole << " scram-sha-256\nlocal all all trust\n";
    // Durability is no concern of a throwaway server.
    pg_ctl_ = as_user_ + ShellQuoted((programs / "pg_ctl").string()) + " -D " + ShellQuoted(data);
    Run(pg_ctl_ + " -l " + ShellQuoted((folder_ / "server.log").string()) + " -w -o \"-k " +
            folder_.string() +
            " -c listen_addresses='' -F -c full_page_writes=off\" start > /dev/null",
        "pg_ctl start");
    started_ = true;
    // Should this process end without its destructors (a crash, a sanitizer's exit), a watcher
    // stops the server and removes the folder once the process is gone.
    Run("(while kill -0 " + std::to_string(getpid()) + " 2>/dev/null; do sleep 2; done; " +
            pg_ctl_ + " -m immediate stop; rm -rf " + ShellQuoted(folder_.string()) +
            ") > /dev/null 2>&1 &",
        "starting the server's watcher");
  }

  ~Server() {
    if (started_) {
      (void)std::system((pg_ctl_ + " -m immediate stop > /dev/null 2>&1").c_str());
    }
    std::error_code ignored;
    if (!folder_.empty()) fs::remove_all(folder_, ignored);
  }

  [[nodiscard]] const std::string& Why() const { return why_; }

  [[nodiscard]] std::string Url(std::string_view database, std::string_view user = "trellin",
                                std::string_view password = "") const {
    std::string url = "postgresql:///" + std::string(database) + "?host=" + folder_.string() +
                      "&user=" + std::string(user);
    if (!password.empty()) url += "&password=" + std::string(password);
    return url;
  }

 private:
  void Run(const std::string& command, std::string_view what) const {
    if (std::system(command.c_str()) != 0) {
      throw std::runtime_error(std::string(what) + " failed; see " + folder_.string());
    }
  }

  std::string why_;
  std::string as_user_;
  uid_t owner_ = 0;
  gid_t group_ = 0;
  fs::path folder_;
  std::string pg_ctl_;
  bool started_ = false;
};

Server& TheServer() {
  static Server server;  // stopped when the binary ends
  return server;
}

}  // namespace

std::string ServerUrl(std::string_view database, std::string_view user, std::string_view password) {
  return TheServer().Url(database, user, password);
}

std::string NewTestDatabase(std::string_view name, std::string& why) {
  Server& server = TheServer();
  if (!server.Why().empty()) {
    why = server.Why();
    return {};
  }
  data::PgConnection admin(server.Url("postgres"));
  admin.Execute("DROP DATABASE IF EXISTS \"" + std::string(name) + "\"",
                "dropping a test database");
  admin.Execute("CREATE DATABASE \"" + std::string(name) + "\"", "creating a test database");
  return server.Url(name);
}

const ServerDemo& DemoOnServer(std::string& why) {
  static std::string failed;
  static const ServerDemo demo = [] {
    ServerDemo made;
    made.url = NewTestDatabase("demo.db", failed);
    if (made.url.empty()) return made;
    made.file = CachedDemoCompany("NZ");
    {
      data::PgConnection target(made.url);
      const data::CopySummary copied = data::CopyCompanyToPostgres(made.file, target);
      made.rows = copied.rows;
      made.tables = copied.tables;
    }
    // A copy of the whole database at file level, made while nothing is connected to it.
    made.writable_url = NewTestDatabase("demo_writable", failed);
    data::PgConnection admin(TheServer().Url("postgres"));
    admin.Execute("DROP DATABASE \"demo_writable\"", "dropping a test database");
    admin.Execute("CREATE DATABASE \"demo_writable\" TEMPLATE \"demo.db\"",
                  "copying the demo company");
    admin.Execute("CREATE ROLE " + std::string(kPasswordRole) + " LOGIN PASSWORD '" +
                      std::string(kPassword) + "'",
                  "making a role with a password");
    return made;
  }();
  why = failed;
  return demo;
}

}  // namespace trellin::testing
