#pragma once
// The layout script engine: Lua 5.4 (its C++ build, so that an error unwinds through our frames
// with their destructors), bound by hand over the C API to the late-bound objects of
// core/host/Dispatch.h. Made safe for files users edit: a budget of steps per handler, a cap on
// memory, and only the base library (less dofile, loadfile and load), string, table, math and
// utf8.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "core/host/LayoutScript.h"

namespace trellin::script {

struct ScriptLimits {
  // Virtual-machine instructions one handler (or the script's top level) may run.
  std::int64_t steps = 20'000'000;
  // Bytes the script's state may hold.
  std::size_t memory = 64u << 20;
};

class LuaScriptEngine : public ScriptEngine {
 public:
  explicit LuaScriptEngine(ScriptLimits limits = {}) : limits_(limits) {}
  std::unique_ptr<LayoutScript> Compile(std::string_view source, std::string_view file,
                                        int first_line, ActiveReport& report) override;

 private:
  ScriptLimits limits_;
};

}  // namespace trellin::script
