// "AgedOverdueAR" on the scale-20 demo company (about a million sub-ledger documents), every
// customer, back-dated at a past month end, into a sink that drops pages:
//   AgedBackDatedToSink     beside its own queries (the main query and, for each party, the
//                           list of documents processed after the date and their allocations,
//                           as the designer sent them) run alone in SQLite. Target: within 1.5
//                           times their time.
//
//   receivables_bench --benchmark_filter=Aged
//
// Counters: MeasureReport's (bench/support/BenchCompany.h).
//
// What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include "bench/support/BenchCompany.h"

namespace {

void AgedBackDatedToSink(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "AgedOverdueAR",
                                {"BackDate=true", "DateAsAt=2025-06-30", "Frequency=30 Days"},
                                {.pdf = false});
}

BENCHMARK(AgedBackDatedToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
