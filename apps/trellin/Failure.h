#pragma once
// How a command's failure ends the process: one line on stderr and the exit code of its kind.
// The one place where kinds of error become exit codes.

#include <exception>
#include <string>
#include <string_view>

#include "platform/runtime/Error.h"

namespace trellin::cli {

// The exit code a script calling trellin can rely on for a failure of `kind`.
[[nodiscard]] int ExitCodeFor(ErrorKind kind);

// `message` on one line: every run of white space that holds a line break becomes one blank, so
// that a multi-line SQL text or a list of problems stays one line on stderr.
[[nodiscard]] std::string OneLine(std::string_view message);

// Prints "trellin COMMAND: message" (one line) for `failure`, which must not be null, and returns
// its exit code: a trellin::Error by its kind (a usage error adds the hint to --help), anything
// else as an internal failure.
int ReportFailure(std::string_view command, const std::exception_ptr& failure);

}  // namespace trellin::cli
