#pragma once
// The syntax tree of one Jet SELECT statement, as written: no names resolved, no types.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trellin::sql {

struct Query;

enum class ExprKind {
  kNumber,   // text: the digits as written
  kText,     // text: the content
  kDate,     // text: ISO form, 'yyyy-mm-dd' or 'yyyy-mm-dd hh:mm:ss'
  kBoolean,  // text: "True" or "False"
  kNull,
  kColumn,    // qualifier (may be empty) and text: the column
  kUnary,     // op; args[0]
  kBinary,    // op; args[0] op args[1] op ...: a flat chain of one operator is one node, left to
              // right
  kCall,      // text: the function as written; args; star for Count(*)
  kIsNull,    // args[0]; negated for Is Not Null
  kBetween,   // args[0] Between args[1] And args[2]; negated
  kInList,    // args[0] In (args[1...]); negated
  kInQuery,   // args[0] In (query); negated
  kLike,      // args[0] Like args[1]; negated
  kExists,    // query
  kSubquery,  // (query) as a value
};

enum class Op {
  kNone,
  kOr,
  kXor,
  kAnd,
  kNot,
  kEq,
  kNe,
  kLt,
  kLe,
  kGt,
  kGe,
  kJoin,  // &
  kAdd,
  kSub,
  kMul,
  kDiv,
  kIntDiv,
  kMod,
  kPow,
  kNeg,
  kPlus,
};

struct Expr {
  ExprKind kind = ExprKind::kNull;
  int position = 0;  // 1-based offset of the first token
  Op op = Op::kNone;
  std::string text;
  std::string qualifier;
  bool negated = false;
  bool star = false;
  std::vector<std::unique_ptr<Expr>> args;
  std::unique_ptr<Query> query;
};

enum class JoinKind { kInner, kLeft, kRight, kCross };

struct TableRef {
  enum class Kind { kTable, kJoin, kDerived };
  Kind kind = Kind::kTable;
  int position = 0;
  std::string name;              // kTable: the table as written
  std::string alias;             // kTable, kDerived: the alias, may be empty for a table
  std::unique_ptr<Query> query;  // kDerived
  JoinKind join = JoinKind::kInner;
  std::unique_ptr<TableRef> left, right;  // kJoin
  std::unique_ptr<Expr> on;               // kJoin, absent for kCross
};

struct SelectItem {
  int position = 0;
  std::unique_ptr<Expr> expr;  // null for * and T.*
  std::string star_qualifier;  // T of T.*, empty for *
  std::string alias;           // empty when none was written
};

struct OrderItem {
  std::unique_ptr<Expr> expr;
  bool descending = false;
};

struct Select {
  int position = 0;
  bool distinct = false;
  std::optional<std::int64_t> top;
  std::vector<SelectItem> items;
  std::vector<std::unique_ptr<TableRef>> from;  // comma-separated, empty without FROM
  std::unique_ptr<Expr> where;
  std::vector<std::unique_ptr<Expr>> group_by;
  std::unique_ptr<Expr> having;
};

// One SELECT, or several joined by UNION; ORDER BY belongs to the whole.
struct Query {
  int position = 0;
  std::vector<Select> selects;  // at least one
  std::vector<bool> union_all;  // between selects[i] and selects[i + 1]
  std::vector<OrderItem> order_by;
};

}  // namespace trellin::sql
