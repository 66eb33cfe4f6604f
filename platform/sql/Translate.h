#pragma once
// The front end's entry: Jet SQL text in, SQLite or PostgreSQL text and typed result columns
// out.

#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/sql/Catalog.h"
#include "platform/sql/Dialect.h"
#include "platform/sql/SemType.h"
#include "platform/sql/SqlError.h"

namespace trellin::sql {

// What a Jet statement becomes. Each result column's values come back in the storage form of
// its type (see SemType; on PostgreSQL, README.md), so a recordset converts them by type alone.
struct Translation {
  std::string sql;
  std::vector<ResultColumn> columns;
};

// Translates one Jet SELECT statement (or UNION) for SQLite or PostgreSQL, resolving every
// name against `catalog`. Throws SqlError for bad syntax, an unknown table, column or function, or
// an ambiguous column; the message names the token and its 1-based position.
[[nodiscard]] Translation Translate(std::string_view jet, const Catalog& catalog,
                                    Dialect dialect = Dialect::kSqlite);

// Translate with a cache keyed by the exact text: a report that runs the same statement for
// every row pays for it once. The cache keeps the `capacity` most recently used statements, so
// that a report which writes each row's key into its text doesn't grow it without end. A
// statement that differs from one seen before only in its whole numbers and plain texts (an id
// written into the text for each row) is filled into that statement's translation rather than
// translated again, wherever those literals pass through translation unchanged. The catalogue must
// outlive the translator and not change while it is in use. Safe to call from several threads.
class Translator {
 public:
  static constexpr std::size_t kDefaultCapacity = 1000;

  explicit Translator(const Catalog& catalog, std::size_t capacity = kDefaultCapacity,
                      Dialect dialect = Dialect::kSqlite)
      : catalog_(catalog), capacity_(capacity == 0 ? 1 : capacity), dialect_(dialect) {}

  // The cached or new translation of `jet`; throws SqlError as Translate does (failures are
  // not cached).
  [[nodiscard]] std::shared_ptr<const Translation> Translate(std::string_view jet);
  // Statements held by exact text.
  [[nodiscard]] std::size_t CachedCount() const;

 private:
  // A statement's translation with its literals as gaps: pieces[0], literal slots[0],
  // pieces[1], ... Not usable when translation changed a literal (money scaled a number, say).
  struct Shape {
    bool usable = false;
    std::vector<std::string> pieces;
    std::vector<std::size_t> slots;
    std::vector<ResultColumn> columns;
  };
  // The shape of `skeleton`, whose literals are texts where `texts` says so.
  [[nodiscard]] std::shared_ptr<const Shape> ShapeOf(const std::string& skeleton,
                                                     const std::vector<bool>& texts);

  using Recency = std::list<std::string>;  // most recent first
  struct Entry {
    std::shared_ptr<const Translation> translation;
    Recency::iterator place;
  };

  const Catalog& catalog_;
  const std::size_t capacity_;
  const Dialect dialect_;
  mutable std::mutex mutex_;
  Recency recency_;
  std::unordered_map<std::string, Entry> cache_;
  // By the text with its whole numbers replaced by placeholders; emptied when it reaches capacity.
  std::unordered_map<std::string, std::shared_ptr<const Shape>> shapes_;
};

}  // namespace trellin::sql
