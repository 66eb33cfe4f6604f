#include <gtest/gtest.h>

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

}  // namespace
}  // namespace trellin::engine
