#include <gtest/gtest.h>

#include "platform/data/MemoryRecordset.h"
#include "tests/data/RecordsetFixture.h"

namespace trellin::data {
namespace {

using testing::Walk;

// The ledger's outstanding lines, built as the report builds them.
std::shared_ptr<Recordset> Outstanding() {
  std::shared_ptr<Recordset> rs = NewClientRecordset();
  rs->AppendField("TransactionId", FieldType::Long);
  rs->AppendField("Date", FieldType::Date);
  rs->AppendField("Reference", FieldType::Text, 15);
  rs->AppendField("Total", FieldType::Currency);
  rs->AppendField("Paid", FieldType::Boolean);
  return rs;
}

TEST(ClientRecordset, RowsAddedAreTypedByTheirFields) {
  auto rs = Outstanding();
  EXPECT_TRUE(rs->Updatable());
  EXPECT_TRUE(rs->Eof());
  rs->AddNew();
  rs->SetValue("TransactionId", Variant(41.6));
  rs->SetValue("Date", Variant("2024-03-05"));
  rs->SetValue("Reference", Variant(std::int64_t{1234}));
  rs->SetValue("Total", Variant("-12.50"));
  rs->SetValue("Paid", Variant(std::int64_t{-1}));
  rs->Update();
  rs->AddNew();
  rs->SetValue("TransactionId", Variant(std::int64_t{7}));
  rs->Update();

  EXPECT_EQ(rs->RecordCount(), 2);
  rs->MoveFirst();
  EXPECT_EQ(rs->Value("TransactionId"), Variant(std::int64_t{42}));
  EXPECT_EQ(rs->Value("Date"), Variant(Date::FromYmd(2024, 3, 5)));
  EXPECT_EQ(rs->Value("Reference"), Variant("1234"));
  EXPECT_EQ(rs->Value("Total"), Variant(Currency::FromRaw(-125000)));
  EXPECT_EQ(rs->Value("Paid"), Variant(true));
  rs->MoveNext();
  EXPECT_TRUE(rs->Value("Date").IsNull()) << "fields not written are Null";
  EXPECT_TRUE(rs->Value("Total").IsNull());
}

TEST(ClientRecordset, ValuesThatDoNotFitAreRefused) {
  auto rs = Outstanding();
  rs->AddNew();
  struct Case {
    const char* field;
    Variant value;
  } cases[] = {
      {"Total", Variant("lots")},
      {"Date", Variant("yesterday")},
      {"TransactionId", Variant("x1")},
      {"Reference", Variant("a reference that is too long")},
  };
  for (const auto& c : cases) {
    EXPECT_THROW(rs->SetValue(c.field, c.value), RecordsetError) << c.field;
  }
  try {
    rs->SetValue("Reference", Variant("a reference that is too long"));
  } catch (const RecordsetError& e) {
    EXPECT_STREQ(e.what(),
                 "cannot store 'a reference that is too long' in the field 'Reference': it is "
                 "longer than the field's 15 characters");
  }
  EXPECT_THROW(rs->SetValue("Nope", Variant(1)), RecordsetError);
  rs->SetValue("Total", Variant::Null());
  EXPECT_TRUE(rs->Value("Total").IsNull());
}

TEST(ClientRecordset, EditsAreKeptOnMoveAndDroppedOnCancel) {
  auto rs = Outstanding();
  for (int id : {1, 2, 3}) {
    rs->AddNew();
    rs->SetValue("TransactionId", Variant(id));
  }
  rs->MoveFirst();  // keeps the third row's pending value
  EXPECT_EQ(Walk(*rs, "TransactionId"), "1,2,3");

  rs->MoveFirst();
  rs->SetValue("TransactionId", Variant(10));
  EXPECT_EQ(rs->Value("TransactionId").ToLong(), 10) << "the edit shows before Update";
  rs->CancelUpdate();
  EXPECT_EQ(rs->Value("TransactionId").ToLong(), 1);

  rs->MoveNext();
  rs->AddNew();
  rs->SetValue("TransactionId", Variant(4));
  rs->CancelUpdate();
  EXPECT_EQ(rs->RecordCount(), 3);
  EXPECT_EQ(rs->Value("TransactionId").ToLong(), 2) << "back on the row before AddNew";
}

TEST(ClientRecordset, FieldsAreAppendedOnce) {
  auto rs = NewClientRecordset();
  EXPECT_THROW(rs->AddNew(), RecordsetError) << "no fields yet";
  rs->AppendField("Code", FieldType::Text, 5);
  EXPECT_THROW(rs->AppendField("code", FieldType::Long), RecordsetError);
  rs->AddNew();
  rs->SetValue("Code", Variant("A"));
  rs->Update();
  rs->AppendField("TotalOverdue", FieldType::Currency);
  EXPECT_EQ(rs->FieldCount(), 2);
  EXPECT_TRUE(rs->Value("TotalOverdue").IsNull()) << "rows already there get Null";
  EXPECT_EQ(rs->Field(1).type, FieldType::Currency);
}

}  // namespace
}  // namespace trellin::data
