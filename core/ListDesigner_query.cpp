// The lists' parameters, WHERE text and description, order and groupings.

#include <optional>
#include <stdexcept>

#include "core/ListDesigner.h"
#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

std::string Text(std::string_view s) { return std::string(s); }

std::string ChoiceText(std::span<const ListChoice> choices) {
  std::string text;
  for (const ListChoice& c : choices) text += (text.empty() ? "" : ",") + Text(c.choice);
  return text;
}

bool NoValue(const Variant& value) {
  return value.IsNull() || value.IsEmpty() || value.IsMissing() || Trim(value.Text()).empty();
}

// A bound left blank stands at its open end.
Currency Bound(const Variant& value, Currency open, const std::string& caption) {
  if (NoValue(value)) return open;
  const std::optional<Currency> parsed = Currency::Parse(Trim(value.Text()));
  if (!parsed) throw std::invalid_argument(caption + ": \"" + value.Text() + "\" is not a number.");
  return *parsed;
}

void AddUserDefined(std::string_view table, trellin::Parameters& p) {
  Application& application = TrellinReportGlobals::RequireApplication();
  if (table == "OtherParty") application.AddUserDefinedParametersOtherParty(p, false);
  if (table == "Item") application.AddUserDefinedParametersItem(p, false);
  if (table == "Asset") application.AddUserDefinedParametersAsset(p, false);
  if (table == "Transactions") application.AddUserDefinedParametersTransactions(p, false);
}

void DeclareOne(const ListParameter& row, trellin::Parameters& p) {
  const std::string name = Text(row.name);
  const std::string caption = Text(row.caption);
  switch (row.kind) {
    case ListParameterKind::Standard: {
      ParameterPtr added =
          CreateStandardParameter(row.index, p, row.primary, name, caption, "", Text(row.field));
      if (!row.initial.empty()) added->Value = added->DefaultValue = Variant(Text(row.initial));
      break;
    }
    case ListParameterKind::DatePair:
      p.AddDate(name + "From", Variant(), row.primary, "", Text(row.from_default), false,
                caption + " From");
      p.AddDate(name + "To", Variant(), row.primary, "", Text(row.to_default), false,
                caption + " To");
      break;
    case ListParameterKind::MoneyRange:
      for (const auto& [suffix, open] :
           {std::pair{"From", kNumberRangeMinimum}, std::pair{"To", kNumberRangeMaximum}}) {
        p.AddNumber(name + suffix, open, row.primary, "", open, open.Raw() / Currency::kScale,
                    false, caption + " " + suffix);
      }
      break;
    case ListParameterKind::Option:
      p.AddBoolean(name, row.checked, row.primary, "", row.checked, false, caption);
      break;
    case ListParameterKind::Choice: {
      const std::string first = row.choices.empty() ? "" : Text(row.choices.front().choice);
      p.AddList(name, first, row.primary, "", first, ChoiceText(row.choices), false, caption);
      break;
    }
    case ListParameterKind::PickList:
      p.AddSQLList(name, row.initial.empty() ? Variant() : Variant(Text(row.initial)), row.primary,
                   "", row.initial.empty() ? Variant() : Variant(Text(row.initial)),
                   Text(row.list_sql), Text(row.key_field), false, caption)
          ->SQLField = Text(row.field);
      break;
    case ListParameterKind::CheckBoxes:
      for (const ListChoice& c : row.choices) {
        p.AddBoolean(name + Text(c.choice), true, row.primary, "", true, false, Text(c.choice));
      }
      break;
    case ListParameterKind::UserDefined:
      AddUserDefined(row.name, p);
      break;
  }
}

// The condition and phrase of every parameter but the list ones, which the range loop made.
void AddCondition(const ListParameter& row, const trellin::Parameters& p, std::string& where,
                  std::string& description) {
  const std::string name = Text(row.name);
  const std::string caption = Text(row.caption);
  switch (row.kind) {
    case ListParameterKind::DatePair:
      // A pair with no field bounds what the designer looks up, not the list's rows.
      if (row.field.empty()) {
        AppendDateRangeDescription(description, caption, p.Value(name + "From", Variant::Null()),
                                   p.Value(name + "To", Variant::Null()));
      } else {
        AppendDateRangeCondition(where, Text(row.field), p.Value(name + "From", Variant::Null()),
                                 p.Value(name + "To", Variant::Null()), caption, description);
      }
      break;
    case ListParameterKind::MoneyRange:
      AppendNumberRangeCondition(
          where, Text(row.field),
          Bound(p.Value(name + "From"), kNumberRangeMinimum, caption + " From"),
          Bound(p.Value(name + "To"), kNumberRangeMaximum, caption + " To"), kNumberRangeMinimum,
          kNumberRangeMaximum, caption, description,
          TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0));
      break;
    case ListParameterKind::Option: {
      const bool on = p.Value(name, row.checked).ToBool();
      AppendSQLCondition(where, Text(on ? row.condition : row.off_condition));
      AppendDescription(description, Text(on ? row.phrase : row.off_phrase));
      break;
    }
    case ListParameterKind::Choice: {
      const std::string value = p.Value(name, Variant()).Text();
      for (const ListChoice& c : row.choices) {
        if (!EqualsIgnoreCase(c.choice, value)) continue;
        AppendSQLCondition(where, Text(c.condition));
        AppendDescription(description, Text(c.phrase));
      }
      break;
    }
    case ListParameterKind::CheckBoxes: {
      bool all = true;
      const std::string checked = SelectedBooleanNames(p, name, all);
      if (all) break;
      // None checked keeps nothing: an empty In list is no SQL.
      AppendSQLCondition(where,
                         checked.empty() ? "(1=0)" : Text(row.field) + " In (" + checked + ")");
      if (row.phrase.empty()) {
        AppendNamedValueDescription(description, caption, checked.empty() ? "none" : checked);
        break;
      }
      std::string names;
      for (const ListChoice& c : row.choices) {
        if (!p.Value(name + Text(c.choice), true).ToBool()) continue;
        names += (names.empty() ? "" : ", ") + Text(c.choice);
      }
      AppendDescription(description,
                        Text(row.phrase) + (names.empty() ? "no" : names) + " " + caption);
      break;
    }
    default:
      break;
  }
}

}  // namespace

void DeclareListParameters(const ListKey& key, trellin::Parameters& p) {
  std::string orders;
  for (const ListOrder& o : key.orders) orders += (orders.empty() ? "" : ",") + Text(o.choice);
  if (key.summary && key.summary_first) {
    p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  }
  // A list with one order offers no choice.
  if (key.orders.size() > 1) {
    const std::string first = Text(key.orders.front().choice);
    p.AddList("OrderBy", first, true, "", first, orders, true, "Order By");
  }
  for (const ListParameter& row : key.parameters) DeclareOne(row, p);
  if (key.summary && !key.summary_first) {
    p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  }
  if (!key.groupings.empty()) {
    p.AddMultiList("Groupings", Variant(), false, "", Variant(), Text(key.groupings), false, false,
                   "Groupings");
  }
}

std::string ListOrderFields(const ListKey& key, const std::string& order_by) {
  for (const ListOrder& o : key.orders) {
    if (EqualsIgnoreCase(o.choice, order_by)) return Text(o.fields);
  }
  return key.orders.empty() ? std::string() : Text(key.orders.front().fields);
}

std::vector<ChosenGrouping> ListGroups(const ListKey& key, const trellin::Parameters& p) {
  std::vector<std::string> names;
  std::vector<bool> page_breaks;
  if (!key.groupings.empty() &&
      !SplitGroupings(p.Value("Groupings", Variant()), names, page_breaks)) {
    names.clear();
  }
  // The fixed groupings stand outside the chosen ones, the first outermost.
  std::vector<std::string> fixed;
  for (std::string_view rest = key.fixed_grouping; !rest.empty();) {
    const std::size_t comma = rest.find(',');
    fixed.emplace_back(rest.substr(0, comma));
    rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
  }
  names.insert(names.begin(), fixed.begin(), fixed.end());
  page_breaks.insert(page_breaks.begin(), fixed.size(), false);
  auto own_grouping = [&key](ChosenGrouping& g) {
    const ListGrouping* own = nullptr;
    for (const ListGrouping& row : key.own_groupings) {
      if (EqualsIgnoreCase(row.name, g.name)) own = &row;
    }
    if (own == nullptr) return false;
    g.field = Text(own->field);
    g.list_sql = Text(own->list_sql);
    g.key_field = Text(own->key_field);
    return true;
  };
  return ResolveGroupings(names, page_breaks, Text(key.grouping_table), own_grouping,
                          UnknownGrouping::kRefuse);
}

ListQuery BuildListQuery(const ListKey& key, const trellin::Parameters& p,
                         const std::string& extra_where) {
  ListQuery q;
  const std::string order_by = p.Value("OrderBy", Variant()).Text();
  if (key.orders.size() > 1) {
    AppendDescription(
        q.description,
        (key.order_phrase.empty() ? std::string("Ordered by ") : Text(key.order_phrase)) +
            (order_by.empty() ? Text(key.orders.front().choice) : order_by));
  }
  std::string where = CreateSQLWhereFromRangeParams(p, q.description);
  AppendSQLCondition(where, Text(key.base_where));
  AppendSQLCondition(where, extra_where);
  for (const ListParameter& row : key.parameters) AddCondition(row, p, where, q.description);
  q.summary = key.summary && p.Value("Summary", false).ToBool();
  if (q.summary) AppendDescription(q.description, "Summary");

  // SELECT lists add each group's field last; the order puts it first, from the innermost
  // out, so the outermost group leads.
  const std::string_view from_word = " FROM ";
  const std::size_t from = key.base_sql.find(from_word);
  std::string fields = Text(key.base_sql.substr(7, from - 7));
  std::string order = ListOrderFields(key, order_by);
  q.groups = ListGroups(key, p);
  for (const ChosenGrouping& g : q.groups) {
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  q.sql = "SELECT " + fields + Text(key.base_sql.substr(from));
  if (!where.empty()) q.sql += " WHERE " + where;
  if (!order.empty()) q.sql += " ORDER BY " + order;
  return q;
}

std::string ListKeysSubquery(const std::string& sql, std::string_view key_field) {
  const std::size_t from = sql.find(" FROM ");
  const std::size_t order = sql.rfind(" ORDER BY ");
  return "SELECT " + std::string(key_field) +
         sql.substr(from,
                    order == std::string::npos || order < from ? std::string::npos : order - from);
}

}  // namespace trellin
