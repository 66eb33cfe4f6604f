// The job summary on the scale-20 demo company (about 3,600 jobs), into a sink that drops pages:
//   SummaryEveryLine  "JobSummary" with the Actual, Open and Budget lines (so Total and Variance
//                     too), every job, beside every query it sent run alone: the job list, and for
//                     each job its load (the job, its posted lines, its open lines, its budget) and
//                     the open charge lines and open purchases. Target: within 2 times their time.
//
//   TRELLIN_LEDGER_BENCH_DB=path jobs_bench   on a company file already built
//
// Counters as MeasureReport sets them: sink_ms, queries_ms, ratio (sink over queries alone,
// wall-clock), cpu_ratio (the same in processor time), queries, peak_rss_MB.

#include <benchmark/benchmark.h>

#include "bench/support/BenchCompany.h"

namespace {

void SummaryEveryLine(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "JobSummary",
                                {"ShowActual=true", "ShowOpen=true", "ShowBudget=true"},
                                {.pdf = false, .query_repeats = 3});
}

// The best of three runs beside the best of three of its queries: one run of either varies by a
// half on a shared machine.
BENCHMARK(SummaryEveryLine)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
