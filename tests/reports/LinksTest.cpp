// The figures reports link for a viewer: the account statements to the General Ledger, the aged
// report and the ledgers to a party's ledger. Each linked line names what it opens: the account
// or party the link carries is printed on the page, and the dates are the run's.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <variant>

#include "platform/engine/ReportEngine.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

// Keeps every linked text line and every printed text.
class LinkSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo&) override {}
  void AddPage(const engine::Page& page) override {
    for (const engine::PageItem& item : page.items) {
      const auto* run = std::get_if<engine::TextRun>(&item);
      if (run == nullptr) continue;
      texts.insert(run->text);
      if (!run->link.Empty() && !run->text.empty()) links.push_back(run->link);
    }
  }
  void End() override {}
  void Abort() override {}

  std::vector<LinkTarget> links;
  std::set<std::string> texts;
};

struct LinkCase {
  const char* key;
  std::vector<std::string> assignments;
  const char* opens;  // "" when the report links nothing
  const char* party;  // the value naming the account or party, printed on the page
  // Values every link carries as they stand.
  std::map<std::string, std::string> fixed;
};

const LinkCase kCases[] = {
    {"TrialBalance",
     {"Period=Custom", "FromDate=2025-04-01", "ToDate=2025-06-30"},
     "GeneralLedger",
     "Accounts",
     {{"Period", "Custom"}, {"FromDate", "2025-04-01"}, {"ToDate", "2025-06-30"}}},
    // No start date: the ledger of every date.
    {"TrialBalance", {"Period=ALL"}, "GeneralLedger", "Accounts", {{"Period", "ALL"}}},
    {"AgedOverdueAR",
     {"DateAsAt=2025-06-30"},
     "LedgerAR",
     "Customers",
     {{"Period", "Outstanding"}, {"DateAsAt", "2025-06-30"}}},
    {"LedgerAP",
     {"Period=Custom", "DateFrom=2025-04-01", "DateTo=2025-06-30", "DateAsAt=2025-06-30"},
     "LedgerAP",
     "Suppliers",
     {{"Period", "Custom"}, {"DateFrom", "2025-04-01"}, {"DateTo", "2025-06-30"}}},
    {"GeneralLedger", {"Period=Custom", "FromDate=2025-06-01", "ToDate=2025-06-30"}, "", "", {}},
};

class ReportLinks : public DemoReports {};

TEST_F(ReportLinks, LinkedFiguresOpenTheirAccountOrPartyForTheRunsDates) {
  for (const LinkCase& c : kCases) {
    SCOPED_TRACE(c.key);
    DesignerPtr designer = Open(c.key, c.assignments);
    LinkSink sink;
    engine::RunReport(*designer, sink);
    designer->TLReport()->SetArReport(nullptr);
    designer->SetTLReport(nullptr);
    if (*c.opens == '\0') {
      EXPECT_TRUE(sink.links.empty());
      continue;
    }
    ASSERT_FALSE(sink.links.empty());
    std::set<std::string> named;
    for (const LinkTarget& link : sink.links) {
      EXPECT_EQ(link.key, c.opens);
      std::map<std::string, std::string> values(link.values.begin(), link.values.end());
      for (const auto& [name, value] : c.fixed) EXPECT_EQ(values[name], value) << name;
      named.insert(values[c.party]);
    }
    for (const std::string& code : named) EXPECT_TRUE(sink.texts.count(code)) << code;
  }
}

// A period column opens its own months; the statement's links span no more than its dates.
TEST_F(ReportLinks, PeriodColumnsOpenTheirOwnMonths) {
  DesignerPtr designer =
      Open("PeriodSummary", {"Frequency=Quarterly", "EndDate=2025-06-30", "ShowTotal=False"});
  LinkSink sink;
  engine::RunReport(*designer, sink);
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);
  std::set<std::pair<std::string, std::string>> spans;
  for (const LinkTarget& link : sink.links) {
    std::map<std::string, std::string> values(link.values.begin(), link.values.end());
    spans.emplace(values["FromDate"], values["ToDate"]);
  }
  ASSERT_GE(spans.size(), 2u);
  EXPECT_TRUE(spans.count({"2025-04-01", "2025-06-30"}));
}

}  // namespace
}  // namespace trellin::reports::testing
