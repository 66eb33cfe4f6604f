// "GLTransactionList" on the scale-20 demo company, a year of ledger lines (December 2024 to
// November 2025, about a million lines) to PDF, and a month for the memory beside it. Targets: 500
// pages a second end to end, and peak memory the same for the month as for the year: the lines
// stream and the pages leave as they are made.
//
//   transaction_list_bench                 builds the company once (several minutes), then runs
//   TRELLIN_LEDGER_BENCH_DB=path           runs on a company file already built
//
// The month runs first, so that peak_rss_MB after it is the month's own peak and after the year
// the peak of both. Each is run to PDF (the renderer's time counts) and into a sink that drops
// its pages (the list's own time).
//
// Counters: pages, pages_per_s (to PDF), pdf_ms, sink_ms, sink_cpu, pages_per_s_sink,
// peak_rss_MB. What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"
#include "platform/host/run/RunReport.h"

namespace {

namespace fs = std::filesystem;

struct PdfRun {
  int pages = 0;
  double ms = 0;
};

PdfRun RunToPdf(const std::vector<std::string>& assignments) {
  trellin::host::RunRequest request;
  request.key = "GLTransactionList";
  request.assignments = assignments;
  request.output = fs::temp_directory_path() / "trellin-transaction-list-bench.pdf";
  const auto start = trellin::bench::Clock::now();
  const trellin::host::RunResult result =
      trellin::host::RunReportToFile(trellin::bench::Service(), request);
  PdfRun run{result.pages, trellin::bench::MsSince(start)};
  if (!result.completed || !result.errors.empty()) {
    throw std::runtime_error("GLTransactionList did not run to PDF");
  }
  fs::remove(request.output);
  return run;
}

void Lines(benchmark::State& state, const char* from, const char* to) {
  const std::vector<std::string> dates = {std::string("DatedFrom=") + from,
                                          std::string("DatedTo=") + to};
  PdfRun pdf{0, std::numeric_limits<double>::infinity()};
  trellin::bench::SinkRun sink;
  sink.ms = std::numeric_limits<double>::infinity();
  for (auto _ : state) {
    const PdfRun run = RunToPdf(dates);
    if (run.ms < pdf.ms) pdf = run;
    trellin::bench::SinkRun dropped = trellin::bench::RunToSink("GLTransactionList", dates, false);
    if (dropped.ms < sink.ms) sink = std::move(dropped);
  }
  state.counters["pages"] = pdf.pages;
  state.counters["pages_per_s"] = pdf.pages / (pdf.ms / 1000.0);
  state.counters["pdf_ms"] = pdf.ms;
  state.counters["sink_ms"] = sink.ms;
  state.counters["sink_cpu"] = sink.cpu_ms;
  state.counters["pages_per_s_sink"] = sink.pages / (sink.ms / 1000.0);
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

void OneMonth(benchmark::State& state) { Lines(state, "2025-11-01", "2025-11-30"); }
void OneYear(benchmark::State& state) { Lines(state, "2024-12-01", "2025-11-30"); }

BENCHMARK(OneMonth)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(OneYear)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
