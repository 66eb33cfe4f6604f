// `trellin serve` driven over HTTP on a free loopback port, against the demo company, with the
// CLI's answers for the same company as the measure.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <thread>

#include <gtest/gtest.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include "tests/cli/CliSupport.h"
#include "tests/support/DemoCache.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

extern char** environ;

namespace trellin::testing {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

// A server process on a port of its own, with its temporary files in `tmp`.
class Server {
 public:
  Server(const std::string& company, const fs::path& tmp) {
    int pipe_ends[2];
    EXPECT_EQ(::pipe(pipe_ends), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe_ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, pipe_ends[0]);
    std::vector<std::string> env = {"TMPDIR=" + tmp.string()};
    for (char** e = environ; *e != nullptr; ++e) {
      if (std::string_view(*e).rfind("TMPDIR=", 0) != 0) env.emplace_back(*e);
    }
    std::vector<char*> envp;
    for (auto& entry : env) envp.push_back(entry.data());
    envp.push_back(nullptr);
    std::vector<std::string> args = {TRELLIN_BINARY, "serve", "--db",      company,
                                     "--port",       "0",     "--workers", "2"};
    std::vector<char*> argv;
    for (auto& arg : args) argv.push_back(arg.data());
    argv.push_back(nullptr);
    EXPECT_EQ(::posix_spawn(&pid_, argv[0], &actions, nullptr, argv.data(), envp.data()), 0);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipe_ends[1]);
    // "trellin serve: http://127.0.0.1:PORT/ (...)"
    std::FILE* out = ::fdopen(pipe_ends[0], "r");
    char line[512] = {};
    if (std::fgets(line, sizeof line, out) != nullptr) {
      std::sscanf(line, "trellin serve: http://127.0.0.1:%d/", &port_);
    }
    std::fclose(out);
    EXPECT_GT(port_, 0) << "first line: " << line;
    client_ = std::make_unique<httplib::Client>("127.0.0.1", port_);
    client_->set_read_timeout(120, 0);
  }
  ~Server() {
    if (pid_ > 0) Stop();
  }
  // SIGTERM, and the exit code.
  int Stop() {
    ::kill(pid_, SIGTERM);
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  httplib::Client& Client() { return *client_; }

  // The answer's status and body as JSON (null when the body is not JSON).
  std::pair<int, json> Get(const std::string& path) {
    auto res = client_->Get(path);
    if (!res) return {0, nullptr};
    return {res->status, json::parse(res->body, nullptr, false)};
  }
  std::pair<int, json> Post(const std::string& path, const std::string& body) {
    auto res = client_->Post(path, body, "application/json");
    if (!res) return {0, nullptr};
    return {res->status, json::parse(res->body, nullptr, false)};
  }
  // Polls the run until it is no longer queued or running.
  json Wait(const std::string& id) {
    for (int i = 0; i < 1200; ++i) {
      auto [status, run] = Get("/api/runs/" + id);
      if (status != 200 || (run["state"] != "queued" && run["state"] != "running")) return run;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return nullptr;
  }

 private:
  pid_t pid_ = -1;
  int port_ = 0;
  std::unique_ptr<httplib::Client> client_;
};

std::string Demo() { return CachedDemoCompany("NZ"); }

TEST(Serve, AnswersTheCatalogueParametersAndRefusalsAsTheCliDoes) {
  TempFolder tmp;
  Server server(Demo(), tmp.Path());

  auto [status, catalogue] = server.Get("/api/reports");
  ASSERT_EQ(status, 200);
  const json trial_balance = {
      {"key", "TrialBalance"}, {"caption", "Trial Balance"}, {"area", "ledger"}};
  bool found = false;
  for (const json& report : catalogue["reports"]) found = found || report == trial_balance;
  EXPECT_TRUE(found) << catalogue.dump().substr(0, 400);

  // The same data as `trellin params --json`, pick-lists cut to the limit asked for.
  RunResult cli = RunTrellin({"params", "TrialBalance", "--json", "--db", Demo()});
  ASSERT_EQ(cli.exit_code, 0) << cli.err;
  json expected = json::parse(cli.out);
  auto [params_status, params] = server.Get("/api/reports/TrialBalance/parameters?limit=3");
  ASSERT_EQ(params_status, 200);
  ASSERT_EQ(params["parameters"].size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    json got = params["parameters"][i];
    json want = expected[i];
    if (want.contains("rows")) {
      EXPECT_EQ(got["rowsTotal"], want["rows"].size());
      got.erase("rowsTotal");
      want["rows"] = json(
          std::vector<json>(want["rows"].begin(),
                            want["rows"].begin() + std::min<std::size_t>(3, want["rows"].size())));
    }
    EXPECT_EQ(got, want) << want["name"];
  }
  auto [rows_status, rows] =
      server.Get("/api/reports/TrialBalance/parameters/Accounts/rows?search=sales%20-%20shop");
  ASSERT_EQ(rows_status, 200);
  EXPECT_EQ(rows["rows"], json::parse(R"([{"key":"1010","description":"  Sales - Shop"}])"));

  auto [resolve_status, resolved] =
      server.Post("/api/reports/TrialBalance/resolve", R"({"values":{"ToDate":"EOM-1M"}})");
  ASSERT_EQ(resolve_status, 200);
  EXPECT_EQ(resolved["errors"], json::array());
  EXPECT_TRUE(resolved["values"]["ToDate"].is_string()) << resolved.dump();

  struct Refused {
    const char* method;
    const char* path;
    std::string body;
    int status;
    std::string error;
  };
  const Refused kRefusals[] = {
      {"POST", "/api/runs", R"({"key":"TrialBalance","values":{"ToDate":"nonsense"}})", 400,
       "To Date: \"nonsense\" is not a date or a date expression."},
      {"POST", "/api/runs", R"({"key":"TrialBalanse"})", 404,
       "There is no report named \"TrialBalanse\". Did you mean TrialBalance?"},
      {"POST", "/api/runs", R"({"key":"TrialBalance","values":{"Bogus":1}})", 400, ""},
      {"POST", "/api/runs", R"({"key":"TrialBalance","formats":["doc"]})", 400,
       "Unknown format doc (pdf, png, html, text, csv, xlsx)."},
      {"POST", "/api/runs", "{\"key\": ", 400, ""},
      {"POST", "/api/runs", "[1,2]", 400, ""},
      {"POST", "/api/runs", std::string(300 * 1024, ' '), 413, "The request is too large."},
      {"GET", "/api/reports/TrialBalance/parameters?limit=100000", "", 400,
       "limit takes a whole number from 1 to 1000, not '100000'."},
      {"GET", "/api/reports/Nope/parameters", "", 404, ""},
      {"GET", "/api/runs/0123456789abcdef0123456789abcdef", "", 404, ""},
      {"GET", "/api/nothing", "", 404, ""},
  };
  for (const Refused& refused : kRefusals) {
    auto [got_status, body] = std::string(refused.method) == "GET"
                                  ? server.Get(refused.path)
                                  : server.Post(refused.path, refused.body);
    SCOPED_TRACE(std::string(refused.path) + " " + refused.body.substr(0, 60));
    EXPECT_EQ(got_status, refused.status);
    ASSERT_TRUE(body.is_object()) << body;
    if (!refused.error.empty()) {
      EXPECT_EQ(body["error"], refused.error);
    }
    EXPECT_FALSE(body.value("error", "").empty());
  }
  EXPECT_EQ(server.Stop(), 0);
}

TEST(Serve, RunsTwoReportsAtOnceToTheCliFiguresCancelsAndStopsCleanly) {
  TempFolder tmp;
  fs::create_directories(tmp.Path() / "server");
  const fs::path cli_csv = tmp.Path() / "cli.csv";
  RunResult cli = RunTrellin({"run", "TrialBalance", "--db", Demo(), "-o", cli_csv.string()});
  ASSERT_EQ(cli.exit_code, 0) << cli.err;
  Server server(Demo(), tmp.Path() / "server");

  const std::string body = R"({"key":"TrialBalance","formats":["pdf","png","csv"]})";
  auto [first_status, first] = server.Post("/api/runs", body);
  auto [second_status, second] = server.Post("/api/runs", body);
  ASSERT_EQ(first_status, 202);
  ASSERT_EQ(second_status, 202);
  ASSERT_NE(first["id"], second["id"]);
  for (const json& run : {server.Wait(first["id"]), server.Wait(second["id"])}) {
    ASSERT_EQ(run["state"], "done") << run.dump();
    EXPECT_EQ(run["formats"], json({"pdf", "png", "csv"}));
    const std::string path = "/api/runs/" + run["id"].get<std::string>();
    auto csv = server.Client().Get(path + "/files/csv");
    ASSERT_TRUE(csv);
    EXPECT_EQ(csv->body, ReadFile(cli_csv));
    auto pdf = server.Client().Get(path + "/files/pdf");
    ASSERT_TRUE(pdf);
    EXPECT_EQ(pdf->get_header_value("Content-Disposition"),
              "attachment; filename=\"TrialBalance.pdf\"");
    WriteFile(tmp.Path() / "run.pdf", pdf->body);
    const std::string check = "qpdf --check '" + (tmp.Path() / "run.pdf").string() + "' >/dev/null";
    EXPECT_EQ(std::system(check.c_str()), 0);
    const int pages = run["pages"];
    auto png = server.Client().Get(path + "/pages/" + std::to_string(pages));
    ASSERT_TRUE(png);
    EXPECT_EQ(png->status, 200);
    EXPECT_EQ(png->body.substr(1, 3), "PNG");
    EXPECT_EQ(server.Get(path + "/pages/" + std::to_string(pages + 1)).first, 404);
    EXPECT_EQ(server.Get(path + "/files/xlsx").first, 404);
  }

  // The trial balance's figures link to the General Ledger of their account and period, and the
  // link's target runs as it stands.
  const std::string first_path = "/api/runs/" + first["id"].get<std::string>();
  auto [links_status, links] = server.Get(first_path + "/pages/1/links");
  ASSERT_EQ(links_status, 200);
  ASSERT_FALSE(links["links"].empty()) << links.dump();
  for (const json& link : links["links"]) {
    EXPECT_EQ(link["key"], "GeneralLedger");
    EXPECT_FALSE(link["values"].value("Accounts", "").empty()) << link.dump();
    EXPECT_GT(link["width"].get<double>(), 0);
    EXPECT_LT(link["left"].get<double>() + link["width"].get<double>(), 1.0);
  }
  const json& target = links["links"][0];
  auto [drill_status, drill] = server.Post(
      "/api/runs",
      json{{"key", target["key"]}, {"values", target["values"]}, {"formats", {"csv"}}}.dump());
  ASSERT_EQ(drill_status, 202) << drill.dump();
  const json drilled = server.Wait(drill["id"]);
  ASSERT_EQ(drilled["state"], "done") << drilled.dump();
  auto ledger = server.Client().Get("/api/runs/" + drill["id"].get<std::string>() + "/files/csv");
  ASSERT_TRUE(ledger);
  EXPECT_NE(ledger->body.find(target["values"]["Accounts"].get<std::string>()), std::string::npos);
  EXPECT_EQ(server.Get(first_path + "/pages/99/links").first, 404);

  // A run cancelled while it waits or runs ends cancelled, with nothing to fetch.
  auto [third_status, third] = server.Post("/api/runs", R"({"key":"TrialBalance"})");
  ASSERT_EQ(third_status, 202);
  const std::string third_path = "/api/runs/" + third["id"].get<std::string>();
  EXPECT_EQ(server.Post(third_path + "/cancel", "").first, 200);
  EXPECT_EQ(server.Wait(third["id"])["state"], "cancelled");
  EXPECT_EQ(server.Get(third_path + "/files/pdf").first, 404);

  // Stopped with a run in flight: exit 0, and every file of every run gone.
  ASSERT_EQ(server.Post("/api/runs", body).first, 202);
  EXPECT_EQ(server.Stop(), 0);
  EXPECT_TRUE(fs::is_empty(tmp.Path() / "server"));
}

// The page app in Debian's chromium (tests/serve/browser_test.py, selenium): find the trial
// balance, date it EOM-1M, run, page on, download the PDF; names holding markup print as text.
TEST(Serve, ThePageAppRunsAReportInChromiumAndPrintsMarkupInNamesAsText) {
  TempFolder tmp;
  const fs::path company = tmp.Path() / "company.db";
  fs::copy_file(Demo(), company);
  const std::string command = "/usr/bin/python3 '" +
                              (SourceDir() / "tests/serve/browser_test.py").string() + "' '" +
                              TRELLIN_BINARY + "' '" + company.string() + "' 2>&1";
  std::FILE* out = ::popen(command.c_str(), "r");
  ASSERT_NE(out, nullptr);
  std::string text;
  char buffer[4096];
  while (std::size_t n = std::fread(buffer, 1, sizeof buffer, out)) text.append(buffer, n);
  const int status = ::pclose(out);
  EXPECT_EQ(status, 0) << text;
  EXPECT_NE(text.find(" passed, 0 failed"), std::string::npos) << text;
}

}  // namespace
}  // namespace trellin::testing
