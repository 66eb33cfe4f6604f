#include "platform/engine/TextMeasure.h"

#include <pango/pangocairo.h>

#include <cmath>
#include <cstring>

#include "platform/engine/PlainShaping.h"

namespace trellin::engine {
namespace {

constexpr float kTwipsPerPoint = 20.0f;

float PangoToTwips(int pango_units) {
  return static_cast<float>(pango_units) / PANGO_SCALE * kTwipsPerPoint;
}

std::string FontKey(const FontSpec& f) {
  std::string key = f.name;
  key += '|';
  key += std::to_string(std::lround(f.size * 100));
  key += f.bold ? "|b" : "|";
  key += f.italic ? "i" : "";
  return key;
}

bool SameFont(const FontSpec& a, const FontSpec& b) {
  return a.size == b.size && a.bold == b.bold && a.italic == b.italic && a.name == b.name;
}

}  // namespace

struct TextMeasure::FontData {
  PangoFontDescription* description = nullptr;
  PangoFont* font = nullptr;  // the face pango tries first, for shaping plain text directly
  float line_height = 0;
  // Advances of the printable ASCII characters, for the quick test of whether a text fits on
  // one line: most field texts are short and never need pango's line breaking.
  std::array<float, 128> advance{};
  // Texts repeat from line to line (a party's name, an account's comment): each is shaped once,
  // and a text cut to a box once for that box's width. Forgotten now and then, so that a report
  // of ever new texts does not grow memory.
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };
  template <typename Value>
  using ByText = std::unordered_map<std::string, Value, Hash, std::equal_to<>>;
  ByText<int> widths;       // pango units; -1 when it needs pango
  ByText<std::string> cut;  // by the width's bits and the text
};

namespace {

constexpr std::size_t kRemembered = 4096;

template <typename Map>
void MakeRoom(Map& map) {
  if (map.size() >= kRemembered) map.clear();
}

}  // namespace

struct TextMeasure::Impl {
  PangoContext* context = nullptr;
  PangoLayout* layout = nullptr;
  std::unordered_map<std::string, std::unique_ptr<FontData>> fonts;
  FontData* last = nullptr;
  FontSpec last_spec;
  hb_buffer_t* buffer = hb_buffer_create();
  std::vector<char32_t> code_points;

  Impl() {
    PangoFontMap* map = pango_cairo_font_map_get_default();
    context = pango_font_map_create_context(map);
    // 72 dots to the inch makes one pango unit of size one point, and unhinted metrics make
    // widths scale linearly, as they do in the PDF the renderer writes.
    pango_cairo_context_set_resolution(context, 72.0);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    // At 72 dots to the inch a whole pixel is a whole point: rounded glyph positions would make
    // widths jump by points instead of following the font's design.
    pango_context_set_round_glyph_positions(context, FALSE);
    layout = pango_layout_new(context);
  }
  ~Impl() {
    for (auto& [key, font] : fonts) {
      pango_font_description_free(font->description);
      if (font->font != nullptr) g_object_unref(font->font);
    }
    hb_buffer_destroy(buffer);
    g_object_unref(layout);
    g_object_unref(context);
  }
};

TextMeasure::TextMeasure() : impl_(std::make_unique<Impl>()) {}
TextMeasure::~TextMeasure() = default;

TextMeasure::FontData& TextMeasure::Font(const FontSpec& wanted) {
  // Lines of a report ask for the same few fonts over and over, mostly the one asked last.
  if (impl_->last && SameFont(impl_->last_spec, wanted)) return *impl_->last;
  FontData& font = LookUp(wanted);
  impl_->last = &font;
  impl_->last_spec = wanted;
  return font;
}

TextMeasure::FontData& TextMeasure::LookUp(const FontSpec& wanted) {
  std::string key = FontKey(wanted);
  auto it = impl_->fonts.find(key);
  if (it != impl_->fonts.end()) return *it->second;

  auto data = std::make_unique<FontData>();
  data->description = pango_font_description_new();
  pango_font_description_set_family(data->description, wanted.name.c_str());
  pango_font_description_set_weight(data->description,
                                    wanted.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_style(data->description,
                                   wanted.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  pango_font_description_set_size(data->description,
                                  static_cast<int>(std::lround(wanted.size * PANGO_SCALE)));

  data->font = pango_context_load_font(impl_->context, data->description);
  PangoFontMetrics* metrics = pango_context_get_metrics(impl_->context, data->description, nullptr);
  data->line_height = PangoToTwips(pango_font_metrics_get_ascent(metrics) +
                                   pango_font_metrics_get_descent(metrics));
  pango_font_metrics_unref(metrics);

  PangoLayout* layout = impl_->layout;
  pango_layout_set_font_description(layout, data->description);
  pango_layout_set_width(layout, -1);
  for (int c = 32; c < 127; ++c) {
    char ch = static_cast<char>(c);
    pango_layout_set_text(layout, &ch, 1);
    int w = 0;
    pango_layout_get_size(layout, &w, nullptr);
    data->advance[c] = PangoToTwips(w);
  }
  auto& slot = impl_->fonts[key];
  slot = std::move(data);
  return *slot;
}

float TextMeasure::LineHeight(const FontSpec& font) { return Font(font).line_height; }

bool TextMeasure::DirectWidth(std::string_view text, FontData& font, int* pango_units) {
  if (auto it = font.widths.find(text); it != font.widths.end()) {
    *pango_units = it->second;
    return it->second >= 0;
  }
  int sum = -1;
  if (ShapePlain(impl_->context, font.font, text, impl_->buffer, impl_->code_points)) {
    unsigned count = 0;
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(impl_->buffer, &count);
    sum = 0;
    for (unsigned i = 0; i < count; ++i) sum += positions[i].x_advance;
  }
  MakeRoom(font.widths);
  font.widths.emplace(std::string(text), sum);
  *pango_units = sum;
  return sum >= 0;
}

float TextMeasure::Width(std::string_view text, const FontSpec& wanted) {
  FontData& font = Font(wanted);
  int w = 0;
  if (text.empty() || DirectWidth(text, font, &w)) return PangoToTwips(w);
  PangoLayout* layout = impl_->layout;
  pango_layout_set_font_description(layout, font.description);
  pango_layout_set_width(layout, -1);
  pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
  pango_layout_get_size(layout, &w, nullptr);
  return PangoToTwips(w);
}

bool TextMeasure::FitsOnOneLine(std::string_view text, const FontSpec& wanted, float width) {
  // Plain ASCII whose summed advances leave a margin for kerning fits without shaping.
  FontData& font = Font(wanted);
  float sum = 0;
  bool ascii = true;
  for (char ch : text) {
    auto c = static_cast<unsigned char>(ch);
    if (c < 32 || c >= 127) {
      ascii = false;
      break;
    }
    sum += font.advance[c];
  }
  if (ascii && sum * 1.02f + 10.0f <= width) return true;
  // Else plain text shaped as pango would: it keeps one line when no wider than the layout's
  // width in whole pango units.
  int w = 0;
  return width > 0 && DirectWidth(text, font, &w) &&
         w <= static_cast<int>(width / kTwipsPerPoint * PANGO_SCALE);
}

std::vector<std::string> TextMeasure::BreakLines(std::string_view text, const FontSpec& wanted,
                                                 float width, bool inside_words, bool* wide) {
  FontData& font = Font(wanted);
  PangoLayout* layout = impl_->layout;
  pango_layout_set_font_description(layout, font.description);
  pango_layout_set_wrap(layout, inside_words ? PANGO_WRAP_WORD_CHAR : PANGO_WRAP_WORD);
  pango_layout_set_width(layout,
                         width > 0 ? static_cast<int>(width / kTwipsPerPoint * PANGO_SCALE) : -1);
  pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
  std::vector<std::string> lines;
  std::vector<std::size_t> long_lines;
  for (GSList* it = pango_layout_get_lines_readonly(layout); it != nullptr; it = it->next) {
    auto* line = static_cast<PangoLayoutLine*>(it->data);
    std::string piece(text.substr(line->start_index, line->length));
    // A line ends where the text broke it; the break characters and trailing blanks do not print.
    while (!piece.empty() &&
           (piece.back() == '\n' || piece.back() == '\r' || piece.back() == ' ')) {
      piece.pop_back();
    }
    if (wide != nullptr && width > 0) {
      PangoRectangle logical;
      pango_layout_line_get_extents(line, nullptr, &logical);
      if (PangoToTwips(logical.width) > width) long_lines.push_back(lines.size());
    }
    lines.push_back(std::move(piece));
  }
  pango_layout_set_width(layout, -1);
  // A line's logical width counts the blanks it ended with; only what prints must fit.
  for (std::size_t i : long_lines) {
    if (Width(lines[i], wanted) > width + 1.0f) *wide = true;
  }
  return lines;
}

std::vector<std::string> TextMeasure::Wrap(std::string_view text, const FontSpec& wanted,
                                           float width) {
  if (text.empty()) return {};
  if (FitsOnOneLine(text, wanted, width)) return {std::string(text)};
  return BreakLines(text, wanted, width, true, nullptr);
}

// The lines of a text broken only at its line breaks ("\r\n" or "\n"), when each of them fits
// on one line as it stands: what pango would give, without asking it. Empty when the text does
// not end in printing text or a line does not fit.
std::vector<std::string> TextMeasure::LinesAtBreaks(std::string_view text, const FontSpec& wanted,
                                                    float width) {
  std::vector<std::string> lines;
  if (text.empty() || text.back() == '\n' || text.back() == '\r') return lines;
  std::size_t at = 0;
  while (true) {
    const std::size_t next = text.find('\n', at);
    std::string_view line = text.substr(at, next == std::string_view::npos ? text.npos : next - at);
    // As pango's lines do, a line ends without its break and trailing blanks.
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.remove_suffix(1);
    if (!line.empty() && !FitsOnOneLine(line, wanted, width)) return {};
    lines.emplace_back(line);
    if (next == std::string_view::npos) return lines;
    at = next + 1;
  }
}

TextMeasure::Words TextMeasure::WrapWords(std::string_view text, const FontSpec& wanted,
                                          float width) {
  Words words;
  if (text.empty()) return words;
  if (FitsOnOneLine(text, wanted, width)) {
    words.lines.emplace_back(text);
    return words;
  }
  if (text.find('\n') != std::string_view::npos) {
    words.lines = LinesAtBreaks(text, wanted, width);
    if (!words.lines.empty()) return words;
  }
  words.lines = BreakLines(text, wanted, width, false, &words.wide);
  return words;
}

std::string TextMeasure::Ellipsize(std::string_view line, const FontSpec& font, float width) {
  if (FitsOnOneLine(line, font, width)) return std::string(line);
  FontData& data = Font(font);
  std::string key(sizeof width, '\0');
  std::memcpy(key.data(), &width, sizeof width);
  key += line;
  if (auto it = data.cut.find(key); it != data.cut.end()) return it->second;
  std::string cut = Cut(line, font, width);
  MakeRoom(data.cut);
  data.cut.emplace(std::move(key), cut);
  return cut;
}

std::string TextMeasure::Cut(std::string_view line, const FontSpec& font, float width) {
  if (Width(line, font) <= width) return std::string(line);
  static constexpr std::string_view kEllipsis = "\u2026";
  const auto with_ellipsis = [](std::string_view head) {
    return std::string(head) + std::string(kEllipsis);
  };
  // The longest run of whole words that leaves room for the ellipsis: a longer run is never
  // narrower, so the word ends are searched by halves.
  std::vector<std::size_t> ends;  // the ends of the runs, blanks before each end dropped
  for (std::size_t blank = line.find(' '); blank != std::string_view::npos;
       blank = line.find(' ', blank + 1)) {
    std::size_t end = blank;
    while (end > 0 && line[end - 1] == ' ') --end;
    if (end > 0 && (ends.empty() || ends.back() != end)) ends.push_back(end);
  }
  std::size_t fits = 0;  // the runs up to ends[fits - 1] fit
  std::size_t low = 0, high = ends.size();
  while (low < high) {
    const std::size_t mid = low + (high - low) / 2;
    if (Width(with_ellipsis(line.substr(0, ends[mid])), font) <= width) {
      low = mid + 1;
      fits = low;
    } else {
      high = mid;
    }
  }
  if (fits > 0) return with_ellipsis(line.substr(0, ends[fits - 1]));
  // Not even the first word fits: cut between characters, never inside one.
  std::size_t end = line.size();
  while (end > 0) {
    do {
      --end;
    } while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80);
    std::string candidate = with_ellipsis(line.substr(0, end));
    if (Width(candidate, font) <= width) return candidate;
  }
  return std::string(kEllipsis);
}

}  // namespace trellin::engine
