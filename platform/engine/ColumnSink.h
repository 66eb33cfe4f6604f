#pragma once
// Lays the bands of a detail printed in columns into the cells of a grid, as labels on a sheet:
// the cells of a row (or of a page's worth of columns) are gathered and passed on as one band a
// row, each cell moved right to its column.

#include <vector>

#include "core/host/Section.h"
#include "platform/engine/Band.h"

namespace trellin::engine {

class ColumnSink : public BandSink {
 public:
  // `pitch` is how far one column stands right of the one before (a cell's width and the
  // spacing); `blank_height` the height of a cell left blank.
  ColumnSink(BandSink& out, DetailColumns columns, float pitch, float blank_height);

  // A band is one cell: the next one in the grid's order.
  void Place(Band band) override;
  // A section starting a page ends the cells gathered so far first.
  void StartSection(bool new_page) override;
  [[nodiscard]] int CurrentPage() const override { return out_.CurrentPage(); }
  [[nodiscard]] float Room() override { return out_.Room(); }

  // Passes on the cells gathered: a row part filled, or a page's columns part filled. Called
  // before any other section prints and at the end of the rows.
  void Flush();

 private:
  void Emit(std::vector<Band> cells, int rows);
  [[nodiscard]] Band Row(std::vector<Band*> cells) const;

  BandSink& out_;
  DetailColumns columns_;
  float pitch_;
  float blank_height_;
  std::vector<Band> cells_;
  int block_rows_ = 0;  // down then across: the rows of the page's block of cells
};

}  // namespace trellin::engine
