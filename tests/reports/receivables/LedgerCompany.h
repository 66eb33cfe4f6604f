#pragma once
// The customer and supplier ledger run on a small company built for its edge cases, and the
// reading of a ledger's pages back into parties and rows.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "platform/host/run/ReportService.h"
#include "platform/runtime/Currency.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::reports::testing {

// Nine parties of a company whose receivables and payables are at 31 March 2025 (see
// ledger.sql for what each one shows).
class LedgerCompany : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();

  [[nodiscard]] static host::ReportService& Service() { return *service_; }
  [[nodiscard]] static DesignerPtr Open(const std::string& key,
                                        const std::vector<std::string>& assignments) {
    return OpenWithValues(*service_, key, assignments);
  }

 private:
  static std::unique_ptr<trellin::testing::FixtureCompany> company_;
  static std::unique_ptr<host::ReportService> service_;
};

// One transaction row of a party as printed: "Reference Debit Credit Balance", the blanks
// between the texts single, so "Opening 100.00  100.00" reads an opening debit.
struct PrintedParty {
  std::string code;
  std::string closing;
  std::vector<std::string> rows;
  Currency closing_value;
  Currency last_balance;  // 0 when the party has no rows
};

// The parties of a ledger run in print order, each with its printed rows.
[[nodiscard]] std::vector<PrintedParty> PartiesOf(const std::vector<std::string>& pages);

}  // namespace trellin::reports::testing
