#include "apps/trellin/CommandLine.h"

#include <algorithm>

namespace trellin::cli {

std::optional<std::string> ParsedArgs::Value(std::string_view name) const {
  auto it = values_.find(std::string(name));
  if (it == values_.end() || it->second.empty()) return std::nullopt;
  return it->second.back();
}

std::vector<std::string> ParsedArgs::Values(std::string_view name) const {
  auto it = values_.find(std::string(name));
  return it == values_.end() ? std::vector<std::string>{} : it->second;
}

namespace {

const OptionSpec* FindLong(const std::vector<OptionSpec>& specs, std::string_view name) {
  for (const auto& option : specs) {
    if (option.long_name == name) return &option;
  }
  return nullptr;
}

const OptionSpec* FindShort(const std::vector<OptionSpec>& specs, char name) {
  for (const auto& option : specs) {
    if (option.short_name != 0 && option.short_name == name) return &option;
  }
  return nullptr;
}

}  // namespace

ParsedArgs Parse(const std::vector<std::string>& args, const std::vector<OptionSpec>& specs) {
  ParsedArgs parsed;
  bool options_done = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (options_done || arg.size() < 2 || arg[0] != '-') {
      parsed.positional_.push_back(arg);
      continue;
    }
    if (arg == "--") {
      options_done = true;
      continue;
    }
    const OptionSpec* option = nullptr;
    std::optional<std::string> inline_value;
    std::string shown;
    if (arg.rfind("--", 0) == 0) {
      std::string_view body = std::string_view(arg).substr(2);
      std::size_t eq = body.find('=');
      if (eq != std::string_view::npos) {
        inline_value = std::string(body.substr(eq + 1));
        body = body.substr(0, eq);
      }
      option = FindLong(specs, body);
      shown = "--" + std::string(body);
    } else {
      option = FindShort(specs, arg[1]);
      shown = arg.substr(0, 2);
      if (arg.size() > 2) inline_value = arg.substr(2);
    }
    if (option == nullptr) throw UsageError("unknown option '" + shown + "'");
    std::string key(option->long_name);
    if (!option->takes_value) {
      if (inline_value) throw UsageError("option '" + shown + "' takes no value");
      parsed.values_[key].push_back("");
      continue;
    }
    std::string value;
    if (inline_value) {
      value = *inline_value;
    } else if (i + 1 < args.size()) {
      value = args[++i];
    } else {
      throw UsageError("option '" + shown + "' needs a value (" + std::string(option->value_name) + ")");
    }
    auto& slot = parsed.values_[key];
    if (!option->repeats && !slot.empty()) throw UsageError("option '" + shown + "' given twice");
    slot.push_back(std::move(value));
  }
  return parsed;
}

std::string OptionsHelp(const std::vector<OptionSpec>& specs) {
  std::vector<std::string> heads;
  std::size_t width = 0;
  for (const auto& option : specs) {
    std::string head = option.short_name ? std::string("-") + option.short_name + ", " : "    ";
    head += "--" + std::string(option.long_name);
    if (option.takes_value) head += " " + std::string(option.value_name);
    width = std::max(width, head.size());
    heads.push_back(std::move(head));
  }
  std::string out;
  for (std::size_t i = 0; i < specs.size(); ++i) {
    out += "  " + heads[i] + std::string(width - heads[i].size() + 2, ' ') + std::string(specs[i].help) + "\n";
  }
  return out;
}

}  // namespace trellin::cli
