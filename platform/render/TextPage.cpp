#include "platform/render/TextPage.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/render/Utf8.h"

namespace trellin::render {
namespace {

// Rules closer than this are one double rule; double rules are typically 30 to 60 twips apart.
constexpr float kRuleGap = 90;

// One character cell's content: a whole UTF-8 sequence, so wide text never splits mid-character.
using Cells = std::vector<std::string>;

Cells SplitCharacters(std::string_view raw) {
  const std::string text = ValidUtf8(raw);
  Cells out;
  for (std::size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    std::size_t length = c < 0x80         ? 1
                         : (c >> 5) == 6  ? 2
                         : (c >> 4) == 14 ? 3
                         : (c >> 3) == 30 ? 4
                                          : 1;
    length = std::min(length, text.size() - i);
    out.emplace_back(c < 0x20 || c == 0x7f ? std::string(" ")
                                           : std::string(text.substr(i, length)));
    i += length;
  }
  return out;
}

struct Row {
  float y = 0;
  bool rule = false;
  std::vector<const engine::TextRun*> runs;    // text rows
  std::vector<const engine::LineItem*> lines;  // rule rows
};

struct Placed {
  int start = 0;
  Cells text;
};

// Positions far off the paper (or not numbers at all) must not ask for lines of millions of
// characters: columns stay within a generous width, blank runs within a page or two.
constexpr double kMaxColumn = 4000;
constexpr double kMaxBlankLines = 400;

int GridCount(double cells, double limit) {
  if (!(cells > 0)) return 0;  // also NaN
  return static_cast<int>(std::lround(std::min(cells, limit)));
}

int Column(double twips, const TextGrid& grid) {
  return GridCount(twips / grid.column_twips, kMaxColumn);
}

// Places a row's runs; a run that would come closer than one blank to the run before it moves
// right, and adds one to `*moved` when given.
std::vector<Placed> PlaceRuns(const Row& row, const TextGrid& grid, int* moved = nullptr) {
  std::vector<Placed> placed;
  for (const engine::TextRun* run : row.runs) {
    Cells text = SplitCharacters(run->text);
    while (!text.empty() && text.back() == " ") text.pop_back();
    if (text.empty()) continue;
    const int n = static_cast<int>(text.size());
    int start = Column(run->left, grid);
    if (run->align == engine::Align::Right) {
      start = Column(static_cast<double>(run->left) + run->width, grid) - n;
    } else if (run->align == engine::Align::Center) {
      start = GridCount((run->left + run->width / 2.0) / grid.column_twips - n / 2.0, kMaxColumn);
    }
    placed.push_back({std::max(start, 0), std::move(text)});
  }
  std::stable_sort(placed.begin(), placed.end(),
                   [](const Placed& a, const Placed& b) { return a.start < b.start; });
  int end = -1;
  for (Placed& p : placed) {
    if (end >= 0 && p.start <= end) {
      p.start = end + 1;
      if (moved != nullptr) ++*moved;
    }
    end = p.start + static_cast<int>(p.text.size());
  }
  return placed;
}

Cells DrawRules(const Row& row, const TextGrid& grid) {
  std::vector<int> cover;
  for (const engine::LineItem* line : row.lines) {
    const int from = Column(std::min(line->x1, line->x2), grid);
    const int to = std::max(Column(std::max(line->x1, line->x2), grid), from + 1);
    if (static_cast<int>(cover.size()) < to) cover.resize(to, 0);
    for (int c = from; c < to; ++c) ++cover[c];
  }
  Cells cells;
  for (int count : cover) cells.emplace_back(count == 0 ? " " : count == 1 ? "-" : "=");
  return cells;
}

std::vector<Row> CollectRows(const engine::Page& page, const TextGrid& grid) {
  std::vector<Row> items;
  for (const engine::PageItem& item : page.items) {
    if (const auto* run = std::get_if<engine::TextRun>(&item)) {
      const bool placed =
          std::isfinite(run->left) && std::isfinite(run->top) && std::isfinite(run->width);
      if (!run->text.empty() && placed) items.push_back({run->top, false, {run}, {}});
    } else if (const auto* line = std::get_if<engine::LineItem>(&item)) {
      if (line->y1 == line->y2 && std::isfinite(line->y1) &&
          std::fabs(line->x2 - line->x1) >= grid.column_twips / 2) {
        items.push_back({line->y1, true, {}, {line}});
      }
    }
  }
  // Rules sort before text at the same height: a rule on a row's top edge is drawn above it.
  std::stable_sort(items.begin(), items.end(), [](const Row& a, const Row& b) {
    return a.y != b.y ? a.y < b.y : (a.rule && !b.rule);
  });
  std::vector<Row> rows;
  std::vector<std::size_t> open(2, SIZE_MAX);  // the newest text row and rule row
  for (Row& item : items) {
    const std::size_t kind = item.rule ? 1 : 0;
    const float reach = item.rule ? kRuleGap : grid.line_twips / 2;
    if (open[kind] != SIZE_MAX && item.y - rows[open[kind]].y < reach) {
      Row& row = rows[open[kind]];
      row.runs.insert(row.runs.end(), item.runs.begin(), item.runs.end());
      row.lines.insert(row.lines.end(), item.lines.begin(), item.lines.end());
      continue;
    }
    rows.push_back(std::move(item));
    open[kind] = rows.size() - 1;
    open[1 - kind] = SIZE_MAX;  // rows alternate: a rule ends the text row above it and vice versa
  }
  return rows;
}

// The column width for this page: the grid's, or the widest narrower one (in steps of a tenth)
// at which no run has to move right to keep a blank after the run before it, so that figures
// end on their box's edge and columns never run into one another.
float PageColumnTwips(const std::vector<Row>& rows, const TextGrid& grid) {
  const float narrowest = std::min(grid.narrowest_column_twips, grid.column_twips);
  for (float column = grid.column_twips;; column *= 0.9f) {
    if (column <= narrowest) return narrowest;
    TextGrid trial = grid;
    trial.column_twips = column;
    int moved = 0;
    for (const Row& row : rows) {
      if (!row.rule) PlaceRuns(row, trial, &moved);
    }
    if (moved == 0) return column;
  }
}

}  // namespace

std::string RenderTextPage(const engine::Page& page, const TextGrid& page_grid) {
  TextGrid grid = page_grid;
  std::vector<Row> rows = CollectRows(page, grid);
  grid.column_twips = PageColumnTwips(rows, grid);
  std::vector<Cells> lines;
  std::vector<float> positions;
  for (const Row& row : rows) {
    Cells cells;
    if (row.rule) {
      cells = DrawRules(row, grid);
    } else {
      for (Placed& p : PlaceRuns(row, grid)) {
        if (static_cast<int>(cells.size()) < p.start) cells.resize(p.start, " ");
        cells.insert(cells.end(), p.text.begin(), p.text.end());
      }
    }
    lines.push_back(std::move(cells));
    positions.push_back(row.y);
  }

  std::size_t margin = SIZE_MAX;
  for (const Cells& cells : lines) {
    std::size_t lead = 0;
    while (lead < cells.size() && cells[lead] == " ") ++lead;
    if (lead < cells.size()) margin = std::min(margin, lead);
  }
  if (margin == SIZE_MAX) margin = 0;

  std::string out;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) {
      const int lines =
          GridCount((positions[i] - positions[i - 1]) / grid.line_twips, kMaxBlankLines);
      out.append(static_cast<std::size_t>(std::max(lines - 1, 0)), '\n');
    }
    Cells& cells = lines[i];
    while (!cells.empty() && cells.back() == " ") cells.pop_back();
    for (std::size_t c = std::min(margin, cells.size()); c < cells.size(); ++c) out += cells[c];
    out += '\n';
  }
  return out;
}

}  // namespace trellin::render
