#include "platform/render/GlyphShaper.h"

#include <hb.h>

#include "platform/engine/PlainShaping.h"

namespace trellin::render {

GlyphShaper::GlyphShaper(FontCache& fonts) : fonts_(fonts), buffer_(hb_buffer_create()) {}

GlyphShaper::~GlyphShaper() { hb_buffer_destroy(buffer_); }

ShapedLine GlyphShaper::Shape(const engine::FontSpec& font, std::string_view text) {
  if (auto direct = ShapeDirectly(font, text)) return std::move(*direct);
  return ShapeWithLayout(font, text);
}

std::optional<ShapedLine> GlyphShaper::ShapeDirectly(const engine::FontSpec& font,
                                                     std::string_view text) {
  const FontEntry& entry = fonts_.Get(font);
  if (!engine::ShapePlain(fonts_.Context(), entry.font, text, buffer_, code_points_)) {
    return std::nullopt;
  }
  hb_buffer_t* buffer = buffer_;
  unsigned count = 0;
  const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
  const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
  ShapedLine line;
  ShapedItem& item = line.items.emplace_back();
  item.font = entry.font;
  item.glyphs.resize(count);
  for (unsigned i = 0; i < count; ++i) {
    ShapedGlyph& g = item.glyphs[i];
    g.glyph = infos[i].codepoint;
    g.advance = positions[i].x_advance;
    g.x_offset = positions[i].x_offset;
    g.y_offset = -positions[i].y_offset;
    if (i == 0 || infos[i].cluster != infos[i - 1].cluster) {
      g.text_begin = static_cast<int>(infos[i].cluster);
      unsigned end = static_cast<unsigned>(text.size());
      for (unsigned j = i + 1; j < count; ++j) {
        if (infos[j].cluster != infos[i].cluster) {
          end = infos[j].cluster;
          break;
        }
      }
      g.text_end = static_cast<int>(end);
    }
    line.width += g.advance;
  }
  return line;
}

ShapedLine GlyphShaper::ShapeWithLayout(const engine::FontSpec& font, std::string_view text) {
  const FontEntry& entry = fonts_.Get(font);
  pango_layout_set_text(entry.layout, text.data(), static_cast<int>(text.size()));
  ShapedLine line;
  PangoLayoutLine* layout_line = pango_layout_get_line_readonly(entry.layout, 0);
  if (layout_line == nullptr) return line;
  PangoRectangle logical;
  pango_layout_line_get_extents(layout_line, nullptr, &logical);
  line.width = logical.width;
  for (GSList* it = layout_line->runs; it != nullptr; it = it->next) {
    const auto* run = static_cast<PangoGlyphItem*>(it->data);
    const PangoGlyphString* glyphs = run->glyphs;
    const bool backwards = run->item->analysis.level % 2 == 1;
    ShapedItem& item = line.items.emplace_back();
    item.font = run->item->analysis.font;
    item.glyphs.resize(static_cast<std::size_t>(glyphs->num_glyphs));
    for (int i = 0; i < glyphs->num_glyphs; ++i) {
      const PangoGlyphInfo& info = glyphs->glyphs[i];
      ShapedGlyph& g = item.glyphs[static_cast<std::size_t>(i)];
      g.glyph = info.glyph;
      g.advance = info.geometry.width;
      g.x_offset = info.geometry.x_offset;
      g.y_offset = info.geometry.y_offset;
      if (!info.attr.is_cluster_start) continue;
      // A cluster's text runs to the next cluster in reading order.
      const int begin = glyphs->log_clusters[i];
      int end = run->item->length;
      for (int j = backwards ? i - 1 : i + 1; j >= 0 && j < glyphs->num_glyphs;
           j += backwards ? -1 : 1) {
        if (glyphs->log_clusters[j] != begin) {
          end = glyphs->log_clusters[j];
          break;
        }
      }
      g.text_begin = run->item->offset + begin;
      g.text_end = run->item->offset + std::max(end, begin);
    }
  }
  return line;
}

}  // namespace trellin::render
