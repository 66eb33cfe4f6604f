// The customer statements on the small company of statement.sql: who gets one in each style, the
// stub on each customer's last page with that customer's figures, the page numbers, the options
// of "Other", and the golden dumps read against what a statement must print.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardsStatement.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

// The customer of each page, by the "Customer: " line every page carries.
std::vector<std::string> CustomersOf(const std::vector<PrintedPage>& pages) {
  std::vector<std::string> codes;
  for (const PrintedPage& page : pages) {
    for (const std::string& text : page.texts) {
      if (text.rfind("Customer: ", 0) == 0) codes.push_back(text.substr(10));
    }
  }
  return codes;
}

// The business objects of the company, but for one customer they do not know.
class ForgetfulObjects : public BusinessObjects {
 public:
  ForgetfulObjects(std::unique_ptr<BusinessObjects> real, std::string forgotten)
      : real_(std::move(real)), forgotten_(std::move(forgotten)) {}
  const OtherParty* FindOtherParty(std::string_view code) override {
    return code == forgotten_ ? nullptr : real_->FindOtherParty(code);
  }
  const Branch* FindBranch(std::string_view code) override { return real_->FindBranch(code); }
  const BankDetails* FindBank(std::string_view code) override { return real_->FindBank(code); }
  const TaxCategory* FindTaxCategory(std::string_view code) override {
    return real_->FindTaxCategory(code);
  }
  const Employee* FindEmployee(std::string_view code) override { return real_->FindEmployee(code); }
  const AssetCategory* FindAssetCategory(std::string_view code) override {
    return real_->FindAssetCategory(code);
  }
  const DocumentType* FindDocumentType(std::string_view code) override {
    return real_->FindDocumentType(code);
  }
  const StockItem* FindItem(std::string_view code) override { return real_->FindItem(code); }
  const Branch* FindLocationBranch(std::string_view code) override {
    return real_->FindLocationBranch(code);
  }
  std::unique_ptr<ItemStockLevel> CreateItemStockLevel() override {
    return real_->CreateItemStockLevel();
  }

 private:
  std::unique_ptr<BusinessObjects> real_;
  std::string forgotten_;
};

TEST_F(StatementCompany, PagesOfBothStylesMatchTheirGoldenDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/statement_golden_runs.tsv");
}

TEST_F(StatementCompany, CustomersAreIssuedByBalanceMovementAndInOpenItemAnItemOpenAtTheDate) {
  const struct {
    const char* other;
    std::vector<std::string> customers;
  } cases[] = {
      // NIL settled before March; NET's items net to nothing and did not move; SUPP supplies.
      {"", {"BUSY", "BUSY", "BUSY", "CREDIT", "DUE", "GHOST", "MOVED"}},
      // NET's invoice and receipt are each open at the date.
      {"[OI]", {"BUSY", "BUSY", "BUSY", "CREDIT", "DUE", "GHOST", "MOVED", "NET"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.other);
    const auto pages = PagesOf(DumpPages(Open("StatementAR", {std::string("Other=") + c.other})));
    EXPECT_EQ(CustomersOf(pages), c.customers);
    // One stub per customer.
    const auto stubs = std::count_if(pages.begin(), pages.end(), [](const PrintedPage& page) {
      return page.Has("Please cut off and return with your remittance");
    });
    EXPECT_EQ(stubs, static_cast<long>(c.customers.size()) - 2);
  }
}

TEST_F(StatementCompany, ThreePagesNumberedWithTheStubOnTheLastAndTheNextCustomerBackAtOne) {
  const auto pages = PagesOf(DumpPages(Open("StatementAR", {})));
  ASSERT_GE(pages.size(), 4u);
  // BUSY's first page carries its heading in the body and no page header.
  EXPECT_FALSE(pages[0].Has("Continued from previous page"));
  EXPECT_TRUE(pages[0].Has("Continued next page"));
  EXPECT_FALSE(pages[0].Has("ENCLOSED AMOUNT $"));
  EXPECT_TRUE(pages[1].Has("Page 2"));
  EXPECT_TRUE(pages[1].Has("Continued from previous page"));
  EXPECT_TRUE(pages[1].Has("Continued next page"));
  EXPECT_FALSE(pages[1].Has("ENCLOSED AMOUNT $"));
  EXPECT_TRUE(pages[2].Has("Page 3"));
  EXPECT_FALSE(pages[2].Has("Continued next page"));
  EXPECT_TRUE(pages[2].Has("ENCLOSED AMOUNT $"));
  EXPECT_EQ(pages[2].After("Code"), "BUSY");
  // CREDIT starts afresh: its heading, no continuation, its own stub.
  EXPECT_FALSE(pages[3].Has("Continued from previous page"));
  EXPECT_TRUE(pages[3].Has("Statement for your Account 31 March 2025"));
  EXPECT_EQ(pages[3].After("Code"), "CREDIT");
}

TEST_F(StatementCompany, EachStubShowsItsOwnCustomersFiguresAndHidesTheAgeingWhenNothingIsOwed) {
  const auto pages = PagesOf(DumpPages(Open("StatementAR", {})));
  const struct {
    const char* code;
    const char* balance;
    const char* overdue;  // "" when hidden
    const char* current;
  } cases[] = {
      // Part-paid in March, the February invoice is overdue at its full 100.00: the receipt of
      // the month goes back to it. D3, due 20 April, is in neither column but in the balance.
      {"DUE", "$560.00", "$100.00", "$200.00"},
      {"CREDIT", "($50.00)", "", ""},  // in credit
      {"MOVED", "$0.00", "", ""},      // nil, but moved in the month
      {"GHOST", "$25.00", "$0.00", "$25.00"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    auto page = std::find_if(pages.begin(), pages.end(), [&](const PrintedPage& p) {
      return p.Has(std::string("Customer: ") + c.code) && p.Has("ENCLOSED AMOUNT $");
    });
    ASSERT_NE(page, pages.end());
    EXPECT_EQ(page->After("Code"), c.code);
    EXPECT_EQ(page->After("Balance"), c.balance);
    EXPECT_EQ(page->Has("Overdue"), *c.overdue != '\0');
    if (*c.overdue != '\0') {
      EXPECT_EQ(page->After("Overdue"), c.overdue);
      EXPECT_EQ(page->After("Current"), c.current);
    }
  }
}

TEST_F(StatementCompany, OpeningBalanceShowsOnlyWhenNotZero) {
  const struct {
    const char* code;
    bool opening;
  } cases[] = {{"DUE", true}, {"MOVED", false}, {"GHOST", false}, {"CREDIT", true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    const auto pages =
        PagesOf(DumpPages(Open("StatementAR", {std::string("Customers=") + c.code})));
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].Has("Opening Balance"), c.opening);
  }
}

TEST_F(StatementCompany, HidingTheRemittanceLeavesTheAmountAndTheCutOffLine) {
  for (const char* other : {"", "[HR]"}) {
    SCOPED_TRACE(other);
    const auto pages =
        PagesOf(DumpPages(Open("StatementAR", {"Customers=DUE", std::string("Other=") + other})));
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_TRUE(pages[0].Has("ENCLOSED AMOUNT $"));
    EXPECT_TRUE(pages[0].Has("Please cut off and return with your remittance"));
    const bool footer = std::any_of(pages[0].texts.begin(), pages[0].texts.end(), [](auto& t) {
      return t.rfind("Harbour Chandlery Tauranga, 3 Dive Crescent", 0) == 0;
    });
    EXPECT_EQ(footer, *other == '\0');
  }
}

TEST_F(StatementCompany, ACustomerTheBusinessLayerCannotFindHasNoAddressAndTheRunGoesOn) {
  DesignerPtr designer = Open("StatementAR", {"Customers=DUE..MOVED"});
  auto& statement = dynamic_cast<ardsStatement&>(*designer);
  statement.UseObjects(std::make_unique<ForgetfulObjects>(
      TrellinReportGlobals::RequireBusinessLayer().CreateObjects(), "GHOST"));
  const auto pages = PagesOf(DumpPages(designer));
  EXPECT_EQ(CustomersOf(pages), (std::vector<std::string>{"DUE", "GHOST", "MOVED"}));
  EXPECT_FALSE(pages[1].Has("Ghost Moorings"));
  EXPECT_FALSE(pages[1].Has("Harbour Chandlery Auckland"));
  EXPECT_TRUE(pages[1].Has("Statement for your Account 31 March 2025"));
  EXPECT_TRUE(pages[2].Has("Moved Marine"));
}

TEST_F(StatementCompany, NoCustomersGiveAnEmptyDocument) {
  for (const char* customers : {"Customers=SUPP", "Customers=NIL"}) {
    SCOPED_TRACE(customers);
    for (const PrintedPage& page : PagesOf(DumpPages(Open("StatementAR", {customers})))) {
      EXPECT_TRUE(page.texts.empty()) << Join(page.texts, "|");
    }
  }
}

TEST(StatementOptions, TagsAreReadInTheirOrderAndTakenOut) {
  const struct {
    const char* other;
    bool letterhead, remittance, open_item;
    const char* rest;
  } cases[] = {
      {"", false, false, false, ""},
      {"[OI]", false, false, true, ""},
      {"x[HR]y[HT]z", true, true, false, "xyz"},
      {"[OI][HT][HR][HT]", true, true, true, "[HT]"},  // each tag is taken out once
      {"[oi]", false, false, false, "[oi]"},           // tags are written in capitals
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.other);
    const StatementOptions options = ReadStatementOptions(c.other);
    EXPECT_EQ(options.hide_letterhead, c.letterhead);
    EXPECT_EQ(options.hide_remittance, c.remittance);
    EXPECT_EQ(options.open_item, c.open_item);
    EXPECT_EQ(options.rest, c.rest);
  }
}

TEST(StatementHeading, AustralianCompaniesAddTheBusinessNumbersAndMissingPartsLeaveTheirTextsOut) {
  OtherParty party;
  party.name = "Coral Charters";
  party.addresses = {{"Delivery", {"9 Quay"}}, {"Postal", {"PO Box 5", "Cairns QLD 4870"}}};
  party.tax_number = "51 824 753 556";
  OtherParty plain = party;
  plain.tax_number.clear();
  plain.addresses.pop_back();  // a delivery address only
  Branch branch;
  branch.name = "Coral Bay Marine";
  branch.address_lines = {"1 Wharf St", "Brisbane"};
  branch.phone = "07 555 0100";
  branch.email = "accounts@coral.example";
  branch.tax_number = "28 456 789 012";
  Branch bare = branch;
  bare.email.clear();
  bare.tax_number.clear();
  bare.fax = "07 555 0101";
  const std::string date = "31 October 2026";
  const struct {
    const char* name;
    const OtherParty* party;
    const Branch* branch;
    bool australian;
    const char* address;
    const char* details;
    const char* footer;
  } cases[] = {
      {"AU, both numbers", &party, &branch, true,
       "Coral Charters\r\nPO Box 5\r\nCairns QLD 4870\r\n\r\nABN: 51 824 753 556\r\n\r\n"
       "Statement for your Account 31 October 2026",
       "Phone    07 555 0100\r\nEmail    accounts@coral.example",
       "Coral Bay Marine, 1 Wharf St, Brisbane\r\n\r\nABN: 28 456 789 012"},
      {"NZ: no numbers", &party, &branch, false,
       "Coral Charters\r\nPO Box 5\r\nCairns QLD 4870\r\n\r\nStatement for your Account 31 "
       "October 2026",
       "Phone    07 555 0100\r\nEmail    accounts@coral.example",
       "Coral Bay Marine, 1 Wharf St, Brisbane"},
      {"AU, neither number, fax without e-mail", &plain, &bare, true,
       "Coral Charters\r\n\r\nStatement for your Account 31 October 2026",
       "Phone    07 555 0100\r\nFacsimile  07 555 0101", "Coral Bay Marine, 1 Wharf St, Brisbane"},
      {"unknown customer, no branch", nullptr, nullptr, true,
       "Statement for your Account 31 October 2026", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const StatementHeading heading = StatementHeadingOf(c.party, c.branch, c.australian, date);
    EXPECT_EQ(heading.address, c.address);
    EXPECT_EQ(heading.branch_details, c.details);
    EXPECT_EQ(heading.branch_footer, c.footer);
    EXPECT_EQ(heading.branch_name, c.branch == nullptr ? "" : "Coral Bay Marine");
  }
}

TEST(StatementLineType, NamesInvoicesCreditsAndReceiptsAndKeepsTheWordBeforeForOtherTypes) {
  const struct {
    long type;
    const char* previous;
    const char* word;
  } cases[] = {{30, "", "Invoice"},       {31, "", "Credit"},         {32, "Receipt", "Credit"},
               {35, "", "Receipt"},       {33, "Invoice", "Invoice"}, {34, "", ""},
               {39, "Receipt", "Receipt"}};
  for (const auto& c : cases) {
    EXPECT_EQ(StatementLineType(c.type, c.previous), c.word) << c.type;
  }
}

}  // namespace
}  // namespace trellin::reports::testing
