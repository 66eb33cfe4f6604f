// The reports on a company on PostgreSQL: the same typed values as from the file, rows streamed
// from a cursor, golden page dumps byte for byte, one snapshot a run while a writer posts, and
// the errors a user meets (exit 3 from the command line).

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <thread>

#include "TestServer.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/data/postgres/PostgresCompany.h"
#include "platform/data/postgres/PostgresDatabase.h"
#include "platform/engine/DumpPage.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/CaseFile.h"
#include "tests/support/FixtureCompany.h"
#include "tests/support/QueryPlan.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::testing {
namespace {

namespace fs = std::filesystem;
using reports::testing::DumpPages;
using reports::testing::DumpRow;
using reports::testing::OpenWithValues;
using reports::testing::RowsOf;

class ServerReports : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { demo_ = &DemoOnServer(skip_); }
  static void TearDownTestSuite() { SetClockForTesting(std::nullopt); }
  void SetUp() override {
    if (demo_->url.empty()) GTEST_SKIP() << "PostgreSQL tests skipped: " << skip_;
  }

  static std::shared_ptr<data::PostgresDatabase> Server() {
    return data::PostgresDatabase::Open(demo_->url);
  }

  static inline std::string skip_;
  static inline const ServerDemo* demo_ = nullptr;
};

// A value as a recordset hands it out: its kind and text, doubles to nine figures (the last bit
// of a sum of doubles depends on the order the rows are added in).
std::string Shown(const Variant& value) {
  std::string text = std::to_string(static_cast<int>(value.Kind())) + ":";
  if (value.Kind() == VariantKind::Double) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.9g", value.ToDouble());
    return text + (std::string(buffer) == "-0" ? "0" : buffer);
  }
  return text + (value.IsNull() ? "Null" : value.Text());
}

std::vector<std::string> ShownRows(Recordset& rs, std::size_t most = SIZE_MAX) {
  std::vector<std::string> rows;
  for (; !rs.Eof() && rows.size() < most; rs.MoveNext()) {
    std::string row;
    for (int c = 0; c < rs.FieldCount(); ++c) {
      row += rs.Field(c).name + "=" + Shown(rs.Value(c)) + "\t";
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

// The typed values of the corpus statements that return rows of every type (money, dates,
// flags, Nulls, sums, averages, untyped columns): the file's reader and the server's agree.
TEST_F(ServerReports, TypedValuesAreTheFilesForEveryType) {
  auto file = data::SqliteDatabase::Open(demo_->file);
  auto server = Server();
  const char* statements[] = {
      "SELECT TOP 50 glTransactionId, AccountId, Date, Value, TaxValue, Type, Reference FROM "
      "glTransaction ORDER BY glTransactionId",
      "SELECT AccountId, Sum(Value) AS Total, Avg(Value) AS Mean, Count(*) AS N, Max(Date) AS "
      "Latest FROM glTransaction GROUP BY AccountId ORDER BY AccountId",
      "SELECT glTransaction.AccountId, Description, Post, Null AS Nothing, Value * 1.5 AS Half, "
      "Value / 3 AS "
      "Third, Value \\ 7 AS Whole FROM glTransaction INNER JOIN Account ON Account.AccountId = "
      "glTransaction.AccountId WHERE Date = #2025-11-14# ORDER BY glTransactionId",
      "SELECT * FROM CompanySetting ORDER BY Section, Key",
  };
  for (const char* jet : statements) {
    SCOPED_TRACE(jet);
    try {
      const std::vector<std::string> expected = ShownRows(*file->Query(jet));
      EXPECT_FALSE(expected.empty());
      EXPECT_EQ(expected, ShownRows(*server->Query(jet)));
    } catch (const DatabaseError& error) {
      // Either backend's refusal is a fault of this table, not of the reader.
      ADD_FAILURE() << error.what();
    }
  }
}

// A forward recordset streams from a cursor a batch at a time, in the run's snapshot, with other
// queries between its moves; its rows are Query's.
TEST_F(ServerReports, ForwardRowsStreamThroughTheSnapshotAndStopWithIt) {
  auto server = Server();
  const std::string jet =
      "SELECT glTransactionId, AccountId, Date, Value FROM glTransaction WHERE Date >= "
      "#2025-06-01# ORDER BY glTransactionId";
  server->BeginSnapshot();
  auto held = server->Query(jet);
  auto streamed = server->QueryForward(jet);
  ASSERT_NE(dynamic_cast<data::PgCursorRecordset*>(streamed.get()), nullptr);
  const std::int64_t rows = held->RecordCount();
  ASSERT_GT(rows, 3 * data::PgCursorRecordset::kBatch);  // several batches
  EXPECT_EQ(streamed->RecordCount(), rows);
  std::vector<std::string> first = ShownRows(*streamed, 10);
  // Another query between fetches leaves the cursor where it was.
  EXPECT_EQ(server->ExecuteScalarLong("SELECT Count(*) FROM Account", 0) > 0, true);
  std::vector<std::string> rest = ShownRows(*streamed);
  first.insert(first.end(), rest.begin(), rest.end());
  EXPECT_EQ(first, ShownRows(*held));
  streamed->MoveFirst();
  EXPECT_EQ(ShownRows(*streamed, 3), std::vector<std::string>(first.begin(), first.begin() + 3));
  server->EndSnapshot();
  EXPECT_THROW(streamed->MoveNext(), RecordsetError);
  // Outside a run's snapshot no cursor can live: the rows are held.
  auto outside = server->QueryForward(jet);
  EXPECT_EQ(dynamic_cast<data::PgCursorRecordset*>(outside.get()), nullptr);
  EXPECT_EQ(outside->RecordCount(), rows);
}

// The text of a golden file: the report tests write them from the company file; the server must
// print the same bytes.
std::string Golden(const std::string& area, const std::string& name) {
  return ReadFile(TestDir("reports") / area / "golden" / (name + ".txt"));
}

// The first line where two dumps part, for a message shorter than the whole dump.
std::string FirstDifference(const std::string& expected, const std::string& actual) {
  std::vector<std::string> a = Split(expected, "\n"), b = Split(actual, "\n");
  for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
    const std::string left = i < a.size() ? a[i] : "(end)", right = i < b.size() ? b[i] : "(end)";
    if (left != right) {
      return "line " + std::to_string(i + 1) + ":\n  file:   " + left + "\n  server: " + right;
    }
  }
  return "";
}

// The plan check on the server, for the queries a run sends: a ledger table of more than a few
// pages read whole (a sequential scan) where the planner expects to keep under a tenth of its
// lines is a range that an index should have served, as it does on a file. Each fault is its
// plan's line and the query.
class ServerPlanCheck {
 public:
  explicit ServerPlanCheck(const std::string& url) : connection_(url) {
    for (std::string_view table : kLedgerTables) {
      lines_[std::string(table)] = std::stod(std::string(
          connection_
              .Query("SELECT reltuples FROM pg_class WHERE relname = '" + std::string(table) + "'",
                     "reading the ledger's size")
              .Value(0, 0)));
    }
  }

  void Add(const std::string& sql) {
    for (const auto& [table, lines] : lines_) {
      if (sql.find("\"" + table + "\"") != std::string::npos) queries_.insert(sql);
    }
  }

  // Every fault of the queries added; `indexed` counts the plans that read glTransaction_Date.
  std::vector<std::string> Faults(int& indexed) {
    std::vector<std::string> faults;
    for (const std::string& sql : queries_) {
      const data::PgResult plan = connection_.Query("EXPLAIN " + sql, "planning a report's query");
      for (int r = 0; r < plan.Rows(); ++r) {
        const std::string line(plan.Value(r, 0));
        if (line.find("\"glTransaction_Date\"") != std::string::npos) ++indexed;
        for (const auto& [table, lines] : lines_) {
          const std::size_t rows = line.find(" rows=");
          if (line.find("Seq Scan on \"" + table + "\"") == std::string::npos ||
              rows == std::string::npos) {
            continue;
          }
          if (lines > kFewPages && std::stod(line.substr(rows + 6)) < lines / 10) {
            faults.push_back(line + "\n" + sql);
          }
        }
      }
    }
    return faults;
  }

 private:
  // Lines of a table read whole as quickly as through an index (the demo's few assets).
  static constexpr double kFewPages = 10000;
  data::PgConnection connection_;
  std::map<std::string, double> lines_;
  std::set<std::string> queries_;
};

// A small company of the report tests (FixtureCompany's rows file) on the server, as database
// "company.db", named as the file is so that the page footers print alike; each one replaces the
// one before.
std::shared_ptr<data::PostgresDatabase> SmallCompanyOnServer(const std::string& rows_file) {
  FixtureCompany file({rows_file});
  std::string why;
  const std::string url = NewTestDatabase("company.db", why);
  {
    data::PgConnection target(url);
    (void)data::CopyCompanyToPostgres(file.Path().string(), target);
  }
  return data::PostgresDatabase::Open(url);
}

// Every run of the tables postgres/golden_runs.tsv lists, on the server, in a run's snapshot
// as the command line runs it: the golden dumps, byte for byte; and every query the demo
// company's runs send through the plan check.
TEST_F(ServerReports, GoldenDumpsAreTheSameOnTheServerAndReadTheLedgerThroughItsIndexes) {
  std::shared_ptr<data::PostgresDatabase> demo = Server();
  ServerPlanCheck plans(demo_->url);
  demo->SetQueryLog([&plans](std::string_view, const std::string& sql) { plans.Add(sql); });
  int runs = 0;
  for (const CaseRow& table : ReadCases("postgres/golden_runs.tsv", 5)) {
    SCOPED_TRACE(table.Where());
    const std::optional<Date> clock = Date::FromIso(table.fields[2]);
    ASSERT_TRUE(clock);
    const std::string separator = table.fields[3] == "newline" ? "\n" : "";
    // A service a table: the report globals are one service's at a time.
    host::ReportService service(table.fields[4] == "demo" ? demo
                                                          : SmallCompanyOnServer(table.fields[4]));
    SetClockForTesting(*clock);
    int table_runs = 0;
    for (const CaseRow& row : ReadCases(table.fields[0], 2)) {
      SCOPED_TRACE(row.Where() + " " + row.fields[0]);
      const std::vector<std::string> assignments(row.fields.begin() + 2, row.fields.end());
      std::vector<std::string> pages;
      {
        data::Snapshot snapshot(service.Database());
        pages = DumpPages(OpenWithValues(service, row.fields[1], assignments));
      }
      ++table_runs;
      const std::string actual = Join(pages, separator);
      const std::string expected = Golden(table.fields[1], row.fields[0]);
      EXPECT_TRUE(actual == expected) << FirstDifference(expected, actual);
    }
    EXPECT_GT(table_runs, 0);
    runs += table_runs;
  }
  EXPECT_GT(runs, 100);
  int indexed = 0;
  for (const std::string& fault : plans.Faults(indexed)) ADD_FAILURE() << fault;
  // The month's ranges of the statements and the ledger read the date index.
  EXPECT_GT(indexed, 5);
}

// Each account's line of the trial balance (the four figures as dumped) and the closing
// column's sum over the posting accounts.
struct TrialBalanceFigures {
  std::map<std::string, std::string> lines;
  Currency closing;
};

TrialBalanceFigures FiguresOf(const std::string& dump, Database& database) {
  std::set<std::string> posting;
  for (auto rs = database.Query("SELECT AccountId FROM Account WHERE Post Is Null"); !rs->Eof();
       rs->MoveNext()) {
    posting.insert(rs->Value(0).Text());
  }
  TrialBalanceFigures figures;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    auto code = row.find("txtCode");
    if (code == row.end() || !posting.count(code->second.second)) continue;
    std::string& line = figures.lines[code->second.second];
    for (const char* field : {"numField2", "numField3", "numField4", "numField5"}) {
      auto value = row.find(field);
      line += (value == row.end() ? std::string("-") : value->second.first) + " ";
    }
    figures.closing += reports::testing::DumpedAmount(row, "numField5");
  }
  return figures;
}

TrialBalanceFigures RunTrialBalance(const std::shared_ptr<data::CompanyDatabase>& database) {
  host::ReportService service(database);
  data::Snapshot snapshot(service.Database());
  const std::vector<std::string> pages =
      DumpPages(OpenWithValues(service, "TrialBalance", {"ToDate=2025-11-30"}));
  return FiguresOf(Join(pages, ""), service.Database());
}

TEST_F(ServerReports, TrialBalanceAgreesWithTheFileToTheCent) {
  SetClockForTesting(Date::FromYmdHms(2025, 11, 30, 9, 30, 0));
  const TrialBalanceFigures file = RunTrialBalance(data::SqliteDatabase::Open(demo_->file));
  const TrialBalanceFigures server = RunTrialBalance(Server());
  EXPECT_GT(file.lines.size(), 20u);
  EXPECT_EQ(file.lines, server.lines);
  EXPECT_EQ(server.closing, Currency());
}

// A writer posts balanced pairs of journal lines, each pair in one transaction, while the trial
// balance runs again and again as the command line runs it: each run reads one snapshot, so the
// closing column sums to nought every time, whatever the writer commits in between.
TEST_F(ServerReports, AWriterPostingMeanwhileNeverUnbalancesATrialBalance) {
  data::PgConnection writer(demo_->writable_url);
  const auto first_id = [&writer](const std::string& other) {
    return std::string(
        writer
            .Query("SELECT MIN(t.\"glTransactionId\") FROM \"glTransaction\" t JOIN \"Account\" a "
                   "ON a.\"AccountId\" = t.\"AccountId\" WHERE a.\"Post\" IS NULL AND t.\"Date\" "
                   "BETWEEN '2025-11-01' AND '2025-11-30' AND t.\"AccountId\" <> '" +
                       other + "'",
                   "finding a line to copy")
            .Value(0, 0));
  };
  const std::string debit = first_id("");
  const std::string debit_account(
      writer
          .Query("SELECT \"AccountId\" FROM \"glTransaction\" WHERE \"glTransactionId\" = " + debit,
                 "reading")
          .Value(0, 0));
  const std::string credit = first_id(debit_account);
  std::int64_t next_id = std::stoll(std::string(
      writer.Query("SELECT MAX(\"glTransactionId\") + 1 FROM \"glTransaction\"", "reading")
          .Value(0, 0)));

  std::atomic<bool> stop{false};
  std::atomic<int> posted{0};
  std::string writer_error;
  std::thread posting([&] {
    try {
      const auto copy = [&](const std::string& from, std::int64_t value) {
        return "INSERT INTO \"glTransaction\" (\"glTransactionId\", \"AccountId\", \"Date\", "
               "\"Value\", \"TaxValue\", \"CashTaxValue\", \"BranchId\", \"DeptId\", \"Type\", "
               "\"glSourceId\", \"Reference\") SELECT " +
               std::to_string(next_id++) + ", \"AccountId\", \"Date\", " + std::to_string(value) +
               ", 0, 0, \"BranchId\", \"DeptId\", \"Type\", \"glSourceId\", 'PAIR' FROM "
               "\"glTransaction\" WHERE \"glTransactionId\" = " +
               from + ";";
      };
      for (std::int64_t cents = 1; !stop; ++cents) {
        writer.Execute(
            "BEGIN; " + copy(debit, cents * 1234500) + copy(credit, -cents * 1234500) + " COMMIT",
            "posting a pair");
        ++posted;
      }
    } catch (const std::exception& error) {
      writer_error = error.what();
    }
  });

  host::ReportService service(data::PostgresDatabase::Open(demo_->writable_url));
  TempFolder folder("trellin-pg-writer");
  std::set<std::string> states;
  int runs = 0;
  for (; runs < 20 && writer_error.empty(); ++runs) {
    std::string dump;
    host::RunRequest request;
    request.key = "TrialBalance";
    request.assignments = {"ToDate=2025-11-30"};
    request.output = folder.Path() / "tb.txt";
    request.on_page_model = [&dump](const engine::Page& page) { dump += engine::DumpPage(page); };
    const host::RunResult result = host::RunReportToFile(service, request);
    ASSERT_TRUE(result.completed);
    const TrialBalanceFigures figures = FiguresOf(dump, service.Database());
    EXPECT_EQ(figures.closing, Currency()) << "run " << runs << ", " << posted << " pairs posted";
    EXPECT_GT(figures.lines.size(), 20u);
    std::string state;
    for (const auto& [code, line] : figures.lines) state += code + " " + line + "\n";
    states.insert(state);
  }
  stop = true;
  posting.join();
  EXPECT_EQ(writer_error, "");
  EXPECT_EQ(runs, 20);
  // The runs read the books as the writer changed them, not one state throughout.
  EXPECT_GT(posted, 20);
  EXPECT_GT(states.size(), 1u);
}

// The way from the command line: $TRELLIN_DB or --db names the server; a server that cannot be
// reached, a wrong password, a missing database or an empty one end the run with one line and
// exit 3, and no file.
struct Outcome {
  int exit_code = -1;
  std::string err;
};

Outcome Trellin(const std::string& arguments, const std::string& environment = "") {
  TempFolder folder("trellin-pg-cli");
  const fs::path err = folder.Path() / "err.txt";
  const std::string command =
      environment + " " + TRELLIN_BINARY + " " + arguments + " 2> " + err.string() + " > /dev/null";
  const int status = std::system(command.c_str());
  Outcome outcome;
  outcome.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  outcome.err = ReadFile(err);
  return outcome;
}

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

TEST_F(ServerReports, TheCommandLineReadsTheServerAndSaysWhyItCannot) {
  TempFolder folder("trellin-pg-cli-out");
  const fs::path out = folder.Path() / "chart.csv";
  // $TRELLIN_DB names the server.
  Outcome ran =
      Trellin("run ChartofAccounts -o " + out.string(), "TRELLIN_DB=" + Quoted(demo_->url));
  EXPECT_EQ(ran.exit_code, 0) << ran.err;
  EXPECT_TRUE(fs::exists(out));

  std::string why;
  const std::string empty = NewTestDatabase("empty", why);
  const struct {
    std::string url, said;
  } cases[] = {
      {"postgresql://trellin@127.0.0.1:1/demo", "Connection refused"},
      {ServerUrl("demo.db", kPasswordRole, "wrong-one"),
       "password authentication failed for user \"reports_pw\""},
      {ServerUrl("nowhere", "trellin", ""), "database \"nowhere\" does not exist"},
      {empty, "it holds no company (no CompanySetting table)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.url);
    const fs::path none = folder.Path() / "none.pdf";
    const Outcome failed =
        Trellin("run TrialBalance --db " + Quoted(c.url) + " -o " + none.string());
    EXPECT_EQ(failed.exit_code, 3);
    EXPECT_NE(failed.err.find(c.said), std::string::npos) << failed.err;
    EXPECT_EQ(std::count(failed.err.begin(), failed.err.end(), '\n'), 1) << failed.err;
    EXPECT_EQ(failed.err.find("wrong-one"), std::string::npos) << "a password was shown";
    EXPECT_FALSE(fs::exists(none));
  }
  // The demo company is not built for a server that cannot be reached.
  const Outcome demo = Trellin("demo --db " + Quoted(cases[0].url));
  EXPECT_EQ(demo.exit_code, 3);
  EXPECT_NE(demo.err.find("Connection refused"), std::string::npos) << demo.err;
}

// The read-only role the README gives: SELECT and nothing else is enough for a report, and
// nothing it sends can write.
TEST_F(ServerReports, TheReadOnlyRoleRunsTheReports) {
  data::PgConnection admin(demo_->url);
  admin.Execute(std::string("GRANT CONNECT ON DATABASE \"demo.db\" TO ") + kPasswordRole +
                    "; GRANT USAGE ON SCHEMA public TO " + kPasswordRole +
                    "; GRANT SELECT ON ALL TABLES IN SCHEMA public TO " + kPasswordRole,
                "granting the reports' role");
  auto reader = data::PostgresDatabase::Open(ServerUrl("demo.db", kPasswordRole, kPassword));
  SetClockForTesting(Date::FromYmdHms(2025, 11, 30, 9, 30, 0));
  host::ReportService service(reader);
  data::Snapshot snapshot(service.Database());
  const std::vector<std::string> pages = DumpPages(OpenWithValues(service, "ChartofAccounts", {}));
  EXPECT_FALSE(pages.empty());
  EXPECT_FALSE(pages.back().starts_with("errors:")) << pages.back();
}

// The connection cut off in the middle of a run: the run stops with the server's reason in one
// line, as a company error (exit 3), and leaves no file.
TEST_F(ServerReports, AConnectionLostMidRunLeavesNoFile) {
  auto server = Server();
  const int pid = server->BackendPid();
  data::PgConnection admin(demo_->url);
  SetClockForTesting(Date::FromYmdHms(2025, 11, 30, 9, 30, 0));
  host::ReportService service(server);
  int queries = 0;
  server->SetQueryLog([&](std::string_view, const std::string&) {
    if (++queries == 5) {
      (void)admin.Query("SELECT pg_terminate_backend(" + std::to_string(pid) + ", 10000)",
                        "cutting the connection off");
    }
  });
  TempFolder folder("trellin-pg-lost");
  host::RunRequest request;
  request.key = "GeneralLedger";
  request.assignments = {"Period=MTD", "ToDate=2025-11-30"};
  request.output = folder.Path() / "ledger.pdf";
  try {
    (void)host::RunReportToFile(service, request);
    ADD_FAILURE() << "the run went on without its connection";
  } catch (const DatabaseError& error) {
    const std::string message = error.what();
    EXPECT_EQ(error.Kind(), ErrorKind::CompanyFile);
    EXPECT_NE(message.find("the connection to the server was lost"), std::string::npos) << message;
    EXPECT_EQ(message.find('\n'), std::string::npos) << message;
  }
  EXPECT_GE(queries, 5);
  EXPECT_FALSE(fs::exists(request.output));
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

}  // namespace
}  // namespace trellin::testing
