#include "core/host/Section.h"

#include <array>

#include "platform/runtime/Strings.h"

namespace trellin {

std::string_view SectionTypeName(SectionType type) {
  static constexpr std::array<std::string_view, 7> kNames = {
      "ReportHeader", "PageHeader", "GroupHeader", "Detail",
      "GroupFooter",  "PageFooter", "ReportFooter"};
  return kNames[static_cast<std::size_t>(type)];
}

Section& Sections::Item(std::size_t index) const {
  if (index >= items_.size()) {
    throw NoSuchItem("the report has no section at index " + std::to_string(index) + " (it has " +
                     std::to_string(items_.size()) + ")");
  }
  return *items_[index];
}

Section& Sections::Item(std::string_view name) const {
  if (Section* s = Find(name)) return *s;
  throw NoSuchItem("the report has no section named '" + std::string(name) + "'");
}

Section* Sections::Find(std::string_view name) const {
  for (const auto& s : items_) {
    if (EqualsIgnoreCase(s->Name(), name)) return s.get();
  }
  return nullptr;
}

Section* Sections::FindType(SectionType type) const {
  for (const auto& s : items_) {
    if (s->Type() == type) return s.get();
  }
  return nullptr;
}

Section& Sections::Add(SectionType type, std::string name) {
  if (Find(name))
    throw std::invalid_argument("the report already has a section named '" + name + "'");
  items_.push_back(std::make_unique<Section>(type, std::move(name)));
  return *items_.back();
}

}  // namespace trellin
