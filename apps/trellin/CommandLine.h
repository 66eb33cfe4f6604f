#pragma once
// Reading a sub-command's arguments against a table of the options it takes.

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Error.h"

namespace trellin::cli {

// Bad usage: an unknown option, a missing value, a missing or surplus argument. The message is
// one line for the user; the caller adds the hint to --help.
class UsageError : public Error {
 public:
  explicit UsageError(const std::string& message) : Error(ErrorKind::Input, message) {}
};

struct OptionSpec {
  std::string_view long_name;  // "db" for --db
  char short_name = 0;         // 'o' for -o, 0 for none
  bool takes_value = false;
  bool repeats = false;         // may be given more than once (--set)
  std::string_view value_name;  // "FILE", for help
  std::string_view help;
};

class ParsedArgs {
 public:
  [[nodiscard]] bool Has(std::string_view name) const {
    return values_.count(std::string(name)) > 0;
  }
  // The last value given for the option, or nullopt.
  [[nodiscard]] std::optional<std::string> Value(std::string_view name) const;
  // Every value given for a repeating option, in order.
  [[nodiscard]] std::vector<std::string> Values(std::string_view name) const;
  [[nodiscard]] const std::vector<std::string>& Positional() const { return positional_; }

 private:
  friend ParsedArgs Parse(const std::vector<std::string>& args,
                          const std::vector<OptionSpec>& specs);
  std::map<std::string, std::vector<std::string>> values_;
  std::vector<std::string> positional_;
};

// Parses `args` (without the program and command names). Accepts "--name value",
// "--name=value", "-o value", "-ovalue"; "--" ends the options. Throws UsageError.
[[nodiscard]] ParsedArgs Parse(const std::vector<std::string>& args,
                               const std::vector<OptionSpec>& specs);

// The options part of a command's help, one line per option, aligned.
[[nodiscard]] std::string OptionsHelp(const std::vector<OptionSpec>& specs);

}  // namespace trellin::cli
