// Which side each designer of the family gives a key.

#include <gtest/gtest.h>

#include "reports/receivables/LedgerSide.h"

namespace trellin {
namespace {

constexpr auto kAR = LedgerSideKind::Receivables;
constexpr auto kAP = LedgerSideKind::Payables;

TEST(LedgerSide, EachDesignerReadsKeysAsItsOwnRowSays) {
  const struct {
    const char* designer;
    const char* key;
    std::optional<LedgerSideKind> side;
  } cases[] = {
      {"ardscrLedger", "LedgerAR", kAR},
      {"ardscrLedger", "LedgerAP", kAP},
      // Compared with the receivables key only: anything else is payables, a key in another
      // case too.
      {"ardscrLedger", "ledgerar", kAP},
      {"ardscrLedger", "", kAP},
      {"ardscrAgedOverdueReport", "AgedOverdueAR", kAR},
      {"ardscrOverdueList", "Whatever", kAP},
      // Both compared: a key of neither list has no side.
      {"ardscrControlReport", "ControlReportAP", kAP},
      {"ardscrControlReport", "LedgerAR", std::nullopt},
      {"ardscrTransactionList", "OpenTransactionListAR", kAR},
      {"ardscrTransactionList", "TransactionListAP", kAP},
      {"ardsInvoiceBatchTransactions", "SavedTransactionListAP", kAP},
      {"ardsInvoice", "Sales Order", std::nullopt},
      {"arglAccountReports", "LedgerAR", std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SideOfKey(c.designer, c.key), c.side) << c.designer << " " << c.key;
  }
}

}  // namespace
}  // namespace trellin
