// The stock reports' edge cases on the hand-made stock company: the rows of edges.tsv, and the
// footers, columns and refusals that rows cannot say.

#include <gtest/gtest.h>

#include <fstream>

#include "platform/host/run/RunReport.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/stock/StockCompany.h"
#include "tests/support/TestPaths.h"

namespace trellin::reports::testing {
namespace {

struct EdgeCase {
  int line;
  std::string key;
  std::vector<std::string> assignments;
  std::string code;
  std::vector<std::pair<std::string, std::string>> want;  // empty: the item must not print
};

std::vector<std::string> Parted(const std::string& text) {
  std::vector<std::string> parts;
  for (const std::string& part : Split(text, " | ")) {
    if (!Trim(part).empty()) parts.push_back(Trim(part));
  }
  return parts;
}

std::vector<EdgeCase> ReadEdges() {
  std::ifstream in(trellin::testing::TestDir("reports/stock") / "edges.tsv");
  std::vector<EdgeCase> cases;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.empty() || line[0] == '#') continue;
    const std::vector<std::string> cells = Split(line, "\t");
    EXPECT_EQ(cells.size(), 4u) << "edges.tsv line " << number;
    if (cells.size() != 4) continue;
    EdgeCase c{number, cells[0], Parted(cells[1]), cells[2], {}};
    if (cells[3] != "absent") {
      for (const std::string& pair : Parted(cells[3])) {
        const std::size_t equals = pair.find('=');
        c.want.emplace_back(pair.substr(0, equals), pair.substr(equals + 1));
      }
    }
    cases.push_back(std::move(c));
  }
  return cases;
}

class StockEdges : public StockCompany {};

TEST_F(StockEdges, EachItemPrintsAsItsLinesSay) {
  const std::vector<EdgeCase> cases = ReadEdges();
  ASSERT_GT(cases.size(), 30u);
  for (const EdgeCase& c : cases) {
    SCOPED_TRACE("edges.tsv line " + std::to_string(c.line) + ": " + c.key + " " + c.code + " " +
                 Join(c.assignments, " | "));
    const auto rows = RowsByCode(Run(c.key, c.assignments));
    const auto row = rows.find(c.code);
    if (c.want.empty()) {
      EXPECT_EQ(row, rows.end());
      continue;
    }
    ASSERT_NE(row, rows.end());
    for (const auto& [control, text] : c.want) {
      const auto found = row->second.find(control);
      EXPECT_EQ(found == row->second.end() ? std::string("(no control)") : found->second, text)
          << control;
    }
  }
}

TEST_F(StockEdges, FootersShowUnitCostAndMarginAsRatiosOfTheirSums) {
  // WRK (4 costing 380, sell 800) and INC (3 costing 27, sell 26.11): 407 / 7, 1 - 407 / 826.11.
  const auto pages = Run("StockStatus", {"Items=INC,WRK", "Groupings=Item Category"});
  const auto footers = PrintedRows(pages, "GroupFooter 1");
  ASSERT_EQ(footers.size(), 1u);
  EXPECT_EQ(footers[0].at("GroupFooter1SummaryValueOnHand"), "407.00");
  EXPECT_EQ(footers[0].at("GroupFooter1SummaryUnitCost"), "58.14");
  EXPECT_EQ(footers[0].at("GroupFooter1SummaryMargin"), "50.73");
  // A group whose units net to nothing with value left: unit cost and margin blank.
  const auto zero =
      PrintedRows(Run("StockStatus", {"Items=ZERO", "Groupings=Item Category"}), "GroupFooter 1");
  ASSERT_EQ(zero.size(), 1u);
  EXPECT_EQ(Trim(zero[0].at("GroupFooter1SummaryUnitCost")), "");
  EXPECT_EQ(Trim(zero[0].at("GroupFooter1SummaryMargin")), "");
  EXPECT_EQ(zero[0].at("GroupFooter1SummaryValueOnHand"), "5.00");
}

TEST_F(StockEdges, ASerialGroupingSplitsAnItemByNumberWithItsOwnUnitCost) {
  const auto pages = Run("StockStatus", {"Items=SER", "Groupings=SerialNumber"});
  const auto rows = PrintedRows(pages, "Detail");
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].at("txtSerialNumber"), "A1");
  EXPECT_EQ(rows[0].at("txtUnitCost"), "100.00");
  EXPECT_EQ(rows[1].at("txtSerialNumber"), "A2");
  EXPECT_EQ(rows[1].at("txtUnitCost"), "120.00");
}

TEST_F(StockEdges, StockLevelWithNoOptionShowsOnlyOnHandAllocatedAndAvailable) {
  const auto pages = Run("StockLevel", {"DateAsAt=30/06/2025"});
  const auto row = RowsByCode(pages).at("DOC");
  std::vector<std::string> shown;
  for (const auto& [control, text] : row) shown.push_back(control);
  EXPECT_EQ(Join(shown, ","),
            "txtAllocated,txtCode,txtDescription,txtQuantityAvailable,txtQuantityOnHand");
}

TEST_F(StockEdges, DescriptionsSayWhatTheRunCounted) {
  const std::string level = Join(
      Run("StockLevel", {"DateAsAt=30/06/2025", "OptionSalesOrders=True",
                         "OptionSalesOrdersLessHeld=True", "OptionJobInvoices=True",
                         "OptionOptionJobInvoicesLessHeld=True", "OptionJobInvoicesToSupply=True"}),
      "\n");
  for (const char* line :
       {"Items ordered by Code", "Dated as at 30/06/2025", "Exclude Stock with zero on hand",
        "Sales Orders on Order less Held", "Job Invoices to Supply less Held"}) {
    EXPECT_NE(level.find(line), std::string::npos) << line;
  }
  const std::string status = Join(Run("StockStatus", {"ExcludeInactiveItems=True"}), "\n");
  for (const char* line : {"Dated As At 30/06/2025", "Exclude Inactive Items"}) {
    EXPECT_NE(status.find(line), std::string::npos) << line;
  }
  const std::string reorder = Join(
      Run("StockReorder", {"DateAsAt=30/06/2025", "FillToMaximum=True", "ExcludeOnOrderQty=True"}),
      "\n");
  for (const char* line :
       {"Items Filled to Maximum Level", "On Order quantity excluded from calculation"}) {
    EXPECT_NE(reorder.find(line), std::string::npos) << line;
  }
}

TEST_F(StockEdges, ABadBoundOrAnUnknownGroupingIsRefusedInOneClearLine) {
  const struct {
    const char* key;
    std::vector<std::string> assignments;
    const char* message;
  } cases[] = {
      {"StockStatus",
       {"QuantityOnHandFrom=abc"},
       "Quantity On Hand From: \"abc\" is not a number."},
      {"StockLevel", {"ValueOnHandTo=1..2"}, "Value On Hand To: \"1..2\" is not a number."},
      {"StockStatus",
       {"Groupings=Colour"},
       "Groupings: \"Colour\" is not one of the choices (Item Type, Item Category, Location, "
       "Supplier, Shelf, SerialNumber)."},
      // Item groups the reorder list, not the stock levels.
      {"StockLevel",
       {"Groupings=Item"},
       "Groupings: \"Item\" is not one of the choices (Item Type, Item Category, Location, "
       "Supplier, Shelf, SerialNumber)."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.key);
    EXPECT_EQ(Join(Refusals(c.key, c.assignments), "\n"), c.message);
  }
}

TEST_F(StockEdges, AMovementPeriodThatEndsBeforeItStartsOrAnUnknownGroupingIsOneClearLine) {
  EXPECT_EQ(RunErrors("StockMovement",
                      {"Period=Custom", "PeriodDateFrom=01/07/2025", "PeriodDateTo=30/06/2025"}),
            "ActiveReport_ReportStart: Period Date From: 1/07/2025 is after Period Date To, "
            "30/06/2025.");
  EXPECT_EQ(Join(Refusals("StockMovement", {"Groupings=Shelf"}), "\n"),
            "Groupings: \"Shelf\" is not one of the choices (Department, Item Type, Item Category, "
            "Location, Supplier).");
}

}  // namespace
}  // namespace trellin::reports::testing
