#pragma once
// The page model: what the engine hands to renderers. Finished pages only, in absolute positions;
// no layout objects and no run state. Every measure is in twips (1,440 to the inch), measured
// from the top-left corner of the paper.

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

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

// One line of text. The engine has already wrapped text into lines with the same font metrics
// the renderers use; a renderer draws each run as it stands, aligned inside its box, and never
// wraps. `top` is the top of the line box; the baseline is the font's ascent below it.
struct TextRun {
  float left = 0, top = 0, width = 0, height = 0;
  std::string text;  // UTF-8
  FontSpec font;
  Align align = Align::Left;
  Color color;
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

// Items are drawn in order: earlier ones lie beneath later ones (shading before text).
using PageItem = std::variant<TextRun, LineItem, RectItem>;

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
  std::vector<std::string> labels;  // label captions printed in the section, left to right
  std::vector<std::string> label_names;  // the same labels' control names, in the same order
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

struct DocumentInfo {
  std::string title;                      // the designer's documentName, else its Caption
  std::string caption;                    // the designer's Caption
  float page_width = 0, page_height = 0;  // twips, orientation applied
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
