#pragma once
// The front end's entry: Jet SQL text in, SQLite SQL text and typed result columns out.

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/sql/Catalog.h"
#include "platform/sql/SemType.h"
#include "platform/sql/SqlError.h"

namespace trellin::sql {

// What a Jet statement becomes. Each result column's values come back from SQLite in the
// storage form of its type (see SemType), so a recordset converts them by type alone.
struct Translation {
  std::string sqlite;
  std::vector<ResultColumn> columns;
};

// Translates one Jet SELECT statement (or UNION) for SQLite, resolving every name against
// `catalog`. Throws SqlError for bad syntax, an unknown table, column or function, or an
// ambiguous column; the message names the token and its 1-based position.
[[nodiscard]] Translation Translate(std::string_view jet, const Catalog& catalog);

// Translate with a cache keyed by the exact text: a report that runs the same statement for
// every row pays for it once. The catalogue must outlive the translator and not change while
// it is in use. Safe to call from several threads.
class Translator {
 public:
  explicit Translator(const Catalog& catalog) : catalog_(catalog) {}

  // The cached or new translation of `jet`; throws SqlError as Translate does (failures are
  // not cached).
  [[nodiscard]] std::shared_ptr<const Translation> Translate(std::string_view jet);
  [[nodiscard]] std::size_t CachedCount() const;

 private:
  const Catalog& catalog_;
  mutable std::mutex mutex_;
  std::unordered_map<std::string, std::shared_ptr<const Translation>> cache_;
};

}  // namespace trellin::sql
