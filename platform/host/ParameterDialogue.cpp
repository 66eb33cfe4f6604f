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
