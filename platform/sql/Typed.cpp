#include "platform/sql/Typed.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace trellin::sql {
namespace {

bool StartsWithMinus(std::string_view s) { return !s.empty() && s[0] == '-'; }

Typed Relabel(Typed t, SemType type) {
  t.type = type;
  if (t.form == Form::kNumber || t.form == Form::kBoolean || t.form == Form::kText ||
      t.form == Form::kDate) {
    t.form = Form::kExpr;
  }
  return t;
}

// A Boolean as Jet counts it in arithmetic: True is -1.
Typed BooleanAsLong(const Typed& t) {
  if (t.form == Form::kBoolean) return NumberLiteral(IsTrueLiteral(t) ? "-1" : "0");
  if (WritingPostgres()) {
    return Expression("-CAST(" + t.sql + " AS INTEGER)", SemType::Long, kPrecUnary);
  }
  return Expression(MinusPrefixed(t), SemType::Long, kPrecUnary);
}

Typed MoneyToText(const Typed& t) {
  // Shortest decimal: 12.5, 12, -0.0001. printf turns Null into 0, so Null is kept apart.
  std::string value = Wrap(t, kPrecMul);
  if (WritingPostgres()) {
    return Expression("RTRIM(RTRIM(CAST(CAST(CAST(" + t.sql +
                          " AS NUMERIC) / 10000 AS NUMERIC(38,4)) AS TEXT), '0'), '.')",
                      SemType::Text, kPrecAtom);
  }
  return Expression("CASE WHEN " + value + " IS NULL THEN NULL ELSE RTRIM(RTRIM(PRINTF('%.4f', " +
                        value + " / 10000.0), '0'), '.') END",
                    SemType::Text, kPrecAtom);
}

// Text read as a number the way SQLite's CAST reads it: its leading number, else 0; Null stays
// Null. PostgreSQL's own cast refuses text that is not a number as a whole.
Typed TextToNumber(const Typed& t) {
  if (!WritingPostgres()) {
    return Expression("CAST(" + t.sql + " AS REAL)", SemType::Double, kPrecAtom);
  }
  return Expression("CASE WHEN " + Wrap(t, kPrecEquality + 1) +
                        " IS NULL THEN NULL ELSE CAST(COALESCE(SUBSTRING(CAST(" + t.sql +
                        " AS TEXT) FROM '^\\s*[-+]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][-+]?\\d+)?'), "
                        "'0') AS DOUBLE PRECISION) END",
                    SemType::Double, kPrecAtom);
}

}  // namespace

Typed Expression(std::string sql, SemType type, int prec) {
  Typed t;
  t.sql = std::move(sql);
  t.type = type;
  t.prec = prec;
  return t;
}

Typed NumberLiteral(std::string_view decimal) {
  Typed t;
  t.form = Form::kNumber;
  t.number = std::string(decimal);
  t.sql = t.number;
  t.prec = StartsWithMinus(decimal) ? kPrecUnary : kPrecAtom;
  bool whole = decimal.find_first_of(".eE") == std::string_view::npos;
  std::int64_t value = 0;
  auto [end, error] = std::from_chars(decimal.data(), decimal.data() + decimal.size(), value);
  t.type = whole && error == std::errc() ? SemType::Long : SemType::Double;
  return t;
}

Typed TextLiteral(std::string_view text) {
  Typed t;
  t.form = Form::kText;
  t.type = SemType::Text;
  t.sql.reserve(text.size() + 2);
  t.sql.push_back('\'');
  for (char c : text) {
    t.sql += c;
    if (c == '\'') t.sql += '\'';
  }
  t.sql += "'";
  return t;
}

Typed BooleanLiteral(bool value) {
  Typed b;
  b.form = Form::kBoolean;
  b.type = SemType::Boolean;
  if (WritingPostgres()) {
    b.sql = value ? "TRUE" : "FALSE";
  } else {
    b.sql.assign(1, value ? '1' : '0');
  }
  return b;
}

bool IsTrueLiteral(const Typed& t) {
  return t.form == Form::kBoolean && (t.sql == "1" || t.sql == "TRUE");
}

std::string AsInteger(std::string_view sql) {
  return "CAST(" + std::string(sql) + (WritingPostgres() ? " AS BIGINT)" : " AS INTEGER)");
}

std::string AsReal(std::string_view sql) {
  return "CAST(" + std::string(sql) + (WritingPostgres() ? " AS DOUBLE PRECISION)" : " AS REAL)");
}

std::string RoundToWhole(std::string_view sql) {
  if (WritingPostgres()) return "CAST(ROUND(CAST(" + std::string(sql) + " AS NUMERIC)) AS BIGINT)";
  return "CAST(ROUND(" + std::string(sql) + ") AS INTEGER)";
}

Typed CaseBlindText(const Typed& t) {
  if (WritingPostgres()) {
    return Expression("CAST(" + t.sql + " AS CITEXT) COLLATE \"C\"", t.type, kPrecCollate);
  }
  return Expression(Wrap(t, kPrecCollate) + " COLLATE NOCASE", t.type, kPrecCollate);
}

Typed CaseBlindOperand(const Typed& t, const Typed& other) {
  if (!WritingPostgres() || t.type != SemType::Text || t.form == Form::kColumn ||
      t.form == Form::kNull) {
    return t;
  }
  if (t.form == Form::kText && other.form == Form::kColumn) return t;
  return CaseBlindText(t);
}

Typed NullLiteral() {
  Typed t;
  t.form = Form::kNull;
  t.sql = "NULL";
  return t;
}

std::string Wrap(const Typed& t, int min_prec) {
  if (t.prec >= min_prec) return t.sql;
  return "(" + t.sql + ")";
}

std::string MinusPrefixed(const Typed& t) {
  std::string operand = StartsWithMinus(t.sql) ? "(" + t.sql + ")" : Wrap(t, kPrecUnary);
  operand.insert(0, 1, '-');
  return operand;
}

Typed Binary(const Typed& left, std::string_view op, const Typed& right, int prec, SemType type) {
  std::string sql = Wrap(left, prec);
  sql += ' ';
  sql += op;
  sql += ' ';
  // The right operand of an operator of the same level is bracketed: a - (b - c).
  bool associative = prec == kPrecAnd || prec == kPrecOr;
  sql += Wrap(right, associative ? prec : prec + 1);
  return Expression(std::move(sql), type, prec);
}

std::string ScaleDecimal(std::string_view decimal) {
  bool negative = StartsWithMinus(decimal);
  if (negative) decimal.remove_prefix(1);
  if (decimal.find_first_of("eE") != std::string_view::npos) {
    double value = std::strtod(std::string(decimal).c_str(), nullptr) * 10000.0;
    if (negative) value = -value;
    char buffer[40];
    if (!std::isfinite(value)) return negative ? "-9e999" : "9e999";  // SQLite's infinity
    if (std::fabs(value) < 9e15 && value == std::floor(value)) {
      std::snprintf(buffer, sizeof buffer, "%.0f", value);
    } else {
      std::snprintf(buffer, sizeof buffer, "%.17g", value);
    }
    return buffer;
  }
  std::size_t point = decimal.find('.');
  std::string whole(decimal.substr(0, point));
  std::string fraction(point == std::string_view::npos ? "" : decimal.substr(point + 1));
  fraction.append(fraction.size() < 4 ? 4 - fraction.size() : 0, '0');
  whole += fraction.substr(0, 4);
  fraction.erase(0, 4);
  whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
  while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();
  std::string result = negative && (whole != "0" || !fraction.empty()) ? "-" : "";
  result += whole;
  if (!fraction.empty()) result += "." + fraction;
  return result;
}

bool IsExactMoney(const Typed& t) {
  if (t.form != Form::kNumber) return false;
  std::string scaled = ScaleDecimal(t.number);
  return scaled.find_first_of(".eE") == std::string::npos;
}

Typed Coerce(const Typed& t, SemType target) {
  if (t.type == target || t.form == Form::kNull || target == SemType::Null) return t;
  switch (target) {
    case SemType::Currency: {
      if (t.form == Form::kNumber) {
        std::string scaled = ScaleDecimal(t.number);
        if (IsExactMoney(t)) {
          return Expression(scaled, SemType::Currency,
                            StartsWithMinus(scaled) ? kPrecUnary : kPrecAtom);
        }
        return Expression(RoundToWhole(scaled), SemType::Currency, kPrecAtom);
      }
      if (t.type == SemType::Boolean) return Coerce(BooleanAsLong(t), target);
      if (t.type == SemType::Long) {
        return Expression(Wrap(t, kPrecMul) + " * 10000", SemType::Currency, kPrecMul);
      }
      return Expression(RoundToWhole(Wrap(t, kPrecMul) + " * 10000"), SemType::Currency, kPrecAtom);
    }
    case SemType::Double:
      switch (t.type) {
        case SemType::Currency:
          if (WritingPostgres()) {
            return Expression(AsReal(t.sql) + " / 10000", SemType::Double, kPrecMul);
          }
          return Expression(Wrap(t, kPrecMul) + " / 10000.0", SemType::Double, kPrecMul);
        case SemType::Boolean:
          return Relabel(BooleanAsLong(t), SemType::Double);
        case SemType::Text:
          return TextToNumber(t);
        case SemType::Date:
          if (WritingPostgres()) {
            // Days since 30 December 1899, as Jet counts them; 25569 is 1 January 1970.
            return Expression(
                "CAST(EXTRACT(EPOCH FROM " + t.sql + ") AS DOUBLE PRECISION) / 86400 + 25569",
                SemType::Double, kPrecAdd);
          }
          return Expression("JULIANDAY(" + t.sql + ") - 2415018.5", SemType::Double, kPrecAdd);
        case SemType::Long:
          // A Double comes back as REAL, even where its value is whole.
          if (t.form == Form::kNumber) {
            return Relabel(
                NumberLiteral(t.number.find_first_of(".eE") == std::string::npos ? t.number + ".0"
                                                                                 : t.number),
                SemType::Double);
          }
          return Expression(AsReal(t.sql), SemType::Double, kPrecAtom);
        default:
          return Relabel(t, SemType::Double);
      }
    case SemType::Long:
      switch (t.type) {
        case SemType::Boolean:
          return BooleanAsLong(t);
        case SemType::Currency:
          return Expression(RoundToWhole(Wrap(t, kPrecMul) + " / 10000.0"), SemType::Long,
                            kPrecAtom);
        case SemType::Date:
          return Coerce(Coerce(t, SemType::Double), SemType::Long);
        default:
          if (t.form == Form::kNumber && t.type == SemType::Long) return t;
          return Expression(RoundToWhole(t.sql), SemType::Long, kPrecAtom);
      }
    case SemType::Text:
      switch (t.type) {
        case SemType::Currency:
          return MoneyToText(t);
        case SemType::Boolean:
          return Expression("CASE WHEN " + t.sql + " THEN 'True' ELSE 'False' END", SemType::Text,
                            kPrecAtom);
        case SemType::Date:
          if (!WritingPostgres()) return Relabel(t, SemType::Text);
          if (t.form == Form::kDate) return TextLiteral(t.number);
          // As SQLite stores it: the time only when there is one.
          return Expression("CASE WHEN CAST(" + t.sql + " AS TIME) = TIME '00:00' THEN TO_CHAR(" +
                                t.sql + ", 'YYYY-MM-DD') ELSE TO_CHAR(" + t.sql +
                                ", 'YYYY-MM-DD HH24:MI:SS') END",
                            SemType::Text, kPrecAtom);
        default:
          if (t.form == Form::kNumber) return TextLiteral(t.number);
          return Expression("CAST(" + t.sql + " AS TEXT)", SemType::Text, kPrecAtom);
      }
    case SemType::Boolean:
      if (t.form == Form::kNumber) {
        return BooleanLiteral(std::strtod(t.number.c_str(), nullptr) != 0);
      }
      return Expression(Wrap(t, kPrecEquality + 1) + " <> 0", SemType::Boolean, kPrecEquality);
    case SemType::Date:
      if (WritingPostgres()) {
        if (t.type == SemType::Text) {
          return Expression("CAST(" + t.sql + " AS TIMESTAMP(0))", SemType::Date, kPrecAtom);
        }
        if (IsNumeric(t.type)) {
          return Expression("CAST(TIMESTAMP '1899-12-30' + " +
                                AsReal(Coerce(t, SemType::Double).sql) +
                                " * INTERVAL '1 day' AS TIMESTAMP(0))",
                            SemType::Date, kPrecAtom);
        }
      }
      return Relabel(t, SemType::Date);
    case SemType::Null:
      break;
  }
  return t;
}

SemType Unify(const Typed& a, const Typed& b) {
  if (a.form == Form::kNull || a.type == SemType::Null) return b.type;
  if (b.form == Form::kNull || b.type == SemType::Null) return a.type;
  if (a.type == b.type) return a.type;
  if (a.type == SemType::Text || b.type == SemType::Text) return SemType::Text;
  if (a.type == SemType::Date || b.type == SemType::Date) return SemType::Date;
  if (a.type == SemType::Currency || b.type == SemType::Currency) {
    const Typed& other = a.type == SemType::Currency ? b : a;
    if (other.type == SemType::Double && !IsExactMoney(other)) return SemType::Double;
    return SemType::Currency;
  }
  if (a.type == SemType::Double || b.type == SemType::Double) return SemType::Double;
  return SemType::Long;
}

void AlignForComparison(Typed& a, Typed& b, bool equality) {
  if (a.form == Form::kNull || b.form == Form::kNull) return;
  if (WritingPostgres()) {
    // PostgreSQL compares no text with a number or a date: the other side is made text, as
    // SQLite's text columns make it, and text meeting a date is read as one.
    for (int pass = 0; pass < 2; ++pass) {
      Typed& x = pass == 0 ? a : b;
      Typed& y = pass == 0 ? b : a;
      // A date meeting a number is its serial number, as Jet compares them.
      if (x.type == SemType::Date && IsNumeric(y.type)) x = Coerce(x, SemType::Double);
      if (x.type != SemType::Text) continue;
      // As SQLite's affinities: a text column makes the number text; other text meeting a
      // number is read as one.
      if (IsNumeric(y.type) && x.form == Form::kColumn) {
        y = Coerce(y, SemType::Text);
      } else if (IsNumeric(y.type)) {
        x = Coerce(Coerce(x, SemType::Double), y.type == SemType::Boolean ? SemType::Long : y.type);
      }
      if (y.type == SemType::Date && x.form != Form::kText) x = Coerce(x, SemType::Date);
    }
  }
  for (int pass = 0; pass < 2; ++pass) {
    Typed& x = pass == 0 ? a : b;
    Typed& y = pass == 0 ? b : a;
    if (x.type != SemType::Boolean || y.type == SemType::Boolean) continue;
    // Jet's True is -1, stored as 1: "= True", "= -1" and "<> 0" test the stored value
    // directly so that an index still serves.
    if (equality && y.form == Form::kNumber && (y.number == "-1" || y.number == "0")) {
      y = Coerce(y, SemType::Boolean);
    } else if (IsNumeric(y.type)) {
      x = BooleanAsLong(x);
    }
  }
  for (int pass = 0; pass < 2; ++pass) {
    Typed& x = pass == 0 ? a : b;
    Typed& y = pass == 0 ? b : a;
    if (x.type != SemType::Currency || y.type == SemType::Currency) continue;
    if (y.form == Form::kNumber) {
      // A money literal compares with the stored count: Value > 100 is Value > 1000000.
      std::string scaled = ScaleDecimal(y.number);
      y = Expression(scaled, SemType::Currency, StartsWithMinus(scaled) ? kPrecUnary : kPrecAtom);
    } else if (y.type == SemType::Long) {
      y = Coerce(y, SemType::Currency);
    } else if (y.type == SemType::Double) {
      x = Coerce(x, SemType::Double);
    }
  }
}

bool NeedsNoCase(const Typed& a, const Typed& b) {
  if (a.type != SemType::Text && b.type != SemType::Text) return false;
  return a.form != Form::kColumn && b.form != Form::kColumn;
}

}  // namespace trellin::sql
