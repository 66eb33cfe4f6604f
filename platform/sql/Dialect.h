#pragma once
// Which server's SQL the emitter writes. The parser and the typer are one for both; only the
// text differs (see README.md, "PostgreSQL").

namespace trellin::sql {

enum class Dialect { kSqlite, kPostgres };

// The dialect of the translation running on this thread: the emitter's helpers write by it.
[[nodiscard]] Dialect CurrentDialect();
[[nodiscard]] inline bool WritingPostgres() { return CurrentDialect() == Dialect::kPostgres; }

// Sets the dialect for the translations made while it lives, on this thread, and restores the
// one before when it ends.
class DialectScope {
 public:
  explicit DialectScope(Dialect dialect);
  ~DialectScope();
  DialectScope(const DialectScope&) = delete;
  DialectScope& operator=(const DialectScope&) = delete;

 private:
  Dialect previous_;
};

}  // namespace trellin::sql
