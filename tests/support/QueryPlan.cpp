#include "tests/support/QueryPlan.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "platform/data/CompanySchema.h"

namespace trellin::testing {

namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

std::string Upper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper;
}

std::string Text(sqlite3_stmt* stmt, int column) {
  const unsigned char* text = sqlite3_column_text(stmt, column);
  return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

// Runs `sql` and hands each row to `row`.
template <typename Row>
void EachRow(sqlite3* db, const std::string& sql, Row row) {
  sqlite3_stmt* stmt = nullptr;
  if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
    std::string message = sqlite3_errmsg(db);
    sqlite3_finalize(stmt);
    throw std::runtime_error(message + "\n  " + sql);
  }
  while (sqlite3_step(stmt) == SQLITE_ROW) row(stmt);
  sqlite3_finalize(stmt);
}

// --- the SQLite text as tokens ---

enum class TokenKind { Word, String, Number, Symbol };

struct Token {
  TokenKind kind;
  std::string text;  // a string without its quotes; a word as written
  std::string upper;
};

std::vector<Token> Tokenize(const std::string& sql) {
  std::vector<Token> tokens;
  std::size_t i = 0;
  auto push = [&](TokenKind kind, std::string text) {
    tokens.push_back({kind, text, Upper(text)});
  };
  while (i < sql.size()) {
    const char c = sql[i];
    if (std::isspace(static_cast<unsigned char>(c))) {
      ++i;
    } else if (c == '\'') {
      std::string text;
      for (++i; i < sql.size(); ++i) {
        if (sql[i] == '\'' && i + 1 < sql.size() && sql[i + 1] == '\'') {
          text += '\'';
          ++i;
        } else if (sql[i] == '\'') {
          break;
        } else {
          text += sql[i];
        }
      }
      ++i;
      push(TokenKind::String, text);
    } else if (c == '"' || c == '[' || c == '`') {
      const char close = c == '[' ? ']' : c;
      const std::size_t end = sql.find(close, i + 1);
      push(TokenKind::Word, sql.substr(i + 1, end - i - 1));
      i = end == std::string::npos ? sql.size() : end + 1;
    } else if (std::isalpha(static_cast<unsigned char>(c)) || c == '_') {
      std::size_t end = i;
      while (end < sql.size() &&
             (std::isalnum(static_cast<unsigned char>(sql[end])) || sql[end] == '_')) {
        ++end;
      }
      push(TokenKind::Word, sql.substr(i, end - i));
      i = end;
    } else if (std::isdigit(static_cast<unsigned char>(c))) {
      std::size_t end = i;
      while (end < sql.size() &&
             (std::isalnum(static_cast<unsigned char>(sql[end])) || sql[end] == '.')) {
        ++end;
      }
      push(TokenKind::Number, sql.substr(i, end - i));
      i = end;
    } else {
      static const char* const kPairs[] = {"<=", ">=", "<>", "!=", "==", "||"};
      std::string symbol(1, c);
      for (const char* pair : kPairs) {
        if (sql.compare(i, 2, pair) == 0) symbol = pair;
      }
      i += symbol.size();
      push(TokenKind::Symbol, symbol);
    }
  }
  return tokens;
}

const std::set<std::string>& Keywords() {
  static const std::set<std::string> kKeywords = {
      "ALL",       "AND",    "AS",    "ASC",      "BETWEEN", "BY",    "CASE",    "CAST",
      "COLLATE",   "CROSS",  "DESC",  "DISTINCT", "ELSE",    "END",   "ESCAPE",  "EXCEPT",
      "EXISTS",    "FROM",   "GLOB",  "GROUP",    "HAVING",  "IN",    "INDEXED", "INNER",
      "INTERSECT", "IS",     "JOIN",  "LEFT",     "LIKE",    "LIMIT", "NATURAL", "NOT",
      "NULL",      "OFFSET", "ON",    "OR",       "ORDER",   "OUTER", "RIGHT",   "SELECT",
      "THEN",      "UNION",  "USING", "VALUES",   "WHEN",    "WHERE", "WINDOW"};
  return kKeywords;
}

bool IsName(const Token& t) { return t.kind == TokenKind::Word && !Keywords().count(t.upper); }

bool IsComparison(const Token& t) {
  static const std::set<std::string> kOps = {"=", "==", "<>", "!=", "<", ">", "<=", ">="};
  return t.kind == TokenKind::Symbol && kOps.count(t.text) > 0;
}

bool IsAggregate(const std::string& upper) {
  static const std::set<std::string> kAggregates = {"SUM", "COUNT", "MIN",         "MAX",
                                                    "AVG", "TOTAL", "GROUP_CONCAT"};
  return kAggregates.count(upper) > 0;
}

// The statement's tokens with the names its FROM clauses give tables (aliases and the tables'
// own names), so that a column or a plan line can be traced to its table.
class Query {
 public:
  Query(const std::string& sql, const SchemaFacts& facts) : tokens_(Tokenize(sql)), facts_(facts) {
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      const std::string table =
          tokens_[i].kind == TokenKind::Word ? facts.TableNamed(tokens_[i].text) : std::string();
      if (table.empty() || (i + 1 < tokens_.size() && tokens_[i + 1].text == ".")) continue;
      if (i > 0 && tokens_[i - 1].text == ".") continue;
      tables_.insert(table);
      names_[Lower(table)] = table;
      std::size_t next = i + 1;
      if (next < tokens_.size() && tokens_[next].upper == "AS") ++next;
      if (next < tokens_.size() && IsName(tokens_[next])) names_[Lower(tokens_[next].text)] = table;
    }
  }

  [[nodiscard]] const std::vector<Token>& Tokens() const { return tokens_; }

  // The table a name in the statement (a table or an alias) stands for; "" when none.
  [[nodiscard]] std::string TableOf(std::string_view name) const {
    auto found = names_.find(Lower(name));
    return found == names_.end() ? std::string() : found->second;
  }

  // The table and column of a column reference at `i` ("T.C" or a bare "C" that one table of
  // the statement has); `length` gets its count of tokens. Empty table when it is none.
  [[nodiscard]] std::pair<std::string, std::string> ColumnAt(std::size_t i,
                                                             std::size_t* length) const {
    *length = 0;
    if (i >= tokens_.size() || !IsName(tokens_[i])) return {};
    if (i + 2 < tokens_.size() && tokens_[i + 1].text == "." && IsName(tokens_[i + 2])) {
      const std::string table = TableOf(tokens_[i].text);
      if (table.empty() || facts_.TypeOf(table, tokens_[i + 2].text).empty()) return {};
      *length = 3;
      return {table, tokens_[i + 2].text};
    }
    if ((i > 0 && tokens_[i - 1].text == ".") ||
        (i + 1 < tokens_.size() && (tokens_[i + 1].text == "(" || tokens_[i + 1].text == "."))) {
      return {};
    }
    std::string owner;
    for (const std::string& table : tables_) {
      if (facts_.TypeOf(table, tokens_[i].text).empty()) continue;
      if (!owner.empty()) return {};  // ambiguous: SQLite would have refused it
      owner = table;
    }
    if (owner.empty()) return {};
    *length = 1;
    return {owner, tokens_[i].text};
  }

 private:
  std::vector<Token> tokens_;
  const SchemaFacts& facts_;
  std::set<std::string> tables_;
  std::map<std::string, std::string> names_;
};

bool IsIsoDate(const std::string& text) {
  static const std::regex kIso(R"(\d{4}-\d{2}-\d{2}( \d{2}:\d{2}:\d{2})?)");
  return std::regex_match(text, kIso);
}

// --- the checks ---

void CheckPlan(const std::vector<std::string>& plan, const Query& query, const SchemaFacts& facts,
               std::vector<PlanProblem>& problems) {
  static const std::regex kStep(R"(^\s*(SCAN|SEARCH) (\S+)(.*)$)");
  for (const std::string& line : plan) {
    std::smatch step;
    if (!std::regex_match(line, step, kStep)) continue;
    const std::string table = query.TableOf(step[2].str());
    if (table.empty() || !facts.IsLedger(table)) continue;
    const std::string how = step[3].str();
    const bool whole = step[1] == "SCAN" && how.find("COVERING INDEX") == std::string::npos;
    // An automatic index is built by reading the table whole, at every run.
    const bool automatic = how.find("AUTOMATIC") != std::string::npos;
    if (whole || automatic) problems.push_back({PlanFault::Scan, table, line});
  }
}

// The GROUP BY clauses whose terms are all plain columns of one ledger table that an index of it
// leads with: a temporary B-tree for such a grouping is a sort an index would have spared.
void CheckGroupSort(const std::vector<std::string>& plan, const Query& query,
                    const SchemaFacts& facts, std::vector<PlanProblem>& problems) {
  const bool sorts = std::any_of(plan.begin(), plan.end(), [](const std::string& line) {
    return line.find("USE TEMP B-TREE FOR GROUP BY") != std::string::npos;
  });
  if (!sorts) return;
  // A table read through an equality on an index (one branch's lines) gives few rows, and sorting
  // them costs less than reading the whole ledger in the grouping's order.
  static const std::regex kNarrowed(R"(^\s*SEARCH (\S+) USING .*\(.*[^)]=\?)");
  std::set<std::string> narrowed;
  for (const std::string& line : plan) {
    std::smatch search;
    if (std::regex_search(line, search, kNarrowed)) narrowed.insert(query.TableOf(search[1].str()));
  }
  const std::vector<Token>& tokens = query.Tokens();
  static const std::set<std::string> kEnds = {"HAVING", "ORDER",     "LIMIT", "UNION",
                                              "EXCEPT", "INTERSECT", "WINDOW"};
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (tokens[i].upper != "GROUP" || tokens[i + 1].upper != "BY") continue;
    std::string table;
    std::set<std::string> columns;
    bool plain = true;
    int depth = 0;
    std::size_t at = i + 2;
    while (at < tokens.size() && plain) {
      const Token& t = tokens[at];
      if (depth == 0 && (t.text == ")" || kEnds.count(t.upper))) break;
      if (t.text == ",") {
        ++at;
        continue;
      }
      std::size_t length = 0;
      auto [owner, column] = query.ColumnAt(at, &length);
      const bool ends_term = at + length >= tokens.size() || tokens[at + length].text == "," ||
                             tokens[at + length].text == ")" ||
                             kEnds.count(tokens[at + length].upper) > 0;
      if (length == 0 || !ends_term || (!table.empty() && owner != table)) {
        plain = false;
        break;
      }
      table = owner;
      columns.insert(Lower(column));
      at += length;
    }
    if (plain && !table.empty() && facts.IsLedger(table) && !narrowed.count(table) &&
        facts.Leads(table, columns)) {
      std::string detail = "GROUP BY";
      for (const std::string& c : columns) detail += " " + c;
      problems.push_back({PlanFault::GroupSort, table, detail});
    }
  }
}

// Functions and casts around indexed columns of ledger tables in WHERE and ON, and date columns
// compared with anything but ISO date text.
void CheckShapes(const Query& query, const SchemaFacts& facts, std::vector<PlanProblem>& problems) {
  const std::vector<Token>& tokens = query.Tokens();
  // The clause each open bracket is in; a bracket that opens no SELECT stays in its parent's.
  std::vector<std::string> clause = {"SELECT"};
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const Token& t = tokens[i];
    if (t.text == "(") {
      clause.push_back(clause.back());
      continue;
    }
    if (t.text == ")") {
      if (clause.size() > 1) clause.pop_back();
      continue;
    }
    static const std::set<std::string> kClauses = {"SELECT", "FROM",   "WHERE", "ON",
                                                   "GROUP",  "HAVING", "ORDER"};
    if (t.kind == TokenKind::Word && kClauses.count(t.upper)) {
      clause.back() = t.upper;
      continue;
    }
    const bool filtering = clause.back() == "WHERE" || clause.back() == "ON";
    if (filtering && t.kind == TokenKind::Word && i + 1 < tokens.size() &&
        tokens[i + 1].text == "(" && !IsAggregate(t.upper) &&
        (t.upper == "CAST" || !Keywords().count(t.upper))) {
      // The call's arguments, up to its closing bracket.
      int depth = 0;
      for (std::size_t at = i + 1; at < tokens.size(); ++at) {
        if (tokens[at].text == "(") ++depth;
        if (tokens[at].text == ")" && --depth == 0) break;
        if (tokens[at].upper == "SELECT") break;  // a sub-select is judged on its own
        std::size_t length = 0;
        auto [table, column] = query.ColumnAt(at, &length);
        if (length > 0 && facts.IsLedger(table) && facts.Searched(table, column)) {
          problems.push_back({PlanFault::Function, table, t.text + "(" + table + "." + column});
          break;
        }
      }
    }
    std::size_t length = 0;
    auto [table, column] = query.ColumnAt(i, &length);
    if (length == 0 || facts.TypeOf(table, column) != "DATE") continue;
    // The values it is compared with: after an operator or BETWEEN, or before an operator.
    std::vector<const Token*> others;
    const std::size_t after = i + length;
    if (after + 1 < tokens.size() && IsComparison(tokens[after])) {
      others.push_back(&tokens[after + 1]);
    }
    if (after + 3 < tokens.size() && tokens[after].upper == "BETWEEN") {
      others.push_back(&tokens[after + 1]);
      others.push_back(&tokens[after + 3]);
    }
    if (i >= 2 && IsComparison(tokens[i - 1])) others.push_back(&tokens[i - 2]);
    for (const Token* other : others) {
      const bool iso = other->kind == TokenKind::String && IsIsoDate(other->text);
      if (other->kind == TokenKind::Number || (other->kind == TokenKind::String && !iso)) {
        problems.push_back(
            {PlanFault::DateText, table, table + "." + column + " against " + other->text});
      }
    }
  }
}

}  // namespace

std::string_view FaultName(PlanFault fault) {
  switch (fault) {
    case PlanFault::Scan:
      return "scan";
    case PlanFault::GroupSort:
      return "group-sort";
    case PlanFault::Function:
      return "function";
    case PlanFault::DateText:
      return "date-text";
  }
  return "";
}

SchemaFacts::SchemaFacts(sqlite3* db) {
  std::vector<std::string> tables;
  EachRow(db, "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite%'",
          [&](sqlite3_stmt* s) { tables.push_back(Text(s, 0)); });
  for (const std::string& table : tables) {
    const std::string key = Lower(table);
    tables_[key] = table;
    EachRow(db, "SELECT name, type FROM pragma_table_info('" + table + "')",
            [&](sqlite3_stmt* s) { types_[key][Lower(Text(s, 0))] = Upper(Text(s, 1)); });
    EachRow(db,
            "SELECT il.name, ii.name FROM pragma_index_list('" + table +
                "') AS il, pragma_index_info(il.name) AS ii ORDER BY il.name, ii.seqno",
            [&](sqlite3_stmt* s) { indexes_[key][Text(s, 0)].push_back(Lower(Text(s, 1))); });
  }
}

std::string SchemaFacts::TableNamed(std::string_view name) const {
  auto found = tables_.find(Lower(name));
  return found == tables_.end() ? std::string() : found->second;
}

bool SchemaFacts::IsLedger(std::string_view table) const {
  return std::any_of(std::begin(kLedgerTables), std::end(kLedgerTables),
                     [&](std::string_view t) { return Lower(t) == Lower(table); });
}

std::string SchemaFacts::TypeOf(std::string_view table, std::string_view column) const {
  auto found = types_.find(Lower(table));
  if (found == types_.end()) return {};
  auto type = found->second.find(Lower(column));
  return type == found->second.end() ? std::string() : type->second;
}

bool SchemaFacts::Searched(std::string_view table, std::string_view column) const {
  auto found = indexes_.find(Lower(table));
  if (found == indexes_.end()) return false;
  const std::string name = Lower(column);
  return std::any_of(found->second.begin(), found->second.end(), [&](const auto& index) {
    const std::vector<std::string>& columns = index.second;
    return (!columns.empty() && columns[0] == name) || (columns.size() > 1 && columns[1] == name);
  });
}

bool SchemaFacts::Leads(std::string_view table, const std::set<std::string>& columns) const {
  auto found = indexes_.find(Lower(table));
  if (found == indexes_.end()) return false;
  return std::any_of(found->second.begin(), found->second.end(), [&](const auto& index) {
    const std::vector<std::string>& c = index.second;
    if (c.size() < columns.size()) return false;
    return std::set<std::string>(c.begin(), c.begin() + static_cast<long>(columns.size())) ==
           columns;
  });
}

std::vector<std::string> QueryPlan(sqlite3* db, const std::string& sqlite_sql) {
  std::map<int, int> depth_of;  // step id -> depth
  std::vector<std::string> lines;
  EachRow(db, "EXPLAIN QUERY PLAN " + sqlite_sql, [&](sqlite3_stmt* s) {
    const int id = sqlite3_column_int(s, 0);
    const int parent = sqlite3_column_int(s, 1);
    const int depth = depth_of.count(parent) ? depth_of[parent] + 1 : 0;
    depth_of[id] = depth;
    lines.push_back(std::string(static_cast<std::size_t>(depth) * 2, ' ') + Text(s, 3));
  });
  return lines;
}

std::vector<PlanProblem> PlanProblems(sqlite3* db, const SchemaFacts& facts,
                                      const std::string& sqlite_sql) {
  const Query query(sqlite_sql, facts);
  const std::vector<std::string> plan = QueryPlan(db, sqlite_sql);
  std::vector<PlanProblem> problems;
  CheckPlan(plan, query, facts, problems);
  CheckGroupSort(plan, query, facts, problems);
  CheckShapes(query, facts, problems);
  return problems;
}

PlanAllowList::PlanAllowList(std::string_view name)
    : rows_(ReadCases(name, 4)), used_(rows_.size(), false) {}

bool PlanAllowList::Allows(const PlanProblem& problem, const std::string& sqlite_sql) {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const std::vector<std::string>& f = rows_[i].fields;
    if (f[0] == FaultName(problem.fault) && Lower(f[1]) == Lower(problem.table) &&
        sqlite_sql.find(f[2]) != std::string::npos) {
      used_[i] = true;
      return true;
    }
  }
  return false;
}

std::vector<std::string> PlanAllowList::Unused() const {
  std::vector<std::string> unused;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (!used_[i]) unused.push_back(rows_[i].Where());
  }
  return unused;
}

PlanConnection::PlanConnection(const std::string& path) {
  const bool memory = path == ":memory:";
  const int flags = memory ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  if (sqlite3_open_v2(path.c_str(), &db_, flags, nullptr) != SQLITE_OK) {
    std::string message = sqlite3_errmsg(db_);
    sqlite3_close(db_);
    throw std::runtime_error("cannot open " + path + ": " + message);
  }
  if (memory && sqlite3_exec(db_, std::string(data::CompanySchemaSql()).c_str(), nullptr, nullptr,
                             nullptr) != SQLITE_OK) {
    std::string message = sqlite3_errmsg(db_);
    sqlite3_close(db_);
    throw std::runtime_error("the company schema does not load: " + message);
  }
}

PlanConnection::~PlanConnection() { sqlite3_close(db_); }

PlanChecker::PlanChecker(const std::string& company_path, std::string_view allow_list)
    : company_(company_path), empty_(":memory:"), facts_(company_.Handle()), allowed_(allow_list) {}

std::vector<std::string> PlanChecker::Failures(const std::string& sqlite_sql,
                                               const std::string& from) {
  std::vector<std::string> failures;
  for (const auto& [db, statistics] :
       {std::pair{company_.Handle(), "with statistics"}, std::pair{empty_.Handle(), "without"}}) {
    std::vector<PlanProblem> problems;
    try {
      problems = PlanProblems(db, facts_, sqlite_sql);
    } catch (const std::exception& e) {
      failures.push_back(from + ": " + e.what());
      continue;
    }
    for (const PlanProblem& problem : problems) {
      // Without statistics only the general ledger's indexes are chosen to hold.
      if (db == empty_.Handle() && problem.table != "glTransaction") continue;
      if (allowed_.Allows(problem, sqlite_sql)) continue;
      std::ostringstream message;
      message << FaultName(problem.fault) << " " << problem.table << " (" << problem.detail << "), "
              << statistics << ", from " << from << "\n  " << sqlite_sql << "\n  plan:";
      for (const std::string& line : QueryPlan(db, sqlite_sql)) message << "\n    " << line;
      failures.push_back(message.str());
    }
  }
  return failures;
}

}  // namespace trellin::testing
