#include "platform/engine/SectionLayout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/engine/ChartLayout.h"

namespace trellin::engine {
namespace {

// Gap between the two rules of a double border.
constexpr float kDoubleRuleGap = 30.0f;
constexpr float kCheckBoxSize = 180.0f;
// Room between a rule over a text (a total's) and the top of its line box: with the room the
// font leaves above its capitals, the digits stand clear of the rule.
constexpr float kRuleClearance = 40.0f;

LineItem Rule(float x1, float y1, float x2, float y2, Color color = {}) {
  LineItem line;
  line.x1 = x1;
  line.y1 = y1;
  line.x2 = x2;
  line.y2 = y2;
  line.color = color;
  return line;
}

Color ToColor(std::uint32_t rgb) {
  return Color{static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
               static_cast<std::uint8_t>(rgb)};
}

Align ToAlign(TextAlignment a) {
  switch (a) {
    case TextAlignment::Right:
      return Align::Right;
    case TextAlignment::Center:
      return Align::Center;
    case TextAlignment::Left:
      break;
  }
  return Align::Left;
}

const std::string* PrintedText(const Control& c) {
  switch (c.Class()) {
    case ControlClass::Label:
    case ControlClass::CheckBox:
      return &c.Caption();
    case ControlClass::Field:
      return &c.Text();
    default:
      return nullptr;
  }
}

void AddRule(Band& band, float x1, float x2, float y, int style) {
  if (style == 0) return;
  band.items.emplace_back(Rule(x1, y, x2, y));
  if (style == 6) band.items.emplace_back(Rule(x1, y + kDoubleRuleGap, x2, y + kDoubleRuleGap));
}

constexpr std::string_view kSoftBreak = "\u200B";  // a zero-width space: a place to break

std::string WithSoftBreaks(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char ch = text[i];
    const bool inside = i > 0 && i + 1 < text.size() && text[i - 1] != ' ' && text[i + 1] != ' ';
    if (inside && ch == '.') out += kSoftBreak;
    out += ch;
    if (inside && (ch == '@' || ch == '/')) out += kSoftBreak;
  }
  return out;
}

std::string WithoutSoftBreaks(const std::string& line) {
  std::string out;
  for (std::size_t at = 0;;) {
    const std::size_t next = line.find(kSoftBreak, at);
    out.append(line, at, next == std::string::npos ? std::string::npos : next - at);
    if (next == std::string::npos) return out;
    at = next + kSoftBreak.size();
  }
}

// Breaks the text into the control's lines and says how it fitted. Words are never split, save
// a word wider than a growing field; a fixed box keeps the lines it has room for (always its
// first), and a figure or a code wider than its box prints whole.
void FitText(const std::string& text, const FontSpec& font, float width, bool grows, bool ellipsis,
             ArrangedControl& a, TextMeasure& measure) {
  const auto room =
      static_cast<std::size_t>(std::max(1.0f, std::floor(a.height / a.line_height + 0.01f)));
  if (!grows && ellipsis && room == 1 && !text.empty() &&
      text.find_first_of("\r\n") == std::string::npos) {
    // A box of one line: the text whole, or cut after its last whole word that leaves room for
    // the ellipsis. Breaking it into lines first would only join them again.
    std::string line = measure.Ellipsize(text, font, width);
    if (line != text) a.fit = Fit::Ellipsis;
    a.lines.assign(1, std::move(line));
    return;
  }
  TextMeasure::Words words = measure.WrapWords(text, font, width);
  a.lines = std::move(words.lines);
  if (grows) {
    if (!words.wide) return;
    // An address or a path wider than the field breaks where a reader expects it to: after an
    // "@" or a "/", or before a ".". Anything else wider than the field breaks where it must.
    TextMeasure::Words soft = measure.WrapWords(WithSoftBreaks(text), font, width);
    if (!soft.wide) {
      a.lines.clear();
      for (const std::string& line : soft.lines) a.lines.push_back(WithoutSoftBreaks(line));
      return;
    }
    a.lines = measure.Wrap(text, font, width);
    a.fit = Fit::Broken;
    return;
  }
  const bool dropped = a.lines.size() > room;
  if (!dropped && !words.wide) return;
  if (ellipsis) {
    std::string rest;
    for (std::size_t i = std::min(room, a.lines.size()) - 1; i < a.lines.size(); ++i) {
      if (!rest.empty()) rest += ' ';
      rest += a.lines[i];
    }
    if (dropped) a.lines.resize(room);
    for (std::string& line : a.lines) line = measure.Ellipsize(line, font, width);
    if (dropped) a.lines.back() = measure.Ellipsize(rest, font, width);
    a.fit = Fit::Ellipsis;
    return;
  }
  if (dropped) a.lines.resize(room);
  a.fit = dropped ? Fit::Cut : Fit::Wide;
}

}  // namespace

// A figure or a code too wide for its fixed box is set in smaller type rather than overhang its
// neighbour: half a point at a time, to four fifths of its size but never below 6 points. What
// does not fit even then prints whole in its own type and counts as wide.
constexpr float kShrinkStep = 0.5f;
constexpr float kShrinkFloorShare = 0.8f;
constexpr float kShrinkFloorPoints = 6.0f;
// In the faces reports use, the ascent is about four fifths of the line height.
constexpr float kAscentShare = 0.8f;

void ShrinkToFit(const FontSpec& font, float width, ArrangedControl& a, TextMeasure& measure) {
  if (a.fit != Fit::Wide || a.lines.size() != 1) return;
  const float floor = std::max(kShrinkFloorPoints, font.size * kShrinkFloorShare);
  FontSpec smaller = font;
  for (smaller.size = font.size - kShrinkStep; smaller.size >= floor - 0.01f;
       smaller.size -= kShrinkStep) {
    if (measure.Width(a.lines[0], smaller) <= width) {
      a.font_size = smaller.size;
      a.baseline_shift = (measure.LineHeight(font) - measure.LineHeight(smaller)) * kAscentShare;
      a.fit = Fit::Whole;
      return;
    }
  }
}

FontSpec ToFontSpec(const ControlFont& font) {
  FontSpec result;
  result.name = font.Name;
  result.size = font.Size;
  result.bold = font.Bold;
  result.italic = font.Italic;
  result.underline = font.Underline;
  return result;
}

Arrangement Arrange(const Section& section, TextMeasure& measure) {
  Arrangement out;
  for (Control& c : section.Controls()) {
    if (!c.Visible()) continue;
    ArrangedControl a;
    a.control = &c;
    a.top = c.Top();
    a.height = c.Height();
    // A control with no width never prints: it only carries a value, for summaries and exports.
    const std::string* text = c.Width() > 0 ? PrintedText(c) : nullptr;
    if (text) {
      FontSpec font = ToFontSpec(c.Font());
      a.line_height = measure.LineHeight(font);
      float text_width =
          c.Class() == ControlClass::CheckBox ? c.Width() - kCheckBoxSize - 60 : c.Width();
      bool grows = c.Class() == ControlClass::Field && c.CanGrow();
      FitText(*text, font, text_width, grows, c.Ellipsis(), a, measure);
      ShrinkToFit(font, text_width, a, measure);
      if (grows) {
        a.height = std::max(a.height, a.line_height * static_cast<float>(a.lines.size()));
      }
      if (c.CanShrink()) {
        a.height = a.lines.empty()
                       ? 0
                       : std::min(a.height, a.line_height * static_cast<float>(a.lines.size()));
      }
    }
    if (c.Class() == ControlClass::Chart && c.Width() > 0 && c.Height() > 0) {
      const ChartData none;
      const ChartData* chart = c.ChartOrNull();
      a.chart =
          LayOutChart(chart ? *chart : none, ToFontSpec(c.Font()), c.Width(), c.Height(), measure);
    }
    out.controls.push_back(std::move(a));
  }
  // Text under a rule moves down to clear it, and the texts beside it on the same line move
  // with it, so that a total's caption and its figures keep one baseline.
  std::vector<float> ruled_tops;
  for (const auto& a : out.controls) {
    if (a.control->Border().TopStyle != 0 && !a.lines.empty()) {
      ruled_tops.push_back(a.control->Top());
    }
  }
  for (auto& a : out.controls) {
    if (a.lines.empty()) continue;
    const float top = a.control->Top();
    if (std::none_of(ruled_tops.begin(), ruled_tops.end(),
                     [top](float t) { return std::fabs(t - top) < 0.5f; })) {
      continue;
    }
    a.text_offset = kRuleClearance;
    a.height =
        std::max(a.height, kRuleClearance + a.line_height * static_cast<float>(a.lines.size()));
  }
  // A double rule under a text lies within its control, so that the line after it starts below
  // both rules.
  for (auto& a : out.controls) {
    if (a.control->Border().BottomStyle != 6 || a.lines.empty()) continue;
    a.rule_below = a.height;
    a.height += kDoubleRuleGap;
  }

  bool any_grew = false;
  for (const auto& a : out.controls) any_grew = any_grew || a.height > a.control->Height();
  if (!any_grew) {
    // Nothing grew, so nothing moves: the common case of a detail line.
    out.height = section.Height();
    if (section.CanShrink()) {
      float bottom = 0;
      for (const auto& a : out.controls) bottom = std::max(bottom, a.top + a.height);
      out.height = std::min(out.height, bottom);
    }
    return out;
  }

  // Push every control down by the growth of the controls that end above it, in top order, so a
  // growing memo moves the fields beneath it and leaves the ones beside it alone.
  std::vector<std::size_t> order(out.controls.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t x, std::size_t y) {
    return out.controls[x].control->Top() < out.controls[y].control->Top();
  });
  std::vector<float> push(out.controls.size(), 0.0f);
  float extra = 0;
  for (std::size_t oi = 0; oi < order.size(); ++oi) {
    std::size_t i = order[oi];
    const Control& ci = *out.controls[i].control;
    float offset = 0;
    for (std::size_t oj = 0; oj < oi; ++oj) {
      std::size_t j = order[oj];
      const Control& cj = *out.controls[j].control;
      if (cj.Top() + cj.Height() <= ci.Top() + 0.5f) {
        offset = std::max(offset, push[j] + std::max(0.0f, out.controls[j].height - cj.Height()));
      }
    }
    push[i] = offset;
    out.controls[i].top += offset;
    extra = std::max(extra, offset + out.controls[i].height - ci.Height());
  }
  out.height = section.Height() + std::max(0.0f, extra);
  if (section.CanShrink()) {
    float bottom = 0;
    for (const auto& a : out.controls) bottom = std::max(bottom, a.top + a.height);
    out.height = std::min(out.height, bottom);
  }
  return out;
}

void EmitItems(const Section& section, const Arrangement& arrangement, float from, float to,
               float x0, bool shade, float shade_width, const LateTextFor& late, Band& band) {
  if (shade && section.BackStyle() == 1 && band.height > 0) {
    RectItem r;
    r.left = x0;
    r.top = 0;
    r.width = shade_width;
    r.height = band.height;
    r.filled = true;
    r.fill = ToColor(section.BackColor());
    band.items.emplace_back(r);
  }
  for (const ArrangedControl& a : arrangement.controls) {
    if (a.top < from - 0.5f || a.top >= to - 0.5f) continue;
    const Control& c = *a.control;
    float left = x0 + c.Left();
    float top = a.top - from;
    switch (c.Class()) {
      case ControlClass::Line:
        band.items.emplace_back(
            Rule(left, top, left + c.Width(), top + c.Height(), ToColor(c.ForeColor())));
        continue;
      case ControlClass::Shape: {
        RectItem r;
        r.left = left;
        r.top = top;
        r.width = c.Width();
        r.height = a.height;
        r.stroked = true;
        r.stroke = ToColor(c.ForeColor());
        band.items.emplace_back(r);
        continue;
      }
      case ControlClass::Chart:
        for (PageItem item : a.chart) {
          std::visit(
              [left, top](auto& it) {
                using T = std::decay_t<decltype(it)>;
                if constexpr (std::is_same_v<T, LineItem>) {
                  it.x1 += left;
                  it.x2 += left;
                  it.y1 += top;
                  it.y2 += top;
                } else {
                  it.left += left;
                  it.top += top;
                }
              },
              item);
          band.items.push_back(std::move(item));
        }
        continue;
      case ControlClass::Subreport:
      case ControlClass::PageBreak:
        continue;
      default:
        break;
    }
    float text_left = left;
    float text_width = c.Width();
    if (c.Class() == ControlClass::CheckBox) {
      RectItem box;
      box.left = left;
      box.top = top + std::max(0.0f, (a.line_height - kCheckBoxSize) / 2);
      box.width = kCheckBoxSize;
      box.height = kCheckBoxSize;
      box.stroked = true;
      band.items.emplace_back(box);
      bool checked = false;
      try {
        checked = !c.DataValue().IsNull() && c.DataValue().ToBool();
      } catch (const std::exception&) {
        checked = false;
      }
      if (checked) {
        band.items.emplace_back(
            Rule(box.left, box.top, box.left + kCheckBoxSize, box.top + kCheckBoxSize));
        band.items.emplace_back(
            Rule(box.left, box.top + kCheckBoxSize, box.left + kCheckBoxSize, box.top));
      }
      text_left += kCheckBoxSize + 60;
      text_width -= kCheckBoxSize + 60;
    }
    FontSpec font = ToFontSpec(c.Font());
    if (a.font_size > 0) font.size = a.font_size;
    auto late_text = late ? late(c) : std::function<std::string(int)>();
    if (late_text && a.lines.empty()) {
      band.items.emplace_back(TextRun{text_left,
                                      top,
                                      text_width,
                                      a.line_height,
                                      {},
                                      font,
                                      ToAlign(c.Alignment()),
                                      ToColor(c.ForeColor())});
      band.late.push_back(LateText{band.items.size() - 1, late_text});
    }
    for (std::size_t i = 0; i < a.lines.size(); ++i) {
      band.items.emplace_back(TextRun{
          text_left, top + a.text_offset + a.baseline_shift + a.line_height * static_cast<float>(i),
          text_width, a.line_height, a.lines[i], font, ToAlign(c.Alignment()),
          ToColor(c.ForeColor()), i == 0 ? a.fit : Fit::Whole, c.Link()});
      if (late_text && i == 0) band.late.push_back(LateText{band.items.size() - 1, late_text});
    }
    AddRule(band, left, left + c.Width(), top, c.Border().TopStyle);
    AddRule(band, left, left + c.Width(), top + (a.rule_below >= 0 ? a.rule_below : a.height),
            c.Border().BottomStyle);
    if (c.Border().LeftStyle != 0) band.items.emplace_back(Rule(left, top, left, top + a.height));
    if (c.Border().RightStyle != 0) {
      band.items.emplace_back(Rule(left + c.Width(), top, left + c.Width(), top + a.height));
    }
  }
}

DataRow MakeDataRow(const Section& section, const Arrangement& arrangement, RowKind kind, int level,
                    float x0) {
  DataRow row;
  row.kind = kind;
  row.level = level;
  row.section = section.Name();
  struct LabelAt {
    float left;
    float width;
    std::string name;
    std::string caption;
  };
  std::vector<LabelAt> labels;
  // The cells left to right: the fields are put in that order first, and copied once.
  std::vector<const Control*> fields;
  for (const ArrangedControl& a : arrangement.controls) {
    const Control& c = *a.control;
    if (c.Class() == ControlClass::Label) {
      labels.push_back({c.Left(), c.Width(), c.Name(), c.Caption()});
    } else if ((c.Class() == ControlClass::Field || c.Class() == ControlClass::CheckBox) &&
               c.Width() > 0) {
      fields.push_back(&c);
    }
  }
  std::stable_sort(fields.begin(), fields.end(), [x0](const Control* a, const Control* b) {
    return x0 + a->Left() < x0 + b->Left();
  });
  row.cells.reserve(fields.size());
  for (const Control* c : fields) {
    row.cells.push_back(DataCell{c->Name(), x0 + c->Left(), c->Width(), c->DataValue(), c->Text(),
                                 c->OutputFormat()});
  }
  std::stable_sort(labels.begin(), labels.end(),
                   [](const LabelAt& a, const LabelAt& b) { return a.left < b.left; });
  for (LabelAt& l : labels) {
    row.labels.push_back(std::move(l.caption));
    row.label_names.push_back(std::move(l.name));
    row.label_spans.emplace_back(x0 + l.left, l.width);
  }
  return row;
}

}  // namespace trellin::engine
