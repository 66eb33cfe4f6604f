#include "core/host/Control.h"

#include <array>
#include <utility>

#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {
namespace {

struct ClassName {
  std::string_view name;
  ControlClass cls;
};

constexpr std::array<ClassName, 8> kClassNames = {{
    {"Label", ControlClass::Label},
    {"Field", ControlClass::Field},
    {"CheckBox", ControlClass::CheckBox},
    {"Subreport", ControlClass::Subreport},
    {"PageBreak", ControlClass::PageBreak},
    {"Line", ControlClass::Line},
    {"Shape", ControlClass::Shape},
    {"Chart", ControlClass::Chart},
}};

constexpr std::string_view kLibraryPrefix = "DDActiveReports2.";

}  // namespace

std::optional<ControlClass> ControlClassFromName(std::string_view name) {
  // Report code names classes through the engine's library; layouts use the bare name.
  if (name.size() > kLibraryPrefix.size() &&
      EqualsIgnoreCase(name.substr(0, kLibraryPrefix.size()), kLibraryPrefix)) {
    name.remove_prefix(kLibraryPrefix.size());
  }
  for (const auto& entry : kClassNames) {
    if (EqualsIgnoreCase(entry.name, name)) return entry.cls;
  }
  return std::nullopt;
}

std::string_view ControlClassName(ControlClass cls) {
  for (const auto& entry : kClassNames) {
    if (entry.cls == cls) return entry.name;
  }
  return "Control";
}

ChartData& Control::Chart() {
  if (!chart_) chart_ = std::make_shared<ChartData>();
  return *chart_;
}

void Control::SetDataValue(Variant v) {
  data_value_ = std::move(v);
  // A value with no mask prints in its general form; Null prints as nothing.
  if (output_format_.empty()) {
    text_ = data_value_.Text();
  } else {
    text_ = Format(data_value_, output_format_);
  }
}

}  // namespace trellin
