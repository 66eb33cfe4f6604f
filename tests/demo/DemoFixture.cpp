#include "tests/demo/DemoFixture.h"

#include <map>
#include <stdexcept>

#include "tests/support/DemoCache.h"

namespace trellin::demo::testing {

Company::Company(const std::string& path) {
  if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open " + path);
  }
  // Other test processes open and close the same cached company; the last to close one folds
  // its log back in, and a reader arriving then waits instead of failing.
  sqlite3_busy_timeout(db_, 10000);
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

const Built& DemoOf(const std::string& country) {
  static std::map<std::string, Built> built;
  auto found = built.find(country);
  if (found != built.end()) return found->second;
  Built b;
  b.path = trellin::testing::CachedDemoCompany(country, &b.summary);
  b.company = std::make_unique<Company>(b.path);
  return built.emplace(country, std::move(b)).first->second;
}

}  // namespace trellin::demo::testing
