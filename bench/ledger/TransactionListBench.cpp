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
// Counters: MeasureReport's (bench/support/BenchCompany.h). What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

void Lines(benchmark::State& state, const char* from, const char* to) {
  trellin::bench::MeasureReport(state, "GLTransactionList",
                                {std::string("DatedFrom=") + from, std::string("DatedTo=") + to},
                                {.queries = false});
}

void OneMonth(benchmark::State& state) { Lines(state, "2025-11-01", "2025-11-30"); }
void OneYear(benchmark::State& state) { Lines(state, "2024-12-01", "2025-11-30"); }

BENCHMARK(OneMonth)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(OneYear)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
