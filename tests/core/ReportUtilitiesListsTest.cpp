// Filters from parameters, quoted check-box lists, comma lists and groupings.

#include <gtest/gtest.h>

#include "Fakes.h"
#include "core/ReportUtilities.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "tests/support/CaseFile.h"

namespace trellin::testing {
namespace {

TEST(AppendListParameterCondition, ValueGivesPhraseAndBracketedCondition) {
  ServiceFixture fixture;
  Parameters parameters;
  CreateStandardParameter(8, parameters, true);
  CreateStandardParameter(16, parameters, false);
  parameters.SetValue("Customers", Variant("A100..A199"));
  parameters.SetValue("ItemCategories", Variant("7"));

  std::string where = "Posted=True ";
  std::string description;
  AppendListParameterCondition(where, "OtherParty.OtherPartyId", "Customers", parameters,
                               description, kRangeText);
  AppendListParameterCondition(where, "Item.ItemCategoryId", "ItemCategories", parameters,
                               description, kRangeNumber);
  EXPECT_EQ(where,
            "Posted=True  AND (OtherParty.OtherPartyId IN [A100..A199])  AND "
            "(Item.ItemCategoryId IN [7]) ");
  // A row without a caption is shown by its name.
  EXPECT_EQ(description, "Customers: A100..A199\r\nItem Categories: 7");
  const auto& calls = fixture.business_layer->utilities.range_builder.calls;
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].data_type, 8);
  EXPECT_EQ(calls[1].data_type, 3);
}

TEST(AppendListParameterCondition, EmptyOrAbsentParameterAddsNothing) {
  ServiceFixture fixture;
  Parameters parameters;
  CreateStandardParameter(8, parameters, true);
  for (const std::string name : {"Customers", "Suppliers"}) {
    std::string where, description;
    AppendListParameterCondition(where, "OtherPartyId", name, parameters, description, 8);
    EXPECT_EQ(where, "") << name;
    EXPECT_EQ(description, "") << name;
  }
  EXPECT_TRUE(fixture.business_layer->utilities.range_builder.calls.empty());
}

TEST(CreateSQLWhereFromRangeParams, EveryListWithAValueInOrder) {
  ServiceFixture fixture;
  Parameters parameters;
  CreateStandardParameter(8, parameters, true);    // Customers, text
  CreateStandardParameter(25, parameters, false);  // Status, left empty
  CreateStandardParameter(45, parameters, false);  // Addresses: phrase only
  CreateStandardParameter(4, parameters, false, "", "", "", "Asset.Status");  // numeric field
  parameters.AddBoolean("ShowAll", true, false, "", false, false, "Show All");
  parameters.SetValue("Customers", Variant("C1"));
  parameters.SetValue("Addresses", Variant("7"));
  parameters.SetValue("AssetTypes", Variant("1,2"));

  std::string description = "Summary";
  const std::string where = fixture.service.CreateSQLWhereFromRangeParams(parameters, description);
  EXPECT_EQ(where, "(OtherPartyId IN [C1])  AND (Asset.Status IN [1,2]) ");
  EXPECT_EQ(description, "Summary\r\nCustomers: C1\r\nAddresses: 7\r\nTypes: 1,2");
  const auto& calls = fixture.business_layer->utilities.range_builder.calls;
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].data_type, 8);
  EXPECT_EQ(calls[1].data_type, 3);
}

TEST(CreateSQLWhereFromRangeParams, NumericFieldsAreTheFourKnownOnes) {
  ServiceFixture fixture;
  struct Case {
    std::string field;
    int data_type;
  } cases[] = {{"AssetTransaction.Type", 3}, {"Asset.Status", 3}, {"Contact.ContactId", 3},
               {"Item.Inventory", 3},        {"ContactId", 8},    {"asset.status", 8}};
  for (const Case& c : cases) {
    Parameters parameters;
    CreateStandardParameter(2, parameters, false, "", "", "", c.field);
    parameters.SetValue("Assets", Variant("5"));
    std::string description;
    (void)fixture.service.CreateSQLWhereFromRangeParams(parameters, description);
    auto& calls = fixture.business_layer->utilities.range_builder.calls;
    ASSERT_EQ(calls.size(), 1u) << c.field;
    EXPECT_EQ(calls[0].data_type, c.data_type) << c.field;
    calls.clear();
  }
}

TEST(CreateSQLWhereFromRangeParams, EmptyListValueAddsNothing) {
  ServiceFixture fixture;
  Parameters parameters;
  CreateStandardParameter(8, parameters, true);
  parameters.SetValue("Customers", Variant(""));
  std::string description;
  EXPECT_EQ(fixture.service.CreateSQLWhereFromRangeParams(parameters, description), "");
  EXPECT_EQ(description, "");
}

TEST(SelectedBooleanNames, CheckedBoxesAsQuotedList) {
  ServiceFixture fixture;
  Parameters parameters;
  parameters.AddBoolean("TypeGood", true, false, "", true, false, "TypeGood");
  parameters.AddBoolean("TypeBad", true, false, "", true, false, "Bad Debt");
  parameters.AddBoolean("TypeCaution", false, false, "", true, false, "TypeCaution");
  parameters.AddBoolean("TypeXOld", true, false, "", true, false, "TypeXOld");
  parameters.AddBoolean("TypeAdverse", true, false, "", true, false, "");
  parameters.AddBoolean("Summary", true, false, "", true, false, "Summary");
  parameters.AddString("TypeText", Variant("x"), false, "", Variant("x"), false, "TypeText");

  struct Case {
    std::string prefix, exclude, expected;
    bool all_selected;
  } cases[] = {
      {"Type", "TypeX", "'Good','Bad Debt','Adverse'", false},
      {"Type", "", "'Good','Bad Debt','XOld','Adverse'", false},
      {"TypeG", "", "'ood'", true},  // the name loses exactly the prefix
      {"Nothing", "", "", true},
      {"type", "", "", true},  // prefixes match case and all
  };
  for (const Case& c : cases) {
    bool all_selected = !c.all_selected;
    EXPECT_EQ(fixture.service.CreateSQLWhereFromBooleanParams(parameters, c.prefix, all_selected,
                                                              c.exclude),
              c.expected)
        << c.prefix << " / " << c.exclude;
    EXPECT_EQ(all_selected, c.all_selected) << c.prefix << " / " << c.exclude;
  }
}

// MoveInCommaList and SplitGroupings as listed in comma_lists.tsv.
TEST(CommaLists, AsListed) {
  for (const CaseRow& row : ReadCases("core/comma_lists.tsv", 5, /*escapes=*/true)) {
    SCOPED_TRACE(row.Where());
    const std::vector<std::string>& f = row.fields;
    if (f[0] == "move") {
      ASSERT_EQ(f.size(), 6u);
      std::string list = f[1];
      MoveInCommaList(list, f[2], f[3] == "1", f[4] == "1");
      EXPECT_EQ(list, f[5]);
      continue;
    }
    ASSERT_EQ(f[0], "split");
    ASSERT_EQ(f.size(), 6u);
    ServiceFixture fixture;
    fixture.business_layer->utilities.late_end = f[2] == "1";
    std::vector<std::string> names = {"stale"};
    std::vector<bool> breaks = {true};
    EXPECT_EQ(SplitGroupings(ParseValue(f[1]), names, breaks), f[3] == "1");
    std::string page_breaks;
    for (bool b : breaks)
      page_breaks += std::string(page_breaks.empty() ? "" : "|") + (b ? "1" : "0");
    EXPECT_EQ(Join(names, "|"), f[4]);
    EXPECT_EQ(page_breaks, f[5]);
  }
}

TEST(SplitGroupings, HoldsAtMost101Items) {
  ServiceFixture fixture;
  std::string value = "G0";
  for (int i = 1; i < 101; ++i) value += ",G" + std::to_string(i);
  std::vector<std::string> names;
  std::vector<bool> breaks;
  EXPECT_TRUE(SplitGroupings(Variant(value), names, breaks));
  EXPECT_EQ(names.size(), 101u);
  EXPECT_EQ(names.back(), "G100");
  EXPECT_THROW((void)SplitGroupings(Variant(value + ",G101"), names, breaks), std::out_of_range);
}

}  // namespace
}  // namespace trellin::testing
