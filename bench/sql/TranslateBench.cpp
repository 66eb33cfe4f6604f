// Translating a typical report statement: the receivables ledger's party query, with its
// correlated sums, Between ranges, date literals and a Boolean test. Target: well under 100
// microseconds uncached; a cached translation is a hash lookup.

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "platform/sql/Translate.h"

namespace {

using trellin::sql::Catalog;

// The catalogue as the data layer reads it: PRAGMA table_info of each table of the schema.
Catalog SchemaCatalog() {
  std::ifstream in(TRELLIN_SCHEMA);
  std::stringstream ddl;
  ddl << in.rdbuf();
  sqlite3* db = nullptr;
  sqlite3_open(":memory:", &db);
  if (sqlite3_exec(db, ddl.str().c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot load the schema");
  }
  Catalog catalog;
  sqlite3_stmt* tables = nullptr;
  sqlite3_prepare_v2(db, "SELECT name FROM sqlite_schema WHERE type = 'table'", -1, &tables,
                     nullptr);
  while (sqlite3_step(tables) == SQLITE_ROW) {
    std::string table = reinterpret_cast<const char*>(sqlite3_column_text(tables, 0));
    sqlite3_stmt* info = nullptr;
    sqlite3_prepare_v2(db, ("PRAGMA table_info(\"" + table + "\")").c_str(), -1, &info, nullptr);
    while (sqlite3_step(info) == SQLITE_ROW) {
      auto type = trellin::sql::SemTypeFromDeclared(
          reinterpret_cast<const char*>(sqlite3_column_text(info, 2)));
      catalog.AddColumn(table, reinterpret_cast<const char*>(sqlite3_column_text(info, 1)),
                        type.value_or(trellin::sql::SemType::Text));
    }
    sqlite3_finalize(info);
  }
  sqlite3_finalize(tables);
  sqlite3_close(db);
  return catalog;
}

const char* const kLedgerParties =
    "SELECT OtherParty.OtherPartyId,OtherParty.Name,OtherParty.CustomerCategoryId,"
    "(SELECT Sum(-Transactions.Value) FROM Transactions WHERE "
    "Transactions.OtherPartyId=OtherParty.OtherPartyId AND (Transactions.Type Between 30 And 39) "
    "AND (Transactions.DateProcess>=#2024-03-01 00:00:00# AND "
    "Transactions.DateProcess<#2024-04-01 00:00:00#)) AS SumOfValue,"
    "(IIf((SELECT Sum(-ValueRemaining) FROM Transactions WHERE "
    "Transactions.OtherPartyId=OtherParty.OtherPartyId AND (Transactions.Type Between 30 And 39)) "
    "IS NULL,0,(SELECT Sum(-ValueRemaining) FROM Transactions WHERE "
    "Transactions.OtherPartyId=OtherParty.OtherPartyId AND (Transactions.Type Between 30 And 39)))"
    "-IIf((SELECT Sum(-Value) FROM Transactions WHERE "
    "Transactions.OtherPartyId=OtherParty.OtherPartyId AND DateProcess>=#2024-03-01 00:00:00# "
    "AND (Transactions.Type Between 30 And 39)) IS NULL,0,(SELECT Sum(-Value) FROM Transactions "
    "WHERE Transactions.OtherPartyId=OtherParty.OtherPartyId AND "
    "DateProcess>=#2024-03-01 00:00:00# AND (Transactions.Type Between 30 And 39)))) AS Opening "
    "FROM OtherParty WHERE IsCustomer=True  AND (OtherParty.OtherPartyId IN ('ACME','BOLT'))  "
    "ORDER BY OtherParty.CustomerCategoryId,OtherParty.Name";

void BM_TranslateLedgerParties(benchmark::State& state) {
  Catalog catalog = SchemaCatalog();
  for (auto _ : state) {
    auto translation = trellin::sql::Translate(kLedgerParties, catalog);
    benchmark::DoNotOptimize(translation);
  }
}
BENCHMARK(BM_TranslateLedgerParties)->Unit(benchmark::kMicrosecond);

void BM_TranslateSimpleList(benchmark::State& state) {
  Catalog catalog = SchemaCatalog();
  for (auto _ : state) {
    auto translation = trellin::sql::Translate(
        "SELECT AccountId,Space(ALevel-1)+Description AS AccountDescription FROM Account ORDER BY "
        "AccountId",
        catalog);
    benchmark::DoNotOptimize(translation);
  }
}
BENCHMARK(BM_TranslateSimpleList)->Unit(benchmark::kMicrosecond);

void BM_TranslatorCached(benchmark::State& state) {
  Catalog catalog = SchemaCatalog();
  trellin::sql::Translator translator(catalog);
  for (auto _ : state) benchmark::DoNotOptimize(translator.Translate(kLedgerParties));
}
BENCHMARK(BM_TranslatorCached)->Unit(benchmark::kMicrosecond);

}  // namespace
