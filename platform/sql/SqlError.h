#pragma once
// The error raised for SQL text that cannot be translated: bad syntax, an unknown or ambiguous
// name, a construct SQLite cannot be given.

#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/runtime/Error.h"

namespace trellin::sql {

// A report's own SQL that fails is a fault of the report (ErrorKind::Report); text that is too
// large for the translator, which only a user's long filter makes, is an input error.
class SqlError : public Error {
 public:
  // `problem` is the message without its place, as "unknown column 'Foo'"; what() adds
  // " at position N". `position` is the 1-based character offset in the Jet text, `token` the
  // text found there ("" at the end of the text).
  SqlError(std::string_view problem, int position, std::string token,
           ErrorKind kind = ErrorKind::Report);

  [[nodiscard]] int position() const { return position_; }
  [[nodiscard]] const std::string& token() const { return token_; }
  // The message without " at position N".
  [[nodiscard]] const std::string& problem() const { return problem_; }

 private:
  std::string problem_;
  int position_;
  std::string token_;
};

}  // namespace trellin::sql
