// The bank reconciliation on the demo company (its golden runs are rows of golden_lists.tsv): its
// figures against the books read straight from the company file.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/runtime/Currency.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglBankReconciliation.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class BankReconciliation : public DemoReports {
 protected:
  // The report's pages joined; fails the test on the run's errors.
  static std::string Dump(const std::string& key, const std::vector<std::string>& assignments) {
    std::vector<std::string> pages = RunPages(Open(key, assignments));
    if (!pages.empty() && pages.back().rfind("errors:", 0) == 0) ADD_FAILURE() << pages.back();
    return Join(pages, "\n");
  }
};

bool HasField(const DumpRow& row, const std::string& name) { return row.count(name) > 0; }

// InUse always filters; Active only on request, and then the run says so.
TEST_F(BankReconciliation, InUseAlwaysFiltersAndActiveOnlyOnRequest) {
  for (bool active : {true, false}) {
    DesignerPtr designer =
        Open("BankReconciliation",
             {active ? "ShowActiveBankAccountsOnly=True" : "ShowActiveBankAccountsOnly=False"});
    (void)RunPages(designer);
    auto* report = dynamic_cast<arglBankReconciliation*>(designer.get());
    ASSERT_NE(report, nullptr);
    EXPECT_EQ(report->SQL(), active ? "SELECT BankId FROM Bank WHERE Active=True  AND InUse=True "
                                      " ORDER BY BankId"
                                    : "SELECT BankId FROM Bank WHERE InUse=True  ORDER BY BankId");
    EXPECT_EQ(report->Description().find("Active bank accounts only") != std::string::npos, active);
  }
}

// Each bank's cash balance is its account's balance in the books as at the date, a date by which
// every line of the page is dated (a transfer is an entry on each bank, so the saver's agrees too);
// the reconciled total is the sum of its latest statement page's lines, and the variance what the
// statement table holds apart from the books: the cheque account's unentered fee of 15.00, nothing
// on the saver. Full details print each entry's split lines under it, none without.
TEST_F(BankReconciliation, FiguresAgreeWithTheBooks) {
  struct Case {
    const char* bank;
    const char* dated_to;
    bool full_details;
    long variance;
  };
  const Case kCases[] = {
      {"CHQ", "2025-11-30", false, 15},
      {"CHQ", "2025-11-30", true, 15},
      {"SAVE", "2025-11-30", true, 0},
      {"SAVE", "2025-10-31", false, 0},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(std::string(c.bank) + " " + c.dated_to);
    const std::string bank = std::string("'") + c.bank + "'";
    const std::string dump = Dump(
        "BankReconciliation", {std::string("DatedTo=") + c.dated_to, std::string("Banks=") + c.bank,
                               c.full_details ? "ShowFullDetails=True" : "ShowFullDetails=False"});
    const std::vector<DumpRow> headers = RowsOf(dump, "GroupHeader");
    ASSERT_FALSE(headers.empty());
    EXPECT_EQ(DumpedAmount(headers.front(), "numghCurrent"),
              BooksSql().Money("SELECT sum(Value) FROM glTransaction WHERE AccountId = (SELECT "
                               "AssetAccountId FROM Bank WHERE BankId = " +
                               bank + ") AND Date < date('" + c.dated_to + "', '+1 day')"));
    const Currency page_lines = BooksSql().Money(
        "SELECT sum(t.Value) FROM glBankTransaction b JOIN glTransaction t ON "
        "t.glBankTransactionId = b.glBankTransactionId AND t.glBankTransactionSequence = 0 WHERE "
        "b.BankId = " +
        bank + " AND b.StmtPage = (SELECT max(StmtPage) FROM glBankStatement WHERE BankId = " +
        bank + ")");
    int reconciled_groups = 0;
    for (const DumpRow& footer : RowsOf(dump, "GroupFooter")) {
      if (!HasField(footer, "numVariance")) continue;
      ++reconciled_groups;
      EXPECT_EQ(DumpedAmount(footer, "numReconciled"), page_lines);
      EXPECT_EQ(DumpedAmount(footer, "numVariance"), Currency::FromWhole(c.variance));
    }
    EXPECT_EQ(reconciled_groups, 1);
    const std::vector<DumpRow> details = RowsOf(dump, "Detail");
    const auto split_lines = std::count_if(details.begin(), details.end(), [](const DumpRow& row) {
      return HasField(row, "txtAccountId");
    });
    if (c.full_details) {
      EXPECT_GT(split_lines, 0);
    } else {
      EXPECT_EQ(split_lines, 0);
    }
  }
}

// Dated before its first unreconciled line, the saver has none: no "Unreconciled" group, its cash
// balance is opening plus reconciled, a variance of 0 prints 0.00, and without an overdraft
// neither the limit nor the available funds print.
TEST_F(BankReconciliation, ASaverWithNothingUnreconciled) {
  const std::string dump = Dump("BankReconciliation", {"Banks=SAVE", "DatedTo=2025-11-01"});
  const std::vector<std::string> texts = PrintedTexts(dump);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "Unreconciled"), 0);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "Reconciled"), 1);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "Overdraft Limit:"), 0);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "Available Funds:"), 0);
  const std::vector<DumpRow> headers = RowsOf(dump, "GroupHeader");
  ASSERT_FALSE(headers.empty());
  Currency reconciled;
  for (const DumpRow& footer : RowsOf(dump, "GroupFooter")) {
    if (HasField(footer, "numReconciled")) reconciled = DumpedAmount(footer, "numReconciled");
    if (HasField(footer, "numVariance")) {
      EXPECT_EQ(footer.at("numVariance").second, "0.00");
    }
  }
  EXPECT_EQ(DumpedAmount(headers.front(), "numghCurrent"),
            DumpedAmount(headers.front(), "numghOpening") + reconciled);
}

}  // namespace
}  // namespace trellin::reports::testing
