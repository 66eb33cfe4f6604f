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
  if (t.form == Form::kBoolean) return NumberLiteral(t.sql == "1" ? "-1" : "0");
  return Expression(MinusPrefixed(t), SemType::Long, kPrecUnary);
}

Typed MoneyToText(const Typed& t) {
  // Shortest decimal: 12.5, 12, -0.0001. printf turns Null into 0, so Null is kept apart.
  std::string value = Wrap(t, kPrecMul);
  return Expression("CASE WHEN " + value + " IS NULL THEN NULL ELSE RTRIM(RTRIM(PRINTF('%.4f', " +
                        value + " / 10000.0), '0'), '.') END",
                    SemType::Text, kPrecAtom);
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
        return Expression("CAST(ROUND(" + scaled + ") AS INTEGER)", SemType::Currency, kPrecAtom);
      }
      if (t.type == SemType::Boolean) return Coerce(BooleanAsLong(t), target);
      if (t.type == SemType::Long) {
        return Expression(Wrap(t, kPrecMul) + " * 10000", SemType::Currency, kPrecMul);
      }
      return Expression("CAST(ROUND(" + Wrap(t, kPrecMul) + " * 10000) AS INTEGER)",
                        SemType::Currency, kPrecAtom);
    }
    case SemType::Double:
      switch (t.type) {
        case SemType::Currency:
          return Expression(Wrap(t, kPrecMul) + " / 10000.0", SemType::Double, kPrecMul);
        case SemType::Boolean:
          return Relabel(BooleanAsLong(t), SemType::Double);
        case SemType::Text:
          return Expression("CAST(" + t.sql + " AS REAL)", SemType::Double, kPrecAtom);
        case SemType::Date:
          return Expression("JULIANDAY(" + t.sql + ") - 2415018.5", SemType::Double, kPrecAdd);
        case SemType::Long:
          // A Double comes back as REAL, even where its value is whole.
          if (t.form == Form::kNumber) {
            return Relabel(
                NumberLiteral(t.number.find_first_of(".eE") == std::string::npos ? t.number + ".0"
                                                                                 : t.number),
                SemType::Double);
          }
          return Expression("CAST(" + t.sql + " AS REAL)", SemType::Double, kPrecAtom);
        default:
          return Relabel(t, SemType::Double);
      }
    case SemType::Long:
      switch (t.type) {
        case SemType::Boolean:
          return BooleanAsLong(t);
        case SemType::Currency:
          return Expression("CAST(ROUND(" + Wrap(t, kPrecMul) + " / 10000.0) AS INTEGER)",
                            SemType::Long, kPrecAtom);
        case SemType::Date:
          return Coerce(Coerce(t, SemType::Double), SemType::Long);
        default:
          if (t.form == Form::kNumber && t.type == SemType::Long) return t;
          return Expression("CAST(ROUND(" + t.sql + ") AS INTEGER)", SemType::Long, kPrecAtom);
      }
    case SemType::Text:
      switch (t.type) {
        case SemType::Currency:
          return MoneyToText(t);
        case SemType::Boolean:
          return Expression("CASE WHEN " + t.sql + " THEN 'True' ELSE 'False' END", SemType::Text,
                            kPrecAtom);
        case SemType::Date:
          return Relabel(t, SemType::Text);
        default:
          if (t.form == Form::kNumber) return TextLiteral(t.number);
          return Expression("CAST(" + t.sql + " AS TEXT)", SemType::Text, kPrecAtom);
      }
    case SemType::Boolean:
      if (t.form == Form::kNumber) {
        Typed b;
        b.form = Form::kBoolean;
        b.type = SemType::Boolean;
        b.sql.assign(1, std::strtod(t.number.c_str(), nullptr) != 0 ? '1' : '0');
        return b;
      }
      return Expression(Wrap(t, kPrecEquality + 1) + " <> 0", SemType::Boolean, kPrecEquality);
    case SemType::Date:
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
