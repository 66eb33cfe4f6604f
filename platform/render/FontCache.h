#pragma once
// Pango layouts kept per font, so that drawing a run costs one set_text and no font lookup.

#include <pango/pangocairo.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "platform/engine/PageModel.h"

namespace trellin::render {

struct FontEntry {
  PangoLayout* layout = nullptr;   // owned by the cache; attributes (underline) already set
  PangoFont* font = nullptr;       // owned by the cache: the face pango tries first for the font
  double ascent = 0;               // points from the top of the line box to the baseline
  double underline_position = 0;   // points from the baseline up to the underline's top edge
  double underline_thickness = 0;  // points
};

class FontCache {
 public:
  // `hinted`: hint glyph outlines for a pixel surface. Metrics are never hinted, so text measures
  // the same at every resolution and in PDF.
  explicit FontCache(bool hinted);
  ~FontCache();
  FontCache(const FontCache&) = delete;
  FontCache& operator=(const FontCache&) = delete;

  // The entry for `font`, made on first use. Font names are resolved through fontconfig, so
  // "Arial" draws with its metric-compatible substitute where Arial itself is not installed.
  [[nodiscard]] const FontEntry& Get(const engine::FontSpec& font);
  // The context every layout of the cache belongs to.
  [[nodiscard]] PangoContext* Context() const { return context_; }

 private:
  void Clear();

  using Key = std::tuple<std::string, float, bool, bool, bool>;
  PangoContext* context_ = nullptr;
  std::map<Key, FontEntry> entries_;
};

}  // namespace trellin::render
