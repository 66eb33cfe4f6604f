#pragma once
// Running sums and counts behind summary fields: run state kept apart from the controls, which
// only receive the final value when their footer formats.

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "core/host/ActiveReport.h"

namespace trellin::engine {

class Summaries {
 public:
  // Finds every summary field of the report. `group_level` gives the level of a group header or
  // footer section (1 innermost), 0 for other sections.
  template <typename LevelOf>
  void Collect(ActiveReport& report, LevelOf group_level);

  // Adds the current row to every summary.
  void Accumulate(const Fields& fields);
  // A group of `level` starts: the summaries of that level and the levels inside it start over.
  void ResetThrough(int level);
  // Gives the summary fields of `section` their values, as DataValue (and so Text).
  void Publish(const Section& section);

 private:
  struct Summary {
    Control* control = nullptr;
    SummaryFunc func = SummaryFunc::Sum;
    int reset_level = 0;  // 0: never reset (a grand total)
    int field = -1;       // position in Fields; -1 until the field exists
    Variant sum = Variant(std::int64_t{0});
    std::int64_t count = 0;
  };
  void Add(Summary& s, const Variant& value);

  std::vector<Summary> items_;
  std::unordered_map<const Section*, std::vector<std::size_t>> by_section_;
};

template <typename LevelOf>
void Summaries::Collect(ActiveReport& report, LevelOf group_level) {
  for (Section& section : report.Sections()) {
    for (Control& c : section.Controls()) {
      if (c.SummaryType() == SummaryType::None || c.DataField().empty()) continue;
      Summary s;
      s.control = &c;
      s.func = c.SummaryFunc();
      if (c.SummaryType() == SummaryType::SubTotal) {
        const Section* owner =
            c.SummaryGroup().empty() ? &section : report.Sections().Find(c.SummaryGroup());
        s.reset_level = owner ? group_level(*owner) : 0;
      }
      s.field = report.Fields().IndexOf(c.DataField());
      by_section_[&section].push_back(items_.size());
      items_.push_back(std::move(s));
    }
  }
}

}  // namespace trellin::engine
