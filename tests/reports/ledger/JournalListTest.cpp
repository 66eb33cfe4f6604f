// The journal list on the statements' small company, whose books hold one ledger line with no
// other side: that entry alone is flagged, with its difference.

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

class JournalList : public LedgerFixtureCompany {};

TEST_F(JournalList, OnlyTheEntryWithNoOtherSideIsFlagged) {
  // The fixture's lines have no source: Sources is cleared to see them all.
  const std::string dump = Run("JournalList", {"Sources=", "DatedFrom=2024-01-01",
                                               "DatedTo=2025-03-31", "IncludeYearEnd=True"});
  // The fixture's file is named after the test's process; the golden names it plainly.
  ExpectLedgerGolden("JournalList-fixture",
                     std::regex_replace(dump, std::regex("fixture-[0-9]+\\.db"), "fixture.db"));
  const std::vector<std::string> texts = PrintedTexts(dump);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "Out of balance"), 1) << dump;
  const auto entry = std::find(texts.begin(), texts.end(), "15/01/2025");
  const auto flag = std::find(texts.begin(), texts.end(), "Out of balance");
  ASSERT_NE(entry, texts.end());
  ASSERT_NE(flag, texts.end());
  EXPECT_LT(entry, flag);
  EXPECT_EQ(*(flag + 1), "50.00");
  // With an Accounts filter an entry shows only some of its lines: nothing is flagged.
  const std::vector<std::string> part =
      PrintedTexts(Run("JournalList", {"Sources=", "DatedFrom=2024-01-01", "Accounts=3010"}));
  EXPECT_EQ(std::count(part.begin(), part.end(), "Out of balance"), 0);
}

}  // namespace
}  // namespace trellin::ledger_testing
