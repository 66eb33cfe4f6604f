// Charts laid out into page items: wedges in proportion from twelve o'clock, nothing drawn for a
// pie with nothing to share, round ticks in the plot's mask, category labels that never meet,
// mono series told apart by dash and marker, every text inside the chart's box, and a page cut
// that never slices a drawn shape.

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "platform/engine/Band.h"
#include "platform/engine/ChartLayout.h"
#include "platform/engine/PageBreaker.h"

namespace trellin::engine {
namespace {

constexpr float kWidth = 9000, kHeight = 4000;

std::vector<PageItem> Lay(const ChartData& chart) {
  static TextMeasure measure;
  FontSpec font;
  font.size = 8;
  return LayOutChart(chart, font, kWidth, kHeight, measure);
}

template <typename T>
std::vector<T> Of(const std::vector<PageItem>& items) {
  std::vector<T> out;
  for (const PageItem& item : items) {
    if (const auto* it = std::get_if<T>(&item)) out.push_back(*it);
  }
  return out;
}

std::vector<std::string> Texts(const std::vector<PageItem>& items) {
  std::vector<std::string> out;
  for (const TextRun& run : Of<TextRun>(items)) out.push_back(run.text);
  return out;
}

bool Has(const std::vector<std::string>& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

ChartData Pie(std::vector<double> values) {
  ChartData chart;
  chart.ChartType = ChartType::Pie;
  chart.Title = "Sales";
  for (std::size_t i = 0; i < values.size(); ++i)
    chart.RowLabels.push_back("Slice " + std::to_string(i));
  chart.SeriesCollection = {{"Sales", std::move(values)}};
  return chart;
}

TEST(ChartLayout, PieWedgesShareTheCircleClockwiseFromTwelve) {
  const struct {
    std::vector<double> values;
    std::vector<float> sweeps;  // of the wedges drawn, in order
  } cases[] = {
      {{300, 100}, {270, 90}},
      {{50, 0, -20, 50}, {180, 180}},  // nothing and less than nothing draw no wedge
      {{7}, {360}},
      {{0, 0}, {}},  // nothing to share: no wedge at all
      {{}, {}},
  };
  for (const auto& c : cases) {
    const std::vector<PageItem> items = Lay(Pie(c.values));
    std::vector<float> sweeps;
    float start = -90;
    for (const PathItem& path : Of<PathItem>(items)) {
      for (const PathStep& step : path.steps) {
        if (step.op != PathOp::Arc) continue;
        EXPECT_NEAR(step.start, start, 0.01);
        start += step.sweep;
        sweeps.push_back(step.sweep);
      }
      EXPECT_TRUE(path.filled);
    }
    ASSERT_EQ(sweeps.size(), c.sweeps.size()) << c.values.size() << " values";
    for (std::size_t i = 0; i < sweeps.size(); ++i) EXPECT_NEAR(sweeps[i], c.sweeps[i], 0.01);
    // Every label has its legend entry, whatever was drawn.
    const std::vector<std::string> texts = Texts(items);
    for (std::size_t i = 0; i < c.values.size(); ++i)
      EXPECT_TRUE(Has(texts, "Slice " + std::to_string(i)));
  }
}

TEST(ChartLayout, MonoWedgesAreGreysAndColourOnesAreNot) {
  for (bool colour : {true, false}) {
    ChartData chart = Pie({1, 2, 3, 4});
    chart.Plot.UseColour = colour;
    std::set<std::tuple<int, int, int>> fills;
    for (const PathItem& path : Of<PathItem>(Lay(chart))) {
      fills.insert({path.fill.r, path.fill.g, path.fill.b});
      EXPECT_EQ(!colour, path.fill.r == path.fill.g && path.fill.g == path.fill.b);
    }
    EXPECT_EQ(fills.size(), 4u);
  }
}

ChartData Lines(bool colour, std::vector<std::string> labels) {
  ChartData chart;
  chart.Title = "Net Profit";
  chart.Plot.UseColour = colour;
  chart.Plot.AxisFormat = "#,###,##0";
  chart.RowLabels = std::move(labels);
  const std::size_t n = chart.RowLabels.size();
  for (const char* name : {"Gross Profit", "Net Profit", "Sales"}) {
    std::vector<double> points;
    for (std::size_t i = 0; i < n; ++i) points.push_back(1000.0 * static_cast<double>(i) - 2500);
    chart.SeriesCollection.push_back({name, points});
  }
  return chart;
}

std::vector<std::string> Months(int n) {
  static const char* kMonths[] = {"Dec 2024", "Jan 2025", "Feb 2025", "Mar 2025",
                                  "Apr 2025", "May 2025", "Jun 2025", "Jul 2025",
                                  "Aug 2025", "Sep 2025", "Oct 2025", "Nov 2025"};
  return {kMonths, kMonths + n};
}

TEST(ChartLayout, LineTicksAreRoundAndLabelsNeverMeet) {
  const std::vector<PageItem> items = Lay(Lines(true, Months(12)));
  const std::vector<std::string> texts = Texts(items);
  // Points from -2,500 to 8,500: round steps of 5,000 from -5,000 to 10,000, 0 among them.
  for (const char* tick : {"-5,000", "0", "5,000", "10,000"}) EXPECT_TRUE(Has(texts, tick)) << tick;
  EXPECT_FALSE(Has(texts, "-2,500"));

  // Labels under the plot: some months may go unlabelled, but no two labels overlap.
  std::vector<std::pair<float, float>> spans;
  static TextMeasure measure;
  FontSpec font;
  font.size = 8;
  for (const TextRun& run : Of<TextRun>(items)) {
    if (run.text.find(" 20") == std::string::npos) continue;
    const float width = measure.Width(run.text, font);
    const float centre = run.left + run.width / 2;
    spans.emplace_back(centre - width / 2, centre + width / 2);
  }
  ASSERT_GE(spans.size(), 4u);
  std::sort(spans.begin(), spans.end());
  for (std::size_t i = 1; i < spans.size(); ++i) EXPECT_LT(spans[i - 1].second, spans[i].first);

  // In a narrow chart fewer labels fit.
  static TextMeasure narrow_measure;
  const std::vector<PageItem> narrow =
      LayOutChart(Lines(true, Months(12)), font, 4000, kHeight, narrow_measure);
  int labelled = 0;
  for (const std::string& text : Texts(narrow)) labelled += text.find(" 20") != std::string::npos;
  EXPECT_LT(labelled, 12);
  EXPECT_GE(labelled, 2);
}

TEST(ChartLayout, MonoSeriesDifferByDashAndMarkerAndColourOnesByColour) {
  for (bool colour : {true, false}) {
    std::set<std::vector<float>> dashes;
    std::set<std::tuple<int, int, int>> strokes;
    int lines = 0;
    for (const PathItem& path : Of<PathItem>(Lay(Lines(colour, Months(6))))) {
      if (path.filled || path.steps.size() != 6) continue;  // markers, legend samples
      ++lines;
      dashes.insert(path.dash);
      strokes.insert({path.stroke.r, path.stroke.g, path.stroke.b});
    }
    EXPECT_EQ(lines, 3);
    EXPECT_EQ(strokes.size(), 3u);
    EXPECT_EQ(dashes.size(), colour ? 1u : 3u);
  }
}

TEST(ChartLayout, EveryTextStaysInsideTheChart) {
  ChartData pie = Pie({5, 4, 3});
  pie.RowLabels = {"4000, Boat Sales and Brokerage Commission (120,000, 60.00%)", "4100, Chandlery",
                   "Other (30,000, 15.00%)"};
  pie.Title = "Sales Breakdown (1/12/2024 to 30/11/2025)";
  for (const ChartData& chart : {pie, Lines(false, Months(12)), Lines(true, {})}) {
    for (const TextRun& run : Of<TextRun>(Lay(chart))) {
      EXPECT_GE(run.left, 0) << run.text;
      EXPECT_LE(run.left + run.width, kWidth + 0.5f) << run.text;
      EXPECT_GE(run.top, 0) << run.text;
      EXPECT_LE(run.top + run.height, kHeight + 0.5f) << run.text;
    }
  }
}

TEST(ChartLayout, APageCutGoesAboveADrawnShapeRatherThanThroughIt) {
  Band band;
  band.height = kHeight;
  band.items = Lay(Pie({1, 1}));
  const std::vector<PathItem> wedges = Of<PathItem>(band.items);
  ASSERT_FALSE(wedges.empty());
  const float middle = wedges.front().top + wedges.front().height / 2;
  EXPECT_LE(FindCut(band, middle), wedges.front().top + 0.5f);
}

}  // namespace
}  // namespace trellin::engine
