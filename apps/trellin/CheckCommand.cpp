// trellin check: is the company file sound, and does it hold what the reports read?
#include <cstdio>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kCheckOptions = {
    {"db", 0, true, false, "FILE", "company file (default: $TRELLIN_DB, else the demo company)"},
    {"help", 'h', false, false, "", "show this help"},
};

constexpr std::size_t kMostFindings = 20;

}  // namespace

int CheckCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kCheckOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin check [--db FILE]\n\n"
        "Checks the company file, read only: SQLite's quick check, the tables and columns the\n"
        "reports read, and every stored amount, date, number and flag. Prints each problem\n"
        "found (the first %zu), and exits 3 when there is any.\n\n%s",
        kMostFindings, OptionsHelp(kCheckOptions).c_str());
    return kExitOk;
  }
  if (!parsed.Positional().empty()) throw UsageError("check takes no arguments");
  auto database = OpenCompanyFile(parsed.Value("db"), "check");
  std::vector<std::string> findings = database->Check(kMostFindings);
  for (const std::string& finding : findings) std::printf("%s\n", finding.c_str());
  if (!findings.empty()) {
    throw Error(ErrorKind::CompanyFile, "the company file '" + database->Path() + "' has " +
                                            (findings.size() >= kMostFindings ? "at least " : "") +
                                            std::to_string(findings.size()) + " problem" +
                                            (findings.size() == 1 ? "" : "s"));
  }
  std::printf("%s: sound\n", database->Path().c_str());
  return kExitOk;
}

}  // namespace trellin::cli
