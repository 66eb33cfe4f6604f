#pragma once
// What the asset report tests share: the dump of a run, parameter lists, printed amounts in cents,
// and a hand-made company of one SQL file on top of business/real_company.sql (years to 31 March
// 2025, the clock at 1 April 2025).

#include <gtest/gtest.h>

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
