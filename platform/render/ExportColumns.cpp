#include "platform/render/ExportColumns.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

#include "platform/render/CellText.h"

namespace trellin::render {
namespace {

// The run's description: it heads a spreadsheet, it is no value of the table.
constexpr std::string_view kDescription = "txtParameters";

// A position that is not a number sorts as the left edge, so placing stays well defined.
float Finite(float twips) { return std::isfinite(twips) ? twips : 0.0f; }

float Overlap(const ExportColumn& column, const engine::DataCell& cell) {
  return std::min(column.left + column.width, Finite(cell.left) + Finite(cell.width)) -
         std::max(column.left, Finite(cell.left));
}

bool IsUpper(char c) { return std::isupper(static_cast<unsigned char>(c)) != 0; }
bool IsLower(char c) { return std::islower(static_cast<unsigned char>(c)) != 0; }

bool Exported(engine::RowKind kind) {
  return kind != engine::RowKind::PageHeader && kind != engine::RowKind::PageFooter;
}

}  // namespace

std::string CaptionFromName(std::string_view name) {
  std::size_t start = 0;
  while (start < name.size() && IsLower(name[start])) ++start;
  if (start == name.size()) start = 0;  // no prefix to drop: "amount" stays itself
  std::string out;
  for (std::size_t i = start; i < name.size(); ++i) {
    const char c = name[i];
    if (c == '_') {
      if (!out.empty() && out.back() != ' ') out += ' ';
      continue;
    }
    // A word starts at an upper-case letter after a lower-case one, or at the last capital of an
    // acronym followed by lower case ("GSTAmount" -> "GST Amount").
    const bool starts_word =
        i > start && IsUpper(c) &&
        (IsLower(name[i - 1]) ||
         (i + 1 < name.size() && IsUpper(name[i - 1]) && IsLower(name[i + 1])));
    if (starts_word && !out.empty() && out.back() != ' ') out += ' ';
    out += c;
  }
  return out.empty() ? std::string(name) : out;
}

ExportColumns::ExportColumns(const engine::DocumentInfo& info) {
  for (const engine::TableColumn& column : info.columns) {
    ExportColumn out{column.heading, Finite(column.left), Finite(column.width), column.fields};
    if (out.caption.empty())
      out.caption = column.fields.empty() ? "" : CaptionFromName(column.fields[0]);
    columns_.push_back(std::move(out));
  }
}

std::optional<std::vector<ExportValue>> ExportColumns::Assign(const engine::DataRow& row) const {
  if (!Exported(row.kind) || columns_.empty()) return std::nullopt;
  std::vector<ExportValue> values(columns_.size());
  bool any = false;
  for (const engine::DataCell& cell : row.cells) {
    if (!PrintedSomething(cell) || cell.name == kDescription) continue;
    std::size_t slot = columns_.size();
    // The report's own fields go under their column by name; a sub-report's fields, whose names
    // mean nothing to the report, by where they printed.
    if (row.depth == 0) {
      for (std::size_t i = 0; i < columns_.size() && slot == columns_.size(); ++i) {
        const auto& fields = columns_[i].fields;
        if (std::find(fields.begin(), fields.end(), cell.name) != fields.end()) slot = i;
      }
    }
    if (slot == columns_.size()) {
      float best_overlap = 0;
      float best_distance = std::numeric_limits<float>::max();
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        const float overlap = Overlap(columns_[i], cell);
        const float distance = std::fabs((columns_[i].left + columns_[i].width / 2) -
                                         (Finite(cell.left) + Finite(cell.width) / 2));
        if (overlap > best_overlap || (best_overlap <= 0 && distance < best_distance)) {
          slot = i;
          best_overlap = std::max(overlap, 0.0f);
          best_distance = distance;
        }
      }
    }
    values[slot].cells.push_back(&cell);
    any = true;
  }
  if (!any && row.kind == engine::RowKind::GroupHeader) {
    // A group's heading is a label: it names the group in the first column. Labels that are only
    // the columns' own captions, repeated over each group, already head the export: no record.
    std::string text;
    bool only_captions = true;
    for (const std::string& label : row.labels) {
      if (label.find_first_not_of(' ') == std::string::npos) continue;
      text += (text.empty() ? "" : " ") + label;
      only_captions =
          only_captions && std::any_of(columns_.begin(), columns_.end(),
                                       [&](const ExportColumn& c) { return c.caption == label; });
    }
    if (only_captions) text.clear();
    if (!text.empty()) {
      values[0].text = std::move(text);
      any = true;
    }
  }
  if (!any) return std::nullopt;
  return values;
}

}  // namespace trellin::render
