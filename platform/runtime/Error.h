#pragma once
// The one base of the errors the system raises. Each carries a message for the user and the kind
// of trouble, and the kind alone decides how a run ends: the command line turns kinds into exit
// codes and one-line messages in one place (apps/trellin/Failure.cpp). Header only, so that
// libraries that link no runtime code (the renderers) can raise it too.

#include <stdexcept>
#include <string>
#include <string_view>

namespace trellin {

enum class ErrorKind {
  Input,        // what the user gave: a report key, a parameter value, an option, an output file
  CompanyFile,  // the company file: missing, damaged, or not as the reports need it
  Report,       // the report: its layout, its events, its own SQL
  Internal,     // a fault of the program itself
};

class Error : public std::runtime_error {
 public:
  Error(ErrorKind kind, const std::string& message) : std::runtime_error(message), kind_(kind) {}
  [[nodiscard]] ErrorKind Kind() const noexcept { return kind_; }

 private:
  ErrorKind kind_;
};

}  // namespace trellin
