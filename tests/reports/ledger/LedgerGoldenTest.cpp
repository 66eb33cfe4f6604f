// Every statement on the demo company, compared with its golden page dumps.

#include "tests/reports/ledger/LedgerFixture.h"

namespace trellin::ledger_testing {
namespace {

struct GoldenCase {
  const char* name;
  const char* key;
  std::vector<std::string> assignments;
};

const GoldenCase kCases[] = {
    {"TrialBalance", "TrialBalance", {"FromDate=2025-04-01", "ToDate=2025-11-30"}},
};

class LedgerGolden : public LedgerReports {};

TEST_F(LedgerGolden, EveryStatementMatchesItsGoldenDump) {
  for (const GoldenCase& c : kCases) {
    SCOPED_TRACE(c.name);
    ExpectLedgerGolden(c.name, Run(c.key, c.assignments));
  }
}

}  // namespace
}  // namespace trellin::ledger_testing
