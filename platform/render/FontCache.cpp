#include "platform/render/FontCache.h"

#include <algorithm>

namespace trellin::render {
namespace {

// A size the font machinery can hold; layouts sometimes carry 0 for "default".
double UsableSize(float points) { return points > 0.5f ? std::min(points, 1000.0f) : 10.0; }

}  // namespace

FontCache::FontCache(bool hinted) {
  // A context of its own, not tied to any cairo target: layouts are made once and drawn on
  // PDF and image surfaces alike. The resolution of 72 makes one Pango unit of size one point.
  context_ = pango_font_map_create_context(pango_cairo_font_map_get_default());
  pango_cairo_context_set_resolution(context_, 72.0);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_hint_style(options,
                                    hinted ? CAIRO_HINT_STYLE_SLIGHT : CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  pango_cairo_context_set_font_options(context_, options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(context_, FALSE);
}

FontCache::~FontCache() {
  Clear();
  g_object_unref(context_);
}

void FontCache::Clear() {
  for (auto& [key, entry] : entries_) {
    g_object_unref(entry.layout);
    if (entry.font != nullptr) g_object_unref(entry.font);
  }
  entries_.clear();
}

const FontEntry& FontCache::Get(const engine::FontSpec& font) {
  Key key{font.name, font.size, font.bold, font.italic, font.underline};
  if (auto it = entries_.find(key); it != entries_.end()) return it->second;

  PangoFontDescription* desc = pango_font_description_new();
  pango_font_description_set_family(desc, font.name.empty() ? "Arial" : font.name.c_str());
  pango_font_description_set_absolute_size(desc, UsableSize(font.size) * PANGO_SCALE);
  pango_font_description_set_weight(desc, font.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_style(desc, font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);

  FontEntry entry;
  entry.layout = pango_layout_new(context_);
  pango_layout_set_font_description(entry.layout, desc);
  // One line as the engine wrapped it: a stray line break shows as a glyph, never as a new line.
  pango_layout_set_single_paragraph_mode(entry.layout, TRUE);
  pango_layout_set_width(entry.layout, -1);
  if (font.underline) {
    PangoAttrList* attrs = pango_attr_list_new();
    pango_attr_list_insert(attrs, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
    pango_layout_set_attributes(entry.layout, attrs);
    pango_attr_list_unref(attrs);
  }
  entry.font = pango_context_load_font(context_, desc);
  PangoFontMetrics* metrics = pango_context_get_metrics(context_, desc, nullptr);
  entry.ascent = static_cast<double>(pango_font_metrics_get_ascent(metrics)) / PANGO_SCALE;
  entry.underline_position =
      static_cast<double>(pango_font_metrics_get_underline_position(metrics)) / PANGO_SCALE;
  entry.underline_thickness =
      static_cast<double>(pango_font_metrics_get_underline_thickness(metrics)) / PANGO_SCALE;
  pango_font_metrics_unref(metrics);
  pango_font_description_free(desc);

  // A run-away number of fonts (sizes computed per row) must not grow memory without bound.
  if (entries_.size() >= 512) {
    Clear();
  }
  return entries_.emplace(std::move(key), entry).first->second;
}

}  // namespace trellin::render
