// The books of the demo company balance, in both countries.

#include <gtest/gtest.h>

#include <map>

#include "tests/demo/DemoFixture.h"

namespace trellin::demo::testing {
namespace {

class Books : public ::testing::TestWithParam<const char*> {
 protected:
  const Company& Db() const { return *DemoOf(GetParam()).company; }
};

TEST_P(Books, EveryJournalBalances) {
  // A journal has one date and one reference; bank entries are told apart by their id.
  struct Case {
    const char* what;
    const char* sql;
  } cases[] = {
      {"journals",
       "SELECT Count(*) FROM (SELECT 1 FROM glTransaction GROUP BY Date, Reference, "
       "glSourceId HAVING Sum(Value)<>0)"},
      {"bank entries",
       "SELECT Count(*) FROM (SELECT 1 FROM glTransaction WHERE glBankTransactionId "
       "IS NOT NULL GROUP BY glBankTransactionId HAVING Sum(Value)<>0)"},
      {"documents",
       "SELECT Count(*) FROM (SELECT 1 FROM glTransaction WHERE TransactionId IS NOT "
       "NULL GROUP BY TransactionId HAVING Sum(Value)<>0)"},
      {"whole ledger", "SELECT Sum(Value)<>0 FROM glTransaction"},
      {"whole cents",
       "SELECT Count(*) FROM glTransaction WHERE Value % 100<>0 OR TaxValue % 100<>0"},
      {"bank line first",
       "SELECT Count(*) FROM glTransaction g JOIN glBankTransaction b ON "
       "g.glBankTransactionId=b.glBankTransactionId JOIN Bank k ON "
       "k.BankId=b.BankId WHERE g.glBankTransactionSequence=0 AND "
       "g.AccountId<>k.AssetAccountId"},
  };
  for (const Case& c : cases) EXPECT_EQ(Db().Number(c.sql), 0) << c.what;
  EXPECT_GT(Db().Number("SELECT Count(*) FROM glTransaction"), 50000);
}

TEST_P(Books, AssetAccountsFollowTheRegister) {
  // A category's cost and accumulated depreciation accounts together hold its assets' movements:
  // purchases, additions, depreciation, disposals and their gains or losses. Revaluations are
  // the register's alone.
  struct Case {
    const char* category;
    const char* cost;
    const char* depreciation;
  } cases[] = {{"PLANT", "3320", "3325"},
               {"TOOLS", "3330", "3335"},
               {"OFFICE", "3350", "3355"},
               {"VEHICLE", "3400", "3405"}};
  for (const Case& c : cases) {
    const std::string category = c.category;
    EXPECT_EQ(Db().Number(std::string("SELECT IfNull(Sum(Value),0) FROM glTransaction WHERE "
                                      "AccountId IN ('") +
                          c.cost + "','" + c.depreciation + "')"),
              Db().Number("SELECT IfNull(Sum(t.Value),0) FROM AssetTransaction t JOIN Asset a ON "
                          "a.AssetId=t.AssetId WHERE t.Type<>12 AND a.AssetCategoryId='" +
                          category + "'"))
        << category;
  }
  // Every kind of movement the asset reports print is there at least once.
  for (const int type : {10, 11, 20, 30, 40}) {
    EXPECT_GT(
        Db().Number("SELECT Count(*) FROM AssetTransaction WHERE Type=" + std::to_string(type)), 0)
        << type;
  }
  EXPECT_GT(Db().Number("SELECT Count(*) FROM Asset WHERE Status=5 AND DisposalDate IS NOT NULL"),
            0);
  EXPECT_GT(Db().Number("SELECT Count(*) FROM Asset WHERE DepreciationBasis=1"), 0);
}

TEST_P(Books, ValueRemainingIsWhatAllocationsLeave) {
  // A transaction's remainder is its value, less what it gave as the first of a pair, plus what
  // it took as the second: the rule the ledgers use to wind allocations back.
  EXPECT_EQ(Db().Number("SELECT Count(*) FROM Transactions t WHERE t.ValueRemaining <> t.Value"
                        " - IfNull((SELECT Sum(ValueAllocated) FROM TransactionAllocation a WHERE "
                        "a.TransactionId1=t.TransactionId),0)"
                        " + IfNull((SELECT Sum(ValueAllocated) FROM TransactionAllocation a WHERE "
                        "a.TransactionId2=t.TransactionId),0)"),
            0);
  // A remainder never exceeds the document or turns its sign.
  EXPECT_EQ(Db().Number("SELECT Count(*) FROM Transactions WHERE ValueRemaining*Value<0 OR "
                        "Abs(ValueRemaining)>Abs(Value) OR Abs(Held)>Abs(ValueRemaining)"),
            0);
  // A document is the sum of its lines with their tax: every type but receipts and payments,
  // which have no lines.
  EXPECT_EQ(Db().Number("SELECT Count(*) FROM Transactions t WHERE t.Type NOT IN (25,35) AND "
                        "t.Value<>"
                        "(SELECT Sum(Value+TaxValue) FROM TransactionLine l WHERE "
                        "l.TransactionId=t.TransactionId)"),
            0);
}

TEST_P(Books, ControlAccountsAgreeSaveTheDocumentedDifferences) {
  struct Case {
    const char* control;
    const char* types;
    std::int64_t difference;
  } cases[] = {
      {"3100", "30 AND 39", kReceivablesControlDifference},
      {"4010", "20 AND 29", kPayablesControlDifference},
  };
  for (const Case& c : cases) {
    const std::int64_t gl = Db().Number(std::string("SELECT Sum(Value) FROM glTransaction WHERE "
                                                    "AccountId='") +
                                        c.control + "'");
    const std::int64_t ledger = Db().Number(
        std::string("SELECT -Sum(Value) FROM Transactions WHERE Type BETWEEN ") + c.types);
    EXPECT_EQ(gl - ledger, c.difference) << c.control;
    const std::int64_t outstanding = Db().Number(
        std::string("SELECT -Sum(ValueRemaining) FROM Transactions WHERE Type BETWEEN ") + c.types);
    EXPECT_EQ(outstanding, ledger) << c.control << ": balances are the sum of what is open";
  }
  // The company's own liabilities are settled as they fall due: at the present only this
  // month's PAYE is owed, and no income tax (the last provision was paid in the seventh month).
  const std::string this_month =
      "(SELECT substr(Value,1,7) FROM CompanySetting WHERE Key='CurrentDateGL')";
  EXPECT_EQ(Db().Number("SELECT Sum(Value) FROM glTransaction WHERE AccountId='4030'"),
            Db().Number("SELECT Sum(Value) FROM glTransaction WHERE AccountId='4030' AND Value<0 "
                        "AND substr(Date,1,7)=" +
                        this_month));
  EXPECT_EQ(Db().Number("SELECT Sum(Value) FROM glTransaction WHERE AccountId='4040'"), 0);
  // Stock has no deliberate difference: the ledger holds the cost of what is on hand.
  EXPECT_EQ(Db().Number("SELECT Sum(Value) FROM glTransaction WHERE AccountId='3110'"),
            Db().Number("SELECT Sum(ItemCost) FROM TransactionLine"));
  EXPECT_EQ(Db().Number("SELECT Count(*) FROM (SELECT l.ItemId, LocationId FROM TransactionLine l "
                        "JOIN Item i ON i.ItemId=l.ItemId WHERE i.Inventory<>0 "
                        "GROUP BY l.ItemId, LocationId HAVING "
                        "Sum(Quantity)<-0.001)"),
            0)
      << "never more sold than was on hand";
}

TEST_P(Books, ClosedYearsEndWithNoProfitAndLossLeft) {
  const Company& db = Db();
  const std::int64_t years = db.Number("SELECT Count(*) FROM FinancialYear");
  const std::int64_t closings =
      db.Number("SELECT Count(DISTINCT Date) FROM glTransaction WHERE Type=1");
  EXPECT_EQ(closings, years - 1) << "every year but the current one is closed";
  // Closing entries carry a time on the last day, after midnight, so a date-only bound of the
  // last day leaves them out and the next day's bound takes them in.
  EXPECT_EQ(db.Number("SELECT Count(*) FROM glTransaction g WHERE Type=1 AND NOT EXISTS (SELECT 1 "
                      "FROM FinancialYear y WHERE g.Date=y.DateEnd || ' 23:59:59')"),
            0);
  EXPECT_EQ(db.Number("SELECT Count(*) FROM FinancialYear y WHERE y.DateEnd<(SELECT Max(DateEnd) "
                      "FROM FinancialYear) AND (SELECT Sum(g.Value) FROM glTransaction g JOIN "
                      "Account a ON a.AccountId=g.AccountId WHERE a.Type<=6 AND "
                      "g.Date>=y.DateStart AND g.Date<date(y.DateEnd,'+1 day'))<>0"),
            0);
}

TEST_P(Books, NoDanglingCodesButTheDeliberateOnes) {
  // Every reference the schema declares, checked row by row.
  const std::map<std::string, std::int64_t> deliberate = {{"OtherParty.CustomerCategoryId", 1},
                                                          {"glTransaction.DeptId", 4}};
  sqlite3_stmt* tables = nullptr;
  sqlite3_prepare_v2(Db().Handle(), "SELECT name FROM sqlite_master WHERE type='table'", -1,
                     &tables, nullptr);
  int checked = 0;
  while (sqlite3_step(tables) == SQLITE_ROW) {
    const std::string table = reinterpret_cast<const char*>(sqlite3_column_text(tables, 0));
    sqlite3_stmt* keys = nullptr;
    sqlite3_prepare_v2(Db().Handle(), ("PRAGMA foreign_key_list(" + table + ")").c_str(), -1, &keys,
                       nullptr);
    while (sqlite3_step(keys) == SQLITE_ROW) {
      const std::string parent = reinterpret_cast<const char*>(sqlite3_column_text(keys, 2));
      const std::string from = reinterpret_cast<const char*>(sqlite3_column_text(keys, 3));
      const std::string to = reinterpret_cast<const char*>(sqlite3_column_text(keys, 4));
      const std::int64_t orphans =
          Db().Number("SELECT Count(*) FROM " + table + " c WHERE c." + from +
                      " IS NOT NULL AND NOT EXISTS "
                      "(SELECT 1 FROM " +
                      parent + " p WHERE p." + to + "=c." + from + ")");
      auto expected = deliberate.find(table + "." + from);
      EXPECT_EQ(orphans, expected == deliberate.end() ? 0 : expected->second)
          << table << "." << from << " -> " << parent;
      ++checked;
    }
    sqlite3_finalize(keys);
  }
  sqlite3_finalize(tables);
  EXPECT_GT(checked, 50);
}

INSTANTIATE_TEST_SUITE_P(Countries, Books, ::testing::Values("NZ", "AU"));

}  // namespace
}  // namespace trellin::demo::testing
