// "StatementAR" on the scale-20 demo company, every customer, balance forward at the company's
// present:
//   StatementToPdf          to a PDF file. Targets: 500 pages a second or more, peak memory under
//                           150 MB (run it alone for a clean peak).
//   StatementToSink         into a sink that drops pages, beside its own queries (the customers',
//                           each customer's balance, movement, ageing and lines, as the designer
//                           sent them) run alone in SQLite. Target: within 2 times their time.
//
//   receivables_bench --benchmark_filter=StatementToPdf      one at a time, for its own peak
//
// Counters as the ledger's (LedgerBench.cpp). What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"
#include "platform/host/run/RunReport.h"

namespace {

namespace fs = std::filesystem;

void StatementToPdf(benchmark::State& state) {
  trellin::host::ReportService& service = trellin::bench::Service();
  const fs::path out = fs::temp_directory_path() / "trellin-statement-bench.pdf";
  int pages = 0;
  double ms = 0;
  for (auto _ : state) {
    trellin::host::RunRequest request;
    request.key = "StatementAR";
    request.output = out;
    const auto start = trellin::bench::Clock::now();
    trellin::host::RunResult result = trellin::host::RunReportToFile(service, request);
    ms += trellin::bench::MsSince(start);
    if (!result.errors.empty()) throw std::runtime_error(result.errors.front().message);
    pages = result.pages;
  }
  ms /= static_cast<double>(state.iterations());
  state.counters["pages"] = pages;
  state.counters["pages_per_s"] = pages / (ms / 1000.0);
  state.counters["pdf_MB"] = static_cast<double>(fs::file_size(out)) / (1024.0 * 1024.0);
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
  fs::remove(out);
}

void StatementToSink(benchmark::State& state) {
  trellin::bench::SinkRun run;
  double ms = 0;
  for (auto _ : state) {
    run = trellin::bench::RunToSink("StatementAR", {}, true);
    ms += run.ms;
  }
  ms /= static_cast<double>(state.iterations());
  const trellin::bench::AloneTime alone = trellin::bench::QueriesAlone(run.queries);
  state.counters["pages"] = run.pages;
  state.counters["queries"] = static_cast<double>(run.queries.size());
  state.counters["queries_ms"] = alone.ms;
  state.counters["ratio"] = ms / alone.ms;
  state.counters["cpu_ms"] = run.cpu_ms;
  state.counters["queries_cpu_ms"] = alone.cpu_ms;
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

BENCHMARK(StatementToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(StatementToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
