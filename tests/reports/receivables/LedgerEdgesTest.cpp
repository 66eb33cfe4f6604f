// The ledger's edge cases on the small company of LedgerCompany.cpp: which parties print, with
// which rows and balances, by period, side, order and filter; its heading lines; and the first
// day each period asks for.

#include <gtest/gtest.h>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrLedger.h"
#include "tests/reports/receivables/LedgerCompany.h"
#include "tests/support/CaseFile.h"

namespace trellin::reports::testing {
namespace {

using trellin::testing::ReadCaseBlocks;

// A party as printed: "CODE closing: row | row", each row "Reference Debit Credit Balance".
std::vector<std::string> Printed(const std::vector<PrintedParty>& parties) {
  std::vector<std::string> out;
  for (const PrintedParty& party : parties) {
    out.push_back(party.code + " " + party.closing + ": " + Join(party.rows, " | "));
  }
  return out;
}

// ledger_parties.tsv: which parties print, with which rows and balances, by period, side,
// order and filter.
TEST_F(LedgerCompany, PartiesRowsAndBalancesByPeriodSideAndOrder) {
  for (const auto& c : ReadCaseBlocks("reports/receivables/ledger_parties.tsv", 2)) {
    SCOPED_TRACE(c.Where() + " " + c.fields[0]);
    const std::vector<std::string> pages =
        DumpPages(Open(c.fields[1], {c.fields.begin() + 2, c.fields.end()}));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    EXPECT_EQ(Printed(PartiesOf(pages)), c.lines);
  }
}

TEST_F(LedgerCompany, HeadingLinesSayAsAtOrderFiltersAndPeriod) {
  const struct {
    const char* key;
    std::vector<std::string> assignments;
    std::vector<std::string> lines;
  } cases[] = {
      {"LedgerAR", {}, {"Dated as at 31/03/2025", "Customers ordered by Code", "MTD 31/3/2025"}},
      // An OverdueDays of 0 adds no line.
      {"LedgerAR",
       {"OverdueDays=10", "Period=QTD"},
       {"Dated as at 31/03/2025", "Customers ordered by Code", "Overdue on or before 21/03/2025",
        "QTD 31/3/2025"}},
      {"LedgerAP",
       {"OrderBy=Name", "Suppliers=FOX", "Period=YTD"},
       {"Dated as at 31/03/2025", "Suppliers ordered by Name", "Suppliers: FOX", "YTD 31/3/2025"}},
      {"LedgerAR",
       {"Period=Custom", "DateFrom=2025-02-01", "DateTo=2025-02-28"},
       {"Dated as at 31/03/2025", "Customers ordered by Code",
        "Period Covered from 1/2/2025 to 28/2/2025"}},
      {"LedgerAR",
       {"Period=Outstanding", "DateAsAt=2025-03-04", "OverdueFrom=-1000", "OverdueTo=1000"},
       {"Dated as at 4/03/2025", "Customers ordered by Code",
        "Overdues from ($1,000.00) to $1,000.00", "Outstanding Balances"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.key) + " " + ::testing::PrintToString(c.assignments));
    DesignerPtr designer = Open(c.key, c.assignments);
    auto& ledger = dynamic_cast<ardscrLedger&>(*designer);
    ledger.BuildSQL();
    EXPECT_EQ(Split(ledger.Heading(), "\r\n"), c.lines);
    designer->TLReport()->SetArReport(nullptr);
  }
}

TEST_F(LedgerCompany, PeriodsStartOnTheirFirstDay) {
  const FinancialCalendar& calendar = Service().Application().FinancialCalendar();
  const struct {
    const char* period;
    const char* date_to;
    const char* custom;
    const char* from;  // "" for none
  } cases[] = {
      {"MTD", "2025-03-31", "", "2025-03-01"},
      {"MTD", "2025-02-14", "", "2025-02-01"},
      // The financial year starts in April: its quarters in April, July, October, January.
      {"QTD", "2025-03-31", "", "2025-01-01"},
      {"QTD", "2024-04-30", "", "2024-04-01"},
      {"QTD", "2024-09-15", "", "2024-07-01"},
      {"QTD", "2024-12-31", "", "2024-10-01"},
      {"YTD", "2025-03-31", "", "2024-04-01"},
      // A date the calendar has no year for falls back to the calendar year.
      {"YTD", "2026-02-10", "", "2026-01-01"},
      {"QTD", "2026-05-10", "", "2026-04-01"},
      {"ALL", "2025-03-31", "", ""},
      {"Outstanding", "2025-03-31", "", ""},
      {"Custom", "2025-03-31", "2025-02-15", "2025-02-15"},
      {"Custom", "2025-03-31", "", ""},
      {"MTD", "", "", ""},
  };
  for (const auto& c : cases) {
    const auto date = [](const char* iso) {
      return *iso ? Variant(*Date::FromIso(iso)) : Variant::Null();
    };
    const Variant from = LedgerDateFrom(c.period, date(c.date_to), date(c.custom), calendar);
    EXPECT_EQ(from.IsNull() ? "" : from.ToDate().ToIso(), c.from)
        << c.period << " to " << c.date_to << " custom " << c.custom;
  }
}

// Whole pages of each side and each kind of period, read against the layout once and kept.
TEST_F(LedgerCompany, PagesAsPrinted) {
  ExpectGoldenRuns(Service(), "receivables", "reports/receivables/ledger_golden_runs.tsv", "");
}

}  // namespace
}  // namespace trellin::reports::testing
