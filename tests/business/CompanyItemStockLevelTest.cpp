// The stock levels of a hand-made company (stock.sql): each figure of the item DOC against a
// count made by hand from its lines, at every location and at each one; the tax list; and the
// cost of an issue of stock by each of its rules.

#include <gtest/gtest.h>

#include "platform/business/CompanyItemCosting.h"
#include "platform/business/CompanyItemStockLevel.h"
#include "platform/business/CompanyOptions.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::testing {
namespace {

class StockCompany : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<FixtureCompany>(
        std::initializer_list<std::string_view>{"business/stock.sql"});
  }
  static void TearDownTestSuite() { company_.reset(); }
  static std::unique_ptr<FixtureCompany> company_;
};

std::unique_ptr<FixtureCompany> StockCompany::company_;

// DOC's lines: MAIN +10 (100.00), SHOP +2 (20.00). Purchase order 5 at MAIN: 5, 3 and the 3's
// received twin -3. Unposted at MAIN: invoice 2, credit 1, bill 4, supplier credit 1, sales
// order lines ordered 5 / supplied 3 and, on hold, 2 / 1. Job invoice at SHOP: 4 / 2 and, on
// hold, 1 / 1.
struct LevelCase {
  const char* location;
  const char* serial;
  StockFigures want;
  double allocated;
  double available;
};

TEST_F(StockCompany, EachFigureOfAnItemIsItsHandCount) {
  const LevelCase cases[] = {
      // Allocated: sales orders 4 - 1 and job invoices 3 - 1; available 12 - AR 1 - 5.
      {"", "", {12, Currency::FromWhole(120), 5, 3, 1, 7, 2, 4, 1, 5, 1, 3, 1}, 5, 6},
      {"main", "", {10, Currency::FromWhole(100), 5, 3, 1, 7, 2, 4, 1, 0, 0, 0, 0}, 3, 6},
      {" SHOP ", "", {2, Currency::FromWhole(20), 0, 0, 0, 0, 0, 0, 0, 5, 1, 3, 1}, 2, 0},
      // Order lines carry no serial number; nothing of DOC has this one.
      {"", "X9", {}, 0, 0},
  };
  business::CompanyItemStockLevel levels(company_->Database());
  for (const LevelCase& c : cases) {
    SCOPED_TRACE(std::string("location '") + c.location + "' serial '" + c.serial + "'");
    const StockFigures f = levels.Load("doc", c.location, c.serial);
    EXPECT_EQ(f.QuantityOnHand, c.want.QuantityOnHand);
    EXPECT_EQ(f.ValueOnHand, c.want.ValueOnHand);
    EXPECT_EQ(f.PurchaseOrders, c.want.PurchaseOrders);
    EXPECT_EQ(f.APOpen, c.want.APOpen);
    EXPECT_EQ(f.AROpen, c.want.AROpen);
    EXPECT_EQ(f.SalesOrdersOnOrder, c.want.SalesOrdersOnOrder);
    EXPECT_EQ(f.SalesOrdersOnOrderHeld, c.want.SalesOrdersOnOrderHeld);
    EXPECT_EQ(f.SalesOrdersToSupply, c.want.SalesOrdersToSupply);
    EXPECT_EQ(f.SalesOrdersToSupplyHeld, c.want.SalesOrdersToSupplyHeld);
    EXPECT_EQ(f.JobInvoicesOnOrder, c.want.JobInvoicesOnOrder);
    EXPECT_EQ(f.JobInvoicesOnOrderHeld, c.want.JobInvoicesOnOrderHeld);
    EXPECT_EQ(f.JobInvoicesToSupply, c.want.JobInvoicesToSupply);
    EXPECT_EQ(f.JobInvoicesToSupplyHeld, c.want.JobInvoicesToSupplyHeld);
    EXPECT_EQ(f.Allocated(), c.allocated);
    EXPECT_EQ(f.QuantityAvailable(), c.available);
  }
}

TEST_F(StockCompany, SerialNumbersAndUndatedLinesCountAsTheirLinesSay) {
  business::CompanyItemStockLevel levels(company_->Database());
  EXPECT_EQ(levels.Load("SER", "", "a2").ValueOnHand, Currency::FromWhole(120));
  EXPECT_EQ(levels.Load("SER", "", "").QuantityOnHand, 2);
  EXPECT_EQ(levels.Load("NOSUCH", "", "").QuantityOnHand, 0);
  const struct {
    const char* item;
    std::optional<Date> date;
    bool exclude_allocated;
    double want;
  } cases[] = {
      {"UND", std::nullopt, true, 6},
      {"UND", Date::FromYmd(2024, 1, 1), true, 5},  // the undated line counts at any date
      {"UND", Date::FromYmd(2025, 6, 1), true, 6},  // the date is inclusive
      {"RALLOC", std::nullopt, true, 5},            // 8 on hand, 3 to supply on a sales order
      {"RALLOC", std::nullopt, false, 8},
      {"DOC", Date::FromYmd(2025, 4, 30), true, -6},  // nothing yet on hand, AR 1, allocated 5
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.item);
    EXPECT_EQ(levels.QuantityAvailableAt(c.item, "", "", c.date, c.exclude_allocated), c.want);
  }
}

TEST_F(StockCompany, TheTaxListKnowsItsCodesAndTheTaxHeldToTheCent) {
  const business::CompanyTax tax(business::TaxValues{}, company_->Database());
  EXPECT_TRUE(tax.TaxCategory(" s "));
  EXPECT_FALSE(tax.TaxCategory("OLD"));
  const struct {
    std::int64_t amount;  // ten-thousandths
    const char* code;
    std::int64_t want;
  } cases[] = {
      {100100, "S", 13100},    // 10.01 holds 1.3057: 1.31
      {1150000, "S", 150000},  // 115.00 holds 15.00
      {300300, "S", 39200},    // 30.03 holds 3.9170: 3.92
      {-100100, "S", -13100},  // half away from zero on both sides
      {230000, "S", 30000},    // 23.00 holds 3.00 exactly
      {100100, "Z", 0},        // a zero rate holds nothing
      {100100, "OLD", 0},      // an unknown code holds nothing
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.amount) + " " + c.code);
    EXPECT_EQ(tax.TaxInclusive(Currency::FromRaw(c.amount), c.code).Raw(), c.want);
  }
  const business::CompanyTax listless(business::TaxValues{});
  EXPECT_FALSE(listless.TaxCategory("S"));
}

TEST_F(StockCompany, AnIssueIsCostedByTheFirstRuleThatFinds) {
  const business::CompanyTax tax(business::TaxValues{}, company_->Database());
  business::CompanyItemCosting costing(company_->Database(), tax);
  const std::optional<Date> june = Date::FromYmd(2025, 6, 30);
  using Rule = ItemCostRule;
  const struct {
    const char* item;
    double quantity;
    std::optional<Date> date;
    const char* location;
    const char* serial;
    bool include_undated;
    std::int64_t want;  // ten-thousandths
    Rule rule;
  } cases[] = {
      // The average: 4 costing 380.00 at MAIN, so 3 cost 285.00; the sign is the quantity's.
      {"WRK", 3, june, "MAIN", "", true, 2850000, Rule::Average},
      {"wrk", -1, june, "", "", true, -950000, Rule::Average},
      // A number at the cost of its own lines, not the item's average (110.00).
      {"SER", -1, june, "MAIN", "A2", true, -1200000, Rule::OwnNumber},
      // Nothing on hand at MAIN: the last purchase, 2 at 25.00, gives 12.50 a unit.
      {"VAR5", 5, june, "MAIN", "", true, 625000, Rule::LastReceipt},
      // Nothing at SHOP2, where no line is, though stock is elsewhere: the last purchase, at
      // any location, at 10.00 a unit.
      {"DOC", 2, june, "SHOP2", "", true, 200000, Rule::LastReceipt},
      // Never bought: the cost price less the tax it holds (11.50 holds 1.50).
      {"TAXC", 2, june, "MAIN", "", true, 200000, Rule::CostPrice},
      // Before its purchase VAR5 has no receipt either: its cost price (no tax code).
      {"VAR5", 1, Date::FromYmd(2025, 3, 31), "", "", true, 100000, Rule::CostPrice},
      // UND's undated line (5 costing 50.00) counts only when asked; left out, nothing was
      // on hand or bought by 31 May.
      {"UND", 1, Date::FromYmd(2025, 5, 31), "", "", true, 100000, Rule::Average},
      {"UND", 1, Date::FromYmd(2025, 5, 31), "", "", false, 100000, Rule::CostPrice},
      // No date: every line; 6 costing 60.00.
      {"UND", 6, std::nullopt, "", "", false, 600000, Rule::Average},
      // No stock kept: the cost price as it stands; no such item: nothing.
      {"LAB", 2, june, "", "", true, 0, Rule::NonStock},
      {"NOSUCH", 2, june, "", "", true, 0, Rule::UnknownItem},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.item) + " x " + std::to_string(c.quantity) + " at '" + c.location +
                 "' number '" + c.serial + "'");
    const ItemCost cost =
        costing.Cost(c.item, c.quantity, c.date, c.location, c.serial, c.include_undated);
    EXPECT_EQ(cost.Value.Raw(), c.want);
    EXPECT_EQ(cost.Rule, c.rule);
  }
}

}  // namespace
}  // namespace trellin::testing
