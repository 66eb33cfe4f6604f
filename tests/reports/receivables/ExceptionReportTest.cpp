// The exception report on the small company of exceptions.sql, where each party but two is made
// to break one check: every check ticked alone finds its own parties and no other, the findings'
// details, balances as at a date, and the counts under the groups (golden runs).

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

constexpr const char* kChecks[] = {"Codes",           "CreditLimit", "Stopped",   "CreditBalance",
                                   "InactiveBalance", "NoAddress",   "NoContact", "Status"};

class ExceptionReport : public ExceptionCompany {
 protected:
  // "CODE Exception" of each finding printed.
  static std::set<std::string> Findings(const std::vector<std::string>& assignments) {
    const std::string dump = Join(DumpPages(Open("OtherPartyExceptions", assignments)), "\n");
    EXPECT_EQ(dump.find("errors:"), std::string::npos) << dump;
    std::set<std::string> found;
    for (const DumpRow& row : RowsOf(dump, "Detail")) {
      found.insert(row.at("txtCode").second + " " + row.at("txtException").second);
    }
    return found;
  }
  // The assignments that tick `check` alone.
  static std::vector<std::string> Only(const std::string& check, const char* as_at) {
    std::vector<std::string> values = {std::string("DateAsAt=") + as_at};
    for (const char* c : kChecks) {
      values.push_back(std::string("Check") + c + "=" + (c == check ? "True" : "False"));
    }
    return values;
  }
};

TEST_F(ExceptionReport, MatchesItsGoldenDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/exceptions_golden_runs.tsv");
}

TEST_F(ExceptionReport, EachCheckFindsOnlyThePartiesMadeToBreakIt) {
  const struct {
    const char* check;
    const char* as_at;
    std::set<std::string> found;
  } cases[] = {
      // A blank code is no fault; a location and an employee are checked on either side.
      {"Codes", "2025-03-31", {"CODECAT Code not on file", "CODEEMP Code not on file"}},
      {"CreditLimit", "2025-03-31", {"OVERLIM Over credit limit"}},
      // Before its invoice was processed the party owed nothing.
      {"CreditLimit", "2025-03-19", {}},
      {"Stopped", "2025-03-31", {"STOPPED Credit stopped"}},
      {"CreditBalance", "2025-03-31", {"INCREDIT Credit balance", "SDEBIT Debit balance"}},
      {"InactiveBalance", "2025-03-31", {"INACTIVE Inactive with a balance"}},
      {"InactiveBalance", "2025-03-01", {}},
      {"NoAddress", "2025-03-31", {"NOADDR No postal address"}},
      // A blank detail is no way to reach a party; a contact person is.
      {"NoContact", "2025-03-31", {"NOCONT No contact"}},
      {"Status", "2025-03-31", {"ADVERSE Credit status", "BADSTAT Credit status"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.check) + " " + c.as_at);
    EXPECT_EQ(Findings(Only(c.check, c.as_at)), c.found);
  }
  // All ticked: every finding above at the month end, and none on the parties in order.
  std::set<std::string> all;
  for (const auto& c : cases) {
    if (std::string(c.as_at) == "2025-03-31") all.insert(c.found.begin(), c.found.end());
  }
  EXPECT_EQ(Findings({"DateAsAt=2025-03-31"}), all);
}

TEST_F(ExceptionReport, TheDetailSaysWhatWasFoundAndTheBalanceIsTheSidesAtTheDate) {
  const std::string dump =
      Join(DumpPages(Open("OtherPartyExceptions", {"DateAsAt=2025-03-31"})), "\n");
  std::map<std::string, std::pair<std::string, std::string>> rows;  // detail, balance
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    rows[row.at("txtCode").second + " " + row.at("txtException").second] = {
        row.at("txtDetail").second, row.at("txtBalance").second};
  }
  const struct {
    const char* finding;
    const char* detail;
    const char* balance;
  } cases[] = {
      {"CODECAT Code not on file", "Customer category RETIRED not on file", "$0.00"},
      {"CODEEMP Code not on file", "Employee GONE not on file", "$0.00"},
      {"OVERLIM Over credit limit", "Balance over the credit limit of 1,000.00", "$1,500.00"},
      // What a customer owes shows positive, what the company owes a supplier too (in the
      // small company's currency format).
      {"INCREDIT Credit balance", "The customer is in credit", "($250.00)"},
      {"SDEBIT Debit balance", "The supplier owes the company", "($50.00)"},
      {"INACTIVE Inactive with a balance", "Inactive customer with a balance", "$80.00"},
      {"ADVERSE Credit status", "Credit status Adverse", "$0.00"},
      {"BADSTAT Credit status", "Credit status Bad", "$0.00"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.finding);
    ASSERT_TRUE(rows.contains(c.finding));
    EXPECT_EQ(rows[c.finding].first, c.detail);
    EXPECT_EQ(rows[c.finding].second, c.balance);
  }
}

class DemoExceptions : public DemoReports {};

// The demo company's one dangling party code is the customer whose category RETIRED was deleted:
// the codes' check finds that and nothing else.
TEST_F(DemoExceptions, TheCodesCheckFindsTheRetiredCategoryAlone) {
  BooksSql books;
  const std::vector<std::string> retired =
      books.Texts("SELECT OtherPartyId FROM OtherParty WHERE CustomerCategoryId='RETIRED'");
  ASSERT_EQ(retired.size(), 1u);
  std::vector<std::string> values = {"DateAsAt=2025-11-30"};
  for (const char* c : kChecks) {
    values.push_back(std::string("Check") + c + "=" +
                     (std::string(c) == "Codes" ? "True" : "False"));
  }
  const std::string dump = Join(RunPages(Open("OtherPartyExceptions", values)), "\n");
  const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
  ASSERT_EQ(rows.size(), 1u) << dump.substr(0, 3000);
  EXPECT_EQ(rows[0].at("txtCode").second, retired[0]);
  EXPECT_EQ(rows[0].at("txtDetail").second, "Customer category RETIRED not on file");
}

}  // namespace
}  // namespace trellin::reports::testing
