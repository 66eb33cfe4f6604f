#pragma once
// An expression already written as SQLite text, with what the writer needs to know to combine
// it further: its semantic type, how tightly it binds, and whether it is a bare column or a
// literal (literals are rewritten to suit what they meet: money literals are scaled, Jet's
// True of -1 becomes the stored 1).

#include <string>
#include <string_view>

#include "platform/sql/Dialect.h"
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
[[nodiscard]] Typed BooleanLiteral(bool value);  // 1 or 0 for SQLite, TRUE or FALSE
[[nodiscard]] bool IsTrueLiteral(const Typed& t);

// Words and shapes that differ between the dialects (see Dialect.h).
// CAST(sql AS INTEGER): BIGINT on PostgreSQL, whose INTEGER holds 32 bits.
[[nodiscard]] std::string AsInteger(std::string_view sql);
// CAST(sql AS REAL): DOUBLE PRECISION on PostgreSQL, whose REAL holds 32 bits.
[[nodiscard]] std::string AsReal(std::string_view sql);
// `sql` rounded to a whole number, halves away from zero, as an integer. PostgreSQL rounds a
// double's halves to even, so it rounds the exact decimal instead.
[[nodiscard]] std::string RoundToWhole(std::string_view sql);
// A text value that compares, groups and sorts without regard to case: COLLATE NOCASE, or
// on PostgreSQL the case-blind text type with byte order (see README.md).
[[nodiscard]] Typed CaseBlindText(const Typed& t);

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
// PostgreSQL: `t` ready to be compared with `other` without regard to case. A column is
// case-blind by its type, and a text literal takes the type of the column it meets; any other
// text is cast. Other values, and every value on SQLite, come back as they are.
[[nodiscard]] Typed CaseBlindOperand(const Typed& t, const Typed& other);
// Whether a number literal is a whole number of ten-thousandths (so it can become money).
[[nodiscard]] bool IsExactMoney(const Typed& t);
// The decimal text shifted four places: "12.34" -> "123400", "0.00005" -> "0.5".
[[nodiscard]] std::string ScaleDecimal(std::string_view decimal);

}  // namespace trellin::sql
