// The column layout: widths across the print width, headings, alignment, totals in the visible
// footers, the user's pick of columns, and rows filled with "Round".

#include <gtest/gtest.h>

#include "platform/host/ColumnLayout.h"
#include "platform/host/ColumnWidths.h"
#include "platform/host/ParameterDialogue.h"
#include "tests/host/HostFixture.h"

namespace trellin::host::testing {
namespace {

TEST(ColumnWidthsTest, AutomaticColumnsShareWhatFixedOnesLeave) {
  struct Case {
    const char* what;
    std::vector<ColumnWidthRequest> columns;
    float print_width;
    std::vector<float> widths;
  };
  const Case cases[] = {
      {"two automatic share", {{-1, -1}, {1000, -1}, {-1, -1}}, 9000, {4000, 1000, 4000}},
      {"a minimum is kept", {{-1, 3000}, {-1, -1}, {5000, -1}}, 9000, {3000, 1000, 5000}},
      {"fixed only leave the rest", {{1000, -1}, {2000, -1}}, 9000, {1000, 2000}},
      {"too wide is scaled down", {{6000, -1}, {6000, -1}}, 9000, {4500, 4500}},
      {"automatic floor, then scaled", {{9000, -1}, {-1, -1}}, 9300, {8718.75f, 581.25f}},
      {"zero width stays zero", {{0, -1}, {-1, -1}}, 9000, {0, 9000}},
      // The caption's longest word and the gap after it: 1000 and 6000 twips.
      {"a fixed column widens for its caption", {{800, -1, 1000}, {-1, -1}}, 9000, {1000, 8000}},
      {"an automatic one takes it first", {{-1, -1, 6000}, {-1, -1}}, 9000, {6000, 3000}},
  };
  for (const Case& c : cases) {
    std::vector<float> widths = ColumnWidths(c.columns, c.print_width);
    ASSERT_EQ(widths.size(), c.widths.size()) << c.what;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      EXPECT_NEAR(widths[i], c.widths[i], 0.01) << c.what << " column " << i;
    }
  }
}

class ColumnLayoutTest : public HostTest {
 protected:
  DesignerPtr Laid(const std::map<std::string, std::string>& values) {
    DesignerPtr designer = Prepare("CustomerColumns", values);
    designer->ActiveReport_ReportStart();
    return designer;
  }
};

TEST_F(ColumnLayoutTest, CreateFieldsPlacesColumnsAcrossThePrintWidth) {
  DesignerPtr designer = Laid({{"Groupings", "Type"}});
  Section& header = designer->Sections()["PageHeader"];
  Section& detail = designer->Sections()["Detail"];
  struct Expected {
    const char* name;
    float left;
    float width;
    TextAlignment alignment;
    const char* caption;
  };
  // Limit and Discount are fixed; Code and Name share the remaining 7100 twips; 60 twips stand
  // after a text column and 120 after a figure (more than the 15 the report asks for), and the
  // last reaches the right margin.
  const Expected expected[] = {
      {"Code", 0, 3490, TextAlignment::Left, "Code"},
      {"Name", 3550, 3490, TextAlignment::Left, "Name"},
      {"Limit", 7100, 780, TextAlignment::Right, "Limit"},
      {"Discount", 8000, 1000, TextAlignment::Right, "Discount"},
  };
  for (const Expected& e : expected) {
    Control& label = header.Field(std::string("lbl") + e.name);
    Control& field = detail.Field(std::string("txt") + e.name);
    EXPECT_NEAR(field.Left(), e.left, 0.5) << e.name;
    EXPECT_NEAR(field.Width(), e.width, 0.5) << e.name;
    EXPECT_EQ(label.Left(), field.Left()) << e.name;
    EXPECT_EQ(field.Alignment(), e.alignment) << e.name;
    EXPECT_EQ(label.Alignment(), e.alignment) << e.name;
    EXPECT_EQ(label.Caption(), e.caption) << e.name;
    // Headings stand below the column-group caption row.
    EXPECT_EQ(label.Top(), 640) << e.name;
  }
  EXPECT_EQ(header.Controls().Find("lblCategory"), nullptr) << "added hidden";
  Control& terms = header.Field("lblGroupLimit");
  EXPECT_EQ(terms.Caption(), "Terms");
  EXPECT_EQ(terms.Left(), 7100);
  EXPECT_EQ(terms.Left() + terms.Width(), 9000);
  EXPECT_EQ(detail.Field("txtLimit").OutputFormat(), service_->BusinessLayer().CurrencyFormat(0));
  EXPECT_EQ(detail.Field("txtDiscount").OutputFormat(), "Round");
  EXPECT_GE(header.Height(), 640 + 240);
}

TEST_F(ColumnLayoutTest, TotalledColumnsGetSummariesInVisibleFootersOnly) {
  DesignerPtr designer = Laid({{"Groupings", "Type"}});
  struct Expected {
    const char* section;
    const char* name;
    SummaryType type;
  };
  const Expected expected[] = {
      {"GroupFooter1", "GroupFooter1SummaryLimit", SummaryType::SubTotal},
      {"GroupFooter1", "GroupFooter1SummaryDiscount", SummaryType::SubTotal},
      {"ReportFooter", "ReportFooterSummaryLimit", SummaryType::GrandTotal},
      {"ReportFooter", "ReportFooterSummaryDiscount", SummaryType::GrandTotal},
  };
  for (const Expected& e : expected) {
    Control* total = designer->Sections()[e.section].Controls().Find(e.name);
    ASSERT_NE(total, nullptr) << e.name;
    EXPECT_EQ(total->SummaryType(), e.type) << e.name;
    EXPECT_EQ(total->SummaryFunc(), SummaryFunc::Sum) << e.name;
    EXPECT_EQ(total->Alignment(), TextAlignment::Right) << e.name;
  }
  EXPECT_EQ(designer->Sections()["GroupFooter2"].Controls().Count(), 0u) << "level 2 unused";
  EXPECT_EQ(designer->Sections()["GroupFooter1"].Controls().Find("GroupFooter1SummaryCode"),
            nullptr)
      << "Code is not totalled";
}

TEST_F(ColumnLayoutTest, UsersPickChoosesAndOrdersTheColumns) {
  DesignerPtr designer = Laid({{"Columns", "Name, Category"}});
  Section& detail = designer->Sections()["Detail"];
  EXPECT_EQ(detail.Controls().Count(), 2u);
  EXPECT_EQ(detail.Field("txtName").Left(), 0);
  EXPECT_EQ(detail.Field("txtName").Width(), 9000 - 1200 - 60);
  EXPECT_EQ(detail.Field("txtCategory").Left(), 9000 - 1200);
  EXPECT_TRUE(designer->TLReport()->ColumnsInUse());
}

TEST_F(ColumnLayoutTest, RowsAndTotalsPrintRounded) {
  KeepingSink sink = Run("CustomerColumns", {{"Groupings", "Type"}});
  ASSERT_TRUE(host_->Errors().empty()) << host_->Errors()[0].message;
  // Discount rounds to two places, negatives in brackets; Null prints blank.
  for (const char* text : {"12.35", "(3.33)", "1.50", "$100.00", "$250.50", "$1,000.00"}) {
    EXPECT_TRUE(sink.Printed(text)) << text;
  }
  // RETAIL: 12.345 - 3.3333 and 100.00 + 250.50; the report: every row.
  for (const char* text : {"9.01", "$350.50", "10.51", "$1,355.50"}) {
    EXPECT_TRUE(sink.Printed(text)) << text;
  }
}

TEST_F(ColumnLayoutTest, PickNamingNoColumnEndsTheRunWithTheColumnsListed) {
  try {
    (void)Run("CustomerColumns", {{"Columns", "Name,Bogus"}});
    ADD_FAILURE() << "the run went on";
  } catch (const ParameterError& e) {
    EXPECT_STREQ(e.what(),
                 "Columns: \"Bogus\" is not a column of this report (Code, Name, Limit, Discount, "
                 "Category).");
  }
}

TEST(ColumnKindTest, DataTypesMapToKinds) {
  const std::pair<int, ColumnKind> cases[] = {
      {0, ColumnKind::Text},   {1, ColumnKind::Number}, {2, ColumnKind::Date},
      {3, ColumnKind::Number}, {4, ColumnKind::Money},  {5, ColumnKind::Boolean},
      {6, ColumnKind::Code},   {99, ColumnKind::Text},  {-1, ColumnKind::Text},
  };
  for (const auto& [type, kind] : cases) EXPECT_EQ(KindOfDataType(type), kind) << type;
}

}  // namespace
}  // namespace trellin::host::testing
