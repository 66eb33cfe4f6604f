#pragma once
// The sub-commands of `trellin`. Each takes its own arguments (after the command name) and
// returns the process exit code; failures it can describe are thrown as CommandError.

#include <stdexcept>
#include <string>
#include <vector>

namespace trellin::cli {

// Exit codes: what a script calling trellin can rely on.
enum ExitCode : int {
  kExitOk = 0,
  kExitReportErrors = 1,  // the report ran but its events raised errors
  kExitUsage = 2,         // bad usage or bad input (key, parameter value, file)
  kExitDatabase = 3,      // the company file is missing, unreadable or not a company file
};

// A failure with its exit code and one line for the user.
class CommandError : public std::runtime_error {
 public:
  CommandError(int code, const std::string& message) : std::runtime_error(message), code_(code) {}
  [[nodiscard]] int Code() const { return code_; }

 private:
  int code_;
};

struct Context {
  bool verbose = false;
};

using Args = std::vector<std::string>;

int ListCommand(const Args& args, const Context& context);
int ParamsCommand(const Args& args, const Context& context);
int RunCommand(const Args& args, const Context& context);
int DemoCommand(const Args& args, const Context& context);
int SqlCommand(const Args& args, const Context& context);

}  // namespace trellin::cli
