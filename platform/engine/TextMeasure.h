#pragma once
// Text measurement and line wrapping with the fonts the renderers use (pango over fontconfig, so
// that Arial, Times New Roman and Courier New measure as their Liberation equivalents).
// Measures are in twips; font sizes in points.

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/engine/PageModel.h"

namespace trellin::engine {

class TextMeasure {
 public:
  TextMeasure();
  ~TextMeasure();
  TextMeasure(const TextMeasure&) = delete;
  TextMeasure& operator=(const TextMeasure&) = delete;

  // Height of one line of text in the font: ascent plus descent.
  [[nodiscard]] float LineHeight(const FontSpec& font);
  // Width of the text set on one line.
  [[nodiscard]] float Width(std::string_view text, const FontSpec& font);
  // The text broken into lines no wider than `width`: at line breaks in the text, then between
  // words, and inside a word only when it is wider than the line. Empty text gives no lines.
  [[nodiscard]] std::vector<std::string> Wrap(std::string_view text, const FontSpec& font,
                                              float width);

  struct Words {
    std::vector<std::string> lines;
    bool wide = false;  // a word wider than `width` stands whole on a line of its own
  };
  // The text broken into lines at line breaks and between words only: never inside a word, so
  // a figure or a code is never split. Empty text gives no lines.
  [[nodiscard]] Words WrapWords(std::string_view text, const FontSpec& font, float width);

  // `line` as it fits `width`: whole when it fits, else ended with "…" after the last whole
  // word that leaves room for it, or inside the first word when not even that word fits.
  [[nodiscard]] std::string Ellipsize(std::string_view line, const FontSpec& font, float width);

 private:
  struct FontData;
  FontData& Font(const FontSpec& font);
  FontData& LookUp(const FontSpec& font);
  bool FitsOnOneLine(std::string_view text, const FontSpec& font, float width);
  std::vector<std::string> LinesAtBreaks(std::string_view text, const FontSpec& font, float width);
  // The width of plain text shaped directly, in pango units; false when it needs pango.
  bool DirectWidth(std::string_view text, FontData& font, int* pango_units);
  // Ellipsize's work for a line the quick test could not pass.
  std::string Cut(std::string_view line, const FontSpec& font, float width);
  std::vector<std::string> BreakLines(std::string_view text, const FontSpec& font, float width,
                                      bool inside_words, bool* wide);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace trellin::engine
