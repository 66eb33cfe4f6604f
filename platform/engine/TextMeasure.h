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

 private:
  struct FontData;
  FontData& Font(const FontSpec& font);
  FontData& LookUp(const FontSpec& font);

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace trellin::engine
