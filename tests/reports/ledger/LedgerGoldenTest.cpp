// Every statement on the demo company, compared with its golden page dumps (the runs are the rows
// of golden_statements.tsv).

#include <set>
#include <sstream>

#include "platform/runtime/Currency.h"
#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

class LedgerGolden : public LedgerReports {};

TEST_F(LedgerGolden, EveryStatementMatchesItsGoldenDump) {
  reports::testing::ExpectGoldenRuns(Service(), "ledger", "reports/ledger/golden_statements.tsv",
                                     "");
}

TEST_F(LedgerGolden, EveryPageOfAGroupSaysWhichGroupItIs) {
  struct Case {
    const char* key;
    std::vector<std::string> assignments;
    const char* prefix;  // how the group's label begins
  };
  const Case cases[] = {
      {"TrialBalance", {"ToDate=2025-11-30", "Groupings=Branch"}, "\"Branch: "},
      {"FinancialStatement", {"ToDate=2025-11-30", "Groupings=Branch [Page Break]"}, "\"Branch: "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.key + (" " + c.assignments.back()));
    std::string last_label;
    int continuations = 0;
    const std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    for (std::size_t n = 0; n < pages.size(); ++n) {
      std::vector<std::string> labels;
      bool has_detail = false;
      bool starts_group = false;
      bool after_page_header = false;
      std::istringstream lines(pages[n]);
      for (std::string line; std::getline(lines, line);) {
        if (const std::size_t at = line.find(c.prefix);
            line.starts_with("text ") && at != std::string::npos) {
          labels.push_back(line.substr(at + 1, line.find('"', at + 1) - at - 1));
        }
        if (line.starts_with("row PageHeader")) {
          after_page_header = true;
        } else if (line.starts_with("row ") && after_page_header &&
                   !line.starts_with("row ReportHeader")) {
          starts_group = line.starts_with("row GroupHeader");
          after_page_header = false;
        }
        has_detail = has_detail || line.starts_with("row Detail");
      }
      if (!has_detail) continue;
      ASSERT_FALSE(labels.empty()) << "page " << n + 1 << " does not say its group";
      if (!starts_group) {
        // A page the group runs on to repeats the group's own label.
        EXPECT_EQ(labels.front(), last_label) << "page " << n + 1;
        ++continuations;
      }
      last_label = labels.back();
    }
    EXPECT_GT(continuations, 0) << "no group ran on to a second page";
  }
}

TEST_F(LedgerGolden, DemoTrialBalanceClosesToZero) {
  const std::vector<DumpRow> rows = RowsOf(Run("TrialBalance", {"ToDate=2025-11-30"}), "Detail");
  // Account lines are those whose code is a posting account of the chart.
  auto accounts = Service().Database().Query("SELECT AccountId FROM Account WHERE Post Is Null");
  std::set<std::string> posting;
  for (; !accounts->Eof(); accounts->MoveNext()) posting.insert(accounts->Value(0).Text());
  Currency closing;
  int lines = 0;
  for (const DumpRow& row : rows) {
    auto code = row.find("txtCode");
    auto value = row.find("numField5");
    if (code == row.end() || !posting.count(code->second.second)) continue;
    ++lines;
    if (value != row.end()) closing += Currency::Parse(value->second.first).value_or(Currency());
  }
  EXPECT_GT(lines, 20);
  EXPECT_EQ(closing, Currency());
}

}  // namespace
}  // namespace trellin::ledger_testing
