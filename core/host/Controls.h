#pragma once
// The controls of one section, in the order they were laid out or added.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/GrowingListIterator.h"

#include "core/host/Control.h"
#include "platform/runtime/Error.h"

namespace trellin {

// Raised for a control, section or field name that does not exist, or an index out of range.
class NoSuchItem : public Error {
 public:
  explicit NoSuchItem(const std::string& message) : Error(ErrorKind::Report, message) {}
};

class Controls {
 public:
  // `owner` names the section in error messages.
  explicit Controls(std::string owner = {}) : owner_(std::move(owner)) {}
  Controls(const Controls&) = delete;
  Controls& operator=(const Controls&) = delete;

  [[nodiscard]] std::size_t Count() const { return items_.size(); }
  // Throws NoSuchItem naming the section and the index or name. Names match without regard to case.
  [[nodiscard]] Control& Item(std::size_t index) const;
  [[nodiscard]] Control& Item(std::string_view name) const;
  [[nodiscard]] Control& operator[](std::string_view name) const { return Item(name); }
  [[nodiscard]] Control& operator[](std::size_t index) const { return Item(index); }
  // nullptr when there is no such control.
  [[nodiscard]] Control* Find(std::string_view name) const;

  // Adds a control by class name ("DDActiveReports2.Field"); throws std::invalid_argument for a
  // class the engine does not know, or a name already used in the section. An empty name gets
  // one made from the class ("Field1", "Field2", ...).
  Control& Add(std::string_view class_name, std::string name = {});
  Control& Add(ControlClass cls, std::string name = {});

  // Walks by position: items added while walking are reached too.
  using Iterator = GrowingListIterator<Control>;
  [[nodiscard]] Iterator begin() const { return Iterator::Begin(items_); }
  [[nodiscard]] Iterator end() const { return Iterator::End(items_); }

 private:
  std::string owner_;
  // Controls live on the heap so that references handed out stay valid as the list grows.
  std::vector<std::unique_ptr<Control>> items_;
};

}  // namespace trellin
