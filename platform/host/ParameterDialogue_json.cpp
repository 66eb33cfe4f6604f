#include <algorithm>

#include <nlohmann/json.hpp>

#include "platform/host/ParameterDialogue.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

using nlohmann::json;

json VariantToJson(const Variant& value) {
  if (const bool* b = value.Get<bool>()) return *b;
  if (const std::int64_t* n = value.Get<std::int64_t>()) return *n;
  if (const double* d = value.Get<double>()) return *d;
  if (const Currency* c = value.Get<Currency>()) {
    // Whole amounts stay integers so they read back exactly.
    if (c->Raw() % Currency::kScale == 0) return c->Raw() / Currency::kScale;
    return c->ToDouble();
  }
  if (const Date* date = value.Get<Date>()) return date->ToIso();
  if (const std::string* s = value.Get<std::string>()) return *s;
  return nullptr;
}

// A code for a list, quoted when it holds a comma or the range mark so it stays one code.
std::string ListItem(const std::string& code) {
  if (code.find(',') == std::string::npos && code.find("..") == std::string::npos) return code;
  return "\"" + Replace(code, "\"", "\"\"") + "\"";
}

}  // namespace

void ParameterDialogue::SetFromJson(const json& values) {
  if (!values.is_object()) {
    throw ParameterError("Parameter values must be a JSON object of names and values.");
  }
  for (const auto& [name, value] : values.items()) {
    Parameter& parameter = Known(name);
    std::string text;
    switch (value.type()) {
      case json::value_t::string:
        text = value.get<std::string>();
        break;
      case json::value_t::boolean:
        text = value.get<bool>() ? "true" : "false";
        break;
      case json::value_t::number_integer:
      case json::value_t::number_unsigned:
      case json::value_t::number_float:
        text = value.dump();
        break;
      case json::value_t::null:
        break;
      case json::value_t::array: {
        std::vector<std::string> items;
        for (const json& item : value) {
          if (!item.is_string() && !item.is_number()) {
            throw ParameterError(parameter.Label() + ": a list holds only texts and numbers.");
          }
          items.push_back(item.is_string() ? ListItem(item.get<std::string>()) : item.dump());
        }
        text = Join(items, ",");
        break;
      }
      default:
        throw ParameterError(parameter.Label() + ": " + value.dump() +
                             " is not a value a parameter takes.");
    }
    SetFromText(parameter.Name, text);
  }
}

void ParameterDialogue::SetFromJsonText(std::string_view text) {
  json values;
  try {
    values = json::parse(text);
  } catch (const json::parse_error& e) {
    // Where, in the terms of an editor: line and column of the byte the parser stopped at.
    const std::size_t stop = std::min<std::size_t>(e.byte == 0 ? 0 : e.byte - 1, text.size());
    std::size_t line = 1;
    std::size_t line_start = 0;
    for (std::size_t i = 0; i < stop; ++i) {
      if (text[i] == '\n') {
        ++line;
        line_start = i + 1;
      }
    }
    throw ParameterError("The parameter values are not valid JSON: line " + std::to_string(line) +
                         ", column " + std::to_string(stop - line_start + 1) + ".");
  } catch (const json::exception&) {
    // The parser's other refusals are of numbers too large for a double (1e999).
    throw ParameterError("The parameter values hold a number too large to use.");
  }
  SetFromJson(values);
}

json ParameterDialogue::ToJson(const std::vector<DialogueEntry>& entries) {
  json list = json::array();
  for (const DialogueEntry& entry : entries) {
    json item = {
        {"name", entry.Name},
        {"kind", KindName(entry.Kind)},
        {"caption", entry.Caption},
        {"prompt", entry.Prompt},
        {"primary", entry.Primary},
        {"flag", entry.Flag},
        {"value", VariantToJson(entry.Value)},
        {"default", VariantToJson(entry.DefaultValue)},
    };
    if (entry.Kind == ParameterType::Date) {
      item["resolvedDefault"] = VariantToJson(entry.ResolvedDefault);
    }
    if (!entry.Help.empty()) item["help"] = entry.Help;
    if (entry.Kind == ParameterType::List || entry.Kind == ParameterType::MultiList) {
      item["choices"] = entry.Choices;
    }
    if (entry.Kind == ParameterType::SQLList) {
      item["listSQL"] = entry.ListSQL;
      item["keyField"] = entry.KeyField;
      json rows = json::array();
      for (const PickRow& row : entry.Rows) {
        rows.push_back({{"key", row.Key}, {"description", row.Description}});
      }
      item["rows"] = std::move(rows);
      if (!entry.RowsError.empty()) item["rowsError"] = entry.RowsError;
    }
    if (!entry.Dependency.empty()) item["dependency"] = entry.Dependency;
    list.push_back(std::move(item));
  }
  return list;
}

json ParameterDialogue::ValuesToJson() const {
  json values = json::object();
  for (const ParameterPtr& parameter : parameters_) {
    if (!parameter->Name.empty()) values[parameter->Name] = VariantToJson(parameter->Value);
  }
  return values;
}

}  // namespace trellin::host
