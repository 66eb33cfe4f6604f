// The company on PostgreSQL: the schema generated from the one schema, a company file copied
// onto the server, and every statement of the SQL corpus run on both backends, returning the
// same rows.

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "TestServer.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/data/postgres/PostgresCompany.h"
#include "platform/sql/Translate.h"
#include "tests/support/DemoCache.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::testing {
namespace {

namespace fs = std::filesystem;
using sql::SemType;

// A value shown alike from both backends: numbers by value (doubles to nine figures, so that
// the last bit of a sum of doubles is no difference), dates without a midnight time, Booleans
// as True/False.
std::string Shown(std::string text, SemType type) {
  switch (type) {
    case SemType::Long:
    case SemType::Currency:
      if (text.find_first_of(".eE") != std::string::npos) {
        text = std::to_string(std::llround(std::strtod(text.c_str(), nullptr)));
      }
      return text;
    case SemType::Double: {
      char buffer[40];
      std::snprintf(buffer, sizeof buffer, "%.9g", std::strtod(text.c_str(), nullptr));
      return std::string(buffer) == "-0" ? "0" : buffer;
    }
    case SemType::Boolean:
      return text == "t" || text == "1" ? "True" : "False";
    case SemType::Date:
      if (text.size() == 19 && text.compare(10, 9, " 00:00:00") == 0) text.resize(10);
      return text;
    default:
      return text;
  }
}

using Rows = std::vector<std::string>;

Rows SqliteRows(sqlite3* db, const sql::Translation& translation) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(db, translation.sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
    throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(db));
  }
  Rows rows;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    std::string row;
    for (std::size_t c = 0; c < translation.columns.size(); ++c) {
      const int column = static_cast<int>(c);
      if (c > 0) row += '\t';
      if (sqlite3_column_type(statement, column) == SQLITE_NULL) {
        row += "NULL";
        continue;
      }
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      row += Shown(text, translation.columns[c].type);
    }
    rows.push_back(std::move(row));
  }
  sqlite3_finalize(statement);
  return rows;
}

Rows PostgresRows(data::PgConnection& db, const sql::Translation& translation) {
  data::PgResult result = db.Query(translation.sql, "running the statement");
  Rows rows;
  for (int r = 0; r < result.Rows(); ++r) {
    std::string row;
    for (int c = 0; c < result.Columns(); ++c) {
      if (c > 0) row += '\t';
      row += result.IsNull(r, c)
                 ? "NULL"
                 : Shown(std::string(result.Value(r, c)), translation.columns[c].type);
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

// The statements of the corpus: the blocks of every file under tests/sql/corpus.
std::vector<std::pair<std::string, std::string>> CorpusStatements() {
  std::vector<std::pair<std::string, std::string>> statements;
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(TestDir("sql") / "corpus")) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) {
    std::istringstream in(ReadFile(file));
    std::string line, block;
    int number = 0, start = 0;
    auto finish = [&] {
      if (!block.empty()) {
        statements.emplace_back(file.filename().string() + ":" + std::to_string(start), block);
      }
      block.clear();
    };
    bool in_statement = false;
    while (std::getline(in, line)) {
      ++number;
      if (line.empty()) {
        finish();
        in_statement = false;
      } else if (line.rfind("statement ok", 0) == 0) {
        in_statement = true;
        start = number + 1;
      } else if (in_statement && line[0] != '#') {
        block += (block.empty() ? "" : "\n") + line;
      }
    }
    finish();
  }
  return statements;
}

// The first line of a statement, trimmed.
std::string FirstLine(const std::string& jet) {
  std::string line = jet.substr(0, jet.find('\n'));
  while (!line.empty() && (line.back() == ' ' || line.back() == '\r')) line.pop_back();
  return line;
}

// Statements whose ORDER BY leaves rows tied, listed by their first line: each backend returns
// the tied rows in the order its plan meets them, so only the rows are compared.
std::set<std::string> TieOrders() {
  std::set<std::string> listed;
  std::istringstream in(ReadFile(TestDir("postgres") / "tie_orders.txt"));
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') listed.insert(FirstLine(line));
  }
  return listed;
}

class BothBackends : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    std::string why;
    const ServerDemo& demo = DemoOnServer(why);
    if (demo.url.empty()) {
      skip_ = why;
      return;
    }
    url_ = demo.url;
    file_ = demo.file;
    summary_.rows = demo.rows;
    summary_.tables = demo.tables;
  }

  void SetUp() override {
    if (!skip_.empty()) GTEST_SKIP() << "PostgreSQL tests skipped: " << skip_;
  }

  static inline std::string skip_, url_, file_;
  static inline data::CopySummary summary_;
};

TEST_F(BothBackends, TheCopyHoldsEveryRowOfTheFile) {
  auto sqlite = data::SqliteDatabase::Open(file_);
  data::PgConnection pg(url_);
  std::int64_t rows = 0;
  for (const std::string& table : sqlite->Catalog().TableNames()) {
    auto counted = sqlite->Query("SELECT Count(*) AS N FROM " + table);
    const std::int64_t in_file = counted->Value(0).ToLong();
    auto on_server = pg.Query("SELECT COUNT(*) FROM \"" + table + "\"", "counting");
    EXPECT_EQ(std::to_string(in_file), std::string(on_server.Value(0, 0))) << table;
    rows += in_file;
  }
  EXPECT_EQ(rows, summary_.rows);
  EXPECT_GT(summary_.tables, 50);
}

TEST_F(BothBackends, ErrorsAreOneLineNamingTheCompanyAndTheReason) {
  std::string missing = url_;
  missing.replace(missing.find("/demo.db?"), 9, "/nowhere?");
  const struct {
    std::string url;
    std::vector<std::string> said;
  } cases[] = {
      {missing,
       {"cannot connect to the company database postgresql://trellin@localhost:", "/nowhere: ",
        "database \"nowhere\" does not exist"}},
      {"postgresql:///demo?host=/nonexistent-folder&user=trellin",
       {"cannot connect to the company database postgresql://trellin@localhost:", "/demo: ",
        "No such file or directory"}},
  };
  for (const auto& c : cases) {
    try {
      data::PgConnection connection(c.url);
      ADD_FAILURE() << c.url << " connected";
    } catch (const DatabaseError& error) {
      const std::string message = error.what();
      EXPECT_EQ(message.find('\n'), std::string::npos) << message;
      for (const std::string& part : c.said)
        EXPECT_NE(message.find(part), std::string::npos) << message;
    }
  }
  // A copy onto a database that holds a company already fails, and leaves it as it was.
  data::PgConnection again(url_);
  try {
    (void)data::CopyCompanyToPostgres(file_, again);
    ADD_FAILURE() << "copied twice";
  } catch (const DatabaseError& error) {
    EXPECT_NE(std::string(error.what()).find("laying down the company schema: relation"),
              std::string::npos)
        << error.what();
  }
  EXPECT_EQ(std::string(again.Query("SELECT COUNT(*) FROM \"Account\"", "counting").Value(0, 0)),
            std::to_string(data::SqliteDatabase::Open(file_)
                               ->Query("SELECT Count(*) FROM Account")
                               ->Value(0)
                               .ToLong()));
}

TEST_F(BothBackends, EveryCorpusStatementReturnsTheSameRows) {
  auto company = data::SqliteDatabase::Open(file_);
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open_v2(file_.c_str(), &db, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  data::PgConnection pg(url_);
  const std::set<std::string> ties = TieOrders();
  int statements = 0, with_rows = 0;
  for (const auto& [where, jet] : CorpusStatements()) {
    ++statements;
    try {
      const Rows expected = SqliteRows(db, sql::Translate(jet, company->Catalog()));
      Rows actual =
          PostgresRows(pg, sql::Translate(jet, company->Catalog(), sql::Dialect::kPostgres));
      Rows sorted_expected = expected;
      const bool listed = ties.count(FirstLine(jet)) > 0;
      if (jet.find("ORDER BY") == std::string::npos || listed) {
        std::sort(sorted_expected.begin(), sorted_expected.end());
        std::sort(actual.begin(), actual.end());
      }
      if (!expected.empty()) ++with_rows;
      EXPECT_EQ(sorted_expected, actual) << where << "\n" << jet;
    } catch (const std::exception& error) {
      ADD_FAILURE() << where << "\n" << jet << "\n" << error.what();
    }
  }
  sqlite3_close(db);
  RecordProperty("statements", statements);
  RecordProperty("with_rows", with_rows);
  std::printf("%d corpus statements, %d with rows\n", statements, with_rows);
}

}  // namespace
}  // namespace trellin::testing
