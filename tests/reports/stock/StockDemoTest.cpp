// The stock reports on the demo company: their figures against plain SQL and the stock account,
// and golden page dumps of each key with its groupings, summary mode and options, read against
// the reports' definitions.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <map>
#include <regex>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/reports/stock/StockCompany.h"

namespace trellin::reports::testing {
namespace {

// The demo company read with plain SQL, beside the reports.
class PlainSql {
 public:
  PlainSql() { sqlite3_open_v2(DemoCompanyPath().c_str(), &db_, SQLITE_OPEN_READONLY, nullptr); }
  ~PlainSql() { sqlite3_close(db_); }
  PlainSql(const PlainSql&) = delete;
  PlainSql& operator=(const PlainSql&) = delete;

  // Rows of two columns: a text key and a number.
  [[nodiscard]] std::vector<std::pair<std::string, double>> Pairs(const std::string& sql) const {
    std::vector<std::pair<std::string, double>> rows;
    sqlite3_stmt* stmt = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK)
        << sqlite3_errmsg(db_) << "\n"
        << sql;
    while (stmt != nullptr && sqlite3_step(stmt) == SQLITE_ROW) {
      const unsigned char* key = sqlite3_column_text(stmt, 0);
      rows.emplace_back(key ? reinterpret_cast<const char*>(key) : "",
                        sqlite3_column_double(stmt, 1));
    }
    sqlite3_finalize(stmt);
    return rows;
  }
  [[nodiscard]] double Number(const std::string& sql) const {
    const auto rows = Pairs("SELECT '', (" + sql + ")");
    return rows.empty() ? 0 : rows[0].second;
  }

 private:
  sqlite3* db_ = nullptr;
};

constexpr double kMoney = 10000;  // stored ten-thousandths

// The dumped rows of `section` of a run, by the value of their code field.
std::map<std::string, DumpRow> ByCode(const std::vector<std::string>& pages,
                                      const std::string& section = "Detail") {
  std::map<std::string, DumpRow> rows;
  for (DumpRow& row : RowsOf(Join(pages, "\n"), section)) {
    const auto code = row.find("txtCode");
    if (code != row.end()) rows[code->second.second] = std::move(row);
  }
  return rows;
}

class StockDemo : public DemoReports {};

TEST_F(StockDemo, StatusAgreesWithTheStockAccountAndPlainSumsAtEachDate) {
  const PlainSql sql;
  for (const char* date : {"2025-11-30", "2024-03-31", "2021-06-30"}) {
    SCOPED_TRACE(date);
    const std::string dmy =
        std::string(date + 8, 2) + "/" + std::string(date + 5, 2) + "/" + std::string(date, 4);
    const std::vector<std::string> pages = RunPages(Open("StockStatus", {"DateAsAt=" + dmy}));
    const std::string day_after = "date('" + std::string(date) + "','+1 day')";
    const std::string lines =
        " FROM TransactionLine l JOIN Item i ON i.ItemId=l.ItemId WHERE i.Inventory<>0 AND "
        "(l.DateProcess<" +
        day_after + " OR l.DateProcess IS NULL)";
    // The footer's row runs over several lines, its parameters holding line breaks.
    std::smatch found;
    const std::string dump = Join(pages, "\n");
    ASSERT_TRUE(
        std::regex_search(dump, found, std::regex("ReportFooterSummaryValueOnHand=(-?[0-9.]+)@")));
    const double total = std::stod(found[1]);
    EXPECT_NEAR(total, sql.Number("SELECT Sum(ItemCost)" + lines) / kMoney, 0.00001);
    EXPECT_NEAR(total,
                sql.Number("SELECT Sum(Value) FROM glTransaction WHERE AccountId='3110' AND "
                           "Date<" +
                           day_after) /
                    kMoney,
                0.00001)
        << "the stock account at the date";
    const std::map<std::string, DumpRow> rows = ByCode(pages);
    const auto quantities = sql.Pairs("SELECT l.ItemId, Sum(Quantity)" + lines +
                                      " GROUP BY l.ItemId HAVING Round(Sum(Quantity),2)<>0 OR "
                                      "Sum(ItemCost)<>0");
    const auto values = sql.Pairs("SELECT l.ItemId, Sum(ItemCost)" + lines +
                                  " GROUP BY l.ItemId HAVING Round(Sum(Quantity),2)<>0 OR "
                                  "Sum(ItemCost)<>0");
    ASSERT_EQ(rows.size(), quantities.size());
    for (std::size_t i = 0; i < quantities.size(); ++i) {
      const auto row = rows.find(quantities[i].first);
      ASSERT_NE(row, rows.end()) << quantities[i].first;
      EXPECT_NEAR(NumberIn(row->second, "txtQuantityOnHand"), quantities[i].second, 0.001)
          << quantities[i].first;
      EXPECT_NEAR(NumberIn(row->second, "txtValueOnHand"), values[i].second / kMoney, 0.00001)
          << values[i].first;
    }
  }
}

TEST_F(StockDemo, LevelsOnHandAreTheStatusOnHandAndOrdersRemainAsTheirLikeLines) {
  const std::map<std::string, DumpRow> status = ByCode(RunPages(Open("StockStatus", {})));
  const std::map<std::string, DumpRow> level =
      ByCode(RunPages(Open("StockLevel", {"DateAsAt=30/11/2025"})));
  ASSERT_EQ(level.size(), status.size());
  for (const auto& [code, row] : status) {
    ASSERT_EQ(level.count(code), 1u) << code;
    EXPECT_EQ(NumberIn(level.at(code), "txtQuantityOnHand"), NumberIn(row, "txtQuantityOnHand"))
        << code;
  }

  const PlainSql sql;
  const auto want = sql.Pairs(
      "SELECT l.ItemId, (SELECT Round(Sum(p.Quantity),2) FROM PurchaseOrderLine p WHERE "
      "p.PurchaseOrderId=l.PurchaseOrderId AND p.ItemId=l.ItemId AND p.UnitPrice=l.UnitPrice AND "
      "p.LocationId=l.LocationId AND p.DeptId IS l.DeptId AND p.Description=l.Description) AS r "
      "FROM PurchaseOrderLine l JOIN Item i ON i.ItemId=l.ItemId WHERE l.TransactionLineId IS "
      "NULL AND i.Inventory<>0 AND (SELECT Sum(p.Quantity) FROM PurchaseOrderLine p WHERE "
      "p.PurchaseOrderId=l.PurchaseOrderId AND p.ItemId=l.ItemId AND p.LocationId=l.LocationId "
      "AND p.DeptId IS l.DeptId)<>0 ORDER BY l.ItemId, l.PurchaseOrderLineId");
  std::vector<std::pair<std::string, double>> printed;
  for (const DumpRow& row : RowsOf(Join(RunPages(Open("StockOnOrder", {})), "\n"), "Detail")) {
    printed.emplace_back(row.at("txtCode").second, NumberIn(row, "txtQuantityRemaining"));
  }
  ASSERT_FALSE(want.empty());
  EXPECT_EQ(printed, want);
}

struct GoldenCase {
  const char* name;
  const char* key;
  std::vector<std::string> assignments;
};

TEST_F(StockDemo, PageDumps) {
  const std::vector<GoldenCase> cases = {
      {"StockStatus", "StockStatus", {}},
      {"StockStatus-location-shelf",
       "StockStatus",
       {"Groupings=Location,Shelf", "Items=PRT112..PRT123"}},
      {"StockStatus-serial", "StockStatus", {"Groupings=SerialNumber", "Items=ENG100..ENG103"}},
      {"StockStatus-summary-category",
       "StockStatus",
       {"Summary=True", "Groupings=Item Category", "OrderBy=Name"}},
      {"StockLevel-every-option",
       "StockLevel",
       {"DateAsAt=30/11/2025", "OptionAPOpen=True", "OptionAROpen=True", "OptionSalesOrders=True",
        "OptionSalesOrdersToSupply=True", "OptionSalesOrdersLessHeld=True",
        "OptionJobInvoices=True", "OptionJobInvoicesToSupply=True",
        "OptionOptionJobInvoicesLessHeld=True", "OptionPurchaseOrders=True",
        "OptionArrivalDate=True", "OptionValueOnHand=True", "IncludeZeroOnHand=True",
        "Groupings=Location", "Items=PRT112..PRT123,ENG100..ENG103"}},
      {"StockReorder", "StockReorder", {"DateAsAt=30/11/2025"}},
      {"StockReorder-fill",
       "StockReorder",
       {"DateAsAt=30/11/2025", "FillToMaximum=True", "Groupings=Location", "OrderBy=Name",
        "Items=PRT112..PRT123"}},
      {"StockOnOrder", "StockOnOrder", {}},
      {"StockOnOrder-filled",
       "StockOnOrder",
       {"Filled=True", "ShowSupplier=True", "ShowLocation=True", "Groupings=Item,Location",
        "Items=ELC148..ENG111"}},
      {"StockOnOrder-eda",
       "StockOnOrder",
       {"Groupings=EDA", "OrderBy=EDA", "ShowSupplierCode=True"}},
      {"StockOnSalesOrders", "StockOnSalesOrders", {"ShowCustomer=True", "Groupings=Customer"}},
  };
  for (const GoldenCase& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    ExpectGolden("stock", c.name, Join(pages, "\n"));
  }
}

}  // namespace
}  // namespace trellin::reports::testing
