// The stock lists on the demo company: their figures against the stock status and plain sums
// (their golden pages are runs of list_golden_runs.tsv).

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "platform/runtime/Strings.h"
#include "reports/stock/arscPriceChange.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class StockLists : public DemoReports {};

// The printed text of `field` in each detail row of a run, by the row's item code.
std::map<std::string, std::string> TextByCode(const std::vector<std::string>& pages,
                                              const std::string& field) {
  std::map<std::string, std::string> rows;
  for (const DumpRow& row : RowsOf(Join(pages, "\n"), "Detail")) {
    const auto code = row.find("txtCode");
    const auto value = row.find(field);
    if (code != row.end() && value != row.end()) rows[code->second.second] = value->second.second;
  }
  return rows;
}

TEST_F(StockLists, ItemListOnHandAndValueAreTheStockStatusFiguresAtTheSameDate) {
  for (const char* date : {"30/11/2025", "31/03/2024"}) {
    SCOPED_TRACE(date);
    const std::string as_at = std::string("DateAsAt=") + date;
    const auto status = RunPages(Open("StockStatus", {as_at}));
    const auto list =
        RunPages(Open("ItemList", {as_at, "Kind=1,2,3", "Columns=Code,Description,OnHand,Value"}));
    const auto status_quantity = TextByCode(status, "txtQuantityOnHand");
    const auto status_value = TextByCode(status, "txtValueOnHand");
    const auto list_quantity = TextByCode(list, "txtOnHand");
    const auto list_value = TextByCode(list, "txtValue");
    ASSERT_FALSE(status_quantity.empty());
    ASSERT_GE(list_quantity.size(), status_quantity.size());
    for (const auto& [code, quantity] : list_quantity) {
      // The status leaves out what has nothing on hand; the list prints it as nothing.
      const auto found = status_quantity.find(code);
      EXPECT_EQ(quantity, found == status_quantity.end() ? "0.00" : found->second) << code;
      const auto value = status_value.find(code);
      EXPECT_EQ(list_value.at(code), value == status_value.end() ? "0.00" : value->second) << code;
    }
  }
}

// The report footer's total of `column` in a dump, as dumped.
double FooterTotal(const std::string& dump, const std::string& column) {
  std::smatch found;
  EXPECT_TRUE(std::regex_search(dump, found,
                                std::regex("ReportFooterSummary" + column + "=(-?[0-9.]+)[ @]")))
      << column;
  return found.empty() ? 0 : std::stod(found[1]);
}

TEST_F(StockLists, TransactionListOverAllDatesGivesTheStockOnHandAndTheStockAccount) {
  const std::string movements = Join(
      RunPages(Open("TransactionListSC", {"DatedFrom=", "DatedTo=", "Summary=True",
                                          "Groupings=Item Category", "Columns=Item,In,Out,Cost"})),
      "\n");
  const std::string status =
      Join(RunPages(Open("StockStatus", {"DateAsAt=31/12/2099", "IncludeZeroOnHand=True",
                                         "Summary=True", "Groupings=Item Category"})),
           "\n");
  EXPECT_NEAR(FooterTotal(movements, "In") - FooterTotal(movements, "Out"),
              FooterTotal(status, "QuantityOnHand"), 0.001);
  EXPECT_NEAR(FooterTotal(movements, "Cost"), FooterTotal(status, "ValueOnHand"), 0.00001);
  // Lines with no process date count too: the stock account holds every one of them.
  EXPECT_NEAR(
      FooterTotal(movements, "Cost"),
      BooksSql().Number("SELECT Sum(Value) FROM glTransaction WHERE AccountId='3110'") / 10000,
      0.00001)
      << "the stock account";
}

TEST_F(StockLists, EachLocationsSheetListsExactlyTheNumbersOnHandThere) {
  for (const char* location : {"MAIN", "BR2", "SHOP"}) {
    SCOPED_TRACE(location);
    const std::string dump =
        Join(RunPages(Open("StockSheets", {std::string("Locations=") + location,
                                           "DateAsAt=30/11/2025", "BlankLines=0"})),
             "\n");
    std::set<std::string> printed;
    for (const std::string& text : TextsOf(dump, "txtNumbers")) {
      std::istringstream words(text);
      for (std::string word; words >> word;) printed.insert(word);
    }
    // A number stays on hand while its lines there add up to anything; unprocessed lines count.
    const std::vector<std::string> on_hand = BooksSql().Texts(
        "SELECT SerialNumber FROM TransactionLine WHERE LocationId='" + std::string(location) +
        "' AND SerialNumber<>'' AND (DateProcess<'2025-12-01' OR "
        "DateProcess IS NULL) GROUP BY ItemId,SerialNumber "
        "HAVING Sum(Quantity)<>0");
    EXPECT_EQ(printed, std::set<std::string>(on_hand.begin(), on_hand.end()));
  }
}

// New prices by method, rounded to a step: the cases on either side of a half step.
TEST(StockListRules, NewPricesRoundToTheNearestStepHalfAwayFromZero) {
  struct Case {
    PriceChangeMethod method;
    double change;
    const char* current;
    const char* cost;
    const char* round_to;
    const char* expected;
  };
  const Case cases[] = {
      {PriceChangeMethod::Amount, 0, "10.02", "0", "0.05", "10.00"},   // below the half
      {PriceChangeMethod::Amount, 0, "10.025", "0", "0.05", "10.05"},  // the half goes up
      {PriceChangeMethod::Amount, 0, "10.074", "0", "0.05", "10.05"},  // just under 10.075
      {PriceChangeMethod::Amount, 0, "10.075", "0", "0.05", "10.10"},
      {PriceChangeMethod::Amount, -20.05, "10.00", "0", "0.05", "-10.05"},  // away from zero
      {PriceChangeMethod::Amount, -20.02, "10.00", "0", "0.05", "-10.00"},
      {PriceChangeMethod::Percent, 10, "19.99", "0", "None", "21.99"},  // 21.989 to the cent
      {PriceChangeMethod::Percent, 10, "19.99", "0", "0.50", "22.00"},
      {PriceChangeMethod::Percent, -10, "12.34", "0", "0.10", "11.10"},          // 11.106
      {PriceChangeMethod::MarkupOnCost, 50, "99.00", "13.37", "1.00", "20.00"},  // 20.055
      {PriceChangeMethod::MarkupOnCost, 50, "99.00", "13.37", "None", "20.06"},
  };
  for (const Case& c : cases) {
    const Currency round_to = Currency::Parse(c.round_to).value_or(Currency());
    EXPECT_EQ(NewPrice(c.method, c.change, *Currency::Parse(c.current), *Currency::Parse(c.cost),
                       round_to),
              *Currency::Parse(c.expected))
        << c.current << " " << c.change << " to " << c.round_to;
  }
}

// A printed amount as a number: "1,234.50" or "(1.00)".
double Amount(std::string text) {
  const bool negative = !text.empty() && text.front() == '(';
  std::string digits;
  for (char c : text) {
    if ((c >= '0' && c <= '9') || c == '.') digits += c;
  }
  const double value = digits.empty() ? 0 : std::stod(digits);
  return negative ? -value : value;
}

TEST_F(StockLists, PriceListInclusivePricesAreTheExclusiveOnesWithTheirCategorysTaxToTheCent) {
  const auto pages = RunPages(Open("ItemPriceList", {"Prices=Both", "ExcludeInactiveItems=False",
                                                     "Groupings=", "Columns=Code,Price,PriceInc"}));
  const auto exclusive = TextByCode(pages, "txtPrice");
  const auto inclusive = TextByCode(pages, "txtPriceInc");
  ASSERT_EQ(exclusive.size(),
            static_cast<std::size_t>(BooksSql().Number("SELECT Count(*) FROM Item")));
  int coded = 0;
  for (const auto& [code, text] : exclusive) {
    // A price with a known tax code carries that category's rate; any other, the company's.
    const double category = BooksSql().Number(
        "SELECT Coalesce((SELECT Rate FROM TaxCategory WHERE TaxCategoryId=i.SellTaxType1),-1) "
        "FROM Item i WHERE i.ItemId='" +
        code + "'");
    const double rate =
        category >= 0 ? category
                      : BooksSql().Number(
                            "SELECT Value FROM CompanySetting WHERE Section='Tax' AND Key='Rate'");
    coded += category >= 0 ? 1 : 0;
    // Taken out of a price that holds tax, the tax is rounded to the cent once: put back, the
    // price is within that half cent grown by the rate.
    EXPECT_NEAR(Amount(inclusive.at(code)), Amount(text) * (1 + rate / 100), 0.006)
        << code << " at " << rate;
  }
  EXPECT_GT(coded, 0);
}

// Without carried costs the item adjustments are the stock movement's Adjustments column, in
// quantity and in value, over the same period.
TEST_F(StockLists, ItemAdjustmentsWithoutCarryCostAreTheMovementsAdjustments) {
  const std::string adjustments =
      Join(RunPages(Open("ItemAdjustments",
                         {"DatedFrom=2020-01-01", "DatedTo=2025-11-30", "Items=PRT100..PRT130",
                          "TypeCarryCost=False", "Summary=True", "Groupings=Item Category"})),
           "\n");
  for (const bool quantity : {true, false}) {
    const std::string movement =
        Join(RunPages(Open("StockMovement",
                           {"Period=Custom", "PeriodDateFrom=01/01/2020", "PeriodDateTo=30/11/2025",
                            "Items=PRT100..PRT130", "Summary=True", "Groupings=Supplier",
                            std::string("ShowQuantity=") + (quantity ? "True" : "False")})),
             "\n");
    EXPECT_NEAR(FooterTotal(adjustments, quantity ? "Quantity" : "Value"),
                FooterTotal(movement, "Adjustments"), 0.001)
        << (quantity ? "quantity" : "value");
  }
  EXPECT_NE(FooterTotal(adjustments, "Value"), 0);
}

// An item card's stock line ("4.00 on hand at 30/11/2025, value 13,492.58") is the item list's
// figures at the same date, and its locations' stock adds up to it.
TEST_F(StockLists, ItemDetailsStockIsTheItemListsAndItsLocationsAddUp) {
  const std::string as_at = "DateAsAt=30/11/2025";
  const std::string categories = "ItemCategories=ELEC,SAFE";
  const auto list = RunPages(
      Open("ItemList", {as_at, categories, "Kind=1,2,3", "Columns=Code,Description,OnHand,Value"}));
  const auto quantity = TextByCode(list, "txtOnHand");
  const auto value = TextByCode(list, "txtValue");
  const std::string cards = Join(RunPages(Open("ItemDetails", {as_at, categories})), "\n");
  // A card's row, then its locations' rows, up to the next card.
  static const std::regex card(R"re(row Detail Detail txtCode="([^"]+)")re");
  static const std::regex stock(R"re(txtStock="(\S+) on hand at 30/11/2025, value (\S+)")re");
  static const std::regex located(
      R"re(row Detail Detail txtLocation=.* txtOnHand=\S+ "([^"]*)")re");
  std::vector<std::pair<std::string, std::size_t>> starts;
  for (auto it = std::sregex_iterator(cards.begin(), cards.end(), card);
       it != std::sregex_iterator(); ++it) {
    starts.emplace_back((*it)[1], it->position());
  }
  ASSERT_EQ(starts.size(), quantity.size());
  for (std::size_t i = 0; i < starts.size(); ++i) {
    const auto& [code, at] = starts[i];
    const std::string text =
        cards.substr(at, (i + 1 < starts.size() ? starts[i + 1].second : cards.size()) - at);
    std::smatch found;
    ASSERT_TRUE(std::regex_search(text, found, stock)) << code;
    EXPECT_EQ(found[1], quantity.at(code)) << code;
    EXPECT_EQ(found[2], value.at(code)) << code;
    double at_locations = 0;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), located);
         it != std::sregex_iterator(); ++it) {
      at_locations += Amount((*it)[1]);
    }
    EXPECT_NEAR(at_locations, Amount(quantity.at(code)), 0.001) << code;
  }
}

TEST_F(StockLists, PageDumps) {
  ExpectGoldenRuns(Service(), "stock", "reports/stock/list_golden_runs.tsv");
}

}  // namespace
}  // namespace trellin::reports::testing
