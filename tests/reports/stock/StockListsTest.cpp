// The stock lists on the demo company: their figures against the stock status and plain sums, and
// golden page dumps of each key and its main variants, read against what each list must print.

#include <gtest/gtest.h>

#include <sqlite3.h>

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

// One number from the demo company read with plain SQL.
double PlainNumber(const std::string& sql) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(DemoCompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* stmt = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK) << sql;
  const double value =
      stmt != nullptr && sqlite3_step(stmt) == SQLITE_ROW ? sqlite3_column_double(stmt, 0) : 0;
  sqlite3_finalize(stmt);
  sqlite3_close(db);
  return value;
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
  EXPECT_NEAR(FooterTotal(movements, "Cost"),
              PlainNumber("SELECT Sum(Value) FROM glTransaction WHERE AccountId='3110'") / 10000,
              0.00001)
      << "the stock account";
}

// The texts of one column of plain SQL on the demo company.
std::set<std::string> PlainTexts(const std::string& sql) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(DemoCompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* stmt = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK) << sql;
  std::set<std::string> texts;
  while (stmt != nullptr && sqlite3_step(stmt) == SQLITE_ROW) {
    texts.insert(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
  }
  sqlite3_finalize(stmt);
  sqlite3_close(db);
  return texts;
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
    EXPECT_EQ(printed, PlainTexts("SELECT SerialNumber FROM TransactionLine WHERE LocationId='" +
                                  std::string(location) +
                                  "' AND SerialNumber<>'' AND (DateProcess<'2025-12-01' OR "
                                  "DateProcess IS NULL) GROUP BY ItemId,SerialNumber "
                                  "HAVING Sum(Quantity)<>0"));
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
  ASSERT_EQ(exclusive.size(), static_cast<std::size_t>(PlainNumber("SELECT Count(*) FROM Item")));
  int coded = 0;
  for (const auto& [code, text] : exclusive) {
    // A price with a known tax code carries that category's rate; any other, the company's.
    const double category = PlainNumber(
        "SELECT Coalesce((SELECT Rate FROM TaxCategory WHERE TaxCategoryId=i.SellTaxType1),-1) "
        "FROM Item i WHERE i.ItemId='" +
        code + "'");
    const double rate =
        category >= 0
            ? category
            : PlainNumber("SELECT Value FROM CompanySetting WHERE Section='Tax' AND Key='Rate'");
    coded += category >= 0 ? 1 : 0;
    // Taken out of a price that holds tax, the tax is rounded to the cent once: put back, the
    // price is within that half cent grown by the rate.
    EXPECT_NEAR(Amount(inclusive.at(code)), Amount(text) * (1 + rate / 100), 0.006)
        << code << " at " << rate;
  }
  EXPECT_GT(coded, 0);
}

struct StockListCase {
  const char* name;  // the golden file
  const char* key;
  std::vector<std::string> assignments;
};

TEST_F(StockLists, PageDumps) {
  const StockListCase cases[] = {
      {"ItemList-rope-paint-service", "ItemList", {"ItemCategories=ROPE,PAINT,SERV"}},
      {"ItemList-serial-on-hand-by-category",
       "ItemList",
       {"Kind=2", "ExcludeInactiveItems=True", "Groupings=Item Category", "DateAsAt=30/11/2025",
        "Columns=Code,Description,Unit,Kind,SupplierCode,Cost,Sell,SellInc,OnHand,Value"}},
      {"ItemList-by-supplier-plu",
       "ItemList",
       {"ItemCategories=ENG", "Groupings=Supplier", "OrderBy=PLU",
        "Columns=Code,PLU,Description,Supplier,Active"}},
      {"TransactionListSC-day",
       "TransactionListSC",
       {"DatedFrom=2025-11-28", "DatedTo=2025-11-28"}},
      {"TransactionListSC-serial-by-item",
       "TransactionListSC",
       {"DatedFrom=2025-11-01", "DatedTo=2025-11-30", "ItemCategories=ELEC", "Groupings=Item",
        "Columns=Date,Kind,Type,Reference,Party,Location,Serial,In,Out,Cost,SaleValue"}},
      {"TransactionListSC-summary-by-type",
       "TransactionListSC",
       {"DatedFrom=2025-11-01", "DatedTo=2025-11-30", "Groupings=Transaction Type,Location",
        "Summary=True"}},
      {"ItemAdjustments", "ItemAdjustments", {"DatedFrom=2024-01-01", "DatedTo=2026-03-31"}},
      {"ItemAdjustments-by-item-no-stocktakes",
       "ItemAdjustments",
       {"DatedFrom=2020-01-01", "DatedTo=2026-03-31", "TypeStocktake=False", "Groupings=Item"}},
      {"ItemAdjustments-summary-by-location",
       "ItemAdjustments",
       {"DatedFrom=2020-01-01", "DatedTo=2026-03-31", "Groupings=Location,Item Category",
        "Summary=True", "OrderBy=Item"}},
      {"LocationList", "LocationList", {"DateAsAt=30/11/2025"}},
      {"LocationList-branch-by-description",
       "LocationList",
       {"Branches=AKL", "OrderBy=Description", "DateAsAt=31/03/2024"}},
      {"LocationDetails-on-hand",
       "LocationDetails",
       {"IncludeZeroOnHand=False", "ItemCategories=ELEC,ROPE", "DateAsAt=30/11/2025"}},
      {"LocationDetails-shop-shelf-by-description",
       "LocationDetails",
       {"Locations=SHOP", "Shelf=B1,B10,B15", "OrderBy=Description", "DateAsAt=30/11/2025"}},
      {"SCPriceChange-percent-rounded",
       "SCPriceChange",
       {"ItemCategories=SAFE", "ExcludeInactiveItems=True", "Change=7.5", "RoundTo=0.50",
        "Groupings=Item Category"}},
      {"SCPriceChange-markup-on-cost",
       "SCPriceChange",
       {"ItemCategories=ROPE", "Method=Markup on cost", "Change=60", "RoundTo=0.05"}},
      {"ItemPriceList-rope", "ItemPriceList", {"ItemCategories=ROPE"}},
      {"ItemPriceList-both-special-cost",
       "ItemPriceList",
       {"ItemCategories=SAFE,ENG", "Prices=Both", "CustomerTypes=COMP", "ShowCost=True",
        "Groupings=Item Category [Page Break]"}},
      {"ItemPriceList-inclusive-by-description",
       "ItemPriceList",
       {"ItemCategories=PAINT", "Prices=Including tax", "Groupings=", "OrderBy=Description",
        "ExcludeInactiveItems=False"}},
      {"SerialNumbers-item", "SerialNumbers", {"Items=ELC149"}},
      {"StockSheets-electronics-shown",
       "StockSheets",
       {"Locations=MAIN,BR2", "ItemCategories=ELEC,PAINT", "ShowQuantityOnHand=True",
        "DateAsAt=30/11/2025"}},
      {"StockSheets-blind-on-hand-by-description",
       "StockSheets",
       {"Locations=BR2", "ItemCategories=SAFE,ROPE", "IncludeZeroOnHand=False", "BlankLines=2",
        "OrderBy=Description", "DateAsAt=30/11/2025"}},
      {"SerialNumbers-in-stock-summary",
       "SerialNumbers",
       {"Items=ELC148,ENG100", "InStockOnly=True", "Summary=True"}},
      {"SerialNumbers-batch-at-a-location-by-date",
       "SerialNumbers",
       {"Items=FLR137", "Locations=BR2", "DatedFrom=2025-10-01", "DatedTo=2025-11-30",
        "OrderBy=Date"}},
  };
  for (const StockListCase& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    ExpectGolden("stock", c.name, Join(pages, "\n"));
  }
}

}  // namespace
}  // namespace trellin::reports::testing
