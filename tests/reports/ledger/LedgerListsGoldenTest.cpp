// The ledger and bank lists end to end on the demo company: each key and its main variants as
// page dumps compared with golden files read against what each list must print.

#include <gtest/gtest.h>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class LedgerListsGolden : public DemoReports {};

struct GoldenCase {
  const char* name;  // the golden file
  const char* key;
  std::vector<std::string> assignments;
};

TEST_F(LedgerListsGolden, PageDumps) {
  const GoldenCase cases[] = {
      {"GLTransactionList-day",
       "GLTransactionList",
       {"DatedFrom=2025-11-05", "DatedTo=2025-11-05", "Sources=AP"}},
      {"GLTransactionList-bank-by-source",
       "GLTransactionList",
       {"DatedFrom=2025-11-06", "DatedTo=2025-11-07", "Accounts=3010", "Groupings=Source",
        "OrderBy=Reference"}},
      {"GLTransactionList-summary",
       "GLTransactionList",
       {"Groupings=Account [Page Break],Branch", "Summary=True", "Accounts=1000..1099"}},
      {"GLTransactionList-picked-columns",
       "GLTransactionList",
       {"DatedFrom=2025-11-07", "DatedTo=2025-11-07", "Sources=CB..GL",
        "Columns=Date,Account,Reference,Debit,Credit,Tax,TaxCat,Entry,Document,Line",
        "AmountFrom=100"}},
      {"BankTransactionList-week",
       "BankTransactionList",
       {"DatedFrom=2025-11-06", "DatedTo=2025-11-07", "Banks=CHQ"}},
      {"BankTransactionList-unreconciled-by-party",
       "BankTransactionList",
       {"DatedFrom=2025-11-28", "Reconciled=Unreconciled", "Groupings=Bank,Other Party",
        "Summary=True", "OrderBy=Amount"}},
      {"ChequeList", "ChequeList", {"DatedFrom=2025-11-21"}},
      {"ChequeList-unpresented",
       "ChequeList",
       {"DatedFrom=2024-01-01", "DatedTo=2025-11-19", "UnpresentedOnly=True", "OrderBy=Amount"}},
      {"BankLedger", "BankLedger", {"DatedFrom=2025-11-28"}},
      {"BankLedger-savings-month", "BankLedger", {"Banks=SAVE"}},
      {"BankHighLow", "BankHighLow", {"DatedFrom=2025-11-20"}},
      {"BankHighLow-weekly-cheque",
       "BankHighLow",
       {"DatedFrom=2025-09-01", "Frequency=Weekly", "Banks=CHQ"}},
      {"BankHighLow-monthly", "BankHighLow", {"DatedFrom=2025-04-01", "Frequency=Monthly"}},
      {"Lodgements", "Lodgements", {"DatedFrom=2025-11-05", "DatedTo=2025-11-05"}},
      {"Lodgements-cheques-by-amount",
       "Lodgements",
       {"DatedFrom=2025-11-05", "DatedTo=2025-11-06", "PaymentTypes=Q", "OrderBy=Amount"}},
      {"Cheques", "Cheques", {"DatedFrom=2025-11-20", "DatedTo=2025-11-20"}},
      {"Cheques-details-two-suppliers",
       "Cheques",
       {"DatedFrom=2025-10-01", "Suppliers=EASTE001,EASTE009", "ShowDetails=True"}},
      {"BankBatch", "BankBatch", {"DatedFrom=2025-11-28"}},
      {"BankBatch-by-reference",
       "BankBatch",
       {"DatedFrom=2025-09-01", "References=FEES,INT,LOAN", "OrderBy=Reference"}},
      {"AccountDetails", "AccountDetails", {"Accounts=1000..1030,3000..3110,4520"}},
      {"AccountDetails-posting-by-description",
       "AccountDetails",
       {"PostingOnly=True", "OrderBy=Description", "DateAsAt=2025-03-31", "Accounts=1000..1999"}},
      {"JournalList", "JournalList", {}},
      {"JournalList-by-reference",
       "JournalList",
       {"Sources=", "DatedFrom=2025-11-28", "References=W..Z", "OrderBy=Reference"}},
      {"ChartofAccounts", "ChartofAccounts", {}},
      {"ChartofAccounts-balances",
       "ChartofAccounts",
       {"ShowBalances=True", "DateAsAt=2025-03-31", "Levels=3"}},
      {"ChartofAccounts-posting", "ChartofAccounts", {"PostingOnly=True", "Accounts=3000..3999"}},
      {"AccountMatrix", "AccountMatrix", {"Accounts=1000..1299"}},
      {"AccountMatrix-departments-balance-thousands",
       "AccountMatrix",
       {"Across=Department", "Basis=Balance", "Rounding=Thousands", "Accounts=3000..4999"}},
      {"SourceList", "SourceList", {}},
      {"SourceList-activity", "SourceList", {"ShowActivity=True", "OrderBy=Description"}},
  };
  for (const GoldenCase& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    ExpectGolden("ledger", c.name, Join(pages, "\n"));
  }
}

}  // namespace
}  // namespace trellin::reports::testing
