#pragma once
// What the asset report tests share: the dump of a run, parameter lists, the demo company read
// with plain SQL, printed amounts in cents, and a hand-made company of one SQL file on top of
// business/real_company.sql (years to 31 March 2025, the clock at 1 April 2025).

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::reports::testing {

inline std::string Dump(const DesignerPtr& designer) { return Join(DumpPages(designer), "\n"); }

inline std::vector<std::string> With(std::vector<std::string> a,
                                     const std::vector<std::string>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// The demo company read with plain SQL, beside the reports.
class PlainSql {
 public:
  PlainSql() { sqlite3_open_v2(DemoCompanyPath().c_str(), &db_, SQLITE_OPEN_READONLY, nullptr); }
  ~PlainSql() { sqlite3_close(db_); }
  PlainSql(const PlainSql&) = delete;
  PlainSql& operator=(const PlainSql&) = delete;
  // The first column of the first row, in cents.
  [[nodiscard]] std::int64_t Cents(const std::string& sql) const {
    sqlite3_stmt* stmt = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK) << sql;
    std::int64_t cents = 0;
    if (stmt != nullptr && sqlite3_step(stmt) == SQLITE_ROW) {
      cents = sqlite3_column_int64(stmt, 0) / 100;  // stored ten-thousandths
    }
    sqlite3_finalize(stmt);
    return cents;
  }
  // The first column of every row, as text.
  [[nodiscard]] std::vector<std::string> Texts(const std::string& sql) const {
    sqlite3_stmt* stmt = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK) << sql;
    std::vector<std::string> texts;
    while (stmt != nullptr && sqlite3_step(stmt) == SQLITE_ROW) {
      const unsigned char* text = sqlite3_column_text(stmt, 0);
      texts.emplace_back(text == nullptr ? "" : reinterpret_cast<const char*>(text));
    }
    sqlite3_finalize(stmt);
    return texts;
  }

 private:
  sqlite3* db_ = nullptr;
};

// A printed amount in cents: "(1,234.56)" is -123456.
inline std::int64_t CentsOf(const std::string& text) {
  std::string digits;
  for (char c : text) {
    if (std::isdigit(static_cast<unsigned char>(c))) digits += c;
  }
  if (digits.empty()) return 0;
  const std::int64_t value = std::stoll(digits);
  return text.find('(') != std::string::npos || text.find('-') != std::string::npos ? -value
                                                                                    : value;
}

// The company of business/real_company.sql and the file kFile (under tests/), one per suite.
template <const char* kFile>
class AssetCompany : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    SetClockForTesting(Date::FromYmdHms(2025, 4, 1, 9, 30, 0));
    company_ = std::make_unique<trellin::testing::FixtureCompany>(
        std::initializer_list<std::string_view>{"business/real_company.sql", kFile});
    service_ = host::ReportService::Open(company_->Path().string());
  }
  static void TearDownTestSuite() {
    service_.reset();
    company_.reset();
    SetClockForTesting(std::nullopt);
  }
  static std::string Run(const std::string& key, const std::vector<std::string>& values) {
    return Dump(OpenWithValues(*service_, key, values));
  }
  static inline std::unique_ptr<trellin::testing::FixtureCompany> company_;
  static inline std::unique_ptr<host::ReportService> service_;
};

}  // namespace trellin::reports::testing
