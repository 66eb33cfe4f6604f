// The transaction lists on the demo company (their pages are golden runs of golden_runs.tsv): a
// month's sums against the plain SQL sums of the lines the list shows.

#include <gtest/gtest.h>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class TransactionListDemo : public DemoReports {};

TEST_F(TransactionListDemo, SumsAreTheSqlSumsOfTheLinesShown) {
  Database& db = Service().Database();
  const struct {
    const char* key;
    const char* gross;  // each transaction's gross, as the list works it out, summed
    const char* range;
  } cases[] = {
      {"TransactionListAR",
       "IIf(t.Type=35,-t.Value,(SELECT Sum(-l.Value-l.Discount) FROM TransactionLine l WHERE "
       "l.TransactionId=t.TransactionId AND l.ItemId Is Not Null))",
       "30 And 39"},
      {"TransactionListAP",
       "IIf(t.Type=25,t.Value,(SELECT Sum(l.Value+l.Discount) FROM TransactionLine l WHERE "
       "l.TransactionId=t.TransactionId AND l.ItemId Is Not Null))",
       "20 And 29"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.key);
    const std::string dump = Join(
        DumpPages(Open(c.key, {"ProcessFrom=2025-10-01", "ProcessTo=2025-10-31", "Summary=true"})),
        "\n");
    // The report total's printed text: its row follows the run's description, which spans lines.
    const std::size_t at = dump.find("rfGross=");
    ASSERT_NE(at, std::string::npos);
    const std::size_t open = dump.find('"', at);
    const std::string printed = dump.substr(open + 1, dump.find('"', open + 1) - open - 1);
    const Currency expected = db.ExecuteScalarCurrency(
        std::string("SELECT Sum(") + c.gross + ") FROM Transactions t WHERE t.Type Between " +
            c.range + " AND t.DateProcess>=#2025-10-01# AND t.DateProcess<#2025-11-01#",
        Currency());
    EXPECT_EQ(*Currency::Parse(printed), expected) << printed;
  }
}

}  // namespace
}  // namespace trellin::reports::testing
