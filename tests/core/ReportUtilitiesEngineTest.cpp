// The data control and money rounding on the engine's objects.

#include <gtest/gtest.h>

#include "Fakes.h"
#include "core/ReportUtilities.h"

namespace trellin::testing {
namespace {

TEST(PrepareDataControl, SharesTheConnectionReadOnly) {
  ServiceFixture fixture;
  DataControl data;
  data.SetCursorLocation(2);
  data.SetCursorType(3);
  data.SetLockType(4);
  PrepareDataControl(data);
  EXPECT_EQ(data.ConnectionString(), "memory");
  EXPECT_EQ(data.Connection(), fixture.business_layer->database);
  EXPECT_EQ(data.CursorLocation(), 3);
  EXPECT_EQ(data.CursorType(), 0);
  EXPECT_EQ(data.LockType(), 1);
}

// A report with money, quantity and already-rounded fields in a footer and the detail.
struct RoundingReport {
  explicit RoundingReport(const std::string& currency_format) : report("arTest") {
    Section& footer = report.Sections().Add(SectionType::GroupFooter, "GroupFooter1");
    AddField(footer, "txtMoney", currency_format);
    AddField(footer, "txtNamed", "Currency");
    AddField(footer, "txtQuantity", "0.00");
    AddField(footer, "txtRound", "round");
    footer.Controls().Add("DDActiveReports2.Label", "lblMoney");
    Section& detail = report.Sections().Add(SectionType::Detail, "Detail");
    AddField(detail, "txtAmount", "Currency");
  }
  static void AddField(Section& section, const std::string& name, const std::string& format) {
    section.Controls().Add("DDActiveReports2.Field", name).SetOutputFormat(format);
  }
  std::string FormatOf(const std::string& name) { return report.Field(name).OutputFormat(); }

  Designer report;
};

TEST(ApplyReportRounding, WholeAndThousandsTurnMoneyFieldsToRound) {
  ServiceFixture fixture;
  const std::string currency_format = fixture.business_layer->CurrencyFormat(0);
  for (int mode : {0, -3}) {
    RoundingReport r(currency_format);
    ApplyReportRounding(r.report, mode);
    EXPECT_EQ(r.FormatOf("txtMoney"), "Round") << mode;
    EXPECT_EQ(r.FormatOf("txtNamed"), "Round") << mode;
    EXPECT_EQ(r.FormatOf("txtAmount"), "Round") << mode;
    EXPECT_EQ(r.FormatOf("txtQuantity"), "0.00") << mode;
    EXPECT_EQ(r.FormatOf("txtRound"), "round") << mode;
  }
  RoundingReport normal(currency_format);
  ApplyReportRounding(normal.report, 2);
  EXPECT_EQ(normal.FormatOf("txtMoney"), currency_format);
  EXPECT_EQ(normal.FormatOf("txtNamed"), "Currency");
}

TEST(ApplySectionRounding, FieldsShowTheirValueByMode) {
  ServiceFixture fixture;
  struct Case {
    int mode;
    Variant value;
    std::string text;
  } cases[] = {
      {-3, Variant(Currency::FromRaw(12345678900)), "1,235"},
      {-3, Variant(Currency::FromWhole(499)), "0"},
      {-3, Variant(Currency::FromWhole(-1500)), "(2)"},
      {0, Variant(Currency::FromRaw(-14995000)), "(1,500)"},
      {0, Variant(Currency::FromRaw(14994999)), "1,499"},
      {2, Variant(Currency::FromRaw(12345678900)), "1,234,567.89"},
      {2, Variant(Currency::FromWhole(-5)), "(5.00)"},
  };
  RoundingReport r(fixture.business_layer->CurrencyFormat(0));
  Section& footer = r.report.Sections().Item("GroupFooter1");
  ApplyReportRounding(r.report, -3);
  for (const Case& c : cases) {
    for (const std::string name : {"txtMoney", "txtRound", "txtQuantity"}) {
      footer.Field(name).SetDataValue(c.value);
    }
    const std::string quantity_text = footer.Field("txtQuantity").Text();
    ApplySectionRounding(footer, c.mode);
    EXPECT_EQ(footer.Field("txtMoney").Text(), c.text) << c.mode << " " << c.value.Text();
    EXPECT_EQ(footer.Field("txtRound").Text(), c.text) << c.mode << " " << c.value.Text();
    EXPECT_EQ(footer.Field("txtQuantity").Text(), quantity_text) << "not a rounded field";
    // The value itself stays exact for totals.
    EXPECT_EQ(footer.Field("txtMoney").DataValue(), c.value);
  }
}

}  // namespace
}  // namespace trellin::testing
