// The receipts and payments on the small company of remittance.sql (payments of invoices and
// credits, one on account, a dishonoured cheque and its reversal, one of 70 invoices, a
// customer's receipt) and on the demo company: a page each with its title by type, the golden
// dumps read against what a receipt must print, and on every receipt printed the applied lines
// plus what is left on account making up the amount.

#include <gtest/gtest.h>

#include "platform/runtime/Strings.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

// Per receipt printed: its detail lines' sum, and its footer's applied, left and amount; checks
// that the lines add up to what was applied and that applied and left make the amount. Returns
// the number of receipts.
int ExpectReceiptsAddUp(const std::vector<std::string>& pages) {
  const std::string dump = Join(pages, "\n");
  EXPECT_EQ(dump.find("errors:"), std::string::npos) << dump.substr(0, 2000);
  int receipts = 0;
  Currency lines;
  for (const std::string& line : Split(dump, "\n")) {
    if (line.rfind("row Detail ", 0) == 0) {
      lines += DumpedAmount(RowsOf(line, "Detail").front(), "numLineAmount");
    } else if (line.rfind("row GroupFooter ", 0) == 0) {
      const DumpRow footer = RowsOf(line, "GroupFooter").front();
      const Currency applied = DumpedAmount(footer, "numApplied");
      SCOPED_TRACE(line);
      EXPECT_EQ(lines, applied);
      EXPECT_EQ(applied + DumpedAmount(footer, "numLeft"), DumpedAmount(footer, "numTotal"));
      lines = Currency();
      ++receipts;
    }
  }
  return receipts;
}

class PaymentReceipts : public RemittanceCompany {};

TEST_F(PaymentReceipts, MatchTheirGoldenDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/receipt_golden_runs.tsv");
}

TEST_F(PaymentReceipts, AppliedLinesAndWhatIsLeftOnAccountMakeTheAmount) {
  const std::vector<std::string> pages =
      DumpPages(Open("PaymentReceipt", {"DatedFrom=2025-01-01", "DatedTo=2025-12-31"}));
  // Every payment of the company and the customer's receipt.
  EXPECT_EQ(ExpectReceiptsAddUp(pages), 12);
}

TEST_F(PaymentReceipts, CustomersChooseTheReceiptsAndSuppliersThePayments) {
  const struct {
    std::vector<std::string> assignments;
    std::vector<std::string> titles;  // a page each, its title
  } cases[] = {
      {{"Customers=CUST"}, {"Receipt"}},
      {{"Suppliers=CHQ"}, {"Payment"}},
      {{"Customers=CUST", "Suppliers=CHQ"}, {"Payment", "Receipt"}},
      // A supplier's code given as a customer selects no payment.
      {{"Customers=CHQ"}, {}},
  };
  for (const auto& c : cases) {
    std::vector<std::string> values = c.assignments;
    values.insert(values.end(), {"DatedFrom=2025-01-01", "DatedTo=2025-12-31"});
    SCOPED_TRACE(Join(values, " "));
    std::vector<std::string> titles;
    for (const PrintedPage& page : PagesOf(DumpPages(Open("PaymentReceipt", values)))) {
      for (const char* title : {"Receipt", "Payment"}) {
        if (page.Has(title)) titles.push_back(title);
      }
    }
    EXPECT_EQ(titles, c.titles);
  }
}

class DemoPaymentReceipts : public DemoReports {};

// A week of the demo's receipts and payments, every kind of pay method among them.
TEST_F(DemoPaymentReceipts, AppliedLinesAndWhatIsLeftOnAccountMakeTheAmount) {
  EXPECT_GT(ExpectReceiptsAddUp(
                RunPages(Open("PaymentReceipt", {"DatedFrom=2025-11-17", "DatedTo=2025-11-23"}))),
            50);
}

}  // namespace
}  // namespace trellin::reports::testing
