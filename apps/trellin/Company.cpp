#include "apps/trellin/Company.h"

#include <cstdio>
#include <cstdlib>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "platform/data/CompanyFile.h"
#include "platform/data/postgres/PostgresDatabase.h"

namespace trellin::cli {

namespace {

std::filesystem::path DefaultDemoPath() {
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && *xdg != '\0') {
    return std::filesystem::path(xdg) / "trellin" / "demo.db";
  }
  const char* home = std::getenv("HOME");
  std::filesystem::path base = home != nullptr && *home != '\0' ? home : ".";
  return base / ".local" / "share" / "trellin" / "demo.db";
}

}  // namespace

std::filesystem::path CompanyPath(const std::optional<std::string>& db_option) {
  if (db_option) return *db_option;
  if (const char* env = std::getenv("TRELLIN_DB"); env != nullptr && *env != '\0') return env;
  return DefaultDemoPath();
}

std::shared_ptr<data::CompanyDatabase> OpenCompany(const std::optional<std::string>& db_option) {
  if (const std::string named = CompanyPath(db_option).string(); data::IsPostgresUrl(named)) {
    return data::PostgresDatabase::Open(named);
  }
  return OpenCompanyFile(db_option, "");
}

std::shared_ptr<data::SqliteDatabase> OpenCompanyFile(const std::optional<std::string>& db_option,
                                                      std::string_view command) {
  std::filesystem::path path = CompanyPath(db_option);
  if (data::IsPostgresUrl(path.string())) {
    throw UsageError(std::string(command) + " reads a company file, not a company on a server");
  }
  bool is_default = !db_option && CompanyPath(std::nullopt) == DefaultDemoPath();
  // The demo company is rebuilt when it was made for another schema: an earlier version's file
  // lacks what this version's reports read.
  const bool missing = !std::filesystem::exists(path);
  if (is_default &&
      (missing || data::ReadCompanySchemaStamp(path.string()) != data::CompanySchemaStamp())) {
    std::fprintf(stderr,
                 missing ? "trellin: no company file given; building the demo company at %s\n"
                         : "trellin: the demo company at %s was built by another version of "
                           "trellin; building it afresh\n",
                 path.c_str());
    try {
      BuildDemo(path, 1, 1, "NZ", LastMonthEnd());
    } catch (const std::exception& e) {
      throw Error(ErrorKind::CompanyFile,
                  std::string("cannot build the demo company: ") + e.what());
    }
  }
  return data::SqliteDatabase::Open(path.string());
}

}  // namespace trellin::cli
