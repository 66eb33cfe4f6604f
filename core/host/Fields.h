#pragma once
// The data fields of a report: the columns of a bound row, and the unbound fields a designer adds
// in ActiveReport_DataInitialize and fills in ActiveReport_FetchData.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/host/Controls.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class ReportField {
 public:
  explicit ReportField(std::string name) : name_(std::move(name)) {}
  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] const Variant& Value() const { return value_; }
  void SetValue(Variant v) { value_ = std::move(v); }

 private:
  std::string name_;
  Variant value_;
};

class Fields {
 public:
  Fields() = default;
  Fields(const Fields&) = delete;
  Fields& operator=(const Fields&) = delete;

  // Adds a field, Empty; adding a name that exists returns the field already there, value kept.
  ReportField& Add(std::string_view name);
  [[nodiscard]] std::size_t Count() const { return items_.size(); }
  // Throws NoSuchItem. Names match without regard to case.
  [[nodiscard]] ReportField& Item(std::string_view name) const;
  [[nodiscard]] ReportField& Item(std::size_t index) const;
  [[nodiscard]] ReportField& operator[](std::string_view name) const { return Item(name); }
  [[nodiscard]] ReportField* Find(std::string_view name) const;
  [[nodiscard]] bool Exists(std::string_view name) const { return Find(name) != nullptr; }
  // The position of a field, -1 when absent: a stable handle, since fields are never removed.
  [[nodiscard]] int IndexOf(std::string_view name) const;

 private:
  std::vector<std::unique_ptr<ReportField>> items_;
  std::unordered_map<std::string, int> index_;  // upper-cased name -> position
};

}  // namespace trellin
