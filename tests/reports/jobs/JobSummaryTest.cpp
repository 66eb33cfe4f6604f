// The job summary on the demo company: each job's figures against plain SQL over its lines, the
// footers against their jobs, which lines print for which options, the filter's edges, and a job
// that cannot be read.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>

#include "core/ListDesigner.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Strings.h"
#include "reports/jobs/arJobSummary.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/TempFolder.h"

namespace trellin::reports::testing {
namespace {

class JobSummary : public DemoReports {};

// The detail rows of a run, by job code.
std::map<std::string, DumpRow> JobRows(const std::vector<std::string>& pages) {
  std::map<std::string, DumpRow> rows;
  for (const DumpRow& row : RowsOf(Join(pages, "\n"), "Detail")) {
    if (auto code = row.find("txtJobId"); code != row.end()) rows[code->second.second] = row;
  }
  return rows;
}

// The fraction a dumped percent field holds; NaN when it did not print.
double DumpedFraction(const DumpRow& row, const std::string& name) {
  const auto found = row.find(name);
  if (found == row.end()) return std::nan("");
  return std::stod(found->second.first);
}

const std::vector<std::string> kEveryLine = {"ShowActual=True", "ShowOpen=True", "ShowBudget=True"};

// A job's posted and open figures, summed by plain SQL over its lines: charges net of discount,
// stock cost of its sales, its supplier lines, its open job invoice lines.
constexpr const char* kBooksSql =
    "SELECT Job.JobId,"
    "(SELECT -Sum(L.Value) FROM Transactions T JOIN TransactionLine L ON "
    "T.TransactionId=L.TransactionId WHERE T.JobId=Job.JobId AND L.Type IN (30,31)),"
    "(SELECT -Sum(L.ItemCost) FROM Transactions T JOIN TransactionLine L ON "
    "T.TransactionId=L.TransactionId JOIN Item I ON I.ItemId=L.ItemId WHERE T.JobId=Job.JobId "
    "AND L.Type IN (30,31) AND I.Inventory<>0),"
    "(SELECT Sum(L.Value) FROM Transactions T JOIN TransactionLine L ON "
    "T.TransactionId=L.TransactionId WHERE T.JobId=Job.JobId AND L.Type IN (20,21)),"
    "(SELECT Sum(L.Value) FROM acBatchTransaction T JOIN acBatchTransactionLine L ON "
    "T.acBatchTransactionId=L.acBatchTransactionId WHERE T.JobId=Job.JobId AND L.Type=42),"
    "(SELECT -Sum(L.ItemCost) FROM Transactions T JOIN TransactionLine L ON "
    "T.TransactionId=L.TransactionId WHERE T.JobId=Job.JobId AND L.Type=43),"
    "(SELECT -Sum(Round(L.Quantity*I.CostPrice/100.0)*100) FROM Transactions T JOIN "
    "TransactionLine L ON T.TransactionId=L.TransactionId JOIN Item I ON I.ItemId=L.ItemId "
    "WHERE T.JobId=Job.JobId AND L.Type IN (30,31) AND I.Inventory=0),"
    "(SELECT Sum(Round(L.Quantity*I.CostPrice/100.0)*100) FROM acBatchTransaction T JOIN "
    "acBatchTransactionLine L ON T.acBatchTransactionId=L.acBatchTransactionId JOIN Item I ON "
    "I.ItemId=L.ItemId WHERE T.JobId=Job.JobId AND L.Type=42 AND I.Inventory=0)"
    " FROM Job JOIN JobContact ON Job.JobId=JobContact.JobId WHERE JobContact.Charge=1 ORDER BY "
    "Job.JobId";

// Runs `sql` on the company file at `path`.
void ChangeCompany(const std::string& path, const std::string& sql) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
  char* message = nullptr;
  const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message);
  const std::string error = message != nullptr ? message : "";
  sqlite3_free(message);
  sqlite3_close(db);
  ASSERT_EQ(rc, SQLITE_OK) << error;
}

// The money the one field `name` of a dump holds ("name=1234.5@"), wherever its row runs.
Currency DumpedMoney(const std::string& dump, const std::string& name) {
  const std::size_t at = dump.find(" " + name + "=");
  if (at == std::string::npos) return {};
  const std::size_t from = at + name.size() + 2;
  return Currency::FromDouble(std::stod(dump.substr(from, dump.find('@', from) - from)));
}

Currency Stored(const std::string& text) {
  return text.empty() ? Currency() : Currency::FromRaw(std::stoll(text));
}

TEST_F(JobSummary, EachJobsFiguresAreThePlainSumsOfItsLines) {
  const BooksSql sql;
  const std::map<std::string, DumpRow> printed = JobRows(RunPages(Open("JobSummary", kEveryLine)));
  const auto books = sql.Rows(kBooksSql);
  ASSERT_EQ(printed.size(), books.size());
  int discounted = 0;
  int disbursed = 0;
  int open = 0;
  for (const std::vector<std::string>& job : books) {
    SCOPED_TRACE(job[0]);
    const auto row = printed.find(job[0]);
    ASSERT_NE(row, printed.end());
    const DumpRow& r = row->second;
    const Currency charges = Stored(job[1]);
    const Currency other = Stored(job[6]) + Stored(job[5]);
    EXPECT_EQ(DumpedAmount(r, "txtActualCharges"), charges);
    EXPECT_EQ(DumpedAmount(r, "txtActualCosts"), Stored(job[2]));
    EXPECT_EQ(DumpedAmount(r, "txtActualPurchases"), Stored(job[3]));
    EXPECT_EQ(DumpedAmount(r, "txtActualOther"), other);
    EXPECT_EQ(DumpedAmount(r, "txtOpenCharges"), Stored(job[4]));
    const Currency total = Stored(job[2]) + Stored(job[3]) + other;
    EXPECT_EQ(DumpedAmount(r, "txtActualTotal"), total);
    EXPECT_EQ(DumpedAmount(r, "txtActualProfit"), charges - total);
    // The Total line's Other is the other costs alone, posted and open: disbursements are left
    // out of it.
    EXPECT_EQ(DumpedAmount(r, "txtTotalOther"), Stored(job[6]) + Stored(job[7]));
    EXPECT_EQ(DumpedAmount(r, "txtTotalCharges"), charges + Stored(job[4]));
    discounted += sql.Number(
                      "SELECT Count(*) FROM Transactions T JOIN TransactionLine L ON "
                      "T.TransactionId=L.TransactionId WHERE L.Discount<>0 AND T.JobId='" +
                      job[0] + "'") > 0;
    disbursed += !job[5].empty();
    open += !job[4].empty();
  }
  // The demo holds what makes each of these figures print.
  EXPECT_GT(discounted, 0);
  EXPECT_GT(disbursed, 0);
  EXPECT_GT(open, 0);
}

TEST_F(JobSummary, FootersAreTheSumsOfTheirJobsAndTheirGpTheirOwnProfitOverCharges) {
  const std::string dump =
      Join(RunPages(Open("JobSummary", {"ShowActual=True", "ShowOpen=True", "ShowBudget=True",
                                        "Groupings=Customer", "OpenedDateFrom=1/01/2025"})),
           "\n");
  const std::vector<DumpRow> details = RowsOf(dump, "Detail");
  std::vector<DumpRow> footers;
  for (DumpRow& row : RowsOf(dump, "GroupFooter")) {
    if (row.count("gf1ActualCharges") != 0) footers.push_back(std::move(row));
  }
  const std::vector<DumpRow> report = RowsOf(dump, "ReportFooter");
  ASSERT_FALSE(details.empty());
  ASSERT_GT(footers.size(), 1U);
  ASSERT_EQ(report.size(), 1U);
  const char* lines[] = {"Actual", "Open", "Total", "Budget", "Variance"};
  const char* money[] = {"Charges", "Costs", "Purchases", "Total", "Profit"};
  std::map<std::string, Currency> sums;
  for (const DumpRow& row : details) {
    for (const char* line : lines) {
      for (const char* column : money) {
        sums[std::string(line) + column] += DumpedAmount(row, std::string("txt") + line + column);
      }
    }
  }
  std::map<std::string, Currency> footer_sums;
  for (const DumpRow& footer : footers) {
    for (const char* line : lines) {
      for (const char* column : money) {
        footer_sums[std::string(line) + column] +=
            DumpedAmount(footer, std::string("gf1") + line + column);
      }
    }
    // Each footer's GP from its own totals, never an average of its jobs'.
    for (const char* line : {"Actual", "Open", "Total", "Budget"}) {
      SCOPED_TRACE(line);
      const double charges = DumpedAmount(footer, std::string("gf1") + line + "Charges").ToDouble();
      const double profit = DumpedAmount(footer, std::string("gf1") + line + "Profit").ToDouble();
      EXPECT_NEAR(DumpedFraction(footer, std::string("gf1") + line + "GP"),
                  JobGrossProfit(profit, charges), 1e-9);
    }
    EXPECT_NEAR(DumpedFraction(footer, "gf1VarianceGP"),
                DumpedFraction(footer, "gf1TotalGP") - DumpedFraction(footer, "gf1BudgetGP"), 1e-9);
  }
  for (const auto& [name, sum] : sums) {
    SCOPED_TRACE(name);
    EXPECT_EQ(footer_sums[name], sum);
    // The report footer's row runs over several lines (its parameters): read it from the dump.
    EXPECT_EQ(DumpedMoney(dump, "rf" + name), sum);
  }
  EXPECT_GT(sums["ActualCharges"], Currency());
}

TEST(JobGrossProfit, NoChargesGivesNothingOrATotalLoss) {
  struct Case {
    double profit;
    double charges;
    double gp;
  };
  const Case cases[] = {{0, 0, 0}, {-120, 0, -1}, {30, 0, -1}, {25, 100, 0.25}, {-50, 100, -0.5}};
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(JobGrossProfit(c.profit, c.charges), c.gp) << c.profit << "/" << c.charges;
  }
}

// Which lines print for which options: the fields each line lays out in the detail.
TEST_F(JobSummary, EachOptionPrintsItsLinesAndOtherOnlyOnActualAndTotal) {
  struct Case {
    std::vector<std::string> values;
    std::set<std::string> lines;
  };
  const Case cases[] = {
      {{}, {}},
      {{"ShowActual=True"}, {"Actual"}},
      {{"ShowOpen=True"}, {"Open"}},
      {{"ShowBudget=True"}, {"Budget"}},
      {{"ShowActual=True", "ShowOpen=True"}, {"Actual", "Open", "Total"}},
      {{"ShowOpen=True", "ShowBudget=True"}, {"Open", "Budget", "Variance"}},
      {kEveryLine, {"Actual", "Open", "Total", "Budget", "Variance"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Join(c.values, " "));
    std::vector<std::string> values = c.values;
    values.push_back("Jobs=J10179,J10180");
    const std::map<std::string, DumpRow> rows = JobRows(RunPages(Open("JobSummary", values)));
    ASSERT_EQ(rows.size(), 2U);
    const DumpRow& row = rows.begin()->second;
    for (const char* line : {"Actual", "Open", "Total", "Budget", "Variance"}) {
      const bool prints = c.lines.count(line) != 0;
      EXPECT_EQ(row.count(std::string("txt") + line + "Charges"), prints ? 1U : 0U) << line;
      EXPECT_EQ(row.count(std::string("txt") + line + "GP"), prints ? 1U : 0U) << line;
      const bool other = prints && (std::string(line) == "Actual" || std::string(line) == "Total");
      EXPECT_EQ(row.count(std::string("txt") + line + "Other"), other ? 1U : 0U) << line;
    }
    // With no option nothing is worked out: the code, description and status alone.
    if (c.lines.empty()) {
      for (const auto& [name, value] : row) EXPECT_TRUE(name.rfind("txt", 0) == 0) << name;
    }
  }
}

TEST_F(JobSummary, VarianceGpFollowsTheLinesThatPrint) {
  // A job with a cost and no charge: Actual GP a total loss.
  const BooksSql sql;
  const std::string costing = sql.Texts(
      "SELECT Job.JobId FROM Job WHERE Status='Costing' AND EXISTS (SELECT 1 FROM Transactions "
      "WHERE Transactions.JobId=Job.JobId) AND NOT EXISTS (SELECT 1 FROM Transactions WHERE "
      "Transactions.JobId=Job.JobId AND Type=30) ORDER BY JobId DESC")[0];
  const std::string jobs = "Jobs=" + costing;
  auto row_of = [&](std::vector<std::string> values) {
    values.push_back(jobs);
    const auto rows = JobRows(RunPages(Open("JobSummary", values)));
    EXPECT_EQ(rows.size(), 1U);
    return rows.empty() ? DumpRow{} : rows.begin()->second;
  };
  const DumpRow actual = row_of({"ShowActual=True", "ShowBudget=True"});
  EXPECT_EQ(DumpedAmount(actual, "txtActualCharges"), Currency());
  EXPECT_LT(DumpedAmount(actual, "txtActualProfit"), Currency());
  EXPECT_EQ(DumpedFraction(actual, "txtActualGP"), -1.0);
  const DumpRow open = row_of({"ShowOpen=True", "ShowBudget=True"});
  EXPECT_NEAR(DumpedFraction(open, "txtVarianceGP"),
              DumpedFraction(open, "txtOpenGP") - DumpedFraction(open, "txtBudgetGP"), 1e-9);
  const DumpRow both = row_of(kEveryLine);
  EXPECT_NEAR(DumpedFraction(both, "txtVarianceGP"),
              DumpedFraction(both, "txtTotalGP") - DumpedFraction(both, "txtBudgetGP"), 1e-9);
}

TEST_F(JobSummary, EachChargedJobOnceAndTheStatusesTestedOnlyWhenSomeAreCleared) {
  const BooksSql sql;
  const std::vector<std::string> two_contacts =
      sql.Texts("SELECT JobId FROM JobContact GROUP BY JobId HAVING Count(*)>1 AND Sum(Charge)=1");
  ASSERT_FALSE(two_contacts.empty());
  DesignerPtr all = Open("JobSummary", {});
  const std::vector<std::string> pages = RunPages(all);
  std::vector<std::string> codes;
  for (const DumpRow& row : RowsOf(Join(pages, "\n"), "Detail")) {
    codes.push_back(row.at("txtJobId").second);
  }
  EXPECT_EQ(codes, sql.Texts("SELECT Job.JobId FROM Job JOIN JobContact ON "
                             "Job.JobId=JobContact.JobId WHERE JobContact.Charge=1 ORDER BY "
                             "Job.JobId"));
  // The template job has no charged contact.
  EXPECT_EQ(std::count(codes.begin(), codes.end(), "JTEMPLATE"), 0);
  const std::string& query = dynamic_cast<ListDesigner&>(*all).SQL();
  EXPECT_EQ(query.find("Status IN"), std::string::npos) << query;
  EXPECT_EQ(Join(pages, "\n").find("Job Statuses"), std::string::npos);
  DesignerPtr some = Open("JobSummary", {"StatusClosed=False"});
  const std::string dump = Join(RunPages(some), "\n");
  EXPECT_NE(dynamic_cast<ListDesigner&>(*some).SQL().find(
                "('Open','Costing','Completed','Hold','Template')"),
            std::string::npos)
      << dynamic_cast<ListDesigner&>(*some).SQL();
  EXPECT_NE(dump.find("Include Open, Costing, Completed, Hold, Template Job Statuses"),
            std::string::npos);
}

TEST_F(JobSummary, AnUnknownJobGivesAnEmptyReport) {
  const std::vector<std::string> pages = RunPages(Open("JobSummary", {"Jobs=NOSUCH"}));
  ASSERT_FALSE(pages.empty());
  EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
  EXPECT_TRUE(JobRows(pages).empty());
}

TEST_F(JobSummary, AJobThatCannotBeReadGoesToTheErrorListWithItsCode) {
  trellin::testing::TempFolder folder;
  const std::string path = folder.File("broken.db");
  std::filesystem::copy_file(DemoCompanyPath(), path);
  // The budgets cannot be read: each job's load fails.
  ChangeCompany(path, "DROP TABLE JobBudget");
  std::unique_ptr<host::ReportService> service = host::ReportService::Open(path);
  const std::vector<std::string> pages =
      DumpPages(OpenWithValues(*service, "JobSummary", {"ShowActual=True", "Jobs=J10001"}));
  ASSERT_FALSE(pages.empty());
  EXPECT_EQ(pages.back().rfind("errors:", 0), 0U);
  EXPECT_NE(pages.back().find("Job J10001"), std::string::npos) << pages.back();
}

}  // namespace
}  // namespace trellin::reports::testing
