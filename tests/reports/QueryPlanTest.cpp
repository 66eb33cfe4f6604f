// The plan check. Every query a report sends on the demo company (each report with its defaults,
// then the runs of query_plan_runs.tsv) and every statement of the SQL corpus goes through
// SQLite's planner on the demo company, which carries the planner's statistics as a company file
// should. No ledger table may be read whole, no GROUP BY may sort what an index holds in order,
// and no WHERE may hide an indexed column in a function or compare a date with anything but ISO
// date text, unless query_plans_allowed.tsv says why. The general ledger's indexes are chosen to
// hold without statistics too, so its plans are checked again on an empty company file.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "core/Catalogue.h"
#include "platform/data/CompanySchema.h"
#include "platform/engine/ReportEngine.h"
#include "platform/sql/Translate.h"
#include "reports/Designers.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/CaseFile.h"
#include "tests/support/QueryPlan.h"
#include "tests/support/TestPaths.h"

namespace trellin::reports::testing {
namespace {

namespace fs = std::filesystem;
using trellin::testing::PlanProblem;

class DropSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo&) override {}
  void AddPage(const engine::Page&) override {}
  void End() override {}
  void Abort() override {}
};

// One SQLite connection, closed with its scope.
class Connection {
 public:
  Connection(const std::string& name, int flags) {
    if (sqlite3_open_v2(name.c_str(), &db_, flags, nullptr) != SQLITE_OK) {
      throw std::runtime_error("cannot open " + name);
    }
  }
  ~Connection() { sqlite3_close(db_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  [[nodiscard]] sqlite3* Handle() const { return db_; }

 private:
  sqlite3* db_ = nullptr;
};

// The Jet text of every "statement ok" block of the corpus files, with "file:line".
std::vector<std::pair<std::string, std::string>> CorpusStatements() {
  std::vector<std::pair<std::string, std::string>> statements;
  for (const auto& entry : fs::directory_iterator(trellin::testing::TestDir("sql/corpus"))) {
    if (entry.path().extension() != ".test") continue;
    std::ifstream in(entry.path());
    std::string line;
    int number = 0;
    int start = 0;
    std::string sql;
    bool in_statement = false;
    auto flush = [&] {
      if (in_statement && !sql.empty()) {
        statements.emplace_back(sql,
                                entry.path().filename().string() + ":" + std::to_string(start));
      }
      in_statement = false;
      sql.clear();
    };
    while (std::getline(in, line)) {
      ++number;
      if (line.empty()) {
        flush();
      } else if (line == "statement ok") {
        flush();
        in_statement = true;
        start = number;
      } else if (in_statement && line[0] != '#') {
        sql += (sql.empty() ? "" : "\n") + line;
      }
    }
    flush();
  }
  return statements;
}

// The faults of a query on an empty company file, as "fault table" joined by "; ".
std::string FaultsOnEmptyFile(const std::string& sqlite) {
  Connection empty(":memory:", SQLITE_OPEN_READWRITE);
  sqlite3_exec(empty.Handle(), std::string(data::CompanySchemaSql()).c_str(), nullptr, nullptr,
               nullptr);
  const trellin::testing::SchemaFacts facts(empty.Handle());
  std::string faults;
  for (const PlanProblem& p : trellin::testing::PlanProblems(empty.Handle(), facts, sqlite)) {
    faults += (faults.empty() ? "" : "; ") + std::string(trellin::testing::FaultName(p.fault)) +
              " " + p.table;
  }
  return faults;
}

TEST(QueryPlanCheck, FindsEachFaultAndPassesTheShapesTheStatementsUse) {
  struct Case {
    const char* sql;
    const char* faults;
  };
  const Case cases[] = {
      // No index holds TaxCategory: every line is read from the table.
      {"SELECT SUM(glTransaction.Value) FROM glTransaction WHERE glTransaction.TaxCategory = 'X'",
       "scan glTransaction"},
      // The covering index is read once in account order: no table, no sort.
      {"SELECT glTransaction.AccountId, SUM(glTransaction.Value) FROM glTransaction WHERE "
       "glTransaction.Date >= '2024-01-01' GROUP BY glTransaction.AccountId",
       ""},
      // The year of a date hides Date from the index's range.
      {"SELECT glTransaction.AccountId FROM glTransaction WHERE STRFTIME('%Y', glTransaction.Date) "
       "= '2024'",
       "function glTransaction"},
      {"SELECT Transactions.TransactionId FROM Transactions WHERE CAST(Transactions.Type AS "
       "INTEGER) = 30 AND Transactions.OtherPartyId = 'A'",
       "function Transactions"},
      // Day first: compares as text with the ISO dates stored, and wrongly.
      {"SELECT glTransaction.AccountId FROM glTransaction WHERE glTransaction.Date < '01/03/2024'",
       "date-text glTransaction"},
      // The period's lines by date, then sorted by item, where the item index is in item order.
      {"SELECT TransactionLine.ItemId, SUM(TransactionLine.Value) FROM TransactionLine WHERE "
       "TransactionLine.DateProcess > '2024-01-01' AND TransactionLine.DateProcess < '2024-02-01' "
       "GROUP BY TransactionLine.ItemId",
       "group-sort TransactionLine"},
      // One item's lines are few: sorting them by location is no fault.
      {"SELECT TransactionLine.LocationId, SUM(TransactionLine.Quantity) FROM TransactionLine "
       "WHERE "
       "TransactionLine.ItemId = 'A' GROUP BY TransactionLine.LocationId",
       ""},
  };
  for (const Case& c : cases) EXPECT_EQ(FaultsOnEmptyFile(c.sql), c.faults) << c.sql;
}

class QueryPlans : public DemoReports {};

TEST_F(QueryPlans, EveryReportQueryAndCorpusStatementReadsTheLedgerThroughItsIndexes) {
  // SQLite text -> where it first came from.
  std::map<std::string, std::string> queries;
  std::string origin;
  data::SqliteDatabase& database = Service().Database();
  // The demo generator's last step: the planner's statistics, as a company file should carry.
  ASSERT_TRUE(database.HasStatistics());
  database.SetQueryLog(
      [&](std::string_view, const std::string& sqlite) { queries.emplace(sqlite, origin); });

  std::vector<std::pair<std::string, std::vector<std::string>>> runs;
  int keys = 0;
  for (const CatalogueEntry& entry : Catalogue()) {
    if (FindKeyFactory(Designers(), entry) == nullptr) continue;
    runs.push_back({std::string(entry.key), {}});
    ++keys;
  }
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("reports/query_plan_runs.tsv", 1)) {
    runs.push_back({row.fields[0], {row.fields.begin() + 1, row.fields.end()}});
  }
  for (const auto& [key, assignments] : runs) {
    origin = key;
    for (const std::string& a : assignments) origin += " " + a;
    SCOPED_TRACE(origin);
    DesignerPtr designer = Open(key, assignments);
    DropSink sink;
    engine::RunReport(*designer, sink);
    EXPECT_TRUE(designer->TLReport()->Errors().empty())
        << designer->TLReport()->Errors().front().message;
    designer->TLReport()->SetArReport(nullptr);
    designer->SetTLReport(nullptr);
  }
  database.SetQueryLog(nullptr);
  EXPECT_GE(keys, 23);

  sql::Translator translator(database.Catalog());
  for (const auto& [jet, where] : CorpusStatements()) {
    try {
      queries.emplace(translator.Translate(jet)->sqlite, "corpus " + where);
    } catch (const std::exception& e) {
      ADD_FAILURE() << where << ": " << e.what();
    }
  }
  EXPECT_GE(queries.size(), 500u);

  // The demo company as the reports read it, and an empty company file without statistics.
  Connection demo(DemoCompanyPath(), SQLITE_OPEN_READONLY);
  Connection empty(":memory:", SQLITE_OPEN_READWRITE);
  ASSERT_EQ(sqlite3_exec(empty.Handle(), std::string(data::CompanySchemaSql()).c_str(), nullptr,
                         nullptr, nullptr),
            SQLITE_OK);
  const trellin::testing::SchemaFacts facts(demo.Handle());
  trellin::testing::PlanAllowList allowed("reports/query_plans_allowed.tsv");
  // TRELLIN_PLAN_DUMP=FILE writes every query with its plan on the demo company: the material
  // for choosing an index.
  std::ofstream dump;
  if (const char* path = std::getenv("TRELLIN_PLAN_DUMP")) dump.open(path);
  for (const auto& [sqlite, from] : queries) {
    if (dump.is_open()) {
      dump << from << "\n  " << sqlite << "\n";
      for (const std::string& line : trellin::testing::QueryPlan(demo.Handle(), sqlite)) {
        dump << "    " << line << "\n";
      }
    }
    for (const auto& [db, statistics] :
         {std::pair{demo.Handle(), "with statistics"}, std::pair{empty.Handle(), "without"}}) {
      std::vector<PlanProblem> problems;
      try {
        problems = trellin::testing::PlanProblems(db, facts, sqlite);
      } catch (const std::exception& e) {
        ADD_FAILURE() << from << ": " << e.what();
        continue;
      }
      for (const PlanProblem& problem : problems) {
        if (db == empty.Handle() && problem.table != "glTransaction") continue;
        if (allowed.Allows(problem, sqlite)) continue;
        std::ostringstream plan;
        for (const std::string& line : trellin::testing::QueryPlan(db, sqlite)) {
          plan << "\n    " << line;
        }
        ADD_FAILURE() << trellin::testing::FaultName(problem.fault) << " " << problem.table << " ("
                      << problem.detail << "), " << statistics << ", from " << from << "\n  "
                      << sqlite << "\n  plan:" << plan.str();
      }
    }
  }
  for (const std::string& entry : allowed.Unused()) {
    ADD_FAILURE() << entry << " allows nothing now; remove it";
  }
}

}  // namespace
}  // namespace trellin::reports::testing
