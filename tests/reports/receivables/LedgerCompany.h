#pragma once
// The customer and supplier ledger run on a small company built for its edge cases, and the
// reading of a ledger's pages back into parties and rows.

#include <gtest/gtest.h>

#include <algorithm>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Designer.h"
#include "platform/host/run/ReportService.h"
#include "platform/runtime/Currency.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::reports::testing {

// A small company built in the test from a data file of rows, and a service over it, with the
// clock fixed so that "Printed on" lines stay the same.
class SmallCompany : public ::testing::Test {
 protected:
  static void StartCompany(std::string_view rows_file);
  static void StopCompany();

  [[nodiscard]] static host::ReportService& Service() { return *service_; }
  [[nodiscard]] static DesignerPtr Open(const std::string& key,
                                        const std::vector<std::string>& assignments) {
    return OpenWithValues(*service_, key, assignments);
  }

 private:
  static std::unique_ptr<trellin::testing::FixtureCompany> company_;
  static std::unique_ptr<host::ReportService> service_;
};

// Nine parties of a company whose receivables and payables are at 31 March 2025 (see
// ledger.sql for what each one shows).
class LedgerCompany : public SmallCompany {
 protected:
  static void SetUpTestSuite() { StartCompany("reports/receivables/ledger.sql"); }
  static void TearDownTestSuite() { StopCompany(); }
};

// The parties of the ageing tests, at 15 March 2025 (see aged.sql).
class AgedCompany : public SmallCompany {
 protected:
  static void SetUpTestSuite() { StartCompany("reports/receivables/aged.sql"); }
  static void TearDownTestSuite() { StopCompany(); }
};

// The customers of the statement tests, at 31 March 2025 (see statement.sql).
class StatementCompany : public SmallCompany {
 protected:
  static void SetUpTestSuite() { StartCompany("reports/receivables/statement.sql"); }
  static void TearDownTestSuite() { StopCompany(); }
};

// The suppliers of the remittance tests, paid on 20 March 2025 (see remittance.sql).
class RemittanceCompany : public SmallCompany {
 protected:
  static void SetUpTestSuite() { StartCompany("reports/receivables/remittance.sql"); }
  static void TearDownTestSuite() { StopCompany(); }
};

// The documents of the control report tests, at 31 March 2025 (see control.sql).
class ControlCompany : public SmallCompany {
 protected:
  static void SetUpTestSuite() { StartCompany("reports/receivables/control.sql"); }
  static void TearDownTestSuite() { StopCompany(); }
};

// A party in order and one made to break each check of the exception report, at 31 March 2025
// (see exceptions.sql).
class ExceptionCompany : public SmallCompany {
 protected:
  static void SetUpTestSuite() { StartCompany("reports/receivables/exceptions.sql"); }
  static void TearDownTestSuite() { StopCompany(); }
};

// One printed page: its texts, for searching.
struct PrintedPage {
  std::vector<std::string> texts;
  [[nodiscard]] bool Has(const std::string& text) const {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
  }
  // The text printed just after the last `label` (a stub, at the foot of the page, gives the
  // figure beside its label); "" when none.
  [[nodiscard]] std::string After(const std::string& label) const {
    auto found = std::find(texts.rbegin(), texts.rend(), label);
    return found == texts.rend() || found == texts.rbegin() ? std::string() : *(found - 1);
  }
};

// The printed pages of page dumps; a dump that reports errors fails the test.
[[nodiscard]] std::vector<PrintedPage> PagesOf(const std::vector<std::string>& dumps);

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
