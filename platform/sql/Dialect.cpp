#include "platform/sql/Dialect.h"

namespace trellin::sql {
namespace {
thread_local Dialect current = Dialect::kSqlite;
}  // namespace

Dialect CurrentDialect() { return current; }

DialectScope::DialectScope(Dialect dialect) : previous_(current) { current = dialect; }
DialectScope::~DialectScope() { current = previous_; }

}  // namespace trellin::sql
