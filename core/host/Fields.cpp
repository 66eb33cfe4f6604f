#include "core/host/Fields.h"

#include "platform/runtime/Strings.h"

namespace trellin {

ReportField& Fields::Add(std::string_view name) {
  int at = IndexOf(name);
  if (at >= 0) return *items_[at];
  index_.emplace(UCase(name), static_cast<int>(items_.size()));
  items_.push_back(std::make_unique<ReportField>(std::string(name)));
  return *items_.back();
}

ReportField& Fields::Item(std::string_view name) const {
  if (ReportField* f = Find(name)) return *f;
  throw NoSuchItem("the report has no field named '" + std::string(name) + "'");
}

ReportField& Fields::Item(std::size_t index) const {
  if (index >= items_.size()) {
    throw NoSuchItem("the report has no field at index " + std::to_string(index));
  }
  return *items_[index];
}

ReportField* Fields::Find(std::string_view name) const {
  int at = IndexOf(name);
  return at < 0 ? nullptr : items_[at].get();
}

int Fields::IndexOf(std::string_view name) const {
  auto it = index_.find(UCase(name));
  return it == index_.end() ? -1 : it->second;
}

}  // namespace trellin
