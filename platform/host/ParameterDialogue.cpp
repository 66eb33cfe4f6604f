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

// Reports build on a date a year either way (last year's period, the day after the end), and the
// company file holds dates of years 100 to 9999: a date parameter keeps a year inside that.
const Date kFirstDate = Date::FromYmd(101, 1, 1);
const Date kLastDate = Date::FromYmd(9998, 12, 31);

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

std::string ParameterDialogue::DroppedShift(const std::string& text) const {
  // Each shift is judged by the date of the text up to it and the date of the text through it:
  // a shift that leaves the date as it was, though it moves by some count, did nothing.
  std::vector<std::size_t> signs;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '+' || text[i] == '-') signs.push_back(i);
  }
  auto date_of = [&](std::size_t end) -> std::optional<Date> {
    try {
      Variant value = resolver_(Variant(text.substr(0, end)), parameters_);
      if (const Date* date = value.Get<Date>()) return *date;
    } catch (const std::exception&) {
    }
    return std::nullopt;
  };
  std::optional<Date> before = signs.empty() ? std::nullopt : date_of(signs.front());
  for (std::size_t k = 0; k < signs.size() && before; ++k) {
    const std::size_t end = k + 1 < signs.size() ? signs[k + 1] : text.size();
    const std::string shift = Trim(text.substr(signs[k], end - signs[k]));
    const std::optional<Date> after = date_of(end);
    const bool moves = shift.find_first_of("123456789") != std::string::npos;
    if (after && *after == *before && moves) return shift;
    before = after;
  }
  return {};
}

void ParameterDialogue::Resolve() {
  struct Pending {
    Parameter* parameter;
    std::string key;
    bool given;  // typed by the user, not the default
    Variant expression;
    std::string problem;
  };
  std::vector<Pending> left;
  for (const ParameterPtr& parameter : parameters_) {
    if (parameter->Kind != ParameterType::Date) continue;
    std::string key = LCase(parameter->Name);
    const bool given = pending_.erase(key) > 0;
    const bool defaulted = !given && HasNoValue(parameter->Value) && resolver_ &&
                           !HasNoDefault(parameter->DefaultValue);
    if (!given && !defaulted) continue;
    Variant expression = given ? parameter->Value : parameter->DefaultValue;
    // Until it resolves, a date stands for nothing to the dates that build on it.
    parameter->Value = Variant();
    left.push_back({parameter.get(), std::move(key), given, std::move(expression), {}});
  }
  // In rounds, so that a date may build on one after it in the collection (FromDate given as
  // ToDate-1M while ToDate keeps its default): each round resolves what it can, and the rest
  // try again while any round makes progress.
  while (!left.empty()) {
    std::vector<Pending> next;
    for (Pending& item : left) {
      Variant date = Variant::Null();
      item.problem.clear();
      try {
        if (resolver_) date = resolver_(item.expression, parameters_);
      } catch (const std::exception& e) {
        // The calendar behind a keyword can fail (a company file gone away); the user sees
        // which date could not be worked out and why, and the other dates still resolve.
        item.problem = "\"" + item.expression.Text() + "\" could not be worked out: " + e.what();
      }
      if (date.IsDate()) {
        item.parameter->Value = date;
        if (item.given && resolver_ && item.expression.IsString()) {
          if (std::string shift = DroppedShift(item.expression.Text()); !shift.empty()) {
            resolve_errors_.emplace_back(
                item.key, item.parameter->Label() + ": \"" + item.expression.Text() +
                              "\" shifts the date by \"" + shift +
                              "\", which leaves the calendar (years 100 to 9999) or is no shift.");
          }
        }
        continue;
      }
      if (item.given && item.problem.empty()) {
        item.problem = "\"" + item.expression.Text() + "\" is not a date or a date expression.";
      }
      next.push_back(std::move(item));
    }
    const bool progress = next.size() < left.size();
    left = std::move(next);
    if (!progress) break;
  }
  for (Pending& item : left) {
    if (!item.problem.empty()) {
      resolve_errors_.emplace_back(item.key, item.parameter->Label() + ": " + item.problem);
    }
    // A default that means nothing leaves the date absent (Null): the report's range stays
    // open at that end, as when the user clears the date.
    item.parameter->Value = Variant::Null();
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
    const Date* date =
        parameter->Kind == ParameterType::Date ? parameter->Value.Get<Date>() : nullptr;
    if (date != nullptr && (*date < kFirstDate || *date > kLastDate)) {
      errors_.push_back(parameter->Label() + ": " + date->DateOnly().ToIso() +
                        " is outside the dates a report can use (" + kFirstDate.ToIso() + " to " +
                        kLastDate.ToIso() + ").");
    }
  }
  for (const ParameterPtr& parameter : parameters_) {
    if (parameter->Kind == ParameterType::SQLList && parameter->Value.IsString()) {
      CheckListSyntax(*parameter, *parameter->Value.Get<std::string>(), errors_);
    }
  }
  return Valid();
}

}  // namespace trellin::host
