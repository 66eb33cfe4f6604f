// "AgedOverdueAR" on the scale-20 demo company (about a million sub-ledger documents), every
// customer, back-dated at a past month end, into a sink that drops pages:
//   AgedBackDatedToSink     beside its own queries (the main query and, for each party, the
//                           list of documents processed after the date and their allocations,
//                           as the designer sent them) run alone in SQLite. Target: within 1.5
//                           times their time.
//
//   receivables_bench --benchmark_filter=Aged
//
// Counters: pages, queries, queries_ms, ratio (run over queries_ms, both wall-clock), cpu_ms and
// peak_rss_MB.
//
// What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

void AgedBackDatedToSink(benchmark::State& state) {
  trellin::bench::SinkRun run;
  double ms = 0;
  for (auto _ : state) {
    run = trellin::bench::RunToSink(
        "AgedOverdueAR", {"BackDate=true", "DateAsAt=2025-06-30", "Frequency=30 Days"}, true);
    ms += run.ms;
  }
  ms /= static_cast<double>(state.iterations());
  const double queries_ms = trellin::bench::QueriesAlone(run.queries).ms;
  state.counters["pages"] = run.pages;
  state.counters["queries"] = static_cast<double>(run.queries.size());
  state.counters["queries_ms"] = queries_ms;
  state.counters["ratio"] = ms / queries_ms;
  state.counters["cpu_ms"] = run.cpu_ms;
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

BENCHMARK(AgedBackDatedToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
