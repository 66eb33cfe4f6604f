#pragma once
// Plain Latin text shaped by HarfBuzz directly, as pango shapes it on one line: the engine
// measures with it and the PDF writer sets its glyphs with it, so both agree with each other and
// with pango's own layouts, without pango's itemizing and line breaking. Headers only, as the
// page model is, so that the renderers link no engine code for it.

#include <hb.h>
#include <pango/pango.h>

#include <string_view>
#include <vector>

namespace trellin::engine {

// Characters pango puts in one item with the surrounding Latin text and shapes with no special
// handling: printable ASCII, Latin-1 and Latin Extended-A letters and signs (not the no-break
// space or the soft hyphen, which pango treats apart), dashes, quotes, the bullet, the ellipsis
// and the euro sign.
[[nodiscard]] inline bool PlainCharacter(char32_t c) {
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

// The code points of valid UTF-8 `text` into `out`; false at the first that is not plain.
[[nodiscard]] inline bool PlainCodePoints(std::string_view text, std::vector<char32_t>& out) {
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
    if (!PlainCharacter(c)) return false;
    out.push_back(c);
    i += length;
  }
  return true;
}

// Shapes `text` (valid UTF-8, not empty) in `font` into `buffer`, as pango would shape it alone
// on a line of a layout of `context`: glyph positions in pango units. False, with the buffer left
// as it was, when the text needs pango: a character that is not plain, or one the face lacks
// (pango takes that from another face). `code_points` is scratch space.
[[nodiscard]] inline bool ShapePlain(PangoContext* context, PangoFont* font, std::string_view text,
                                     hb_buffer_t* buffer, std::vector<char32_t>& code_points) {
  if (font == nullptr || text.empty() || !PlainCodePoints(text, code_points)) return false;
  hb_font_t* hb_font = pango_font_get_hb_font(font);
  if (hb_font == nullptr) return false;
  bool latin = false;
  for (char32_t c : code_points) {
    hb_codepoint_t glyph = 0;
    if (!hb_font_get_nominal_glyph(hb_font, c, &glyph)) return false;
    latin = latin || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
            (c >= 0xC0 && c <= 0x17F && c != 0xD7 && c != 0xF7);
  }
  // As pango shapes an item: its script (Latin, or Common for text of figures and signs alone),
  // the context's language where it writes that script, whole-paragraph flags, monotone clusters.
  const PangoScript script = latin ? PANGO_SCRIPT_LATIN : PANGO_SCRIPT_COMMON;
  PangoLanguage* language = pango_context_get_language(context);
  if (language == nullptr || !pango_language_includes_script(language, script)) {
    language = pango_script_get_sample_language(script);
    if (language == nullptr) language = pango_language_from_string("xx");
  }
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
  return true;
}

}  // namespace trellin::engine
