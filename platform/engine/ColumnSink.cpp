#include "platform/engine/ColumnSink.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace trellin::engine {

ColumnSink::ColumnSink(BandSink& out, DetailColumns columns, float pitch, float blank_height)
    : out_(out), columns_(columns), pitch_(pitch), blank_height_(blank_height) {
  columns_.Count = std::max(columns_.Count, 1);
  // The cells left blank stand first, as if printed with nothing in them.
  for (int i = 0; i < columns_.Skip; ++i) {
    Band blank;
    blank.height = blank_height_;
    Place(std::move(blank));
  }
}

void ColumnSink::Place(Band band) {
  if (band.break_before && !cells_.empty()) Flush();
  const bool after = band.break_after;
  band.break_after = false;
  if (columns_.Direction == ColumnDirection::AcrossDown) {
    cells_.push_back(std::move(band));
    if (static_cast<int>(cells_.size()) == columns_.Count) Flush();
  } else {
    if (cells_.empty()) {
      // A block is the cells of the page's room, filled a column at a time; with no room for
      // one cell here, the block starts the next page.
      const float height = std::max(band.Reach(), 1.0f);
      int rows = static_cast<int>(std::floor((out_.Room() + 0.5f) / height));
      if (rows < 1) {
        out_.StartSection(true);
        rows = static_cast<int>(std::floor((out_.Room() + 0.5f) / height));
      }
      block_rows_ = std::max(rows, 1);
    }
    cells_.push_back(std::move(band));
    if (static_cast<int>(cells_.size()) == block_rows_ * columns_.Count) Flush();
  }
  if (after) {
    Flush();
    Band end;
    end.break_after = true;
    out_.Place(std::move(end));
  }
}

void ColumnSink::StartSection(bool new_page) {
  if (new_page) Flush();
  if (new_page || cells_.empty()) out_.StartSection(new_page);
}

void ColumnSink::Flush() {
  if (cells_.empty()) return;
  std::vector<Band> cells = std::move(cells_);
  cells_.clear();
  const int count = static_cast<int>(cells.size());
  int rows = 1;
  if (columns_.Direction == ColumnDirection::DownAcross) rows = std::min(block_rows_, count);
  Emit(std::move(cells), rows);
}

void ColumnSink::Emit(std::vector<Band> cells, int rows) {
  // Down then across, cell i stands in row i % rows of column i / rows; across then down there
  // is one row. The data rows go out in the order the cells were printed, with the first row.
  std::vector<DataRow> data;
  for (Band& cell : cells) {
    for (DataRow& row : cell.rows) data.push_back(std::move(row));
    cell.rows.clear();
  }
  for (int r = 0; r < rows; ++r) {
    std::vector<Band*> in_row;
    for (int c = 0; c < columns_.Count; ++c) {
      const std::size_t i = static_cast<std::size_t>(c * rows + r);
      in_row.push_back(i < cells.size() ? &cells[i] : nullptr);
    }
    Band band = Row(std::move(in_row));
    if (r == 0) band.rows = std::move(data);
    out_.Place(std::move(band));
  }
}

Band ColumnSink::Row(std::vector<Band*> cells) const {
  Band row;
  for (std::size_t c = 0; c < cells.size(); ++c) {
    Band* cell = cells[c];
    if (cell == nullptr) continue;
    const float dx = pitch_ * static_cast<float>(c);
    row.height = std::max(row.height, cell->height);
    row.ink_height = std::max(row.ink_height, cell->Reach());
    row.break_before = row.break_before || cell->break_before;
    const std::size_t first = row.items.size();
    for (auto& item : cell->items) {
      std::visit(
          [dx](auto& it) {
            using T = std::decay_t<decltype(it)>;
            if constexpr (std::is_same_v<T, LineItem>) {
              it.x1 += dx;
              it.x2 += dx;
            } else {
              it.left += dx;
            }
          },
          item);
      row.items.push_back(std::move(item));
    }
    for (auto& late : cell->late) {
      late.item += first;
      row.late.push_back(std::move(late));
    }
    for (auto& path : cell->toc) row.toc.push_back(std::move(path));
  }
  return row;
}

}  // namespace trellin::engine
