#pragma once
// The fonts of a PDF written by PdfSink: every face the text was shaped with becomes one
// composite font (Type0 over CIDFontType2, Identity-H, glyph ids as character codes), embedded
// once at the end as a subset of the glyphs the pages showed, with its widths and a ToUnicode
// map so that text can be searched and copied.

#include <pango/pango.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/render/PdfFile.h"

namespace trellin::render {

class PdfFonts {
 public:
  // `file` must outlive the set; fonts are written to it by Finish.
  explicit PdfFonts(PdfFile& file);
  ~PdfFonts();
  PdfFonts(const PdfFonts&) = delete;
  PdfFonts& operator=(const PdfFonts&) = delete;

  // A shaped font as a page uses it: which embedded face, at what size in points.
  struct Use {
    int face = 0;           // names the page resource "/F<face>"
    int object = 0;         // the face's font object
    double size = 0;        // points
    bool embolden = false;  // fontconfig asks for a bolder face than the file holds
  };
  // The use of `font` (a font pango shaped with); the face is added on first sight.
  [[nodiscard]] const Use& Get(PangoFont* font);

  // Width of glyph `glyph` of `face` in thousandths of the font size, as the font file gives it.
  [[nodiscard]] double Width(int face, std::uint32_t glyph);
  // Records that `glyph` of `face` was shown for `text` (UTF-8, the characters of its cluster;
  // empty for a glyph that continues a cluster). The first text seen for a glyph is the one
  // copying the text gives back.
  void Shown(int face, std::uint32_t glyph, std::string_view text);

  // Writes every face used: font, descendant font, descriptor, font program and ToUnicode map.
  void Finish();

 private:
  struct Face;
  Face& AddFace(PangoFont* font);
  static double GlyphWidth(Face& face, std::uint32_t glyph);
  void WriteFace(Face& face);

  PdfFile& file_;
  std::vector<std::unique_ptr<Face>> faces_;
  std::unordered_map<PangoFont*, Use> uses_;
};

}  // namespace trellin::render
