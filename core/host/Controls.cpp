#include "core/host/Controls.h"

#include "platform/runtime/Strings.h"

namespace trellin {

Control& Controls::Item(std::size_t index) const {
  if (index >= items_.size()) {
    throw NoSuchItem("section '" + owner_ + "' has no control at index " + std::to_string(index) +
                     " (it has " + std::to_string(items_.size()) + ")");
  }
  return *items_[index];
}

Control& Controls::Item(std::string_view name) const {
  if (Control* c = Find(name)) return *c;
  throw NoSuchItem("section '" + owner_ + "' has no control named '" + std::string(name) + "'");
}

Control* Controls::Find(std::string_view name) const {
  for (const auto& c : items_) {
    if (EqualsIgnoreCase(c->Name(), name)) return c.get();
  }
  return nullptr;
}

Control& Controls::Add(std::string_view class_name, std::string name) {
  auto cls = ControlClassFromName(class_name);
  if (!cls) {
    throw std::invalid_argument("unknown control class '" + std::string(class_name) + "'");
  }
  return Add(*cls, std::move(name));
}

Control& Controls::Add(ControlClass cls, std::string name) {
  if (name.empty()) {
    // Number new controls after their class, skipping names the section already uses.
    std::string base(ControlClassName(cls));
    for (std::size_t n = items_.size() + 1;; ++n) {
      name = base + std::to_string(n);
      if (!Find(name)) break;
    }
  } else if (Find(name)) {
    throw std::invalid_argument("section '" + owner_ + "' already has a control named '" + name +
                                "'");
  }
  items_.push_back(std::make_unique<Control>(cls, std::move(name)));
  return *items_.back();
}

}  // namespace trellin
