#include "platform/data/CompanyFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/host/Database.h"
#include "tests/support/TempFolder.h"

namespace trellin::data {
namespace {

namespace fs = std::filesystem;
using TempDir = trellin::testing::TempFolder;

std::string ReadOne(const std::string& path, const char* sql) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* stmt = nullptr;
  std::string out = "(none)";
  if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) == SQLITE_OK &&
      sqlite3_step(stmt) == SQLITE_ROW) {
    out = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
  }
  sqlite3_finalize(stmt);
  sqlite3_close(db);
  return out;
}

TEST(CompanyFile, CommitPutsACompleteFileInPlace) {
  TempDir dir;
  std::string path = dir.File("demo.db");
  auto writer = CreateCompanyFile(path);
  EXPECT_TRUE(fs::exists(path + ".tmp"));
  EXPECT_FALSE(fs::exists(path)) << "nothing at the final path until Commit";
  ASSERT_EQ(
      sqlite3_exec(writer->Handle(),
                   "INSERT INTO CompanySetting(Section,Key,Value) VALUES('Company','Name','Demo')",
                   nullptr, nullptr, nullptr),
      SQLITE_OK);
  writer->Commit();
  EXPECT_TRUE(fs::exists(path));
  EXPECT_FALSE(fs::exists(path + ".tmp"));
  EXPECT_FALSE(fs::exists(path + ".tmp-wal"));
  EXPECT_EQ(ReadOne(path, "PRAGMA journal_mode"), "wal");
  EXPECT_EQ(ReadOne(path, "SELECT Value FROM CompanySetting WHERE Key='Name'"), "Demo");
  // Stamped with this build's schema; a file that is no company file carries no stamp.
  EXPECT_EQ(ReadCompanySchemaStamp(path), CompanySchemaStamp());
  EXPECT_NE(CompanySchemaStamp(), 0);
  EXPECT_EQ(ReadCompanySchemaStamp(dir.File("none.db")), 0);
  EXPECT_THROW(writer->Commit(), DatabaseError);
}

TEST(CompanyFile, AFailedBuildLeavesNoFileAndTheOldOneUntouched) {
  TempDir dir;
  std::string path = dir.File("demo.db");
  {
    auto writer = CreateCompanyFile(path);
    sqlite3_exec(writer->Handle(),
                 "INSERT INTO CompanySetting(Section,Key,Value) VALUES('Company','Name','Old')",
                 nullptr, nullptr, nullptr);
    writer->Commit();
  }
  {
    auto writer = CreateCompanyFile(path);
    sqlite3_exec(writer->Handle(),
                 "INSERT INTO CompanySetting(Section,Key,Value) VALUES('Company','Name','New')",
                 nullptr, nullptr, nullptr);
    // The generator fails here and the writer goes out of scope without Commit.
  }
  EXPECT_FALSE(fs::exists(path + ".tmp"));
  EXPECT_EQ(ReadOne(path, "SELECT Value FROM CompanySetting WHERE Key='Name'"), "Old");

  TempDir fresh;
  { auto writer = CreateCompanyFile(fresh.File("never.db")); }
  EXPECT_TRUE(fs::is_empty(fs::path(fresh.File(""))));
}

TEST(CompanyFile, AFolderThatDoesNotExistIsAClearError) {
  TempDir dir;
  std::string path = dir.File("no/such/folder/demo.db");
  try {
    auto writer = CreateCompanyFile(path);
    ADD_FAILURE() << "created a file in a missing folder";
  } catch (const DatabaseError& e) {
    EXPECT_NE(std::string(e.what()).find(path), std::string::npos) << e.what();
  }
}

}  // namespace
}  // namespace trellin::data
