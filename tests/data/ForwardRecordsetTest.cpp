#include "platform/data/ForwardRecordset.h"

#include <gtest/gtest.h>

#include "tests/data/RecordsetFixture.h"

namespace trellin::data {
namespace {

std::shared_ptr<Connection> MemoryDatabase(const char* setup) {
  sqlite3* db = nullptr;
  sqlite3_open(":memory:", &db);
  auto connection = std::make_shared<Connection>(db);
  connection->Execute(setup, "setting up the test table");
  return connection;
}

ResultField Typed(const char* name, FieldType type) { return ResultField{{name, type, 0}, true}; }

TEST(ColumnReader, EachTypeComesBackFromItsStorageForm) {
  auto db = MemoryDatabase("SELECT 1");
  ForwardRecordset rs(
      db,
      "SELECT 'abc', 42, 1.5, 123456, '2024-01-05 10:00:00', 1, 0, NULL, NULL, 7, "
      "2.5, '2024-02-29'",
      {Typed("Text", FieldType::Text), Typed("Long", FieldType::Long),
       Typed("Double", FieldType::Double), Typed("Money", FieldType::Currency),
       Typed("Stamp", FieldType::Date), Typed("Yes", FieldType::Boolean),
       Typed("No", FieldType::Boolean), Typed("NullMoney", FieldType::Currency),
       Typed("NullDate", FieldType::Date), ResultField{{"Any", FieldType::Text}, false},
       ResultField{{"AnyReal", FieldType::Text}, false}, Typed("Day", FieldType::Date)});
  ASSERT_FALSE(rs.Eof());
  EXPECT_EQ(rs.Value(0), Variant("abc"));
  EXPECT_EQ(rs.Value(1), Variant(std::int64_t{42}));
  EXPECT_EQ(rs.Value(2), Variant(1.5));
  EXPECT_EQ(rs.Value(3), Variant(Currency::FromRaw(123456))) << "ten-thousandths: 12.3456";
  EXPECT_EQ(rs.Value(4), Variant(Date::FromYmdHms(2024, 1, 5, 10, 0, 0)));
  EXPECT_EQ(rs.Value(5), Variant(true));
  EXPECT_EQ(rs.Value(6), Variant(false));
  EXPECT_TRUE(rs.Value(7).IsNull());
  EXPECT_TRUE(rs.Value(8).IsNull());
  EXPECT_EQ(rs.Value(9), Variant(std::int64_t{7})) << "untyped columns keep their storage kind";
  EXPECT_EQ(rs.Value(10), Variant(2.5));
  EXPECT_EQ(rs.Value(11), Variant(Date::FromYmd(2024, 2, 29)));
}

TEST(ColumnReader, StoredValuesThatDoNotFitTheirTypeAreErrors) {
  struct Case {
    const char* select;
    FieldType type;
    const char* message;
  } cases[] = {
      {"SELECT '5 March'", FieldType::Date, "the column 'X' holds '5 March', which is not a date"},
      {"SELECT 'ten'", FieldType::Currency, "the column 'X' holds 'ten', which is not an amount"},
      {"SELECT 'many'", FieldType::Long,
       "the column 'X' holds 'many', which is not a whole number"},
      {"SELECT 'maybe'", FieldType::Boolean,
       "the column 'X' holds 'maybe', which is not True or False"},
      {"SELECT 45000", FieldType::Date, "the column 'X' holds '45000', which is not a date"},
      {"SELECT 1e300", FieldType::Long,
       "the column 'X' holds '1.0e+300', which is not a whole number"},
      {"SELECT 1e300", FieldType::Currency,
       "the column 'X' holds '1.0e+300', which is not an amount"},
  };
  auto db = MemoryDatabase("SELECT 1");
  for (const auto& c : cases) {
    try {
      ForwardRecordset rs(db, c.select, {Typed("X", c.type)});
      ADD_FAILURE() << c.select;
    } catch (const DatabaseError& e) {
      EXPECT_STREQ(e.what(), c.message);
    }
  }
}

TEST(ForwardRecordset, StreamsCountsAndStartsAgain) {
  auto db = MemoryDatabase(
      "CREATE TABLE T(Id INTEGER, Name TEXT);"
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<1000) "
      "INSERT INTO T SELECT i, 'row ' || i FROM n;");
  ForwardRecordset rs(db, "SELECT Id, Name FROM T WHERE Id>990 ORDER BY Id;",
                      {Typed("Id", FieldType::Long), Typed("Name", FieldType::Text)});
  EXPECT_FALSE(rs.Bof());
  EXPECT_EQ(rs.RecordCount(), 10);
  EXPECT_EQ(rs.Value("name").Text(), "row 991");
  rs.MoveNext();
  rs.MoveNext();
  EXPECT_EQ(rs.Value("Id").ToLong(), 993);
  EXPECT_THROW(rs.MovePrevious(), RecordsetError);
  EXPECT_THROW(rs.MoveLast(), RecordsetError);
  EXPECT_THROW(rs.Filter("Id=1"), RecordsetError);
  EXPECT_THROW(rs.Delete(), RecordsetError);
  std::shared_ptr<Recordset> rest = rs.Disconnect();
  EXPECT_TRUE(rs.Eof());
  EXPECT_EQ(rest->RecordCount(), 8) << "the copy holds the rows not yet read";
  EXPECT_EQ(rest->Value("Id").ToLong(), 993);
  rs.MoveFirst();
  EXPECT_EQ(testing::Walk(rs, "Id"), "991,992,993,994,995,996,997,998,999,1000");
  EXPECT_THROW(rs.MoveNext(), RecordsetError);
  EXPECT_THROW((void)rs.Value(0), RecordsetError);

  ForwardRecordset none(db, "SELECT Id FROM T WHERE Id<0", {Typed("Id", FieldType::Long)});
  EXPECT_TRUE(none.Eof());
  EXPECT_TRUE(none.Bof());
  EXPECT_EQ(none.RecordCount(), 0);
}

TEST(ForwardRecordset, OutlivesTheDatabaseObjectThatOpenedIt) {
  std::unique_ptr<ForwardRecordset> rs;
  {
    auto db = MemoryDatabase("CREATE TABLE T(Id INTEGER); INSERT INTO T VALUES (1),(2);");
    rs = std::make_unique<ForwardRecordset>(db, "SELECT Id FROM T",
                                            std::vector<ResultField>{Typed("Id", FieldType::Long)});
  }
  rs->MoveNext();
  EXPECT_EQ(rs->Value(0).ToLong(), 2);
}

}  // namespace
}  // namespace trellin::data
