// The PostgreSQL dialect of the emitter, as text: postgres_dialect.tsv holds a Jet statement and
// the text written for it. Whether PostgreSQL runs that text, and returns SQLite's rows, is
// tests/postgres' part.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "SqlLogicTest.h"
#include "TestDatabase.h"
#include "platform/sql/Translate.h"
#include "tests/support/CaseFile.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::sql::testing {
namespace {

// With TRELLIN_UPDATE_GOLDEN set the file is written anew with the texts of this build: read
// the diff.
TEST(PostgresDialect, WritesEachConstructOfTheReports) {
  TestDatabase db(SchemaPath());
  // A server's catalogue knows the tables' keys (the file's need not): two of them here.
  Catalog catalog = db.catalog();
  catalog.SetKey("Asset", {"AssetId"});
  catalog.SetKey("Account", {"AccountId"});
  const bool update = std::getenv("TRELLIN_UPDATE_GOLDEN") != nullptr;
  std::vector<std::string> written;
  for (const auto& row : trellin::testing::ReadCaseBlocks("sql/postgres_dialect.tsv", 1)) {
    written.push_back(Translate(row.fields[0], catalog, Dialect::kPostgres).sql);
    if (update) continue;
    ASSERT_EQ(row.lines.size(), 1u) << row.Where() << ": one line of PostgreSQL text expected";
    EXPECT_EQ(written.back(), row.lines[0]) << row.Where();
  }
  if (!update) return;
  // Comments and statements stay; each statement's text below it is this build's.
  const auto path = trellin::testing::TestDir("sql") / "postgres_dialect.tsv";
  std::istringstream in(trellin::testing::ReadFile(path));
  std::string text;
  std::size_t next = 0;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] == '\t') continue;
    text += line + "\n";
    if (!line.empty() && line[0] != '#') text += "\t" + written.at(next++) + "\n";
  }
  trellin::testing::WriteFile(path, text);
}

TEST(PostgresDialect, TranslatesEveryStatementOfTheCorpus) {
  TestDatabase db(SchemaPath());
  for (const char* file :
       {"admin", "assets", "jobs", "ledger", "receivables", "standard", "stock"}) {
    const std::string path =
        (trellin::testing::TestDir("sql") / "corpus" / (std::string(file) + ".test")).string();
    for (const Block& block : ParseTestFile(ReadFile(path))) {
      if (block.kind != BlockKind::kStatementOk && block.kind != BlockKind::kQuery) continue;
      try {
        (void)Translate(block.sql, db.catalog(), Dialect::kPostgres);
      } catch (const SqlError& error) {
        ADD_FAILURE() << file << ".test:" << block.line << ": " << error.what();
      }
    }
  }
}

TEST(PostgresDialect, LeavesSqliteTextAsItWas) {
  // The dialect is the translation's own: one in PostgreSQL before it doesn't leak into SQLite's.
  TestDatabase db(SchemaPath());
  const std::string jet = "SELECT AccountId & '' FROM Account WHERE Type = True";
  const std::string sqlite = Translate(jet, db.catalog()).sql;
  (void)Translate(jet, db.catalog(), Dialect::kPostgres);
  Translator translator(db.catalog(), 10, Dialect::kPostgres);
  EXPECT_NE(translator.Translate(jet)->sql, sqlite);
  EXPECT_EQ(Translate(jet, db.catalog()).sql, sqlite);
  EXPECT_EQ(sqlite,
            "SELECT COALESCE(Account.AccountId, '') || '' AS Expr1000 FROM Account WHERE "
            "Account.Type = -1");
}

}  // namespace
}  // namespace trellin::sql::testing
