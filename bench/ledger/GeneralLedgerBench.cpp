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
// Counters: MeasureReport's (bench/support/BenchCompany.h); ratio and cpu_ratio are the targets'
// measure. What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

void Ledger(benchmark::State& state, const char* from, const char* to) {
  trellin::bench::MeasureReport(
      state, "GeneralLedger",
      {"Period=Custom", std::string("FromDate=") + from, std::string("ToDate=") + to},
      {.query_repeats = 2});
}

void OneMonth(benchmark::State& state) { Ledger(state, "2025-11-01", "2025-11-30"); }
void TwelveMonths(benchmark::State& state) { Ledger(state, "2024-12-01", "2025-11-30"); }

BENCHMARK(OneMonth)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(TwelveMonths)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
