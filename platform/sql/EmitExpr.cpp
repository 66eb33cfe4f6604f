// Expressions: names, literals and operators, typed as they are written.

#include <string>

#include "platform/sql/Emitter.h"
#include "platform/sql/Names.h"
#include "platform/sql/SqlError.h"

namespace trellin::sql {
namespace {

struct ComparisonOp {
  Op op;
  std::string_view sql;
  int prec;
};

constexpr ComparisonOp kComparisonOps[] = {
    {Op::kEq, "=", kPrecEquality}, {Op::kNe, "<>", kPrecEquality}, {Op::kLt, "<", kPrecCompare},
    {Op::kLe, "<=", kPrecCompare}, {Op::kGt, ">", kPrecCompare},   {Op::kGe, ">=", kPrecCompare},
};

std::string NoCase(const Typed& t) { return CaseBlindText(t).sql; }

// A condition: PostgreSQL takes only a Boolean where SQLite takes any number.
Typed Condition(Typed t) {
  if (!WritingPostgres() || t.type == SemType::Boolean) return t;
  return Coerce(t, SemType::Boolean);
}

// A divisor: SQLite gives Null for a division by nought, where PostgreSQL stops the query.
Typed Divisor(const Typed& t) {
  if (!WritingPostgres() ||
      (t.form == Form::kNumber && t.number.find_first_not_of("-0.") != std::string::npos)) {
    return t;
  }
  return Expression("NULLIF(" + t.sql + ", 0)", t.type, kPrecAtom);
}

// ESCAPE '' on PostgreSQL, whose LIKE otherwise reads a backslash as an escape.
std::string_view LikeEscape() { return WritingPostgres() ? " ESCAPE ''" : ""; }

Typed Negate(const Typed& t) {
  if (t.form == Form::kNumber) {
    return NumberLiteral(t.number[0] == '-' ? t.number.substr(1) : "-" + t.number);
  }
  if (t.form == Form::kNull) return t;
  return Expression(MinusPrefixed(t), t.type, kPrecUnary);
}

// The Jet wildcards * and ? as SQLite's % and _; ADO's % and _ pass through.
std::string LikePattern(std::string_view pattern) {
  std::string out;
  for (char c : pattern) {
    out += c == '*' ? '%' : c == '?' ? '_' : c;
  }
  return out;
}

SemType ArithmeticOperandType(SemType type) {
  switch (type) {
    case SemType::Boolean:
      return SemType::Long;
    case SemType::Text:
    case SemType::Date:
      return SemType::Double;
    default:
      return type;
  }
}

// Money as its amount; other numbers as they are.
Typed Unscaled(const Typed& t) {
  return t.type == SemType::Currency ? Coerce(t, SemType::Double) : t;
}

// Date plus a number of days: the result keeps its time only when it has one.
Typed ShiftDate(const Typed& date, const Typed& days, bool subtract) {
  Typed amount = Coerce(days, SemType::Double);
  if (WritingPostgres()) {
    std::string shift = subtract ? " - " : " + ";
    return Expression("CAST(" + Wrap(date, kPrecAdd + 1) + shift + Wrap(amount, kPrecMul) +
                          " * INTERVAL '1 day' AS TIMESTAMP(0))",
                      SemType::Date, kPrecAtom);
  }
  std::string offset = subtract ? MinusPrefixed(amount) : Wrap(amount, kPrecUnary);
  // DATETIME gives "yyyy-mm-dd hh:mm:ss"; a midnight time is cut off again, so that the date
  // is written as stored dates are. The operand appears once, so shifts can be chained.
  return Expression("RTRIM(REPLACE(DATETIME(JULIANDAY(" + date.sql + ") + " + offset +
                        ") || '|', ' 00:00:00|', ''), '|')",
                    SemType::Date, kPrecAtom);
}

// & joins as text and reads Null as "".
Typed JoinPart(const Typed& t) {
  Typed text = Coerce(t, SemType::Text);
  if (text.form == Form::kText) return text;
  if (text.form == Form::kNull) return TextLiteral("");
  return Expression("COALESCE(" + text.sql + ", '')", SemType::Text, kPrecAtom);
}

struct ChainOp {
  Op op;
  std::string_view sql;
  int prec;
  SemType type;
};

constexpr ChainOp kChainOps[] = {
    {Op::kAnd, "AND", kPrecAnd, SemType::Boolean},
    {Op::kOr, "OR", kPrecOr, SemType::Boolean},
    {Op::kJoin, "||", kPrecConcat, SemType::Text},
};

// Up to this many operands of a chain are written flat, as they read: a OR b OR c.
constexpr std::size_t kFlatChain = 64;

// parts[lo, hi) joined by `op`: flat when few, else two bracketed halves, so that however long
// the chain the tree SQLite builds stays shallow (it takes none deeper than a thousand).
Typed JoinBalanced(const std::vector<Typed>& parts, std::size_t lo, std::size_t hi,
                   const ChainOp& op) {
  if (hi - lo <= kFlatChain) {
    Typed joined = parts[lo];
    for (std::size_t i = lo + 1; i < hi; ++i) {
      joined = Binary(joined, op.sql, parts[i], op.prec, op.type);
    }
    return joined;
  }
  const std::size_t mid = lo + (hi - lo) / 2;
  Typed left = JoinBalanced(parts, lo, mid, op);
  Typed right = JoinBalanced(parts, mid, hi, op);
  std::string sql;
  sql.reserve(left.sql.size() + right.sql.size() + op.sql.size() + 6);
  sql += '(';
  sql += left.sql;
  sql += ") ";
  sql += op.sql;
  sql += " (";
  sql += right.sql;
  sql += ')';
  return Expression(std::move(sql), op.type, op.prec);
}

}  // namespace

const ResultColumn* RangeVar::FindColumn(std::string_view column) const {
  if (table != nullptr) return table->FindColumn(column);
  for (const ResultColumn& c : derived_columns) {
    if (SameName(c.name, column)) return &c;
  }
  return nullptr;
}

Typed Emitter::WriteExpr(const Expr& expr, const Scope& scope) {
  Typed written = WriteNode(expr, scope);
  // A few conversions write their operand twice; nested deeply, they could grow the text
  // beyond any use, so the size is bounded.
  if (written.sql.size() > kMaxExpressionLength) {
    throw SqlError("expression too large to translate", expr.position, "", ErrorKind::Input);
  }
  return written;
}

Typed Emitter::WriteNode(const Expr& expr, const Scope& scope) {
  switch (expr.kind) {
    case ExprKind::kNumber:
      return NumberLiteral(expr.text);
    case ExprKind::kText:
      return TextLiteral(expr.text);
    case ExprKind::kDate: {
      Typed t = TextLiteral(expr.text);
      t.type = SemType::Date;
      t.form = Form::kDate;
      t.number = expr.text;  // the ISO text, for a date literal made text
      if (WritingPostgres()) t.sql.insert(0, "TIMESTAMP ");
      return t;
    }
    case ExprKind::kBoolean:
      return BooleanLiteral(expr.text == "True");
    case ExprKind::kNull:
      return NullLiteral();
    case ExprKind::kColumn:
      return WriteColumn(expr, scope);
    case ExprKind::kUnary:
      return WriteUnary(expr, scope);
    case ExprKind::kBinary:
      return WriteBinary(expr, scope);
    case ExprKind::kCall:
      return WriteCall(expr, scope);
    case ExprKind::kIsNull: {
      Typed operand = WriteExpr(*expr.args[0], scope);
      return Expression(
          Wrap(operand, kPrecEquality + 1) + (expr.negated ? " IS NOT NULL" : " IS NULL"),
          SemType::Boolean, kPrecEquality);
    }
    case ExprKind::kBetween:
      return WriteBetween(expr, scope);
    case ExprKind::kInList:
      return WriteInList(expr, scope);
    case ExprKind::kInQuery: {
      Typed operand = WriteExpr(*expr.args[0], scope);
      QueryText sub = WriteQuery(*expr.query, &scope);
      if (sub.columns.size() != 1) {
        throw SqlError("subquery must return one column", expr.query->position, "SELECT");
      }
      bool nocase = operand.type == SemType::Text && operand.form != Form::kColumn;
      std::string subject = nocase ? NoCase(operand) : Wrap(operand, kPrecEquality + 1);
      if (WritingPostgres() && nocase && sub.columns[0].type != SemType::Text) {
        subject = Wrap(operand, kPrecEquality + 1);
      }
      return Expression(subject + (expr.negated ? " NOT IN (" : " IN (") + sub.sql + ")",
                        SemType::Boolean, kPrecEquality);
    }
    case ExprKind::kLike:
      return WriteLike(expr, scope);
    case ExprKind::kExists: {
      QueryText sub = WriteQuery(*expr.query, &scope);
      return Expression("EXISTS (" + sub.sql + ")", SemType::Boolean, kPrecAtom);
    }
    case ExprKind::kSubquery:
      return WriteSubquery(expr, scope);
  }
  throw SqlError("unsupported expression", expr.position, "");
}

Typed Emitter::WriteColumn(const Expr& expr, const Scope& scope) {
  auto written = [&expr] {
    return expr.qualifier.empty() ? expr.text : expr.qualifier + "." + expr.text;
  };
  for (const Scope* level = &scope; level != nullptr; level = level->parent) {
    const RangeVar* found_var = nullptr;
    const ResultColumn* found_column = nullptr;
    bool qualifier_seen = false;
    for (const RangeVar& var : level->vars) {
      if (!expr.qualifier.empty()) {
        if (!SameName(var.name, expr.qualifier)) continue;
        qualifier_seen = true;
      }
      const ResultColumn* column = var.FindColumn(expr.text);
      if (column == nullptr) continue;
      if (found_column != nullptr) {
        throw SqlError("ambiguous column '" + written() + "'", expr.position, written());
      }
      found_var = &var;
      found_column = column;
    }
    if (found_column != nullptr) {
      Typed t;
      t.form = Form::kColumn;
      t.type = found_column->type;
      // A derived table without an alias has no name to qualify its columns with.
      t.sql = found_var->name.empty()
                  ? QuoteName(found_column->name)
                  : QuoteName(found_var->name) + "." + QuoteName(found_column->name);
      return t;
    }
    // A qualifier names the nearest table of that name; an outer one of the same name is
    // hidden by it.
    if (qualifier_seen) break;
  }
  if (!expr.qualifier.empty()) {
    bool known = false;
    for (const Scope* level = &scope; level != nullptr && !known; level = level->parent) {
      for (const RangeVar& var : level->vars) known = known || SameName(var.name, expr.qualifier);
    }
    if (!known) {
      throw SqlError("unknown table '" + expr.qualifier + "'", expr.position, expr.qualifier);
    }
  }
  throw SqlError("unknown column '" + written() + "'", expr.position, written());
}

Typed Emitter::WriteUnary(const Expr& expr, const Scope& scope) {
  Typed operand = WriteExpr(*expr.args[0], scope);
  switch (expr.op) {
    case Op::kNot:
      return Expression("NOT " + Wrap(Condition(operand), kPrecNot), SemType::Boolean, kPrecNot);
    case Op::kPlus:
      return operand;
    default:
      break;
  }
  switch (operand.type) {
    case SemType::Boolean:
      // -True is 1: the stored value itself, as a number.
      if (operand.form == Form::kBoolean) return NumberLiteral(IsTrueLiteral(operand) ? "1" : "0");
      if (WritingPostgres()) {
        return Expression("CAST(" + operand.sql + " AS INTEGER)", SemType::Long, kPrecAtom);
      }
      return Expression(operand.sql, SemType::Long, operand.prec);
    case SemType::Text:
    case SemType::Date:
      return Negate(Coerce(operand, SemType::Double));
    default:
      return Negate(operand);
  }
}

Typed Emitter::WriteBinary(const Expr& expr, const Scope& scope) {
  for (const ChainOp& chain : kChainOps) {
    if (chain.op != expr.op) continue;
    std::vector<Typed> parts;
    parts.reserve(expr.args.size());
    for (const auto& arg : expr.args) {
      Typed part = WriteExpr(*arg, scope);
      parts.push_back(expr.op == Op::kJoin ? JoinPart(part) : Condition(std::move(part)));
    }
    return JoinBalanced(parts, 0, parts.size(), chain);
  }
  // Other chains read left to right: a - b - c is (a - b) - c.
  Typed left = WriteExpr(*expr.args[0], scope);
  for (std::size_t i = 1; i < expr.args.size(); ++i) {
    left = WriteOperator(expr.op, std::move(left), WriteExpr(*expr.args[i], scope), expr.position);
  }
  return left;
}

Typed Emitter::WriteOperator(Op op, Typed left, Typed right, int position) {
  switch (op) {
    case Op::kAnd:
      return Binary(Condition(left), "AND", Condition(right), kPrecAnd, SemType::Boolean);
    case Op::kOr:
      return Binary(Condition(left), "OR", Condition(right), kPrecOr, SemType::Boolean);
    case Op::kXor:
      if (WritingPostgres()) {
        return Binary(Coerce(left, SemType::Boolean), "<>", Coerce(right, SemType::Boolean),
                      kPrecEquality, SemType::Boolean);
      }
      return Binary(
          Expression(Wrap(left, kPrecEquality + 1) + " <> 0", SemType::Boolean, kPrecEquality),
          "<>",
          Expression(Wrap(right, kPrecEquality + 1) + " <> 0", SemType::Boolean, kPrecEquality),
          kPrecEquality, SemType::Boolean);
    case Op::kEq:
    case Op::kNe:
    case Op::kLt:
    case Op::kLe:
    case Op::kGt:
    case Op::kGe:
      return WriteComparison(op, std::move(left), std::move(right));
    case Op::kJoin:
      return Binary(JoinPart(left), "||", JoinPart(right), kPrecConcat, SemType::Text);
    default:
      return WriteArithmetic(op, std::move(left), std::move(right), position);
  }
}

Typed Emitter::WriteComparison(Op op, Typed left, Typed right) {
  const ComparisonOp* entry = nullptr;
  for (const ComparisonOp& candidate : kComparisonOps) {
    if (candidate.op == op) entry = &candidate;
  }
  AlignForComparison(left, right, op == Op::kEq || op == Op::kNe);
  if (WritingPostgres()) {
    Typed blind_left = CaseBlindOperand(left, right);
    right = CaseBlindOperand(right, left);
    left = std::move(blind_left);
  } else if (NeedsNoCase(left, right)) {
    right = Expression(NoCase(right), right.type, kPrecCollate);
  }
  return Binary(left, entry->sql, right, entry->prec, SemType::Boolean);
}

Typed Emitter::WriteArithmetic(Op op, Typed left, Typed right, int position) {
  if (left.form == Form::kNull || right.form == Form::kNull) {
    // Null in arithmetic gives Null, typed as the other side would have been.
    SemType type = left.form == Form::kNull ? right.type : left.type;
    return Expression("NULL", op == Op::kDiv ? SemType::Double : type, kPrecAtom);
  }
  if (op == Op::kAdd && (left.type == SemType::Text || right.type == SemType::Text)) {
    // Text joined with +: Null in either part makes the whole Null, as || does.
    return Binary(Coerce(left, SemType::Text), "||", Coerce(right, SemType::Text), kPrecConcat,
                  SemType::Text);
  }
  if (op == Op::kAdd || op == Op::kSub) {
    if (left.type == SemType::Date && right.type == SemType::Date && op == Op::kSub) {
      if (WritingPostgres()) {
        return Expression("CAST(EXTRACT(EPOCH FROM " + Wrap(left, kPrecAdd) + " - " +
                              Wrap(right, kPrecAdd + 1) + ") AS DOUBLE PRECISION) / 86400",
                          SemType::Double, kPrecMul);
      }
      return Expression("JULIANDAY(" + left.sql + ") - JULIANDAY(" + right.sql + ")",
                        SemType::Double, kPrecAdd);
    }
    if (left.type == SemType::Date && IsNumeric(right.type)) {
      return ShiftDate(left, right, op == Op::kSub);
    }
    if (right.type == SemType::Date && IsNumeric(left.type) && op == Op::kAdd) {
      return ShiftDate(right, left, false);
    }
  }
  left = Coerce(left, ArithmeticOperandType(left.type));
  right = Coerce(right, ArithmeticOperandType(right.type));
  bool money = left.type == SemType::Currency || right.type == SemType::Currency;
  switch (op) {
    case Op::kAdd:
    case Op::kSub: {
      SemType type = Unify(left, right);
      std::string_view sql = op == Op::kAdd ? "+" : "-";
      return Binary(Coerce(left, type), sql, Coerce(right, type), kPrecAdd, type);
    }
    case Op::kMul: {
      if (!money) {
        SemType type = left.type == SemType::Long && right.type == SemType::Long ? SemType::Long
                                                                                 : SemType::Double;
        return Binary(left, "*", right, kPrecMul, type);
      }
      if (left.type == SemType::Currency && right.type == SemType::Currency) {
        Typed product = Binary(left, "*", right, kPrecMul, SemType::Currency);
        return Expression(RoundToWhole(product.sql + " / 10000.0"), SemType::Currency, kPrecAtom);
      }
      const Typed& factor = left.type == SemType::Currency ? right : left;
      Typed product = Binary(left, "*", right, kPrecMul, SemType::Currency);
      if (factor.type == SemType::Long) return product;
      // Money times a fraction is rounded back to ten-thousandths, half away from zero.
      return Expression(RoundToWhole(product.sql), SemType::Currency, kPrecAtom);
    }
    case Op::kDiv: {
      // Division is always floating point; money is divided as its amount, not its count.
      Typed dividend = left.type == SemType::Currency || left.type == SemType::Double
                           ? Coerce(left, SemType::Double)
                           : Expression(AsReal(left.sql), SemType::Double, kPrecAtom);
      return Binary(dividend, "/", Divisor(Unscaled(right)), kPrecMul, SemType::Double);
    }
    case Op::kIntDiv:
    case Op::kMod:
      return Binary(Coerce(left, SemType::Long), op == Op::kMod ? "%" : "/",
                    Divisor(Coerce(right, SemType::Long)), kPrecMul, SemType::Long);
    case Op::kPow:
      return Expression("POWER(" + Unscaled(left).sql + ", " + Unscaled(right).sql + ")",
                        SemType::Double, kPrecAtom);
    default:
      break;
  }
  throw SqlError("unsupported operator", position, "");
}

Typed Emitter::WriteBetween(const Expr& expr, const Scope& scope) {
  Typed operand = WriteExpr(*expr.args[0], scope);
  Typed low = WriteExpr(*expr.args[1], scope);
  Typed high = WriteExpr(*expr.args[2], scope);
  AlignForComparison(operand, low, false);
  AlignForComparison(operand, high, false);
  std::string subject = Wrap(operand, kPrecEquality + 1);
  if (WritingPostgres()) {
    subject = Wrap(CaseBlindOperand(operand, low), kPrecEquality + 1);
    low = CaseBlindOperand(low, operand);
    high = CaseBlindOperand(high, operand);
  } else if (NeedsNoCase(operand, low) && NeedsNoCase(operand, high)) {
    subject = NoCase(operand);
  }
  return Expression(subject + (expr.negated ? " NOT BETWEEN " : " BETWEEN ") +
                        Wrap(low, kPrecEquality + 1) + " AND " + Wrap(high, kPrecEquality + 1),
                    SemType::Boolean, kPrecEquality);
}

Typed Emitter::WriteInList(const Expr& expr, const Scope& scope) {
  Typed operand = WriteExpr(*expr.args[0], scope);
  std::string list;
  bool nocase = operand.type == SemType::Text && operand.form != Form::kColumn;
  for (std::size_t i = 1; i < expr.args.size(); ++i) {
    Typed subject = operand;
    Typed item = WriteExpr(*expr.args[i], scope);
    AlignForComparison(subject, item, true);
    item = CaseBlindOperand(item, subject);
    if (i > 1) list += ", ";
    list += item.sql;
  }
  std::string subject = nocase ? NoCase(operand) : Wrap(operand, kPrecEquality + 1);
  return Expression(subject + (expr.negated ? " NOT IN (" : " IN (") + list + ")", SemType::Boolean,
                    kPrecEquality);
}

Typed Emitter::WriteLike(const Expr& expr, const Scope& scope) {
  Typed subject = Coerce(WriteExpr(*expr.args[0], scope), SemType::Text);
  Typed pattern = expr.args[1]->kind == ExprKind::kText
                      ? TextLiteral(LikePattern(expr.args[1]->text))
                      : Coerce(WriteExpr(*expr.args[1], scope), SemType::Text);
  return Expression(Wrap(CaseBlindOperand(subject, pattern), kPrecEquality) +
                        (expr.negated ? " NOT LIKE " : " LIKE ") +
                        Wrap(CaseBlindOperand(pattern, subject), kPrecEquality + 1) +
                        std::string(LikeEscape()),
                    SemType::Boolean, kPrecEquality);
}

Typed Emitter::WriteSubquery(const Expr& expr, const Scope& scope) {
  QueryText sub = WriteQuery(*expr.query, &scope);
  if (sub.columns.size() != 1) {
    throw SqlError("subquery must return one column", expr.query->position, "SELECT");
  }
  return Expression("(" + sub.sql + ")", sub.columns[0].type, kPrecAtom);
}

}  // namespace trellin::sql
