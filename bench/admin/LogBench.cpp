// "OtherPartyLog" in its full form on the scale-20 demo company, every party with notes, into a
// sink that drops its pages. Target: the run within twice the time of its own queries run alone
// (the owners' query and one notes query an owner), and its peak memory.
//
//   log_bench                       builds the company once (several minutes), then runs
//   TRELLIN_LEDGER_BENCH_DB=path    runs on a company file already built
//
// Counters: pages, owners (queries sent less the owners' one), run_ms, run_cpu, alone_ms,
// alone_cpu, run_over_alone (wall-clock), cpu_over_alone, peak_rss_MB. What it measured:
// bench/README.md.

#include <benchmark/benchmark.h>

#include <limits>
#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

void OtherPartyLogFull(benchmark::State& state) {
  const std::vector<std::string> assignments = {"NotesShowFull=True"};
  trellin::bench::SinkRun best;
  best.ms = std::numeric_limits<double>::infinity();
  for (auto _ : state) {
    trellin::bench::SinkRun run = trellin::bench::RunToSink("OtherPartyLog", assignments, true);
    if (run.ms < best.ms) best = std::move(run);
  }
  const trellin::bench::AloneTime alone = trellin::bench::QueriesAlone(best.queries, 3);
  state.counters["pages"] = best.pages;
  state.counters["owners"] = static_cast<double>(best.sent - 1);
  state.counters["run_ms"] = best.ms;
  state.counters["run_cpu"] = best.cpu_ms;
  state.counters["alone_ms"] = alone.ms;
  state.counters["alone_cpu"] = alone.cpu_ms;
  state.counters["run_over_alone"] = best.ms / alone.ms;
  state.counters["cpu_over_alone"] = best.cpu_ms / alone.cpu_ms;
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

BENCHMARK(OtherPartyLogFull)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
