// Standard parameters, grouping definitions and user-defined fields.

#include <gtest/gtest.h>

#include "Fakes.h"
#include "core/kvReportUtilities.h"

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

// The group field follows the table the report reads; every list query is run against the schema
// in tests/reports/ListQueriesTest.cpp.
TEST(GetGroupingDefinition, TheGroupFieldFollowsTheReportTable) {
  ServiceFixture fixture;
  const struct {
    const char* name;
    const char* table;
    const char* field;
    const char* key_field;
  } cases[] = {
      {"Item", "TransactionLine", "TransactionLine.ItemId", "ItemId"},
      {"Item", "", "ItemId", "ItemId"},
      {"Item Category", "TransactionLine", "Item.ItemCategoryId", "ItemCategoryId"},
      {"Customer", "OtherParty", "OtherParty.OtherPartyId", "OtherPartyId"},
      {"AddressId", "Transactions", "Transactions.AddressId", "AddressId"},
      {"Status", "OtherParty", "Status", "Status"},
      {"Other Party Type", "Transactions", "OtherParty.Type", "Type"},
      {"Supplier", "Item", "Item.SupplierId", "SupplierId"},
      {"Supplier", "Transactions", "Transactions.OtherPartyId", "OtherPartyId"},
      {"Employee", "TransactionLine", "Transactions.EmployeeId", "EmployeeId"},
      {"Employee", "acBatchTransactionLine", "acBatchTransaction.EmployeeId", "EmployeeId"},
      {"Employee", "PurchaseOrderLine", "PurchaseOrder.EmployeeId", "EmployeeId"},
      {"Job", "TransactionLine", "Transactions.JobId", "JobId"},
      // Unlike the employee, a batch line's job stays on the line.
      {"Job", "acBatchTransactionLine", "acBatchTransactionLine.JobId", "JobId"},
      {"Reference", "TransactionLine", "Transactions.Reference", "Reference"},
      {"Reference", "Job", "Reference", "Reference"},
  };
  for (const auto& c : cases) {
    std::string name = c.name, field = "stale", list_sql, key_field = "stale";
    GetGroupingDefinition(name, field, list_sql, key_field, c.table);
    EXPECT_EQ(field, c.field) << c.name << " on " << c.table;
    EXPECT_EQ(key_field, c.key_field) << c.name << " on " << c.table;
  }
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

TEST_F(UserDefinedFields, TableColonFieldNames) {
  constexpr char kParties[] = "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId";
  const Grouping cases[] = {
      {"Item:Colour", "TransactionLine", "Item.UserDefined3 AS ItemUserDefined3",
       "SELECT DISTINCT UserDefined3,'' FROM Item", "ItemUserDefined3"},
      {"Item:colour", "TransactionLine", "Item.UserDefined3 AS ItemUserDefined3",
       "SELECT DISTINCT UserDefined3,'' FROM Item", "ItemUserDefined3"},
      {"OtherParty:Rep", "Transactions", "OtherParty.UserDefined1 AS OtherPartyUserDefined1",
       "SELECT EmployeeId,Name FROM Employee ORDER BY EmployeeId", "OtherPartyUserDefined1"},
      {"Transactions:Region", "acBatchTransaction",
       "acBatchTransaction.UserDefined2 AS acBatchTransactionUserDefined2", kParties,
       "acBatchTransactionUserDefined2"},
      {"Transactions:Region", "TransactionLine",
       "Transactions.UserDefined2 AS TransactionsUserDefined2", kParties,
       "TransactionsUserDefined2"},
      {"PurchaseOrder:Region", "PurchaseOrder",
       "PurchaseOrder.UserDefined2 AS PurchaseOrderUserDefined2", kParties,
       "PurchaseOrderUserDefined2"},
      {"Asset:Site Code", "Asset", "Asset.UserDefined20 AS AssetUserDefined20", "",
       "AssetUserDefined20"},
      {"Asset:Custodian", "Asset", "Asset.UserDefined5 AS AssetUserDefined5",
       "SELECT AssetId,Description FROM Asset ORDER BY AssetId", "AssetUserDefined5"},
      {"Job:Manager", "Job", "Job.UserDefined4 AS JobUserDefined4",
       "SELECT JobId,Description FROM Job ORDER BY JobId", "JobUserDefined4"},
      {":Colour", "Item", "Item.UserDefined3 AS ItemUserDefined3",
       "SELECT DISTINCT UserDefined3,'' FROM Item", "ItemUserDefined3"},
      // Unknown fields and tables leave the key as the bare table name.
      {"Item:Weight", "TransactionLine", "", "", "Item"},
      {"Warehouse:Colour", "TransactionLine", "", "", "Warehouse"},
      {"Account:Colour", "glTransaction", "", "", "Account"},
      // Grouping names match case and all; anything else is a field of the report's table.
      {"item", "Item", "", "", "Item"},
  };
  for (const Grouping& g : cases) ExpectGrouping(g);
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
