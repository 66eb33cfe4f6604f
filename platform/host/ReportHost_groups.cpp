// Group definitions and the group sections: breaking, page breaks, headings and total captions.

#include <algorithm>
#include <set>
#include <stdexcept>

#include "platform/host/ReportHost.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

std::vector<Section*> SectionsOfType(const ActiveReport& report, SectionType type) {
  std::vector<Section*> found;
  for (Section& section : report.Sections()) {
    if (section.Type() == type) found.push_back(&section);
  }
  return found;
}

Control* FindIn(Section* section, const std::string& name) {
  return section ? section->Controls().Find(name) : nullptr;
}

// The visible bottom of a section's controls: a height below it would cut them off.
float ControlsBottom(const Section& section) {
  float bottom = 0;
  for (const Control& control : section.Controls()) {
    if (control.Visible()) bottom = std::max(bottom, control.Top() + control.Height());
  }
  return bottom;
}

void SetFieldText(Control& control, const std::string& text) {
  if (control.Class() == ControlClass::Label) {
    control.SetCaption(text);
  } else {
    control.SetDataValue(Variant(text));
  }
}

}  // namespace

void ReportHost::DefineGroup(int level, const std::string& name, const std::string& key_field,
                             const std::string& list_sql, bool page_break) {
  if (level < 1) {
    throw std::invalid_argument("Group \"" + name + "\" has level " + std::to_string(level) +
                                "; levels start at 1.");
  }
  if (Group(level) != nullptr) {
    throw std::invalid_argument("Group level " + std::to_string(level) + " is defined twice (\"" +
                                Group(level)->Name() + "\" and \"" + name + "\").");
  }
  GroupDefinition group(level, name, key_field, list_sql, page_break);
  if (business_layer_ && business_layer_->Database()) {
    group.LoadDescriptions(*business_layer_->Database());
  }
  groups_.push_back(std::move(group));
}

void ReportHost::EndDefineGroups() {
  for (int level = 1; level <= GroupCount(); ++level) {
    if (Group(level) == nullptr) {
      throw std::invalid_argument("Group level " + std::to_string(level) +
                                  " is missing: levels must run from 1 without a gap.");
    }
  }
}

const GroupDefinition* ReportHost::Group(int level) const {
  auto found = std::find_if(groups_.begin(), groups_.end(),
                            [&](const GroupDefinition& group) { return group.Level() == level; });
  return found == groups_.end() ? nullptr : &*found;
}

Section* ReportHost::GroupSection(SectionType type, int level) const {
  // Headers stand outer to inner and footers inner to outer; both count out from the detail, as
  // the engine pairs them.
  std::vector<Section*> sections = SectionsOfType(Designer(), type);
  if (level < 1 || level > static_cast<int>(sections.size())) return nullptr;
  std::size_t index = static_cast<std::size_t>(level - 1);
  return type == SectionType::GroupHeader ? sections[sections.size() - 1 - index] : sections[index];
}

void ReportHost::SetUpCount(Control& control, SummaryType type) const {
  // A count the layout already made a summary keeps its own settings.
  if (control.SummaryType() != SummaryType::None || control.DataField().empty()) return;
  control.SetSummaryType(type);
  control.SetSummaryFunc(SummaryFunc::Count);
}

void ReportHost::SetupGroupSections(bool summary, std::int64_t footer_height, bool) {
  ActiveReport& designer = Designer();
  const int layout_levels =
      static_cast<int>(std::max(SectionsOfType(designer, SectionType::GroupHeader).size(),
                                SectionsOfType(designer, SectionType::GroupFooter).size()));
  for (const GroupDefinition& group : groups_) {
    if (GroupSection(SectionType::GroupHeader, group.Level()) == nullptr) {
      throw std::invalid_argument("Group \"" + group.Name() + "\" needs level " +
                                  std::to_string(group.Level()) + ", but the layout has " +
                                  std::to_string(layout_levels) + " group levels.");
    }
  }
  for (int level = 1; level <= layout_levels; ++level) {
    const GroupDefinition* group = Group(level);
    Section* header = GroupSection(SectionType::GroupHeader, level);
    Section* footer = GroupSection(SectionType::GroupFooter, level);
    if (header != nullptr) {
      header->SetVisible(group != nullptr);
      // An unused level must not break: with no field its key never changes.
      header->SetDataField(group ? group->BoundField() : std::string());
      header->SetNewPage(group && group->PageBreak() ? NewPageMode::Before : NewPageMode::None);
      if (Control* label = FindIn(header, "ghLabel" + std::to_string(level)); label && group) {
        // Designers read the tag as the heading of the group's column in summary mode.
        label->SetTag(group->Name());
      }
    }
    if (footer != nullptr) {
      footer->SetVisible(group != nullptr);
      if (group && footer_height >= 0) {
        footer->SetHeight(std::max(static_cast<float>(footer_height), ControlsBottom(*footer)));
      }
      if (Control* count = FindIn(footer, "gfCount" + std::to_string(level))) {
        SetUpCount(*count, SummaryType::SubTotal);
      }
    }
  }
  if (summary && !groups_.empty()) {
    if (Section* detail = designer.Sections().FindType(SectionType::Detail)) {
      detail->SetVisible(false);
    }
    Section* footer = GroupSection(SectionType::GroupFooter, 1);
    if (Section* header = GroupSection(SectionType::GroupHeader, 1);
        header && FindIn(footer, "gf1SummaryId") != nullptr) {
      header->SetVisible(false);
    }
  }
  SetupUngroupedSections("");
}

void ReportHost::SetupUngroupedSections(const std::string&) {
  if (Section* footer = Designer().Sections().FindType(SectionType::ReportFooter)) {
    if (Control* count = footer->Controls().Find("rfCount")) {
      SetUpCount(*count, SummaryType::GrandTotal);
    }
  }
}

Variant ReportHost::GroupKey(const GroupDefinition& group) const {
  const ReportField* field = Designer().Fields().Find(group.BoundField());
  return field ? field->Value() : Variant::Null();
}

void ReportHost::GroupHeaderFormat(int level) {
  // The engine formats the hidden sections of unused levels too; they have nothing to show.
  const GroupDefinition* defined = Group(level);
  if (defined == nullptr) return;
  const GroupDefinition& group = *defined;
  Section* header = GroupSection(SectionType::GroupHeader, level);
  if (Control* label = FindIn(header, "ghLabel" + std::to_string(level))) {
    label->SetCaption(group.Name() + ": " + group.KeyText(GroupKey(group)));
  }
}

void ReportHost::GroupFooterFormat(int level) {
  const GroupDefinition* defined = Group(level);
  if (defined == nullptr) return;
  const GroupDefinition& group = *defined;
  Section* footer = GroupSection(SectionType::GroupFooter, level);
  if (footer == nullptr) return;
  const Variant key = GroupKey(group);
  const std::string n = std::to_string(level);
  if (Control* label = FindIn(footer, "gfLabel" + n)) {
    SetFieldText(*label, "Total " + group.KeyText(key));
  }
  if (Control* id = FindIn(footer, "gf" + n + "SummaryId")) {
    SetFieldText(*id, key.IsNull() || key.IsEmpty() ? std::string(kNoValueText) : key.Text());
  }
  if (Control* name = FindIn(footer, "gf" + n + "SummaryName")) {
    SetFieldText(*name, group.Description(key));
  }
  columns_.FormatTotals(*footer);
}

}  // namespace trellin::host
