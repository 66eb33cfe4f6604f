// The GST 101 and BAS returns on the small company of tax.sql (and its Australian twin), where
// every box is known by hand, and on the demo company, where the boxes are checked against the
// ledger read with plain SQL.

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/host/run/ReportService.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglBAS.h"
#include "reports/ledger/arglGST101.h"
#include "reports/ledger/arglGST101BAS.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::reports::testing {
namespace {

// The printed forms of a run: each form's figures by control name (as dumped, before the
// mask), a form a Detail row that holds box 5 or field 9.
std::vector<std::map<std::string, std::string>> PrintedForms(const std::string& dump) {
  std::vector<std::map<std::string, std::string>> forms;
  for (const DumpRow& row : RowsOf(dump, "Detail")) {
    if (row.count("num5") == 0 && row.count("num9") == 0) continue;
    std::map<std::string, std::string> form;
    for (const auto& [name, value] : row) form[name] = value.first;
    forms.push_back(std::move(form));
  }
  return forms;
}

// A dumped figure as money ("1234.5@" or a whole "1234").
Currency FormFigure(const std::map<std::string, std::string>& form, const std::string& name) {
  auto found = form.find(name);
  if (found == form.end()) return Currency();
  std::string value = found->second;
  if (!value.empty() && value.back() == '@') value.pop_back();
  return Currency::Parse(value).value_or(Currency());
}

// The net tax the tax detail report ends with: the second figure after its caption.
Currency NetTax(const std::string& dump) {
  const std::vector<std::string> texts = PrintedTexts(dump);
  const auto found =
      std::find(texts.begin(), texts.end(), "Net tax for the period (sales less expenses)");
  if (found == texts.end() || texts.end() - found < 3) return Currency();
  return Currency::Parse(Replace(*(found + 2), ",", "")).value_or(Currency());
}

// A company built from tax.sql and any further row files, with a service over it.
class TaxCompany {
 public:
  explicit TaxCompany(std::initializer_list<std::string_view> rows)
      : company_(rows), service_(host::ReportService::Open(company_.Path().string())) {}
  host::ReportService& Service() { return *service_; }
  // The run's page dump; errors come back in the dump's last page.
  std::string Dump(const std::string& key, const std::vector<std::string>& assignments) {
    return Join(DumpPages(OpenWithValues(*service_, key, assignments)), "\n");
  }

 private:
  trellin::testing::FixtureCompany company_;
  std::unique_ptr<host::ReportService> service_;
};

// A run reads the company through process-wide globals that the last service opened sets, so
// only one of the companies is open at a time: asking for the other closes it.
class TaxReturns : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { SetClockForTesting(Date::FromYmdHms(2025, 5, 2, 9, 30, 0)); }
  static void TearDownTestSuite() {
    CloseCompanies();
    SetClockForTesting(std::nullopt);
  }
  static void CloseCompanies() {
    nz_.reset();
    au_.reset();
  }
  static TaxCompany& Nz() {
    if (!nz_) {
      CloseCompanies();
      nz_ = std::make_unique<TaxCompany>(
          std::initializer_list<std::string_view>{"reports/ledger/tax.sql"});
    }
    return *nz_;
  }
  static TaxCompany& Au() {
    if (!au_) {
      CloseCompanies();
      au_ = std::make_unique<TaxCompany>(std::initializer_list<std::string_view>{
          "reports/ledger/tax.sql", "reports/ledger/tax_au.sql"});
    }
    return *au_;
  }

 private:
  static std::unique_ptr<TaxCompany> nz_;
  static std::unique_ptr<TaxCompany> au_;
};

std::unique_ptr<TaxCompany> TaxReturns::nz_;
std::unique_ptr<TaxCompany> TaxReturns::au_;

TEST_F(TaxReturns, FormsMatchTheirGoldenDumps) {
  ExpectGoldenRuns(Nz().Service(), "ledger", "reports/ledger/tax_golden_runs.tsv");
  ExpectGoldenRuns(Au().Service(), "ledger", "reports/ledger/tax_au_golden_runs.tsv");
}

// Every box of the GST 101 by both methods, worked by hand from tax.sql. Box 8 and 12 of the
// Income Method are the quotient to the ten-thousandth; the warning shows when box 10 or box 14 of
// the methods differ by more than 1.00.
TEST_F(TaxReturns, GST101BoxesByPeriod) {
  const struct {
    const char* period;
    // Income Method boxes 5 to 15, then the Tax Method's 8, 10, 12 and 14.
    std::vector<const char*> income;
    std::vector<const char*> tax;
    bool warning;
    const char* divide;  // the caption of box 8
  } cases[] = {
      // "*" and the exempt "E" (rate 0, no tax) reach no box; the input "Z" without tax is no
      // purchase; the adjustments are tax only: 20.00 out, 10.00 - 0.50 in.
      {"1",
       {"3950", "500", "3450", "449.998", "20", "469.998", "920", "119.9995", "9.5", "129.4995",
        "340.4985"},
       {"450", "470", "120", "129.5"},
       false,
       "Divide Box 7 by 7.6667"},
      // Exempt sales: nothing on the output side; purchases as usual.
      {"2",
       {"0", "0", "0", "0", "0", "0", "460", "59.9997", "0", "59.9997", "59.9997"},
       {"0", "0", "60", "60"},
       false,
       "Divide Box 7 by 7.6667"},
      // Rate 0: the division boxes are 0 and their captions say so.
      {"3",
       {"1000", "0", "1000", "0", "0", "0", "300", "0", "0", "0", "0"},
       {"0", "0", "0", "0"},
       false,
       "Nil Tax Rate"},
      // 12.5%: 900.00 / 9 = 100.00 against 99.00 recorded, exactly 1.00: no warning.
      {"4",
       {"900", "0", "900", "100", "0", "100", "0", "0", "0", "0", "100"},
       {"99", "99", "0", "0"},
       false,
       "Divide Box 7 by 9"},
      // 98.99 recorded: 1.01 apart, the warning.
      {"5",
       {"900", "0", "900", "100", "0", "100", "0", "0", "0", "0", "100"},
       {"98.99", "98.99", "0", "0"},
       true,
       "Divide Box 7 by 9"},
      // A "Z" sum with tax is taxable, not zero rated.
      {"6",
       {"115", "0", "115", "14.9999", "0", "14.9999", "0", "0", "0", "0", "14.9999"},
       {"15", "15", "0", "0"},
       false,
       "Divide Box 7 by 7.6667"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string("period ") + c.period);
    const std::string dump =
        Nz().Dump("GST101Return", {std::string("TaxPeriod=") + c.period, "ShowTaxMethod=True"});
    const auto forms = PrintedForms(dump);
    ASSERT_EQ(forms.size(), 1u) << dump.substr(dump.size() > 400 ? dump.size() - 400 : 0);
    for (int box = 5; box <= 15; ++box) {
      EXPECT_EQ(FormFigure(forms[0], "num" + std::to_string(box)),
                *Currency::Parse(c.income[static_cast<std::size_t>(box - 5)]))
          << "box " << box;
    }
    const int tax_boxes[] = {8, 10, 12, 14};
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(FormFigure(forms[0], "num" + std::to_string(tax_boxes[i]) + "b"),
                *Currency::Parse(c.tax[i]))
          << "tax method box " << tax_boxes[i];
    }
    const std::vector<std::string> texts = PrintedTexts(dump);
    const bool warned = std::find(texts.begin(), texts.end(),
                                  "Income Method does not balance with Tax Method.") != texts.end();
    EXPECT_EQ(warned, c.warning);
    EXPECT_NE(std::find(texts.begin(), texts.end(), c.divide), texts.end()) << c.divide;
  }
}

// The open period (from 1 March 2025 to 30 April): sales on the payments basis count by the bank's
// date where they went through the bank (February's sale banked in March counts, April's banked
// in May does not) and by their own date otherwise; the purchase stamped at noon on 30 April is
// past the GST 101's "<=" limit but inside the BAS's "<" 1 May.
TEST_F(TaxReturns, TheOpenPeriodByBankDateAndTimeOfDay) {
  const auto gst = PrintedForms(Nz().Dump("GST101Return", {"ShowTaxMethod=True"}));
  ASSERT_EQ(gst.size(), 1u);
  EXPECT_EQ(FormFigure(gst[0], "num5"), Currency::FromWhole(575));
  EXPECT_EQ(FormFigure(gst[0], "num8b"), Currency::FromWhole(75));
  EXPECT_EQ(FormFigure(gst[0], "num11"), Currency::FromWhole(230));
  EXPECT_EQ(FormFigure(gst[0], "num12b"), Currency::FromWhole(30));

  const auto bas = PrintedForms(Au().Dump("BASReturn", {"ShowTaxMethod=True"}));
  ASSERT_EQ(bas.size(), 1u);
  EXPECT_EQ(FormFigure(bas[0], "numG1"), Currency::FromWhole(575));
  EXPECT_EQ(FormFigure(bas[0], "numG12"), Currency::FromWhole(345));
}

// The BAS of period 1 (asked for by the GST 101's key: the country decides): "A" sales in G7; the
// "Z" purchase in G14 and G12; the negative input adjustment takes G18 to -0.50, which prints -1,
// the floor; the fields in order from the printed ones; both methods agree, so no variation line.
TEST_F(TaxReturns, BASFieldsOfAFiledPeriod) {
  const std::string dump = Au().Dump("GST101Return", {"TaxPeriod=1", "ShowTaxMethod=True"});
  const auto forms = PrintedForms(dump);
  ASSERT_EQ(forms.size(), 1u);
  const std::map<std::string, std::int64_t> expected = {
      {"G1", 3950}, {"G2", 0},    {"G3", 500},  {"G4", 0},    {"G5", 500},   {"G6", 3450},
      {"G7", 20},   {"G8", 3470}, {"G9", 452},  {"G10", 0},   {"G11", 1120}, {"G12", 1120},
      {"G13", 0},   {"G14", 200}, {"G16", 200}, {"G17", 920}, {"G18", -1},   {"G19", 919},
      {"G20", 119}, {"1A", 452},  {"1B", 119},  {"2A", 452},  {"2B", 119},   {"3", 333},
      {"4", 0},     {"8A", 452},  {"9", 333}};
  for (const auto& [field, value] : expected) {
    EXPECT_EQ(FormFigure(forms[0], "num" + field), Currency::FromWhole(value)) << field;
    EXPECT_EQ(FormFigure(forms[0], "num" + field + "b"), Currency::FromWhole(value))
        << field << "b";
  }
  const std::vector<std::string> texts = PrintedTexts(dump);
  EXPECT_NE(std::find(texts.begin(), texts.end(), "Business Activity Statement"), texts.end());
  EXPECT_NE(std::find(texts.begin(), texts.end(), "Payable"), texts.end());
  EXPECT_EQ(std::find_if(texts.begin(), texts.end(),
                         [](const std::string& t) { return t.rfind("WARNING", 0) == 0; }),
            texts.end());
}

// The BAS's variation and its "Z" rule on the hand-made periods: at 12.5% the 1.01 short of
// period 5 grows to 2 whole dollars of field 9 (the caption and the figure two blanks apart),
// the 1.00 of period 4 to 1, which is no variation; a "Z" sum with tax counts in G1, not in G3.
TEST_F(TaxReturns, BASVariationAndZeroRatedWithTax) {
  const std::string variation =
      "WARNING - there is a variation between GST calculated and GST charged/claimed of  2";
  const struct {
    const char* period;
    bool warned;
    std::int64_t g1, g3;
  } cases[] = {{"5", true, 900, 0}, {"4", false, 900, 0}, {"6", false, 115, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string("period ") + c.period);
    const std::string dump = Au().Dump("BASReturn", {std::string("TaxPeriod=") + c.period});
    const std::vector<std::string> texts = PrintedTexts(dump);
    EXPECT_EQ(std::find(texts.begin(), texts.end(), variation) != texts.end(), c.warned);
    const auto forms = PrintedForms(dump);
    ASSERT_EQ(forms.size(), 1u);
    EXPECT_EQ(FormFigure(forms[0], "numG1"), Currency::FromWhole(c.g1));
    EXPECT_EQ(FormFigure(forms[0], "numG3"), Currency::FromWhole(c.g3));
  }
}

// The floors on their own, towards minus infinity; the tax method's gross-ups at a nil rate.
TEST_F(TaxReturns, BASFloorsAndNilRate) {
  // A sale of 100.00 with 7.50 tax, a purchase of 3.30 with 0.50, at 10% (divisor 11).
  const std::vector<TaxAmount> sales = {
      {"S", Currency::FromRaw(-75000), Currency::FromWhole(-100)}};
  const std::vector<TaxAmount> buys = {{"S", Currency::FromRaw(5000), Currency::FromRaw(33000)}};
  const BASBoxes b = ComputeBAS(sales, buys, 11);
  EXPECT_EQ(b.Income.at("G1"), 107);  // 107.50
  EXPECT_EQ(b.Income.at("G9"), 9);    // 107 / 11 = 9.7
  EXPECT_EQ(b.Income.at("G12"), 3);   // 3.80
  EXPECT_EQ(b.Income.at("9"), 9);     // G20 = 3 / 11 = 0
  EXPECT_EQ(b.Tax.at("G1"), 82);      // 7.50 x 11 = 82.50
  EXPECT_EQ(b.Tax.at("G12"), 5);      // 0.50 x 11 = 5.50
  EXPECT_EQ(b.Tax.at("9"), 7);        // 82 / 11 = 7.45
  // A credit note (a sale stored as a debit) of 5.00: G1 -5, G9 -5 / 11 = -0.45 prints -1.
  const BASBoxes credit =
      ComputeBAS({{"S", Currency::FromRaw(5000), Currency::FromRaw(45000)}}, {}, 11);
  EXPECT_EQ(credit.Income.at("G1"), -5);
  EXPECT_EQ(credit.Income.at("G9"), -1);
  EXPECT_EQ(credit.Income.at("9"), -1);
  const BASBoxes nil = ComputeBAS(sales, buys, 0);
  EXPECT_EQ(nil.Income.at("G9"), 0);
  EXPECT_EQ(nil.Tax.at("G1"), 0);
  EXPECT_EQ(nil.Tax.at("G12"), 0);
}

// A period no row has leaves the form blank without an error; no period chosen and no open period
// in the settings stops the run with a message naming the setting.
TEST_F(TaxReturns, AMissingPeriodAndNoOpenPeriod) {
  const std::string dump = Nz().Dump("GST101Return", {"TaxPeriod=99"});
  EXPECT_EQ(dump.find("errors:"), std::string::npos) << dump;
  const auto forms = PrintedForms(dump);
  ASSERT_EQ(forms.size(), 1u);
  EXPECT_EQ(TextsOf(dump, "num5"), std::vector<std::string>{""});

  CloseCompanies();
  TaxCompany closed({"reports/ledger/tax.sql", "reports/ledger/tax_no_open_period.sql"});
  for (const char* key : {"GST101Return", "TaxDetailReport"}) {
    try {
      (void)closed.Dump(key, {});
      ADD_FAILURE() << key << " ran with no period";
    } catch (const Error& e) {
      EXPECT_EQ(e.Kind(), ErrorKind::Input);
      EXPECT_NE(std::string(e.what()).find("Tax/PeriodStart"), std::string::npos) << e.what();
    }
  }
}

// One form per group, the group's label above it; the groups' forms add up to the whole one.
TEST_F(TaxReturns, GroupsAddUpToTheWhole) {
  const auto whole = PrintedForms(Nz().Dump("GST101Return", {"TaxPeriod=1", "ShowTaxMethod=True"}));
  const std::string dump =
      Nz().Dump("GST101Return", {"TaxPeriod=1", "ShowTaxMethod=True", "Groupings=Branch"});
  const auto groups = PrintedForms(dump);
  ASSERT_EQ(whole.size(), 1u);
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(TextsOf(dump, "txtGroupHeader1"),
            (std::vector<std::string>{"Branch: AKL", "Branch: WLG"}));
  for (const char* box : {"num5", "num6", "num7", "num9", "num11", "num13", "num8b", "num12b"}) {
    EXPECT_EQ(FormFigure(groups[0], box) + FormFigure(groups[1], box), FormFigure(whole[0], box))
        << box;
  }
}

// The tax detail report: its net tax is the return's Tax Method, box 10 less box 14; Summary
// prints the same totals as the full report; "Tax Analysis on Expenses" only where there are
// expenses; a clean period's exceptions are the headings alone, period 3's are its two lines
// taxed at 15% in the tax list with no tax.
TEST_F(TaxReturns, TaxDetailTotalsAndVariants) {
  const struct {
    std::vector<std::string> assignments;
    const char* net;    // the report's net tax
    std::size_t lines;  // Detail rows printed
    bool expenses;      // "Tax Analysis on Expenses" printed
    const char* title;
  } cases[] = {
      {{"TaxPeriod=1"}, "340.5", 9, true, "Tax Detail Report"},
      {{"TaxPeriod=1", "Summary=True"}, "340.5", 0, true, "Tax Detail Report"},
      {{"TaxPeriod=6"}, "15", 1, false, "Tax Detail Report"},
      {{"TaxPeriod=2", "ExceptionsOnly=True"}, "", 0, false, "Tax Detail Report (Exceptions)"},
      {{"TaxPeriod=3", "ExceptionsOnly=True"}, "0", 2, true, "Tax Detail Report (Exceptions)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(Join(c.assignments, " "));
    const std::string dump = Nz().Dump("TaxDetailReport", c.assignments);
    EXPECT_EQ(dump.find("errors:"), std::string::npos);
    EXPECT_EQ(NetTax(dump), *Currency::Parse(*c.net == '\0' ? "0" : c.net));
    std::size_t lines = 0;
    for (const DumpRow& row : RowsOf(dump, "Detail")) lines += row.count("numTax");
    EXPECT_EQ(lines, c.lines);
    const std::vector<std::string> texts = PrintedTexts(dump);
    EXPECT_EQ(std::find(texts.begin(), texts.end(), "Tax Analysis on Expenses") != texts.end(),
              c.expenses);
    EXPECT_NE(std::find(texts.begin(), texts.end(), c.title), texts.end());
  }
  // Period 1's net tax is its return's by the Tax Method.
  const auto forms = PrintedForms(Nz().Dump("GST101Return", {"TaxPeriod=1", "ShowTaxMethod=True"}));
  ASSERT_EQ(forms.size(), 1u);
  EXPECT_EQ(FormFigure(forms[0], "num10b") - FormFigure(forms[0], "num14b"),
            *Currency::Parse("340.5"));
  // The summary's type totals are the full report's.
  EXPECT_EQ(TextsOf(Nz().Dump("TaxDetailReport", {"TaxPeriod=1", "Summary=True"}), "numTypeTax"),
            TextsOf(Nz().Dump("TaxDetailReport", {"TaxPeriod=1"}), "numTypeTax"));
}

}  // namespace
}  // namespace trellin::reports::testing
