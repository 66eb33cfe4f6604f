// The pieces of the front end that the .test files reach only indirectly: date literals,
// money scaling, declared types, the lexer's positions, the catalogue and the cache.

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/sql/DateLiteral.h"
#include "platform/sql/Lexer.h"
#include "platform/sql/Translate.h"
#include "platform/sql/Typed.h"
#include "tests/support/CaseFile.h"

namespace trellin::sql {
namespace {

TEST(DateLiteral, AcceptsIsoAndMonthFirstForms) {
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("sql/date_literals.tsv", 2)) {
    const std::optional<std::string> iso =
        row.fields[1] == "-" ? std::nullopt : std::optional<std::string>(row.fields[1]);
    EXPECT_EQ(JetDateToIso(row.fields[0]), iso) << row.Where();
  }
}

// scaled_decimals.tsv: a literal, its scaled text, and whether it is exact money.
TEST(ScaleDecimal, ShiftsFourPlacesExactly) {
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("sql/scaled_decimals.tsv", 3)) {
    EXPECT_EQ(ScaleDecimal(row.fields[0]), row.fields[1]) << row.Where();
    EXPECT_EQ(IsExactMoney(NumberLiteral(row.fields[0])), row.fields[2] == "exact") << row.Where();
  }
}

TEST(SemTypeFromDeclared, ReadsTheSixDeclarations) {
  struct Case {
    const char* declared;
    std::optional<SemType> type;
  } cases[] = {
      {"TEXT COLLATE NOCASE", SemType::Text},
      {"integer", SemType::Long},
      {"DOUBLE", SemType::Double},
      {"Money NOT NULL", SemType::Currency},
      {" DATE", SemType::Date},
      {"BOOLEAN", SemType::Boolean},
      {"VARCHAR(20)", std::nullopt},
      {"REAL", std::nullopt},
      {"", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(SemTypeFromDeclared(c.declared), c.type) << c.declared;
}

TEST(Lexer, PositionsAndKinds) {
  std::vector<Token> tokens = Tokenize("SELECT [Order Date],'a''b'--1 <>#1/2/2024# .5 x.y");
  struct Expected {
    TokenKind kind;
    const char* text;
    int position;
  } expected[] = {
      {TokenKind::kName, "SELECT", 1},    {TokenKind::kName, "Order Date", 8},
      {TokenKind::kSymbol, ",", 20},      {TokenKind::kText, "a'b", 21},
      {TokenKind::kSymbol, "-", 27},      {TokenKind::kSymbol, "-", 28},
      {TokenKind::kNumber, "1", 29},      {TokenKind::kSymbol, "<>", 31},
      {TokenKind::kDate, "1/2/2024", 33}, {TokenKind::kNumber, ".5", 44},
      {TokenKind::kName, "x", 47},        {TokenKind::kSymbol, ".", 48},
      {TokenKind::kName, "y", 49},        {TokenKind::kEnd, "", 50},
  };
  ASSERT_EQ(tokens.size(), std::size(expected));
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    EXPECT_EQ(tokens[i].kind, expected[i].kind) << i;
    EXPECT_EQ(tokens[i].text, expected[i].text) << i;
    EXPECT_EQ(tokens[i].position, expected[i].position) << i;
  }
  EXPECT_TRUE(tokens[1].bracketed);
}

// lexer_errors.tsv: text the lexer refuses, its message, position and token.
TEST(Lexer, ErrorsNamePositionAndToken) {
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("sql/lexer_errors.tsv", 4)) {
    try {
      (void)Tokenize(row.fields[0]);
      ADD_FAILURE() << row.Where() << ": no error";
    } catch (const SqlError& error) {
      EXPECT_EQ(error.what(), row.fields[1]) << row.Where();
      EXPECT_EQ(error.position(), std::stoi(row.fields[2])) << row.Where();
      EXPECT_EQ(error.token(), row.fields[3]) << row.Where();
    }
  }
}

Catalog SmallCatalog() {
  Catalog catalog;
  catalog.AddColumn("Account", "AccountId", SemType::Text);
  catalog.AddColumn("Account", "Balance", SemType::Currency);
  catalog.AddColumn("ACCOUNT", "accountid", SemType::Text);  // same column, any case
  catalog.AddColumn("Ledger", "AccountId", SemType::Text);
  catalog.AddColumn("Ledger", "Posted", SemType::Date);
  return catalog;
}

TEST(Catalog, MatchesNamesWithoutRegardToCase) {
  Catalog catalog = SmallCatalog();
  EXPECT_EQ(catalog.TableNames(), (std::vector<std::string>{"Account", "Ledger"}));
  ASSERT_NE(catalog.FindTable("account"), nullptr);
  EXPECT_EQ(catalog.FindTable("account")->columns.size(), 2u);
  EXPECT_EQ(catalog.ColumnType("LEDGER", "posted"), SemType::Date);
  EXPECT_EQ(catalog.ColumnType("Ledger", "Balance"), std::nullopt);
  EXPECT_EQ(catalog.ColumnType("Nowhere", "AccountId"), std::nullopt);
}

TEST(Translate, ReportsColumnsAndTypes) {
  Catalog catalog = SmallCatalog();
  Translation t = Translate(
      "SELECT a.AccountId, Sum(Balance) AS Total, Max(Posted), Count(*) FROM Account a INNER "
      "JOIN Ledger ON a.AccountId = Ledger.AccountId GROUP BY a.AccountId",
      catalog);
  std::vector<ResultColumn> expected{{"AccountId", SemType::Text},
                                     {"Total", SemType::Currency},
                                     {"Expr1000", SemType::Date},
                                     {"Expr1001", SemType::Long}};
  EXPECT_EQ(t.columns, expected);
}

TEST(Translate, ErrorCarriesPositionAndToken) {
  Catalog catalog = SmallCatalog();
  try {
    (void)Translate("SELECT AccountId FROM Account, Ledger", catalog);
    FAIL() << "no error";
  } catch (const SqlError& error) {
    EXPECT_STREQ(error.what(), "ambiguous column 'AccountId' at position 8");
    EXPECT_EQ(error.position(), 8);
    EXPECT_EQ(error.token(), "AccountId");
  }
}

TEST(Translate, PositionsCountCharactersNotBytes) {
  Catalog catalog = SmallCatalog();
  try {
    (void)Translate("SELECT 'Caf\u00e9', Foo FROM Account", catalog);
    FAIL() << "no error";
  } catch (const SqlError& error) {
    EXPECT_STREQ(error.what(), "unknown column 'Foo' at position 16");
    EXPECT_EQ(error.position(), 16);
  }
}

TEST(Translate, DeepNestingFailsCleanly) {
  Catalog catalog = SmallCatalog();
  std::string deep =
      "SELECT " + std::string(5000, '(') + "1" + std::string(5000, ')') + " FROM Account";
  EXPECT_THROW((void)Translate(deep, catalog), SqlError);
  std::string minus = "SELECT " + std::string(5000, '-') + "1 FROM Account";
  EXPECT_THROW((void)Translate(minus, catalog), SqlError);
}

TEST(Translate, RepeatedOperandsCannotBlowUp) {
  Catalog catalog = SmallCatalog();
  // Money shown as text writes its operand twice; twenty levels would be 2^20 copies.
  std::string nested = "SELECT ";
  for (int i = 0; i < 20; ++i) nested += "CStr(CCur(";
  nested += "Balance" + std::string(40, ')') + " FROM Account";
  try {
    (void)Translate(nested, catalog);
    FAIL() << "no error";
  } catch (const SqlError& error) {
    EXPECT_EQ(error.problem(), "expression too large to translate");
  }
  // A date shifted many times grows by its shifts only.
  std::string shifted = "SELECT Posted";
  for (int i = 0; i < 100; ++i) shifted += " - 1";
  EXPECT_LT(Translate(shifted + " FROM Ledger", catalog).sql.size(), 20000u);
}

TEST(Translator, CachesByExactText) {
  Catalog catalog = SmallCatalog();
  Translator translator(catalog);
  auto first = translator.Translate("SELECT AccountId FROM Account");
  auto again = translator.Translate("SELECT AccountId FROM Account");
  auto other = translator.Translate("SELECT accountid FROM Account");
  EXPECT_EQ(first.get(), again.get());
  EXPECT_NE(first.get(), other.get());
  EXPECT_EQ(first->sql, other->sql);
  EXPECT_EQ(translator.CachedCount(), 2u);
  EXPECT_THROW((void)translator.Translate("SELECT Nothing FROM Account"), SqlError);
  EXPECT_EQ(translator.CachedCount(), 2u);
}

TEST(Translator, KeepsTheMostRecentlyUsed) {
  Catalog catalog = SmallCatalog();
  Translator translator(catalog, 2);
  auto a = translator.Translate("SELECT AccountId FROM Account");
  auto b = translator.Translate("SELECT Balance FROM Account");
  EXPECT_EQ(translator.Translate("SELECT AccountId FROM Account").get(), a.get());  // a is recent
  (void)translator.Translate("SELECT Posted FROM Ledger");                          // b goes
  EXPECT_EQ(translator.CachedCount(), 2u);
  EXPECT_EQ(translator.Translate("SELECT AccountId FROM Account").get(), a.get());
  EXPECT_NE(translator.Translate("SELECT Balance FROM Account").get(), b.get());
  EXPECT_EQ(b->sql, "SELECT Account.Balance FROM Account");  // still held by its user
}

TEST(Translator, TextsDifferingOnlyInLiteralsTranslateAsThemselves) {
  // In pairs of one shape: the second of each is filled into the first one's translation, and
  // must read exactly as its own translation would, in either dialect.
  const char* texts[] = {
      // Money literals are scaled: no shape, each translated in full.
      "SELECT AccountId FROM Account WHERE AccountId='A5' AND Balance>5",
      "SELECT AccountId FROM Account WHERE AccountId='A6' AND Balance>6",
      "SELECT TOP 3 AccountId FROM Account WHERE Len(AccountId)=2 ORDER BY AccountId",
      "SELECT TOP 4 AccountId FROM Account WHERE Len(AccountId)=12 ORDER BY AccountId",
      "SELECT AccountId,1+2 AS Three FROM Ledger WHERE Posted<#2025-03-31# AND -7<>Year(Posted)",
      "SELECT AccountId,10+20 AS Three FROM Ledger WHERE Posted<#2025-03-31# AND -8<>Year(Posted)",
      // Fractions and numbers of ten digits stay in the text.
      "SELECT AccountId FROM Account WHERE 1.5<2 OR 1234567890=1",
      "SELECT AccountId FROM Account WHERE 2.5<3 OR 1234567891=2",
      // Texts: in either quote, in a list, joined, met by a number, as a named column.
      "SELECT AccountId FROM Ledger WHERE AccountId=\"C 1\" AND Posted>#2025-01-01#",
      "SELECT AccountId FROM Ledger WHERE AccountId='C 22' AND Posted>#2025-01-01#",
      "SELECT AccountId & 'x' AS Named, 'A' AS Side FROM Account WHERE AccountId IN ('a','b')",
      "SELECT AccountId & 'yy' AS Named, 'P' AS Side FROM Account WHERE AccountId IN ('c','d')",
      "SELECT AccountId FROM Account WHERE Len(AccountId)>'3' OR 4='4'",
      "SELECT AccountId FROM Account WHERE Len(AccountId)>'12' OR 5='zz'",
      // Patterns, quotes within and a column named by its text stay in the text.
      "SELECT AccountId FROM Account WHERE AccountId Like 'A*' OR AccountId='it''s'",
      "SELECT AccountId FROM Account WHERE AccountId Like 'B?' OR AccountId='he''s'",
      "SELECT 'left', AccountId FROM Account",
      "SELECT 'right', AccountId FROM Account",
  };
  Catalog catalog = SmallCatalog();
  for (Dialect dialect : {Dialect::kSqlite, Dialect::kPostgres}) {
    Translator translator(catalog, Translator::kDefaultCapacity, dialect);
    for (const char* text : texts) {
      const Translation own = Translate(text, catalog, dialect);
      auto shared = translator.Translate(text);
      EXPECT_EQ(shared->sql, own.sql) << text;
      EXPECT_EQ(shared->columns, own.columns) << text;
    }
    // Filled statements are not held by text, so a query per row does not churn the cache.
    EXPECT_EQ(translator.CachedCount(), 4u);
  }
}

}  // namespace
}  // namespace trellin::sql
