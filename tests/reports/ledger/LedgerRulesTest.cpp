// The statements' small rules on their own: period column ends, total captions, the type
// headings and the credit types.

#include <gtest/gtest.h>

#include "reports/ledger/arglAccountReports.h"

namespace trellin {
namespace {

TEST(LedgerRules, PeriodEndsStepByWholeMonths) {
  struct Case {
    const char* frequency;
    Date to;
    std::size_t columns;
    Date first;   // ends[1]
    Date before;  // ends[0]
  };
  const Date year_end = Date::FromYmd(2025, 3, 31);
  const Case cases[] = {
      // A 31st steps back through February's true last day.
      {"Monthly", Date::FromYmd(2025, 5, 31), 12, Date::FromYmd(2024, 6, 30),
       Date::FromYmd(2024, 5, 31)},
      {"Year to Date", Date::FromYmd(2024, 6, 30), 12, Date::FromYmd(2024, 4, 30),
       Date::FromYmd(2024, 3, 31)},
      {"Quarterly", Date::FromYmd(2025, 3, 31), 8, Date::FromYmd(2023, 6, 30),
       Date::FromYmd(2023, 3, 31)},
      {"Six Monthly", Date::FromYmd(2025, 3, 31), 8, Date::FromYmd(2021, 9, 30),
       Date::FromYmd(2021, 3, 31)},
      {"Yearly", Date::FromYmd(2025, 3, 31), 8, Date::FromYmd(2018, 3, 31),
       Date::FromYmd(2017, 3, 31)},
  };
  for (const Case& c : cases) {
    const std::vector<Date> ends = PeriodEnds(c.frequency, c.to, year_end);
    ASSERT_EQ(ends.size(), c.columns + 1) << c.frequency;
    EXPECT_EQ(ends[1].ToIso(), c.first.ToIso()) << c.frequency;
    EXPECT_EQ(ends[0].ToIso(), c.before.ToIso()) << c.frequency;
  }
  const std::vector<Date> monthly = PeriodEnds("Monthly", Date::FromYmd(2024, 3, 31), year_end);
  EXPECT_EQ(monthly[11].ToIso(), "2024-02-29");
  // "Year to Date" always ends at the fiscal year's end, whatever the statement's date.
  EXPECT_EQ(PeriodEnds("Year to Date", Date::FromYmd(2024, 6, 30), year_end)[12].ToIso(),
            "2025-03-31");
  EXPECT_THROW((void)PeriodEnds("Weekly", year_end, year_end), std::invalid_argument);
}

TEST(LedgerRules, TotalCaptionFollowsTheCapitals) {
  const std::pair<const char*, const char*> cases[] = {
      {"CURRENT ASSETS", "TOTAL CURRENT ASSETS"},
      {"Gross", "Total Gross"},
      {"Current Assets", "Total Current Assets"},
      {"P&L 2024", "TOTAL P&L 2024"},
      {"2024", "Total 2024"},
  };
  for (const auto& [description, caption] : cases) {
    EXPECT_EQ(TotalCaption(description), caption) << description;
  }
}

TEST(LedgerRules, TypesHeadingsAndCreditTypes) {
  EXPECT_EQ(TypeHeading(AccountTypeOf(1)), "Sales Accounts");
  EXPECT_EQ(TypeHeading(AccountTypeOf(11)), "Capital Accounts");
  EXPECT_EQ(TypeHeading(AccountType::End), "");
  std::string credits, closing;
  for (int type = 0; type <= 12; ++type) {
    if (IsCreditType(AccountTypeOf(type))) credits += std::to_string(type) + " ";
    if (!ClosingName(AccountTypeOf(type)).empty()) closing += std::to_string(type) + " ";
  }
  EXPECT_EQ(credits, "1 4 6 9 10 11 ");
  EXPECT_EQ(closing, "1 2 3 4 5 ");
  EXPECT_EQ(PostCodeOf(" g "), PostCode::Group);
  EXPECT_EQ(PostCodeOf("  "), PostCode::Account);
  EXPECT_EQ(LedgerReportFromKey("trialbalance"), LedgerReport::TrialBalance);
  EXPECT_THROW((void)LedgerReportFromKey("Chart"), std::invalid_argument);
}

}  // namespace
}  // namespace trellin
