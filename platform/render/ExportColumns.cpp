#include "platform/render/ExportColumns.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

namespace trellin::render {
namespace {

struct KindCaption {
  engine::RowKind kind;
  std::string_view caption;
};

constexpr KindCaption kKindCaptions[] = {
    {engine::RowKind::ReportHeader, "Report Header"},
    {engine::RowKind::GroupHeader, "Group Header"},
    {engine::RowKind::Detail, "Detail"},
    {engine::RowKind::GroupFooter, "Group Footer"},
    {engine::RowKind::ReportFooter, "Report Footer"},
};

// Where the columns come from when a report has no detail rows: the kind that repeats most.
constexpr engine::RowKind kColumnSources[] = {
    engine::RowKind::Detail,       engine::RowKind::GroupFooter,  engine::RowKind::GroupHeader,
    engine::RowKind::ReportFooter, engine::RowKind::ReportHeader,
};

// A position that is not a number sorts as the left edge, so ordering stays well defined.
float Finite(float twips) { return std::isfinite(twips) ? twips : 0.0f; }

float Overlap(const ExportColumn& column, const engine::DataCell& cell) {
  return std::min(column.left + column.width, cell.left + cell.width) -
         std::max(column.left, cell.left);
}

// Letters and digits only, lower case: "Due Date" and "due-date" fold alike.
std::string Folded(std::string_view text) {
  std::string out;
  for (char c : text) {
    if (std::isalnum(static_cast<unsigned char>(c)))
      out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return out;
}

bool IsUpper(char c) { return std::isupper(static_cast<unsigned char>(c)) != 0; }
bool IsLower(char c) { return std::islower(static_cast<unsigned char>(c)) != 0; }

}  // namespace

std::optional<std::string_view> RowKindCaption(engine::RowKind kind) {
  for (const KindCaption& k : kKindCaptions) {
    if (k.kind == kind) return k.caption;
  }
  return std::nullopt;
}

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

ExportColumns ExportColumns::FromRows(const std::vector<engine::DataRow>& rows) {
  ExportColumns result;
  for (engine::RowKind source : kColumnSources) {
    for (const engine::DataRow& row : rows) {
      if (row.kind != source) continue;
      for (const engine::DataCell& cell : row.cells) {
        const bool known = std::any_of(result.columns_.begin(), result.columns_.end(),
                                       [&](const ExportColumn& c) { return c.name == cell.name; });
        if (!known)
          result.columns_.push_back({cell.name, Finite(cell.left), Finite(cell.width), ""});
      }
    }
    if (!result.columns_.empty()) break;
  }
  std::stable_sort(result.columns_.begin(), result.columns_.end(),
                   [](const ExportColumn& a, const ExportColumn& b) { return a.left < b.left; });

  // Label captions of the headers, in the order they are tried: page headers first; with each
  // its control name where the page model has it.
  std::vector<std::string> labels;
  std::vector<std::string> label_stems;
  for (engine::RowKind kind :
       {engine::RowKind::PageHeader, engine::RowKind::GroupHeader, engine::RowKind::ReportHeader}) {
    for (const engine::DataRow& row : rows) {
      if (row.kind != kind) continue;
      for (std::size_t i = 0; i < row.labels.size(); ++i) {
        labels.push_back(row.labels[i]);
        label_stems.push_back(i < row.label_names.size() ? Folded(CaptionFromName(row.label_names[i]))
                                                         : std::string());
      }
    }
  }
  std::vector<bool> used(labels.size(), false);
  for (ExportColumn& column : result.columns_) {
    column.caption = CaptionFromName(column.name);
    const std::string key = Folded(column.caption);
    // The label named as the column wins (lblBalance over txtBalance, lblField2 over numField2);
    // then the label that reads as the name; else the first that begins with it ("Ref" names
    // the column under "Reference").
    std::size_t pick = labels.size();
    for (std::size_t i = 0; i < labels.size() && pick == labels.size(); ++i) {
      if (!used[i] && !labels[i].empty() && label_stems[i] == key) pick = i;
    }
    for (std::size_t i = 0; i < labels.size() && pick == labels.size(); ++i) {
      if (!used[i] && Folded(labels[i]) == key) pick = i;
    }
    for (std::size_t i = 0; i < labels.size() && pick == labels.size() && key.size() >= 3; ++i) {
      if (!used[i] && Folded(labels[i]).starts_with(key)) pick = i;
    }
    if (pick < labels.size()) {
      used[pick] = true;
      column.caption = labels[pick];
    }
  }
  return result;
}

std::vector<const engine::DataCell*> ExportColumns::Assign(const engine::DataRow& row) const {
  std::vector<const engine::DataCell*> slots(columns_.size(), nullptr);
  std::vector<const engine::DataCell*> cells;
  for (const engine::DataCell& cell : row.cells) cells.push_back(&cell);
  std::stable_sort(cells.begin(), cells.end(),
                   [](const engine::DataCell* a, const engine::DataCell* b) {
                     return Finite(a->left) < Finite(b->left);
                   });

  std::vector<const engine::DataCell*> pending;
  // Cells named like a column go there first, so that a detail row is always laid out exactly.
  for (const engine::DataCell* cell : cells) {
    bool placed = false;
    for (std::size_t i = 0; i < columns_.size() && !placed; ++i) {
      if (slots[i] == nullptr && columns_[i].name == cell->name) {
        slots[i] = cell;
        placed = true;
      }
    }
    if (!placed) pending.push_back(cell);
  }
  std::vector<const engine::DataCell*> extra;
  for (const engine::DataCell* cell : pending) {
    std::size_t best = columns_.size();
    float best_overlap = 0;
    float best_distance = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (slots[i] != nullptr) continue;
      const float overlap = Overlap(columns_[i], *cell);
      const float distance =
          std::fabs((columns_[i].left + columns_[i].width / 2) - (cell->left + cell->width / 2));
      if (overlap > best_overlap ||
          (best_overlap <= 0 && overlap <= 0 && distance < best_distance)) {
        best = i;
        best_overlap = std::max(overlap, 0.0f);
        best_distance = distance;
      }
    }
    if (best < columns_.size()) {
      slots[best] = cell;
    } else {
      extra.push_back(cell);
    }
  }
  slots.insert(slots.end(), extra.begin(), extra.end());
  return slots;
}

}  // namespace trellin::render
