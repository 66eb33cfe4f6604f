// Queries: SELECT lists, FROM clauses with their joins, UNION, ORDER BY, TOP.

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/sql/Emitter.h"
#include "platform/sql/Names.h"
#include "platform/sql/SqlError.h"

namespace trellin::sql {
namespace {

constexpr int kFirstExprNumber = 1000;

std::string JoinWord(JoinKind kind) {
  switch (kind) {
    case JoinKind::kLeft:
    case JoinKind::kRight:
      return " LEFT JOIN ";
    case JoinKind::kCross:
      return " CROSS JOIN ";
    case JoinKind::kInner:
      break;
  }
  return " INNER JOIN ";
}

// Text sorts and groups without regard to case: columns are declared so, and an expression
// is told so.
std::string CaseBlind(const Typed& t) {
  if (t.type == SemType::Text && t.form != Form::kColumn) return CaseBlindText(t).sql;
  return t.sql;
}

// A condition of WHERE, HAVING or ON: PostgreSQL takes only a Boolean there.
std::string ConditionText(const Typed& t) {
  if (!WritingPostgres() || t.type == SemType::Boolean) return t.sql;
  return Coerce(t, SemType::Boolean).sql;
}

// Jet sorts Null first, as SQLite does; PostgreSQL sorts it last unless told.
std::string_view NullsOrder(bool descending) {
  if (!WritingPostgres()) return "";
  return descending ? " NULLS LAST" : " NULLS FIRST";
}

const RangeVar* FindVar(const Scope& scope, const TableRef& ref) {
  for (const RangeVar& var : scope.vars) {
    if (var.ref == &ref) return &var;
  }
  return nullptr;
}

// Whether `expr` sums, counts or takes the least or greatest of its rows (not counting those of
// a subquery, which are its own).
bool HasAggregate(const Expr& expr) {
  if (expr.kind == ExprKind::kCall) {
    for (std::string_view name : {"Sum", "Count", "Min", "Max", "Avg"}) {
      if (SameName(expr.text, name)) return true;
    }
  }
  for (const auto& arg : expr.args) {
    if (arg && HasAggregate(*arg)) return true;
  }
  return false;
}

// Rows an ORDER BY leaves tied come from SQLite in the order it meets them, which for a table
// read whole is the order of its rows, the order they were written in and, in a company, of
// their keys: the assets of one name in a category by code. PostgreSQL's sort leaves ties in no
// order, so a SELECT from one table of known key that neither groups nor sums is sorted by that
// key after its own terms.
std::string KeyAfterOrder(const Select& select, const Scope& scope) {
  if (select.from.size() != 1 || select.from[0]->kind != TableRef::Kind::kTable ||
      select.distinct || !select.group_by.empty() || select.having || scope.vars.size() != 1 ||
      scope.vars[0].table == nullptr) {
    return {};
  }
  for (const SelectItem& item : select.items) {
    if (item.expr && HasAggregate(*item.expr)) return {};
  }
  std::string key;
  for (const std::string& column : scope.vars[0].table->key) {
    key += ", " + QuoteName(scope.vars[0].name) + "." + QuoteName(column) +
           std::string(NullsOrder(false));
  }
  return key;
}

}  // namespace

QueryText Emitter::WriteQuery(const Query& query, const Scope* outer) {
  std::vector<SelectText> parts;
  parts.reserve(query.selects.size());
  for (const Select& select : query.selects) parts.push_back(WriteSelect(select, outer));

  QueryText out;
  SelectText& first = parts.front();
  for (const Item& item : first.items) out.columns.push_back({item.name, item.value.type});

  if (parts.size() == 1) {
    std::string order_by = WriteOrderBy(query, first);
    if (!order_by.empty() && WritingPostgres())
      order_by += KeyAfterOrder(query.selects[0], first.scope);
    if (query.selects[0].distinct) CaseBlindItems(first.items);
    out.sql = first.head + " " + ItemList(first.items) + first.tail + order_by;
    if (query.selects[0].top) out.sql += " LIMIT " + std::to_string(*query.selects[0].top);
    return out;
  }

  // A UNION takes its names from the first SELECT and, column by column, the first type that
  // is not Null; the other SELECTs are converted to it, so that money stays money throughout.
  for (std::size_t p = 1; p < parts.size(); ++p) {
    if (parts[p].items.size() != first.items.size()) {
      throw SqlError("the SELECTs of a UNION have different numbers of columns",
                     query.selects[p].position, "SELECT");
    }
  }
  for (std::size_t c = 0; c < out.columns.size(); ++c) {
    for (const SelectText& part : parts) {
      if (out.columns[c].type != SemType::Null) break;
      out.columns[c].type = part.items[c].value.type;
    }
  }
  std::string order_by = WriteCompoundOrderBy(query, first);
  // A UNION that drops duplicates gives its rows on SQLite in the order of its columns, first to
  // last (it sorts them to find the duplicates), and reports rely on that order; PostgreSQL
  // hashes them, so it is told the order.
  if (order_by.empty() && WritingPostgres() &&
      std::find(query.union_all.begin(), query.union_all.end(), false) != query.union_all.end()) {
    for (std::size_t c = 0; c < first.items.size(); ++c) {
      order_by += (c == 0 ? " ORDER BY " : ", ") + std::to_string(c + 1);
      order_by += NullsOrder(false);
    }
  }
  for (std::size_t p = 0; p < parts.size(); ++p) {
    for (std::size_t c = 0; c < out.columns.size(); ++c) {
      Typed& value = parts[p].items[c].value;
      if (value.type != out.columns[c].type) value = Coerce(value, out.columns[c].type);
    }
    // UNION drops duplicates by the first SELECT's collations: text compares without case.
    bool distinct = query.selects[p].distinct ||
                    (p == 0 && std::find(query.union_all.begin(), query.union_all.end(), false) !=
                                   query.union_all.end());
    if (distinct) CaseBlindItems(parts[p].items);
    std::string text = parts[p].head + " " + ItemList(parts[p].items) + parts[p].tail;
    // TOP belongs to its own SELECT; SQLite allows LIMIT only at the end of the whole.
    if (query.selects[p].top) {
      text = "SELECT * FROM (" + text + " LIMIT " + std::to_string(*query.selects[p].top) + ")";
      if (WritingPostgres()) text += " AS " + QuoteName("Top" + std::to_string(p + 1));
    }
    if (p > 0) out.sql += query.union_all[p - 1] ? " UNION ALL " : " UNION ";
    out.sql += text;
  }
  out.sql += order_by;
  return out;
}

Emitter::SelectText Emitter::WriteSelect(const Select& select, const Scope* outer) {
  SelectText out;
  out.scope.parent = outer;
  for (const auto& ref : select.from) AddRangeVars(*ref, out.scope);
  out.head = select.distinct ? "SELECT DISTINCT" : "SELECT";

  int expr_number = kFirstExprNumber;
  for (const SelectItem& item : select.items) {
    if (!item.expr) {
      ExpandStar(item, out.scope, out.items);
      continue;
    }
    Item written;
    written.value = WriteExpr(*item.expr, out.scope);
    if (WritingPostgres() && written.value.type == SemType::Text &&
        written.value.form != Form::kColumn && written.value.form != Form::kNull) {
      // On PostgreSQL a text result is made case-blind where it is written, so that it compares,
      // groups and sorts as a column does, in a derived table, a UNION or DISTINCT alike.
      written.value = CaseBlindText(written.value);
      written.value.form = Form::kColumn;
    }
    if (!item.alias.empty()) {
      written.name = item.alias;
      written.user_alias = true;
    } else if (item.expr->kind == ExprKind::kColumn) {
      written.name = item.expr->text;
      written.from_column = true;
      written.qualifier = written.value.sql.substr(0, written.value.sql.rfind('.'));
    } else {
      written.name = "Expr" + std::to_string(expr_number++);
    }
    out.items.push_back(std::move(written));
  }
  // Two columns of one name from different tables are told apart by their table, as Jet does.
  for (std::size_t i = 0; i < out.items.size(); ++i) {
    if (!out.items[i].from_column) continue;
    for (std::size_t j = 0; j < out.items.size(); ++j) {
      if (i != j && SameName(out.items[i].name, out.items[j].name) &&
          out.items[i].qualifier != out.items[j].qualifier) {
        out.items[i].name = out.items[i].qualifier + "." + out.items[i].name;
        break;
      }
    }
  }

  if (!select.from.empty()) {
    out.tail = " FROM ";
    for (std::size_t i = 0; i < select.from.size(); ++i) {
      if (i > 0) out.tail += ", ";
      out.tail += WriteTableRef(*select.from[i], out.scope);
    }
  }
  if (select.where) out.tail += " WHERE " + ConditionText(WriteExpr(*select.where, out.scope));
  if (!select.group_by.empty()) {
    out.tail += " GROUP BY ";
    for (std::size_t i = 0; i < select.group_by.size(); ++i) {
      if (i > 0) out.tail += ", ";
      out.tail += CaseBlind(WriteExpr(*select.group_by[i], out.scope));
    }
  }
  if (select.having) {
    out.tail += " HAVING " + ConditionText(WriteExpr(*select.having, out.scope));
  }
  return out;
}

void Emitter::AddRangeVars(const TableRef& ref, Scope& scope) {
  if (ref.kind == TableRef::Kind::kJoin) {
    AddRangeVars(*ref.left, scope);
    AddRangeVars(*ref.right, scope);
    return;
  }
  RangeVar var;
  var.ref = &ref;
  if (ref.kind == TableRef::Kind::kTable) {
    var.table = catalog_.FindTable(ref.name);
    if (var.table == nullptr) {
      throw SqlError("unknown table '" + ref.name + "'", ref.position, ref.name);
    }
    var.name = ref.alias.empty() ? var.table->name : ref.alias;
  } else {
    QueryText derived = WriteQuery(*ref.query, scope.parent);
    var.derived_columns = std::move(derived.columns);
    var.derived_sql = std::move(derived.sql);
    var.name = ref.alias;
  }
  for (const RangeVar& other : scope.vars) {
    if (!var.name.empty() && SameName(other.name, var.name)) {
      throw SqlError("table '" + var.name + "' is named twice", ref.position, var.name);
    }
  }
  scope.vars.push_back(std::move(var));
}

std::string Emitter::WriteTableRef(const TableRef& ref, const Scope& scope) {
  if (ref.kind == TableRef::Kind::kJoin) {
    // SQLite has no RIGHT JOIN: A RIGHT JOIN B is written B LEFT JOIN A.
    bool swap = ref.join == JoinKind::kRight;
    const TableRef& left = swap ? *ref.right : *ref.left;
    const TableRef& right = swap ? *ref.left : *ref.right;
    std::string right_text = WriteTableRef(right, scope);
    if (right.kind == TableRef::Kind::kJoin) right_text = "(" + right_text + ")";
    std::string text = WriteTableRef(left, scope) + JoinWord(ref.join) + right_text;
    if (ref.on) text += " ON " + ConditionText(WriteExpr(*ref.on, scope));
    return text;
  }
  const RangeVar* var = FindVar(scope, ref);
  std::string text = ref.kind == TableRef::Kind::kTable ? QuoteName(var->table->name)
                                                        : "(" + var->derived_sql + ")";
  if (!ref.alias.empty()) {
    text += " AS " + QuoteName(ref.alias);
  } else if (ref.kind == TableRef::Kind::kDerived && WritingPostgres()) {
    // PostgreSQL names every derived table; its columns are still read without a qualifier.
    text += " AS " + QuoteName("Derived" + std::to_string(++derived_tables_));
  }
  return text;
}

void Emitter::ExpandStar(const SelectItem& item, const Scope& scope, std::vector<Item>& items) {
  bool found = false;
  for (const RangeVar& var : scope.vars) {
    if (!item.star_qualifier.empty() && !SameName(var.name, item.star_qualifier)) continue;
    found = true;
    for (const ResultColumn& column : var.Columns()) {
      Item expanded;
      expanded.value.form = Form::kColumn;
      expanded.value.type = column.type;
      expanded.qualifier = QuoteName(var.name);
      expanded.value.sql = var.name.empty() ? QuoteName(column.name)
                                            : expanded.qualifier + "." + QuoteName(column.name);
      expanded.name = column.name;
      expanded.from_column = true;
      items.push_back(std::move(expanded));
    }
  }
  if (!found) {
    if (item.star_qualifier.empty()) {
      throw SqlError("SELECT * needs a FROM clause", item.position, "*");
    }
    throw SqlError("unknown table '" + item.star_qualifier + "'", item.position,
                   item.star_qualifier);
  }
}

void Emitter::CaseBlindItems(std::vector<Item>& items) {
  // DISTINCT compares by each column's collation; a text expression has none of its own.
  for (Item& item : items) {
    if (item.value.type != SemType::Text || item.value.form == Form::kColumn) continue;
    item.value = Expression(CaseBlind(item.value), SemType::Text, kPrecCollate);
  }
}

std::string Emitter::ItemList(const std::vector<Item>& items) {
  std::string list;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) list += ", ";
    list += items[i].value.sql;
    if (items[i].user_alias || !items[i].from_column) list += " AS " + QuoteName(items[i].name);
  }
  return list;
}

std::string Emitter::WriteOrderBy(const Query& query, const SelectText& select) {
  if (query.order_by.empty()) return {};
  std::string text = " ORDER BY ";
  for (std::size_t i = 0; i < query.order_by.size(); ++i) {
    const OrderItem& term = query.order_by[i];
    if (term.expr->kind == ExprKind::kNumber) {
      // SQLite reads a whole number here as a column's place; one past the last is refused.
      std::size_t ordinal = std::strtoul(term.expr->text.c_str(), nullptr, 10);
      if (ordinal < 1 || ordinal > select.items.size()) {
        throw SqlError("ORDER BY " + term.expr->text + " names no column", term.expr->position,
                       term.expr->text);
      }
    }
    Typed value;
    try {
      value = WriteExpr(*term.expr, select.scope);
    } catch (const SqlError&) {
      // A name that is no column may be an alias of the SELECT list: ORDER BY Qty DESC.
      const Item* alias = nullptr;
      if (term.expr->kind == ExprKind::kColumn && term.expr->qualifier.empty()) {
        for (const Item& item : select.items) {
          if (item.user_alias && SameName(item.name, term.expr->text)) alias = &item;
        }
      }
      if (alias == nullptr) throw;
      value = alias->value;
    }
    if (i > 0) text += ", ";
    text += CaseBlind(value);
    if (term.descending) text += " DESC";
    text += NullsOrder(term.descending);
  }
  return text;
}

std::string Emitter::WriteCompoundOrderBy(const Query& query, const SelectText& first) {
  if (query.order_by.empty()) return {};
  // The ORDER BY of a UNION sorts its result columns, named as in the first SELECT; SQLite is
  // given their numbers.
  std::string text = " ORDER BY ";
  for (std::size_t i = 0; i < query.order_by.size(); ++i) {
    const OrderItem& term = query.order_by[i];
    std::optional<std::size_t> column;
    if (term.expr->kind == ExprKind::kNumber) {
      // ORDER BY 2: the second column.
      std::size_t ordinal = std::strtoul(term.expr->text.c_str(), nullptr, 10);
      if (ordinal >= 1 && ordinal <= first.items.size()) column = ordinal - 1;
    } else if (term.expr->kind == ExprKind::kColumn) {
      for (std::size_t c = 0; c < first.items.size() && !column; ++c) {
        if (SameName(first.items[c].name, term.expr->text)) column = c;
      }
    }
    if (!column) {
      try {
        Typed value = WriteExpr(*term.expr, first.scope);
        for (std::size_t c = 0; c < first.items.size() && !column; ++c) {
          if (first.items[c].value.sql == value.sql) column = c;
        }
      } catch (const SqlError&) {
      }
    }
    if (!column) {
      throw SqlError("ORDER BY of a UNION must name one of its columns", term.expr->position,
                     term.expr->text);
    }
    if (i > 0) text += ", ";
    text += std::to_string(*column + 1);
    const Typed& value = first.items[*column].value;
    if (value.type == SemType::Text && value.form != Form::kColumn) text += " COLLATE NOCASE";
    if (term.descending) text += " DESC";
    text += NullsOrder(term.descending);
  }
  return text;
}

}  // namespace trellin::sql
