#pragma once
// Reads a stored layout (YAML, described in layouts/README.md) into a designer: report
// properties, sections in layout order, and their controls.

#include <stdexcept>
#include <string>
#include <string_view>

#include "core/host/ActiveReport.h"
#include "platform/runtime/Error.h"

namespace trellin::engine {

// A layout that cannot be read. The message starts with "file:line: " and names the problem.
class LayoutError : public Error {
 public:
  explicit LayoutError(const std::string& message) : Error(ErrorKind::Report, message) {}
};

// Fills `report`, which must have no sections yet, from the layout text. `file` names the layout
// in error messages. Throws LayoutError for bad YAML, unknown keys, bad values, duplicate names
// and sections out of layout order.
void LoadLayout(std::string_view text, std::string_view file, ActiveReport& report);

}  // namespace trellin::engine
