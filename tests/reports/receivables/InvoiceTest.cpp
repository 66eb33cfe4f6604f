// The printed documents on the demo company (the golden pages of each kind are runs of
// golden_runs.tsv): a month of customer invoices against the plain SQL of their lines, the
// totals' wording, the keys' flags and filters, and the walk over a document held in memory.

#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "platform/runtime/Strings.h"
#include "reports/receivables/ardsInvoice.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/DemoCache.h"

namespace trellin::reports::testing {
namespace {

class InvoiceDemo : public DemoReports {};

std::shared_ptr<ardsInvoice> AsInvoice(const DesignerPtr& designer) {
  auto invoice = std::dynamic_pointer_cast<ardsInvoice>(designer);
  EXPECT_NE(invoice, nullptr);
  return invoice;
}

TEST_F(InvoiceDemo, AMonthOfCustomerInvoicesTotalsAsTheLedgerAndTheirLines) {
  const DesignerPtr designer =
      Open("InvoiceAR", {"DatedFrom=2025-10-01", "DatedTo=2025-10-31", "TransactionTypes=INV"});
  const auto invoice = AsInvoice(designer);
  ASSERT_NE(invoice, nullptr);
  std::map<std::int64_t, InvoiceTotals> printed;
  std::size_t told = 0;
  invoice->SetTotalsLog([&](std::int64_t id, const InvoiceTotals& totals) {
    printed[id] = totals;
    ++told;
  });
  const std::string dump = Join(DumpPages(designer), "\n");
  std::shared_ptr<Recordset> rs = Service().Database().Query(
      "SELECT t.TransactionId, -t.Value AS Ledger, (SELECT Sum(l.Value+l.TaxValue) FROM "
      "TransactionLine l WHERE l.TransactionId=t.TransactionId AND (l.ItemId Is Not Null OR "
      "l.Hidden<>0)) AS Lines FROM Transactions t WHERE t.Type=30 AND t.TransactionTypeId='INV' "
      "AND t.Date>=#2025-10-01# AND t.Date<#2025-11-01# ORDER BY t.TransactionId");
  std::size_t count = 0;
  for (; !rs->Eof(); rs->MoveNext(), ++count) {
    const std::int64_t id = rs->Value("TransactionId").ToLong();
    const auto found = printed.find(id);
    ASSERT_NE(found, printed.end()) << id;
    EXPECT_EQ(found->second.total, rs->Value("Ledger").ToCurrency()) << id;
    EXPECT_EQ(found->second.total, -rs->Value("Lines").ToCurrency()) << id;
  }
  EXPECT_GT(count, 100u);
  EXPECT_EQ(printed.size(), count);
  EXPECT_EQ(told, count);
  // Each invoice prints its total once, on its last page.
  EXPECT_EQ(TextsOf(dump, "numTotal").size(), count);
}

TEST_F(InvoiceDemo, ADocumentOfNoneOfTheKeysPrintsNothing) {
  const struct {
    const char* key;
    const char* id;
  } cases[] = {
      {"InvoiceAR", "52249"},  // a supplier invoice
      {"InvoiceAP", "50643"},  // a customer invoice
      {"InvoiceAR", "99999999"},
      {"Sales Order", "1"},  // an open batch invoice, no sales order
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.key) + " " + c.id);
    const std::string dump =
        Join(DumpPages(Open(c.key, {std::string("TransactionId=") + c.id})), "\n");
    EXPECT_TRUE(RowsOf(dump, "Detail").empty());
    EXPECT_TRUE(TextsOf(dump, "numTotal").empty());
  }
}

TEST_F(InvoiceDemo, TwoDocumentsEachNumberTheirPagesAndTotalOnTheirLast) {
  const struct {
    const char* golden;
    const char* key;
    const char* from;
    const char* to;
    std::vector<std::size_t> totals_by_page;  // how many totals each page prints
  } cases[] = {
      // The demo's longest customer invoice and the next.
      {"InvoiceAR-two-documents", "InvoiceAR", "50643", "50644", {1, 1}},
      // A supplier invoice of thirty serial numbered lines runs onto a second page, "Continued"
      // under the first; the next document starts a page of its own at page 1.
      {"InvoiceAP-two-documents-first-over-two-pages", "InvoiceAP", "823", "908", {0, 1, 1}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.golden);
    const auto pages = DumpPages(Open(
        c.key, {std::string("TransactionIdFrom=") + c.from, std::string("TransactionIdTo=") + c.to,
                "Message=Thank you.\r\nLine two\r\nLine three"}));
    // The footer's row follows the message onto lines of its own: count its cells in the text.
    std::vector<std::size_t> totals;
    for (const std::string& page : pages) {
      std::size_t n = 0;
      for (auto at = page.find(" numTotal="); at != std::string::npos;
           at = page.find(" numTotal=", at + 1)) {
        ++n;
      }
      totals.push_back(n);
    }
    EXPECT_EQ(totals, c.totals_by_page);
    ExpectGolden("receivables", c.golden, Join(pages, "\n"));
  }
}

TEST_F(InvoiceDemo, KeysSetTheFlagsThatChooseTheTable) {
  const struct {
    const char* key;
    std::vector<std::string> assignments;
    InvoiceSource source;
    const char* where;
  } cases[] = {
      // A non-zero id beats every range and filter.
      {"InvoiceAR",
       {"TransactionId=7", "DatedFrom=2025-01-01", "Customers=A..B", "TransactionIdFrom=5"},
       InvoiceSource::Posted,
       "Transactions.TransactionId=7  AND Transactions.Type in (30,31) "},
      // "Sales Order" reads the open batch even unasked; the purchase order flag cannot turn an
      // invoice into a purchase order.
      {"Sales Order",
       {"TransactionId=20"},
       InvoiceSource::OpenBatch,
       "acBatchTransaction.acBatchTransactionId=20  AND acBatchHeader.Type=90 "},
      {"InvoiceAR",
       {"TransactionId=3", "PurchaseOrder=true"},
       InvoiceSource::Posted,
       "Transactions.TransactionId=3  AND Transactions.Type in (30,31) "},
      {"InvoiceAP",
       {"TransactionIdFrom=10", "TransactionIdTo=20", "IsOpen=true"},
       InvoiceSource::OpenBatch,
       "acBatchTransaction.acBatchTransactionId>=10  AND "
       "acBatchTransaction.acBatchTransactionId<=20 "
       " AND acBatchTransaction.Type in (20,21) "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.key);
    const auto invoice = AsInvoice(Open(c.key, c.assignments));
    ASSERT_NE(invoice, nullptr);
    invoice->ReadFlags();
    EXPECT_EQ(invoice->Source(), c.source);
    EXPECT_EQ(invoice->GetSQLWhere(), c.where);
    // A designer never run keeps its report and the report it: let go of both.
    invoice->TLReport()->SetArReport(nullptr);
    invoice->SetTLReport(nullptr);
  }
}

TEST(InvoiceWording, TheTaxCasesAndTypesGiveTheirCaptions) {
  const Currency tax = Currency::FromWhole(15);
  const struct {
    DocumentClass type;
    bool purchase_order;
    Currency tax;
    int inclusive;
    InvoiceTotalsWording wording;
  } cases[] = {
      {DocumentClass::CustomerInvoice, false, Currency(), 3, {"", "", "", "Invoice Total:"}},
      {DocumentClass::CustomerInvoice,
       false,
       tax,
       0,
       {"", "", "This Invoice includes GST of:", "Invoice Total:"}},
      {DocumentClass::CustomerInvoice,
       false,
       tax,
       2,
       {"Sub Total:", "Plus GST of:", "", "Invoice Total:"}},
      // A customer credit reads as an invoice.
      {DocumentClass::CustomerCredit,
       false,
       tax,
       0,
       {"", "", "This Invoice includes GST of:", "Invoice Total:"}},
      {DocumentClass::SupplierCredit,
       false,
       tax,
       0,
       {"", "", "This Credit Note includes GST of:", "Credit Total:"}},
      {DocumentClass::SupplierFurther, false, tax, 0, {"", "", "Includes GST of:", "Total:"}},
      {DocumentClass::PurchaseOrder,
       true,
       tax,
       1,
       {"Sub Total:", "Plus GST of:", "", "Order Total:"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.type));
    InvoiceTotals totals;
    totals.tax = c.tax;
    totals.inclusive = c.inclusive;
    const InvoiceTotalsWording w = InvoiceTotalsWordingOf(c.type, c.purchase_order, totals, "GST");
    EXPECT_EQ(w.sub_total, c.wording.sub_total);
    EXPECT_EQ(w.tax, c.wording.tax);
    EXPECT_EQ(w.includes_tax, c.wording.includes_tax);
    EXPECT_EQ(w.total, c.wording.total);
  }
}

// A customer invoice being entered: the document object the application hands over.
class HeldInvoice : public InvoiceDocument {
 public:
  HeldInvoice(DocumentClass type, std::vector<InvoiceLine> lines)
      : type_(type), lines_(std::move(lines)) {}
  InvoiceHeading Heading() const override {
    InvoiceHeading h;
    h.document = 1;
    h.type = type_;
    h.type_code = "INV";
    h.party = "HEADL006";
    h.location = "MAIN";
    h.reference = "DRAFT1";
    h.date = Variant(Date::FromYmd(2025, 11, 3));
    return h;
  }
  long LineCount() const override { return static_cast<long>(lines_.size()); }
  InvoiceLine Line(long index) const override { return lines_.at(index - 1); }

 private:
  DocumentClass type_;
  std::vector<InvoiceLine> lines_;
};

InvoiceLine HeldLine(const char* item, const char* description, long value, long tax,
                     const char* category, bool hidden = false, bool hold = false) {
  InvoiceLine l;
  l.item = item;
  l.description = description;
  l.quantity = 1;
  l.unit_price = Currency::FromWhole(value);
  l.extension = Currency::FromWhole(value);
  l.value = Currency::FromWhole(value);
  l.tax_value = Currency::FromWhole(tax);
  l.tax_category = category;
  l.discount_rate = 0.1;
  l.hidden = hidden;
  l.hold = hold;
  return l;
}

TEST_F(InvoiceDemo, ADocumentInMemoryWalksItsLinesWithoutAQuery) {
  const struct {
    const char* name;
    std::vector<InvoiceLine> lines;
    std::vector<std::string> descriptions;  // as printed, in order
    const char* total;
    const char* includes;  // numTaxIncludes, "" when not printed
  } cases[] = {
      // Hidden lines go last, as one line; the line on hold and the comment add nothing.
      {"hidden, hold and comment",
       {HeldLine("PRT112", "Impeller kit", 100, 15, "S"), HeldLine("", "Fitted on site", 0, 0, ""),
        HeldLine("PRT113", "Freight", 20, 3, "S", true),
        HeldLine("PRT114", "Held", 50, 0, "S", false, true),
        HeldLine("PRT115", "Labour", 30, 4, "S", true)},
       {"Impeller kit", "Fitted on site", "Other Items"},
       "172.00",
       ""},
      // Only hidden lines: one line "Other Items".
      {"only hidden",
       {HeldLine("PRT113", "Freight", 20, 3, "S", true)},
       {"Other Items"},
       "23.00",
       ""},
      // No line's category is known: the tax is included in the total.
      {"categories missing",
       {HeldLine("PRT112", "Impeller kit", 100, 15, "QQ"),
        HeldLine("PRT113", "Freight", 20, 3, "")},
       {"Impeller kit", "Freight"},
       "138.00",
       "18.00"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const DesignerPtr designer = Open("InvoiceAR", {});
    const auto invoice = AsInvoice(designer);
    ASSERT_NE(invoice, nullptr);
    invoice->UseDocument(std::make_shared<HeldInvoice>(DocumentClass::CustomerInvoice, c.lines));
    const std::string dump = Join(DumpPages(designer), "\n");
    std::vector<std::string> printed;
    for (const DumpRow& row : RowsOf(dump, "Detail")) {
      const auto text = row.find("txtLineDescription");
      const auto desc = row.find("txtDescription");
      printed.push_back(text != row.end() ? text->second.second : desc->second.second);
    }
    EXPECT_EQ(printed, c.descriptions);
    EXPECT_EQ(TextsOf(dump, "numTotal"), std::vector<std::string>{c.total});
    const auto includes = TextsOf(dump, "numTaxIncludes");
    EXPECT_EQ(includes.empty() ? std::string() : includes.front(), c.includes);
    if (*c.includes != '\0') {
      EXPECT_NE(dump.find("This Invoice includes GST of:"), std::string::npos);
    }
  }
}

TEST(InvoiceAustralia, AnAustralianInvoiceReadsAbnAndAto) {
  auto service = host::ReportService::Open(trellin::testing::CachedDemoCompany("AU"));
  auto last = service->Database().ExecuteScalarLong(
      "SELECT Max(TransactionId) FROM Transactions WHERE Type=30", 0);
  const std::string dump = Join(
      DumpPages(OpenWithValues(*service, "InvoiceAR", {"TransactionId=" + std::to_string(last)})),
      "\n");
  ExpectGolden("receivables", "InvoiceAR-AU", dump);
}

}  // namespace
}  // namespace trellin::reports::testing
