#pragma once
// Walking a list of owned items by position, so that items added while walking are reached too
// and nothing is invalidated: the iterator of a section's controls and of a report's sections.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace trellin {

template <typename T>
class GrowingListIterator {
 public:
  using List = std::vector<std::unique_ptr<T>>;

  GrowingListIterator(const List* items, std::size_t at) : items_(items), at_(at) {}
  T& operator*() const { return *(*items_)[at_]; }
  T* operator->() const { return (*items_)[at_].get(); }
  GrowingListIterator& operator++() {
    ++at_;
    return *this;
  }
  // Equal when both are at or past the end, however far the list grew meanwhile.
  bool operator==(const GrowingListIterator& o) const {
    std::size_t n = items_->size();
    return std::min(at_, n) == std::min(o.at_, n);
  }

  static GrowingListIterator Begin(const List& items) { return {&items, 0}; }
  static GrowingListIterator End(const List& items) {
    return {&items, static_cast<std::size_t>(-1)};
  }

 private:
  const List* items_;
  std::size_t at_;
};

}  // namespace trellin
