// The remittance advices on the small company of remittance.sql: one advice a payment, the
// heading by how it is paid, the lines signed as seen from the payment, the page numbers and the
// stub, the golden dumps read against what an advice must print, and the figures checked
// against the allocations by plain SQL.

#include <gtest/gtest.h>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyDocument.h"
#include "reports/receivables/arcrRemittance.h"
#include "reports/receivables/ardsDirectCreditSchedule.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

// The supplier of each page, by the "Supplier: " line every page carries.
std::vector<std::string> SuppliersOf(const std::vector<PrintedPage>& pages) {
  std::vector<std::string> codes;
  for (const PrintedPage& page : pages) {
    for (const std::string& text : page.texts) {
      if (text.rfind("Supplier: ", 0) == 0) codes.push_back(text.substr(10));
    }
  }
  return codes;
}

class Remittances : public RemittanceCompany {
 protected:
  static std::vector<PrintedPage> Advices(const std::vector<std::string>& assignments) {
    return PagesOf(DumpPages(Open("RemittanceAP", assignments)));
  }
};

// The advices and the direct credit schedule.
TEST_F(Remittances, AdvicesMatchTheirGoldenDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/remittance_golden_runs.tsv");
}

TEST_F(Remittances, EachPaymentOfTheSelectionGetsOneAdviceAndATransactionIdOnlyItsOwn) {
  const struct {
    std::vector<std::string> assignments;
    std::vector<std::string> suppliers;  // a page each
  } cases[] = {
      // The customer's receipt is no payment; MANY's advice runs to two pages.
      {{},
       {"ACCOUNT", "BOUNCE", "BOUNCE", "BOUNCE", "CHQ", "DIRECT", "MANY", "MANY", "NOADDR", "WIRE",
        "WIRE", "WIRE"}},
      {{"TransactionId=8"}, {"DIRECT"}},
      // The dates leave out what they exclude, but a payment by its id prints whatever they say.
      {{"dateFrom=10/03/2025", "dateTo=20/03/2025", "Suppliers=BOUNCE"}, {"BOUNCE"}},
      {{"dateTo=1/01/2025", "TransactionId=3"}, {}},
      // A receipt's id, and an id no transaction has: a document with no advice.
      {{"TransactionId=87"}, {}},
      {{"TransactionId=999"}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(Join(c.assignments, " "));
    EXPECT_EQ(SuppliersOf(Advices(c.assignments)), c.suppliers);
  }
}

TEST_F(Remittances, TheHeadingSaysHowThePaymentIsMadeAndTheAddressIsThePostalOne) {
  const struct {
    const char* id;
    const char* paid_by;
    const char* amount;
    const char* address;  // the first line under the name; "" none
  } cases[] = {
      {"3", "Cheque attached 004711", "$2,300.00", "Unit 3"},
      {"8", "Payment by Direct Credit", "$5,100.00", "PO Box 88"},  // no number
      {"9", "Payment by Other", "$1,200.00", "PO Box 12"},          // "B", bank transfer
      {"11", "Payment by Other", "$450.00", ""},  // no pay type; a delivery address only
      {"14", "Payment by Other", "($700.00)", "4 Slip Lane"},  // the reversal
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.id);
    const auto pages = Advices({std::string("TransactionId=") + c.id});
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_TRUE(pages[0].Has(c.paid_by));
    EXPECT_FALSE(pages[0].Has("Cheque attached DC0320"));
    EXPECT_EQ(pages[0].After("Amount Paid"), c.amount);
    if (*c.address != '\0') {
      EXPECT_TRUE(pages[0].Has(c.address));
    } else {
      EXPECT_FALSE(pages[0].Has("7 Pier Street"));
    }
  }
}

TEST_F(Remittances, LinesStandInTheirColumnsAndAPaymentToPaymentLineStillPrints) {
  const struct {
    const char* id;
    std::vector<std::string> lines;  // type, reference, the two amount columns ("-" blank)
    const char* settled;             // the count the fetch found
  } cases[] = {
      // Invoices in the first column, the credit in the second.
      {"8",
       {"Invoice D-201 1,000.00 -", "Invoice D-202 2,000.00 -", "Invoice D-203 2,500.00 -",
        "Credit D-CR1 - 400.00"},
       "4"},
      {"9", {}, "0"},  // on account: no lines
      // The dishonoured cheque settled nothing, yet prints its reversal as a payment; the
      // reversal's own advice shows the cheque in the second column.
      {"13", {"Payment REV004712 700.00 -"}, "0"},
      {"14", {"Payment 004712 - 700.00"}, "0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.id);
    const auto pages = Advices({std::string("TransactionId=") + c.id});
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].After("Documents settled"), c.settled);
    for (const std::string& line : c.lines) {
      const auto words = Split(line, " ");
      const auto at = std::find(pages[0].texts.begin(), pages[0].texts.end(), words[1]);
      ASSERT_NE(at, pages[0].texts.end()) << line;
      EXPECT_EQ(*(at - 1), words[0]) << line;
      // After the type's description.
      for (int column : {2, 3}) {
        EXPECT_EQ(*(at + column), words[column] == "-" ? " " : words[column]) << line;
      }
    }
  }
}

TEST_F(Remittances, PageNumbersRestartForEachAdviceAndTheStubIsOnItsLastPageOnly) {
  const auto pages = Advices({"Suppliers=MANY..NOADDR"});
  ASSERT_EQ(pages.size(), 3u);
  EXPECT_FALSE(pages[0].Has("Continued from previous page"));
  EXPECT_TRUE(pages[0].Has("Continued next page"));
  EXPECT_FALSE(pages[0].Has("Remittance from"));
  EXPECT_TRUE(pages[1].Has("Page 2"));
  EXPECT_TRUE(pages[1].Has("Continued from previous page"));
  EXPECT_FALSE(pages[1].Has("Continued next page"));
  EXPECT_TRUE(pages[1].Has("Remittance from"));
  EXPECT_EQ(pages[1].After("Supplier"), "MANY");
  // NOADDR starts again at 1, its one page with heading and stub.
  EXPECT_FALSE(pages[2].Has("Page 2"));
  EXPECT_FALSE(pages[2].Has("Continued from previous page"));
  EXPECT_TRUE(pages[2].Has("Remittance from"));
  EXPECT_EQ(pages[2].After("Supplier"), "NOADDR");
}

TEST_F(Remittances, TheFetchLeavesAllocationsBetweenPaymentsOutOfWhatWasSettled) {
  const struct {
    std::int64_t payment;
    std::size_t settled;
  } cases[] = {{3, 2}, {8, 4}, {9, 0}, {13, 0}, {14, 0}, {15, 1}, {86, 70}};
  Database& database = *TrellinReportGlobals::RequireDatabase();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.payment);
    std::size_t rows = 0;
    for (auto rs = database.Query(arcrRemittance::SettledSQL(c.payment)); !rs->Eof();
         rs->MoveNext()) {
      ++rows;
    }
    EXPECT_EQ(rows, c.settled);
  }
}

// On each advice of the payments `where` picks the first column less the second is what the
// payment's allocations took, read by plain SQL from the payment itself; returns how many.
std::size_t ExpectAdvicesNet(Database& database, const std::string& where) {
  auto payments = database.Query(
      "SELECT TransactionId, -(Value-ValueRemaining) AS Took FROM Transactions WHERE Type=25" +
      where);
  std::size_t checked = 0;
  for (; !payments->Eof(); payments->MoveNext(), ++checked) {
    const std::int64_t id = payments->Value("TransactionId").ToLong();
    SCOPED_TRACE(id);
    Currency net;
    for (auto rs = database.Query(arcrRemittanceLines::LinesSQL(id)); !rs->Eof(); rs->MoveNext()) {
      net -= rs->Value(5).ToCurrency();
    }
    EXPECT_EQ(net, payments->Value("Took").ToCurrency());
  }
  return checked;
}

TEST_F(Remittances, EachAdvicesColumnsNetToWhatThePaymentsAllocationsTook) {
  EXPECT_EQ(ExpectAdvicesNet(*TrellinReportGlobals::RequireDatabase(), ""), 11u);
}

// The schedule lists the direct credits the bank and date select, no more, and its printed total
// is the sum of their amounts as plain SQL reads them.
TEST_F(Remittances, TheScheduleListsExactlyTheBankRunAndTotalsWhatItLists) {
  const struct {
    const char* bank;
    const char* date;
    std::vector<std::int64_t> ids;
  } cases[] = {
      // CHQ's cheque of that day is no direct credit.
      {"CHQ", "20/03/2025", {8, 88}}, {"SAV", "20/03/2025", {89}},
      {"CHQ", "21/03/2025", {90}},    {"", "21/03/2025", {90}},  // no bank: the first, CHQ
      {"CHQ", "19/03/2025", {}},
  };
  Database& database = *TrellinReportGlobals::RequireDatabase();
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.bank) + " " + c.date);
    const DesignerPtr designer =
        Open("DirectCreditSchedule",
             {std::string("BankId=") + c.bank, std::string("PaymentDate=") + c.date});
    const auto pages = PagesOf(DumpPages(designer));
    const auto& run = dynamic_cast<ardsDirectCreditSchedule&>(*designer).Run();
    std::vector<std::int64_t> ids;
    for (long i = 0; i < run.Count(); ++i) ids.push_back(run.Item(i).TransactionId);
    EXPECT_EQ(ids, c.ids);
    ASSERT_EQ(pages.size(), 1u);
    for (std::int64_t id : c.ids) EXPECT_TRUE(pages[0].Has(std::to_string(id))) << id;
    std::string in = "0";
    for (std::int64_t id : c.ids) in += "," + std::to_string(id);
    auto sum = database.Query(
        "SELECT Sum(-Value) AS Paid FROM Transactions WHERE TransactionId In (" + in + ")");
    const Currency paid =
        sum->Value("Paid").IsNull() ? Currency() : sum->Value("Paid").ToCurrency();
    EXPECT_EQ(pages[0].After("Total"), Format(Variant(paid), "#,##0.00;(#,##0.00)"));
  }
}

// Every payment of last month on the demo company nets, on its advice, to what its allocations
// took (the month's payment run is a golden run of golden_runs.tsv).
class RemittanceDemo : public DemoReports {};

TEST_F(RemittanceDemo, EachAdviceOfTheMonthNetsToWhatItsAllocationsTook) {
  EXPECT_GT(ExpectAdvicesNet(Service().Database(),
                             " AND DateProcess>=#2025-10-01# AND DateProcess<#2025-11-01#"),
            20u);
}

TEST(RemittanceTexts, TheBranchBlockEndsWithTheNumberOnlyOnAustralianCompanies) {
  Branch branch;
  branch.name = "Harbour Chandlery";
  branch.address_lines = {"12 Wharf Road", "Pyrmont"};
  branch.phone = "02 5550 0100";
  const struct {
    bool australian;
    const char* number;
    const char* footer;
  } cases[] = {
      {true, "51 824 753 556",
       "Harbour Chandlery, 12 Wharf Road, Pyrmont\r\n\r\nABN: 51 824 753 556"},
      {false, "51 824 753 556", "Harbour Chandlery, 12 Wharf Road, Pyrmont"},
      {true, "", "Harbour Chandlery, 12 Wharf Road, Pyrmont"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.footer);
    EXPECT_EQ(BranchBlockOf(&branch, c.australian, c.number).footer, c.footer);
  }
  EXPECT_EQ(BranchBlockOf(nullptr, true, "1").footer, "");
}

TEST(RemittanceTexts, TheHeadingByPayType) {
  EXPECT_EQ(RemittancePaidBy("Q", "004711"), "Cheque attached 004711");
  EXPECT_EQ(RemittancePaidBy("C", "DC0320"), "Payment by Direct Credit");
  for (const char* other : {"B", "", "q", "O"}) {
    EXPECT_EQ(RemittancePaidBy(other, "X"), "Payment by Other") << other;
  }
}

}  // namespace
}  // namespace trellin::reports::testing
