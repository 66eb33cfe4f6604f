// The list base: a key's parameters turned into the WHERE text and description, the numeric
// fields and the address rule of the range loop, the order, and the groupings.

#include <gtest/gtest.h>

#include <stdexcept>

#include "Fakes.h"
#include "core/ListDesigner.h"
#include "platform/runtime/Date.h"

namespace trellin::testing {
namespace {

using Kind = ListParameterKind;

constexpr ListChoice kStates[] = {
    {"All", "", ""},
    {"Open", "t.Closed Is Null", "Open entries only"},
};
constexpr ListChoice kKinds[] = {{"Good"}, {"Bad"}};

constexpr ListParameter kParameters[] = {
    {.kind = Kind::Standard, .caption = "Banks", .field = "t.BankId", .index = 5, .primary = true},
    // Item.Inventory is one of the numeric fields; AddressId gets a phrase but no condition.
    {.kind = Kind::Standard,
     .name = "Stocked",
     .caption = "Stocked",
     .field = "Item.Inventory",
     .index = 18},
    {.kind = Kind::Standard, .caption = "Addresses", .index = 45},
    {.kind = Kind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .field = "t.Date",
     .from_default = "GLCURRENT-1E+1D",
     .to_default = "GLCURRENT"},
    {.kind = Kind::MoneyRange, .name = "Amount", .caption = "Amount", .field = "Abs(t.Value)"},
    {.kind = Kind::Option,
     .name = "IncludeYearEnd",
     .caption = "Include Year End",
     .phrase = "Year-end entries included",
     .off_condition = "t.Type Is Null"},
    {.kind = Kind::Choice, .name = "State", .caption = "State", .choices = kStates},
    {.kind = Kind::PickList,
     .name = "References",
     .caption = "References",
     .field = "t.Reference",
     .list_sql = "SELECT Reference,'' FROM t GROUP BY Reference",
     .key_field = "Reference"},
    {.kind = Kind::CheckBoxes,
     .name = "Kind",
     .caption = "Kinds",
     .field = "t.Kind",
     .choices = kKinds},
};

constexpr ListOrder kOrders[] = {
    {"Code", "t.Code"},
    {"Date", "t.Date,t.Code"},
};

constexpr ListGrouping kOwn[] = {
    {"Reference", "t.Reference", "SELECT Reference,'' FROM t", "Reference"}};

constexpr ListKey kKey = {
    .key = "TestList",
    .base_sql = "SELECT t.Code,t.Date FROM t",
    .base_where = "t.Sequence=0",
    .orders = kOrders,
    .parameters = kParameters,
    .groupings = "Bank,Other Party,Reference",
    .grouping_table = "t",
    .own_groupings = kOwn,
    .summary = true,
};

struct Value {
  const char* name;
  Variant value;
};

Parameters Declared(std::initializer_list<Value> values) {
  Parameters p;
  DeclareListParameters(kKey, p);
  for (const Value& v : values) p.SetValue(v.name, v.value);
  return p;
}

TEST(ListDesigner, DeclaresTheKeysParametersInOrder) {
  ServiceFixture service;
  Parameters p = Declared({});
  std::vector<std::string> names;
  for (const ParameterPtr& parameter : p) names.push_back(parameter->Name);
  EXPECT_EQ(names, (std::vector<std::string>{"OrderBy", "Banks", "Stocked", "Addresses",
                                             "DatedFrom", "DatedTo", "AmountFrom", "AmountTo",
                                             "IncludeYearEnd", "State", "References", "KindGood",
                                             "KindBad", "Summary", "Groupings"}));
  EXPECT_EQ(p.Item("Banks").SQLField, "t.BankId");
  EXPECT_EQ(p.Item("Banks").KeyField, "BankId");
  EXPECT_TRUE(p.Item("Banks").Primary);
  EXPECT_EQ(p.Item("DatedFrom").DefaultValue.Text(), "GLCURRENT-1E+1D");
  EXPECT_EQ(p.Item("DatedTo").Caption, "Dated To");
  EXPECT_EQ(p.Item("References").SQLField, "t.Reference");
  EXPECT_EQ(p.Item("State").Choices, "All,Open");
  EXPECT_EQ(p.Item("OrderBy").Choices, "Code,Date");
}

TEST(ListDesigner, ParametersBecomeTheWhereTextAndTheDescription) {
  ServiceFixture service;
  const std::string base = "SELECT t.Code,t.Date FROM t WHERE ";
  struct Case {
    const char* what;
    std::initializer_list<Value> values;
    std::string sql;
    std::string description;
  } cases[] = {
      // Year-end lines are left out unless asked for; nothing else filters.
      {"nothing set",
       {},
       base + "t.Sequence=0  AND t.Type Is Null  ORDER BY t.Code",
       "Ordered by Code"},
      {"list parameters come first, through the range loop",
       {{"Banks", Variant("CHQ")}, {"References", Variant("P1..P9")}},
       base + "(t.BankId IN [CHQ])  AND (t.Reference IN [P1..P9])  AND t.Sequence=0  AND "
              "t.Type Is Null  ORDER BY t.Code",
       "Ordered by Code\r\nBanks: CHQ\r\nReferences: P1..P9"},
      {"an address is described but never tested",
       {{"Addresses", Variant("5")}},
       base + "t.Sequence=0  AND t.Type Is Null  ORDER BY t.Code",
       "Ordered by Code\r\nAddresses: 5"},
      {"dates bound the field, the last day inclusive",
       {{"DatedFrom", Variant(Date::FromYmd(2025, 3, 1))},
        {"DatedTo", Variant(Date::FromYmd(2025, 3, 31))}},
       base + "t.Sequence=0  AND t.Date>=#2025-03-01#  AND t.Date<#2025-04-01#  AND t.Type Is "
              "Null  ORDER BY t.Code",
       "Ordered by Code\r\nDated from 01/03/2025 to 31/03/2025"},
      {"one end of a money range",
       {{"AmountFrom", Variant("100")}},
       base + "t.Sequence=0  AND Abs(t.Value)>=100  AND t.Type Is Null  ORDER BY t.Code",
       "Ordered by Code\r\nAmount from 100.00"},
      {"an option's own condition and phrase, a choice's, and unchecked boxes",
       {{"IncludeYearEnd", Variant(true)},
        {"State", Variant("Open")},
        {"KindBad", Variant(false)},
        {"OrderBy", Variant("Date")}},
       base + "t.Sequence=0  AND t.Closed Is Null  AND t.Kind In ('Good')  ORDER BY t.Date,t.Code",
       "Ordered by Date\r\nYear-end entries included\r\nOpen entries only\r\nKinds: 'Good'"},
      {"no box checked keeps no row",
       {{"KindGood", Variant(false)}, {"KindBad", Variant(false)}, {"OrderBy", Variant("Nope")}},
       base + "t.Sequence=0  AND t.Type Is Null  AND (1=0)  ORDER BY t.Code",
       "Ordered by Nope\r\nKinds: none"},
  };
  for (const Case& c : cases) {
    const ListQuery q = BuildListQuery(kKey, Declared(c.values));
    EXPECT_EQ(q.sql, c.sql) << c.what;
    EXPECT_EQ(q.description, c.description) << c.what;
  }
}

// A list that starts on one code (the journals on "GL") filters by it until the user clears it;
// one order offers no choice and says nothing of it.
TEST(ListDesigner, AStartingValueFiltersUntilClearedAndOneOrderIsNoChoice) {
  ServiceFixture service;
  constexpr ListParameter kSources[] = {
      {.kind = Kind::Standard, .field = "t.glSourceId", .index = 32, .initial = "GL"}};
  constexpr ListOrder kOne[] = {{"Date", "t.Date"}};
  const ListKey key = {.key = "Journals",
                       .base_sql = "SELECT t.Date FROM t",
                       .orders = kOne,
                       .parameters = kSources};
  Parameters p;
  DeclareListParameters(key, p);
  EXPECT_FALSE(p.Exists("OrderBy"));
  EXPECT_EQ(p.Item("Sources").DefaultValue.Text(), "GL");
  ListQuery q = BuildListQuery(key, p);
  EXPECT_EQ(q.sql, "SELECT t.Date FROM t WHERE (t.glSourceId IN [GL])  ORDER BY t.Date");
  EXPECT_EQ(q.description, "Sources: GL");
  p.SetValue("Sources", Variant(""));
  q = BuildListQuery(key, p);
  EXPECT_EQ(q.sql, "SELECT t.Date FROM t ORDER BY t.Date");
  EXPECT_EQ(q.description, "");
}

TEST(ListDesigner, NumericFieldsAskForNumericRanges) {
  ServiceFixture service;
  FakeRangeBuilder& builder = service.business_layer->utilities.range_builder;
  const ListQuery q =
      BuildListQuery(kKey, Declared({{"Stocked", Variant("2,3")}, {"Banks", Variant("CHQ")}}));
  ASSERT_EQ(builder.calls.size(), 2u) << q.sql;
  EXPECT_EQ(builder.calls[0].field, "t.BankId");
  EXPECT_EQ(builder.calls[0].data_type, 8);
  EXPECT_EQ(builder.calls[1].field, "Item.Inventory");
  EXPECT_EQ(builder.calls[1].data_type, 3);
}

TEST(ListDesigner, GroupingsLeadTheOrderOutermostFirstAndJoinTheSelect) {
  ServiceFixture service;
  const ListQuery q =
      BuildListQuery(kKey, Declared({{"Groupings", Variant("Bank [Page Break],Reference")},
                                     {"Summary", Variant(true)},
                                     {"OrderBy", Variant("Date")}}));
  ASSERT_EQ(q.groups.size(), 2u);
  // Level 1 is the innermost: the key's own Reference row, then the standard Bank on t.
  EXPECT_EQ(q.groups[0].name, "Reference");
  EXPECT_EQ(q.groups[0].field, "t.Reference");
  EXPECT_FALSE(q.groups[0].page_break);
  EXPECT_EQ(q.groups[1].name, "Bank");
  EXPECT_EQ(q.groups[1].field, "t.BankId");
  EXPECT_EQ(q.groups[1].key_field, "BankId");
  EXPECT_TRUE(q.groups[1].page_break);
  EXPECT_TRUE(q.summary);
  EXPECT_EQ(q.sql,
            "SELECT t.Code,t.Date,t.Reference,t.BankId FROM t WHERE t.Sequence=0  AND t.Type Is "
            "Null  ORDER BY t.BankId,t.Reference,t.Date,t.Code");
  EXPECT_EQ(q.description, "Ordered by Date\r\nSummary");
}

TEST(ListDesigner, AFixedGroupingStaysOutsideAndAnUnknownOneIsRefused) {
  ServiceFixture service;
  ListKey fixed = kKey;
  fixed.fixed_grouping = "Bank";
  const std::vector<ChosenGrouping> groups =
      ListGroups(fixed, Declared({{"Groupings", Variant("Other Party")}}));
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(groups[0].field, "t.OtherPartyId");
  EXPECT_EQ(groups[1].field, "t.BankId");
  try {
    (void)ListGroups(kKey, Declared({{"Groupings", Variant("Nowhere:Field")}}));
    FAIL() << "an unknown grouping was taken";
  } catch (const std::invalid_argument& e) {
    EXPECT_STREQ(e.what(), "Groupings: \"Nowhere:Field\" is not a grouping of this report.");
  }
}

}  // namespace
}  // namespace trellin::testing
