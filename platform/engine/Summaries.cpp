#include "platform/engine/Summaries.h"

namespace trellin::engine {

void Summaries::Add(Summary& s, const Variant& value) {
  if (value.IsNull() || value.IsEmpty() || value.IsMissing()) return;
  ++s.count;
  if (s.func != SummaryFunc::Sum) return;
  // Money stays Currency and whole numbers stay Long, so sums of money are exact; numeric text
  // counts by its value and other text not at all.
  try {
    if (value.IsNumber()) {
      s.sum = trellin::Add(s.sum, value);
    } else if (value.IsString()) {
      if (auto c = Currency::Parse(*value.Get<std::string>())) {
        s.sum = trellin::Add(s.sum, Variant(*c));
      }
    } else if (value.IsBoolean()) {
      s.sum = trellin::Add(s.sum, Variant(std::int64_t{*value.Get<bool>() ? -1 : 0}));
    }
  } catch (const std::exception&) {
    // A sum past the range of money stops growing rather than ending the report.
  }
}

void Summaries::Accumulate(const Fields& fields) {
  for (Summary& s : items_) {
    if (s.field < 0) {
      // Fields added after the summaries were collected (in FetchData) count from then on.
      s.field = fields.IndexOf(s.control->DataField());
      if (s.field < 0) continue;
    }
    Add(s, fields.Item(static_cast<std::size_t>(s.field)).Value());
  }
}

void Summaries::ResetThrough(int level) {
  for (Summary& s : items_) {
    if (s.reset_level > 0 && s.reset_level <= level) {
      s.sum = Variant(std::int64_t{0});
      s.count = 0;
    }
  }
}

void Summaries::Publish(const Section& section) {
  auto it = by_section_.find(&section);
  if (it == by_section_.end()) return;
  for (std::size_t i : it->second) {
    Summary& s = items_[i];
    s.control->SetDataValue(s.func == SummaryFunc::Count ? Variant(s.count) : s.sum);
  }
}

}  // namespace trellin::engine
