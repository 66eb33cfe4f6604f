#pragma once
// The document outline (bookmarks) of a PDF, written as it goes: an entry is written once its
// next sibling is known or its parent closes, so only the entries of the path open last are
// held, however many bookmarks a long report has. Top-level entries open showing their
// children; deeper ones are closed.

#include <string>
#include <vector>

#include "platform/render/PdfFile.h"

namespace trellin::render {

class PdfOutline {
 public:
  // `file` must outlive the outline.
  explicit PdfOutline(PdfFile& file) : file_(file) {}

  // Adds the entries of `path` (top level first) that the previous path did not share, each
  // pointing at `top` points from the paper's foot on page object `page`. A path shares the
  // leading entries whose names match the previous path's, short of its own last level.
  void Add(const std::vector<std::string>& path, int page, double top);

  // Writes the entries still open and the outline's root; returns the root's object number,
  // or 0 when there were no bookmarks.
  [[nodiscard]] int Finish();

 private:
  struct Entry {
    std::string name;
    int id = 0;
    int prev = 0;   // previous sibling
    int first = 0;  // first and last child
    int last = 0;
    int children = 0;
    int page = 0;
    double top = 0;
  };
  // Writes the deepest open entry, followed by `next` (0 for none), and closes it.
  void Close(int next);

  PdfFile& file_;
  int root_ = 0;
  int root_first_ = 0, root_last_ = 0;
  int visible_ = 0;  // entries a reader sees with the top level open
  std::vector<Entry> open_;
};

}  // namespace trellin::render
