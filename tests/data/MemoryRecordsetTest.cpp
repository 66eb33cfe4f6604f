#include <gtest/gtest.h>

#include <algorithm>

#include "tests/data/RecordsetFixture.h"
#include "tests/support/CaseFile.h"

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

// Find, Filter and Sort against recordset_criteria.tsv: Find moves forward from the current row,
// a filter counts and walks what it shows, an earlier sort does not leak into the next, and a
// criteria that cannot be read is refused by Filter and Find alike and changes nothing.
TEST(MemoryRecordset, CriteriaAsListed) {
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("data/recordset_criteria.tsv", 3)) {
    SCOPED_TRACE(row.Where());
    const std::string& kind = row.fields[0];
    const std::string& criteria = row.fields[1];
    auto rs = Fruit();
    if (kind == "find") {
      ASSERT_EQ(row.fields.size(), 4u);
      for (int i = std::stoi(row.fields[2]); i > 0; --i) rs->MoveNext();
      rs->Find(criteria);
      EXPECT_EQ(rs->Eof() ? "" : rs->Value("Name").Text(), row.fields[3]);
    } else if (kind == "filter") {
      const std::string& names = row.fields[2];
      rs->MoveLast();
      rs->Filter(criteria);
      EXPECT_EQ(rs->RecordCount(),
                names.empty() ? 0 : std::count(names.begin(), names.end(), ',') + 1);
      EXPECT_EQ(Walk(*rs), names);
    } else if (kind == "sort") {
      rs->Sort("Qty DESC");
      rs->Sort(criteria);
      EXPECT_EQ(Walk(*rs), row.fields[2]);
    } else {
      ASSERT_EQ(kind, "refuse");
      try {
        rs->Filter(criteria);
        ADD_FAILURE() << "no error";
      } catch (const RecordsetError& e) {
        EXPECT_EQ(std::string(e.what()), row.fields[2]);
      }
      EXPECT_EQ(rs->RecordCount(), 5);
      EXPECT_THROW(rs->Find(criteria), RecordsetError);
    }
  }
  auto rs = Fruit();
  for (const char* keys : {"Code UP", "Code,,Name", "Missing"}) {
    EXPECT_THROW(rs->Sort(keys), RecordsetError) << keys;
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

TEST(MemoryRecordset, SortAppliesToTheFilteredRows) {
  auto rs = Fruit();
  rs->Filter("BranchId<>Null");
  rs->Sort("Name DESC");
  EXPECT_EQ(Walk(*rs), "avocado,apricot,apple");
  rs->Filter("Qty<3");
  EXPECT_EQ(Walk(*rs), "Banana,apricot") << "a later filter keeps the sort";
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
