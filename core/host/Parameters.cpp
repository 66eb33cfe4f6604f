#include "core/host/Parameters.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/runtime/DateText.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

ParameterPtr MakeParameter(ParameterType kind, const std::string& name, const Variant& value,
                           bool primary, const std::string& prompt, const Variant& default_value,
                           bool flag, const std::string& caption) {
  auto parameter = std::make_shared<Parameter>();
  parameter->Kind = kind;
  parameter->Name = name;
  parameter->Value = value;
  parameter->Primary = primary;
  parameter->Prompt = prompt;
  parameter->DefaultValue = default_value;
  parameter->Flag = flag;
  parameter->Caption = caption;
  return parameter;
}

// The open ends of a money range; a number parameter outside them cannot be a bound a report
// compares against.
constexpr Currency kLowestNumber = Currency::FromWhole(-9999999999);
constexpr Currency kHighestNumber = Currency::FromWhole(9999999999);

// Each check returns what is wrong with a parameter's value, or nothing when it is fine.
using Check = std::optional<std::string> (*)(const Parameter&);

std::string Quoted(const Variant& value) { return "\"" + value.Text() + "\""; }

bool HasNoValue(const Variant& value) {
  return value.IsEmpty() || value.IsNull() || value.IsMissing() ||
         (value.IsString() && Trim(*value.Get<std::string>()).empty());
}

std::optional<std::string> CheckNothing(const Parameter&) { return std::nullopt; }

std::optional<std::string> CheckBoolean(const Parameter& parameter) {
  const Variant& value = parameter.Value;
  if (HasNoValue(value) || value.IsBoolean() || value.IsNumber()) {
    return std::nullopt;
  }
  if (value.IsString()) {
    std::string text = Trim(*value.Get<std::string>());
    if (EqualsIgnoreCase(text, "True") || EqualsIgnoreCase(text, "False")) {
      return std::nullopt;
    }
  }
  return Quoted(value) + " is not True or False.";
}

std::optional<std::string> CheckDate(const Parameter& parameter) {
  const Variant& value = parameter.Value;
  // An absent date is Null: the report leaves that end of its range open.
  if (HasNoValue(value) || value.IsDate()) {
    return std::nullopt;
  }
  if (value.IsString() && ParseDateText(*value.Get<std::string>())) {
    return std::nullopt;
  }
  return Quoted(value) + " is not a date.";
}

std::optional<std::string> CheckNumber(const Parameter& parameter) {
  const Variant& value = parameter.Value;
  if (HasNoValue(value)) {
    return std::string("a number is needed.");
  }
  std::optional<Currency> number;
  try {
    if (value.IsNumber() || (value.IsString() && IsNumeric(*value.Get<std::string>()))) {
      number = value.ToCurrency();
    }
  } catch (const std::exception&) {
    // Too large even for money: reported as out of range below.
    return Quoted(value) + " is out of range.";
  }
  if (!number) {
    return Quoted(value) + " is not a number.";
  }
  bool below = parameter.Minimum && *number < *parameter.Minimum;
  bool above = parameter.Maximum && *number > *parameter.Maximum;
  if (below || above) {
    std::string message = number->ToString() + " is out of range; ";
    if (parameter.Minimum && parameter.Maximum) {
      return message + "it must be from " + parameter.Minimum->ToString() + " to " +
             parameter.Maximum->ToString() + ".";
    }
    return message +
           (below ? "it must be at least " + parameter.Minimum->ToString()
                  : "it must be at most " + parameter.Maximum->ToString()) +
           ".";
  }
  return std::nullopt;
}

std::string ChoicesText(const Parameter& parameter) {
  return "(" + Join(parameter.ChoiceList(), ", ") + ")";
}

bool IsChoice(const Parameter& parameter, std::string_view text) {
  const auto choices = parameter.ChoiceList();
  return std::any_of(choices.begin(), choices.end(),
                     [&](const std::string& choice) { return EqualsIgnoreCase(choice, text); });
}

std::optional<std::string> CheckList(const Parameter& parameter) {
  const Variant& value = parameter.Value;
  // No choice made: the report falls back to its first ordering.
  if (HasNoValue(value)) {
    return std::nullopt;
  }
  std::string text = Trim(value.Text());
  if (IsChoice(parameter, text)) {
    return std::nullopt;
  }
  return Quoted(value) + " is not one of the choices " + ChoicesText(parameter) + ".";
}

std::optional<std::string> CheckMultiList(const Parameter& parameter) {
  const Variant& value = parameter.Value;
  if (HasNoValue(value)) {
    return std::nullopt;
  }
  std::vector<std::string> seen;
  for (const MultiListItem& item : SplitMultiListValue(value.Text())) {
    if (!IsChoice(parameter, item.Choice)) {
      return "\"" + item.Choice + "\" is not one of the choices " + ChoicesText(parameter) + ".";
    }
    // A grouping picked twice would define two group levels on the same key.
    bool repeated = std::any_of(seen.begin(), seen.end(), [&](const std::string& earlier) {
      return EqualsIgnoreCase(earlier, item.Choice);
    });
    if (repeated) {
      return "\"" + item.Choice + "\" is chosen more than once.";
    }
    seen.push_back(item.Choice);
  }
  return std::nullopt;
}

// Indexed by the Type number; 0 is unused. Text and SQL lists take any text here: the syntax of
// a code list is checked where the condition is built.
constexpr Check kChecks[] = {
    CheckNothing,    // 0
    CheckBoolean,    // 1 Boolean
    CheckNothing,    // 2 String
    CheckDate,       // 3 Date
    CheckNothing,    // 4 SQLList
    CheckList,       // 5 List
    CheckMultiList,  // 6 MultiList
    CheckNumber,     // 7 Number
};

}  // namespace

ParameterPtr Parameters::AddBoolean(const std::string& name, bool value, bool primary,
                                    const std::string& prompt, bool default_value, bool flag,
                                    const std::string& caption) {
  return Put(MakeParameter(ParameterType::Boolean, name, Variant(value), primary, prompt,
                           Variant(default_value), flag, caption));
}

ParameterPtr Parameters::AddDate(const std::string& name, const Variant& value, bool primary,
                                 const std::string& prompt, const Variant& default_value, bool flag,
                                 const std::string& caption) {
  return Put(MakeParameter(ParameterType::Date, name, value, primary, prompt, default_value, flag,
                           caption));
}

ParameterPtr Parameters::AddMultiList(const std::string& name, const Variant& value, bool primary,
                                      const std::string& prompt, const Variant& default_value,
                                      const std::string& choices, bool flag, bool,
                                      const std::string& caption) {
  auto parameter = MakeParameter(ParameterType::MultiList, name, value, primary, prompt,
                                 default_value, flag, caption);
  parameter->Choices = choices;
  return Put(std::move(parameter));
}

ParameterPtr Parameters::AddList(const std::string& name, const Variant& value, bool primary,
                                 const std::string& prompt, const Variant& default_value,
                                 const std::string& choices, bool flag,
                                 const std::string& caption) {
  auto parameter = MakeParameter(ParameterType::List, name, value, primary, prompt, default_value,
                                 flag, caption);
  parameter->Choices = choices;
  return Put(std::move(parameter));
}

ParameterPtr Parameters::AddNumber(const std::string& name, const Variant& value, bool primary,
                                   const std::string& prompt, const Variant& default_value,
                                   std::int64_t initial, bool flag, const std::string& caption) {
  auto parameter = MakeParameter(ParameterType::Number, name, value, primary, prompt, default_value,
                                 flag, caption);
  parameter->Initial = initial;
  parameter->Minimum = kLowestNumber;
  parameter->Maximum = kHighestNumber;
  // A number declared without a value starts at its initial number, so the dialogue shows it
  // and a report that reads it unchanged gets that number rather than Empty.
  if (value.IsEmpty() || value.IsMissing()) {
    parameter->Value = Currency::FromWhole(initial);
  }
  return Put(std::move(parameter));
}

ParameterPtr Parameters::AddSQLList(const std::string& name, const Variant& value, bool primary,
                                    const std::string& prompt, const Variant& default_value,
                                    const std::string& list_sql, const std::string& key_field,
                                    bool flag, const std::string& caption) {
  auto parameter = MakeParameter(ParameterType::SQLList, name, value, primary, prompt,
                                 default_value, flag, caption);
  parameter->ListSQL = list_sql;
  parameter->KeyField = key_field;
  // The filter helpers test SQLField; a plain pick-list filters on its own key.
  parameter->SQLField = key_field;
  return Put(std::move(parameter));
}

ParameterPtr Parameters::AddString(const std::string& name, const Variant& value, bool primary,
                                   const std::string& prompt, const Variant& default_value,
                                   bool flag, const std::string& caption) {
  return Put(MakeParameter(ParameterType::String, name, value, primary, prompt, default_value, flag,
                           caption));
}

ParameterPtr Parameters::AddParameter(bool, ParameterPtr parameter) {
  if (!parameter) {
    throw std::invalid_argument("AddParameter was given no parameter");
  }
  return Put(std::move(parameter));
}

ParameterPtr Parameters::Put(ParameterPtr parameter) {
  // A nameless parameter (a standard parameter asked for by an index the table does not have)
  // is kept, but never stands in for another nameless one.
  if (!parameter->Name.empty()) {
    auto found = std::find_if(items_.begin(), items_.end(), [&](const ParameterPtr& item) {
      return EqualsIgnoreCase(item->Name, parameter->Name);
    });
    if (found != items_.end()) {
      *found = parameter;
      return parameter;
    }
  }
  items_.push_back(parameter);
  return parameter;
}

ParameterPtr Parameters::Find(std::string_view name) const {
  if (name.empty()) {
    return nullptr;
  }
  for (const ParameterPtr& item : items_) {
    if (EqualsIgnoreCase(item->Name, name)) {
      return item;
    }
  }
  return nullptr;
}

bool Parameters::Exists(std::string_view name) const { return Find(name) != nullptr; }

Variant Parameters::Value(std::string_view name, const Variant& default_value) const {
  ParameterPtr parameter = Find(name);
  return parameter ? parameter->Value : default_value;
}

Parameter& Parameters::Item(std::string_view name) const {
  ParameterPtr parameter = Find(name);
  if (!parameter) {
    throw NoSuchParameter("The report has no parameter named \"" + std::string(name) + "\".");
  }
  return *parameter;
}

void Parameters::SetValue(std::string_view name, const Variant& value) { Item(name).Value = value; }

void Parameters::Validate(const std::string&) {
  errors_.clear();
  for (const ParameterPtr& parameter : items_) {
    int type = parameter->Type();
    if (type <= 0 || type >= static_cast<int>(std::size(kChecks))) {
      continue;
    }
    if (std::optional<std::string> problem = kChecks[type](*parameter)) {
      errors_.push_back(parameter->Label() + ": " + *problem);
    }
  }
  valid_ = errors_.empty();
}

void Parameters::Remove(std::string_view name) {
  std::erase_if(items_, [&](const ParameterPtr& item) {
    return !name.empty() && EqualsIgnoreCase(item->Name, name);
  });
}

}  // namespace trellin
