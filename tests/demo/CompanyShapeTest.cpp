// The demo company has something true for every report to show, is the same on every build,
// and refuses bad options cleanly.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <stdexcept>

#include "tests/demo/DemoFixture.h"
#include "tests/support/CaseFile.h"
#include "tests/support/TempFolder.h"

namespace trellin::demo::testing {
namespace {

// something_to_show.tsv: what each report needs the demo company to hold.
TEST(DemoCompany, SomethingForEveryReportToShow) {
  const auto rows = trellin::testing::ReadCases("demo/something_to_show.tsv", 2);
  ASSERT_GT(rows.size(), 30u);
  for (const char* country : {"NZ", "AU"}) {
    const Company& db = *DemoOf(country).company;
    for (const auto& row : rows) {
      EXPECT_GT(db.Number(row.fields[1]), 0)
          << country << ": " << row.Where() << " " << row.fields[0];
    }
  }
}

TEST(DemoCompany, EachCountryHasItsOwnYearAndTax) {
  struct Case {
    const char* country;
    const char* year_end;  // month and day of the balance date
    const char* rate;
    const char* present;
  } cases[] = {
      {"NZ", "03-31", "15", "2025-11-30"},
      {"AU", "06-30", "10", "2026-02-28"},
  };
  for (const Case& c : cases) {
    const Company& db = *DemoOf(c.country).company;
    EXPECT_EQ(
        db.Number(std::string("SELECT Count(*) FROM FinancialYear WHERE substr(DateEnd,6)<>'") +
                  c.year_end + "'"),
        0)
        << c.country;
    EXPECT_GE(db.Number("SELECT Count(*) FROM FinancialYear"), 6) << c.country;
    EXPECT_EQ(db.Text("SELECT Value FROM CompanySetting WHERE Section='Tax' AND Key='Rate'"),
              c.rate);
    EXPECT_EQ(db.Text("SELECT Value FROM CompanySetting WHERE Key='Country'"), c.country);
    EXPECT_EQ(db.Text("SELECT Value FROM CompanySetting WHERE Key='CurrentDateGL'"), c.present);
    EXPECT_EQ(db.Text("SELECT Max(substr(Date,1,10)) FROM Transactions"), c.present)
        << c.country << ": nothing is dated after the present";
    EXPECT_EQ(db.Text("PRAGMA journal_mode"), "wal") << c.country;
  }
}

TEST(DemoCompany, SameSeedSameBytesOtherSeedOtherCompany) {
  trellin::testing::TempFolder dir;
  DemoOptions options;
  options.path = dir.File("again.db");
  std::vector<double> progress;
  options.progress = [&](double fraction) { progress.push_back(fraction); };
  BuildDemoCompany(options);
  EXPECT_TRUE(trellin::testing::ReadFile(options.path) ==
              trellin::testing::ReadFile(DemoOf("NZ").path))
      << "seed 1 built twice differs";
  ASSERT_FALSE(progress.empty());
  EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
  EXPECT_EQ(progress.front(), 0.0);
  EXPECT_EQ(progress.back(), 1.0);

  options.seed = 2;
  options.progress = nullptr;
  options.path = dir.File("other.db");
  BuildDemoCompany(options);
  Company other(options.path);
  EXPECT_NE(other.Number("SELECT Sum(Value) FROM Transactions WHERE Type=30"),
            DemoOf("NZ").company->Number("SELECT Sum(Value) FROM Transactions WHERE Type=30"));
}

TEST(DemoCompany, BadOptionsAreRefusedAndLeaveNoFile) {
  trellin::testing::TempFolder dir;
  struct Case {
    int scale;
    const char* country;
    bool with_path;
    const char* message;
  } cases[] = {
      {0, "NZ", true, "the demo company's scale must be from 1 to 200, not 0"},
      {201, "NZ", true, "the demo company's scale must be from 1 to 200, not 201"},
      {1, "UK", true, "the demo company's country must be NZ or AU, not 'UK'"},
      {1, "nz", true, "the demo company's country must be NZ or AU, not 'nz'"},
      {1, "NZ", false, "the demo company needs a file name to write to"},
  };
  for (const Case& c : cases) {
    DemoOptions options;
    options.scale = c.scale;
    options.country = c.country;
    options.path = c.with_path ? dir.File("bad.db") : "";
    try {
      BuildDemoCompany(options);
      ADD_FAILURE() << "accepted: " << c.message;
    } catch (const std::invalid_argument& e) {
      EXPECT_STREQ(e.what(), c.message);
    }
    EXPECT_FALSE(std::filesystem::exists(dir.File("bad.db"))) << c.message;
  }
}

}  // namespace
}  // namespace trellin::demo::testing
