#include "platform/engine/ChartLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "platform/runtime/Format.h"

namespace trellin::engine {
namespace {

constexpr float kPad = 80;          // inside the chart's box, and between its parts
constexpr float kSwatch = 160;      // a legend's colour square, and the side of a marker box
constexpr float kSampleLine = 420;  // a legend's sample of a series line
constexpr float kMarker = 50;       // half the size of a marker on a line
constexpr float kSeriesWidth = 25;  // a series line, in twips
constexpr int kTicks = 5;           // about how many steps the value axis takes

constexpr std::array<Color, 10> kColours = {{{0x1F, 0x5F, 0xA8},
                                             {0xD9, 0x5F, 0x0E},
                                             {0x2C, 0x96, 0x2C},
                                             {0xC0, 0x27, 0x2D},
                                             {0x7B, 0x4F, 0xA8},
                                             {0x8C, 0x56, 0x4B},
                                             {0xD6, 0x5D, 0xB1},
                                             {0x6B, 0x6B, 0x6B},
                                             {0xA8, 0xA1, 0x1E},
                                             {0x17, 0xA2, 0xB8}}};
// Greys far enough apart to tell side by side, darkest first.
constexpr std::array<std::uint8_t, 8> kGreys = {0x20, 0x60, 0x90, 0xB8, 0x40, 0x78, 0xA8, 0xD0};
// Dash patterns of mono series lines, in twips on and off; the first is solid.
const std::array<std::vector<float>, 6> kDashes = {
    {{}, {120, 50}, {30, 40}, {120, 40, 30, 40}, {200, 60}, {60, 60}}};
enum class Marker { Square, Circle, Triangle, Diamond, Cross, Bar };
constexpr std::array<Marker, 6> kMarkers = {Marker::Square,  Marker::Circle, Marker::Triangle,
                                            Marker::Diamond, Marker::Cross,  Marker::Bar};
constexpr Color kBlack{0, 0, 0};
constexpr Color kWhite{0xFF, 0xFF, 0xFF};
constexpr Color kGrid{0xD0, 0xD0, 0xD0};

Color SeriesColour(const ChartPlot& plot, std::size_t i) {
  if (plot.UseColour) return kColours[i % kColours.size()];
  const std::uint8_t g = kGreys[i % kGreys.size()];
  return Color{g, g, g};
}

TextRun Text(float left, float top, float width, float height, std::string text,
             const FontSpec& font, Align align) {
  TextRun run;
  run.left = left;
  run.top = top;
  run.width = width;
  run.height = height;
  run.text = std::move(text);
  run.font = font;
  run.align = align;
  return run;
}

LineItem Rule(float x1, float y1, float x2, float y2, Color colour) {
  LineItem line;
  line.x1 = x1;
  line.y1 = y1;
  line.x2 = x2;
  line.y2 = y2;
  line.color = colour;
  return line;
}

// A path whose steps are given on the chart: its box is found, and the steps moved into it.
PathItem MakePath(std::vector<PathStep> steps) {
  float x0 = 1e30f, y0 = 1e30f, x1 = -1e30f, y1 = -1e30f;
  for (const PathStep& s : steps) {
    if (s.op == PathOp::Close) continue;
    const float r = s.op == PathOp::Arc ? s.radius : 0;
    x0 = std::min(x0, s.x - r);
    y0 = std::min(y0, s.y - r);
    x1 = std::max(x1, s.x + r);
    y1 = std::max(y1, s.y + r);
  }
  PathItem path;
  if (x0 > x1) return path;
  path.left = x0;
  path.top = y0;
  path.width = x1 - x0;
  path.height = y1 - y0;
  for (PathStep& s : steps) {
    s.x -= x0;
    s.y -= y0;
  }
  path.steps = std::move(steps);
  return path;
}

PathStep Step(PathOp op, float x = 0, float y = 0) { return PathStep{op, x, y}; }

PathItem MarkerPath(Marker marker, float x, float y, Color colour) {
  const float m = kMarker;
  std::vector<PathStep> steps;
  switch (marker) {
    case Marker::Square:
      steps = {Step(PathOp::Move, x - m, y - m), Step(PathOp::Line, x + m, y - m),
               Step(PathOp::Line, x + m, y + m), Step(PathOp::Line, x - m, y + m),
               Step(PathOp::Close)};
      break;
    case Marker::Circle:
      steps = {PathStep{PathOp::Arc, x, y, m, 0, 360}, Step(PathOp::Close)};
      break;
    case Marker::Triangle:
      steps = {Step(PathOp::Move, x, y - m * 1.2f), Step(PathOp::Line, x + m * 1.1f, y + m),
               Step(PathOp::Line, x - m * 1.1f, y + m), Step(PathOp::Close)};
      break;
    case Marker::Diamond:
      steps = {Step(PathOp::Move, x, y - m * 1.3f), Step(PathOp::Line, x + m * 1.3f, y),
               Step(PathOp::Line, x, y + m * 1.3f), Step(PathOp::Line, x - m * 1.3f, y),
               Step(PathOp::Close)};
      break;
    case Marker::Cross:
      steps = {Step(PathOp::Move, x - m, y - m), Step(PathOp::Line, x + m, y + m),
               Step(PathOp::Move, x - m, y + m), Step(PathOp::Line, x + m, y - m)};
      break;
    case Marker::Bar:
      steps = {Step(PathOp::Move, x - m * 1.2f, y - m / 2),
               Step(PathOp::Line, x + m * 1.2f, y - m / 2),
               Step(PathOp::Line, x + m * 1.2f, y + m / 2),
               Step(PathOp::Line, x - m * 1.2f, y + m / 2), Step(PathOp::Close)};
      break;
  }
  PathItem path = MakePath(std::move(steps));
  path.stroke = colour;
  path.stroked = true;
  path.thickness = 20;
  if (marker != Marker::Cross) {
    path.filled = true;
    path.fill = colour;
  }
  return path;
}

// The title, wrapped over the chart's width; returns where the plot may start.
float PlaceTitle(const ChartData& chart, const FontSpec& font, float width, TextMeasure& measure,
                 std::vector<PageItem>& items) {
  if (chart.Title.empty()) return kPad;
  FontSpec title_font = font;
  title_font.size += 2;
  title_font.bold = true;
  const float line = measure.LineHeight(title_font);
  float top = kPad;
  for (std::string& text : measure.Wrap(chart.Title, title_font, width - 2 * kPad)) {
    items.emplace_back(
        Text(kPad, top, width - 2 * kPad, line, std::move(text), title_font, Align::Center));
    top += line;
  }
  return top + kPad;
}

// Legend entries one under another from (left, top), each `sample` wide before its text; the
// text wraps within `text_width`. Returns the top of each entry's first line and the bottom.
std::vector<float> PlaceLegend(const std::vector<std::string>& names, const FontSpec& font,
                               float left, float top, float sample, float text_width,
                               TextMeasure& measure, std::vector<PageItem>& items) {
  const float line = measure.LineHeight(font);
  std::vector<float> tops;
  for (const std::string& name : names) {
    tops.push_back(top);
    for (std::string& text : measure.Wrap(name, font, text_width)) {
      items.emplace_back(
          Text(left + sample + kPad, top, text_width, line, std::move(text), font, Align::Left));
      top += line;
    }
    top += line / 3;
  }
  tops.push_back(top);
  return tops;
}

float LegendTextWidth(const std::vector<std::string>& names, const FontSpec& font, float limit,
                      TextMeasure& measure) {
  float widest = 0;
  for (const std::string& name : names) widest = std::max(widest, measure.Width(name, font));
  return std::min(std::ceil(widest) + 20, limit);
}

void LayOutPie(const ChartData& chart, const FontSpec& font, float width, float height, float top,
               TextMeasure& measure, std::vector<PageItem>& items) {
  const std::vector<double> empty;
  const std::vector<double>& points =
      chart.SeriesCollection.empty() ? empty : chart.SeriesCollection.front().DataPoints;
  const float line = measure.LineHeight(font);
  const float text_width = LegendTextWidth(chart.RowLabels, font, width * 0.55f, measure);
  const float legend_width = kSwatch + kPad + text_width;
  const float legend_left = width - kPad - legend_width;
  const float room_h = height - top - kPad;
  const float diameter = std::max(0.0f, std::min(room_h, legend_left - 3 * kPad));
  const float radius = diameter / 2;
  const float cx = kPad + (legend_left - 2 * kPad) / 2;
  const float cy = top + room_h / 2;

  double total = 0;
  for (double v : points) total += std::max(v, 0.0);
  double angle = -90;
  for (std::size_t i = 0; i < points.size() && total > 0 && radius > 0; ++i) {
    if (points[i] <= 0) continue;
    const double sweep = points[i] / total * 360.0;
    std::vector<PathStep> steps;
    if (sweep < 359.99) steps.push_back(Step(PathOp::Move, cx, cy));
    steps.push_back(PathStep{PathOp::Arc, cx, cy, radius, static_cast<float>(angle),
                             static_cast<float>(sweep)});
    steps.push_back(Step(PathOp::Close));
    PathItem wedge = MakePath(std::move(steps));
    wedge.filled = true;
    wedge.fill = SeriesColour(chart.Plot, i);
    wedge.stroked = true;
    wedge.stroke = chart.Plot.UseColour ? kWhite : kBlack;
    wedge.thickness = 15;
    items.emplace_back(std::move(wedge));
    angle += sweep;
  }

  // The legend, centred down the side of the pie.
  std::vector<PageItem> legend;
  std::vector<float> tops =
      PlaceLegend(chart.RowLabels, font, 0, 0, kSwatch, text_width, measure, legend);
  const float legend_top = top + std::max(0.0f, (room_h - tops.back()) / 2);
  for (PageItem& item : legend) {
    auto& run = std::get<TextRun>(item);
    run.left += legend_left;
    run.top += legend_top;
    items.push_back(std::move(item));
  }
  for (std::size_t i = 0; i < chart.RowLabels.size(); ++i) {
    RectItem swatch;
    swatch.left = legend_left;
    swatch.top = legend_top + tops[i] + (line - kSwatch) / 2;
    swatch.width = kSwatch;
    swatch.height = kSwatch;
    swatch.filled = true;
    swatch.fill = SeriesColour(chart.Plot, i);
    swatch.stroked = true;
    swatch.stroke = kBlack;
    items.emplace_back(swatch);
  }
}

// A round step for an axis from `low` to `high` in about kTicks steps: 1, 2 or 5 times a power of
// ten.
double NiceStep(double low, double high) {
  const double raw = (high - low) / kTicks;
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  for (double m : {1.0, 2.0, 5.0}) {
    if (m * power >= raw - 1e-9 * power) return m * power;
  }
  return 10 * power;
}

std::string TickText(double value, const std::string& mask) {
  if (mask.empty()) return Variant(value).Text();
  return Format(Variant(value), mask);
}

void LayOutLines(const ChartData& chart, const FontSpec& font, float width, float height, float top,
                 TextMeasure& measure, std::vector<PageItem>& items) {
  const float line = measure.LineHeight(font);
  double low = 0, high = 0;
  for (const ChartSeries& s : chart.SeriesCollection) {
    for (double v : s.DataPoints) {
      low = std::min(low, v);
      high = std::max(high, v);
    }
  }
  if (high - low < 1e-9) high = low + 1;
  // A mask of whole numbers takes whole steps, so that no two ticks print alike.
  const bool whole =
      !chart.Plot.AxisFormat.empty() && chart.Plot.AxisFormat.find('.') == std::string::npos;
  const double step = whole ? std::max(1.0, NiceStep(low, high)) : NiceStep(low, high);
  low = std::floor(low / step + 1e-9) * step;
  high = std::ceil(high / step - 1e-9) * step;

  std::vector<std::string> ticks;
  float tick_width = 0;
  for (double v = low; v <= high + step / 2; v += step) {
    ticks.push_back(TickText(std::fabs(v) < step / 2 ? 0.0 : v, chart.Plot.AxisFormat));
    tick_width = std::max(tick_width, measure.Width(ticks.back(), font));
  }

  std::vector<std::string> names;
  for (const ChartSeries& s : chart.SeriesCollection) names.push_back(s.Name);
  const float text_width = LegendTextWidth(names, font, width * 0.3f, measure);
  const float legend_width = names.empty() ? 0 : kSampleLine + kPad + text_width;
  const float legend_left = width - kPad - legend_width;

  const float plot_left = kPad + std::ceil(tick_width) + kPad;
  const float plot_right = legend_left - 2 * kPad;
  const float plot_top = top + line / 2;
  const float plot_bottom = height - kPad - line - kPad / 2;
  if (plot_right <= plot_left || plot_bottom <= plot_top) return;
  const auto y_of = [&](double v) {
    return static_cast<float>(plot_bottom - (v - low) / (high - low) * (plot_bottom - plot_top));
  };

  // Grid and ticks, then the axes over them.
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    const double v = low + step * static_cast<double>(i);
    const float y = y_of(v);
    if (i > 0) items.emplace_back(Rule(plot_left, y, plot_right, y, kGrid));
    items.emplace_back(
        Text(kPad, y - line / 2, plot_left - 2 * kPad, line, ticks[i], font, Align::Right));
  }
  items.emplace_back(Rule(plot_left, plot_top, plot_left, plot_bottom, kBlack));
  items.emplace_back(Rule(plot_left, plot_bottom, plot_right, plot_bottom, kBlack));
  if (low < 0) items.emplace_back(Rule(plot_left, y_of(0), plot_right, y_of(0), kBlack));

  // The categories: labelled every `every` of them, so that labels stand clear of each other.
  const std::size_t n = chart.RowLabels.size();
  const float spacing = n ? (plot_right - plot_left) / static_cast<float>(n) : 0;
  const auto x_of = [&](std::size_t i) {
    return plot_left + spacing * (static_cast<float>(i) + 0.5f);
  };
  float label_width = 0;
  for (const std::string& label : chart.RowLabels) {
    label_width = std::max(label_width, measure.Width(label, font));
  }
  std::size_t every = 1;
  while (every < n && spacing * static_cast<float>(every) < label_width + kPad) ++every;
  const float slot = spacing * static_cast<float>(every);
  for (std::size_t i = 0; i < n; i += every) {
    const float x = x_of(i);
    items.emplace_back(Rule(x, plot_bottom, x, plot_bottom + kPad / 2, kBlack));
    items.emplace_back(Text(x - slot / 2, plot_bottom + kPad / 2, slot, line, chart.RowLabels[i],
                            font, Align::Center));
  }

  // The series, each a line through its points with a marker on each.
  for (std::size_t s = 0; s < chart.SeriesCollection.size(); ++s) {
    const ChartSeries& series = chart.SeriesCollection[s];
    const Color colour = SeriesColour(chart.Plot, s);
    std::vector<PathStep> steps;
    for (std::size_t i = 0; i < series.DataPoints.size() && i < n; ++i) {
      steps.push_back(
          Step(i == 0 ? PathOp::Move : PathOp::Line, x_of(i), y_of(series.DataPoints[i])));
    }
    if (steps.size() > 1) {
      PathItem path = MakePath(std::move(steps));
      path.stroked = true;
      path.stroke = colour;
      path.thickness = kSeriesWidth;
      if (!chart.Plot.UseColour) path.dash = kDashes[s % kDashes.size()];
      items.emplace_back(std::move(path));
    }
    for (std::size_t i = 0; i < series.DataPoints.size() && i < n; ++i) {
      items.emplace_back(
          MarkerPath(kMarkers[s % kMarkers.size()], x_of(i), y_of(series.DataPoints[i]), colour));
    }
  }

  // The legend: a sample of each line with its marker, and the series' name.
  std::vector<PageItem> legend;
  std::vector<float> tops =
      PlaceLegend(names, font, 0, 0, kSampleLine, text_width, measure, legend);
  const float legend_top = plot_top + std::max(0.0f, (plot_bottom - plot_top - tops.back()) / 2);
  for (PageItem& item : legend) {
    auto& run = std::get<TextRun>(item);
    run.left += legend_left;
    run.top += legend_top;
    items.push_back(std::move(item));
  }
  for (std::size_t s = 0; s < names.size(); ++s) {
    const Color colour = SeriesColour(chart.Plot, s);
    const float y = legend_top + tops[s] + line / 2;
    PathItem sample = MakePath(
        {Step(PathOp::Move, legend_left, y), Step(PathOp::Line, legend_left + kSampleLine, y)});
    sample.stroked = true;
    sample.stroke = colour;
    sample.thickness = kSeriesWidth;
    if (!chart.Plot.UseColour) sample.dash = kDashes[s % kDashes.size()];
    items.emplace_back(std::move(sample));
    items.emplace_back(
        MarkerPath(kMarkers[s % kMarkers.size()], legend_left + kSampleLine / 2, y, colour));
  }
}

}  // namespace

std::vector<PageItem> LayOutChart(const ChartData& chart, const FontSpec& font, float width,
                                  float height, TextMeasure& measure) {
  std::vector<PageItem> items;
  if (width <= 2 * kPad || height <= 2 * kPad) return items;
  const float top = PlaceTitle(chart, font, width, measure, items);
  if (chart.ChartType == ChartType::Pie) {
    LayOutPie(chart, font, width, height, top, measure, items);
  } else {
    LayOutLines(chart, font, width, height, top, measure, items);
  }
  return items;
}

}  // namespace trellin::engine
