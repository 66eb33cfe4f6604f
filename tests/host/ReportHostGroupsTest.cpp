// Group definitions reaching the engine: headings with code and description, total lines with
// counts and sums, Null keys, unused levels, page breaks and summary mode.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/host/ReportHost.h"
#include "tests/host/HostFixture.h"

namespace trellin::host::testing {
namespace {

class ReportHostGroupsTest : public HostTest {};

// The position of a printed line, failing the test when it is missing.
std::ptrdiff_t IndexOf(const std::vector<std::string>& texts, const std::string& text) {
  auto found = std::find(texts.begin(), texts.end(), text);
  EXPECT_NE(found, texts.end()) << "not printed: " << text;
  return found - texts.begin();
}

bool AnyStartsWith(const std::vector<std::string>& texts, const std::string& prefix) {
  return std::any_of(texts.begin(), texts.end(),
                     [&](const std::string& text) { return text.rfind(prefix, 0) == 0; });
}

TEST_F(ReportHostGroupsTest, OneLevelPrintsHeadingsRowsAndTotalsInOrder) {
  KeepingSink sink = Run("CustomersByType", {{"Groupings", "Type"}});
  ASSERT_TRUE(sink.ended);
  ASSERT_EQ(sink.pages.size(), 1u);
  std::vector<std::string> texts = sink.Texts();
  // Null sorts first and is a group of its own.
  const std::vector<std::string> expected_order = {"Customer Type: (none)",
                                                   "Delta Ltd",
                                                   "Total (none)",
                                                   "Customer Type: RETAIL  Retail customers",
                                                   "Alpha Ltd",
                                                   "Beta Ltd",
                                                   "Total RETAIL  Retail customers",
                                                   "Customer Type: TRADE  Trade accounts",
                                                   "Gamma Ltd",
                                                   "Total TRADE  Trade accounts"};
  for (std::size_t i = 1; i < expected_order.size(); ++i) {
    EXPECT_LT(IndexOf(texts, expected_order[i - 1]), IndexOf(texts, expected_order[i]))
        << expected_order[i - 1] << " before " << expected_order[i];
  }
  // RETAIL's footer: its code, two customers, 100.00 + 250.50.
  std::ptrdiff_t retail_total = IndexOf(texts, "Total RETAIL  Retail customers");
  std::vector<std::string> footer(texts.begin() + retail_total, texts.begin() + retail_total + 4);
  EXPECT_EQ(footer,
            (std::vector<std::string>{"Total RETAIL  Retail customers", "RETAIL", "2", "350.50"}));
  EXPECT_TRUE(sink.Printed("4")) << "report footer count";
  // The second level is not used: its sections print nothing.
  EXPECT_FALSE(AnyStartsWith(texts, "Customer Category"));
  EXPECT_TRUE(host_->Errors().empty());
}

TEST_F(ReportHostGroupsTest, FirstPickedGroupingIsTheOuterLevel) {
  KeepingSink sink = Run("CustomersByType", {{"Groupings", "Category,Type"}});
  std::vector<std::string> texts = sink.Texts();
  EXPECT_LT(IndexOf(texts, "Customer Category: (none)"),
            IndexOf(texts, "Customer Category: A  Category A"));
  EXPECT_LT(IndexOf(texts, "Customer Category: A  Category A"),
            IndexOf(texts, "Customer Type: (none)"));
  EXPECT_LT(IndexOf(texts, "Total (none)"), IndexOf(texts, "Total A  Category A"));
  // Category A holds C1, C3 and C4; the category-less C2 stands alone.
  std::ptrdiff_t total_a = IndexOf(texts, "Total A  Category A");
  EXPECT_EQ(texts.at(static_cast<std::size_t>(total_a) + 1), "3");
}

TEST_F(ReportHostGroupsTest, PageBreakGroupStartsEachGroupOnItsOwnPage) {
  struct Case {
    const char* groupings;
    std::size_t pages;
  };
  const Case cases[] = {{"Type", 1}, {"Type [Page Break]", 3}, {"Category [Page Break],Type", 2}};
  for (const Case& c : cases) {
    KeepingSink sink = Run("CustomersByType", {{"Groupings", c.groupings}});
    ASSERT_EQ(sink.pages.size(), c.pages) << c.groupings;
    for (std::size_t page = 0; page < sink.pages.size(); ++page) {
      EXPECT_TRUE(sink.Printed("Page " + std::to_string(page + 1), static_cast<int>(page)))
          << c.groupings;
    }
  }
  KeepingSink sink = Run("CustomersByType", {{"Groupings", "Type [Page Break]"}});
  EXPECT_TRUE(sink.Printed("Customer Type: (none)", 0));
  EXPECT_TRUE(sink.Printed("Customer Type: RETAIL  Retail customers", 1));
  EXPECT_TRUE(sink.Printed("Customer Type: TRADE  Trade accounts", 2));
}

TEST_F(ReportHostGroupsTest, SummaryModePrintsTotalLinesOnly) {
  KeepingSink sink = Run("CustomersByType", {{"Groupings", "Type"}, {"Summary", "true"}});
  std::vector<std::string> texts = sink.Texts();
  for (const char* name : {"Alpha Ltd", "Beta Ltd", "Gamma Ltd", "Delta Ltd"}) {
    EXPECT_FALSE(sink.Printed(name)) << name;
  }
  // The total line names the group, so the innermost heading stays away.
  EXPECT_FALSE(AnyStartsWith(texts, "Customer Type:"));
  EXPECT_TRUE(sink.Printed("Total RETAIL  Retail customers"));
  EXPECT_TRUE(sink.Printed("350.50"));
  EXPECT_TRUE(sink.Printed("Summary: Yes"));
}

TEST_F(ReportHostGroupsTest, UngroupedRunHidesEveryGroupSection) {
  KeepingSink sink = Run("CustomersByType");
  std::vector<std::string> texts = sink.Texts();
  EXPECT_FALSE(AnyStartsWith(texts, "Total"));
  EXPECT_FALSE(AnyStartsWith(texts, "Customer "));
  for (const char* name : {"Alpha Ltd", "Beta Ltd", "Gamma Ltd", "Delta Ltd"}) {
    EXPECT_TRUE(sink.Printed(name)) << name;
  }
  EXPECT_TRUE(sink.Printed("4"));
}

TEST_F(ReportHostGroupsTest, DefinitionsThatCannotWorkAreRefusedWithTheirReason) {
  DesignerPtr designer = Prepare("CustomersByType");
  auto& host = dynamic_cast<ReportHost&>(*designer->TLReport());
  const char* kTypes = "SELECT CustomerTypeId,Description FROM CustomerType";
  EXPECT_THROW(host.DefineGroup(0, "Type", "CustomerTypeId", kTypes, false), std::invalid_argument);
  try {
    host.DefineGroup(1, "Branch", "BranchId", "SELECT Nothing FROM Nowhere", false);
    FAIL() << "a list that cannot be read";
  } catch (const DatabaseError& e) {
    EXPECT_NE(std::string(e.what()).find("The headings of the group \"Branch\""), std::string::npos)
        << e.what();
  }
  host.DefineGroup(1, "Type", "CustomerTypeId", kTypes, false);
  EXPECT_EQ(host.Group(1)->DescriptionCount(), 2u);
  EXPECT_THROW(host.DefineGroup(1, "Again", "CustomerTypeId", kTypes, false),
               std::invalid_argument);
  host.DefineGroup(3, "Third", "CustomerTypeId", kTypes, false);
  EXPECT_THROW(host.EndDefineGroups(), std::invalid_argument) << "level 2 is missing";
  host.DefineGroup(2, "Second", "CustomerTypeId", kTypes, false);
  host.EndDefineGroups();
  EXPECT_EQ(host.GroupCount(), 3);
  EXPECT_THROW(host.SetupGroupSections(false, 200, true), std::invalid_argument)
      << "the layout has two group levels";
}

TEST_F(ReportHostGroupsTest, SetupBindsUsedLevelsAndQuietsTheRest) {
  struct Case {
    std::int64_t footer_height;
    float expected_height;
  };
  const Case cases[] = {{500, 500}, {-1, 250}, {100, 240}};
  for (const Case& c : cases) {
    DesignerPtr designer = Prepare("CustomersByType");
    TLReport& host = *designer->TLReport();
    host.DefineGroup(1, "Customer Type", "OtherParty.CustomerTypeId", "", true);
    host.EndDefineGroups();
    host.SetupGroupSections(false, c.footer_height, true);
    Sections& sections = designer->Sections();
    // Never below the footer's own controls, which reach 240 twips.
    EXPECT_EQ(sections["GroupFooter1"].Height(), c.expected_height) << c.footer_height;
    EXPECT_EQ(sections["GroupHeader1"].DataField(), "CustomerTypeId");
    EXPECT_EQ(sections["GroupHeader1"].NewPage(), NewPageMode::Before);
    EXPECT_EQ(designer->Field("ghLabel1").Tag(), "Customer Type");
    EXPECT_FALSE(sections["GroupHeader2"].Visible());
    EXPECT_FALSE(sections["GroupFooter2"].Visible());
    EXPECT_EQ(sections["GroupHeader2"].DataField(), "");
    EXPECT_EQ(designer->Field("gfCount1").SummaryType(), SummaryType::SubTotal);
    EXPECT_EQ(designer->Field("gfCount1").SummaryFunc(), SummaryFunc::Count);
    EXPECT_EQ(designer->Field("rfCount").SummaryType(), SummaryType::GrandTotal);
    EXPECT_EQ(designer->Field("gf1Limit").SummaryFunc(), SummaryFunc::Sum) << "the layout's own";
  }
}

TEST(GroupDefinitionTest, KeyTextAndBoundField) {
  GroupDefinition group(1, "Supplier", "Item.SupplierId", "", false);
  EXPECT_EQ(group.BoundField(), "SupplierId");
  EXPECT_EQ(GroupDefinition(1, "Type", "[Type]", "", false).BoundField(), "Type");
  struct Case {
    Variant key;
    const char* text;
  };
  const Case cases[] = {
      {Variant("ACME"), "ACME"},
      {Variant::Null(), "(none)"},
      {Variant(std::int64_t{5}), "5"},
  };
  for (const Case& c : cases) EXPECT_EQ(group.KeyText(c.key), c.text) << c.text;
}

}  // namespace
}  // namespace trellin::host::testing
