// Checks of the ledger and bank lists against the company's own figures, read straight from the
// company file: what a list adds up to must be what the books hold.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class LedgerListsChecks : public DemoReports {};

// The money of the one field `name` in the dump ("name=1234.5@"); 0 when there is none.
Currency FooterMoney(const std::string& dump, const std::string& name) {
  const std::size_t at = dump.find(name + "=");
  if (at == std::string::npos) return Currency();
  const std::size_t start = at + name.size() + 1;
  const std::size_t end = dump.find('@', start);
  if (end == std::string::npos) return Currency();
  return Currency::Parse(dump.substr(start, end - start)).value_or(Currency());
}

std::string TextOf(const DumpRow& row, const std::string& name) {
  auto found = row.find(name);
  return found == row.end() ? std::string() : found->second.second;
}

// A year of ledger lines, summed per account by the list's own group footers, is each account's
// movement in the books, and the year's debits equal its credits.
TEST_F(LedgerListsChecks, AYearOfLedgerLinesIsEachAccountsMovementAndBalances) {
  const std::string dump =
      Join(RunPages(Open("GLTransactionList", {"DatedFrom=2024-04-01", "DatedTo=2025-03-31",
                                               "Groupings=Account", "Summary=True"})),
           "\n");
  std::map<std::string, Currency> listed;
  for (const DumpRow& row : RowsOf(dump, "GroupFooter")) {
    // "Total 1010  Sales - Shop"
    const std::vector<std::string> words = Split(TextOf(row, "gfLabel1"), " ");
    ASSERT_GE(words.size(), 2u);
    listed[words[1]] = DumpedAmount(row, "GroupFooter1SummaryDebit") -
                       DumpedAmount(row, "GroupFooter1SummaryCredit");
  }
  std::map<std::string, Currency> books;
  for (const auto& row :
       BooksSql().Rows("SELECT AccountId, Sum(Value) FROM glTransaction WHERE Date >= "
                       "'2024-04-01' AND Date < '2025-04-01' AND Type Is Null GROUP BY "
                       "AccountId")) {
    books[row[0]] = Currency::FromRaw(std::stoll(row[1]));
  }
  ASSERT_GT(books.size(), 20u);
  EXPECT_EQ(listed, books);
  // The report footer's row holds the description's line breaks, so its totals are found by
  // name in the whole dump.
  const Currency debits = FooterMoney(dump, "ReportFooterSummaryDebit");
  EXPECT_GT(debits, Currency());
  EXPECT_EQ(debits, FooterMoney(dump, "ReportFooterSummaryCredit"));
}

// Every cheque not yet presented, and no other, over the whole life of the books; without the
// option a year's presented ones come too.
TEST_F(LedgerListsChecks, UnpresentedOnlyListsExactlyTheUnpresentedCheques) {
  const std::string withdrawals =
      "SELECT b.Reference, b.Presented Is Null, b.Date >= '2025-01-01' FROM glBankTransaction b "
      "JOIN glTransaction t ON "
      "t.glBankTransactionId = b.glBankTransactionId AND t.glBankTransactionSequence = 0 WHERE "
      "t.Value < 0";
  std::multiset<std::string> unpresented, all;
  for (const auto& row : BooksSql().Rows(withdrawals)) {
    if (row[2] == "1") all.insert(row[0]);
    if (row[1] == "1") unpresented.insert(row[0]);
  }
  ASSERT_FALSE(unpresented.empty());
  ASSERT_LT(unpresented.size(), all.size());
  for (bool only : {true, false}) {
    const std::string dump = Join(
        RunPages(Open("ChequeList",
                      {only ? "DatedFrom=2000-01-01" : "DatedFrom=2025-01-01", "DatedTo=2030-12-31",
                       only ? "UnpresentedOnly=True" : "UnpresentedOnly=False"})),
        "\n");
    std::multiset<std::string> listed;
    for (const std::string& text : TextsOf(dump, "txtChequeNo")) listed.insert(text);
    if (only) {
      EXPECT_EQ(listed, unpresented);
      for (const std::string& status : TextsOf(dump, "txtStatus")) EXPECT_EQ(status, "Unpresented");
    } else {
      EXPECT_EQ(listed, all);
    }
  }
}

// Each bank's closing balance, run up line by line from its opening, is its account's balance in
// the books on the last date; a period starting mid-month checks the opening too.
TEST_F(LedgerListsChecks, EachBanksClosingIsItsAccountsBalanceOnTheLastDate) {
  for (const char* to : {"2025-11-30", "2025-06-15"}) {
    const std::string dump = Join(
        RunPages(Open("BankLedger", {"DatedFrom=2025-05-20", std::string("DatedTo=") + to})), "\n");
    const std::vector<std::string> banks = TextsOf(dump, "txtBankId");
    const std::vector<std::string> closings = TextsOf(dump, "txtClosing");
    ASSERT_EQ(banks.size(), 2u) << to;  // CHQ and SAVE; the retired OLD shares CHQ's account
    ASSERT_EQ(closings.size(), banks.size()) << to;
    for (std::size_t i = 0; i < banks.size(); ++i) {
      const auto books = BooksSql().Rows(
          "SELECT Coalesce(Sum(Value), 0) FROM glTransaction WHERE AccountId = (SELECT "
          "AssetAccountId FROM Bank WHERE BankId = '" +
          banks[i] + "') AND Date < date('" + to + "', '+1 day')");
      ASSERT_EQ(books.size(), 1u);
      const Currency balance = Currency::FromRaw(std::stoll(books[0][0]));
      EXPECT_EQ(closings[i], Format(Variant(balance), "#,##0.00;(#,##0.00)"))
          << banks[i] << " " << to;
    }
  }
}

// Each week's opening, lowest, highest and closing balance of the cheque account is the books'
// daily movement run up here from the balance before the first date, weeks Monday to Sunday with
// the first cut at the dates, the lowest and highest among the opening and the day-end balances;
// the bank's footer holds the extremes of all the weeks.
TEST_F(LedgerListsChecks, BankHighLowAgreesWithARunningSumOfTheBooks) {
  const std::string dump =
      Join(RunPages(Open("BankHighLow", {"Banks=CHQ", "DatedFrom=2025-06-04", "DatedTo=2025-08-31",
                                         "Frequency=Weekly"})),
           "\n");
  Currency balance;
  std::map<std::string, Currency> moved;  // by day
  for (const auto& row : BooksSql().Rows(
           "SELECT substr(Date, 1, 10), Sum(Value) FROM glTransaction WHERE AccountId = "
           "'3010' AND Date < '2025-09-01' GROUP BY 1")) {
    const Currency value = Currency::FromRaw(std::stoll(row[1]));
    if (row[0] < "2025-06-04") {
      balance += value;
    } else {
      moved[row[0]] += value;
    }
  }
  struct Week {
    Date from, to, lowest_on, highest_on;
    Currency opening, lowest, highest, closing;
  };
  std::vector<Week> weeks;
  for (Date day = Date::FromYmd(2025, 6, 4); day <= Date::FromYmd(2025, 8, 31);
       day = day.AddDays(1)) {
    if (weeks.empty() || day.DayOfWeek() == Weekday::Monday) {
      weeks.push_back({day, day, day, day, balance, balance, balance, balance});
    }
    Week& w = weeks.back();
    balance += moved[day.ToIso()];
    if (balance < w.lowest) w.lowest = balance, w.lowest_on = day;
    if (balance > w.highest) w.highest = balance, w.highest_on = day;
    w.closing = balance;
    w.to = day;
  }
  const std::vector<DumpRow> rows = RowsOf(dump, "Detail");
  ASSERT_EQ(rows.size(), weeks.size());
  const auto day_text = [](Date d) { return Format(Variant(d), "d/mm/yyyy"); };
  Week run = weeks.front();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Week& w = weeks[i];
    SCOPED_TRACE(w.from.ToIso());
    EXPECT_EQ(TextOf(rows[i], "txtFrom"), day_text(w.from));
    EXPECT_EQ(TextOf(rows[i], "txtTo"), day_text(w.to));
    EXPECT_EQ(DumpedAmount(rows[i], "txtOpening"), w.opening);
    EXPECT_EQ(DumpedAmount(rows[i], "txtLowest"), w.lowest);
    EXPECT_EQ(TextOf(rows[i], "txtLowestOn"), day_text(w.lowest_on));
    EXPECT_EQ(DumpedAmount(rows[i], "txtHighest"), w.highest);
    EXPECT_EQ(TextOf(rows[i], "txtHighestOn"), day_text(w.highest_on));
    EXPECT_EQ(DumpedAmount(rows[i], "txtClosing"), w.closing);
    // The cheque account may be overdrawn by 50,000.00.
    EXPECT_EQ(TextOf(rows[i], "txtOverLimit"),
              w.lowest < Currency::FromRaw(-500000000) ? "Over limit" : "");
    if (w.lowest < run.lowest) run.lowest = w.lowest, run.lowest_on = w.lowest_on;
    if (w.highest > run.highest) run.highest = w.highest, run.highest_on = w.highest_on;
  }
  const std::vector<DumpRow> footers = RowsOf(dump, "GroupFooter");
  ASSERT_EQ(footers.size(), 1u);
  EXPECT_EQ(DumpedAmount(footers[0], "txtRunLowest"), run.lowest);
  EXPECT_EQ(TextOf(footers[0], "txtRunLowestOn"), day_text(run.lowest_on));
  EXPECT_EQ(DumpedAmount(footers[0], "txtRunHighest"), run.highest);
  EXPECT_EQ(TextOf(footers[0], "txtRunHighestOn"), day_text(run.highest_on));
}

// Each deposit slip of a week is that day's bank receipts: the bank's own lines of the entries
// that receipts were banked by, in count and in sum, and the slips' total is the week's.
TEST_F(LedgerListsChecks, EachLodgementSlipIsThatDaysBankReceipts) {
  const std::string dump =
      Join(RunPages(Open("Lodgements", {"DatedFrom=2025-11-01", "DatedTo=2025-11-07"})), "\n");
  std::map<std::string, std::pair<std::size_t, Currency>> books;  // by day
  Currency week;
  for (const auto& row : BooksSql().Rows(
           "SELECT substr(b.Date, 1, 10), Count(*), Sum(t.Value) FROM glBankTransaction b "
           "JOIN glTransaction t ON t.glBankTransactionId = b.glBankTransactionId AND "
           "t.glBankTransactionSequence = 0 WHERE b.Date >= '2025-11-01' AND b.Date < "
           "'2025-11-08' AND b.glBankTransactionId In (SELECT glBankTransactionId FROM "
           "Transactions WHERE Type = 35) GROUP BY 1")) {
    const Currency sum = Currency::FromRaw(std::stoll(row[2]));
    books[row[0]] = {std::stoul(row[1]), sum};
    week += sum;
  }
  ASSERT_EQ(books.size(), 7u);    // receipts are banked every day of the week
  std::vector<std::string> days;  // "#2025-11-05#"
  for (const DumpRow& row : RowsOf(dump, "GroupHeader")) {
    if (auto date = row.find("txtSlipDate"); date != row.end()) days.push_back(date->second.first);
  }
  std::map<std::string, std::pair<std::size_t, Currency>> listed;
  std::size_t slip = 0;
  for (const DumpRow& row : RowsOf(dump, "GroupFooter")) {
    if (row.find("txtSlipTotal") == row.end()) continue;  // a method's footer
    ASSERT_LT(slip, days.size());
    ASSERT_EQ(days[slip].size(), 12u) << days[slip];
    listed[days[slip++].substr(1, 10)] = {std::stoul(TextOf(row, "txtSlipCount")),
                                          DumpedAmount(row, "txtSlipTotal")};
  }
  EXPECT_EQ(listed, books);
  EXPECT_EQ(FooterMoney(dump, "txtReportTotal"), week);
}

// Under every bank entry of a month its split lines' gross adds up to the entry's amount less its
// lines never reported ("*", such as the GST paid to the tax office), money in and out alike, and
// the report's deposits less its withdrawals are the banks' movement.
TEST_F(LedgerListsChecks, EachBankEntrysSplitLinesAddUpToItsAmount) {
  const std::string dump =
      Join(RunPages(Open("BankBatch", {"DatedFrom=2025-10-01", "DatedTo=2025-10-31"})), "\n");
  std::map<std::string, Currency> unreported;  // by entry, on the bank's side
  for (const auto& row : BooksSql().Rows(
           "SELECT t.glBankTransactionId, Sum(t.Value + Coalesce(t.TaxValue, 0)) FROM "
           "glTransaction "
           "t JOIN glBankTransaction b ON b.glBankTransactionId = t.glBankTransactionId WHERE "
           "t.glBankTransactionSequence <> 0 AND t.TaxCategory = '*' AND b.Date >= '2025-10-01' "
           "AND b.Date < '2025-11-01' GROUP BY 1")) {
    unreported[row[0]] = Currency::FromRaw(std::stoll(row[1]));
  }
  EXPECT_FALSE(unreported.empty());
  std::size_t entries = 0;
  std::string entry;
  Currency amount, split;
  const auto close = [&] {
    if (!entry.empty()) {
      const auto found = unreported.find(entry);
      EXPECT_EQ(split, amount + (found == unreported.end() ? Currency() : found->second))
          << "entry " << entry;
    }
  };
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (row.find("txtEntryId") != row.end()) {
      close();
      entry = TextOf(row, "txtEntryId");
      amount = DumpedAmount(row, "txtAmount");
      split = Currency();
      ++entries;
    } else {
      split += DumpedAmount(row, "txtGross");
    }
  }
  close();
  EXPECT_GT(entries, 100u);
  const auto books = BooksSql().Rows(
      "SELECT Sum(t.Value) FROM glTransaction t JOIN glBankTransaction b ON "
      "b.glBankTransactionId = t.glBankTransactionId WHERE t.glBankTransactionSequence = 0 AND "
      "b.Date >= '2025-10-01' AND b.Date < '2025-11-01'");
  ASSERT_EQ(books.size(), 1u);
  EXPECT_EQ(FooterMoney(dump, "txtTotalDeposits") - FooterMoney(dump, "txtTotalWithdrawals"),
            Currency::FromRaw(std::stoll(books[0][0])));
}

// Each posting account's balance in the chart is its balance in the books at the date, on its
// own side, and the debits total the credits.
TEST_F(LedgerListsChecks, TheChartsBalancesAreTheBooksAndTheDebitsEqualTheCredits) {
  for (const char* as_at : {"2025-11-30", "2024-03-31"}) {
    const std::string dump = Join(
        RunPages(Open("ChartofAccounts", {"ShowBalances=True", std::string("DateAsAt=") + as_at})),
        "\n");
    std::map<std::string, Currency> listed;
    for (const DumpRow& row : RowsOf(dump, "Detail")) {
      const Currency balance = DumpedAmount(row, "txtDebit") - DumpedAmount(row, "txtCredit");
      if (balance != Currency()) listed[TextOf(row, "txtCode")] = balance;
    }
    std::map<std::string, Currency> books;
    for (const auto& row :
         BooksSql().Rows(std::string("SELECT AccountId, Sum(Value) FROM glTransaction "
                                     "WHERE Date < date('") +
                         as_at + "', '+1 day') GROUP BY AccountId HAVING Sum(Value) <> 0")) {
      books[row[0]] = Currency::FromRaw(std::stoll(row[1]));
    }
    ASSERT_GT(books.size(), 10u) << as_at;
    EXPECT_EQ(listed, books) << as_at;
    const Currency debits = FooterMoney(dump, "txtTotalDebit");
    EXPECT_GT(debits, Currency()) << as_at;
    EXPECT_EQ(debits, FooterMoney(dump, "txtTotalCredit")) << as_at;
  }
}

// Each account's row across the branches adds up to its movement in the books, and each cell is
// that branch's part of it; accounts with no movement are left out.
TEST_F(LedgerListsChecks, AccountMatrixRowsAreTheAccountsMovements) {
  const std::string dump =
      Join(RunPages(Open("AccountMatrix", {"DatedFrom=2025-04-01", "DatedTo=2025-09-30"})), "\n");
  std::map<std::string, Currency> totals;
  std::map<std::string, Currency> cells;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    const std::string account = TextOf(row, "txtCode");
    totals[account] = DumpedAmount(row, "txtAcrossTotal");
    for (const auto& [name, value] : row) {
      if (name.rfind("txtAcross", 0) != 0 || name == "txtAcrossTotal") continue;
      const Currency cell = DumpedAmount(row, name);
      if (cell != Currency()) cells[account + " " + name.substr(9)] = cell;
    }
  }
  std::map<std::string, Currency> books;
  for (const auto& row :
       BooksSql().Rows("SELECT AccountId, Sum(Value) FROM glTransaction WHERE Date >= "
                       "'2025-04-01' AND Date < '2025-10-01' AND Type Is Null GROUP BY "
                       "AccountId HAVING Sum(Value) <> 0")) {
    books[row[0]] = Currency::FromRaw(std::stoll(row[1]));
  }
  ASSERT_GT(books.size(), 10u);
  EXPECT_EQ(totals, books);
  // The demo's branches in code order are AKL and TGA: columns 1 and 2, then "(none)".
  std::map<std::string, Currency> split;
  for (const auto& row :
       BooksSql().Rows("SELECT AccountId, Coalesce(BranchId, ''), Sum(Value) FROM "
                       "glTransaction WHERE Date >= '2025-04-01' AND Date < '2025-10-01' "
                       "AND Type Is Null GROUP BY AccountId, BranchId HAVING Sum(Value) <> 0")) {
    const std::string column = row[1] == "AKL" ? "1" : row[1] == "TGA" ? "2" : "None";
    split[row[0] + " " + column] = Currency::FromRaw(std::stoll(row[2]));
  }
  EXPECT_EQ(cells, split);
}

// Every journal the demo company holds balances, so none is flagged.
TEST_F(LedgerListsChecks, TheDemoJournalsPrintBalanced) {
  const std::string dump =
      Join(RunPages(Open("JournalList", {"DatedFrom=2020-01-01", "DatedTo=2030-12-31"})), "\n");
  const std::vector<std::string> texts = PrintedTexts(dump);
  EXPECT_GT(TextsOf(dump, "txtEntryReference").size(), 20u);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "Out of balance"), 0);
}

}  // namespace
}  // namespace trellin::reports::testing
