#pragma once
// A laid-out piece of a section, ready to go onto a page: items measured from the band's top,
// already at their final left position, the data row it carries, and how it may break.

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/engine/PageModel.h"

namespace trellin::engine {

// Text that depends on the page it lands on ("Page " & rpt.PageNumber): computed when the band
// is placed. `item` indexes Band::items and must name a TextRun.
struct LateText {
  std::size_t item = 0;
  std::function<std::string(int page)> text;
};

struct Band {
  float height = 0;      // how far the band moves the page position on
  float ink_height = 0;  // how far its items reach, when that is further (controls beside a child)
  std::vector<PageItem> items;
  std::vector<LateText> late;
  std::vector<DataRow> rows;
  std::vector<std::string> toc;  // table-of-contents paths, pointing at the band's top
  bool break_before = false;     // start on a fresh page
  bool break_after = false;      // the next band starts on a fresh page
  bool can_split = false;        // may run on across a page end
  bool keep_with_next = false;   // a heading: never left alone at a page's foot

  [[nodiscard]] float Reach() const { return ink_height > height ? ink_height : height; }
  [[nodiscard]] bool Empty() const { return height <= 0 && items.empty() && rows.empty(); }
};

// Where bands go: the page writer for a report, or the sub-report control of a parent section.
class BandSink {
 public:
  virtual ~BandSink() = default;
  virtual void Place(Band band) = 0;
  // A section is about to format: end the page first when it starts on a new page, or when the
  // band before it asked for one, so that the page footer formats before the section does.
  virtual void StartSection(bool new_page) = 0;
  // The number of the page bands now land on (a fresh page counts from the next number).
  [[nodiscard]] virtual int CurrentPage() const = 0;
  // The height left for bands on the page they now land on; between pages, the page to come is
  // started (its header formats) so that its room is known.
  [[nodiscard]] virtual float Room() = 0;
};

}  // namespace trellin::engine
