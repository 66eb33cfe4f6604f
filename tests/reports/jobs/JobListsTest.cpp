// The job lists on the demo company: the jobs a list prints against the books, each once, and
// golden page dumps of each key and its main variants (golden_runs.tsv), read against what each
// must print.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class JobLists : public DemoReports {};

TEST_F(JobLists, Goldens) { ExpectGoldenRuns(Service(), "jobs", "reports/jobs/golden_runs.tsv"); }

// The printed codes of a run's detail rows, in order.
std::vector<std::string> Codes(const std::vector<std::string>& pages) {
  std::vector<std::string> codes;
  for (const DumpRow& row : RowsOf(Join(pages, "\n"), "Detail")) {
    if (auto code = row.find("txtCode"); code != row.end()) codes.push_back(code->second.second);
  }
  return codes;
}

TEST_F(JobLists, ListAndStatusReportPrintEachChargedJobOfTheStatusesAndDatesOnce) {
  const BooksSql sql;
  // Jobs with a second contact, not charged: they must still print once.
  ASSERT_FALSE(sql.Texts("SELECT JobId FROM JobContact GROUP BY JobId HAVING Count(*)>1").empty());
  struct Case {
    std::vector<std::string> values;
    const char* where;
  };
  const Case cases[] = {
      {{}, ""},
      {{"StatusClosed=False", "StatusCompleted=False"},
       " AND Job.Status IN ('Open','Costing','Hold','Template')"},
      {{"OpenedDateFrom=1/01/2025", "OpenedDateTo=31/12/2025", "StatusTemplate=False"},
       " AND Job.DateOpened BETWEEN '2025-01-01' AND '2025-12-31' AND Job.Status<>'Template'"},
      {{"ClosedDateTo=30/06/2021"}, " AND Job.DateClosed<='2021-06-30'"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Join(c.values, " "));
    const std::vector<std::string> printed = Codes(RunPages(Open("JobList", c.values)));
    const std::vector<std::string> books = sql.Texts(
        std::string("SELECT Job.JobId FROM Job JOIN JobContact ON Job.JobId=JobContact.JobId "
                    "WHERE JobContact.Charge=1") +
        c.where + " ORDER BY Job.JobId");
    ASSERT_FALSE(books.empty());
    EXPECT_EQ(printed, books);
    // The status report lists exactly the jobs the list does, under the same filter.
    EXPECT_EQ(Codes(RunPages(Open("JobStatusReport", c.values))), books);
  }
}

// "PO" stands among a job's outstanding kinds exactly when its purchase order lines do not net to
// nothing: a job whose order was taken up again shows none, one still on order shows it.
TEST_F(JobLists, AnOrderWhoseLinesNetToNothingIsNotOutstanding) {
  const BooksSql sql;
  const std::string by_job =
      "SELECT o.JobId FROM PurchaseOrder o JOIN PurchaseOrderLine l ON l.PurchaseOrderId = "
      "o.PurchaseOrderId WHERE o.JobId IS NOT NULL AND o.TransactionTypeId = 'PO' GROUP BY o.JobId "
      "HAVING ";
  const std::vector<std::string> netted =
      sql.Texts(by_job + "Count(*) > 1 AND Sum(l.Quantity) = 0 AND Sum(l.Value) = 0");
  const std::vector<std::string> on_order =
      sql.Texts(by_job + "Sum(l.Quantity) <> 0 OR Sum(l.Value) <> 0");
  ASSERT_FALSE(netted.empty());
  ASSERT_FALSE(on_order.empty());
  std::map<std::string, std::string> outstanding;
  for (const DumpRow& row : RowsOf(Join(RunPages(Open("JobStatusReport", {})), "\n"), "Detail")) {
    auto code = row.find("txtCode");
    auto kinds = row.find("txtOutStanding");
    if (code != row.end() && kinds != row.end()) {
      outstanding[code->second.second] = kinds->second.second;
    }
  }
  const auto has_po = [&](const std::string& job) {
    const std::vector<std::string> kinds = Split(outstanding.at(job), ", ");
    return std::find(kinds.begin(), kinds.end(), "PO") != kinds.end();
  };
  for (const std::string& job : netted) EXPECT_FALSE(has_po(job)) << job;
  for (const std::string& job : on_order) {
    if (outstanding.count(job) != 0) EXPECT_TRUE(has_po(job)) << job;
  }
}

TEST_F(JobLists, SheetsAndCardsTakeEachChargedJobOnceASheetAPage) {
  const BooksSql sql;
  const std::string charged =
      "SELECT Job.JobId FROM Job JOIN JobContact ON Job.JobId=JobContact.JobId WHERE "
      "JobContact.Charge=1";
  // The sheets go to the jobs still to be worked on, a page each, one job's code on it.
  const std::vector<std::string> sheets = RunPages(Open("JobSheets", {}));
  const std::vector<std::string> open_jobs =
      sql.Texts(charged + " AND Job.Status IN ('Open','Costing','Hold') ORDER BY Job.JobId");
  ASSERT_FALSE(open_jobs.empty());
  EXPECT_EQ(Codes(sheets), open_jobs);
  for (const std::string& page : sheets) EXPECT_LE(Codes({page}).size(), 1U);
  EXPECT_GE(sheets.size(), open_jobs.size());
  // The cards of every job, each once, with each of its contacts named on it.
  const std::string cards = Join(RunPages(Open("JobDetails", {"ShowOpen=True"})), "\n");
  EXPECT_EQ(Codes({cards}), sql.Texts(charged + " ORDER BY Job.JobId"));
  // A card's cells run over several lines of the dump, up to the next row (its documents').
  std::map<std::string, std::string> contacts;
  const std::string head = "row Detail Detail txtCode=\"";
  for (std::size_t at = cards.find(head); at != std::string::npos; at = cards.find(head, at + 1)) {
    const std::size_t code = at + head.size();
    const std::size_t end = cards.find("\nrow ", at);
    contacts[cards.substr(code, cards.find('"', code) - code)] = cards.substr(at, end - at);
  }
  const auto pairs = sql.Rows("SELECT JobId,OtherPartyId FROM JobContact");
  ASSERT_GT(pairs.size(), contacts.size());
  for (const auto& pair : pairs) {
    EXPECT_NE(contacts[pair[0]].find(pair[1]), std::string::npos) << pair[0] << " " << pair[1];
  }
}

TEST_F(JobLists, InvoiceBatchListTakesEveryJobInvoiceOnceWithItsLinesSums) {
  const BooksSql sql;
  const std::string dump = Join(RunPages(Open("JobInvoiceBatchList", {})), "\n");
  std::int64_t charges = 0;
  std::int64_t tax = 0;
  for (const DumpRow& row : RowsOf(dump, "ReportFooter")) {
    charges += DumpedAmount(row, "ReportFooterSummaryCharges").Raw();
    tax += DumpedAmount(row, "ReportFooterSummaryTax").Raw();
  }
  const std::string lines =
      " FROM acBatchHeader h JOIN acBatchTransaction t ON h.acBatchSId=t.acBatchSId JOIN "
      "acBatchTransactionLine l ON l.acBatchTransactionId=t.acBatchTransactionId WHERE h.Type=42";
  EXPECT_NE(charges, 0);
  EXPECT_EQ(charges, sql.Money("SELECT Sum(l.Value)" + lines).Raw());
  EXPECT_EQ(tax, sql.Money("SELECT Sum(l.TaxValue)" + lines).Raw());
  EXPECT_EQ(RowsOf(dump, "Detail").size(),
            sql.Texts("SELECT t.Reference FROM acBatchHeader h JOIN acBatchTransaction t ON "
                      "h.acBatchSId=t.acBatchSId WHERE h.Type=42")
                .size());
}

}  // namespace
}  // namespace trellin::reports::testing
