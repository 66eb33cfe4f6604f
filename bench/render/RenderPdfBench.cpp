// PDF output speed and memory on a long ledger: pages of about sixty text runs, a few rules and
// shading bands, streamed to a file. Reports pages per second and the peak resident memory after
// the run; memory must not grow with the page count.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "platform/render/Render.h"

namespace {

using namespace trellin;

engine::TextRun Run(float left, float top, float width, std::string text, engine::Align align,
                    float size = 9, bool bold = false) {
  engine::TextRun run;
  run.left = left;
  run.top = top;
  run.width = width;
  run.height = size * 23;
  run.text = std::move(text);
  run.font.size = size;
  run.font.bold = bold;
  run.align = align;
  return run;
}

std::string Amount(long cents) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%ld.%02ld", cents / 100, cents % 100);
  return buffer;
}

// A ledger page with its own numbers, so no two pages shape the same text.
engine::Page LedgerPage(int number) {
  engine::Page page;
  page.number = number;
  page.width = 12240;
  page.height = 15840;
  auto& items = page.items;
  items.push_back(Run(1440, 720, 4000, "Harbour Supplies Ltd", engine::Align::Left, 10, true));
  items.push_back(Run(1440, 720, 9360, "Customer Ledger", engine::Align::Center, 14, true));
  items.push_back(Run(7800, 720, 3000, "Page " + std::to_string(number), engine::Align::Right));
  items.push_back(
      Run(1440, 1080, 9360, "For the period 1/07/2024 to 30/06/2025", engine::Align::Center));
  const float lefts[] = {1440, 2500, 3650, 6600, 8000, 9400};
  const float widths[] = {1000, 1100, 2900, 1350, 1350, 1400};
  const char* captions[] = {"Date", "Reference", "Description", "Debit", "Credit", "Balance"};
  for (int c = 0; c < 6; ++c) {
    items.push_back(Run(lefts[c], 1500, widths[c], captions[c],
                        c < 3 ? engine::Align::Left : engine::Align::Right, 9, true));
  }
  items.push_back(engine::LineItem{1440, 1740, 10800, 1740, 20, {}});
  long balance = number * 7919L;
  float top = 1900;
  for (int row = 0; row < 8; ++row, top += 240) {
    if (row % 2 == 1) {
      engine::RectItem band;
      band.left = 1440, band.top = top, band.width = 9360, band.height = 240;
      band.filled = true, band.fill = {0xE8, 0xEC, 0xF2};
      items.push_back(band);
    }
    const long cents = (number * 131L + row * 977L) % 250000 + 100;
    balance += cents;
    const std::string values[] = {std::to_string(1 + (number + row) % 28) + "/07/2024",
                                  "IN" + std::to_string(10000 + number * 8 + row),
                                  row % 2 ? "Payment, thank you" : "Invoice - timber and fixings",
                                  Amount(cents),
                                  "",
                                  Amount(balance)};
    for (int c = 0; c < 6; ++c) {
      items.push_back(Run(lefts[c], top + 5, widths[c], values[c],
                          c < 3 ? engine::Align::Left : engine::Align::Right));
    }
  }
  items.push_back(engine::LineItem{6600, top + 60, 10800, top + 60, 15, {}});
  items.push_back(Run(3650, top + 100, 2900, "Total for page", engine::Align::Left, 9, true));
  items.push_back(engine::LineItem{6600, top + 350, 10800, top + 350, 15, {}});
  items.push_back(engine::LineItem{6600, top + 390, 10800, top + 390, 15, {}});
  items.push_back(Run(1440, 14940, 4000, "Printed 21/11/2026 9:14 am", engine::Align::Left, 8));
  page.bookmarks.push_back({{"Customer " + std::to_string(number / 40)}, 1900});
  return page;
}

long PeakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

void BM_LedgerToPdf(benchmark::State& state) {
  const int pages = static_cast<int>(state.range(0));
  const auto path = std::filesystem::temp_directory_path() / "trellin-render-bench.pdf";
  int runs = 0;
  const auto start = std::chrono::steady_clock::now();
  for (auto _ : state) {
    auto sink = render::MakeSink(render::Format::Pdf, path);
    engine::DocumentInfo info;
    info.title = "Customer Ledger";
    info.page_width = 12240;
    info.page_height = 15840;
    sink->Begin(info);
    for (int n = 1; n <= pages; ++n) sink->AddPage(LedgerPage(n));
    sink->End();
    ++runs;
  }
  const double wall =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  // The rate counter divides by processor time; on a shared machine the wall-clock rate is lower.
  state.counters["pages_per_s"] =
      benchmark::Counter(static_cast<double>(pages) * runs, benchmark::Counter::kIsRate);
  state.counters["wall_pages_per_s"] = static_cast<double>(pages) * runs / wall;
  state.counters["peak_rss_MB"] = static_cast<double>(PeakKilobytes()) / 1024.0;
  state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1048576.0;
  std::filesystem::remove(path);
}

BENCHMARK(BM_LedgerToPdf)->Arg(1000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
