// The order, delivery and saved-document lists end to end on the demo company: their golden runs
// (golden_orders.tsv) and the checks of what they print against the books and the stock reports.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>

#include "platform/host/run/RunReport.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class OrdersLists : public DemoReports {};

TEST_F(OrdersLists, PageDumps) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/golden_orders.tsv");
}

// What the order list's lines still expect is what the stock-on-order report shows on order,
// item by item and order by order; and both agree with the like lines' sums in the books.
TEST_F(OrdersLists, OutstandingQuantitiesAgreeWithStockOnOrder) {
  using Expected = std::map<std::string, std::string>;  // "reference item" -> quantity text
  Expected listed;
  const std::string lines =
      Join(RunPages(Open("PurchaseOrderList", {"ShowLines=True", "OutstandingOnly=True"})), "\n");
  for (const DumpRow& row : RowsOf(lines, "Detail")) {
    const std::string outstanding = row.at("txtOutstandingQty").second;
    if (outstanding == "0.00") continue;
    listed[row.at("txtReference").second + " " + row.at("txtItem").second] = outstanding;
  }
  Expected on_order;
  const std::string stock = Join(RunPages(Open("StockOnOrder", {})), "\n");
  for (const DumpRow& row : RowsOf(stock, "Detail")) {
    on_order[row.at("txtReference").second + " " + row.at("txtCode").second] =
        row.at("txtQuantityRemaining").second;
  }
  EXPECT_FALSE(listed.empty());
  EXPECT_EQ(listed, on_order);

  Expected books;
  BooksSql sql;
  for (const auto& r : sql.Rows(
           "SELECT PurchaseOrder.Reference || ' ' || L.ItemId, printf('%.2f', (SELECT "
           "Sum(P.Quantity) FROM PurchaseOrderLine P WHERE P.PurchaseOrderId=L.PurchaseOrderId "
           "AND P.ItemId=L.ItemId AND P.UnitPrice=L.UnitPrice AND P.LocationId=L.LocationId)) "
           "FROM PurchaseOrderLine L JOIN PurchaseOrder ON "
           "PurchaseOrder.PurchaseOrderId=L.PurchaseOrderId WHERE L.TransactionLineId IS NULL")) {
    if (r[1] != "0.00") books[r[0]] = r[1];
  }
  EXPECT_EQ(listed, books);
}

// Each batch's total is the sum of its documents' values as saved, a credit note's turned round:
// the lines' value and tax, summed through the document and party footers, must come to it.
TEST_F(OrdersLists, SavedBatchTotalIsItsDocumentsSum) {
  BooksSql sql;
  for (const char* key : {"SavedTransactionListAR", "SavedTransactionListAP"}) {
    SCOPED_TRACE(key);
    const std::string dump = Join(RunPages(Open(key, {})), "\n");
    std::vector<Currency> printed;
    for (const DumpRow& row : RowsOf(dump, "GroupFooter")) {
      if (row.count("GroupFooter3SummaryTotal") != 0) {
        printed.push_back(DumpedAmount(row, "GroupFooter3SummaryTotal"));
      }
    }
    const std::string range = std::string(key).back() == 'R' ? "30 AND 39" : "20 AND 29";
    std::vector<Currency> books;
    for (const std::string& id : sql.Texts("SELECT acBatchSId FROM acBatchHeader WHERE Type "
                                           "BETWEEN " +
                                           range + " ORDER BY acBatchSId")) {
      books.push_back(
          sql.Money("SELECT Sum(CASE WHEN Type IN (21,31) THEN -Value ELSE Value END) FROM "
                    "acBatchTransaction WHERE acBatchSId=" +
                    id));
    }
    EXPECT_FALSE(books.empty());
    EXPECT_EQ(printed, books);
  }
}

void Execute(const std::string& path, const std::string& sql) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
  char* message = nullptr;
  const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message);
  const std::string error = message != nullptr ? message : "";
  sqlite3_free(message);
  sqlite3_close(db);
  ASSERT_EQ(rc, SQLITE_OK) << error;
}

// The commit list warns under its batch of lines it could not post: none on the demo company;
// on a copy whose latest batch has one line of an item not on file and two with no tax
// category, those counts.
TEST_F(OrdersLists, CommitListWarnsOfLinesWithNoAccountOrTaxCategory) {
  auto warnings = [](const std::string& dump) {
    std::vector<std::string> found;
    for (const std::string& text : PrintedTexts(dump)) {
      if (text.find("Lines without") != std::string::npos) found.push_back(text);
    }
    return found;
  };
  EXPECT_TRUE(warnings(Join(RunPages(Open("InvoiceCommitBatch", {})), "\n")).empty());

  namespace fs = std::filesystem;
  const fs::path folder =
      fs::temp_directory_path() / ("trellin-commit-" + std::to_string(getpid()));
  fs::create_directories(folder);
  const std::string path = (folder / "commit.db").string();
  fs::copy_file(DemoCompanyPath(), path, fs::copy_options::overwrite_existing);
  // The first three lines of the latest batch: the item of the first, the tax category of the
  // next two (one blank, one not on file).
  auto nth_line = [](int n) {
    return "(SELECT L.rowid FROM acBatchTransactionLine L JOIN acBatchTransaction T ON "
           "T.acBatchTransactionId=L.acBatchTransactionId WHERE T.acBatchSId=(SELECT "
           "Max(acBatchSId) FROM acBatchHeader) ORDER BY L.rowid LIMIT 1 OFFSET " +
           std::to_string(n) + ")";
  };
  Execute(path,
          "UPDATE acBatchTransactionLine SET ItemId='GONE' WHERE rowid=" + nth_line(0) +
              ";UPDATE acBatchTransactionLine SET TaxCategory=NULL WHERE rowid=" + nth_line(1) +
              ";UPDATE acBatchTransactionLine SET TaxCategory='NOSUCH' WHERE rowid=" + nth_line(2));
  {
    std::unique_ptr<host::ReportService> service = host::ReportService::Open(path);
    const std::string dump =
        Join(DumpPages(OpenWithValues(*service, "InvoiceCommitBatch", {})), "\n");
    const std::vector<std::string> found = warnings(dump);
    ASSERT_EQ(found.size(), 1u) << dump;
    EXPECT_NE(found[0].find("Lines without an account: 1. Lines without a tax category: 2."),
              std::string::npos)
        << found[0];
  }
  fs::remove_all(folder);
}

}  // namespace
}  // namespace trellin::reports::testing
