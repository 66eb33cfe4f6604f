// "GeneralLedger" with its lines on the scale-20 demo company, to PDF: one month (November 2025)
// and twelve (December 2024 to November 2025). Targets: 500 pages a second end to end, peak
// memory the same for one month as for twelve, and the whole run within 1.5 times its queries'
// own time (the chart, the column families, the count of an account whose figures net to
// nothing, and every account's line query, all rows read).
//
//   general_ledger_bench                   builds the company once (several minutes), then runs
//   TRELLIN_LEDGER_BENCH_DB=path           runs on a company file already built
//
// The month runs first, so that peak_rss_MB after it is the month's own peak and after the
// twelve months the peak of both. Each is run to PDF (the renderer's time counts) and into a
// sink that drops its pages (the report's own time).
//
// Counters: pages, pages_per_s (to PDF), pdf_ms, sink_ms, queries, queries_ms (alone),
// x_queries (the sink run over its queries), x_queries_pdf (the PDF run over them), the same in
// processor time, peak_rss_MB. What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <limits>
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
  request.key = "GeneralLedger";
  request.assignments = assignments;
  request.output = fs::temp_directory_path() / "trellin-general-ledger-bench.pdf";
  const auto start = trellin::bench::Clock::now();
  const trellin::host::RunResult result =
      trellin::host::RunReportToFile(trellin::bench::Service(), request);
  PdfRun run{result.pages, trellin::bench::MsSince(start)};
  if (!result.completed || !result.errors.empty()) {
    throw std::runtime_error("GeneralLedger did not run to PDF");
  }
  fs::remove(request.output);
  return run;
}

void Ledger(benchmark::State& state, const char* from, const char* to) {
  const std::vector<std::string> period = {"Period=Custom", std::string("FromDate=") + from,
                                           std::string("ToDate=") + to};
  PdfRun pdf{0, std::numeric_limits<double>::infinity()};
  trellin::bench::SinkRun sink;
  sink.ms = std::numeric_limits<double>::infinity();
  for (auto _ : state) {
    const PdfRun run = RunToPdf(period);
    if (run.ms < pdf.ms) pdf = run;
    trellin::bench::SinkRun dropped = trellin::bench::RunToSink("GeneralLedger", period, true);
    if (dropped.ms < sink.ms) sink = std::move(dropped);
  }
  const trellin::bench::AloneTime queries = trellin::bench::QueriesAlone(sink.queries, 2);
  state.counters["pages"] = pdf.pages;
  state.counters["pages_per_s"] = pdf.pages / (pdf.ms / 1000.0);
  state.counters["pdf_ms"] = pdf.ms;
  state.counters["sink_ms"] = sink.ms;
  state.counters["sink_cpu"] = sink.cpu_ms;
  state.counters["queries"] = static_cast<double>(sink.sent);
  state.counters["queries_ms"] = queries.ms;
  state.counters["queries_cpu"] = queries.cpu_ms;
  state.counters["x_queries"] = sink.ms / queries.ms;
  state.counters["x_queries_cpu"] = sink.cpu_ms / queries.cpu_ms;
  state.counters["x_queries_pdf"] = pdf.ms / queries.ms;
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

void OneMonth(benchmark::State& state) { Ledger(state, "2025-11-01", "2025-11-30"); }
void TwelveMonths(benchmark::State& state) { Ledger(state, "2024-12-01", "2025-11-30"); }

BENCHMARK(OneMonth)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(TwelveMonths)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
