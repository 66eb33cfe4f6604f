#include "platform/sql/SqlError.h"

namespace trellin::sql {

SqlError::SqlError(std::string_view problem, int position, std::string token, ErrorKind kind)
    : Error(kind, std::string(problem) + " at position " + std::to_string(position)),
      problem_(problem),
      position_(position),
      token_(std::move(token)) {}

}  // namespace trellin::sql
