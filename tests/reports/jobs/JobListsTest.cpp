// The job lists on the demo company: the jobs a list prints against the books, each once, and
// golden page dumps of each key and its main variants (golden_runs.tsv), read against what each
// must print.

#include <gtest/gtest.h>

#include <algorithm>

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

TEST_F(JobLists, JobListPrintsEachChargedJobOfTheStatusesAndDatesOnce) {
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
  }
}

}  // namespace
}  // namespace trellin::reports::testing
