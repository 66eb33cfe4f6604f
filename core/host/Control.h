#pragma once
// A control of a report section: a label, field, check box, sub-report, page break, line or
// shape. Plain data the designer reads and changes while the report runs; the engine lays the
// control out from these properties when its section prints.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/host/Chart.h"
#include "platform/runtime/LinkTarget.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class ActiveReport;

enum class ControlClass { Label, Field, CheckBox, Subreport, PageBreak, Line, Shape, Chart };

// Text alignment inside the control's box, numbered as stored layouts number it.
enum class TextAlignment { Left = 0, Right = 1, Center = 2 };

// Which rows a summary field adds up: none (an ordinary field), every row of the report, or the
// rows of one group.
enum class SummaryType { None = 0, GrandTotal = 1, SubTotal = 2 };
enum class SummaryFunc { Sum = 0, Count = 2 };

// The class of a control from its name as report code spells it: "DDActiveReports2.Label",
// ".Field", ".CheckBox", ".Subreport", ".PageBreak", ".Line", ".Shape", ".Chart", with or without
// the library prefix, in any case. nullopt for anything else.
[[nodiscard]] std::optional<ControlClass> ControlClassFromName(std::string_view name);
// "Label", "Field", ... : the short name of a class.
[[nodiscard]] std::string_view ControlClassName(ControlClass cls);

struct ControlFont {
  std::string Name = "Arial";
  float Size = 10.0f;  // points
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
};

// Border styles: 0 none, 1 single rule, 6 double rule.
struct ControlBorder {
  int TopStyle = 0;
  int BottomStyle = 0;
  int LeftStyle = 0;
  int RightStyle = 0;
};

class Control {
 public:
  Control(ControlClass cls, std::string name) : class_(cls), name_(std::move(name)) {}

  [[nodiscard]] ControlClass Class() const { return class_; }
  [[nodiscard]] const std::string& Name() const { return name_; }

  // Position and size in twips, relative to the section's top-left corner.
  [[nodiscard]] float Left() const { return left_; }
  void SetLeft(float v) { left_ = v; }
  [[nodiscard]] float Top() const { return top_; }
  void SetTop(float v) { top_ = v; }
  [[nodiscard]] float Width() const { return width_; }
  void SetWidth(float v) { width_ = v; }
  [[nodiscard]] float Height() const { return height_; }
  void SetHeight(float v) { height_ = v; }

  [[nodiscard]] bool Visible() const { return visible_; }
  void SetVisible(bool v) { visible_ = v; }
  [[nodiscard]] const std::string& Tag() const { return tag_; }
  void SetTag(std::string v) { tag_ = std::move(v); }
  [[nodiscard]] ControlFont& Font() { return font_; }
  [[nodiscard]] const ControlFont& Font() const { return font_; }
  [[nodiscard]] ControlBorder& Border() { return border_; }
  [[nodiscard]] const ControlBorder& Border() const { return border_; }
  // Text colour as 0xRRGGBB.
  [[nodiscard]] std::uint32_t ForeColor() const { return fore_color_; }
  void SetForeColor(std::uint32_t v) { fore_color_ = v; }

  // Label and check box text.
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(std::string v) { caption_ = std::move(v); }

  // What a field prints. Setting it changes only the printed text, not DataValue.
  [[nodiscard]] const std::string& Text() const { return text_; }
  void SetText(std::string v) { text_ = std::move(v); }
  // The typed value behind a field (or a check box's state). Setting it also sets Text: the
  // value formatted through OutputFormat, or its plain text when there is no mask.
  [[nodiscard]] const Variant& DataValue() const { return data_value_; }
  void SetDataValue(Variant v);
  [[nodiscard]] const Variant& Value() const { return data_value_; }
  void SetValue(Variant v) { SetDataValue(std::move(v)); }

  // The field of the current row this control shows, or an expression starting with "=" that
  // the engine evaluates as the section prints (`="Page " & rpt.PageNumber`).
  [[nodiscard]] const std::string& DataField() const { return data_field_; }
  void SetDataField(std::string v) { data_field_ = std::move(v); }
  [[nodiscard]] const std::string& OutputFormat() const { return output_format_; }
  void SetOutputFormat(std::string v) { output_format_ = std::move(v); }
  [[nodiscard]] TextAlignment Alignment() const { return alignment_; }
  void SetAlignment(TextAlignment v) { alignment_ = v; }
  // A growing field wraps its text and pushes the section down; a shrinking one gives up its
  // height when it has no text.
  [[nodiscard]] bool CanGrow() const { return can_grow_; }
  void SetCanGrow(bool v) { can_grow_ = v; }
  [[nodiscard]] bool CanShrink() const { return can_shrink_; }
  void SetCanShrink(bool v) { can_shrink_ = v; }
  // A text too long for a box that does not grow ends in "…" after its last whole word that
  // fits, instead of counting as cut.
  [[nodiscard]] bool Ellipsis() const { return ellipsis_; }
  void SetEllipsis(bool v) { ellipsis_ = v; }

  [[nodiscard]] trellin::SummaryType SummaryType() const { return summary_type_; }
  void SetSummaryType(trellin::SummaryType v) { summary_type_ = v; }
  [[nodiscard]] trellin::SummaryFunc SummaryFunc() const { return summary_func_; }
  void SetSummaryFunc(trellin::SummaryFunc v) { summary_func_ = v; }
  // The group header whose group a SubTotal sums; empty means the group of the footer holding
  // the control.
  [[nodiscard]] const std::string& SummaryGroup() const { return summary_group_; }
  void SetSummaryGroup(std::string v) { summary_group_ = std::move(v); }

  // Where the printed text leads in a viewer (a report key and values); empty for no link. A
  // designer sets it while formatting, for the row at hand: it stays until changed.
  [[nodiscard]] const LinkTarget& Link() const { return link_; }
  void SetLink(LinkTarget v) { link_ = std::move(v); }

  // The child designer a sub-report control runs (the parent creates it once and keeps it).
  [[nodiscard]] const std::shared_ptr<ActiveReport>& object() const { return object_; }
  void SetObject(std::shared_ptr<ActiveReport> child) { object_ = std::move(child); }

  // A chart control's title, series and plot (made on first use).
  [[nodiscard]] ChartData& Chart();
  [[nodiscard]] const ChartData* ChartOrNull() const { return chart_.get(); }

 private:
  ControlClass class_;
  std::string name_;
  float left_ = 0, top_ = 0, width_ = 0, height_ = 0;
  bool visible_ = true;
  std::string tag_;
  ControlFont font_;
  ControlBorder border_;
  std::uint32_t fore_color_ = 0;
  std::string caption_;
  std::string text_;
  Variant data_value_;
  std::string data_field_;
  std::string output_format_;
  TextAlignment alignment_ = TextAlignment::Left;
  bool can_grow_ = false;
  bool can_shrink_ = false;
  bool ellipsis_ = false;
  trellin::SummaryType summary_type_ = trellin::SummaryType::None;
  trellin::SummaryFunc summary_func_ = trellin::SummaryFunc::Sum;
  std::string summary_group_;
  LinkTarget link_;
  std::shared_ptr<ActiveReport> object_;
  std::shared_ptr<ChartData> chart_;
};

}  // namespace trellin
