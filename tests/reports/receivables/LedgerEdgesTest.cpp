// The ledger's edge cases on the small company of LedgerCompany.cpp: which parties print, with
// which rows and balances, by period, side, order and filter; its heading lines; and the first
// day each period asks for.

#include <gtest/gtest.h>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrLedger.h"
#include "tests/reports/receivables/LedgerCompany.h"

namespace trellin::reports::testing {
namespace {

// A party as printed: "CODE closing: row | row", each row "Reference Debit Credit Balance".
std::vector<std::string> Printed(const std::vector<PrintedParty>& parties) {
  std::vector<std::string> out;
  for (const PrintedParty& party : parties) {
    out.push_back(party.code + " " + party.closing + ": " + Join(party.rows, " | "));
  }
  return out;
}

struct LedgerCase {
  const char* what;
  const char* key;
  std::vector<std::string> assignments;
  std::vector<std::string> parties;
};

TEST_F(LedgerCompany, PartiesRowsAndBalancesByPeriodSideAndOrder) {
  const LedgerCase cases[] = {
      // COAST had no balance and no movement in March; INDIA has no transactions at all; FOX
      // is no customer. DELTA opens at nothing, so its first row is March's invoice. BRAVO's
      // advance payment opens March as a credit. HOTEL's invoice is dated in February but
      // processed in March, so March holds it.
      {"MTD",
       "LedgerAR",
       {},
       {"ALPHA 50.00: Opening 100.00  100.00 | A-REC1  100.00 0.00 | A-INV2 50.00  50.00",
        "BRAVO (50.00): Opening  80.00 (80.00) | B-INV1 30.00  (50.00)",
        "DELTA 60.00: D-INV2 60.00  60.00", "ECHO 70.00: E-INV1 70.00  70.00",
        "GOLF 25.00: G-B 15.00  15.00 | G-A 10.00  25.00", "HOTEL 45.00: H-INV1 45.00  45.00"}},
      // NilBalance is declared and read by no query.
      {"MTD with NilBalance",
       "LedgerAR",
       {"NilBalance=true"},
       {"ALPHA 50.00: Opening 100.00  100.00 | A-REC1  100.00 0.00 | A-INV2 50.00  50.00",
        "BRAVO (50.00): Opening  80.00 (80.00) | B-INV1 30.00  (50.00)",
        "DELTA 60.00: D-INV2 60.00  60.00", "ECHO 70.00: E-INV1 70.00  70.00",
        "GOLF 25.00: G-B 15.00  15.00 | G-A 10.00  25.00", "HOTEL 45.00: H-INV1 45.00  45.00"}},
      // No DateFrom: no opening row anywhere, and every party with transactions prints, COAST
      // with its balance of nothing.
      {"ALL",
       "LedgerAR",
       {"Period=ALL"},
       {"ALPHA 50.00: A-INV1 100.00  100.00 | A-REC1  100.00 0.00 | A-INV2 50.00  50.00",
        "BRAVO (50.00): B-REC1  80.00 (80.00) | B-INV1 30.00  (50.00)",
        "COAST 0.00: C-INV1 40.00  40.00 | C-REC1  40.00 0.00",
        "DELTA 60.00: D-INV1 20.00  20.00 | D-REC1  20.00 0.00 | D-INV2 60.00  60.00",
        "ECHO 70.00: E-INV1 70.00  70.00", "GOLF 25.00: G-B 15.00  15.00 | G-A 10.00  25.00",
        "HOTEL 45.00: H-INV1 45.00  45.00"}},
      {"Custom February",
       "LedgerAR",
       {"Period=Custom", "DateFrom=2025-02-01", "DateTo=2025-02-28"},
       {"ALPHA 100.00: A-INV1 100.00  100.00", "BRAVO (80.00): B-REC1  80.00 (80.00)",
        "DELTA 0.00: D-INV1 20.00  20.00 | D-REC1  20.00 0.00"}},
      // ALPHA's invoice was settled by a receipt processed on 5 March, one day after: it was
      // open on the 4th. HOTEL's invoice was processed on the 3rd.
      {"Outstanding, allocated one day after",
       "LedgerAR",
       {"Period=Outstanding", "DateAsAt=2025-03-04"},
       {"ALPHA 100.00: A-INV1 100.00  100.00", "BRAVO (80.00): B-REC1  80.00 (80.00)",
        "ECHO 70.00: E-INV1 70.00  70.00", "HOTEL 45.00: H-INV1 45.00  45.00"}},
      // By the month's end the receipt has taken ALPHA's first invoice: no row for it.
      {"Outstanding, allocated before",
       "LedgerAR",
       {"Period=Outstanding", "DateAsAt=2025-03-31"},
       {"ALPHA 50.00: A-INV2 50.00  50.00",
        "BRAVO (50.00): B-REC1  80.00 (80.00) | B-INV1 30.00  (50.00)",
        "DELTA 60.00: D-INV2 60.00  60.00", "ECHO 70.00: E-INV1 70.00  70.00",
        "GOLF 25.00: G-B 15.00  15.00 | G-A 10.00  25.00", "HOTEL 45.00: H-INV1 45.00  45.00"}},
      // The party clause goes by the document's date, the rows by DateProcess: HOTEL owed on
      // 28 February by its invoice's date, though the invoice was processed in March.
      {"Outstanding, dated before and processed after",
       "LedgerAR",
       {"Period=Outstanding", "DateAsAt=2025-02-28"},
       {"ALPHA 100.00: A-INV1 100.00  100.00", "BRAVO (80.00): B-REC1  80.00 (80.00)",
        "HOTEL 45.00: "}},
      // A range that holds 0 admits COAST, whose balance is nil; INDIA, with no transactions,
      // has no balance at all.
      {"Outstanding, a range holding 0",
       "LedgerAR",
       {"Period=Outstanding", "DateAsAt=2025-03-31", "OverdueFrom=-1000", "OverdueTo=1000"},
       {"ALPHA 50.00: A-INV2 50.00  50.00",
        "BRAVO (50.00): B-REC1  80.00 (80.00) | B-INV1 30.00  (50.00)",
        "COAST 0.00: ", "DELTA 60.00: D-INV2 60.00  60.00", "ECHO 70.00: E-INV1 70.00  70.00",
        "GOLF 25.00: G-B 15.00  15.00 | G-A 10.00  25.00", "HOTEL 45.00: H-INV1 45.00  45.00"}},
      // Only DELTA has an open item due on or before 21 March.
      {"OverdueDays", "LedgerAR", {"OverdueDays=10"}, {"DELTA 60.00: D-INV2 60.00  60.00"}},
      {"Overdues from 60", "LedgerAR", {"OverdueFrom=60"}, {"DELTA 60.00: D-INV2 60.00  60.00"}},
      // ECHO shows its bill here and its invoice on the receivables side; a bill stands under
      // Debit and a payment under Credit.
      {"payables MTD",
       "LedgerAP",
       {},
       {"ECHO 90.00: E-BILL1 90.00  90.00",
        "FOX 0.00: F-BILL1 200.00  200.00 | F-PAY1  200.00 0.00"}},
      {"payables Outstanding, paid one day after",
       "LedgerAP",
       {"Period=Outstanding", "DateAsAt=2025-03-19"},
       {"ECHO 90.00: E-BILL1 90.00  90.00", "FOX 200.00: F-BILL1 200.00  200.00"}},
      {"by reference",
       "LedgerAR",
       {"Customers=GOLF", "TransactionOrderBy=Reference"},
       {"GOLF 25.00: G-A 10.00  10.00 | G-B 15.00  25.00"}},
      // Entered on the 18th and the 19th; by date the two tie and TransactionId decides.
      {"as entered",
       "LedgerAR",
       {"Customers=GOLF", "TransactionOrderBy=Entered"},
       {"GOLF 25.00: G-B 15.00  15.00 | G-A 10.00  25.00"}},
      {"by cross reference",
       "LedgerAR",
       {"OrderBy=X Ref", "Customers=ALPHA..DELTA"},
       {"BRAVO (50.00): Opening  80.00 (80.00) | B-INV1 30.00  (50.00)",
        "ALPHA 50.00: Opening 100.00  100.00 | A-REC1  100.00 0.00 | A-INV2 50.00  50.00",
        "DELTA 60.00: D-INV2 60.00  60.00"}},
      {"by status",
       "LedgerAR",
       {"Period=ALL", "Status=3"},
       {"COAST 0.00: C-INV1 40.00  40.00 | C-REC1  40.00 0.00"}},
  };
  for (const LedgerCase& c : cases) {
    SCOPED_TRACE(std::string(c.what) + ": " + c.key + " " +
                 ::testing::PrintToString(c.assignments));
    const std::vector<std::string> pages = DumpPages(Open(c.key, c.assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    EXPECT_EQ(Printed(PartiesOf(pages)), c.parties);
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
