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

using trellin::testing::ReadCaseBlocks;
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

// aged_columns.tsv: which party falls in which column by each date mode, back-dating, the
// bounds, the order and groups.
TEST_F(AgedCompany, ColumnsByDateModeBackDatingBoundsOrderAndGroups) {
  for (const auto& c : ReadCaseBlocks("reports/receivables/aged_columns.tsv", 3)) {
    SCOPED_TRACE(c.Where() + " " + c.fields[0]);
    const std::string& group = c.fields[2];
    EXPECT_EQ(AgedRows(Open(c.fields[1], {c.fields.begin() + 3, c.fields.end()}),
                       group == "-" ? nullptr : group.c_str()),
              c.lines);
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

// overdue_lists.tsv: the overdue list's bounds, held amounts and document groups.
TEST_F(AgedCompany, OverdueListBoundsHeldAmountsAndDocumentGroups) {
  for (const auto& c : ReadCaseBlocks("reports/receivables/overdue_lists.tsv", 2)) {
    SCOPED_TRACE(c.Where() + " " + c.fields[0]);
    EXPECT_EQ(ListRows(DumpPages(Open(c.fields[1], {c.fields.begin() + 2, c.fields.end()}))),
              c.lines);
  }
}

}  // namespace
}  // namespace trellin::reports::testing
