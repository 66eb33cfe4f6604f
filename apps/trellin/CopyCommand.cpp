// trellin copy: a company file onto a PostgreSQL server.
#include <cstdio>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"
#include "platform/data/postgres/PostgresCompany.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kCopyOptions = {
    {"from", 0, true, false, "FILE", "company file (default: $TRELLIN_DB, else the demo company)"},
    {"to", 0, true, false, "URL", "an empty database on a server: postgresql://user@host/dbname"},
    {"help", 'h', false, false, "", "show this help"},
};

}  // namespace

int CopyCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kCopyOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin copy [--from FILE] --to postgresql://user@host/dbname\n\n"
        "Copies a company file onto an empty PostgreSQL database: the company schema, then every\n"
        "table's rows, in one transaction (a failure leaves the database as it was). The "
        "password,\n"
        "if the server asks one, comes from the URL, $PGPASSWORD or ~/.pgpass.\n\n%s",
        OptionsHelp(kCopyOptions).c_str());
    return kExitOk;
  }
  if (!parsed.Positional().empty()) throw UsageError("copy takes no arguments");
  const auto to = parsed.Value("to");
  if (!to || !data::IsPostgresUrl(*to)) {
    throw UsageError("copy needs --to postgresql://user@host/dbname");
  }
  const std::string from = OpenCompanyFile(parsed.Value("from"), "copy --from")->Path();
  data::PgConnection target(*to);
  const data::CopySummary copied = data::CopyCompanyToPostgres(from, target);
  std::printf("%s: %lld rows of %d tables copied to %s\n", from.c_str(),
              static_cast<long long>(copied.rows), copied.tables, target.Name().c_str());
  return kExitOk;
}

}  // namespace trellin::cli
