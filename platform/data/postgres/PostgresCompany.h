#pragma once
// The company schema on PostgreSQL, and a company file copied onto a server.

#include <cstdint>
#include <string>

#include "platform/data/postgres/Postgres.h"
#include "platform/sql/Catalog.h"

namespace trellin::data {

// The company schema for PostgreSQL, generated from the one schema (schema/company.sql): the
// citext extension, every table with its columns in their PostgreSQL types (platform/sql's
// README) and primary key; then, apart, every index, named as there, and the few a server needs
// besides (made after a copy's rows are in, which is quicker than keeping them up row by row).
struct PostgresSchema {
  std::string tables;
  std::string indexes;
};
[[nodiscard]] PostgresSchema PostgresSchemaSql();

// The tables and typed columns of the one schema, as the translator sees a company on a server
// (laid down by PostgresSchemaSql, whose BIGINT alone cannot tell money from a whole number).
[[nodiscard]] sql::Catalog CompanySchemaCatalog();

struct CopySummary {
  int tables = 0;
  std::int64_t rows = 0;
};

// Copies the company file `file` onto the database `target` holds open: lays down the schema
// and sends every table's rows, all in one transaction, then gathers the planner's statistics.
// The database must hold no company yet. Throws DatabaseError (the server's message, or the
// file's) and leaves the database as it was.
CopySummary CopyCompanyToPostgres(const std::string& file, PgConnection& target);

}  // namespace trellin::data
