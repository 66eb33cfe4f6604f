#pragma once
// The sub-commands of `trellin`. Each takes its own arguments (after the command name) and
// returns the process exit code; failures are thrown as trellin::Error, whose kind sets the exit
// code (Failure.h).

#include <string>
#include <vector>

#include "platform/runtime/Error.h"

namespace trellin {
struct CatalogueEntry;
}

namespace trellin::cli {

// Exit codes: what a script calling trellin can rely on.
enum ExitCode : int {
  kExitOk = 0,
  kExitReportErrors = 1,   // the report ran but its events raised errors
  kExitUsage = 2,          // bad usage or bad input (key, parameter value, file)
  kExitDatabase = 3,       // the company file is missing, damaged or not a company file
  kExitInterrupted = 130,  // stopped by Ctrl-C (SIGINT)
  kExitTerminated = 143,   // stopped by SIGTERM
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
int CheckCommand(const Args& args, const Context& context);
int CopyCommand(const Args& args, const Context& context);
int ServeCommand(const Args& args, const Context& context);
int LayoutCommand(const Args& args, const Context& context);

// The caption `trellin list` shows for a key that runs: the catalogue's, else its layout's, else
// the one its designer gives itself, else the designer's name in brackets.
[[nodiscard]] std::string ReportCaption(const CatalogueEntry& entry);

}  // namespace trellin::cli
