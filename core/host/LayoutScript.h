#pragma once
// The script of a stored layout: handlers named as the report's events
// (`ActiveReport_ReportStart`, `Detail_Format`, `ghBank_BeforePrint`), run by the engine after
// the designer's own handler of the event. The engine that compiles and runs scripts is
// installed once by the platform (platform/script); this side knows only these interfaces.

#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/Error.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class ActiveReport;

// A script that does not compile, or a handler that fails. The message starts with the layout
// file and line ("layouts/admin/arX.yaml:31: ...").
class ScriptError : public Error {
 public:
  explicit ScriptError(const std::string& message) : Error(ErrorKind::Report, message) {}
};

class LayoutScript {
 public:
  virtual ~LayoutScript() = default;
  // Whether the script has a handler of this name (matched without regard to case).
  [[nodiscard]] virtual bool Handles(std::string_view handler) const = 0;
  // Runs the handler with no arguments and gives what it returned (Empty for nothing). Throws
  // ScriptError naming the file and line; a handler that runs too long is stopped so, and the
  // script runs no more: from then on it handles nothing and Run gives Empty.
  virtual Variant Run(std::string_view handler) = 0;
  // Sets a global the handlers see, such as `rpx`.
  virtual void SetGlobal(const std::string& name, const Variant& value) = 0;
};

class ScriptEngine {
 public:
  virtual ~ScriptEngine() = default;
  // Compiles `source`, which starts on line `first_line` of `file`, for `report` (the script's
  // `rpt`). Throws ScriptError with the file and line of a syntax error.
  virtual std::unique_ptr<LayoutScript> Compile(std::string_view source, std::string_view file,
                                                int first_line, ActiveReport& report) = 0;
};

}  // namespace trellin
