// The data layer's cost over SQLite itself: a grouped query over a million ledger lines run
// through SqliteDatabase::Query against the same query run directly, and a million rows read
// through the forward-only recordset.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/data/SqliteDatabase.h"

namespace trellin::data {
namespace {

constexpr int kLines = 1'000'000;

// The ledger file, built once per process in a temporary folder and removed at exit.
const std::string& LedgerFile() {
  static const std::string path = [] {
    std::string folder = (std::filesystem::temp_directory_path() / "trellin-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no temp folder");
    std::string file = folder + "/ledger.db";
    sqlite3* db = nullptr;
    sqlite3_open(file.c_str(), &db);
    std::string sql =
        "PRAGMA journal_mode=WAL;"
        "CREATE TABLE CompanySetting (Section TEXT, Key TEXT, Value TEXT);"
        "CREATE TABLE Ledger (Id INTEGER PRIMARY KEY, AccountId TEXT COLLATE NOCASE, Date DATE, "
        "Value MONEY);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" +
        std::to_string(kLines) +
        ") INSERT INTO Ledger SELECT i, 'A' || (i % 200), date('2020-01-01', '+' || (i % 1500) "
        "|| ' days'), (i * 7919) % 20000 - 10000 FROM n;";
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(db));
    }
    sqlite3_close(db);
    std::atexit(
        [] { std::filesystem::remove_all(std::filesystem::path(LedgerFile()).parent_path()); });
    return file;
  }();
  return path;
}

constexpr const char* kGroupedJet =
    "SELECT AccountId, Sum(Value) AS Total, Count(*) AS Lines FROM Ledger "
    "WHERE Date>=#2021-01-01# GROUP BY AccountId ORDER BY AccountId";
void GroupedDirect(benchmark::State& state) {
  // Exactly the SQLite text that Query runs, so that the difference is the data layer's own.
  const std::string sqlite_sql =
      sql::Translate(kGroupedJet, SqliteDatabase::Open(LedgerFile())->Catalog()).sql;
  sqlite3* db = nullptr;
  sqlite3_open_v2(LedgerFile().c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  for (auto _ : state) {
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, sqlite_sql.c_str(), -1, &stmt, nullptr);
    std::int64_t total = 0;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      benchmark::DoNotOptimize(sqlite3_column_text(stmt, 0));
      total += sqlite3_column_int64(stmt, 1) + sqlite3_column_int64(stmt, 2);
    }
    sqlite3_finalize(stmt);
    benchmark::DoNotOptimize(total);
  }
  sqlite3_close(db);
  state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(GroupedDirect)->Unit(benchmark::kMillisecond);

void GroupedThroughQuery(benchmark::State& state) {
  auto db = SqliteDatabase::Open(LedgerFile());
  for (auto _ : state) {
    auto rs = db->Query(kGroupedJet);
    Currency total;
    for (; !rs->Eof(); rs->MoveNext()) {
      benchmark::DoNotOptimize(rs->Value(0));
      total += rs->Value(1).ToCurrency() + Currency::FromRaw(rs->Value(2).ToLong());
    }
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(GroupedThroughQuery)->Unit(benchmark::kMillisecond);

void ReadDirect(benchmark::State& state) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(LedgerFile().c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  for (auto _ : state) {
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, "SELECT Id, AccountId, Date, Value FROM Ledger", -1, &stmt, nullptr);
    std::int64_t sum = 0;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      benchmark::DoNotOptimize(sqlite3_column_text(stmt, 1));
      benchmark::DoNotOptimize(sqlite3_column_text(stmt, 2));
      sum += sqlite3_column_int64(stmt, 0) + sqlite3_column_int64(stmt, 3);
    }
    sqlite3_finalize(stmt);
    benchmark::DoNotOptimize(sum);
  }
  sqlite3_close(db);
  state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(ReadDirect)->Unit(benchmark::kMillisecond);

void ReadForward(benchmark::State& state) {
  auto db = SqliteDatabase::Open(LedgerFile());
  for (auto _ : state) {
    auto rs = db->OpenForward("SELECT Id, AccountId, Date, Value FROM Ledger");
    Currency sum;
    std::int64_t rows = 0;
    for (; !rs->Eof(); rs->MoveNext()) {
      benchmark::DoNotOptimize(rs->Value(1));
      benchmark::DoNotOptimize(rs->Value(2));
      sum += rs->Value(3).ToCurrency();
      ++rows;
    }
    if (rows != kLines) state.SkipWithError("the forward read lost rows");
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(ReadForward)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace trellin::data
