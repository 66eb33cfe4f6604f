#pragma once
// The statements run end to end on the scale-1 demo company: a service over the company, a
// statement opened by key with values applied, its pages as text dumps and golden files.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "platform/host/run/ReportService.h"
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

// A small company built for the statements' edge cases: a few accounts of every kind, a group
// with nothing in it, a total with nothing above it, a balance below one thousand, budgets with
// a month missing, a year-end closing entry stamped after midnight, and from January 2025 one
// ledger line with no other side.
class LedgerFixtureCompany : public LedgerReports {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
};

// Compares `actual` with tests/reports/ledger/golden/<name>.txt; TRELLIN_UPDATE_GOLDEN=1 writes.
void ExpectLedgerGolden(const std::string& name, const std::string& actual);

}  // namespace trellin::ledger_testing
