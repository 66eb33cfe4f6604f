// The Jet functions the reports call, one row each: how many arguments, how they are written
// for SQLite and what type comes back.

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/sql/Emitter.h"
#include "platform/sql/Names.h"
#include "platform/sql/SqlError.h"

namespace trellin::sql {
namespace {

using Args = std::vector<Typed>;
using Writer = Typed (*)(Args& args);

Typed Call(std::string_view name, const std::vector<std::string>& args, SemType type) {
  std::string sql(name);
  sql += '(';
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += args[i];
  }
  sql += ')';
  return Expression(std::move(sql), type, kPrecAtom);
}

std::string TextOf(const Typed& t) { return Coerce(t, SemType::Text).sql; }
// Text compared by its bytes, as SQLite's string functions compare: PostgreSQL's case-blind
// text type would make REPLACE and the search case-blind.
std::string BytesOf(const Typed& t) {
  std::string text = TextOf(t);
  return WritingPostgres() && t.form != Form::kText ? "CAST(" + text + " AS TEXT)" : text;
}
// A count or a position as PostgreSQL's string functions take it: a 32-bit INTEGER.
std::string CountOf(const Typed& t) {
  std::string n = Coerce(t, SemType::Long).sql;
  return WritingPostgres() && t.form != Form::kNumber ? "CAST(" + n + " AS INTEGER)" : n;
}
std::string NumberOf(const Typed& t, SemType as) { return Coerce(t, as).sql; }

// Aggregates.

Typed Sum(Args& a) {
  switch (a[0].type) {
    case SemType::Currency:  // a sum of counts is exact
    case SemType::Long:
    case SemType::Null:
      return Call("SUM", {a[0].sql}, a[0].type == SemType::Null ? SemType::Long : a[0].type);
    case SemType::Boolean:  // each True counts -1
      if (WritingPostgres()) {
        return Expression("-SUM(CAST(" + a[0].sql + " AS INTEGER))", SemType::Long, kPrecUnary);
      }
      return Expression("-SUM(" + a[0].sql + ")", SemType::Long, kPrecUnary);
    default:
      return Call("SUM", {NumberOf(a[0], SemType::Double)}, SemType::Double);
  }
}

Typed Avg(Args& a) {
  if (a[0].type == SemType::Currency) {
    return Expression(RoundToWhole("AVG(" + a[0].sql + ")"), SemType::Currency, kPrecAtom);
  }
  return Call("AVG", {NumberOf(a[0], SemType::Double)}, SemType::Double);
}

Typed Count(Args& a) { return Call("COUNT", {a[0].sql}, SemType::Long); }

// Jet's True is -1, below False; the stored 1 is above 0, so the extremes swap. Text is
// ranked without regard to case, as a column's own collation would rank it.
std::string Ranked(const Typed& t) {
  if (t.type == SemType::Text && t.form != Form::kColumn) return CaseBlindText(t).sql;
  return t.sql;
}
// PostgreSQL has no MIN or MAX of Booleans: the most of some Booleans is whether any is true.
std::string_view Extreme(SemType type, bool least) {
  if (type != SemType::Boolean) return least ? "MIN" : "MAX";
  // The stored extreme is Jet's other one.
  if (WritingPostgres()) return least ? "BOOL_OR" : "BOOL_AND";
  return least ? "MAX" : "MIN";
}
Typed Min(Args& a) { return Call(Extreme(a[0].type, true), {Ranked(a[0])}, a[0].type); }
Typed Max(Args& a) { return Call(Extreme(a[0].type, false), {Ranked(a[0])}, a[0].type); }

// Conditionals and Null.

Typed IIf(Args& a) {
  SemType type = Unify(a[1], a[2]);
  Typed condition = WritingPostgres() ? Coerce(a[0], SemType::Boolean) : a[0];
  return Expression("CASE WHEN " + condition.sql + " THEN " + Coerce(a[1], type).sql + " ELSE " +
                        Coerce(a[2], type).sql + " END",
                    type, kPrecAtom);
}

Typed Nz(Args& a) {
  if (a.size() == 1) a.push_back(a[0].type == SemType::Text ? TextLiteral("") : NumberLiteral("0"));
  SemType type = Unify(a[0], a[1]);
  return Call("COALESCE", {Coerce(a[0], type).sql, Coerce(a[1], type).sql}, type);
}

Typed IsNull(Args& a) {
  return Expression(Wrap(a[0], kPrecEquality + 1) + " IS NULL", SemType::Boolean, kPrecEquality);
}

// Numbers.

Typed Round(Args& a) {
  if (a[0].type == SemType::Currency) {
    if (a.size() == 1) a.push_back(NumberLiteral("0"));
    if (a[1].form == Form::kNumber && a[1].type == SemType::Long) {
      long digits = std::strtol(a[1].number.c_str(), nullptr, 10);
      if (digits >= 4) return a[0];
      if (digits >= -10) {
        std::string step(static_cast<std::size_t>(5 - digits), '0');
        step[0] = '1';
        return Expression(RoundToWhole(Wrap(a[0], kPrecMul) + " / " + step + ".0") + " * " + step,
                          SemType::Currency, kPrecMul);
      }
    }
  }
  if (WritingPostgres()) {
    // Halves away from zero, as SQLite rounds: PostgreSQL rounds the exact decimal so.
    std::string digits = a.size() > 1 ? ", " + CountOf(a[1]) : "";
    return Expression("CAST(ROUND(CAST(" + NumberOf(a[0], SemType::Double) + " AS NUMERIC)" +
                          digits + ") AS DOUBLE PRECISION)",
                      SemType::Double, kPrecAtom);
  }
  std::vector<std::string> args{NumberOf(a[0], SemType::Double)};
  if (a.size() > 1) args.push_back(NumberOf(a[1], SemType::Long));
  return Call("ROUND", args, SemType::Double);
}

Typed Abs(Args& a) {
  SemType type = a[0].type == SemType::Boolean ? SemType::Long : a[0].type;
  if (!IsNumeric(type)) type = SemType::Double;
  return Call("ABS", {Coerce(a[0], type).sql}, type);
}

Typed Sgn(Args& a) {
  Typed sign = Call("SIGN", {NumberOf(a[0], SemType::Double)}, SemType::Long);
  if (WritingPostgres()) sign.sql = AsInteger(sign.sql);
  return sign;
}

// Int rounds down, Fix towards zero; money stays money.
Typed Int(Args& a) {
  const std::string x = Wrap(a[0], kPrecMul);
  if (a[0].type == SemType::Currency) {
    return Expression(x + " - (" + x + " % 10000 + 10000) % 10000", SemType::Currency, kPrecAdd);
  }
  if (a[0].type == SemType::Long) return a[0];
  if (WritingPostgres()) return Call("FLOOR", {NumberOf(a[0], SemType::Double)}, SemType::Double);
  std::string d = Wrap(Coerce(a[0], SemType::Double), kPrecCompare + 1);
  return Expression(
      "CAST(CAST(" + d + " AS INTEGER) - (" + d + " < CAST(" + d + " AS INTEGER)) AS REAL)",
      SemType::Double, kPrecAtom);
}

Typed Fix(Args& a) {
  if (a[0].type == SemType::Currency) {
    std::string x = Wrap(a[0], kPrecMul);
    return Expression(x + " - " + x + " % 10000", SemType::Currency, kPrecAdd);
  }
  if (a[0].type == SemType::Long) return a[0];
  if (WritingPostgres()) return Call("TRUNC", {NumberOf(a[0], SemType::Double)}, SemType::Double);
  return Expression("CAST(CAST(" + NumberOf(a[0], SemType::Double) + " AS INTEGER) AS REAL)",
                    SemType::Double, kPrecAtom);
}

Typed CCur(Args& a) { return Coerce(a[0], SemType::Currency); }
Typed CDbl(Args& a) { return Coerce(Coerce(a[0], SemType::Double), SemType::Double); }
Typed CLng(Args& a) {
  if (a[0].type == SemType::Long) return a[0];
  return Coerce(a[0].type == SemType::Currency ? a[0] : Coerce(a[0], SemType::Double),
                SemType::Long);
}
Typed CBool(Args& a) { return Coerce(a[0], SemType::Boolean); }
Typed CStr(Args& a) { return Coerce(a[0], SemType::Text); }
Typed CDate(Args& a) { return Coerce(a[0], SemType::Date); }
Typed Val(Args& a) { return Coerce(Coerce(a[0], SemType::Text), SemType::Double); }

// Text.

Typed Space(Args& a) {
  if (WritingPostgres()) return Call("REPEAT", {"' '", CountOf(a[0])}, SemType::Text);
  return Call("PRINTF", {"'%*s'", NumberOf(a[0], SemType::Long), "''"}, SemType::Text);
}
Typed Len(Args& a) { return Call("LENGTH", {TextOf(a[0])}, SemType::Long); }
Typed Left(Args& a) {
  if (WritingPostgres()) return Call("SUBSTR", {TextOf(a[0]), "1", CountOf(a[1])}, SemType::Text);
  return Call("SUBSTR", {TextOf(a[0]), "1", NumberOf(a[1], SemType::Long)}, SemType::Text);
}
Typed Right(Args& a) {
  if (WritingPostgres()) {
    // RIGHT with a negative count drops characters, where Jet's gives ""
    std::string n = CountOf(a[1]);
    return Expression(
        "CASE WHEN " + n + " > 0 THEN RIGHT(" + TextOf(a[0]) + ", " + n + ") ELSE '' END",
        SemType::Text, kPrecAtom);
  }
  std::string n = NumberOf(a[1], SemType::Long);
  return Expression(
      "CASE WHEN " + n + " > 0 THEN SUBSTR(" + TextOf(a[0]) + ", -(" + n + ")) ELSE '' END",
      SemType::Text, kPrecAtom);
}
Typed Mid(Args& a) {
  if (WritingPostgres()) {
    std::vector<std::string> args{TextOf(a[0]), CountOf(a[1])};
    if (a.size() > 2) args.push_back(CountOf(a[2]));
    return Call("SUBSTR", args, SemType::Text);
  }
  std::vector<std::string> args{TextOf(a[0]), NumberOf(a[1], SemType::Long)};
  if (a.size() > 2) args.push_back(NumberOf(a[2], SemType::Long));
  return Call("SUBSTR", args, SemType::Text);
}
Typed UCase(Args& a) { return Call("UPPER", {TextOf(a[0])}, SemType::Text); }
Typed LCase(Args& a) { return Call("LOWER", {TextOf(a[0])}, SemType::Text); }
Typed Trim(Args& a) { return Call("TRIM", {TextOf(a[0])}, SemType::Text); }
Typed LTrim(Args& a) { return Call("LTRIM", {TextOf(a[0])}, SemType::Text); }
Typed RTrim(Args& a) { return Call("RTRIM", {TextOf(a[0])}, SemType::Text); }
Typed InStr(Args& a) {
  return Call(WritingPostgres() ? "STRPOS" : "INSTR", {BytesOf(a[0]), BytesOf(a[1])},
              SemType::Long);
}
Typed Replace(Args& a) {
  return Call("REPLACE", {BytesOf(a[0]), BytesOf(a[1]), BytesOf(a[2])}, SemType::Text);
}

// Dates.

// The PostgreSQL field for each strftime format the date parts use.
std::string_view DateField(std::string_view format) {
  if (format == "%Y") return "YEAR";
  if (format == "%m") return "MONTH";
  if (format == "%d") return "DAY";
  if (format == "%H") return "HOUR";
  if (format == "%M") return "MINUTE";
  if (format == "%S") return "SECOND";
  return "DOW";
}

Typed DatePart(const Typed& date, std::string_view format) {
  if (WritingPostgres()) {
    return Expression(
        AsInteger("EXTRACT(" + std::string(DateField(format)) + " FROM " + date.sql + ")"),
        SemType::Long, kPrecAtom);
  }
  return Expression("CAST(STRFTIME('" + std::string(format) + "', " + date.sql + ") AS INTEGER)",
                    SemType::Long, kPrecAtom);
}
Typed Year(Args& a) { return DatePart(a[0], "%Y"); }
Typed Month(Args& a) { return DatePart(a[0], "%m"); }
Typed Day(Args& a) { return DatePart(a[0], "%d"); }
Typed Hour(Args& a) { return DatePart(a[0], "%H"); }
Typed Minute(Args& a) { return DatePart(a[0], "%M"); }
Typed Second(Args& a) { return DatePart(a[0], "%S"); }
Typed Weekday(Args& a) {
  return Expression(DatePart(a[0], "%w").sql + " + 1", SemType::Long, kPrecAdd);
}
Typed Today(Args&) {
  if (WritingPostgres()) {
    return Expression("CAST(CURRENT_DATE AS TIMESTAMP(0))", SemType::Date, kPrecAtom);
  }
  return Expression("DATE('now', 'localtime')", SemType::Date, kPrecAtom);
}
Typed Now(Args&) {
  if (WritingPostgres()) return Expression("LOCALTIMESTAMP(0)", SemType::Date, kPrecAtom);
  return Expression("DATETIME('now', 'localtime')", SemType::Date, kPrecAtom);
}

struct FunctionRow {
  std::string_view name;
  std::size_t min_args;
  std::size_t max_args;
  Writer write;
};

constexpr FunctionRow kFunctions[] = {
    {"Sum", 1, 1, Sum},         {"Count", 1, 1, Count},   {"Min", 1, 1, Min},
    {"Max", 1, 1, Max},         {"Avg", 1, 1, Avg},       {"IIf", 3, 3, IIf},
    {"Nz", 1, 2, Nz},           {"IsNull", 1, 1, IsNull}, {"Round", 1, 2, Round},
    {"Abs", 1, 1, Abs},         {"Sgn", 1, 1, Sgn},       {"Int", 1, 1, Int},
    {"Fix", 1, 1, Fix},         {"CCur", 1, 1, CCur},     {"CDbl", 1, 1, CDbl},
    {"CLng", 1, 1, CLng},       {"CInt", 1, 1, CLng},     {"CBool", 1, 1, CBool},
    {"CStr", 1, 1, CStr},       {"CDate", 1, 1, CDate},   {"Val", 1, 1, Val},
    {"Space", 1, 1, Space},     {"Len", 1, 1, Len},       {"Left", 2, 2, Left},
    {"Right", 2, 2, Right},     {"Mid", 2, 3, Mid},       {"UCase", 1, 1, UCase},
    {"LCase", 1, 1, LCase},     {"Trim", 1, 1, Trim},     {"LTrim", 1, 1, LTrim},
    {"RTrim", 1, 1, RTrim},     {"InStr", 2, 2, InStr},   {"Replace", 3, 3, Replace},
    {"Year", 1, 1, Year},       {"Month", 1, 1, Month},   {"Day", 1, 1, Day},
    {"Hour", 1, 1, Hour},       {"Minute", 1, 1, Minute}, {"Second", 1, 1, Second},
    {"Weekday", 1, 1, Weekday}, {"Date", 0, 0, Today},    {"Now", 0, 0, Now},
};

}  // namespace

Typed Emitter::WriteCall(const Expr& expr, const Scope& scope) {
  const FunctionRow* row = nullptr;
  for (const FunctionRow& candidate : kFunctions) {
    if (SameName(candidate.name, expr.text)) row = &candidate;
  }
  if (row == nullptr) {
    throw SqlError("unknown function '" + expr.text + "'", expr.position, expr.text);
  }
  if (expr.star) {
    if (row->write != Count) {
      throw SqlError("'*' is allowed only in Count(*)", expr.position, expr.text);
    }
    return Expression("COUNT(*)", SemType::Long, kPrecAtom);
  }
  if (expr.args.size() < row->min_args || expr.args.size() > row->max_args) {
    throw SqlError("wrong number of arguments to '" + expr.text + "'", expr.position, expr.text);
  }
  Args args;
  args.reserve(expr.args.size());
  for (const auto& arg : expr.args) args.push_back(WriteExpr(*arg, scope));
  return row->write(args);
}

}  // namespace trellin::sql
