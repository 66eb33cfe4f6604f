// The plan check on the runs of query_plan_runs.tsv and every statement of the SQL corpus: each
// query goes through SQLite's planner on the demo company, which carries the planner's statistics
// as a company file should, and, for the general ledger, on an empty company file without them.
// No ledger table may be read whole, no GROUP BY may sort what an index holds in order, and no
// WHERE may hide an indexed column in a function or compare a date with anything but ISO date
// text, unless query_plans_allowed.tsv says why. Each key's run with its defaults is checked the
// same way in EveryKeyTest.cpp.

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
  const trellin::testing::PlanConnection empty(":memory:");
  const trellin::testing::SchemaFacts facts(empty.Handle());
  std::string faults;
  for (const PlanProblem& p : trellin::testing::PlanProblems(empty.Handle(), facts, sqlite)) {
    faults += (faults.empty() ? "" : "; ") + std::string(trellin::testing::FaultName(p.fault)) +
              " " + p.table;
  }
  return faults;
}

// query_plan_faults.tsv: each fault the check finds, and the shapes the statements use that
// it passes.
TEST(QueryPlanCheck, FindsEachFaultAndPassesTheShapesTheStatementsUse) {
  for (const auto& row : trellin::testing::ReadCases("reports/query_plan_faults.tsv", 2)) {
    EXPECT_EQ(FaultsOnEmptyFile(row.fields[0]), row.fields[1]) << row.Where();
  }
}

class QueryPlans : public DemoReports {};

TEST_F(QueryPlans, TheListedRunsAndTheCorpusReadTheLedgerThroughItsIndexes) {
  // SQLite text -> where it first came from.
  std::map<std::string, std::string> queries;
  std::string origin;
  auto& database = dynamic_cast<data::SqliteDatabase&>(Service().Database());
  // The demo generator's last step: the planner's statistics, as a company file should carry.
  ASSERT_TRUE(database.HasStatistics());
  database.SetQueryLog(
      [&](std::string_view, const std::string& sqlite) { queries.emplace(sqlite, origin); });
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("reports/query_plan_runs.tsv", 1)) {
    origin = row.fields[0];
    for (auto a = row.fields.begin() + 1; a != row.fields.end(); ++a) origin += " " + *a;
    SCOPED_TRACE(origin);
    DesignerPtr designer = Open(row.fields[0], {row.fields.begin() + 1, row.fields.end()});
    DropSink sink;
    engine::RunReport(*designer, sink);
    EXPECT_TRUE(designer->TLReport()->Errors().empty())
        << designer->TLReport()->Errors().front().message;
    designer->TLReport()->SetArReport(nullptr);
    designer->SetTLReport(nullptr);
  }
  database.SetQueryLog(nullptr);

  sql::Translator translator(database.Catalog());
  for (const auto& [jet, where] : CorpusStatements()) {
    try {
      queries.emplace(translator.Translate(jet)->sql, "corpus " + where);
    } catch (const std::exception& e) {
      ADD_FAILURE() << where << ": " << e.what();
    }
  }
  EXPECT_GE(queries.size(), 300u);

  trellin::testing::PlanChecker checker(DemoCompanyPath(), "reports/query_plans_allowed.tsv");
  // TRELLIN_PLAN_DUMP=FILE writes every query with its plan on the demo company: the material
  // for choosing an index.
  std::ofstream dump;
  if (const char* path = std::getenv("TRELLIN_PLAN_DUMP")) dump.open(path);
  for (const auto& [sqlite, from] : queries) {
    if (dump.is_open()) {
      dump << from << "\n  " << sqlite << "\n";
      for (const std::string& line : trellin::testing::QueryPlan(checker.Company(), sqlite)) {
        dump << "    " << line << "\n";
      }
    }
    for (const std::string& failure : checker.Failures(sqlite, from)) ADD_FAILURE() << failure;
  }
  // The list only shrinks: each entry must still allow something here.
  for (const std::string& entry : checker.Allowed().Unused()) {
    ADD_FAILURE() << entry << " allows nothing now; remove it";
  }
}

}  // namespace
}  // namespace trellin::reports::testing
