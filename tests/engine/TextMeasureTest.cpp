#include <gtest/gtest.h>
#include <pango/pangocairo.h>

#include "platform/engine/TextMeasure.h"

namespace trellin::engine {
namespace {

TEST(TextMeasure, WrapsAtBreaksThenWordsThenInsideLongWords) {
  TextMeasure measure;
  FontSpec arial;
  struct Case {
    const char* text;
    float width;
    std::vector<std::string> lines;
  } cases[] = {
      {"", 2000, {}},
      {"Retail", 2000, {"Retail"}},
      {"Normal\r\nTax", 2000, {"Normal", "Tax"}},
      {"one\ntwo\nthree", 5000, {"one", "two", "three"}},
      {"alpha beta gamma delta", 1500, {"alpha beta", "gamma delta"}},
      {"Supercalifragilistic", 600, {"Superc", "alifrag", "ilistic"}},
  };
  for (const auto& c : cases) {
    auto lines = measure.Wrap(c.text, arial, c.width);
    // Pango decides where a long word breaks; what matters is that every line fits and no text
    // is lost.
    if (std::string(c.text) == "Supercalifragilistic") {
      std::string joined;
      for (const auto& l : lines) {
        EXPECT_LE(measure.Width(l, arial), c.width + 1) << l;
        joined += l;
      }
      EXPECT_EQ(joined, c.text);
      EXPECT_GE(lines.size(), 2u);
      continue;
    }
    EXPECT_EQ(lines, c.lines) << c.text;
  }
}

// Lines that each fit are taken at the text's breaks without pango; they must be pango's lines.
TEST(TextMeasure, LinesAtBreaksAreThoseOfTheFullWrap) {
  TextMeasure measure;
  FontSpec arial;
  const struct {
    const char* text;
    float width;
  } cases[] = {
      {"Normal\r\nTax", 2000},
      {"one\ntwo\nthree", 5000},
      {"Price query \r\nGrace Taylor\r\nJS, James Sutherland", 3400},
      {"first\r\n\r\nthird", 2000},               // an empty line between
      {"ends in a break\r\n", 3000},              // left to pango
      {"short\r\nalpha beta gamma delta", 1500},  // the second line wraps between words
  };
  for (const auto& c : cases) {
    const TextMeasure::Words words = measure.WrapWords(c.text, arial, c.width);
    EXPECT_EQ(words.lines, measure.Wrap(c.text, arial, c.width)) << c.text;
    EXPECT_FALSE(words.wide) << c.text;
  }
}

// Which face a layout's font name resolves to is the machine's fontconfig, not ours; the PDF
// test checks the faces that end up embedded.
TEST(TextMeasure, SizesScaleAndBoldIsWider) {
  TextMeasure measure;
  FontSpec ten;
  FontSpec twenty;
  twenty.size = 20;
  // A 10 point line is a little over 10 points (200 twips) tall; sizes scale linearly.
  EXPECT_GT(measure.LineHeight(ten), 200);
  EXPECT_LT(measure.LineHeight(ten), 260);
  EXPECT_NEAR(measure.Width("WWW", twenty), 2 * measure.Width("WWW", ten), 1.0);
  FontSpec bold;
  bold.bold = true;
  EXPECT_GT(measure.Width("Total", bold), measure.Width("Total", ten));
}

// Plain text is shaped directly, without a pango layout: its widths must be the layout's to the
// pango unit, kerning and accents included, or lines would break and cut where the PDF does not.
TEST(TextMeasure, WidthsAreTheLayoutsWidths) {
  PangoContext* context = pango_font_map_create_context(pango_cairo_font_map_get_default());
  pango_cairo_context_set_resolution(context, 72.0);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  pango_cairo_context_set_font_options(context, options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(context, FALSE);
  PangoLayout* layout = pango_layout_new(context);
  TextMeasure measure;
  for (const char* face : {"Arial", "Times New Roman", "Courier New"}) {
    for (bool bold : {false, true}) {
      FontSpec font;
      font.name = face;
      font.bold = bold;
      font.size = 9;
      PangoFontDescription* description = pango_font_description_new();
      pango_font_description_set_family(description, face);
      pango_font_description_set_size(description, 9 * PANGO_SCALE);
      pango_font_description_set_weight(description,
                                        bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
      pango_layout_set_font_description(layout, description);
      pango_font_description_free(description);
      for (const char* text : {"AVAWAY To Ty", "(1,234,567.89)", "Café naïve Œuvre – “quoted”",
                               "€ 12.50 • ŁódŹ…", "tab\there", "日本 mixed", "A"}) {
        pango_layout_set_text(layout, text, -1);
        int width = 0;
        pango_layout_get_size(layout, &width, nullptr);
        EXPECT_NEAR(measure.Width(text, font), width / 1024.0f * 20.0f, 0.01f)
            << face << (bold ? " bold: " : ": ") << text;
      }
    }
  }
  g_object_unref(layout);
  g_object_unref(context);
}

TEST(TextMeasure, EllipsizeKeepsTheWholeWordsThatLeaveRoomForTheEllipsis) {
  TextMeasure measure;
  FontSpec arial;
  const std::string text = "Freight from Auckland to  Tauranga, second pallet";
  const float whole = measure.Width(text, arial);
  EXPECT_EQ(measure.Ellipsize(text, arial, whole), text);
  // Every width from a word's end to the next: the longest run of words that fits, and never a
  // blank before the ellipsis.
  for (float width = 600; width < whole; width += 37) {
    const std::string cut = measure.Ellipsize(text, arial, width);
    ASSERT_LE(measure.Width(cut, arial), width) << width;
    ASSERT_EQ(cut.substr(cut.size() - 3), "\u2026") << width;
    const std::string head = cut.substr(0, cut.size() - 3);
    ASSERT_EQ(text.compare(0, head.size(), head), 0) << cut;
    ASSERT_NE(head.back(), ' ') << cut;
    const std::size_t next = text.find(' ', text.find_first_not_of(' ', head.size()));
    if (text[head.size()] == ' ' && next != std::string::npos) {
      std::string longer = text.substr(0, next) + "\u2026";
      EXPECT_GT(measure.Width(longer, arial), width) << "a longer run fits: " << longer;
    }
  }
  // Not even the first word fits: cut between characters.
  const std::string word = measure.Ellipsize("Supercalifragilistic", arial, 500);
  EXPECT_LE(measure.Width(word, arial), 500);
  EXPECT_EQ(word.substr(0, 2), "Su");
  EXPECT_EQ(word.substr(word.size() - 3), "\u2026");
}

}  // namespace
}  // namespace trellin::engine
