// The Job object on hand-made jobs (job.sql over stock.sql): every summary line of each job
// against a sum made by hand from its lines, with each choice of charge line; and what a load
// refuses.

#include <gtest/gtest.h>

#include "platform/business/CompanyJob.h"
#include "platform/business/CompanyOptions.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::testing {
namespace {

class JobCompany : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<FixtureCompany>(
        std::initializer_list<std::string_view>{"business/stock.sql", "business/job.sql"});
  }
  static void TearDownTestSuite() { company_.reset(); }
  static std::unique_ptr<FixtureCompany> company_;
};

std::unique_ptr<FixtureCompany> JobCompany::company_;

// Money in hundredths (cents), GP in ten-thousandths of one.
struct LineCase {
  const char* job;
  bool actual_charges;
  const char* line;
  std::int64_t actual, total, budget;
};

Currency Cents(std::int64_t cents) { return Currency::FromRaw(cents * 100); }

TEST_F(JobCompany, EachLineIsItsHandSum) {
  const LineCase cases[] = {
      // Charges before discount: 330 + 200 - 100 posted; 180 + 400 open.
      {"JA", false, "Charges", 43000, 101000, 100000},
      {"JA", false, "Actual Charges", 40000, 96000, 100000},
      // Labour at 40.00 an hour: 3 - 1 posted, 2 open.
      {"JA", false, "Other Costs", 8000, 16000, 10000},
      {"JA", false, "Disbursements", 9500, 9500, 5000},
      // Stock sold at its posted cost; the open two WRK at the average of 95.00.
      {"JA", false, "Item Costs", 9500, 28500, 30000},
      {"JA", false, "Purchases", 13000, 18000, 20000},
      {"JA", false, "Total Costs", 40000, 72000, 65000},
      {"JA", false, "Profit to date", 3000, 29000, 35000},
      // 30 / 430, 290 / 1010, 350 / 1000, to four places.
      {"JA", false, "GP %", 698, 2871, 3500},
      // Reckoned from the charges after discount.
      {"JA", true, "Profit to date", 0, 24000, 35000},
      {"JA", true, "GP %", 0, 2500, 3500},
      // A cost and no charge: a total loss. No budget: nothing, GP 0.
      {"JB", false, "Profit to date", -10000, -10000, 0},
      {"JB", false, "GP %", -10000, -10000, 0},
      {"JC", false, "Total Costs", 0, 0, 0},
      {"jc ", false, "GP %", 0, 0, 0},
  };
  const business::CompanyTax tax(business::TaxValues{}, company_->Database());
  for (const LineCase& c : cases) {
    business::CompanyJob job(company_->Database(), tax, c.actual_charges);
    job.Load(c.job);
    const JobSummaryLine& line = job.Summary(c.line);
    // GP's fraction is held to four places: Currency's own ten-thousandths.
    auto want = [&c](std::int64_t v) {
      return std::string(c.line) == "GP %" ? Currency::FromRaw(v) : Cents(v);
    };
    SCOPED_TRACE(std::string(c.job) + " " + c.line);
    EXPECT_EQ(line.Actual, want(c.actual));
    EXPECT_EQ(line.Total, want(c.total));
    EXPECT_EQ(line.Budget, want(c.budget));
    EXPECT_EQ(line.Variance(), want(c.total - c.budget));
  }
}

TEST_F(JobCompany, ALoadRefusesAnUnknownJobAndALineRefusesAnUnknownName) {
  const business::CompanyTax tax(business::TaxValues{}, company_->Database());
  business::CompanyJob job(company_->Database(), tax, false);
  EXPECT_THROW((void)job.Summary("Charges"), std::logic_error);
  EXPECT_THROW(job.Load("NOSUCH"), std::invalid_argument);
  EXPECT_EQ(job.JobId(), "");
  job.Load("JA");
  EXPECT_EQ(job.JobId(), "'JA'");
  EXPECT_EQ(job.Summary("profit TO date").Actual, Cents(3000));
  EXPECT_THROW((void)job.Summary("Margin"), std::out_of_range);
}

}  // namespace
}  // namespace trellin::testing
