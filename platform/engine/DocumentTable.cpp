#include "platform/engine/DocumentTable.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/Strings.h"

namespace trellin::engine {
namespace {

// The page furniture every layout may carry: never a column, never a title line of its own
// (the title is taken, but as a title).
constexpr std::string_view kFurniture[] = {"lblReportTitle", "phDated",      "lblNotice",
                                           "txtPage",        "rfParameters", "txtParameters",
                                           "linHeader",      "linFooter"};
constexpr std::string_view kDescription = "txtParameters";
constexpr std::string_view kDescriptionPlaceholder = "Parameters";
// Labels whose tops differ by less than this stand on one row of headings.
constexpr float kRowSlack = 60;

bool IsFurniture(const Control& c) {
  return std::any_of(std::begin(kFurniture), std::end(kFurniture),
                     [&](std::string_view name) { return EqualsIgnoreCase(c.Name(), name); });
}

const std::string& ShownText(const Control& c) {
  return c.Class() == ControlClass::Label ? c.Caption() : c.Text();
}

float Overlap(float left1, float width1, float left2, float width2) {
  return std::min(left1 + width1, left2 + width2) - std::max(left1, left2);
}

std::vector<const Control*> FieldsOf(const Section& section) {
  std::vector<const Control*> fields;
  if (!section.Visible()) return fields;
  for (const Control& c : section.Controls()) {
    if ((c.Class() == ControlClass::Field || c.Class() == ControlClass::CheckBox) && c.Visible() &&
        c.Width() > 0 && !IsFurniture(c)) {
      fields.push_back(&c);
    }
  }
  return fields;
}

std::vector<const Control*> LabelsOf(const Section& section) {
  std::vector<const Control*> labels;
  if (!section.Visible()) return labels;
  for (const Control& c : section.Controls()) {
    if (c.Class() == ControlClass::Label && c.Visible() && c.Width() > 0 && !IsFurniture(c) &&
        !Trim(c.Caption()).empty()) {
      labels.push_back(&c);
    }
  }
  return labels;
}

// Sections of a type in layout order.
std::vector<const Section*> OfType(const ActiveReport& report, SectionType type) {
  std::vector<const Section*> found;
  for (const Section& s : report.Sections()) {
    if (s.Type() == type) found.push_back(&s);
  }
  return found;
}

// The fields of the rows: the detail's, else the innermost group footer's that has some, else
// the group headers', innermost first.
std::vector<const Control*> RowFields(const ActiveReport& report) {
  std::vector<const Section*> candidates = OfType(report, SectionType::Detail);
  for (const Section* s : OfType(report, SectionType::GroupFooter)) candidates.push_back(s);
  std::vector<const Section*> headers = OfType(report, SectionType::GroupHeader);
  candidates.insert(candidates.end(), headers.rbegin(), headers.rend());
  for (const Section* s : candidates) {
    std::vector<const Control*> fields = FieldsOf(*s);
    if (!fields.empty()) return fields;
  }
  return {};
}

// The row of headings: of the first heading section that has a label over a field, the labels
// on the row nearest above the fields.
std::vector<const Control*> HeadingRow(const ActiveReport& report,
                                       const std::vector<const Control*>& fields) {
  std::vector<const Section*> sources = OfType(report, SectionType::PageHeader);
  for (const Section* s : OfType(report, SectionType::GroupHeader)) sources.push_back(s);
  for (const Section* s : OfType(report, SectionType::ReportHeader)) sources.push_back(s);
  for (const Section* source : sources) {
    std::vector<const Control*> labels = LabelsOf(*source);
    // The lowest label over any field marks the row: a caption row above it (a group caption
    // spanning several columns) heads no column.
    const Control* lowest = nullptr;
    for (const Control* field : fields) {
      for (const Control* label : labels) {
        if (Overlap(label->Left(), label->Width(), field->Left(), field->Width()) <= 0) continue;
        if (lowest == nullptr || label->Top() > lowest->Top()) lowest = label;
      }
    }
    if (lowest == nullptr) continue;
    std::vector<const Control*> row;
    for (const Control* label : labels) {
      if (std::fabs(label->Top() - lowest->Top()) < kRowSlack) row.push_back(label);
    }
    return row;
  }
  return {};
}

void DescribeColumns(const ActiveReport& report, float x0, DocumentInfo& info) {
  const std::vector<const Control*> fields = RowFields(report);
  const std::vector<const Control*> headings = HeadingRow(report, fields);
  struct Building {
    TableColumn column;
    float place;  // where it prints: its heading's left edge, else its field's
  };
  std::vector<Building> columns;
  for (const Control* label : headings) {
    columns.push_back({TableColumn{Trim(label->Caption()), {}, x0 + label->Left(), label->Width()},
                       label->Left()});
  }
  const std::size_t heading_count = columns.size();
  for (const Control* field : fields) {
    std::size_t best = heading_count;
    float best_overlap = 0;
    for (std::size_t i = 0; i < heading_count; ++i) {
      const float overlap = Overlap(columns[i].column.left - x0, columns[i].column.width,
                                    field->Left(), field->Width());
      if (overlap > best_overlap) {
        best = i;
        best_overlap = overlap;
      }
    }
    if (best == heading_count) {
      columns.push_back({TableColumn{"", {}, x0 + field->Left(), field->Width()}, field->Left()});
      best = columns.size() - 1;
    }
    TableColumn& column = columns[best].column;
    column.fields.push_back(field->Name());
    // A headed column spans its heading, as a reader sees it; one without spans its fields.
    if (best < heading_count) continue;
    const float left = std::min(column.left, x0 + field->Left());
    const float right = std::max(column.left + column.width, x0 + field->Left() + field->Width());
    column.left = left;
    column.width = right - left;
  }
  // In the order the headings print: a field reaching further left than its heading does not
  // move the column.
  std::stable_sort(columns.begin(), columns.end(),
                   [](const Building& a, const Building& b) { return a.place < b.place; });
  for (Building& b : columns) info.columns.push_back(std::move(b.column));

  // The first page's head: what the page header prints above the headings.
  const float headings_top = headings.empty()
                                 ? 1e30f
                                 : (*std::min_element(headings.begin(), headings.end(),
                                                      [](const Control* a, const Control* b) {
                                                        return a->Top() < b->Top();
                                                      }))
                                       ->Top();
  for (const Section* header : OfType(report, SectionType::PageHeader)) {
    std::vector<const Control*> lines;
    for (const Control& c : header->Controls()) {
      const bool text = c.Class() == ControlClass::Label || c.Class() == ControlClass::Field;
      const bool title = EqualsIgnoreCase(c.Name(), "lblReportTitle");
      if (!text || !c.Visible() || (IsFurniture(c) && !title) || c.Top() >= headings_top) continue;
      if (!c.DataField().empty() && c.DataField().front() == '=') continue;  // page numbers
      if (Trim(ShownText(c)).empty()) continue;
      if (std::find(headings.begin(), headings.end(), &c) != headings.end()) continue;
      lines.push_back(&c);
    }
    std::stable_sort(lines.begin(), lines.end(), [](const Control* a, const Control* b) {
      return a->Top() < b->Top() || (a->Top() == b->Top() && a->Left() < b->Left());
    });
    for (const Control* c : lines) info.title_lines.push_back(Trim(ShownText(*c)));
  }
}

}  // namespace

void DescribeTable(const ActiveReport& report, float x0, DocumentInfo& info) {
  info.columns.clear();
  info.title_lines.clear();
  info.description.clear();
  info.group_levels = 0;
  DescribeColumns(report, x0, info);
  // Headers stand outer to inner: the last is level 1.
  const std::vector<const Section*> headers = OfType(report, SectionType::GroupHeader);
  for (std::size_t i = 0; i < headers.size(); ++i) {
    if (headers[i]->Visible() && !headers[i]->DataField().empty()) {
      info.group_levels = std::max(info.group_levels, static_cast<int>(headers.size() - i));
    }
  }
  for (const Section* footer : OfType(report, SectionType::ReportFooter)) {
    if (const Control* c = footer->Controls().Find(kDescription)) {
      const std::string text = Trim(ShownText(*c));
      if (text != kDescriptionPlaceholder) info.description = text;
    }
  }
}

}  // namespace trellin::engine
