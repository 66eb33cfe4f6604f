// AccountReportsNew on the fixture company: which accounts are rows, and the month captions
// counted back from the pinned day.

#include <algorithm>

#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

TEST_F(LedgerBankCompany, AccountReportsNewTakesAccountsWithMoreThanTenLinesAndDatesItsMonths) {
  Database& database = Service().Database();
  // The bank account has exactly ten lines: one short of a row.
  ASSERT_EQ(
      database.ExecuteScalarLong("SELECT Count(*) FROM glTransaction WHERE AccountId='3010'", 0),
      10);
  const std::string dump = Run("AccountReportsNew", {});
  EXPECT_TRUE(TextsOf(dump, "txtAccountId").empty());
  // Twelve months back from 31 March 2025, the oldest first.
  const std::vector<std::string> texts = PrintedTexts(dump);
  auto at = [&texts](const std::string& caption) {
    return std::find(texts.begin(), texts.end(), caption) - texts.begin();
  };
  ASSERT_LT(at("Apr24"), static_cast<long>(texts.size()));
  ASSERT_LT(at("Mar25"), static_cast<long>(texts.size()));
  EXPECT_LT(at("Apr24"), at("Mar25"));
  EXPECT_EQ(at("Mar24"), static_cast<long>(texts.size()));
}

}  // namespace
}  // namespace trellin::ledger_testing
