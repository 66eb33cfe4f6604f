#pragma once
// The plan check: what SQLite's planner makes of a query on a company file, and the shapes that
// make a report slow on a company with years of ledger lines. The tests put every query the
// reports send, and every statement of the SQL corpus, through it.

#include <sqlite3.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/CaseFile.h"

namespace trellin::testing {

// The tables that grow with the company's history, line by line.
inline constexpr std::string_view kLedgerTables[] = {"glTransaction", "Transactions",
                                                     "TransactionLine", "AssetTransaction"};

enum class PlanFault {
  Scan,       // a ledger table read whole, not through a covering index
  GroupSort,  // a temporary B-tree for a GROUP BY that an index of a ledger table could serve
  Function,   // a function or a cast around an indexed column of a ledger table in WHERE or ON
  DateText,   // a date column compared with something that is not ISO date text
};

// "scan", "group-sort", "function", "date-text": the names the allow-list uses.
[[nodiscard]] std::string_view FaultName(PlanFault fault);

struct PlanProblem {
  PlanFault fault = PlanFault::Scan;
  std::string table;   // the table concerned
  std::string detail;  // the plan line or the text at fault
};

// What a company file's schema says about its tables, read once per connection: the declared
// type of every column and the columns of every index, in order.
class SchemaFacts {
 public:
  explicit SchemaFacts(sqlite3* db);
  // The table's name as the schema spells it, "" for no table of the schema.
  [[nodiscard]] std::string TableNamed(std::string_view name) const;
  [[nodiscard]] bool IsLedger(std::string_view table) const;
  // Declared type of table.column, upper case ("DATE"); "" when there is no such column.
  [[nodiscard]] std::string TypeOf(std::string_view table, std::string_view column) const;
  // Whether an index of `table` searches on `column`: it is the first or the second column.
  [[nodiscard]] bool Searched(std::string_view table, std::string_view column) const;
  // Whether an index of `table` starts with exactly `columns` (lower case), in any order.
  [[nodiscard]] bool Leads(std::string_view table, const std::set<std::string>& columns) const;

 private:
  // Keys are lower case.
  std::map<std::string, std::string> tables_;
  std::map<std::string, std::map<std::string, std::string>> types_;
  std::map<std::string, std::map<std::string, std::vector<std::string>>> indexes_;
};

// EXPLAIN QUERY PLAN of `sqlite_sql` on `db`, one step a line, nested steps indented by two
// blanks. Throws std::runtime_error with SQLite's message when the text does not prepare.
[[nodiscard]] std::vector<std::string> QueryPlan(sqlite3* db, const std::string& sqlite_sql);

// What is slow in `sqlite_sql` as planned on `db`, whose schema `facts` describes.
[[nodiscard]] std::vector<PlanProblem> PlanProblems(sqlite3* db, const SchemaFacts& facts,
                                                    const std::string& sqlite_sql);

// Problems that stand because they must, each with its reason: tests/<name>, one a line,
// tab-separated: fault name, table, a piece of the SQLite text that picks the query, reason.
class PlanAllowList {
 public:
  explicit PlanAllowList(std::string_view name);
  // Whether an entry allows `problem` in `sqlite_sql`; the entry counts as used.
  [[nodiscard]] bool Allows(const PlanProblem& problem, const std::string& sqlite_sql);
  // "file:line" of every entry that allowed nothing: the list only shrinks.
  [[nodiscard]] std::vector<std::string> Unused() const;

 private:
  std::vector<CaseRow> rows_;
  std::vector<bool> used_;
};

// A company file open for the planner, closed with its scope.
class PlanConnection {
 public:
  // The file at `path` read-only; ":memory:" for an empty company with the schema and no
  // statistics.
  explicit PlanConnection(const std::string& path);
  ~PlanConnection();
  PlanConnection(const PlanConnection&) = delete;
  PlanConnection& operator=(const PlanConnection&) = delete;
  [[nodiscard]] sqlite3* Handle() const { return db_; }

 private:
  sqlite3* db_ = nullptr;
};

// The whole check of a query: planned on the company at `company_path` (with its statistics) and
// on an empty company without any, where only the general ledger's plans must hold. Problems the
// allow-list names pass.
class PlanChecker {
 public:
  PlanChecker(const std::string& company_path, std::string_view allow_list);
  // One message a fault, naming `from` (where the query came from) and showing the plan; none
  // when the plans hold.
  [[nodiscard]] std::vector<std::string> Failures(const std::string& sqlite_sql,
                                                  const std::string& from);
  [[nodiscard]] PlanAllowList& Allowed() { return allowed_; }
  [[nodiscard]] sqlite3* Company() const { return company_.Handle(); }

 private:
  PlanConnection company_;
  PlanConnection empty_;
  SchemaFacts facts_;
  PlanAllowList allowed_;
};

}  // namespace trellin::testing
