// Text shaped by HarfBuzz directly must come out glyph for glyph as pango's layout shapes it:
// the engine measured with the layout, and the PDF places glyphs by what the shaper gives.

#include <gtest/gtest.h>

#include "platform/render/GlyphShaper.h"

namespace trellin::render {
namespace {

engine::FontSpec Face(const char* name, float size, bool bold = false, bool italic = false) {
  engine::FontSpec font;
  font.name = name;
  font.size = size;
  font.bold = bold;
  font.italic = italic;
  return font;
}

TEST(GlyphShaper, DirectShapingAgreesWithTheLayoutGlyphForGlyph) {
  FontCache fonts(false);
  GlyphShaper shaper(fonts);
  const engine::FontSpec faces[] = {Face("Arial", 9),
                                    Face("Arial", 10, true),
                                    Face("Arial", 8, true, true),
                                    Face("Times New Roman", 11),
                                    Face("Courier New", 10, true),
                                    Face("No Such Font Family", 7.5f)};
  const char* texts[] = {
      "Harbour Supplies Ltd",  // kerning: "Ha", "Lt" in some faces
      "AVAST Wave To Yard",    // strong kerning pairs
      "(1,234,567.89)",        // figures and signs alone: shaped as Common, not Latin
      "31/12/2025 9:14 am",
      "Café résumé — ½ price, déjà vu “quoted” ‘single’ – 10 € …",
      "office fluffy affine",  // ligatures where the face has them
      "  leading and trailing blanks  ",
      "x",
  };
  for (const engine::FontSpec& font : faces) {
    for (const char* text : texts) {
      SCOPED_TRACE(font.name + " " + std::to_string(font.size) + (font.bold ? " bold" : "") +
                   (font.italic ? " italic" : "") + ": " + text);
      const auto direct = shaper.ShapeDirectly(font, text);
      ASSERT_TRUE(direct.has_value()) << "plain text should not need the layout";
      const ShapedLine layout = shaper.ShapeWithLayout(font, text);
      EXPECT_EQ(direct->width, layout.width);
      ASSERT_EQ(direct->items.size(), 1u);
      ASSERT_EQ(layout.items.size(), 1u);
      EXPECT_EQ(direct->items[0].font, layout.items[0].font);
      const auto& a = direct->items[0].glyphs;
      const auto& b = layout.items[0].glyphs;
      ASSERT_EQ(a.size(), b.size());
      for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].glyph, b[i].glyph) << "glyph " << i;
        EXPECT_EQ(a[i].advance, b[i].advance) << "glyph " << i;
        EXPECT_EQ(a[i].x_offset, b[i].x_offset) << "glyph " << i;
        EXPECT_EQ(a[i].y_offset, b[i].y_offset) << "glyph " << i;
        EXPECT_EQ(a[i].text_begin, b[i].text_begin) << "glyph " << i;
        EXPECT_EQ(a[i].text_end, b[i].text_end) << "glyph " << i;
      }
    }
  }
}

TEST(GlyphShaper, TextOutsidePlainLatinGoesThroughTheLayout) {
  FontCache fonts(false);
  GlyphShaper shaper(fonts);
  const engine::FontSpec arial = Face("Arial", 9);
  for (const char* text : {"Ελληνικά", "עברית", "a\tb", "no\u00A0break", "日本", "e\u0301"}) {
    EXPECT_FALSE(shaper.ShapeDirectly(arial, text).has_value()) << text;
    EXPECT_FALSE(shaper.Shape(arial, text).items.empty()) << text;
  }
}

}  // namespace
}  // namespace trellin::render
