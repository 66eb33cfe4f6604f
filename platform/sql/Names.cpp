#include "platform/sql/Names.h"

#include <algorithm>
#include <array>

#include "platform/sql/Dialect.h"

namespace trellin::sql {
namespace {

// SQLite's keywords, sorted, upper case. A name equal to one of them is quoted on output so
// that a Jet column called, say, [Order] or [Group] stays a name.
constexpr std::array<std::string_view, 147> kSqliteKeywords{"ABORT",
                                                            "ACTION",
                                                            "ADD",
                                                            "AFTER",
                                                            "ALL",
                                                            "ALTER",
                                                            "ALWAYS",
                                                            "ANALYZE",
                                                            "AND",
                                                            "AS",
                                                            "ASC",
                                                            "ATTACH",
                                                            "AUTOINCREMENT",
                                                            "BEFORE",
                                                            "BEGIN",
                                                            "BETWEEN",
                                                            "BY",
                                                            "CASCADE",
                                                            "CASE",
                                                            "CAST",
                                                            "CHECK",
                                                            "COLLATE",
                                                            "COLUMN",
                                                            "COMMIT",
                                                            "CONFLICT",
                                                            "CONSTRAINT",
                                                            "CREATE",
                                                            "CROSS",
                                                            "CURRENT",
                                                            "CURRENT_DATE",
                                                            "CURRENT_TIME",
                                                            "CURRENT_TIMESTAMP",
                                                            "DATABASE",
                                                            "DEFAULT",
                                                            "DEFERRABLE",
                                                            "DEFERRED",
                                                            "DELETE",
                                                            "DESC",
                                                            "DETACH",
                                                            "DISTINCT",
                                                            "DO",
                                                            "DROP",
                                                            "EACH",
                                                            "ELSE",
                                                            "END",
                                                            "ESCAPE",
                                                            "EXCEPT",
                                                            "EXCLUDE",
                                                            "EXCLUSIVE",
                                                            "EXISTS",
                                                            "EXPLAIN",
                                                            "FAIL",
                                                            "FILTER",
                                                            "FIRST",
                                                            "FOLLOWING",
                                                            "FOR",
                                                            "FOREIGN",
                                                            "FROM",
                                                            "FULL",
                                                            "GENERATED",
                                                            "GLOB",
                                                            "GROUP",
                                                            "GROUPS",
                                                            "HAVING",
                                                            "IF",
                                                            "IGNORE",
                                                            "IMMEDIATE",
                                                            "IN",
                                                            "INDEX",
                                                            "INDEXED",
                                                            "INITIALLY",
                                                            "INNER",
                                                            "INSERT",
                                                            "INSTEAD",
                                                            "INTERSECT",
                                                            "INTO",
                                                            "IS",
                                                            "ISNULL",
                                                            "JOIN",
                                                            "KEY",
                                                            "LAST",
                                                            "LEFT",
                                                            "LIKE",
                                                            "LIMIT",
                                                            "MATCH",
                                                            "MATERIALIZED",
                                                            "NATURAL",
                                                            "NO",
                                                            "NOT",
                                                            "NOTHING",
                                                            "NOTNULL",
                                                            "NULL",
                                                            "NULLS",
                                                            "OF",
                                                            "OFFSET",
                                                            "ON",
                                                            "OR",
                                                            "ORDER",
                                                            "OTHERS",
                                                            "OUTER",
                                                            "OVER",
                                                            "PARTITION",
                                                            "PLAN",
                                                            "PRAGMA",
                                                            "PRECEDING",
                                                            "PRIMARY",
                                                            "QUERY",
                                                            "RAISE",
                                                            "RANGE",
                                                            "RECURSIVE",
                                                            "REFERENCES",
                                                            "REGEXP",
                                                            "REINDEX",
                                                            "RELEASE",
                                                            "RENAME",
                                                            "REPLACE",
                                                            "RESTRICT",
                                                            "RETURNING",
                                                            "RIGHT",
                                                            "ROLLBACK",
                                                            "ROW",
                                                            "ROWS",
                                                            "SAVEPOINT",
                                                            "SELECT",
                                                            "SET",
                                                            "TABLE",
                                                            "TEMP",
                                                            "TEMPORARY",
                                                            "THEN",
                                                            "TIES",
                                                            "TO",
                                                            "TRANSACTION",
                                                            "TRIGGER",
                                                            "UNBOUNDED",
                                                            "UNION",
                                                            "UNIQUE",
                                                            "UPDATE",
                                                            "USING",
                                                            "VACUUM",
                                                            "VALUES",
                                                            "VIEW",
                                                            "VIRTUAL",
                                                            "WHEN",
                                                            "WHERE",
                                                            "WINDOW",
                                                            "WITH",
                                                            "WITHOUT"};

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

bool IsPlainWord(std::string_view name) {
  if (name.empty()) return false;
  auto word_char = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  };
  if (name[0] >= '0' && name[0] <= '9') return false;
  return std::all_of(name.begin(), name.end(), word_char);
}

bool IsSqliteKeyword(std::string_view name) {
  // No keyword is longer than CURRENT_TIMESTAMP.
  char upper[20];
  if (name.size() > sizeof upper) return false;
  for (std::size_t i = 0; i < name.size(); ++i) upper[i] = Upper(name[i]);
  return std::binary_search(kSqliteKeywords.begin(), kSqliteKeywords.end(),
                            std::string_view(upper, name.size()));
}

}  // namespace

std::size_t NameHash::operator()(std::string_view name) const {
  std::size_t hash = 14695981039346656037ull;  // FNV-1a over the lower-cased bytes
  for (char c : name) {
    hash ^= static_cast<unsigned char>(Lower(c));
    hash *= 1099511628211ull;
  }
  return hash;
}

std::string QuoteName(std::string_view name) {
  // PostgreSQL folds a bare name to lower case: every name is quoted there, as its schema
  // spells it, so that its own keywords never clash either.
  if (!WritingPostgres() && IsPlainWord(name) && !IsSqliteKeyword(name)) return std::string(name);
  std::string quoted = "\"";
  for (char c : name) {
    quoted += c;
    if (c == '"') quoted += '"';
  }
  quoted += '"';
  return quoted;
}

}  // namespace trellin::sql
