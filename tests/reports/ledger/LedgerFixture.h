#pragma once
// The statements run end to end on the scale-1 demo company: a service over the company, a
// statement opened by key with values applied, its pages as text dumps and golden files.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "platform/host/run/ReportService.h"
#include "platform/runtime/Currency.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::ledger_testing {

class LedgerReports : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();

  [[nodiscard]] static host::ReportService& Service();
  // The path of the demo company file, built once per test binary.
  [[nodiscard]] static const std::string& CompanyPath();

  // The statement `key` with "NAME=VALUE" assignments applied and validated.
  [[nodiscard]] static DesignerPtr Open(const std::string& key,
                                        const std::vector<std::string>& assignments);
  // Runs an opened statement; one string a page, the run's errors last, starting "errors:".
  [[nodiscard]] static std::vector<std::string> RunPages(const DesignerPtr& designer);
  // Open and run, the pages joined.
  [[nodiscard]] static std::string Run(const std::string& key,
                                       const std::vector<std::string>& assignments);

 protected:
  static std::unique_ptr<host::ReportService> service_;
};

using reports::testing::DumpRow;
using reports::testing::PrintedTexts;
using reports::testing::RowsOf;
using reports::testing::TextsOf;

// A figure as dumped, 0 when it is no figure.
[[nodiscard]] Currency Money(const std::string& dumped);
// The printed text of control `name` of a row, "<hidden>" when it did not print.
[[nodiscard]] std::string Text(const DumpRow& row, const std::string& name);
// The value of control `name` of a row, 0 when it did not print.
[[nodiscard]] Currency Value(const DumpRow& row, const std::string& name);

// A small company built for the statements' edge cases: a few accounts of every kind, a group
// with nothing in it, a total with nothing above it, a balance below one thousand, budgets with
// a month missing, a year-end closing entry stamped after midnight, and from January 2025 one
// ledger line with no other side.
class LedgerFixtureCompany : public LedgerReports {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
};

// The fixture company with bank entries in February 2025 (a party's receipt on a statement page,
// a fee on none, a refund with no comment, a line of tax category "*" on a bank entry), two
// petty-cash lines of 600.00, a line stamped 4pm on the last day of February, departments (one
// line under a code the department list lacks), and the closing entry of March 2024 typed as a
// year-end line.
class LedgerBankCompany : public LedgerReports {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
};

// Compares `actual` with tests/reports/ledger/golden/<name>.txt; TRELLIN_UPDATE_GOLDEN=1 writes.
void ExpectLedgerGolden(const std::string& name, const std::string& actual);

}  // namespace trellin::ledger_testing
