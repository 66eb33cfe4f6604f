#pragma once
// A band of a report: its height and flags, and its controls. Plain data; the engine keeps all
// run state (group keys, totals, page positions) elsewhere.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/GrowingListIterator.h"

#include "core/host/Controls.h"

namespace trellin {

enum class SectionType {
  ReportHeader,
  PageHeader,
  GroupHeader,
  Detail,
  GroupFooter,
  PageFooter,
  ReportFooter
};

// Whether a section starts a new page before it prints, ends its page after it, or both.
enum class NewPageMode { None = 0, Before = 1, After = 2, BeforeAfter = 3 };

// A detail laid out in columns, as labels on a sheet: each printing of the detail takes the
// next cell, `Count` cells to a row, across a row and then down (`AcrossDown`) or down a column
// to the page's end and then across (`DownAcross`). A cell is the print width, less the spacing
// between cells, shared evenly; its height is the section's printed height. `Skip` leaves that
// many cells blank before the first one printed, for a sheet partly used already.
enum class ColumnDirection { AcrossDown, DownAcross };
struct DetailColumns {
  int Count = 1;
  ColumnDirection Direction = ColumnDirection::AcrossDown;
  float Spacing = 0;
  int Skip = 0;
};

[[nodiscard]] std::string_view SectionTypeName(SectionType type);

class Section {
 public:
  Section(SectionType type, std::string name)
      : type_(type), name_(name), controls_(std::move(name)) {}
  Section(const Section&) = delete;
  Section& operator=(const Section&) = delete;

  [[nodiscard]] SectionType Type() const { return type_; }
  [[nodiscard]] const std::string& Name() const { return name_; }

  // Design height in twips; the printed height may grow or shrink with the content.
  [[nodiscard]] float Height() const { return height_; }
  void SetHeight(float v) { height_ = v; }
  // A hidden section still receives its events, but prints nothing and takes no room.
  [[nodiscard]] bool Visible() const { return visible_; }
  void SetVisible(bool v) { visible_ = v; }
  // 0 transparent, 1 shaded with BackColor over the section's full printed height.
  [[nodiscard]] int BackStyle() const { return back_style_; }
  void SetBackStyle(int v) { back_style_ = v; }
  // The shade, as 0xRRGGBB.
  [[nodiscard]] std::uint32_t BackColor() const { return back_color_; }
  void SetBackColor(std::uint32_t v) { back_color_ = v; }
  [[nodiscard]] NewPageMode NewPage() const { return new_page_; }
  void SetNewPage(NewPageMode v) { new_page_ = v; }
  // A section always grows to hold its growing controls; CanGrow lets it also run on across a
  // page end instead of moving whole to the next page.
  [[nodiscard]] bool CanGrow() const { return can_grow_; }
  void SetCanGrow(bool v) { can_grow_ = v; }
  [[nodiscard]] bool CanShrink() const { return can_shrink_; }
  void SetCanShrink(bool v) { can_shrink_ = v; }
  // The field a group header breaks on: a new group starts when its value changes.
  [[nodiscard]] const std::string& DataField() const { return data_field_; }
  void SetDataField(std::string v) { data_field_ = std::move(v); }
  // A group header that prints again under the page header of every page its group runs on
  // to, so that a continuation page says which group it belongs to.
  [[nodiscard]] bool RepeatOnPage() const { return repeat_on_page_; }
  void SetRepeatOnPage(bool v) { repeat_on_page_ = v; }
  // The detail's columns; a count of 1 (as every other section has) is no columns.
  [[nodiscard]] const DetailColumns& Columns() const { return columns_; }
  void SetColumns(DetailColumns v) { columns_ = v; }

  [[nodiscard]] trellin::Controls& Controls() { return controls_; }
  [[nodiscard]] const trellin::Controls& Controls() const { return controls_; }
  // The named control of this section; throws NoSuchItem.
  [[nodiscard]] Control& Field(std::string_view control_name) const {
    return controls_.Item(control_name);
  }

 private:
  SectionType type_;
  std::string name_;
  float height_ = 0;
  bool visible_ = true;
  int back_style_ = 0;
  std::uint32_t back_color_ = 0xEEEEEE;
  NewPageMode new_page_ = NewPageMode::None;
  bool can_grow_ = false;
  bool can_shrink_ = false;
  bool repeat_on_page_ = false;
  DetailColumns columns_;
  std::string data_field_;
  trellin::Controls controls_;
};

// The sections of a report in layout order: report header, page header, group headers outer to
// inner, detail, group footers inner to outer, page footer, report footer.
class Sections {
 public:
  Sections() = default;
  Sections(const Sections&) = delete;
  Sections& operator=(const Sections&) = delete;

  [[nodiscard]] std::size_t Count() const { return items_.size(); }
  // Throws NoSuchItem. Names match without regard to case.
  [[nodiscard]] Section& Item(std::size_t index) const;
  [[nodiscard]] Section& Item(std::string_view name) const;
  [[nodiscard]] Section& operator[](std::string_view name) const { return Item(name); }
  [[nodiscard]] Section& operator[](std::size_t index) const { return Item(index); }
  [[nodiscard]] Section* Find(std::string_view name) const;
  // The first section of a type, nullptr when the report has none.
  [[nodiscard]] Section* FindType(SectionType type) const;

  // Appends a section; throws std::invalid_argument for a name already used.
  Section& Add(SectionType type, std::string name);
  // Removes every section, for a layout that is loaded again from nothing.
  void Clear() { items_.clear(); }

  // Walks by position: items added while walking are reached too.
  using Iterator = GrowingListIterator<Section>;
  [[nodiscard]] Iterator begin() const { return Iterator::Begin(items_); }
  [[nodiscard]] Iterator end() const { return Iterator::End(items_); }

 private:
  std::vector<std::unique_ptr<Section>> items_;
};

// The level of a section named `prefix` and a number ("GroupFooter3" with "GroupFooter" is 3),
// level 1 the innermost; 0 for any other name.
[[nodiscard]] inline int GroupLevelOf(const Section& section, std::string_view prefix) {
  const std::string& name = section.Name();
  if (name.size() <= prefix.size() || name.compare(0, prefix.size(), prefix) != 0) return 0;
  int level = 0;
  for (std::size_t i = prefix.size(); i < name.size() && level < 1000; ++i) {
    if (name[i] < '0' || name[i] > '9') return 0;
    level = level * 10 + (name[i] - '0');
  }
  return level;
}

}  // namespace trellin
