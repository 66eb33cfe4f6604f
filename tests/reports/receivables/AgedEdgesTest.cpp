// The aged report and the overdue list on the small company of aged.sql: the period ends of
// every frequency, which party falls in which column by each date mode, back-dating, the bounds,
// the order and groups, the footers' shares, the accounts address, and the overdue list's
// bounds and documents.

#include <gtest/gtest.h>

#include <regex>

#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/AgeingPeriods.h"
#include "reports/receivables/ardscrAgedOverdueReport.h"
#include "tests/reports/receivables/LedgerCompany.h"
#include "tests/support/CaseFile.h"

namespace trellin::reports::testing {
namespace {

using trellin::testing::ReadCases;

TEST(AgeingPeriods, EndsAndCaptionsOfEveryFrequency) {
  for (const auto& row : ReadCases("reports/receivables/ageing_periods.tsv", 7)) {
    SCOPED_TRACE(row.Where());
    const std::string& frequency = row.fields[0];
    const auto ends = AgeingPeriodEnds(frequency, *Date::FromIso(row.fields[1]));
    ASSERT_TRUE(ends.has_value());
    std::vector<std::string> captions;
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ((*ends)[static_cast<std::size_t>(i)].ToIso(), row.fields[2 + i]) << "D" << i;
      captions.push_back(AgeingColumnCaption(frequency, i + 1, *ends, "d/mm/yyyy"));
    }
    EXPECT_EQ(Join(captions, "|"), row.fields[6]);
  }
  // Names are compared exactly, as the list offers them.
  EXPECT_FALSE(AgeingPeriodEnds("eom", Date::FromYmd(2025, 3, 15)).has_value());
  EXPECT_FALSE(AgeingPeriodEnds("Fortnightly", Date::FromYmd(2025, 3, 15)).has_value());
}

TEST(AgeingPeriods, EachPeriodHoldsItsEndAndNotTheDayBefore) {
  const AgeingEnds ends = *AgeingPeriodEnds("EOM", Date::FromYmd(2025, 3, 15));
  const struct {
    Date date;
    int bucket;
  } cases[] = {
      {Date::FromYmd(2024, 6, 1), 0},
      {Date::FromYmd(2025, 1, 31), 0},
      {Date::FromYmd(2025, 2, 1), 1},
      {Date::FromYmd(2025, 2, 28), 1},
      {Date::FromYmd(2025, 3, 1), 2},
      {Date::FromYmd(2025, 3, 31), 2},
      {Date::FromYmd(2025, 4, 30), 3},
      {Date::FromYmd(2025, 5, 1), 4},
      // A time of day on the last day still belongs to that day.
      {Date::FromYmdHms(2025, 1, 31, 17, 0, 0), 0},
  };
  for (const auto& c : cases) EXPECT_EQ(AgeingBucket(c.date, ends), c.bucket) << c.date.ToIso();
}

TEST(AgeingPeriods, AccountsAddressIsTheFirstEmailArWithADetailElseTheFirstEmail) {
  const struct {
    std::vector<ContactMethod> methods;
    const char* address;
  } cases[] = {
      {{{"Phone", "09 1"}, {"EmailAR", ""}, {"Email", "a@x"}, {"EmailAR", "ar@x"}}, "ar@x"},
      {{{"Email", "a@x"}, {"Email", "b@x"}}, "a@x"},
      // The second pass takes the first Email as it is, even without an address.
      {{{"EmailAR", ""}, {"Email", ""}, {"Email", "b@x"}}, ""},
      {{{"emailar", "lower@x"}}, "lower@x"},
      {{{"Phone", "09 1"}}, ""},
      {{}, ""},
  };
  for (const auto& c : cases) {
    OtherParty party;
    party.contact_methods = c.methods;
    EXPECT_EQ(AccountsEmail(party), c.address) << ::testing::PrintToString(c.methods.size());
  }
}

std::string Money(const Variant& value) {
  const Currency amount = value.IsNull() ? Currency() : value.ToCurrency();
  return Format(Variant(amount), "#,##0.00;(#,##0.00)");
}

// Each row the aged report works out: "[group ]CODE c1 c2 c3 c4 = total + future".
std::vector<std::string> AgedRows(const DesignerPtr& designer, const char* group_field = nullptr) {
  auto& aged = dynamic_cast<ardscrAgedOverdueReport&>(*designer);
  aged.BuildSQL();
  aged.BuildRows();
  std::vector<std::string> rows;
  const auto& rs = aged.Rows();
  for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) {
    std::string row;
    if (group_field != nullptr) {
      const Variant& group = rs->Value(group_field);
      row = (group.IsNull() ? std::string("-") : group.Text()) + " ";
    }
    row += rs->Value("OtherPartyId").Text();
    for (const char* column : {"Column1", "Column2", "Column3", "Column4"}) {
      row += " " + Money(rs->Value(column));
    }
    row += " = " + Money(rs->Value("TotalOverdue")) + " + " + Money(rs->Value("Future"));
    rows.push_back(row);
  }
  designer->TLReport()->SetArReport(nullptr);
  return rows;
}

struct AgedCase {
  const char* what;
  const char* key;
  std::vector<std::string> assignments;
  std::vector<std::string> rows;
  const char* group_field = nullptr;
};

TEST_F(AgedCompany, ColumnsByDateModeBackDatingBoundsOrderAndGroups) {
  const AgedCase cases[] = {
      // EOM, A on the 15th: Column3 holds what falls due by the end of March (A3, due the 20th),
      // Column4 what falls due in April, Future what falls due after. NULLDUE's first invoice
      // goes by its process date; its second is processed in February and dated in March, so
      // it falls in no column. LATE's documents are dated after A; BACK and ZERO have nothing
      // open. A receipt on account nets against the column its own date selects.
      {"EOM",
       "AgedOverdueAR",
       {},
       {"AGED1 100.00 200.00 300.00 400.00 = 1,000.00 + 50.00",
        "CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00",
        "NULLDUE 0.00 40.00 0.00 0.00 = 40.00 + 0.00",
        "STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00"}},
      {"EOM with ShowNil",
       "AgedOverdueAR",
       {"ShowNil=true"},
       {"AGED1 100.00 200.00 300.00 400.00 = 1,000.00 + 50.00",
        "BACK 0.00 0.00 0.00 0.00 = 0.00 + 0.00", "CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00",
        "LATE 0.00 0.00 0.00 0.00 = 0.00 + 0.00", "NULLDUE 0.00 40.00 0.00 0.00 = 40.00 + 0.00",
        "STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00", "ZERO 0.00 0.00 0.00 0.00 = 0.00 + 0.00"}},
      // BACK's receipt was processed on 20 March: as at the 15th its invoice, due 20 February,
      // was open in Column2.
      {"back-dated",
       "AgedOverdueAR",
       {"BackDate=true"},
       {"AGED1 100.00 200.00 300.00 400.00 = 1,000.00 + 50.00",
        "BACK 0.00 500.00 0.00 0.00 = 500.00 + 0.00",
        "CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00",
        "NULLDUE 0.00 40.00 0.00 0.00 = 40.00 + 0.00",
        "STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00"}},
      // Monthly: the ends are 15 January, 15 February, 15 March and 15 April. By due date
      // AGED1's April and May invoices are Future; LATE is in no column.
      {"Monthly by due date",
       "AgedOverdueAR",
       {"Frequency=Monthly"},
       {"AGED1 0.00 100.00 200.00 300.00 = 600.00 + 450.00",
        "CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00",
        "NULLDUE 0.00 40.00 0.00 0.00 = 40.00 + 0.00",
        "STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00"}},
      // By document date LATE's 20 March invoice is in Column4 and its April one in Future, and
      // NULLDUE's second invoice finds its column by its own date.
      {"Monthly by document date",
       "AgedOverdueAR",
       {"Frequency=Monthly", "ApplyTransactionDate=true"},
       {"AGED1 300.00 300.00 450.00 0.00 = 1,050.00 + 0.00",
        "CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00",
        "LATE 0.00 0.00 0.00 80.00 = 80.00 + 90.00",
        "NULLDUE 40.00 0.00 70.00 0.00 = 110.00 + 0.00",
        "STOP 250.00 0.00 0.00 0.00 = 250.00 + 0.00"}},
      // The lower bound meets the overdue total, which leaves Future out: AGED1's 1,000.00
      // passes 1,000 and fails 1,001, though with Future it would be 1,050.00.
      {"OverdueFrom at the total",
       "AgedOverdueAR",
       {"OverdueFrom=1000"},
       {"AGED1 100.00 200.00 300.00 400.00 = 1,000.00 + 50.00"}},
      {"OverdueFrom above the total", "AgedOverdueAR", {"OverdueFrom=1001"}, {}},
      {"OverdueTo below nothing",
       "AgedOverdueAR",
       {"OverdueTo=-1"},
       {"CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00"}},
      {"ordered by Overdue",
       "AgedOverdueAR",
       {"OrderBy=Overdue"},
       {"AGED1 100.00 200.00 300.00 400.00 = 1,000.00 + 50.00",
        "STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00", "NULLDUE 0.00 40.00 0.00 0.00 = 40.00 + 0.00",
        "CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00"}},
      // The oldest open debt's due date on or before 5 March: NULLDUE's have none, CREDIT owes
      // nothing.
      {"OverdueDays",
       "AgedOverdueAR",
       {"OverdueDays=10"},
       {"AGED1 100.00 200.00 300.00 400.00 = 1,000.00 + 50.00",
        "STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00"}},
      {"on stop credit",
       "AgedOverdueAR",
       {"StopCreditOption=On Stop Credit"},
       {"STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00"}},
      // Each group's columns sum only its own documents; the group with no employee is a group.
      {"grouped by Transaction Employee",
       "AgedOverdueAR",
       {"Groupings=Transaction Employee"},
       {"- AGED1 0.00 0.00 0.00 0.00 = 0.00 + 50.00",
        "- CREDIT 0.00 0.00 (60.00) 0.00 = (60.00) + 0.00",
        "- NULLDUE 0.00 40.00 0.00 0.00 = 40.00 + 0.00",
        "- STOP 0.00 250.00 0.00 0.00 = 250.00 + 0.00",
        "AP AGED1 0.00 200.00 300.00 400.00 = 900.00 + 0.00",
        "JS AGED1 100.00 0.00 0.00 0.00 = 100.00 + 0.00"},
       "EmployeeId"},
      // Payables: the bill is due 20 February; the payment on account of 10 March nets in
      // Column3. SUPP2's bill falls due in April.
      {"payables",
       "AgedOverdueAP",
       {},
       {"SUPP1 0.00 300.00 (50.00) 0.00 = 250.00 + 0.00",
        "SUPP2 0.00 0.00 0.00 120.00 = 120.00 + 0.00"}},
      // On payables an open item is positive, and the test turns with the side.
      {"payables OverdueDays",
       "AgedOverdueAP",
       {"OverdueDays=10"},
       {"SUPP1 0.00 300.00 (50.00) 0.00 = 250.00 + 0.00"}},
  };
  for (const AgedCase& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(AgedRows(Open(c.key, c.assignments), c.group_field), c.rows);
  }
}

// The printed texts of the report footer's total and shares. The footer's row runs over several
// lines (the parameters), so each is found by name.
std::vector<std::string> FooterShares(const std::vector<std::string>& pages) {
  const std::string dump = Join(pages, "");
  std::vector<std::string> out;
  for (const char* name : {"rfTotal", "rfPercent1", "rfPercent2", "rfPercent3", "rfPercent4"}) {
    std::smatch found;
    const std::regex cell(std::string(name) + R"re(=(?:"[^"]*"|\S+) "([^"]*)")re");
    out.push_back(std::regex_search(dump, found, cell) ? found[1].str() : "(none)");
  }
  return out;
}

TEST_F(AgedCompany, FooterTotalTakesInFutureAndSharesStayBlankAtNothing) {
  // 100, 200, 300 and 400 of 1,050.00, in the company's money format.
  EXPECT_EQ(FooterShares(DumpPages(Open("AgedOverdueAR", {"Customers=AGED1"}))),
            (std::vector<std::string>{"$1,050.00", "9.5%", "19.0%", "28.6%", "38.1%"}));
  EXPECT_EQ(FooterShares(DumpPages(Open("AgedOverdueAR", {"Customers=ZERO", "ShowNil=true"}))),
            (std::vector<std::string>{"$0.00", "", "", "", ""}));
}

// The codes of the parties an overdue list prints, and each document row as "Reference Days
// Held Balance".
std::vector<std::string> ListRows(const std::vector<std::string>& pages) {
  std::vector<std::string> out;
  for (const DumpRow& row : RowsOf(Join(pages, ""), "Detail")) {
    auto text = [&](const char* name) {
      auto found = row.find(name);
      return found == row.end() ? std::string() : found->second.second;
    };
    if (row.count("txtOtherPartyId") != 0) {
      out.push_back(text("txtOtherPartyId") + " " + text("txtOutstanding") + " " + text("txtHeld") +
                    " " + text("txtOverdue"));
    } else if (row.count("txtReference") != 0) {
      out.push_back("  " + text("txtReference") + " " + text("txtDays") + " [" + text("numHeld") +
                    "] " + text("txtInvBalance"));
    }
  }
  return out;
}

TEST_F(AgedCompany, OverdueListBoundsHeldAmountsAndDocumentGroups) {
  const AgedCase cases[] = {
      // Due on or before 15 March: AGED1's first two invoices, STOP's one. The lower bound of
      // the company's default, 0, leaves CREDIT out; NULLDUE's documents have no due date.
      {"default",
       "OverdueListAR",
       {},
       {"AGED1 300.00 0.00 300.00", "  A1 54 [] 100.00", "  A2 23 [] 300.00",
        "STOP 250.00 0.00 250.00", "  S1 38 [] 250.00"}},
      // The lower bound is exclusive, the upper inclusive.
      {"from 250 to 300",
       "OverdueListAR",
       {"OverdueFrom=250", "OverdueTo=300"},
       {"AGED1 300.00 0.00 300.00", "  A1 54 [] 100.00", "  A2 23 [] 300.00"}},
      {"from 0 to 250",
       "OverdueListAR",
       {"OverdueTo=250"},
       {"STOP 250.00 0.00 250.00", "  S1 38 [] 250.00"}},
      // A group on the documents' employee narrows each party's documents to it.
      {"grouped by Employee",
       "OverdueListAR",
       {"Groupings=Employee"},
       {"STOP 250.00 0.00 250.00", "  S1 38 [] 250.00", "AGED1 200.00 0.00 200.00",
        "  A2 23 [] 200.00", "AGED1 100.00 0.00 100.00", "  A1 54 [] 100.00"}},
      // What is held stands apart from what is overdue; the payment on account has no due date.
      {"payables", "OverdueListAP", {}, {"SUPP1 300.00 100.00 200.00", "  P1 23 [100.00] 200.00"}},
  };
  for (const AgedCase& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(ListRows(DumpPages(Open(c.key, c.assignments))), c.rows);
  }
}

}  // namespace
}  // namespace trellin::reports::testing
