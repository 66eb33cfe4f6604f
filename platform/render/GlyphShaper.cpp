#include "platform/render/GlyphShaper.h"

#include <hb.h>

namespace trellin::render {
namespace {

// Characters pango puts in one item with the surrounding Latin text and shapes with no special
// handling: printable ASCII, Latin-1 and Latin Extended-A letters and signs (not the no-break
// space or the soft hyphen, which pango treats apart), dashes, quotes, the bullet, the ellipsis
// and the euro sign.
bool Plain(char32_t c) {
  if (c >= 0x20 && c <= 0x7E) return true;
  if (c >= 0xA1 && c <= 0x17F) return c != 0xAD;
  switch (c) {
    case 0x2013:
    case 0x2014:
    case 0x2018:
    case 0x2019:
    case 0x201C:
    case 0x201D:
    case 0x2022:
    case 0x2026:
    case 0x20AC:
      return true;
    default:
      return false;
  }
}

// The code points of valid UTF-8 `text`; false at the first character that is not plain.
bool PlainCodePoints(std::string_view text, std::vector<char32_t>& out) {
  out.clear();
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const auto next = [&](std::size_t k) {
      return static_cast<unsigned char>(text[i + k]) & 0x3Fu;
    };
    char32_t c = lead;
    std::size_t length = 1;
    if (lead >= 0xF0) return false;
    if (lead >= 0xE0) {
      if (i + 2 >= text.size()) return false;
      c = (lead & 0x0Fu) << 12 | next(1) << 6 | next(2), length = 3;
    } else if (lead >= 0xC0) {
      if (i + 1 >= text.size()) return false;
      c = (lead & 0x1Fu) << 6 | next(1), length = 2;
    }
    if (!Plain(c)) return false;
    out.push_back(c);
    i += length;
  }
  return true;
}

}  // namespace

GlyphShaper::GlyphShaper(FontCache& fonts) : fonts_(fonts), buffer_(hb_buffer_create()) {}

GlyphShaper::~GlyphShaper() { hb_buffer_destroy(buffer_); }

ShapedLine GlyphShaper::Shape(const engine::FontSpec& font, std::string_view text) {
  if (auto direct = ShapeDirectly(font, text)) return std::move(*direct);
  return ShapeWithLayout(font, text);
}

std::optional<ShapedLine> GlyphShaper::ShapeDirectly(const engine::FontSpec& font,
                                                     std::string_view text) {
  const FontEntry& entry = fonts_.Get(font);
  if (entry.font == nullptr || text.empty()) return std::nullopt;
  std::vector<char32_t>& code_points = code_points_;
  if (!PlainCodePoints(text, code_points)) return std::nullopt;
  hb_font_t* hb_font = pango_font_get_hb_font(entry.font);
  if (hb_font == nullptr) return std::nullopt;
  // Pango takes a character the face lacks from another face; that text needs its itemizing.
  bool latin = false;
  for (char32_t c : code_points) {
    hb_codepoint_t glyph = 0;
    if (!hb_font_get_nominal_glyph(hb_font, c, &glyph)) return std::nullopt;
    latin = latin || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
            (c >= 0xC0 && c <= 0x17F && c != 0xD7 && c != 0xF7);
  }

  // As pango shapes an item: its script (Latin, or Common for text of figures and signs alone),
  // the context's language where it writes that script, whole-paragraph flags, monotone clusters.
  const PangoScript script = latin ? PANGO_SCRIPT_LATIN : PANGO_SCRIPT_COMMON;
  PangoLanguage* language = pango_context_get_language(fonts_.Context());
  if (language == nullptr || !pango_language_includes_script(language, script)) {
    language = pango_script_get_sample_language(script);
    if (language == nullptr) language = pango_language_from_string("xx");
  }
  hb_buffer_t* buffer = buffer_;
  hb_buffer_clear_contents(buffer);
  hb_buffer_set_direction(buffer, HB_DIRECTION_LTR);
  hb_buffer_set_script(buffer,
                       hb_script_from_iso15924_tag(static_cast<hb_tag_t>(
                           g_unicode_script_to_iso15924(static_cast<GUnicodeScript>(script)))));
  hb_buffer_set_language(buffer, hb_language_from_string(pango_language_to_string(language), -1));
  hb_buffer_set_cluster_level(buffer, HB_BUFFER_CLUSTER_LEVEL_MONOTONE_CHARACTERS);
  hb_buffer_set_flags(buffer,
                      static_cast<hb_buffer_flags_t>(HB_BUFFER_FLAG_BOT | HB_BUFFER_FLAG_EOT));
  hb_buffer_set_invisible_glyph(buffer, PANGO_GLYPH_EMPTY);
  hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), 0,
                     static_cast<int>(text.size()));
  hb_shape(hb_font, buffer, nullptr, 0);

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
