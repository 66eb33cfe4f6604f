// Long flat chains of one operator, as a user's filter of thousands of codes makes them: they
// translate into SQL SQLite prepares and answers, without deep recursion; past the caps they are
// refused as the user's input, with a plain message.

#include <gtest/gtest.h>

#include <string>

#include "platform/sql/Parser.h"
#include "platform/sql/SqlError.h"
#include "platform/sql/Translate.h"
#include "tests/sql/TestDatabase.h"

namespace trellin::sql {
namespace {

std::string Repeat(const std::string& first, const std::string& joint, const std::string& term,
                   std::size_t count) {
  std::string text = first;
  for (std::size_t i = 1; i < count; ++i) text += joint + term;
  return text;
}

// The single value the statement gives on the company schema, as text; "" with the error.
std::string Answer(testing::TestDatabase& db, const std::string& jet) {
  Translation translation = Translate(jet, db.catalog());
  sqlite3_stmt* stmt = nullptr;
  if (sqlite3_prepare_v2(db.handle(), translation.sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
    std::string message = sqlite3_errmsg(db.handle());
    sqlite3_finalize(stmt);
    return "SQLite refused: " + message;
  }
  std::string value;
  if (sqlite3_step(stmt) == SQLITE_ROW) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
    value = text != nullptr ? text : "NULL";
  }
  sqlite3_finalize(stmt);
  return value;
}

TEST(LongChains, TranslateAndRunWhateverTheirLength) {
  testing::TestDatabase db(testing::SchemaPath());
  ASSERT_EQ(db.Execute("INSERT INTO Account (AccountId, Description) VALUES ('7999', 'Last')"), "");
  struct Case {
    std::string jet;
    std::string value;
  } cases[] = {
      // 20,000 ranges of an account filter, the last of which matches.
      {"SELECT Count(*) FROM Account WHERE " + Repeat("(AccountId>='0' AND AccountId<='0')", " OR ",
                                                      "(AccountId>='7999' AND AccountId<='7999')",
                                                      20000),
       "1"},
      {"SELECT " + Repeat("1", "+", "1", kMaxArithmeticOperands),
       std::to_string(kMaxArithmeticOperands)},
      {"SELECT Len(" + Repeat("'a'", " & ", "'a'", 20000) + ")", "20000"},
      {"SELECT " + Repeat("True", " AND ", "True", 20000) + " FROM Account", "1"},
      // Left to right: 100 - 1 - 1 - ... is not 100 - (1 - (1 - ...)).
      {"SELECT " + Repeat("100", " - ", "1", 100), "1"},
      {"SELECT " + Repeat("1024", " / ", "2", 11), "1.0"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Answer(db, c.jet), c.value) << c.jet.substr(0, 80);
  }
}

TEST(LongChains, PastTheCapsAreTheUsersInputWithAPlainMessage) {
  testing::TestDatabase db(testing::SchemaPath());
  struct Case {
    std::string jet;
    std::string problem;
  } cases[] = {
      {"SELECT " + Repeat("1", "+", "1", kMaxArithmeticOperands + 1),
       "expression too long: more than 500 terms in one sum or product"},
      {"SELECT Count(*) FROM Account WHERE " +
           Repeat("AccountId='0'", " OR ", "AccountId='0'", 90000),
       "the filters make the query too long (more than 250000 words and signs)"},
      // Mixed operators nest: each change of operator is a bracket.
      {"SELECT " + Repeat("1", " + 1 - ", "1", 300), "statement nested too deeply"},
      {"SELECT " + std::string(300, '(') + "1" + std::string(300, ')'),
       "statement nested too deeply"},
  };
  for (const Case& c : cases) {
    try {
      (void)Translate(c.jet, db.catalog());
      ADD_FAILURE() << "translated: " << c.jet.substr(0, 80);
    } catch (const SqlError& e) {
      EXPECT_EQ(e.problem(), c.problem) << c.jet.substr(0, 80);
      EXPECT_EQ(e.Kind(), ErrorKind::Input) << c.problem;
    }
  }
}

}  // namespace
}  // namespace trellin::sql
