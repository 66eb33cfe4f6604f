// The transaction lists on the small company of control.sql: a receipt's pay method and header
// figures, a document with no lines, text lines, an open batch's remaining and held, the order
// of entry, and the pay-method words (each key's page on it is a run of control_golden_runs.tsv).

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrTransactionList.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

TEST(TransactionList, PayMethodWordsByLetterAndCashForAnythingElse) {
  const std::pair<const char*, const char*> cases[] = {
      {"A", "Amex"},   {"B", "Bank"},         {"C", "Direct Credit"}, {"D", "Diners"},
      {"E", "EFTPOS"}, {"F", "Direct Debit"}, {"Q", "Cheque"},        {"M", "Mastercard"},
      {"O", "Other"},  {"V", "Visa"},         {"", "Cash"},           {"X", "Cash"},
      {"v", "Cash"},  // letters are the application's own: exactly as stored
  };
  for (const auto& [letter, name] : cases) EXPECT_EQ(PayMethodName(letter), name) << letter;
}

// The printed texts of the runs of `key`.
std::string Printed(const DesignerPtr& designer) {
  return Join(PrintedTexts(Join(DumpPages(designer), "\n")), "\n");
}

TEST_F(ControlCompany, ListsShowReceiptsDocumentsWithoutLinesAndTextLinesAsTheyShould) {
  const std::string full =
      Printed(Open("TransactionListAR",
                   {"ShowFullDetail=true", "ShowAllocationDetails=true", "OrderBy=Entered"}));
  // The receipt: its pay method, card and payer from the header, its figures from its value.
  EXPECT_NE(full.find("Visa"), std::string::npos);
  EXPECT_NE(full.find("C Two, XXXX-XXXX-XXXX-1111"), std::string::npos);
  // 12 has no lines and stays on the list.
  EXPECT_NE(full.find("I12"), std::string::npos);
  // "Entered": by id, 1 before 2 before 12.
  EXPECT_LT(full.find("I1\n"), full.find("I2\n"));
  EXPECT_LT(full.find("I9\n"), full.find("I12\n"));
  // Text lines only with ShowDescriptionLines, and in no sum.
  EXPECT_EQ(full.find("Delivered to the boat"), std::string::npos);
  const std::string text =
      Printed(Open("TransactionListAR", {"ShowFullDetail=true", "ShowDescriptionLines=true"}));
  EXPECT_NE(text.find("Delivered to the boat"), std::string::npos);

  const std::string open = Printed(Open("OpenTransactionListAR", {"ShowFullDetail=true"}));
  EXPECT_NE(open.find("O1"), std::string::npos);
  EXPECT_EQ(open.find("Fit next week"), std::string::npos);
}

}  // namespace
}  // namespace trellin::reports::testing
