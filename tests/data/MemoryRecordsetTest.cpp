#include <gtest/gtest.h>

#include <algorithm>

#include "tests/data/RecordsetFixture.h"

namespace trellin::data {
namespace {

using testing::Fruit;
using testing::Walk;

TEST(MemoryRecordset, WalksForwardAndBack) {
  auto rs = Fruit();
  EXPECT_EQ(rs->RecordCount(), 5);
  EXPECT_FALSE(rs->Bof());
  EXPECT_EQ(rs->Value("name").Text(), "apple") << "field names ignore case";
  EXPECT_EQ(Walk(*rs), "apple,Banana,avocado,cherry,apricot");
  EXPECT_TRUE(rs->Eof());
  EXPECT_THROW(rs->MoveNext(), RecordsetError);
  try {
    (void)rs->Value("Name");
    ADD_FAILURE() << "read at EOF";
  } catch (const RecordsetError& e) {
    EXPECT_STREQ(e.what(), "reading Name: there is no current row (EOF)");
  }
  rs->MoveLast();
  EXPECT_EQ(rs->Value("Name").Text(), "apricot");
  rs->MovePrevious();
  EXPECT_EQ(rs->Value("Name").Text(), "cherry");
  rs->MoveFirst();
  rs->MovePrevious();
  EXPECT_TRUE(rs->Bof());
  EXPECT_THROW(rs->MovePrevious(), RecordsetError);
  EXPECT_EQ(rs->FieldIndex("[Qty]"), 5);
  EXPECT_EQ(rs->FieldIndex("Line.Qty"), 5);
  EXPECT_EQ(rs->FieldIndex("Missing"), -1);
  EXPECT_THROW((void)rs->Value("Missing"), RecordsetError);
}

TEST(MemoryRecordset, EmptyIsAtBothEnds) {
  MemoryRecordset rs({{"Code", FieldType::Text, 0}}, {}, false);
  EXPECT_TRUE(rs.Eof());
  EXPECT_TRUE(rs.Bof());
  rs.MoveLast();
  EXPECT_TRUE(rs.Eof());
  EXPECT_EQ(rs.RecordCount(), 0);
}

TEST(MemoryRecordset, FindMovesForwardFromTheCurrentRow) {
  struct Case {
    const char* criteria;
    int moves_first;    // rows to move past before the Find
    const char* found;  // "" for EOF
  } cases[] = {
      {"Code='A1'", 0, "apple"},
      {"Code='A1'", 1, "avocado"},
      {"Code='a1'", 3, "apricot"},
      {"Code='A1'", 4, "apricot"},
      {"Value>5", 1, "apricot"},
      {"Value=0.0001", 0, "avocado"},
      {"Date<#2024-01-01#", 0, "apricot"},
      {"Qty>=7", 0, "cherry"},
      {"Name LIKE 'b*'", 0, "Banana"},
      {"Code='ZZ'", 0, ""},
      {"Name='apple'", 1, ""},
  };
  for (const auto& c : cases) {
    auto rs = Fruit();
    for (int i = 0; i < c.moves_first; ++i) rs->MoveNext();
    rs->Find(c.criteria);
    std::string found = rs->Eof() ? "" : rs->Value("Name").Text();
    EXPECT_EQ(found, c.found) << c.criteria << " after " << c.moves_first << " moves";
  }
}

TEST(MemoryRecordset, FilterShowsMatchingRows) {
  struct Case {
    const char* criteria;
    const char* names;
  } cases[] = {
      {"BranchId=Null", "Banana,cherry"},
      {"BranchId<>Null", "apple,avocado,apricot"},
      {"BranchId Is Null", "Banana,cherry"},
      {"Code='A1' AND BranchId='HO'", "apple,apricot"},
      {"Code='A1' AND BranchId=Null", ""},
      {"(Code='b2' OR Code='C3') AND Qty<5", "Banana"},
      {"Code='b2' OR Code='C3' AND Qty<5", "Banana"},
      {"Value=10", "apple,apricot"},
      {"Value<0", "Banana"},
      {"Value<>10", "Banana,avocado"},
      {"Date=#2024-01-05#", "apple"},
      {"Date>=#2024-01-05# AND Date<#2024-01-06#", "apple,avocado"},
      {"Date>'2024-01-31'", "Banana"},
      {"Name LIKE '*an*'", "Banana"},
      {"NOT Code='A1'", "Banana,cherry"},
      {"[Qty]>2 and qty<7", "apple,avocado"},
      {"", "apple,Banana,avocado,cherry,apricot"},
      {"  ", "apple,Banana,avocado,cherry,apricot"},
  };
  for (const auto& c : cases) {
    auto rs = Fruit();
    rs->MoveLast();
    rs->Filter(c.criteria);
    std::string names = c.names;
    std::int64_t expected_count =
        names.empty() ? 0 : std::count(names.begin(), names.end(), ',') + 1;
    EXPECT_EQ(rs->RecordCount(), expected_count) << c.criteria;
    EXPECT_EQ(Walk(*rs), c.names) << c.criteria;
  }
}

TEST(MemoryRecordset, FilterClearedShowsEveryRowAgain) {
  auto rs = Fruit();
  rs->Filter("Qty=3");
  EXPECT_EQ(rs->CurrentFilter(), "Qty=3");
  EXPECT_EQ(rs->RecordCount(), 2);
  rs->Filter("");
  EXPECT_EQ(rs->CurrentFilter(), "");
  EXPECT_EQ(rs->RecordCount(), 5);
}

TEST(MemoryRecordset, SortsByKeysWithTiesInTheirOrder) {
  struct Case {
    const char* keys;
    const char* names;
  } cases[] = {
      {"Code, Date DESC", "avocado,apple,apricot,Banana,cherry"},
      {"Qty", "Banana,apricot,apple,avocado,cherry"},
      {"Qty DESC", "cherry,apple,avocado,apricot,Banana"},
      {"Value", "cherry,Banana,avocado,apple,apricot"},
      {"Value DESC, Name", "apple,apricot,avocado,Banana,cherry"},
      {"Name", "apple,apricot,avocado,Banana,cherry"},
      {"Name ASC", "apple,apricot,avocado,Banana,cherry"},
      {"BranchId desc, [Name] DESC", "avocado,apricot,apple,cherry,Banana"},
      {"T.Qty, T.Name DESC", "Banana,apricot,avocado,apple,cherry"},
      {"", "apple,Banana,avocado,cherry,apricot"},
  };
  for (const auto& c : cases) {
    auto rs = Fruit();
    rs->Sort("Qty DESC");  // an earlier order must not leak into the next
    rs->Sort(c.keys);
    EXPECT_EQ(Walk(*rs), c.names) << c.keys;
  }
}

TEST(MemoryRecordset, SortAppliesToTheFilteredRows) {
  auto rs = Fruit();
  rs->Filter("BranchId<>Null");
  rs->Sort("Name DESC");
  EXPECT_EQ(Walk(*rs), "avocado,apricot,apple");
  rs->Filter("Qty<3");
  EXPECT_EQ(Walk(*rs), "Banana,apricot") << "a later filter keeps the sort";
}

TEST(MemoryRecordset, BadCriteriaNameTheText) {
  struct Case {
    const char* criteria;
    const char* message;
  } cases[] = {
      {"Nope='x'", "cannot use the criteria \"Nope='x'\": there is no field named 'Nope'"},
      {"Code=", "cannot use the criteria \"Code=\": a value is missing after the comparison"},
      {"Code='x", "cannot use the criteria \"Code='x\": a text has no closing quote"},
      {"(Code='x'", "cannot use the criteria \"(Code='x'\": a '(' is not closed"},
      {"Value='abc'",
       "cannot use the criteria \"Value='abc'\": 'abc' is not an amount for the field 'Value'"},
      {"Date=#2024-13-45#",
       "cannot use the criteria \"Date=#2024-13-45#\": '2024-13-45' is not a date for the field "
       "'Date'"},
      {"Code>Null",
       "cannot use the criteria \"Code>Null\": Null can only be compared with = or <>"},
      {"Code='x' Qty=1", "cannot use the criteria \"Code='x' Qty=1\": unexpected 'Qty'"},
      {"Qty=abc", "cannot use the criteria \"Qty=abc\": expected a value at 'abc'"},
  };
  for (const auto& c : cases) {
    auto rs = Fruit();
    try {
      rs->Filter(c.criteria);
      ADD_FAILURE() << "no error for " << c.criteria;
    } catch (const RecordsetError& e) {
      EXPECT_EQ(std::string(e.what()), c.message);
    }
    EXPECT_EQ(rs->RecordCount(), 5) << "a bad filter leaves the rows as they were";
    EXPECT_THROW(rs->Find(c.criteria), RecordsetError) << c.criteria;
  }
  auto rs = Fruit();
  EXPECT_THROW(rs->Sort("Code UP"), RecordsetError);
  EXPECT_THROW(rs->Sort("Code,,Name"), RecordsetError);
  EXPECT_THROW(rs->Sort("Missing"), RecordsetError);
}

TEST(MemoryRecordset, QueryResultsAreReadOnly) {
  auto rs = Fruit(/*updatable=*/false);
  EXPECT_FALSE(rs->Updatable());
  EXPECT_THROW(rs->SetValue("Name", Variant("x")), RecordsetError);
  EXPECT_THROW(rs->AddNew(), RecordsetError);
  EXPECT_THROW(rs->Delete(), RecordsetError);
  EXPECT_THROW(rs->AppendField("Extra", FieldType::Long), RecordsetError);
  EXPECT_EQ(rs->Value("Name").Text(), "apple");
}

TEST(MemoryRecordset, DeleteLeavesTheCursorForMoveNext) {
  // The reorder report's loop: delete the rows that need nothing, move on after each row.
  auto rs = Fruit(/*updatable=*/true);
  while (!rs->Eof()) {
    if (rs->Value("Qty").ToLong() <= 2) {
      rs->Delete();
      try {
        (void)rs->Value("Name");
        ADD_FAILURE() << "read a deleted row";
      } catch (const RecordsetError& e) {
        EXPECT_STREQ(e.what(), "reading Name: the current row was deleted");
      }
    }
    rs->MoveNext();
  }
  EXPECT_EQ(rs->RecordCount(), 3);
  rs->MoveFirst();
  EXPECT_EQ(Walk(*rs), "apple,avocado,cherry");
  rs->Sort("Name DESC");
  EXPECT_EQ(Walk(*rs), "cherry,avocado,apple") << "deleted rows stay gone after a sort";
}

TEST(MemoryRecordset, DisconnectedCopyIsUpdatableAndDetached) {
  auto source = Fruit(/*updatable=*/false);
  source->Filter("Qty>=3");
  source->Sort("Name DESC");
  std::shared_ptr<Recordset> copy = source->Disconnect();
  ASSERT_TRUE(copy->Updatable());
  EXPECT_EQ(copy->RecordCount(), 3);
  copy->SetValue("Value", Variant(Currency::FromWhole(7)));
  copy->Update();
  copy->MoveNext();
  copy->Delete();
  copy->MoveFirst();
  EXPECT_EQ(Walk(*copy, "Value"), "7,10");
  source->Filter("");
  source->Sort("");
  EXPECT_EQ(Walk(*source, "Value"), "10,-5.5,0.0001,,10") << "the source is untouched";
}

}  // namespace
}  // namespace trellin::data
