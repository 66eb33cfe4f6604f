#include "platform/host/ParameterDialogue.h"

#include <algorithm>

#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

// Indexed by the Type number; 0 is unused.
constexpr std::string_view kKindNames[] = {
    "", "boolean", "string", "date", "sqllist", "list", "multilist", "number",
};

// The list fields a report filters on as numbers; every other list is text.
constexpr std::string_view kNumericListFields[] = {
    "AssetTransaction.Type",
    "Asset.Status",
    "Contact.ContactId",
    "Item.Inventory",
};

// A period list and the two dates it governs.
struct PeriodDates {
  std::string_view period;
  std::string_view from;
  std::string_view to;
};

constexpr PeriodDates kPeriodDates[] = {
    {"Period", "FromDate", "ToDate"},
    {"Period", "DateFrom", "DateTo"},
    {"Period", "PeriodDateFrom", "PeriodDateTo"},
    {"Period1", "Period1DateFrom", "Period1DateTo"},
    {"Period2", "Period2DateFrom", "Period2DateTo"},
};

constexpr std::string_view kCustom = "Custom";

constexpr int kTextDataType = 8;
constexpr int kNumberDataType = 3;

bool IsBlankText(const Variant& value) {
  return value.IsString() && Trim(*value.Get<std::string>()).empty();
}

// A date not given yet. Null is a date the user has cleared, and stays so.
bool HasNoValue(const Variant& value) {
  return value.IsEmpty() || value.IsMissing() || IsBlankText(value);
}

bool HasNoDefault(const Variant& value) { return HasNoValue(value) || value.IsNull(); }

std::vector<PickRow> ReadRows(Database& database, const Parameter& parameter) {
  std::vector<PickRow> rows;
  std::shared_ptr<Recordset> rs = database.Query(parameter.ListSQL);
  // The key column is named by KeyField; where the query does not return that name (a list
  // whose key is spelt differently from its column) the first column is the key.
  int key = parameter.KeyField.empty() ? -1 : rs->FieldIndex(parameter.KeyField);
  if (key < 0) key = 0;
  for (; !rs->Eof(); rs->MoveNext()) {
    PickRow row;
    row.Key = rs->FieldCount() > 0 ? rs->Value(key).Text() : std::string();
    std::vector<std::string> others;
    for (int i = 0; i < rs->FieldCount(); ++i) {
      if (i == key) continue;
      // Leading blanks stay: an account list indents its descriptions by level.
      std::string text = RTrim(rs->Value(i).Text());
      if (!Trim(text).empty()) others.push_back(std::move(text));
    }
    row.Description = Join(others, " ");
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

std::string_view KindName(ParameterType kind) {
  auto index = static_cast<std::size_t>(kind);
  return index < std::size(kKindNames) ? kKindNames[index] : std::string_view();
}

ParameterDialogue::ParameterDialogue(Parameters& parameters, std::shared_ptr<Database> database,
                                     DateResolver resolver, RangeBuilder* range_builder)
    : parameters_(parameters),
      database_(std::move(database)),
      resolver_(std::move(resolver)),
      range_builder_(range_builder) {}

std::vector<DialogueEntry> ParameterDialogue::List(bool with_rows) const {
  std::vector<DialogueEntry> entries;
  for (const ParameterPtr& parameter : parameters_) {
    DialogueEntry entry;
    entry.Name = parameter->Name;
    entry.Kind = parameter->Kind;
    entry.Caption = parameter->Label();
    entry.Prompt = parameter->Prompt;
    entry.Primary = parameter->Primary;
    entry.Flag = parameter->Flag;
    entry.Value = parameter->Value;
    entry.DefaultValue = parameter->DefaultValue;
    entry.Dependency = parameter->Dependency;
    entry.Help = parameter->Help;
    switch (parameter->Kind) {
      case ParameterType::Date:
        if (resolver_ && !HasNoDefault(parameter->DefaultValue)) {
          try {
            entry.ResolvedDefault = resolver_(parameter->DefaultValue, parameters_);
          } catch (const std::exception&) {
            // A default that cannot be worked out today shows as no date; the run reports
            // the reason when it resolves the parameter.
            entry.ResolvedDefault = Variant::Null();
          }
        }
        break;
      case ParameterType::List:
      case ParameterType::MultiList:
        entry.Choices = parameter->ChoiceList();
        break;
      case ParameterType::SQLList:
        entry.ListSQL = parameter->ListSQL;
        entry.KeyField = parameter->KeyField;
        if (with_rows && database_ && !parameter->ListSQL.empty()) {
          try {
            entry.Rows = ReadRows(*database_, *parameter);
          } catch (const std::exception& e) {
            entry.RowsError = e.what();
          }
        }
        break;
      default:
        break;
    }
    entries.push_back(std::move(entry));
  }
  // A first date a period governs shows the day the period gives it, when it has no default of
  // its own.
  auto find = [&entries](std::string_view name) -> DialogueEntry* {
    for (DialogueEntry& entry : entries) {
      if (EqualsIgnoreCase(entry.Name, name)) return &entry;
    }
    return nullptr;
  };
  for (const PeriodDates& row : kPeriodDates) {
    DialogueEntry* period = find(row.period);
    DialogueEntry* from = find(row.from);
    DialogueEntry* to = find(row.to);
    if (!period || !from || !to || from->Kind != ParameterType::Date ||
        !from->ResolvedDefault.IsEmpty())
      continue;
    const Variant& end = to->Value.IsDate() ? to->Value : to->ResolvedDefault;
    if (!end.IsDate()) continue;
    try {
      if (auto start = PeriodStart(period->Value.Text(), end.ToDate())) {
        from->ResolvedDefault = Variant(*start);
      }
    } catch (const std::exception&) {
      from->ResolvedDefault = Variant::Null();
    }
  }
  return entries;
}

Parameter& ParameterDialogue::Known(std::string_view name) const {
  if (ParameterPtr parameter = parameters_.Find(Trim(name))) return *parameter;
  std::vector<std::string> names;
  for (const ParameterPtr& parameter : parameters_) {
    if (!parameter->Name.empty()) names.push_back(parameter->Name);
  }
  std::string known = names.empty() ? "The report has no parameters."
                                    : "The report's parameters are: " + Join(names, ", ") + ".";
  throw ParameterError("Unknown parameter \"" + Trim(name) + "\". " + known);
}

void ParameterDialogue::Resolve() {
  for (const ParameterPtr& parameter : parameters_) {
    if (parameter->Kind != ParameterType::Date) continue;
    const std::string key = LCase(parameter->Name);
    const bool pending = pending_.erase(key) > 0;
    const bool defaulted = !pending && HasNoValue(parameter->Value) && resolver_ &&
                           !HasNoDefault(parameter->DefaultValue);
    if (!pending && !defaulted) continue;
    const Variant expression = pending ? parameter->Value : parameter->DefaultValue;
    Variant date = Variant::Null();
    std::string problem;
    try {
      if (resolver_) date = resolver_(expression, parameters_);
    } catch (const std::exception& e) {
      // The calendar behind a keyword can fail (a company file gone away); the user sees
      // which date could not be worked out and why, and the other dates still resolve.
      problem = "\"" + expression.Text() + "\" could not be worked out: " + e.what();
    }
    if (pending && problem.empty() && !date.IsDate()) {
      problem = "\"" + expression.Text() + "\" is not a date or a date expression.";
    }
    if (!problem.empty()) resolve_errors_.emplace_back(key, parameter->Label() + ": " + problem);
    // A default that means nothing leaves the date absent (Null): the report's range stays
    // open at that end, as when the user clears the date.
    parameter->Value = date.IsDate() ? date : Variant::Null();
  }
  ApplyPeriods();
}

std::optional<Date> ParameterDialogue::PeriodStart(const std::string& period, Date to) const {
  to = to.DateOnly();
  if (EqualsIgnoreCase(period, "MTD")) return to.FirstOfMonth();
  if (!EqualsIgnoreCase(period, "QTD") && !EqualsIgnoreCase(period, "YTD") &&
      !EqualsIgnoreCase(period, kCustom)) {
    return std::nullopt;
  }
  // The financial year is the calendar's, through the resolver: "BOY" as at the period's end.
  Date year_start = Date::FromYmd(to.Year(), 1, 1);
  if (resolver_) {
    Parameters as_at;
    as_at.AddDate("DateAsAt", Variant(to), false, "", Variant(), false, "");
    const Variant start = resolver_(Variant("BOY"), as_at);
    if (start.IsDate()) year_start = start.ToDate().DateOnly();
  }
  if (!EqualsIgnoreCase(period, "QTD")) return year_start;
  const int months = (to.Year() - year_start.Year()) * 12 + to.Month() - year_start.Month();
  return year_start.AddMonths(months / 3 * 3);
}

void ParameterDialogue::ApplyPeriods() {
  for (const PeriodDates& row : kPeriodDates) {
    const ParameterPtr period = parameters_.Find(row.period);
    const ParameterPtr from = parameters_.Find(row.from);
    const ParameterPtr to = parameters_.Find(row.to);
    if (!period || !from || !to || period->Kind != ParameterType::List ||
        from->Kind != ParameterType::Date || to->Kind != ParameterType::Date) {
      continue;
    }
    const bool from_given = given_.count(LCase(from->Name)) > 0;
    if (from_given && given_.count(LCase(period->Name)) == 0) {
      const std::vector<std::string> choices = period->ChoiceList();
      if (std::find(choices.begin(), choices.end(), kCustom) != choices.end()) {
        period->Value = Variant(std::string(kCustom));
      }
    }
    const std::string chosen = period->Value.Text();
    if (!to->Value.IsDate()) continue;
    if (EqualsIgnoreCase(chosen, kCustom) && (from_given || !HasNoValue(from->Value))) continue;
    try {
      if (std::optional<Date> start = PeriodStart(chosen, to->Value.ToDate())) {
        from->Value = Variant(*start);
      }
    } catch (const std::exception& e) {
      // The calendar behind the financial year can fail; the user sees which date and why.
      resolve_errors_.emplace_back(LCase(from->Name), from->Label() +
                                                          ": the start of the period could not be "
                                                          "worked out: " +
                                                          e.what());
    }
  }
}

void ParameterDialogue::CheckListSyntax(const Parameter& parameter, const std::string& text,
                                        std::vector<std::string>& errors) const {
  if (!range_builder_ || Trim(text).empty()) return;
  const std::string field = parameter.SQLField.empty() ? parameter.KeyField : parameter.SQLField;
  const bool numeric = std::any_of(
      std::begin(kNumericListFields), std::end(kNumericListFields),
      [&](std::string_view numeric_field) { return EqualsIgnoreCase(field, numeric_field); });
  try {
    (void)range_builder_->BuildRangeCondition(field.empty() ? "Code" : field, text,
                                              numeric ? kNumberDataType : kTextDataType);
  } catch (const std::invalid_argument& e) {
    errors.push_back(parameter.Label() + ": " + e.what());
  }
}

bool ParameterDialogue::Validate() {
  // Resolving again touches only dates still without a value, so a caller that resolved
  // already loses nothing, and one that did not still validates real dates.
  Resolve();
  errors_.clear();
  for (const auto& [name, error] : resolve_errors_) errors_.push_back(error);
  parameters_.Validate("");
  errors_.insert(errors_.end(), parameters_.Errors().begin(), parameters_.Errors().end());
  for (const ParameterPtr& parameter : parameters_) {
    if (parameter->Kind == ParameterType::SQLList && parameter->Value.IsString()) {
      CheckListSyntax(*parameter, *parameter->Value.Get<std::string>(), errors_);
    }
  }
  return Valid();
}

}  // namespace trellin::host
