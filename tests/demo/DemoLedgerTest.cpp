// The ledger writer refuses what the application never posts, and closes a year as the
// statements expect.

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/data/CompanyFile.h"
#include "platform/demo/DemoLedger.h"
#include "tests/demo/DemoFixture.h"
#include "tests/support/TempFolder.h"

namespace trellin::demo {
namespace {

class LedgerWriter : public ::testing::Test {
 protected:
  LedgerWriter()
      : file_(data::CreateCompanyFile(dir_.File("ledger.db"))),
        ledger_(file_->Handle(), calendar_, random_,
                {{"1010", 1}, {"1210", 3}, {"3010", 7}, {"4520", 11}}) {}

  trellin::testing::TempFolder dir_;
  std::unique_ptr<data::CompanyFileWriter> file_;
  DemoCalendar calendar_{"NZ"};
  DemoRandom random_{7};
  DemoLedger ledger_;
};

TEST_F(LedgerWriter, RefusesUnbalancedJournalsAndAccountsThatDoNotPost) {
  const Date day = Date::FromYmd(2021, 5, 3);
  struct Case {
    std::vector<GlLine> lines;
    const char* message;
  } cases[] = {
      {{{"3010", 10000}, {"1010", -9900}},
       "demo company: journal 'J1' of 2021-05-03 is out of balance by 100"},
      {{{"3010", 10000}, {"1000", -10000}},
       "demo company: posting to '1000', which is not a posting account"},
  };
  for (const Case& c : cases) {
    try {
      ledger_.Post({day, "GL", "J1", "", 0, 0, "", "", c.lines});
      ADD_FAILURE() << "posted: " << c.message;
    } catch (const std::logic_error& e) {
      EXPECT_STREQ(e.what(), c.message);
    }
  }
}

TEST_F(LedgerWriter, ClosingMovesTheYearsProfitToRetainedEarnings) {
  ledger_.Post({Date::FromYmd(2020, 6, 1),
                "GL",
                "S1",
                "",
                0,
                0,
                "",
                "",
                {{"3010", 500000}, {"1010", -500000}}});
  ledger_.Post({Date::FromYmd(2021, 2, 1),
                "GL",
                "E1",
                "",
                0,
                0,
                "",
                "",
                {{"1210", 120000}, {"3010", -120000}}});
  // Next year's sale stays out of the first year's closing.
  ledger_.Post({Date::FromYmd(2021, 4, 1),
                "GL",
                "S2",
                "",
                0,
                0,
                "",
                "",
                {{"3010", 70000}, {"1010", -70000}}});
  ledger_.CloseYear(0, "4520");
  EXPECT_EQ(ledger_.Balance("4520"), -380000);
  EXPECT_EQ(ledger_.Balance("1010"), -70000);
  EXPECT_EQ(ledger_.Balance("1210"), 0);
  EXPECT_EQ(ledger_.MonthMovement("1010", 0), 0) << "June 2020 is month 2, not 0";
  EXPECT_EQ(ledger_.MonthMovement("1010", 2), -500000);
  testing::Company db(dir_.File("ledger.db.tmp"));
  EXPECT_EQ(db.Number("SELECT Count(*) FROM glTransaction WHERE Type=1 AND "
                      "Date='2021-03-31 23:59:59' AND glSourceId='GL'"),
            3);
}

TEST_F(LedgerWriter, BankEntriesPutTheBankFirstAndReconcileWhatIsOld) {
  const Date present = calendar_.Present();
  struct Case {
    Date date;
    bool reconciled;
  } cases[] = {{present.AddDays(-200), true}, {present.AddDays(-3), false}};
  for (const Case& c : cases) {
    const std::int64_t id = ledger_.PostBank(
        {"CHQ", c.date, "", "DEP", "Deposit"},
        {c.date, "CB", "DEP", "Deposit", 0, 0, "", "", {{"3010", 25000}, {"1010", -25000}}});
    testing::Company db(dir_.File("ledger.db.tmp"));
    const std::string where = " WHERE glBankTransactionId=" + std::to_string(id);
    EXPECT_EQ(db.Number("SELECT StmtPage IS NOT NULL FROM glBankTransaction" + where), c.reconciled)
        << c.date.ToIso();
    EXPECT_EQ(
        db.Text("SELECT AccountId FROM glTransaction" + where + " AND glBankTransactionSequence=0"),
        "3010");
  }
}

}  // namespace
}  // namespace trellin::demo
