// The working lists of the sub-ledgers on the demo company, what each prints checked against the
// books (their golden runs are rows of golden_runs.tsv).

#include <gtest/gtest.h>

#include "platform/demo/DemoCompany.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrOpeningBalances.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class WorkingLists : public DemoReports {};

// The balances brought forward add up to the side's balance by process date, and stand below the
// control account by the hand journal only from the day after it.
TEST_F(WorkingLists, OpeningBalancesAgreeWithTheBooksAndMissTheHandJournalOnlyAfterIt) {
  BooksSql books;
  struct Case {
    const char* ledger;
    const char* journal;      // the hand journal on the side's control account
    int days_after;           // DateAsAt, from the journal's date; below -1000 the default (BOY)
    std::int64_t difference;  // ledger less control account, stored money
  };
  const Case cases[] = {
      // Brought forward into the day after the journal: the journal is in the account only.
      {"Receivables", "JNL-ADJ1", 1, -demo::kReceivablesControlDifference},
      // Into the journal's own day: nothing of that day is brought forward yet.
      {"Receivables", "JNL-ADJ1", 0, 0},
      {"Receivables", "JNL-ADJ1", -2000, 0},
      // The payables journal is a credit: the suppliers' balance falls short of it as well.
      {"Payables", "JNL-ADJ2", 1, demo::kPayablesControlDifference},
      {"Payables", "JNL-ADJ2", -2000, 0},
  };
  for (const Case& c : cases) {
    const std::string journal_date = books.Texts(
        std::string("SELECT Min(Date) FROM glTransaction WHERE Reference='") + c.journal + "'")[0];
    ASSERT_FALSE(journal_date.empty()) << c.journal;
    std::vector<std::string> values = {std::string("Ledger=") + c.ledger};
    std::string as_at = books.Texts("SELECT date('" + journal_date + "','" +
                                    std::to_string(c.days_after) + " days')")[0];
    if (c.days_after < -1000) {
      as_at.clear();
    } else {
      values.push_back("DateAsAt=" + as_at);
    }
    SCOPED_TRACE(std::string(c.ledger) + " " + (as_at.empty() ? "BOY" : as_at));
    DesignerPtr designer = Open("OpeningBalances", values);
    const std::vector<std::string> pages = RunPages(designer);
    ASSERT_FALSE(pages.empty());
    ASSERT_FALSE(pages.back().starts_with("errors:")) << pages.back();
    const auto& report = dynamic_cast<const ardscrOpeningBalances&>(*designer);
    if (as_at.empty()) as_at = report.OpenedOn().ToIso();
    const bool receivables = std::string(c.ledger) == "Receivables";
    const std::string range = receivables ? "30 AND 39" : "20 AND 29";
    const std::string sign = receivables ? "-" : "";
    const Currency books_balance =
        books.Money("SELECT Sum(" + sign + "ValueRemaining) FROM Transactions WHERE Type BETWEEN " +
                    range) -
        books.Money("SELECT Sum(" + sign + "Value) FROM Transactions WHERE Type BETWEEN " + range +
                    " AND DateProcess>='" + as_at + "'");
    EXPECT_EQ(report.LedgerTotal(), books_balance);
    EXPECT_EQ(report.LedgerTotal() - report.ControlAccount(), Currency::FromRaw(c.difference));
  }
}

// Back-dated, the penalty list charges what each item still owed at the date, items paid in full
// since among them: its outstanding total is the books' reckoning of the same items.
TEST_F(WorkingLists, PenaltyInterestsOwedAtAPastDateTakeInItemsPaidSince) {
  BooksSql books;
  // Given back to an item: what allocations against documents processed after the date took.
  const std::string given_back =
      "IfNull((SELECT Sum(-a.ValueAllocated) FROM TransactionAllocation a JOIN Transactions o ON "
      "o.TransactionId=a.TransactionId1 WHERE a.TransactionId2=t.TransactionId AND "
      "o.DateProcess>='2025-11-01'),0)+IfNull((SELECT Sum(a.ValueAllocated) FROM "
      "TransactionAllocation a JOIN Transactions o ON o.TransactionId=a.TransactionId2 WHERE "
      "a.TransactionId1=t.TransactionId AND o.DateProcess>='2025-11-01'),0)";
  const std::string items =
      "SELECT -(t.ValueRemaining+" + given_back +
      ") AS Owed,t.ValueRemaining AS Today FROM Transactions t JOIN OtherParty p ON "
      "p.OtherPartyId=t.OtherPartyId JOIN PenaltyInterest i ON "
      "i.PenaltyInterestId=p.PenaltyInterestId WHERE p.IsCustomer<>0 AND i.Rate>0 AND t.Type "
      "BETWEEN 30 AND 39 AND t.Value<0 AND t.DateProcess<'2025-11-01' AND "
      "t.DatePayment<date('2025-10-31','-'||i.GraceDays||' days')";
  ASSERT_GT(
      std::stol(books.Texts("SELECT Count(*) FROM (" + items + ") WHERE Owed>0 AND Today=0")[0]), 0)
      << "no item owed at the date has been paid in full since";
  const std::string dump = Join(RunPages(Open("PenaltyInterests", {"DateAsAt=2025-10-31"})), "\n");
  // Summed from the customers' footers: the report footer's row also holds the run's
  // description, whose lines end the dumped row early.
  Currency listed;
  for (const DumpRow& row : RowsOf(dump, "GroupFooter")) {
    listed += DumpedAmount(row, "GroupFooter1SummaryOutstanding");
  }
  EXPECT_EQ(listed, books.Money("SELECT Sum(Owed) FROM (" + items + ") WHERE Owed>0"));
}

// Each type's card counts and sums its documents dated in the dates and in the same dates a year
// before, as the books hold them, shown on the side's sign.
TEST_F(WorkingLists, TransactionTypeCardsCountAndSumTheirDocumentsInBothYears) {
  BooksSql books;
  const std::string dump =
      Join(RunPages(Open("TransactionTypeDetails", {"TransactionTypes=INV,REC,SINV,PAY",
                                                    "DatedFrom=2025-04-01", "DatedTo=2025-11-30"})),
           "\n");
  const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
  ASSERT_EQ(rows.size(), 4u);
  struct Dates {
    const char* value;  // the dumped column
    const char* count;
    const char* from;
    const char* to;
  };
  const Dates years[] = {{"txtValue", "txtPosted", "2025-04-01", "2025-12-01"},
                         {"txtValueYearBefore", "txtYearBefore", "2024-04-01", "2024-12-01"}};
  for (const DumpRow& row : rows) {
    const std::string code = row.at("txtCode").second;
    SCOPED_TRACE(code);
    // Invoices and receipts are the customers' and stored negative.
    const std::string sign = code == "INV" || code == "REC" ? "-" : "";
    for (const Dates& y : years) {
      const std::string where = " FROM Transactions WHERE TransactionTypeId='" + code +
                                "' AND Date>='" + y.from + "' AND Date<'" + y.to + "'";
      EXPECT_EQ(DumpedAmount(row, y.value), books.Money("SELECT Sum(" + sign + "Value)" + where));
      EXPECT_EQ(row.at(y.count).first, books.Texts("SELECT Count(*)" + where)[0]);
      EXPECT_NE(row.at(y.count).first, "0");
    }
  }
}

}  // namespace
}  // namespace trellin::reports::testing
