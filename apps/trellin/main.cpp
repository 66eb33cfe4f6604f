// trellin: the command-line face of the report service.
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Failure.h"
#include "platform/render/StagedFile.h"

namespace {

using trellin::cli::Args;
using trellin::cli::Context;

struct Command {
  std::string_view name;
  std::string_view summary;
  int (*run)(const Args&, const Context&);
};

const Command kCommands[] = {
    {"list", "list the report keys, with caption and area", trellin::cli::ListCommand},
    {"params", "show what a report asks: parameters, defaults, choices, pick-lists",
     trellin::cli::ParamsCommand},
    {"run", "run a report to a PDF, PNG, HTML, text, CSV or XLSX file", trellin::cli::RunCommand},
    {"layout", "write a report's stored layout, to start a copy of one's own",
     trellin::cli::LayoutCommand},
    {"demo", "build the demo company file", trellin::cli::DemoCommand},
    {"sql", "run Jet-dialect SQL on the company file (read only), or show its SQLite text",
     trellin::cli::SqlCommand},
    {"check", "check the company file: SQLite's quick check and the tables the reports read",
     trellin::cli::CheckCommand},
    {"copy", "copy the company file onto a PostgreSQL server", trellin::cli::CopyCommand},
    {"serve", "serve the reports to a browser: catalogue, parameters, preview, downloads",
     trellin::cli::ServeCommand},
};

void PrintUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: trellin [--verbose] <command> [options]\n\n"
               "Reports from a small-business accounts company file.\n\ncommands:\n");
  for (const Command& command : kCommands) {
    std::fprintf(out, "  %-8s %s\n", std::string(command.name).c_str(),
                 std::string(command.summary).c_str());
  }
  std::fprintf(
      out,
      "\n'trellin <command> --help' tells a command's options.\n"
      "The company is --db FILE (or postgresql://user@host/dbname for one on a server),\n"
      "else $TRELLIN_DB, else the demo company.\n"
      "Exit codes: 0 success, 1 report errors, 2 bad usage or input, 3 database problems,\n"
      "130 or 143 stopped by Ctrl-C or SIGTERM (a server stopped so exits 0).\n");
}

// Ctrl-C or SIGTERM during a run: the output being written goes, the older file of that name
// stays, and the exit code says which signal it was (128 + its number, as shells report).
extern "C" void StopRun(int signal_number) {
  trellin::render::RemoveStagedFilesNow();
  static constexpr char kStopped[] = "trellin: stopped; nothing was written\n";
  (void)!::write(STDERR_FILENO, kStopped, sizeof kStopped - 1);
  ::_exit(128 + signal_number);
}

void HandleStops() {
  struct sigaction action {};
  action.sa_handler = StopRun;
  sigemptyset(&action.sa_mask);
  for (int signal_number : {SIGINT, SIGTERM}) ::sigaction(signal_number, &action, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  HandleStops();
  std::vector<std::string> args(argv + 1, argv + argc);
  Context context;
  while (!args.empty() && (args.front() == "--verbose" || args.front() == "-v")) {
    context.verbose = true;
    args.erase(args.begin());
  }
  if (args.empty()) {
    PrintUsage(stderr);
    return trellin::cli::kExitUsage;
  }
  if (args.front() == "-h" || args.front() == "--help" || args.front() == "help") {
    PrintUsage(stdout);
    return trellin::cli::kExitOk;
  }
  for (const Command& command : kCommands) {
    if (command.name != args.front()) continue;
    Args rest(args.begin() + 1, args.end());
    try {
      return command.run(rest, context);
    } catch (...) {
      return trellin::cli::ReportFailure(command.name, std::current_exception());
    }
  }
  std::fprintf(stderr, "trellin: unknown command '%s' (see 'trellin --help')\n",
               args.front().c_str());
  return trellin::cli::kExitUsage;
}
