// The GST returns and the tax detail report on the demo company: golden page dumps (the rows of
// golden_tax.tsv), and every box of a filed period against the ledger summed with plain SQL.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/host/run/ReportService.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/DemoCache.h"

namespace trellin::reports::testing {
namespace {

// The demo's last filed period at its fixed present (August and September 2025).
constexpr const char* kFiledPeriod = "33";

// A form's figures by control name, as dumped: one map a Detail row that holds box 5.
std::vector<std::map<std::string, Currency>> GSTForms(const std::string& dump) {
  std::vector<std::map<std::string, Currency>> forms;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (row.count("num5") == 0) continue;
    std::map<std::string, Currency> form;
    for (const auto& [name, value] : row) form[name] = DumpedAmount(row, name);
    forms.push_back(std::move(form));
  }
  return forms;
}

// The sums a GST 101 adds up, from the ledger's lines of one period summed by side and category.
struct LedgerSums {
  Currency zero_rated, taxable, output_tax, out_adjust, purchases, input_tax, in_adjust;
  Currency detail_output_tax, detail_input_tax;  // every category's tax, as the detail lists it
};

LedgerSums SumsOfPeriod(const BooksSql& books, const std::string& period) {
  LedgerSums s;
  const auto rows = books.Rows(
      "SELECT TaxIO, TaxCategory, sum(Value), sum(TaxValue), "
      "(SELECT Rate FROM TaxCategory WHERE TaxCategoryId = TaxCategory) FROM glTransaction "
      "WHERE TaxPeriodId = " +
      period + " AND TaxCategory <> '*' GROUP BY TaxIO, TaxCategory");
  for (const auto& row : rows) {
    const Currency value = Currency::FromRaw(std::stoll(row[2]));
    const Currency tax = Currency::FromRaw(std::stoll(row[3]));
    const bool rated = !row[4].empty() && std::stod(row[4]) != 0;
    if (row[0] == "O") {
      s.detail_output_tax -= tax;
      if (row[1] == "A" || row[1] == "F") {
        s.out_adjust -= tax;
      } else if (row[1] == "Z" && tax == Currency()) {
        s.zero_rated -= value;
      } else if (rated || tax != Currency()) {
        s.taxable -= value + tax;
        s.output_tax -= tax;
      }
    } else if (row[0] == "I") {
      s.detail_input_tax += tax;
      if (row[1] == "A") {
        s.in_adjust += tax;
      } else if (rated || tax != Currency()) {
        s.purchases += value + tax;
        s.input_tax += tax;
      }
    }
  }
  return s;
}

class TaxReturnDemo : public DemoReports {};

TEST_F(TaxReturnDemo, PageDumps) {
  ExpectGoldenRuns(Service(), "ledger", "reports/ledger/golden_tax.tsv");
}

// Every box of the filed period by both methods, from the ledger summed by side and category;
// the Income Method's boxes 8 and 12 are the quotient by 7.6667 to the ten-thousandth.
TEST_F(TaxReturnDemo, BoxesOfAFiledPeriodAgreeWithTheLedger) {
  const std::string dump =
      Join(RunPages(Open("GST101Return",
                         {std::string("TaxPeriod=") + kFiledPeriod, "ShowTaxMethod=True"})),
           "\n");
  const auto forms = GSTForms(dump);
  ASSERT_EQ(forms.size(), 1u);
  const auto& f = forms[0];
  const LedgerSums s = SumsOfPeriod(BooksSql(), kFiledPeriod);
  ASSERT_NE(s.taxable, Currency());
  ASSERT_NE(s.purchases, Currency());
  const Currency box8 = Currency::FromDouble(s.taxable.ToDouble() / 7.6667);
  const Currency box12 = Currency::FromDouble(s.purchases.ToDouble() / 7.6667);
  const std::map<std::string, Currency> expected = {
      {"num5", s.zero_rated + s.taxable},
      {"num6", s.zero_rated},
      {"num7", s.taxable},
      {"num8", box8},
      {"num9", s.out_adjust},
      {"num10", box8 + s.out_adjust},
      {"num11", s.purchases},
      {"num12", box12},
      {"num13", s.in_adjust},
      {"num14", box12 + s.in_adjust},
      {"num8b", s.output_tax},
      {"num10b", s.output_tax + s.out_adjust},
      {"num12b", s.input_tax},
      {"num14b", s.input_tax + s.in_adjust},
  };
  for (const auto& [name, value] : expected) EXPECT_EQ(f.at(name), value) << name;
}

// The forms of each branch, and of each branch and department, add up to the whole one in every
// box before the division (and in the Tax Method's recorded tax).
TEST_F(TaxReturnDemo, GroupFormsAddUpToTheWhole) {
  const std::string period = std::string("TaxPeriod=") + kFiledPeriod;
  const auto whole =
      GSTForms(Join(RunPages(Open("GST101Return", {period, "ShowTaxMethod=True"})), "\n"));
  ASSERT_EQ(whole.size(), 1u);
  for (const char* groupings : {"Groupings=Branch", "Groupings=Branch,Department"}) {
    SCOPED_TRACE(groupings);
    const auto forms = GSTForms(
        Join(RunPages(Open("GST101Return", {period, "ShowTaxMethod=True", groupings})), "\n"));
    ASSERT_GT(forms.size(), 1u);
    for (const char* box : {"num5", "num6", "num7", "num9", "num11", "num13", "num8b", "num12b"}) {
      Currency sum;
      for (const auto& form : forms) sum += form.at(box);
      EXPECT_EQ(sum, whole[0].at(box)) << box;
    }
  }
}

// The tax detail of the filed period: each category's total tax is the ledger's, sales first
// (their tax turned positive), and the net tax is box 10 less box 14 of the return's Tax Method.
TEST_F(TaxReturnDemo, TaxDetailTotalsAgreeWithTheLedgerAndTheReturn) {
  const std::string period = std::string("TaxPeriod=") + kFiledPeriod;
  const std::string dump = Join(RunPages(Open("TaxDetailReport", {period, "Summary=True"})), "\n");
  std::vector<Currency> printed;
  Currency net;
  for (const DumpRow& row : RowsOf(dump, "GroupFooter")) {
    if (row.count("numTypeTax") != 0) printed.push_back(DumpedAmount(row, "numTypeTax"));
  }
  const std::vector<std::string> texts = PrintedTexts(dump);
  const auto found =
      std::find(texts.begin(), texts.end(), "Net tax for the period (sales less expenses)");
  ASSERT_LT(found + 2, texts.end());
  net = *Currency::Parse(Replace(*(found + 2), ",", ""));
  std::vector<Currency> ledger;
  for (const auto& row : BooksSql().Rows(
           "SELECT TaxIO, TaxCategory, sum(TaxValue) FROM glTransaction WHERE TaxPeriodId = " +
           std::string(kFiledPeriod) +
           " AND TaxCategory <> '*' AND TaxIO IN ('O', 'I') GROUP BY TaxIO, TaxCategory "
           "ORDER BY TaxIO DESC, TaxCategory")) {
    const Currency tax = Currency::FromRaw(std::stoll(row[2]));
    ledger.push_back(row[0] == "O" ? -tax : tax);
  }
  EXPECT_EQ(printed, ledger);
  const auto forms =
      GSTForms(Join(RunPages(Open("GST101Return", {period, "ShowTaxMethod=True"})), "\n"));
  ASSERT_EQ(forms.size(), 1u);
  EXPECT_NE(net, Currency());
  EXPECT_EQ(net, forms[0].at("num10b") - forms[0].at("num14b"));
  // The full report prints the same totals.
  std::vector<Currency> full;
  for (const DumpRow& row :
       RowsOf(Join(RunPages(Open("TaxDetailReport", {period})), "\n"), "GroupFooter")) {
    if (row.count("numTypeTax") != 0) full.push_back(DumpedAmount(row, "numTypeTax"));
  }
  EXPECT_EQ(full, printed);
}

// The Australian demo company prints the BAS whichever key asks: its last filed quarter with both
// methods, and the open quarter a form a branch. Its categories are the BAS's own (S, Z, P, E, C,
// A), so exports reach G2, GST-free services G3 and the asset addition G10.
TEST(TaxReturnAustralia, TheBASOfTheAustralianDemo) {
  SetClockForTesting(Date::FromYmdHms(2026, 3, 31, 9, 30, 0));
  {
    auto service = host::ReportService::Open(trellin::testing::CachedDemoCompany("AU"));
    const auto last =
        service->Database().ExecuteScalarLong("SELECT Max(TaxPeriodId) FROM TaxPeriod", 0);
    const std::string filed =
        Join(DumpPages(OpenWithValues(*service, "BASReturn",
                                      {"TaxPeriod=" + std::to_string(last), "ShowTaxMethod=True"})),
             "\n");
    ExpectGolden("ledger", "BASReturn-AU-filed", filed);
    ExpectGolden(
        "ledger", "GST101Return-AU-open-by-branch",
        Join(DumpPages(OpenWithValues(*service, "GST101Return", {"Groupings=Branch"})), "\n"));
  }
  SetClockForTesting(std::nullopt);
}

}  // namespace
}  // namespace trellin::reports::testing
