#pragma once
// The error raised for SQL text that cannot be translated: bad syntax, an unknown or ambiguous
// name, a construct SQLite cannot be given.

#include <stdexcept>
#include <string>
#include <string_view>

namespace trellin::sql {

class SqlError : public std::runtime_error {
 public:
  // `problem` is the message without its place, as "unknown column 'Foo'"; what() adds
  // " at position N". `position` is the 1-based character offset in the Jet text, `token` the
  // text found there ("" at the end of the text).
  SqlError(std::string_view problem, int position, std::string token);

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
