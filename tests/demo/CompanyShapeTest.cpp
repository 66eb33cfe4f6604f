// The demo company has something true for every report to show, is the same on every build,
// and refuses bad options cleanly.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "tests/demo/DemoFixture.h"

namespace trellin::demo::testing {
namespace {

std::string Bytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

TEST(DemoCompany, SomethingForEveryReportToShow) {
  // Overdue ages count from the present, the last day of the latest period.
  const std::string present = "(SELECT Value FROM CompanySetting WHERE Key='CurrentDateAR')";
  const std::string overdue =
      "SELECT Count(*) FROM Transactions WHERE Type=30 AND "
      "ValueRemaining<0 AND julianday(" +
      present + ")-julianday(DatePayment) ";
  struct Case {
    std::string what;
    std::string sql;
  } cases[] = {
      {"not yet due", overdue + "< 0"},
      {"1 to 30 days overdue", overdue + "BETWEEN 1 AND 30"},
      {"31 to 60 days overdue", overdue + "BETWEEN 31 AND 60"},
      {"61 to 90 days overdue", overdue + "BETWEEN 61 AND 90"},
      {"over 90 days overdue", overdue + "> 90"},
      {"part-paid invoices",
       "SELECT Count(*) FROM Transactions WHERE Type=30 AND ValueRemaining<0 "
       "AND ValueRemaining<>Value"},
      {"held amounts", "SELECT Count(*) FROM Transactions WHERE Held<>0"},
      {"open supplier bills",
       "SELECT Count(*) FROM Transactions WHERE Type=20 AND ValueRemaining>0"},
      {"credits, discounts, journals",
       "SELECT Count(DISTINCT Type)=5 FROM Transactions WHERE Type IN (21,23,31,32,33)"},
      {"bills dated before they were entered",
       "SELECT Count(*) FROM Transactions WHERE Type=20 "
       "AND Date<DateProcess"},
      {"invoices dated at a month's end, processed into the next month",
       "SELECT Count(*) FROM Transactions WHERE Type=30 AND Date=date(DateProcess,'start of "
       "month','-1 day')"},
      {"receipts dated at a month's end, processed into the next month",
       "SELECT Count(*) FROM Transactions WHERE Type=35 AND Date=date(DateProcess,'start of "
       "month','-1 day')"},
      {"receipts on account",
       "SELECT Count(*) FROM Transactions WHERE Type=35 AND "
       "ValueRemaining>0"},
      {"customers who supply", "SELECT Count(*) FROM OtherParty WHERE IsCustomer AND IsSupplier"},
      {"every chart row kind", "SELECT Count(DISTINCT IfNull(Post,'-'))=6 FROM Account"},
      {"levels 1 to 5",
       "SELECT Min(ALevel)=1 AND Max(ALevel)=5 AND Count(DISTINCT ALevel)=5 "
       "FROM Account"},
      {"all eleven classes", "SELECT Count(DISTINCT Type)=11 FROM Account"},
      {"three budget versions",
       "SELECT Count(*) FROM glBudget WHERE Budget<>0 AND Revised<>Budget "
       "AND Alternate<>Budget"},
      {"budgets by branch", "SELECT Count(*) FROM glBudget WHERE BranchId IS NOT NULL"},
      {"reconciled bank lines",
       "SELECT Count(*) FROM glBankTransaction WHERE StmtPage IS NOT NULL"},
      {"unreconciled bank lines", "SELECT Count(*) FROM glBankTransaction WHERE StmtPage IS NULL"},
      {"filed tax lines", "SELECT Count(*) FROM glTransaction WHERE TaxPeriodId IS NOT NULL"},
      {"unfiled tax lines",
       "SELECT Count(*) FROM glTransaction WHERE TaxPeriodId IS NULL AND "
       "TaxCategory IS NOT NULL"},
      {"branches and departments",
       "SELECT Count(*)>=6 FROM (SELECT DISTINCT BranchId, DeptId FROM "
       "glTransaction)"},
      {"every kind of stock", "SELECT Count(DISTINCT Inventory)=4 FROM Item"},
      {"serial and batch numbers",
       "SELECT Count(*) FROM TransactionLine WHERE SerialNumber IS NOT NULL"},
      {"stocktake variances",
       "SELECT Count(*) FROM ItemStocktake s WHERE s.SerialNumber IS NULL AND "
       "s.Quantity<>(SELECT Sum(Quantity) FROM TransactionLine l WHERE "
       "l.ItemId=s.ItemId AND l.LocationId=s.LocationId)"},
      {"stocktake adjustments", "SELECT Count(*) FROM TransactionLine WHERE Type=11"},
      {"partly received orders",
       "SELECT Count(*) FROM PurchaseOrderLine WHERE Quantity<0 AND "
       "TransactionLineId IN (SELECT TransactionLineId FROM TransactionLine)"},
      {"open batches of each kind",
       "SELECT Count(DISTINCT Type)>=5 FROM acBatchHeader WHERE "
       "acBatchHeaderId='Open'"},
      {"asset movements", "SELECT Count(DISTINCT Type)>=5 FROM AssetTransaction"},
      {"asset types with parents",
       "SELECT Count(*) FROM AssetType WHERE ParentAssetTypeId IS NOT NULL"},
      {"job invoices and costs",
       "SELECT Count(DISTINCT Type<30)=2 FROM Transactions WHERE JobId IS "
       "NOT NULL"},
      {"open jobs", "SELECT Count(*) FROM Job WHERE Status='Open'"},
      {"logs of all four owners",
       "SELECT (SELECT Count(*)>0 FROM OtherPartyLog)+(SELECT Count(*)>0 "
       "FROM ItemLog)+(SELECT Count(*)>0 FROM JobLog)+(SELECT "
       "Count(*)>0 FROM AssetLog)=4"},
      {"post codes", "SELECT Count(*) FROM PostCodes"},
  };
  for (const char* country : {"NZ", "AU"}) {
    const Company& db = *DemoOf(country).company;
    for (const Case& c : cases) EXPECT_GT(db.Number(c.sql), 0) << country << ": " << c.what;
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
  EXPECT_TRUE(Bytes(options.path) == Bytes(DemoOf("NZ").path)) << "seed 1 built twice differs";
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
