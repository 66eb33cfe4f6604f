#pragma once
// An expression already written as SQLite text, with what the writer needs to know to combine
// it further: its semantic type, how tightly it binds, and whether it is a bare column or a
// literal (literals are rewritten to suit what they meet: money literals are scaled, Jet's
// True of -1 becomes the stored 1).

#include <string>
#include <string_view>

#include "platform/sql/SemType.h"

namespace trellin::sql {

// SQLite's operator precedence, loosest first.
enum Prec : int {
  kPrecOr = 1,
  kPrecAnd,
  kPrecNot,
  kPrecEquality,  // = <> IS IN LIKE BETWEEN
  kPrecCompare,   // < <= > >=
  kPrecAdd,
  kPrecMul,
  kPrecConcat,  // ||
  kPrecUnary,
  kPrecCollate,
  kPrecAtom,
};

enum class Form { kExpr, kColumn, kNumber, kText, kBoolean, kNull, kDate };

struct Typed {
  std::string sql;
  SemType type = SemType::Null;
  int prec = kPrecAtom;
  Form form = Form::kExpr;
  std::string number;  // kNumber: the decimal text, with '-' when negative

  [[nodiscard]] bool IsLiteral() const { return form != Form::kExpr && form != Form::kColumn; }
};

// Builders.
[[nodiscard]] Typed Expression(std::string sql, SemType type, int prec);
[[nodiscard]] Typed NumberLiteral(std::string_view decimal);  // "12", "-0.5", "1E3"
[[nodiscard]] Typed TextLiteral(std::string_view text);
[[nodiscard]] Typed NullLiteral();

// `t` as SQLite text that binds at least as tightly as `min_prec`, in parentheses if needed.
[[nodiscard]] std::string Wrap(const Typed& t, int min_prec);
// "-" and `t`, bracketed where needed; never "--", which SQLite reads as a comment.
[[nodiscard]] std::string MinusPrefixed(const Typed& t);
// `left op right` for a left-associative operator of precedence `prec`.
[[nodiscard]] Typed Binary(const Typed& left, std::string_view op, const Typed& right, int prec,
                           SemType type);

// `t` converted to the storage form of `target` (a money count, a REAL, text, ...). Null
// stays Null; a number literal meeting money is scaled in place.
[[nodiscard]] Typed Coerce(const Typed& t, SemType target);
// The common type of two values that stand in one place (the branches of IIf, a UNION column).
[[nodiscard]] SemType Unify(const Typed& a, const Typed& b);
// Rewrites two values about to be compared so that they compare by meaning: money against
// money counts, a Boolean against the stored 0/1, Double against unscaled money.
// `equality` is true for = and <> and In.
void AlignForComparison(Typed& a, Typed& b, bool equality);
// True when the comparison of `a` and `b` must be told to ignore case: text, and neither side a
// column, whose NOCASE declaration would apply by itself.
[[nodiscard]] bool NeedsNoCase(const Typed& a, const Typed& b);
// Whether a number literal is a whole number of ten-thousandths (so it can become money).
[[nodiscard]] bool IsExactMoney(const Typed& t);
// The decimal text shifted four places: "12.34" -> "123400", "0.00005" -> "0.5".
[[nodiscard]] std::string ScaleDecimal(std::string_view decimal);

}  // namespace trellin::sql
