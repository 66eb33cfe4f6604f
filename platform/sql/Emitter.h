#pragma once
// Writes a parsed Jet statement as SQLite or PostgreSQL text (see Dialect.h), resolving names
// against the catalogue and typing every expression on the way. Internal to the front end.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/sql/Ast.h"
#include "platform/sql/Catalog.h"
#include "platform/sql/Typed.h"

namespace trellin::sql {

// One table (or derived table) of a FROM clause, under the name the statement gives it.
struct RangeVar {
  std::string name;                           // the alias, else the table name as in the catalogue
  const CatalogTable* table = nullptr;        // a catalogue table, or
  std::vector<ResultColumn> derived_columns;  // the columns of a derived table
  std::string derived_sql;                    // and its SQLite text
  const TableRef* ref = nullptr;              // where the FROM clause names it

  [[nodiscard]] const std::vector<ResultColumn>& Columns() const {
    return table != nullptr ? table->columns : derived_columns;
  }
  [[nodiscard]] const ResultColumn* FindColumn(std::string_view column) const;
};

// The names visible in one SELECT; a subquery's scope sees its parents' as well.
struct Scope {
  const Scope* parent = nullptr;
  std::vector<RangeVar> vars;
};

struct QueryText {
  std::string sql;
  std::vector<ResultColumn> columns;
};

class Emitter {
 public:
  explicit Emitter(const Catalog& catalog) : catalog_(catalog) {}

  // A whole query (SELECT or UNION, with ORDER BY), inside `outer` when it is a subquery.
  QueryText WriteQuery(const Query& query, const Scope* outer);
  Typed WriteExpr(const Expr& expr, const Scope& scope);

 private:
  struct Item {
    Typed value;
    std::string name;
    bool user_alias = false;
    bool from_column = false;
    std::string qualifier;  // the range name of a column item, for duplicate names
  };
  struct SelectText {
    std::string head;  // SELECT [DISTINCT]
    std::vector<Item> items;
    std::string tail;  // FROM ... HAVING ...
    Scope scope;
  };

  // EmitQuery.cpp
  SelectText WriteSelect(const Select& select, const Scope* outer);
  void AddRangeVars(const TableRef& ref, Scope& scope);
  std::string WriteTableRef(const TableRef& ref, const Scope& scope);
  void ExpandStar(const SelectItem& item, const Scope& scope, std::vector<Item>& items);
  std::string WriteOrderBy(const Query& query, const SelectText& select);
  std::string WriteCompoundOrderBy(const Query& query, const SelectText& first);
  static std::string ItemList(const std::vector<Item>& items);
  static void CaseBlindItems(std::vector<Item>& items);

  // EmitExpr.cpp
  // Far above any report's, and above an account filter of 10,000 ranges.
  static constexpr std::size_t kMaxExpressionLength = 8 << 20;
  Typed WriteNode(const Expr& expr, const Scope& scope);
  Typed WriteColumn(const Expr& expr, const Scope& scope);
  Typed WriteUnary(const Expr& expr, const Scope& scope);
  Typed WriteBinary(const Expr& expr, const Scope& scope);
  // One operator of a chain other than And, Or and &, applied to what the chain gave so far.
  Typed WriteOperator(Op op, Typed left, Typed right, int position);
  Typed WriteComparison(Op op, Typed left, Typed right);
  Typed WriteArithmetic(Op op, Typed left, Typed right, int position);
  Typed WriteBetween(const Expr& expr, const Scope& scope);
  Typed WriteInList(const Expr& expr, const Scope& scope);
  Typed WriteLike(const Expr& expr, const Scope& scope);
  Typed WriteSubquery(const Expr& expr, const Scope& scope);

  // Functions.cpp
  Typed WriteCall(const Expr& expr, const Scope& scope);

  const Catalog& catalog_;
  int derived_tables_ = 0;  // PostgreSQL: the derived tables named so far
};

}  // namespace trellin::sql
