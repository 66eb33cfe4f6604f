#include "platform/data/SqliteDatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/data/CompanyFile.h"
#include "tests/data/CompanyFixture.h"
#include "tests/data/RecordsetFixture.h"
#include "tests/support/TempFolder.h"

namespace trellin::data {
namespace {

using testing::MakeCompany;
using TempDir = trellin::testing::TempFolder;
using testing::Walk;
using testing::Write;

TEST(SqliteDatabase, FilesThatAreNotCompanyFilesGiveClearMessages) {
  TempDir dir;
  std::string text_file = dir.File("notes.txt");
  std::ofstream(text_file) << "These are not the accounts you are looking for.\n";
  std::string other_db = dir.File("other.db");
  Write(other_db, "CREATE TABLE Something(x)");
  std::string empty_file = dir.File("empty.db");
  std::ofstream{empty_file};
  // A company file whose first page (the list of tables) has been overwritten after its header.
  std::string damaged = dir.File("damaged.db");
  MakeCompany(damaged);
  {
    std::fstream file(damaged, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(100);
    file << std::string(400, '\xff');
  }
  struct Case {
    std::string path;
    std::string why;
  } cases[] = {
      {dir.File("missing.db"), "there is no such file"},
      {text_file, "it is not an SQLite database, or it is damaged"},
      {other_db, "it has no CompanySetting table, so it is not a company file"},
      {empty_file, "it has no CompanySetting table, so it is not a company file"},
      {damaged, "it is not an SQLite database, or it is damaged"},
      {dir.File(""), "it is a folder, not a file"},
  };
  for (const auto& c : cases) {
    try {
      (void)SqliteDatabase::Open(c.path);
      ADD_FAILURE() << "opened " << c.path;
    } catch (const DatabaseError& e) {
      EXPECT_EQ(std::string(e.what()), "Cannot open the company file '" + c.path + "': " + c.why);
    }
  }
}

TEST(SqliteDatabase, OpensTheRealSchemaWithTypedColumns) {
  TempDir dir;
  std::string path = dir.File("company.db");
  CreateCompanyFile(path)->Commit();
  auto db = SqliteDatabase::Open(path);
  EXPECT_EQ(db->DatabaseType(), 1);
  EXPECT_EQ(db->Catalog().ColumnType("glTransaction", "Value"), sql::SemType::Currency);
  EXPECT_EQ(db->Catalog().ColumnType("GLTRANSACTION", "date"), sql::SemType::Date);
  EXPECT_EQ(db->Catalog().ColumnType("glTransaction", "AccountId"), sql::SemType::Text);
  EXPECT_EQ(db->RecordCount("glTransaction", ""), 0);
  // No ANALYZE has run: the file is read all the same, and nothing is written to make up for it.
  EXPECT_FALSE(db->HasStatistics());
}

// With these statistics SQLite 3.40 steps over the index by seek-scan, which lost the upper date
// bound after the IN list and returned the 2025 addition as well.
TEST(SqliteDatabase, ARangeAfterAnInListKeepsItsUpperBound) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  Write(path,
        "CREATE TABLE Move (Id INTEGER PRIMARY KEY, Code TEXT NOT NULL, Kind INTEGER NOT NULL, "
        "Dated DATE NOT NULL); CREATE INDEX Move_CodeKindDated ON Move (Code, Kind, Dated);"
        "INSERT INTO Move (Code, Kind, Dated) VALUES ('x',10,'2020-04-11'),('x',11,'2025-08-18'),"
        "('x',20,'2021-03-31'),('x',20,'2022-03-31'); ANALYZE; UPDATE sqlite_stat1 SET "
        "stat='52 4 2 1' WHERE idx='Move_CodeKindDated';");
  auto db = SqliteDatabase::Open(path);
  auto rs =
      db->Query("SELECT Id FROM Move WHERE Code='x' AND Kind IN (10,11) AND Dated<'2025-04-01'");
  std::vector<long> ids;
  for (; !rs->Eof(); rs->MoveNext()) ids.push_back(rs->Value(0).ToLong());
  EXPECT_EQ(ids, std::vector<long>{1});
}

TEST(SqliteDatabase, ValuesComeBackTypedForEveryColumnType) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  auto db = SqliteDatabase::Open(path);
  auto rs = db->Query(
      "SELECT Id, Code, Amount, Posted, Cleared, Rate, Null AS Nothing "
      "FROM Line ORDER BY Id");
  ASSERT_EQ(rs->FieldCount(), 7);
  FieldType types[] = {FieldType::Long, FieldType::Text,    FieldType::Currency,
                       FieldType::Date, FieldType::Boolean, FieldType::Double};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(rs->Field(i).type, types[i]) << rs->Field(i).name;
  EXPECT_EQ(rs->Value("Id"), Variant(std::int64_t{1}));
  EXPECT_EQ(rs->Value("Code"), Variant("A"));
  EXPECT_EQ(rs->Value("Amount"), Variant(Currency::FromRaw(123400)));
  EXPECT_EQ(rs->Value("Posted"), Variant(Date::FromYmd(2024, 3, 31)));
  EXPECT_EQ(rs->Value("Cleared"), Variant(true));
  EXPECT_EQ(rs->Value("Rate"), Variant(0.15));
  EXPECT_TRUE(rs->Value("Nothing").IsNull());
  rs->MoveNext();
  EXPECT_EQ(rs->Value("Amount"), Variant(Currency::FromRaw(-5)));
  EXPECT_EQ(rs->Value("Posted"), Variant(Date::FromYmdHms(2024, 4, 1, 9, 30, 0)));
  EXPECT_EQ(rs->Value("Cleared"), Variant(false));
  rs->MoveNext();
  for (int i = 2; i < 7; ++i) EXPECT_TRUE(rs->Value(i).IsNull()) << rs->Field(i).name;
}

TEST(SqliteDatabase, SettingsScalarsAndCounts) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  auto db = SqliteDatabase::Open(path);
  EXPECT_EQ(db->GetSetting("Defaults", "Branch", "x"), "HO");
  EXPECT_EQ(db->GetSetting("DEFAULTS", "branch", "x"), "HO");
  EXPECT_EQ(db->GetSetting("Defaults", "Nothing", "fallback"), "fallback");
  EXPECT_EQ(db->GetSetting("Options", "Blank", "fallback"), "fallback");
  EXPECT_EQ(db->ExecuteScalarLong("SELECT Count(*) FROM Line", -1), 3);
  EXPECT_EQ(db->ExecuteScalarLong("SELECT Id FROM Line WHERE Id>5", -1), -1) << "no row";
  EXPECT_EQ(db->ExecuteScalarCurrency("SELECT Amount FROM Line WHERE Id=3", Currency::FromWhole(9)),
            Currency::FromWhole(9))
      << "Null";
  EXPECT_EQ(db->ExecuteScalarCurrency("SELECT Sum(Amount) FROM Line", Currency()),
            Currency::FromRaw(123395));
  EXPECT_EQ(db->RecordCount("Line", "Code='a'"), 2) << "text compares without regard to case";
  EXPECT_EQ(db->RecordCount("Line", ""), 3);
  EXPECT_THROW((void)db->ExecuteScalarLong("SELECT Code FROM Line WHERE Id=1", 0), DatabaseError);
}

TEST(SqliteDatabase, BadSqlIsAnErrorWithItsPlace) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  auto db = SqliteDatabase::Open(path);
  try {
    (void)db->Query("SELECT Id FROM Line WHERE");
    ADD_FAILURE() << "no error";
  } catch (const DatabaseError& e) {
    std::string message = e.what();
    EXPECT_NE(message.find("at position"), std::string::npos) << message;
    EXPECT_NE(message.find("SELECT Id FROM Line WHERE"), std::string::npos) << message;
  }
  std::shared_ptr<Recordset> rs;
  EXPECT_FALSE(db->OpenRecordset("SELECT Nope FROM Line", rs));
  EXPECT_EQ(rs, nullptr);
  EXPECT_NE(db->LastError().find("Nope"), std::string::npos) << db->LastError();
  EXPECT_TRUE(db->OpenRecordset("SELECT Id FROM Line", rs));
  EXPECT_EQ(db->LastError(), "");
}

TEST(SqliteDatabase, NeverWritesTheCompanyFile) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  std::string before = trellin::testing::ReadFile(path);
  {
    auto db = SqliteDatabase::Open(path);
    EXPECT_TRUE(db->ReadOnly());
    for (const char* sql : {"DELETE FROM Line", "UPDATE Line SET Amount=0",
                            "INSERT INTO Line(Id) VALUES (9)", "DROP TABLE Line"}) {
      EXPECT_THROW((void)db->Query(sql), DatabaseError) << sql;
    }
    db->BeginSnapshot();
    auto rs = db->Query("SELECT Code, Sum(Amount) AS Total FROM Line GROUP BY Code");
    auto copy = rs->Disconnect();
    copy->SetValue("Total", Variant(Currency::FromWhole(1)));
    copy->Delete();
    auto forward = db->QueryForward("SELECT Id FROM Line");
    EXPECT_EQ(forward->RecordCount(), 3);
    (void)db->GetSetting("Tax", "Rate", "");
    db->EndSnapshot();
    EXPECT_EQ(db->RecordCount("Line", ""), 3);
  }
  EXPECT_EQ(trellin::testing::ReadFile(path), before) << "the file's bytes changed";
}

TEST(SqliteDatabase, ASnapshotHoldsWhileAnotherProcessWrites) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  auto db = SqliteDatabase::Open(path);
  const char* add_line = "INSERT INTO Line(Code, Amount) VALUES ('N', 10000)";

  db->BeginSnapshot();
  EXPECT_EQ(db->RecordCount("Line", ""), 3);
  Write(path, add_line);
  EXPECT_EQ(db->RecordCount("Line", ""), 3) << "a committed write after the start is not seen";
  std::shared_ptr<Recordset> forward;
  {
    // A sub-report's run, through the interface the host sees, stays in the same snapshot.
    Database& as_host_sees_it = *db;
    RunSnapshot nested(as_host_sees_it);
    Write(path, add_line);
    forward = as_host_sees_it.QueryForward("SELECT Id FROM Line");
    EXPECT_EQ(forward->RecordCount(), 3);
  }
  EXPECT_TRUE(db->InSnapshot());
  EXPECT_EQ(db->ExecuteScalarCurrency("SELECT Sum(Amount) FROM Line", Currency()),
            Currency::FromRaw(123395));
  db->EndSnapshot();

  EXPECT_FALSE(db->InSnapshot());
  EXPECT_EQ(db->RecordCount("Line", ""), 5) << "the next run sees both writes";
  db->EndSnapshot();  // one too many does nothing
  EXPECT_THROW(forward->MoveNext(), RecordsetError) << "its run is over";
  forward->MoveFirst();
  EXPECT_EQ(Walk(*forward, "Id"), "1,2,3,4,5");
}

TEST(SqliteDatabase, MoneyStaysExactThroughSumsAndTests) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  // A million lines of 0.0001, and pairs of lines per code that cancel to nothing.
  Write(path,
        "CREATE TABLE Big (Code TEXT, Amount MONEY);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<1000000) "
        "INSERT INTO Big SELECT 'X', 1 FROM n;"
        "CREATE TABLE Pair (Code TEXT, Amount MONEY);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<300) "
        "INSERT INTO Pair SELECT 'P' || (i % 30), 1000 + i * 7 FROM n "
        "UNION ALL SELECT 'P' || (i % 30), -(1000 + i * 7) FROM n;");
  auto db = SqliteDatabase::Open(path);
  EXPECT_EQ(db->ExecuteScalarCurrency("SELECT Sum(Amount) FROM Big", Currency()),
            Currency::FromWhole(100));
  auto sums = db->Query(
      "SELECT Code, Sum(Amount) AS Total FROM Pair GROUP BY Code "
      "HAVING Sum(Amount)<>0");
  EXPECT_TRUE(sums->Eof()) << "cancelling lines leave no float dust";
  auto split = db->Query(
      "SELECT Sum(IIf(Amount<0,-Amount,0)) AS Credits, Sum(IIf(Amount>0,Amount,0)) AS Debits, "
      "Sum(Amount)-Sum(IIf(Amount>0,Amount,0)) AS Rest FROM Pair");
  EXPECT_EQ(split->Value("Credits"), split->Value("Debits"));
  EXPECT_EQ(split->Value("Credits"), Variant(Currency::FromRaw(300 * 1000 + 7 * 300 * 301 / 2)));
  EXPECT_EQ(split->Value("Rest"), Variant(-split->Value("Debits").ToCurrency()));
  EXPECT_EQ(db->RecordCount("Line", "Amount=12.34"), 1);
  EXPECT_EQ(db->RecordCount("Line", "Amount<-0.0004"), 1);
  EXPECT_EQ(db->RecordCount("Line", "Amount<" + Database::SQLNumber(Currency::FromRaw(-4))), 1);
}

TEST(SqliteDatabase, QueryResultsSearchAndCopy) {
  TempDir dir;
  std::string path = dir.File("company.db");
  MakeCompany(path);
  auto db = SqliteDatabase::Open(path);
  auto rs = db->Query("SELECT Id, Code, Amount FROM Line");
  EXPECT_FALSE(rs->Updatable());
  rs->Find("Code='b'");
  EXPECT_EQ(rs->Value("Id").ToLong(), 2);
  rs->Sort("Code DESC, Id DESC");
  EXPECT_EQ(Walk(*rs, "Id"), "2,3,1");
  auto copy = db->QueryUpdatable("SELECT Id, Amount FROM Line ORDER BY Id");
  ASSERT_TRUE(copy->Updatable());
  copy->SetValue("Amount", Variant(Currency::FromWhole(5)));
  copy->Update();
  EXPECT_EQ(db->ExecuteScalarCurrency("SELECT Amount FROM Line WHERE Id=1", Currency()),
            Currency::FromRaw(123400));
  auto client = db->NewRecordset();
  client->AppendField("Code", FieldType::Text, 5);
  client->AddNew();
  client->SetValue("Code", Variant("X"));
  client->Update();
  EXPECT_EQ(client->RecordCount(), 1);
}

}  // namespace
}  // namespace trellin::data

namespace trellin::data {
namespace {

// The statement report's way with the real schema: one grouped query over the ledger, then each
// account looked up by Find from the first row, a missing account reading as zero.
TEST(SqliteDatabase, LedgerFiguresOnTheRealSchema) {
  TempDir dir;
  std::string path = dir.File("company.db");
  {
    auto writer = CreateCompanyFile(path);
    ASSERT_EQ(sqlite3_exec(writer->Handle(),
                           "INSERT INTO CompanySetting VALUES ('Company','Name','Demo Ltd');"
                           "INSERT INTO Account(AccountId,Description,Type) VALUES "
                           "('1-1000','Bank',1),('4-1000','Sales',4),('6-1000','Rent',6);"
                           "INSERT INTO glTransaction(AccountId,Date,Value) VALUES "
                           "('1-1000','2024-03-31',1150000),('4-1000','2024-03-31',-1000000),"
                           "('4-1000','2024-06-30 00:00:01',-5000),"
                           "('1-1000','2024-04-02',-300000);",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    writer->Commit();
  }
  auto db = SqliteDatabase::Open(path);
  EXPECT_EQ(db->GetSetting("Company", "Name", ""), "Demo Ltd");
  auto sums = db->Query("SELECT AccountId,Sum(Value) AS SumOfValue FROM glTransaction WHERE Date<" +
                        Database::SQLDate(Date::FromYmd(2024, 6, 30).AddDays(1)) +
                        " GROUP BY AccountId ORDER BY AccountId");
  struct Case {
    const char* account;
    std::int64_t raw;
  } cases[] = {{"1-1000", 850000}, {"4-1000", -1005000}, {"6-1000", 0}};
  for (const auto& c : cases) {
    sums->MoveFirst();
    sums->Find("AccountId='" + std::string(c.account) + "'");
    Currency value = sums->Eof() ? Currency() : sums->Value("SumOfValue").ToCurrency();
    EXPECT_EQ(value, Currency::FromRaw(c.raw)) << c.account;
  }
  EXPECT_EQ(db->RecordCount("glTransaction", "Date>#2024-06-30# AND Date<#2024-07-01#"), 1)
      << "a line stamped after midnight of the last day";
}

}  // namespace
}  // namespace trellin::data
