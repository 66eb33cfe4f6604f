#pragma once
// Which company file a command reads.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/data/SqliteDatabase.h"
#include "platform/demo/DemoCompany.h"

namespace trellin::cli {

// The company file: `db_option` when given, else $TRELLIN_DB, else the demo company in the
// user's data folder ($XDG_DATA_HOME/trellin/demo.db, or ~/.local/share/trellin/demo.db).
[[nodiscard]] std::filesystem::path CompanyPath(const std::optional<std::string>& db_option);

// Opens the company file read-only. The demo company is built first when it is the default and
// does not exist yet, with a one-line notice on stderr. Throws DatabaseError (a company file
// error) for a file that is missing, not a regular file, or not a company file.
[[nodiscard]] std::shared_ptr<data::SqliteDatabase> OpenCompany(
    const std::optional<std::string>& db_option);

// The last day of last month: the demo company's books run to it unless told otherwise.
[[nodiscard]] Date LastMonthEnd();

// Builds the demo company at `path`, its books running to the end of `present`'s month, with a
// progress bar when stderr is a terminal. Throws what the generator throws.
demo::DemoSummary BuildDemo(const std::filesystem::path& path, int scale, std::uint64_t seed,
                            const std::string& country, Date present);

}  // namespace trellin::cli
