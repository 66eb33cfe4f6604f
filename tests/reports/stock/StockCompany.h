#pragma once
// The stock reports run on the hand-made stock company (tests/business/stock.sql), and the
// reading of their page dumps back into rows by item code.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/host/run/ReportService.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::reports::testing {

class StockCompany : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
  [[nodiscard]] static std::vector<std::string> Run(const std::string& key,
                                                    const std::vector<std::string>& assignments);
  // What a run of `key` with `assignments` reports as errors ("" for none).
  [[nodiscard]] static std::string RunErrors(const std::string& key,
                                             const std::vector<std::string>& assignments);
  // What the parameter check says of `assignments` given to `key`, one message a problem.
  [[nodiscard]] static std::vector<std::string> Refusals(
      const std::string& key, const std::vector<std::string>& assignments);

 private:
  static std::unique_ptr<trellin::testing::FixtureCompany> company_;
  static std::unique_ptr<host::ReportService> service_;
};

// The printed texts of the rows of a kind ("Detail", "GroupFooter 1", ...), each row by control
// name ("txtQuantityOnHand"), in print order.
[[nodiscard]] std::vector<std::map<std::string, std::string>> PrintedRows(
    const std::vector<std::string>& pages, const std::string& section);

// The detail rows by the text of their code column (`code_control`); a code printed twice keeps
// its last row.
[[nodiscard]] std::map<std::string, std::map<std::string, std::string>> RowsByCode(
    const std::vector<std::string>& pages, const std::string& code_control = "txtCode");

// The value of `control` in a dumped row as a number: money ("12.5@") and plain numbers; 0 for
// anything else.
[[nodiscard]] double NumberIn(const DumpRow& row, const std::string& control);

}  // namespace trellin::reports::testing
