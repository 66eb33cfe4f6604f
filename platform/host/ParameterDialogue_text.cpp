#include <algorithm>

#include "platform/host/ParameterDialogue.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

constexpr std::pair<std::string_view, bool> kBooleanWords[] = {
    {"true", true}, {"false", false}, {"yes", true}, {"no", false}, {"1", true}, {"0", false},
};

[[noreturn]] void Refuse(const Parameter& parameter, const std::string& problem) {
  throw ParameterError(parameter.Label() + ": " + problem);
}

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// The choice as the report spells it, found without regard to case.
std::optional<std::string> MatchChoice(const Parameter& parameter, std::string_view text) {
  for (const std::string& choice : parameter.ChoiceList()) {
    if (EqualsIgnoreCase(choice, text)) return choice;
  }
  return std::nullopt;
}

std::string NotAChoice(const Parameter& parameter, std::string_view text) {
  return Quoted(text) + " is not one of the choices (" + Join(parameter.ChoiceList(), ", ") + ").";
}

}  // namespace

Variant ParameterDialogue::ConvertText(const Parameter& parameter, std::string_view raw) {
  const std::string text = Trim(raw);
  switch (parameter.Kind) {
    case ParameterType::Boolean:
      for (const auto& [word, value] : kBooleanWords) {
        if (EqualsIgnoreCase(text, word)) return Variant(value);
      }
      Refuse(parameter, Quoted(text) + " is not true or false (true, false, yes, no, 1 or 0).");
    case ParameterType::Date: {
      if (text.empty()) return Variant::Null();
      if (std::optional<Date> date = ParseDateText(text)) return Variant(*date);
      if (!resolver_) Refuse(parameter, Quoted(text) + " is not a date.");
      // Kept as text and worked out by Resolve, in order, once every value is in.
      pending_.insert(LCase(parameter.Name));
      return Variant(text);
    }
    case ParameterType::Number: {
      std::optional<Currency> number = Currency::Parse(text);
      if (!number) Refuse(parameter, Quoted(text) + " is not a number.");
      return Variant(*number);
    }
    case ParameterType::List: {
      if (text.empty()) return Variant("");
      std::optional<std::string> choice = MatchChoice(parameter, text);
      if (!choice) Refuse(parameter, NotAChoice(parameter, text));
      return Variant(*choice);
    }
    case ParameterType::MultiList: {
      std::vector<std::string> items;
      std::vector<std::string> chosen;
      for (const MultiListItem& item : SplitMultiListValue(text)) {
        std::optional<std::string> choice = MatchChoice(parameter, item.Choice);
        if (!choice) Refuse(parameter, NotAChoice(parameter, item.Choice));
        if (std::find(chosen.begin(), chosen.end(), *choice) != chosen.end()) {
          Refuse(parameter, Quoted(*choice) + " is chosen more than once.");
        }
        chosen.push_back(*choice);
        items.push_back(*choice + (item.PageBreak ? std::string(kPageBreakMark) : std::string()));
      }
      return Variant(Join(items, ","));
    }
    case ParameterType::SQLList: {
      std::vector<std::string> errors;
      CheckListSyntax(parameter, text, errors);
      if (!errors.empty()) throw ParameterError(errors.front());
      return Variant(text);
    }
    case ParameterType::String:
      break;
  }
  // Free text keeps its blanks: a message or a hidden SQL fragment is taken as typed.
  return Variant(std::string(raw));
}

void ParameterDialogue::SetFromText(std::string_view name, std::string_view text) {
  // A NUL would cut the value short wherever it is passed on as C text.
  if (name.find('\0') != std::string_view::npos) {
    throw ParameterError("A parameter name holds a NUL character.");
  }
  Parameter& parameter = Known(name);
  if (text.find('\0') != std::string_view::npos) {
    throw ParameterError(parameter.Label() + ": the value holds a NUL character.");
  }
  const std::string key = LCase(parameter.Name);
  pending_.erase(key);
  given_.insert(key);
  std::erase_if(resolve_errors_, [&](const auto& entry) { return entry.first == key; });
  parameter.Value = ConvertText(parameter, text);
}

void ParameterDialogue::SetFromAssignment(std::string_view assignment) {
  std::size_t equals = assignment.find('=');
  if (equals == std::string_view::npos || Trim(assignment.substr(0, equals)).empty()) {
    throw ParameterError(Quoted(assignment) + " is not of the form NAME=VALUE.");
  }
  SetFromText(assignment.substr(0, equals), assignment.substr(equals + 1));
}

}  // namespace trellin::host
