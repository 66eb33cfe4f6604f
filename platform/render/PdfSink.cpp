#include "platform/render/PdfSink.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "platform/engine/PagePath.h"
#include "platform/render/GlyphShaper.h"
#include "platform/render/PageGeometry.h"
#include "platform/render/Render.h"
#include "platform/render/Utf8.h"

namespace trellin::render {
namespace {

// US Letter, for a page model that gives no paper size.
constexpr double kDefaultWidth = 612.0, kDefaultHeight = 792.0;

// A glyph id as the two bytes of a literal string: brackets and the backslash escaped, and a
// carriage return, which a reader would take for an end of line.
void AppendGlyph(std::string& out, std::uint32_t glyph) {
  for (const auto byte : {static_cast<char>(glyph >> 8 & 0xFF), static_cast<char>(glyph & 0xFF)}) {
    if (byte == '(' || byte == ')' || byte == '\\') {
      out += '\\';
      out += byte;
    } else if (byte == '\r') {
      out += "\\r";
    } else {
      out += byte;
    }
  }
}

double PointsOr(float twips, double fallback) {
  return twips > 0 && std::isfinite(twips) ? twips / kTwipsPerPoint : fallback;
}

std::string PdfDate() {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  gmtime_r(&now, &utc);
  char buffer[32];
  std::strftime(buffer, sizeof buffer, "(D:%Y%m%d%H%M%SZ)", &utc);
  return buffer;
}

}  // namespace

// One page's content stream, with the graphics state it has set so far, so that a colour, a
// line width or a font is set only when it changes.
class PdfSink::Content {
 public:
  Content(PdfFonts& fonts, FontCache& layouts)
      : fonts_(fonts), layouts_(layouts), shaper_(layouts) {}

  void Begin(double height) {
    out_.clear();
    height_ = height;
    fill_ = stroke_ = engine::Color{};
    line_width_ = 1;
    face_ = -1;
    size_ = 0;
    render_mode_ = 0;
    in_text_ = false;
    faces_.clear();
  }

  void Text(const engine::TextRun& run);
  void Line(const engine::LineItem& line);
  void Rect(const engine::RectItem& rect);
  void Path(const engine::PathItem& path);

  const std::string& Finish() {
    EndText();
    return out_;
  }
  // "/F0 12 0 R" for each face the page used.
  std::string FontResources() const {
    std::string out;
    for (const auto& [face, object] : faces_) {
      out += "/F" + std::to_string(face) + ' ' + std::to_string(object) + " 0 R";
    }
    return out;
  }

 private:
  void Number(double value) {
    pdf::AppendNumber(out_, value);
    out_ += ' ';
  }
  void Color(const engine::Color& c) {
    Number(c.r / 255.0);
    Number(c.g / 255.0);
    Number(c.b / 255.0);
  }
  void Fill(const engine::Color& c) {
    if (c == fill_) return;
    fill_ = c;
    Color(c);
    out_ += "rg\n";
  }
  void Stroke(const engine::Color& c) {
    if (c == stroke_) return;
    stroke_ = c;
    Color(c);
    out_ += "RG\n";
  }
  void LineWidth(double width) {
    if (width == line_width_) return;
    line_width_ = width;
    Number(width);
    out_ += "w\n";
  }
  void BeginText() {
    if (in_text_) return;
    in_text_ = true;
    out_ += "BT\n";
  }
  void EndText() {
    if (!in_text_) return;
    in_text_ = false;
    out_ += "ET\n";
  }
  // A text run shaped, as it goes into the content stream wherever it stands.
  struct PlacedGlyph {
    double x = 0, y = 0;  // points from the pen at the piece's start, y downwards
    std::uint32_t glyph = 0;
  };
  struct Piece {  // glyphs of one font
    PdfFonts::Use use;
    std::string array;    // the glyph ids and corrections inside the TJ array's brackets
    bool placed = false;  // glyphs moved off the line: `glyphs` holds each one's place
    std::vector<PlacedGlyph> glyphs;
    double advance = 0;  // points
  };
  struct Shaped {
    double width = 0;  // the logical width, points
    std::vector<Piece> pieces;
  };
  // The run's text shaped in its font; null when pango gives no line.
  const Shaped* Shape(const engine::TextRun& run);
  void Font(const PdfFonts::Use& use, const engine::Color& color);
  double Y(double top_down) const { return height_ - top_down; }

  PdfFonts& fonts_;
  FontCache& layouts_;
  GlyphShaper shaper_;
  std::string out_;
  double height_ = 0;
  engine::Color fill_, stroke_;
  double line_width_ = 1;
  int face_ = -1;
  double size_ = 0;
  int render_mode_ = 0;
  bool in_text_ = false;
  std::vector<std::pair<int, int>> faces_;  // face, font object
  std::string repaired_;
  std::unordered_map<std::string, Shaped> shaped_;  // by font and text
};

void PdfSink::Content::Font(const PdfFonts::Use& use, const engine::Color& color) {
  if (use.face != face_ || use.size != size_) {
    face_ = use.face;
    size_ = use.size;
    out_ += "/F" + std::to_string(use.face) + ' ';
    Number(use.size);
    out_ += "Tf\n";
    if (std::none_of(faces_.begin(), faces_.end(), [&](auto& f) { return f.first == use.face; })) {
      faces_.emplace_back(use.face, use.object);
    }
  }
  // A face fontconfig emboldens is drawn outlined as well as filled, as the screen thickens it.
  const int mode = use.embolden ? 2 : 0;
  if (mode != render_mode_) {
    render_mode_ = mode;
    out_ += mode == 2 ? "2 Tr\n" : "0 Tr\n";
  }
  if (use.embolden) {
    Stroke(color);
    LineWidth(use.size / 24);
  }
  Fill(color);
}

const PdfSink::Content::Shaped* PdfSink::Content::Shape(const engine::TextRun& run) {
  std::string key = run.font.name;
  char style[sizeof(float) + 2];
  std::memcpy(style, &run.font.size, sizeof(float));
  style[sizeof(float)] = static_cast<char>(run.font.bold | run.font.italic << 1);
  style[sizeof(float) + 1] = '|';
  key.append(style, sizeof style);
  key += run.text;
  if (auto it = shaped_.find(key); it != shaped_.end()) return &it->second;

  std::string_view text = run.text;
  if (!IsValidUtf8(text)) {
    repaired_ = ValidUtf8(text);
    text = repaired_;
  }
  const ShapedLine line = shaper_.Shape(run.font, text);
  if (line.items.empty()) return nullptr;

  Shaped shaped;
  shaped.width = static_cast<double>(line.width) / PANGO_SCALE;
  for (const ShapedItem& item : line.items) {
    Piece& piece = shaped.pieces.emplace_back();
    piece.use = fonts_.Get(item.font);
    const double per_point = 1000.0 / piece.use.size;
    piece.placed = std::any_of(item.glyphs.begin(), item.glyphs.end(), [](const ShapedGlyph& g) {
      return g.x_offset != 0 || g.y_offset != 0;
    });
    // How far the file's pen runs ahead of pango's, in thousandths of the size: pango's advances
    // are whole 1/1024ths of a point, so a correction is written only once the difference could
    // show (half a thousandth of the size), and kerning always.
    double drift = 0;
    double x = 0;
    for (const ShapedGlyph& g : item.glyphs) {
      const double advance = static_cast<double>(g.advance) / PANGO_SCALE;
      if (g.glyph == PANGO_GLYPH_EMPTY) {
        drift -= advance * per_point;
        x += advance;
        continue;
      }
      const std::uint32_t glyph = (g.glyph & PANGO_GLYPH_UNKNOWN_FLAG) ? 0 : g.glyph;
      fonts_.Shown(piece.use.face, glyph, text.substr(g.text_begin, g.text_end - g.text_begin));
      if (piece.placed) {
        piece.glyphs.push_back({x + static_cast<double>(g.x_offset) / PANGO_SCALE,
                                static_cast<double>(g.y_offset) / PANGO_SCALE, glyph});
      } else {
        if (std::abs(drift) >= 0.5) {
          piece.array += ')';
          pdf::AppendNumber(piece.array, drift);
          piece.array += '(';
          drift = 0;
        }
        AppendGlyph(piece.array, glyph);
      }
      drift += fonts_.Width(piece.use.face, glyph) - advance * per_point;
      x += advance;
    }
    piece.advance = x;
  }
  // Texts repeat from page to page (headings, dates, names); a report of ever new texts must not
  // grow memory, so the shapes are forgotten now and then.
  if (shaped_.size() >= 8192) shaped_.clear();
  return &shaped_.emplace(std::move(key), std::move(shaped)).first->second;
}

void PdfSink::Content::Text(const engine::TextRun& run) {
  if (run.text.empty()) return;
  const FontEntry& entry = layouts_.Get(run.font);
  const Shaped* shaped = Shape(run);
  if (shaped == nullptr) return;
  double x = Points(run.left);
  // Justified text is a single line here; like the last line of a paragraph it sits at the left.
  if (run.align == engine::Align::Right || run.align == engine::Align::Center) {
    const double slack = Points(run.width) - shaped->width;
    x += run.align == engine::Align::Right ? slack : slack / 2;
  }
  const double start = x;
  const double baseline = Points(run.top) + entry.ascent;
  // Glyphs go out as one array of glyph ids, corrected where pango's advances (kerning) differ
  // from the font's own widths; glyphs moved off the line (marks) are placed one by one.
  for (const Piece& piece : shaped->pieces) {
    BeginText();
    Font(piece.use, run.color);
    if (piece.placed) {
      for (const PlacedGlyph& g : piece.glyphs) {
        out_ += "1 0 0 1 ";
        Number(x + g.x);
        Number(Y(baseline + g.y));
        out_ += "Tm(";
        AppendGlyph(out_, g.glyph);
        out_ += ")Tj\n";
      }
    } else {
      out_ += "1 0 0 1 ";
      Number(x);
      Number(Y(baseline));
      out_ += "Tm[(";
      out_ += piece.array;
      out_ += ")]TJ\n";
    }
    x += piece.advance;
  }

  if (run.font.underline) {
    EndText();
    Fill(run.color);
    const double top = baseline - entry.underline_position;
    Number(start);
    Number(Y(top + entry.underline_thickness));
    Number(shaped->width);
    Number(entry.underline_thickness);
    out_ += "re f\n";
  }
}

void PdfSink::Content::Line(const engine::LineItem& line) {
  EndText();
  Stroke(line.color);
  LineWidth(Thickness(line.thickness));
  Number(Points(line.x1));
  Number(Y(Points(line.y1)));
  out_ += "m ";
  Number(Points(line.x2));
  Number(Y(Points(line.y2)));
  out_ += "l S\n";
}

void PdfSink::Content::Rect(const engine::RectItem& rect) {
  const double left = Points(rect.left), top = Points(rect.top);
  const double width = Points(rect.width), height = Points(rect.height);
  if (!rect.filled && !rect.stroked) return;
  EndText();
  if (rect.filled) {
    Fill(rect.fill);
    Number(left);
    Number(Y(top + height));
    Number(width);
    Number(height);
    out_ += "re f\n";
  }
  if (rect.stroked) {
    const double line = Thickness(rect.thickness);
    // The border lies inside the box, so a boxed section keeps its measured size.
    const double inset = line / 2;
    Stroke(rect.stroke);
    LineWidth(line);
    Number(left + inset);
    Number(Y(top + height - inset));
    Number(width - 2 * inset);
    Number(height - 2 * inset);
    out_ += "re S\n";
  }
}

// A path in the page's own vector operators: moves, lines and Bézier curves (arcs turned into
// curves), filled with "f", stroked with "S", or both with "B"; a dash pattern is set for the
// path alone inside "q ... Q".
void PdfSink::Content::Path(const engine::PathItem& path) {
  if ((!path.filled && !path.stroked) || path.steps.empty()) return;
  EndText();
  if (path.filled) Fill(path.fill);
  if (path.stroked) {
    Stroke(path.stroke);
    LineWidth(Thickness(path.thickness));
  }
  const bool dashed = path.stroked && !path.dash.empty();
  if (dashed) {
    out_ += "q [";
    for (std::size_t i = 0; i < path.dash.size(); ++i) {
      if (i) out_ += ' ';
      pdf::AppendNumber(out_, Points(path.dash[i]));
    }
    out_ += "] 0 d 1 j\n";
  }
  for (const engine::FlatStep& s : engine::FlattenPath(path)) {
    switch (s.op) {
      case 'M':
      case 'L':
        Number(Points(s.x));
        Number(Y(Points(s.y)));
        out_ += s.op == 'M' ? "m " : "l ";
        break;
      case 'C':
        Number(Points(s.x1));
        Number(Y(Points(s.y1)));
        Number(Points(s.x2));
        Number(Y(Points(s.y2)));
        Number(Points(s.x));
        Number(Y(Points(s.y)));
        out_ += "c ";
        break;
      default:
        out_ += "h ";
        break;
    }
  }
  out_ += path.filled ? (path.stroked ? "B\n" : "f\n") : "S\n";
  if (dashed) out_ += "Q\n";
}

PdfSink::PdfSink(std::filesystem::path target) : target_(std::move(target)) {}

PdfSink::~PdfSink() { OnAbort(); }

void PdfSink::OnBegin(const engine::DocumentInfo&) {
  file_.emplace(target_);
  pdf_ = std::make_unique<PdfFile>(file_->Stream(), target_.string());
  fonts_ = std::make_unique<PdfFonts>(*pdf_);
  outline_ = std::make_unique<PdfOutline>(*pdf_);
  content_ = std::make_unique<Content>(*fonts_, layouts_);
  pages_root_ = pdf_->Reserve();
}

void PdfSink::OnPage(const engine::Page& page) {
  // Each page takes its own paper size, so a landscape page may follow portrait ones.
  const double width = PointsOr(page.width, PointsOr(Info().page_width, kDefaultWidth));
  const double height = PointsOr(page.height, PointsOr(Info().page_height, kDefaultHeight));
  content_->Begin(height);
  for (const engine::PageItem& item : page.items) {
    std::visit(
        [&](const auto& it) {
          using T = std::decay_t<decltype(it)>;
          if (!Finite(it)) return;
          if constexpr (std::is_same_v<T, engine::TextRun>) {
            content_->Text(it);
          } else if constexpr (std::is_same_v<T, engine::LineItem>) {
            content_->Line(it);
          } else if constexpr (std::is_same_v<T, engine::PathItem>) {
            content_->Path(it);
          } else {
            content_->Rect(it);
          }
        },
        item);
  }
  const int contents = pdf_->Reserve();
  const int page_object = pdf_->Reserve();
  pdf_->WriteStream(contents, "", content_->Finish(), true);
  const std::string annots = WriteLinks(page, height);
  std::string dictionary =
      "<</Type/Page/Parent " + std::to_string(pages_root_) + " 0 R/MediaBox[0 0 ";
  pdf::AppendNumber(dictionary, width);
  dictionary += ' ';
  pdf::AppendNumber(dictionary, height);
  dictionary += "]/Resources<</Font<<" + content_->FontResources() + ">>>>/Contents " +
                std::to_string(contents) + " 0 R";
  if (!annots.empty()) dictionary += "/Annots[" + annots + "]";
  dictionary += ">>";
  pdf_->WriteObject(page_object, dictionary);
  kids_ += std::to_string(page_object);
  kids_ += " 0 R ";
  ++pages_;

  for (const engine::Bookmark& mark : page.bookmarks) {
    const double top =
        std::isfinite(mark.top) ? std::clamp(mark.top / kTwipsPerPoint, 0.0, 14400.0) : 0.0;
    outline_->Add(mark.path, page_object, static_cast<double>(std::lround(height - top)));
  }
}

std::string PdfSink::WriteLinks(const engine::Page& page, double height) {
  std::string annots;
  for (const engine::PageItem& item : page.items) {
    const auto* run = std::get_if<engine::TextRun>(&item);
    if (run == nullptr || run->link.Empty() || run->text.empty() || !Finite(*run)) continue;
    // A link annotation over the line's box. The address holds only letters, digits and
    // "-._~%#=&", so it stands as a literal string without escapes.
    std::string link = "<</Type/Annot/Subtype/Link/Border[0 0 0]/Rect[";
    pdf::AppendNumber(link, Points(run->left));
    link += ' ';
    pdf::AppendNumber(link, height - Points(run->top + run->height));
    link += ' ';
    pdf::AppendNumber(link, Points(run->left + run->width));
    link += ' ';
    pdf::AppendNumber(link, height - Points(run->top));
    link += "]/A<</S/URI/URI(" + LinkHref(run->link) + ")>>>>";
    const int object = pdf_->Reserve();
    pdf_->WriteObject(object, link);
    annots += std::to_string(object) + " 0 R ";
  }
  return annots;
}

void PdfSink::OnEnd() {
  fonts_->Finish();
  const int outlines = outline_->Finish();
  if (pages_ == 0) {
    // A document of no pages is one blank page of the report's paper.
    const int contents = pdf_->Reserve();
    const int page_object = pdf_->Reserve();
    pdf_->WriteStream(contents, "", "", false);
    std::string dictionary =
        "<</Type/Page/Parent " + std::to_string(pages_root_) + " 0 R/MediaBox[0 0 ";
    pdf::AppendNumber(dictionary, PointsOr(Info().page_width, kDefaultWidth));
    dictionary += ' ';
    pdf::AppendNumber(dictionary, PointsOr(Info().page_height, kDefaultHeight));
    dictionary += "]/Resources<<>>/Contents " + std::to_string(contents) + " 0 R>>";
    pdf_->WriteObject(page_object, dictionary);
    kids_ = std::to_string(page_object) + " 0 R";
    pages_ = 1;
  }
  pdf_->WriteObject(pages_root_,
                    "<</Type/Pages/Kids[" + kids_ + "]/Count " + std::to_string(pages_) + ">>");
  kids_.clear();

  const engine::DocumentInfo& info = Info();
  std::string text = "<</Creator";
  pdf::AppendTextString(text, "Trellin Reports");
  text += "/Producer";
  pdf::AppendTextString(text, "Trellin Reports");
  text += "/CreationDate" + PdfDate();
  if (!info.title.empty()) {
    text += "/Title";
    pdf::AppendTextString(text, info.title);
  }
  if (!info.caption.empty() && info.caption != info.title) {
    text += "/Subject";
    pdf::AppendTextString(text, info.caption);
  }
  text += ">>";
  const int info_object = pdf_->Reserve();
  pdf_->WriteObject(info_object, text);

  const int catalog = pdf_->Reserve();
  std::string root = "<</Type/Catalog/Pages " + std::to_string(pages_root_) + " 0 R";
  if (outlines != 0) root += "/Outlines " + std::to_string(outlines) + " 0 R/PageMode/UseOutlines";
  root += ">>";
  pdf_->WriteObject(catalog, root);
  pdf_->Finish(catalog, info_object);

  content_.reset();
  outline_.reset();
  fonts_.reset();
  pdf_.reset();
  file_->Commit();
  file_.reset();
}

void PdfSink::OnAbort() noexcept {
  content_.reset();
  outline_.reset();
  fonts_.reset();
  pdf_.reset();
  if (file_) file_->Discard();
  file_.reset();
}

}  // namespace trellin::render
