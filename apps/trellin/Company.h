#pragma once
// Which company a command reads: a company file, or a company on a PostgreSQL server.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/data/CompanyDatabase.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/demo/DemoCompany.h"

namespace trellin::cli {

// The company file: `db_option` when given, else $TRELLIN_DB, else the demo company in the
// user's data folder ($XDG_DATA_HOME/trellin/demo.db, or ~/.local/share/trellin/demo.db).
[[nodiscard]] std::filesystem::path CompanyPath(const std::optional<std::string>& db_option);

// Opens the company read-only: `db_option`, else $TRELLIN_DB, else the demo company. A
// postgresql://user@host/dbname names a company on a server, anything else a company file. The
// demo company is built first when it is the default and does not exist yet, with a one-line
// notice on stderr. Throws DatabaseError (a company file error, exit 3) for a file that is
// missing, not a regular file, or not a company file, and for a server that cannot be reached,
// refuses the user or has no such database.
[[nodiscard]] std::shared_ptr<data::CompanyDatabase> OpenCompany(
    const std::optional<std::string>& db_option);
// As OpenCompany, for the commands that read a company file as a file (`command` names the
// one asking): a server's company is refused as a usage error.
[[nodiscard]] std::shared_ptr<data::SqliteDatabase> OpenCompanyFile(
    const std::optional<std::string>& db_option, std::string_view command);

// The last day of last month: the demo company's books run to it unless told otherwise.
[[nodiscard]] Date LastMonthEnd();

// Builds the demo company at `path`, its books running to the end of `present`'s month, with a
// progress bar when stderr is a terminal. Throws what the generator throws.
demo::DemoSummary BuildDemo(const std::filesystem::path& path, int scale, std::uint64_t seed,
                            const std::string& country, Date present);

}  // namespace trellin::cli
