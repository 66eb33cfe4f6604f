// The options are read by CLI11 from the commands' tables; the messages are ours, so that a
// script or a user sees the same words whichever parser reads them.
#include "apps/trellin/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdint>
#include <memory>

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

// "-o,--output" for CLI11.
std::string NamesOf(const OptionSpec& option) {
  std::string names;
  if (option.short_name != 0) names = std::string("-") + option.short_name + ",";
  return names + "--" + std::string(option.long_name);
}

// One CLI11 app declaring `specs`: each value option takes exactly one value per use and keeps
// every use; flags count their uses; what is left is positional.
struct Declared {
  CLI::App app;
  std::map<std::string, std::vector<std::string>> values;
  std::map<std::string, std::int64_t> flags;
  std::vector<std::string> positional;
  std::map<std::string, const OptionSpec*> by_name;  // "--db", "-o" -> its option

  explicit Declared(const std::vector<OptionSpec>& specs) {
    app.set_help_flag();  // --help is an option of each command's own table
    app.allow_extras(true);
    for (const OptionSpec& option : specs) {
      const std::string key(option.long_name);
      by_name["--" + key] = &option;
      if (option.short_name != 0) by_name[std::string("-") + option.short_name] = &option;
      if (option.takes_value) {
        app.add_option(NamesOf(option), values[key], std::string(option.help))
            ->expected(1)
            ->take_all()
            ->allow_extra_args(false)
            ->type_name(std::string(option.value_name));
      } else {
        app.add_flag(NamesOf(option), flags[key], std::string(option.help));
      }
    }
    app.add_option("arguments", positional);
  }
};

// The option as the user wrote it: "--db" of "--db=x", "-o" of "-ofile".
std::string Shown(const std::string& arg) {
  if (arg.rfind("--", 0) == 0) return arg.substr(0, arg.find('='));
  return arg.substr(0, 2);
}

bool LooksLikeOption(const std::string& arg) { return arg.size() >= 2 && arg[0] == '-'; }

}  // namespace

ParsedArgs Parse(const std::vector<std::string>& args, const std::vector<OptionSpec>& specs) {
  // After "--" everything is an argument, whatever it looks like.
  auto end_of_options = std::find(args.begin(), args.end(), "--");
  std::vector<std::string> options(args.begin(), end_of_options);
  Declared declared(specs);
  // Refusals CLI11 words its own way, or does not make: a flag given a value, and a value
  // option at the very end.
  for (std::size_t i = 0; i < options.size(); ++i) {
    const std::string& arg = options[i];
    if (!LooksLikeOption(arg)) continue;
    auto found = declared.by_name.find(Shown(arg));
    if (found == declared.by_name.end()) continue;
    const OptionSpec& option = *found->second;
    const bool inline_value =
        arg.rfind("--", 0) == 0 ? arg.find('=') != std::string::npos : arg.size() > 2;
    if (!option.takes_value && inline_value && arg.rfind("--", 0) == 0) {
      throw UsageError("option '" + Shown(arg) + "' takes no value");
    }
    if (option.takes_value && !inline_value) {
      if (i + 1 >= options.size()) {
        throw UsageError("option '" + Shown(arg) + "' needs a value (" +
                         std::string(option.value_name) + ")");
      }
      ++i;  // the value, whatever it looks like
    }
  }
  try {
    declared.app.parse(std::vector<std::string>(options.rbegin(), options.rend()));
  } catch (const CLI::ParseError& e) {
    throw UsageError(e.what());
  }
  for (const std::string& extra : declared.app.remaining()) {
    if (LooksLikeOption(extra)) throw UsageError("unknown option '" + Shown(extra) + "'");
    declared.positional.push_back(extra);
  }

  ParsedArgs parsed;
  for (const OptionSpec& option : specs) {
    const std::string key(option.long_name);
    if (option.takes_value) {
      std::vector<std::string>& given = declared.values[key];
      if (given.empty()) continue;
      if (given.size() > 1 && !option.repeats) {
        throw UsageError("option '--" + key + "' given twice");
      }
      parsed.values_[key] = std::move(given);
    } else if (declared.flags[key] > 0) {
      parsed.values_[key] = std::vector<std::string>(static_cast<std::size_t>(declared.flags[key]));
    }
  }
  parsed.positional_ = std::move(declared.positional);
  parsed.positional_.insert(parsed.positional_.end(),
                            end_of_options == args.end() ? args.end() : end_of_options + 1,
                            args.end());
  return parsed;
}

std::string OptionsHelp(const std::vector<OptionSpec>& specs) {
  Declared declared(specs);
  std::size_t width = 0;
  for (const OptionSpec& option : specs) {
    std::size_t head =
        NamesOf(option).size() + (option.takes_value ? option.value_name.size() + 1 : 0);
    width = std::max(width, head);
  }
  auto formatter = std::make_shared<CLI::Formatter>();
  formatter->column_width(width + 5);
  std::string out;
  for (const CLI::Option* option : declared.app.get_options()) {
    if (option->get_positional()) continue;
    out += formatter->make_option(option, false);
  }
  return out;
}

}  // namespace trellin::cli
