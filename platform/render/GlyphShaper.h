#pragma once
// A line of text as glyphs: which font, which glyph ids, how far each advances, and which
// characters each stands for, exactly as pango lays the line out (the layout the engine measured
// with). Plain Latin text in a face that has every one of its characters is shaped by HarfBuzz
// directly, as pango itself would shape it, without pango's itemizing and line breaking.

#include <hb.h>
#include <pango/pango.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/engine/PageModel.h"
#include "platform/render/FontCache.h"

namespace trellin::render {

struct ShapedGlyph {
  std::uint32_t glyph = 0;         // PANGO_GLYPH_EMPTY for a glyph that shows nothing
  int advance = 0;                 // pango units
  int x_offset = 0, y_offset = 0;  // pango units, y downwards
  // The bytes of the text the glyph stands for; empty when it continues its cluster.
  int text_begin = 0, text_end = 0;
};

struct ShapedItem {
  PangoFont* font = nullptr;  // owned by pango's font map
  std::vector<ShapedGlyph> glyphs;
};

struct ShapedLine {
  int width = 0;  // the logical width, pango units
  std::vector<ShapedItem> items;
};

class GlyphShaper {
 public:
  // `fonts` must outlive the shaper; its layouts are used for text the direct way cannot take.
  explicit GlyphShaper(FontCache& fonts);
  ~GlyphShaper();
  GlyphShaper(const GlyphShaper&) = delete;
  GlyphShaper& operator=(const GlyphShaper&) = delete;

  // `text` (valid UTF-8) on one line in `font`.
  [[nodiscard]] ShapedLine Shape(const engine::FontSpec& font, std::string_view text);
  // The same through pango's layout, always.
  [[nodiscard]] ShapedLine ShapeWithLayout(const engine::FontSpec& font, std::string_view text);
  // The same through HarfBuzz directly; nothing when the text or the font needs pango.
  [[nodiscard]] std::optional<ShapedLine> ShapeDirectly(const engine::FontSpec& font,
                                                        std::string_view text);

 private:
  FontCache& fonts_;
  hb_buffer_t* buffer_;
  std::vector<char32_t> code_points_;
};

}  // namespace trellin::render
