// The stock reports on the demo company: their figures against plain SQL and the stock account,
// and golden page dumps of each key with its groupings, summary mode and options, read against
// what each must print (golden_runs.tsv).

#include <gtest/gtest.h>

#include <map>
#include <regex>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/reports/stock/StockCompany.h"

namespace trellin::reports::testing {
namespace {

// The demo company read with plain SQL, beside the reports, as pairs of a text key and a number.
class PlainSql : public BooksSql {
 public:
  [[nodiscard]] std::vector<std::pair<std::string, double>> Pairs(const std::string& sql) const {
    std::vector<std::pair<std::string, double>> pairs;
    for (const std::vector<std::string>& row : Rows(sql)) {
      pairs.emplace_back(row.at(0), row.at(1).empty() ? 0.0 : std::stod(row.at(1)));
    }
    return pairs;
  }
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

// The figures of `control` in the dumped rows, by item code.
std::map<std::string, double> Column(const std::map<std::string, DumpRow>& rows,
                                     const std::string& control) {
  std::map<std::string, double> column;
  for (const auto& [code, row] : rows) column[code] = NumberIn(row, control);
  return column;
}

// "dd/mm/yyyy" of an ISO date.
std::string Dmy(const std::string& iso) {
  return iso.substr(8, 2) + "/" + iso.substr(5, 2) + "/" + iso.substr(0, 4);
}

TEST_F(StockDemo, MovementTiesToPlainSumsTheStockStatusAndTheStockAccount) {
  const PlainSql sql;
  struct Period {
    const char* from;  // "" for ALL
    const char* to;
  };
  for (const Period& period : {Period{"", "2025-11-30"}, Period{"2025-07-01", "2025-10-31"}}) {
    const bool all = std::string(period.from).empty();
    SCOPED_TRACE(all ? std::string("ALL") : std::string(period.from) + " to " + period.to);
    const std::vector<std::string> dates =
        all ? std::vector<std::string>{"Period=ALL"}
            : std::vector<std::string>{"Period=Custom", "PeriodDateFrom=" + Dmy(period.from),
                                       "PeriodDateTo=" + Dmy(period.to)};
    const std::string day_after = "date('" + std::string(period.to) + "','+1 day')";
    const std::string stock =
        " FROM TransactionLine l JOIN Item i ON i.ItemId=l.ItemId WHERE i.Inventory<>0";
    const std::string in_period =
        all ? stock
            : stock + " AND l.DateProcess>='" + period.from + "' AND l.DateProcess<" + day_after;
    for (const bool quantity : {false, true}) {
      SCOPED_TRACE(quantity ? "quantity" : "value");
      std::vector<std::string> assignments = dates;
      assignments.push_back(quantity ? "ShowQuantity=True" : "ShowQuantity=False");
      assignments.push_back("IncludeZeroMovement=True");
      const std::vector<std::string> pages = RunPages(Open("StockMovement", assignments));
      const std::map<std::string, DumpRow> rows = ByCode(pages);
      ASSERT_GT(rows.size(), 50u);
      const double scale = quantity ? 1 : kMoney;
      const std::string what = quantity ? "Sum(l.Quantity)" : "Sum(l.ItemCost)";
      const auto plain = [&](const std::string& types) {
        std::map<std::string, double> sums;
        for (const auto& [code, sum] : sql.Pairs("SELECT l.ItemId," + what + in_period + " AND (" +
                                                 types + ") GROUP BY l.ItemId")) {
          sums[code] = sum / scale;
        }
        return sums;
      };
      const auto inwards = plain("l.Type=18 OR l.Type BETWEEN 20 AND 29");
      const auto outwards = plain("l.Type>=30");
      const auto adjustments = plain("l.Type<20 AND l.Type<>18");
      const auto printed_in = Column(rows, "txtInwards");
      const auto printed_out = Column(rows, "txtOutwards");
      const auto printed_adjust = Column(rows, "txtAdjustments");
      const auto printed_open = Column(rows, "txtOpening");
      const auto printed_close = Column(rows, "txtClosing");
      const auto at = [](const std::map<std::string, double>& m, const std::string& code) {
        const auto found = m.find(code);
        return found == m.end() ? 0.0 : found->second;
      };
      for (const auto& [code, row] : rows) {
        SCOPED_TRACE(code);
        EXPECT_NEAR(printed_close.at(code),
                    printed_open.at(code) + printed_in.at(code) - printed_out.at(code) +
                        printed_adjust.at(code),
                    0.001);
        EXPECT_NEAR(printed_in.at(code), at(inwards, code), 0.001);
        EXPECT_NEAR(printed_out.at(code), -at(outwards, code), 0.001);
        EXPECT_NEAR(printed_adjust.at(code), at(adjustments, code), 0.001);
        if (all) {
          EXPECT_EQ(printed_open.at(code), 0);
        }
      }
      // A line never processed is in no dated period (the demo's second item has one), while
      // the stock status and the stock account count it.
      const std::string undated = " AND l.DateProcess IS NULL";
      if (quantity) {
        // Each item's closing is its quantity on hand at the end, its opening that of the day
        // before the start.
        const auto status_at = [&](const std::string& iso) {
          return Column(ByCode(RunPages(Open("StockStatus",
                                             {"DateAsAt=" + Dmy(iso), "IncludeZeroOnHand=True"}))),
                        "txtQuantityOnHand");
        };
        std::map<std::string, double> undated_quantity;
        for (const auto& [code, sum] : sql.Pairs("SELECT l.ItemId,Sum(l.Quantity)" + stock +
                                                 undated + " GROUP BY l.ItemId")) {
          undated_quantity[code] = all ? 0 : sum;
        }
        const auto closing = status_at(period.to);
        for (const auto& [code, q] : printed_close) {
          EXPECT_NEAR(q, at(closing, code) - at(undated_quantity, code), 0.001) << code;
        }
        if (!all) {
          const std::string before =
              sql.Pairs("SELECT date('" + std::string(period.from) + "','-1 day'),0")[0].first;
          const auto opening = status_at(before);
          for (const auto& [code, q] : printed_open) {
            EXPECT_NEAR(q, at(opening, code) - at(undated_quantity, code), 0.001) << code;
          }
        }
      } else {
        std::smatch found;
        const std::string dump = Join(pages, "\n");
        ASSERT_TRUE(
            std::regex_search(dump, found, std::regex("ReportFooterSummaryClosing=(-?[0-9.]+)@")));
        const double account =
            sql.Number("SELECT Sum(Value) FROM glTransaction WHERE AccountId='3110' AND Date<" +
                       day_after) /
            kMoney;
        const double never_processed =
            all ? 0 : sql.Number("SELECT Coalesce(Sum(l.ItemCost),0)" + stock + undated) / kMoney;
        EXPECT_GT(std::abs(account), 1000);
        EXPECT_NEAR(std::stod(found[1]), account - never_processed, 0.00001)
            << "the stock account at the end, less the lines never processed";
      }
    }
  }
}

TEST_F(StockDemo, PageDumps) {
  ExpectGoldenRuns(Service(), "stock", "reports/stock/golden_runs.tsv");
}

}  // namespace
}  // namespace trellin::reports::testing
