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
// Counters: MeasureReport's (bench/support/BenchCompany.h). What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include "bench/support/BenchCompany.h"

namespace {

void StatementToPdf(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "StatementAR", {}, {.sink = false});
}

void StatementToSink(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "StatementAR", {}, {.pdf = false});
}

BENCHMARK(StatementToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(StatementToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
