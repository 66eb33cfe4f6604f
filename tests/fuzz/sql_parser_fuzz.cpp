// Feeds arbitrary text to the translator. Anything but a translation or an SqlError is a
// fault: a crash, a sanitizer report, another exception. A translation must also be SQL that
// SQLite prepares against the same tables, unless SQLite refuses it for a reason Jet refuses
// too (an aggregate in the wrong place, say).

#include <sqlite3.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/sql/Translate.h"

namespace {

using trellin::sql::Catalog;
using trellin::sql::SemType;

struct Column {
  const char* table;
  const char* name;
  SemType type;
  const char* declared;
};

constexpr Column kColumns[] = {
    {"Account", "AccountId", SemType::Text, "TEXT COLLATE NOCASE"},
    {"Account", "Description", SemType::Text, "TEXT COLLATE NOCASE"},
    {"Account", "Type", SemType::Long, "INTEGER"},
    {"Account", "Ratio", SemType::Double, "DOUBLE"},
    {"glTransaction", "AccountId", SemType::Text, "TEXT COLLATE NOCASE"},
    {"glTransaction", "Date", SemType::Date, "DATE"},
    {"glTransaction", "Value", SemType::Currency, "MONEY"},
    {"glTransaction", "Type", SemType::Long, "INTEGER"},
    {"OtherParty", "OtherPartyId", SemType::Text, "TEXT COLLATE NOCASE"},
    {"OtherParty", "Name", SemType::Text, "TEXT COLLATE NOCASE"},
    {"OtherParty", "IsCustomer", SemType::Boolean, "BOOLEAN"},
    {"Transactions", "TransactionId", SemType::Long, "INTEGER"},
    {"Transactions", "OtherPartyId", SemType::Text, "TEXT COLLATE NOCASE"},
    {"Transactions", "Value", SemType::Currency, "MONEY"},
    {"Transactions", "DatePayment", SemType::Date, "DATE"},
};

// Refusals that are the statement's fault, not the translator's.
constexpr std::string_view kAcceptedRefusals[] = {
    "misuse of aggregate",
    "aggregate functions are not allowed",
    "is not a function",  // an aggregate nested in an aggregate
    "HAVING clause on a non-aggregate query",
    "too many terms in compound SELECT",
    "Expression tree is too large",
    "parser stack overflow",
    "too many FROM clause terms",
    "at most 64 tables in a join",
    "ORDER BY term",
    "GROUP BY term",
    "too many columns in result set",
    "string or blob too big",
    "integer overflow",
};

struct World {
  Catalog catalog;
  sqlite3* db = nullptr;

  World() {
    sqlite3_open(":memory:", &db);
    std::string ddl;
    std::string table;
    for (const Column& c : kColumns) {
      catalog.AddColumn(c.table, c.name, c.type);
      if (table != c.table) {
        if (!table.empty()) ddl += ");\n";
        table = c.table;
        ddl += "CREATE TABLE " + table + " (";
      } else {
        ddl += ", ";
      }
      ddl += std::string("\"") + c.name + "\" " + c.declared;
    }
    ddl += ");";
    if (sqlite3_exec(db, ddl.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
  }
};

bool Accepted(std::string_view message) {
  for (std::string_view refusal : kAcceptedRefusals) {
    if (message.find(refusal) != std::string_view::npos) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World world;
  std::string_view jet(reinterpret_cast<const char*>(data), size);
  trellin::sql::Translation translation;
  try {
    translation = trellin::sql::Translate(jet, world.catalog);
  } catch (const trellin::sql::SqlError&) {
    return 0;
  }
  sqlite3_stmt* statement = nullptr;
  int rc = sqlite3_prepare_v2(world.db, translation.sql.c_str(), -1, &statement, nullptr);
  sqlite3_finalize(statement);
  if (rc != SQLITE_OK && !Accepted(sqlite3_errmsg(world.db))) {
    std::fprintf(stderr, "Jet:    %.*s\nSQLite: %s\nerror:  %s\n", static_cast<int>(size),
                 reinterpret_cast<const char*>(data), translation.sql.c_str(),
                 sqlite3_errmsg(world.db));
    std::abort();
  }
  return 0;
}
