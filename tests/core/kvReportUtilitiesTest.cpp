// Standard parameters, grouping definitions and user-defined fields.

#include <gtest/gtest.h>

#include "Fakes.h"
#include "core/kvReportUtilities.h"
#include "tests/support/CaseFile.h"

namespace trellin::testing {
namespace {

struct Expected {
  long index;
  std::string name, caption, list_sql, key_field, sql_field;
};

void ExpectParameter(const Parameter& p, const Expected& e) {
  EXPECT_EQ(p.Name, e.name) << "row " << e.index;
  EXPECT_EQ(p.Caption, e.caption) << "row " << e.index;
  EXPECT_EQ(p.ListSQL, e.list_sql) << "row " << e.index;
  EXPECT_EQ(p.KeyField, e.key_field) << "row " << e.index;
  EXPECT_EQ(p.SQLField, e.sql_field) << "row " << e.index;
  EXPECT_EQ(p.Type(), 4) << "row " << e.index;
}

TEST(CreateStandardParameter, OverridesAndIndexesOutsideTheTable) {
  ServiceFixture fixture;
  Parameters parameters;
  ParameterPtr renamed = CreateStandardParameter(37, parameters, false, "SupplierPaymentTerms",
                                                 "Payment Terms", "PaymentTermId");
  EXPECT_EQ(renamed->Name, "SupplierPaymentTerms");
  EXPECT_EQ(renamed->SQLField, "SupplierPayTermId");
  EXPECT_EQ(renamed->FilterField, Variant("PaymentTermId"));
  EXPECT_TRUE(parameters.Exists("SupplierPaymentTerms"));
  EXPECT_FALSE(parameters.Exists("PaymentTerms"));

  ParameterPtr kept = CreateStandardParameter(12, parameters, false, "", "", "", "");
  EXPECT_EQ(kept->Name, "PaymentTerms");
  EXPECT_EQ(kept->Caption, "Payment Terms");
  EXPECT_EQ(kept->FilterField, Variant(""));

  ParameterPtr overridden =
      CreateStandardParameter(8, parameters, false, "Debtors", "Debtors", "", "Trans.PartyId");
  EXPECT_EQ(overridden->Caption, "Debtors");
  EXPECT_EQ(overridden->SQLField, "Trans.PartyId");
  EXPECT_EQ(overridden->KeyField, "OtherPartyId");

  for (long index : {49L, 120L, -1L}) {
    Parameters others;
    ParameterPtr nameless = CreateStandardParameter(index, others, true);
    EXPECT_EQ(nameless->Name, "") << index;
    EXPECT_EQ(nameless->ListSQL, "") << index;
    EXPECT_EQ(nameless->Type(), 4) << index;
    EXPECT_TRUE(nameless->Primary) << index;
    EXPECT_EQ(others.Count(), 1u) << index;
  }
}

TEST(CreateStandardRangeParameter, NotPrimaryWithItsFieldTwice) {
  ServiceFixture fixture;
  Parameters parameters;
  fixture.service.CreateStandardRangeParameter(18, parameters, "StockItems", "Stock Items",
                                               "TransactionLine.ItemId");
  const Parameter& p = parameters.Item("StockItems");
  EXPECT_FALSE(p.Primary);
  EXPECT_EQ(p.Caption, "Stock Items");
  EXPECT_EQ(p.SQLField, "TransactionLine.ItemId");
  EXPECT_EQ(p.FilterField, Variant("TransactionLine.ItemId"));
}

TEST(CreateStandardParameter, AddressRowsFollowCountryAndSuburbOption) {
  constexpr char kCity[] = "SELECT DISTINCT City FROM OtherPartyAddress ORDER BY City";
  constexpr char kState[] = "SELECT DISTINCT State FROM OtherPartyAddress ORDER BY State";
  struct Case {
    std::string country;
    bool suburb_in_city;
    Expected expected;
  } cases[] = {
      {"AU", false, {42, "Suburb", "Suburb", kCity, "City", "OtherPartyAddress.City"}},
      {"AU", true, {42, "Suburb", "Suburb", kCity, "City", "OtherPartyAddress.City"}},
      {"NZ", true, {42, "Suburb", "Suburb", kCity, "City", "OtherPartyAddress.City"}},
      {"NZ", false, {42, "Suburb", "District", kState, "State", "OtherPartyAddress.State"}},
      // The key stays City although the query returns State.
      {"NZ", true, {43, "City", "City", kState, "City", "OtherPartyAddress.State"}},
      {"NZ", false, {43, "City", "City", kCity, "City", "OtherPartyAddress.City"}},
      {"AU", true, {43, "State", "State", kState, "State", "OtherPartyAddress.State"}},
      {"nz", false, {43, "State", "State", kState, "State", "OtherPartyAddress.State"}},
  };
  for (const Case& c : cases) {
    ServiceFixture fixture;
    fixture.application->options.country = c.country;
    fixture.application->options.suburb_in_city = c.suburb_in_city;
    Parameters parameters;
    SCOPED_TRACE(c.country + (c.suburb_in_city ? " suburb in City" : ""));
    ExpectParameter(*CreateStandardParameter(c.expected.index, parameters, false), c.expected);
  }
}

TEST(CreateStandardParameter, LiteralRowsNeedTheService) {
  Parameters parameters;
  EXPECT_THROW(CreateStandardParameter(8, parameters, false), ObjectNotSet);
  EXPECT_THROW(CreateStandardParameter(42, parameters, false), ObjectNotSet);
  EXPECT_EQ(CreateStandardParameter(13, parameters, false)->Name, "CustomerTypes");
}

struct Grouping {
  std::string name, table, field, list_sql, key_field;
};

void ExpectGrouping(const Grouping& g, const std::string& field_table = "") {
  std::string name = g.name, field = "stale", list_sql = "stale", key_field = "stale";
  GetGroupingDefinition(name, field, list_sql, key_field, g.table, field_table);
  EXPECT_EQ(field, g.field) << g.name << " on " << g.table;
  EXPECT_EQ(list_sql, g.list_sql) << g.name << " on " << g.table;
  EXPECT_EQ(key_field, g.key_field) << g.name << " on " << g.table;
  EXPECT_EQ(name, g.name);
}

class UserDefinedFields : public ::testing::Test {
 protected:
  void SetUp() override {
    auto& fields = fixture_.application->options.user_defined;
    fields[{UserDefinedKind::Item, 3}] = {"Colour", 5};
    fields[{UserDefinedKind::OtherParty, 1}] = {"Rep", 4};
    fields[{UserDefinedKind::Transactions, 2}] = {"Region", 1};
    fields[{UserDefinedKind::Asset, 20}] = {"Site Code", 0};
    fields[{UserDefinedKind::Job, 4}] = {"Manager", 8};
    fields[{UserDefinedKind::Asset, 5}] = {"Custodian", 7};
  }
  ServiceFixture fixture_;
};

// GetGroupingDefinition as listed in groupings.tsv.
TEST_F(UserDefinedFields, GroupingsAsListed) {
  for (const CaseRow& row : ReadCases("core/groupings.tsv", 4)) {
    const std::vector<std::string>& f = row.fields;
    std::string name = f[0], field = "stale", list_sql = "stale", key_field = "stale";
    GetGroupingDefinition(name, field, list_sql, key_field, f[1]);
    EXPECT_EQ(field, f[2]) << row.Where();
    EXPECT_EQ(key_field, f[3]) << row.Where();
    if (f.size() > 4) {
      EXPECT_EQ(list_sql, f[4]) << row.Where();
    }
    EXPECT_EQ(name, f[0]) << row.Where();
  }
}

TEST_F(UserDefinedFields, NameWithoutColonTakesTheFieldTable) {
  ExpectGrouping({"Colour", "TransactionLine", "", "", "Item"}, "Item");
  ExpectGrouping({"Colour", "TransactionLine", "", "", "TransactionLine"}, "");
}

TEST_F(UserDefinedFields, ResolveByKindAndName) {
  struct Case {
    std::string name;
    int kind;
    std::string field, list_sql;
  } cases[] = {
      {"MANAGER", 3, "UserDefined4", "SELECT JobId,Description FROM Job ORDER BY JobId"},
      {"Colour", 2, "UserDefined3", "SELECT DISTINCT UserDefined3,'' FROM Item"},
      {"Colour", 1, "", ""},
      {"Colour", 9, "", ""},
      {"", 2, "", ""},
  };
  for (const Case& c : cases) {
    std::string field = "stale", list_sql = "stale";
    ResolveUserDefinedField(c.name, field, list_sql, c.kind);
    EXPECT_EQ(field, c.field) << c.name << " of kind " << c.kind;
    EXPECT_EQ(list_sql, c.list_sql) << c.name << " of kind " << c.kind;
  }
}

}  // namespace
}  // namespace trellin::testing
