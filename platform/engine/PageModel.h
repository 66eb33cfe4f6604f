#pragma once
// The page model: what the engine hands to renderers. Finished pages only, in absolute positions;
// no layout objects and no run state. Every measure is in twips (1,440 to the inch), measured
// from the top-left corner of the paper.

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/runtime/LinkTarget.h"
#include "platform/runtime/Variant.h"

namespace trellin::engine {

struct Color {
  std::uint8_t r = 0, g = 0, b = 0;
  bool operator==(const Color&) const = default;
};

struct FontSpec {
  std::string name = "Arial";  // as the layout names it; renderers resolve it through fontconfig
  float size = 10.0f;          // points
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool operator==(const FontSpec&) const = default;
};

enum class Align { Left, Center, Right, Justify };

// How a control's text met its box. The engine wraps and shortens text by the layout's rules
// (growing fields wrap, `Ellipsis` fields end in "…"); what is left over it records here rather
// than hide, so that a cut figure or caption can be found on any page.
enum class Fit : std::uint8_t {
  Whole,     // every character, inside the box
  Ellipsis,  // shortened after a whole word and ended with "…", as the layout allows
  Cut,       // lines that did not fit the box's height were left out
  Wide,      // a word (a figure, a code) wider than its box, printed whole past the box's edge
  Broken,    // a word wider than a growing field was broken across lines
};

// Cut, wide and broken texts are faults of a layout: a reader cannot trust what they show.
[[nodiscard]] constexpr bool IsMisfit(Fit fit) {
  return fit == Fit::Cut || fit == Fit::Wide || fit == Fit::Broken;
}

// One line of text. The engine has already wrapped text into lines with the same font metrics
// the renderers use; a renderer draws each run as it stands, aligned inside its box, and never
// wraps. `top` is the top of the line box; the baseline is the font's ascent below it. A run
// wider than its box (Fit::Wide) overhangs the box on the side away from its alignment.
struct TextRun {
  float left = 0, top = 0, width = 0, height = 0;
  std::string text;  // UTF-8
  FontSpec font;
  Align align = Align::Left;
  Color color;
  Fit fit = Fit::Whole;  // on the first line of a control's text, for the whole text
  LinkTarget link;       // the control's link, on every line of its text; empty for none
};

struct LineItem {
  float x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  float thickness = 15;  // twips (15 twips = 1 pixel at 96 dpi, a hairline rule)
  Color color;
};

// A filled and/or outlined rectangle: section shading, shapes, control backgrounds.
struct RectItem {
  float left = 0, top = 0, width = 0, height = 0;
  bool filled = false;
  Color fill;
  bool stroked = false;
  Color stroke;
  float thickness = 15;
};

// One step of a path. Coordinates are twips from the path's own top-left corner (its `left` and
// `top`), so that a path moves with its band like any other item. An arc is drawn about its
// centre (x, y) with `radius`, from `start` through `sweep` degrees; angles run from the right
// towards the bottom of the page, as the page's y axis does. An arc joins the point before it to
// its start by a straight line, as a wedge of a pie needs.
enum class PathOp : std::uint8_t { Move, Line, Arc, Close };
struct PathStep {
  PathOp op = PathOp::Move;
  float x = 0, y = 0;
  float radius = 0, start = 0, sweep = 0;  // arcs only
  bool operator==(const PathStep&) const = default;
};

// A drawn shape: a chart's wedge, series line or marker. Filled, outlined or both; a dash
// pattern (lengths on and off, in twips) breaks the outline.
struct PathItem {
  float left = 0, top = 0, width = 0, height = 0;  // the box the path lies in
  std::vector<PathStep> steps;
  bool filled = false;
  Color fill;
  bool stroked = false;
  Color stroke;
  float thickness = 15;
  std::vector<float> dash;
};

// Items are drawn in order: earlier ones lie beneath later ones (shading before text).
using PageItem = std::variant<TextRun, LineItem, RectItem, PathItem>;

// A table-of-contents entry: a path of levels ("Country\State" gives two levels) pointing at the
// place on this page where its section printed. Renderers turn them into PDF bookmarks.
struct Bookmark {
  std::vector<std::string> path;
  float top = 0;
};

// One printed value for the data exports (CSV, XLSX): the typed value behind a field, the text
// as it printed, and the mask it printed with.
struct DataCell {
  std::string name;  // control name, such as "txtBalance"
  float left = 0;    // for ordering cells left to right
  float width = 0;
  Variant value;     // Currency, Date, Long, Double, Boolean, String or Null
  std::string text;  // as printed
  std::string format;
};

enum class RowKind {
  ReportHeader,
  PageHeader,
  GroupHeader,
  Detail,
  GroupFooter,
  PageFooter,
  ReportFooter
};

// A printed section as a row of data. Page headers and footers are recorded too; exports
// decide which kinds they keep.
struct DataRow {
  RowKind kind = RowKind::Detail;
  int level = 0;  // group level for group headers and footers (1 innermost)
  std::string section;
  std::vector<DataCell> cells;
  std::vector<std::string> labels;       // label captions printed in the section, left to right
  std::vector<std::string> label_names;  // the same labels' control names, in the same order
  // The same labels' left edge and width on the page, in the same order.
  std::vector<std::pair<float, float>> label_spans;
  // 0 for the report being run; a sub-report's rows arrive as rows of the page with the depth of
  // their nesting (1 for a sub-report of the main report, 2 for one inside that, ...).
  int depth = 0;
};

struct Page {
  int number = 0;               // 1-based
  float width = 0, height = 0;  // paper size, in twips, orientation applied
  std::vector<PageItem> items;
  std::vector<Bookmark> bookmarks;
  std::vector<DataRow> rows;
};

// One column of the report's table as the report declares it once its start is done, before
// any row prints: the heading over it and the fields whose values it holds. The data exports
// lay their columns out from these.
struct TableColumn {
  std::string heading;              // as printed over the column ("Opening"); "" when none is
  std::vector<std::string> fields;  // names of the row fields under it, left to right
  float left = 0, width = 0;        // its span from the paper's left edge: heading and fields
};

struct DocumentInfo {
  std::string title;                      // the designer's documentName, else its Caption
  std::string caption;                    // the designer's Caption
  float page_width = 0, page_height = 0;  // twips, orientation applied
  // The report's table, left to right; empty when the report prints no fields.
  std::vector<TableColumn> columns;
  // What heads the first page above the column headings, top to bottom: the company, the title
  // as printed, and any further line of the page header (a period line); page numbers and the
  // print line are left out.
  std::vector<std::string> title_lines;
  // The run's description as the report footer prints it, lines parted by line breaks; "" when
  // the report has none.
  std::string description;
  // How many levels of groups break the rows (0 for none); level 1 is the innermost.
  int group_levels = 0;
};

// Receives pages as the engine finishes them. The engine keeps no finished page: a sink that
// needs totals at the end keeps what it needs itself.
class PageSink {
 public:
  virtual ~PageSink() = default;
  virtual void Begin(const DocumentInfo& info) = 0;
  virtual void AddPage(const Page& page) = 0;
  // The run finished: complete the output.
  virtual void End() = 0;
  // The run failed or was cancelled: discard everything written so far.
  virtual void Abort() = 0;
};

}  // namespace trellin::engine
