#include "tests/demo/DemoFixture.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace trellin::demo::testing {

Company::Company(const std::string& path) {
  if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open " + path);
  }
}

Company::~Company() { sqlite3_close(db_); }

std::int64_t Company::Number(const std::string& sql) const {
  sqlite3_stmt* stmt = nullptr;
  if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
    throw std::runtime_error(std::string(sqlite3_errmsg(db_)) + " in " + sql);
  }
  std::int64_t value = 0;
  if (sqlite3_step(stmt) == SQLITE_ROW) value = sqlite3_column_int64(stmt, 0);
  sqlite3_finalize(stmt);
  return value;
}

std::string Company::Text(const std::string& sql) const {
  sqlite3_stmt* stmt = nullptr;
  if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
    throw std::runtime_error(std::string(sqlite3_errmsg(db_)) + " in " + sql);
  }
  std::string value;
  if (sqlite3_step(stmt) == SQLITE_ROW && sqlite3_column_text(stmt, 0) != nullptr) {
    value = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
  }
  sqlite3_finalize(stmt);
  return value;
}

trellin::testing::TempFolder& SharedDir() {
  static trellin::testing::TempFolder dir;
  return dir;
}

namespace {

// The companies are cached beside the system's temporary files, keyed by the test binary's
// build time: each test case runs in its own process, and building the same company for each
// would cost most of the run. A new build of the generator gives a new binary and a new key.
std::string CachedPath(const std::string& country) {
  namespace fs = std::filesystem;
  const auto stamp = fs::last_write_time("/proc/self/exe").time_since_epoch().count();
  const fs::path folder = fs::temp_directory_path() / "trellin-demo-tests";
  fs::create_directories(folder);
  const std::string name = "demo-" + country + "-" + std::to_string(stamp) + ".db";
  // Companies of older builds are of no more use once they are a while old; a younger one may
  // belong to another build folder whose tests are running now.
  std::error_code ignored;
  const auto stale = fs::file_time_type::clock::now() - std::chrono::hours(2);
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    const std::string old = entry.path().filename().string();
    if (old.rfind("demo-" + country + "-", 0) == 0 && old.rfind(name, 0) != 0 &&
        entry.last_write_time(ignored) < stale) {
      fs::remove(entry.path(), ignored);
    }
  }
  return (folder / name).string();
}

}  // namespace

const Built& DemoOf(const std::string& country) {
  static std::map<std::string, Built> built;
  auto found = built.find(country);
  if (found != built.end()) return found->second;
  Built b;
  b.path = CachedPath(country);
  DemoOptions options;
  options.country = country;
  if (!std::filesystem::exists(b.path)) {
    // Built under a name of this process's own, then renamed, so that test processes running
    // side by side never see half a file.
    options.path = b.path + "." + std::to_string(getpid());
    b.summary = BuildDemoCompany(options);
    std::filesystem::rename(options.path, b.path);
  }
  b.company = std::make_unique<Company>(b.path);
  return built.emplace(country, std::move(b)).first->second;
}

}  // namespace trellin::demo::testing
