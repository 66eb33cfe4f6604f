#pragma once
// The demo companies the tests look at, built once for the whole run, and a small helper to
// ask them questions in SQL.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>

#include "platform/demo/DemoCompany.h"
#include "tests/support/TempFolder.h"

namespace trellin::demo::testing {

class Company {
 public:
  explicit Company(const std::string& path);
  Company(const Company&) = delete;
  Company& operator=(const Company&) = delete;
  ~Company();

  // The first column of the first row as a whole number (Null as 0).
  [[nodiscard]] std::int64_t Number(const std::string& sql) const;
  [[nodiscard]] std::string Text(const std::string& sql) const;
  [[nodiscard]] sqlite3* Handle() const { return db_; }

 private:
  sqlite3* db_ = nullptr;
};

// Builds (once) and opens the scale-1 company of a country with seed 1.
struct Built {
  std::string path;
  DemoSummary summary;  // empty when the company came from the cache
  std::unique_ptr<Company> company;
};
const Built& DemoOf(const std::string& country);
trellin::testing::TempFolder& SharedDir();

}  // namespace trellin::demo::testing
