// "LedgerAR" on the scale-20 demo company (about a million sub-ledger documents), every
// customer:
//   LedgerAllToPdf          Period "ALL" to a PDF file. Targets: 500 pages a second or more,
//                           peak memory under 150 MB (run it alone for a clean peak).
//   LedgerAllToSink         Period "ALL" into a sink that drops pages, beside its own queries
//                           (the parties' and each party's, as the designer sent them) run alone
//                           in SQLite. Target: within 2 times their time.
//   LedgerOutstanding       Period "Outstanding" at a past month end into a sink that drops
//                           pages: one allocation query per open-at-the-date transaction.
//
//   receivables_bench --benchmark_filter=LedgerAllToPdf       one at a time, for its own peak
//   TRELLIN_LEDGER_BENCH_DB=path receivables_bench            on a company file already built
//
// Without TRELLIN_LEDGER_BENCH_DB the scale-20 company is built once in the temporary folder, the
// file the ledger statements' benchmark uses too (bench/support/BenchCompany.h).
//
// Counters: MeasureReport's (bench/support/BenchCompany.h); LedgerOutstanding's own are pages,
// queries, us_per_query and peak_rss_MB.
//
// Measured once, release build, on a two-core machine shared with four builds (load 7 to 13):
// LedgerAllToPdf 14,665 pages in 195 s (98 s of processor), 75 pages a second, peak 25 MB: the
// page target is missed, and the PDF writing, not the report, takes the time (the same run into
// the dropping sink takes 20 s). LedgerAllToSink 19.7 s (12.6 s of processor) against 7.9 s of
// its 10,401 queries alone: ratio 2.5. LedgerOutstanding at 30 June 2025: 634,383 queries in
// 60 s (36 s of processor), 95 microseconds a query, peak 33 MB.

#include <benchmark/benchmark.h>

#include "bench/support/BenchCompany.h"

namespace {

using trellin::bench::PeakRssMb;

void LedgerAllToPdf(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "LedgerAR", {"Period=ALL"}, {.sink = false});
}

void LedgerAllToSink(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "LedgerAR", {"Period=ALL"}, {.pdf = false});
}

void LedgerOutstanding(benchmark::State& state) {
  trellin::bench::SinkRun run;
  double ms = 0;
  for (auto _ : state) {
    run =
        trellin::bench::RunToSink("LedgerAR", {"Period=Outstanding", "DateAsAt=2025-06-30"}, false);
    ms += run.ms;
  }
  ms /= static_cast<double>(state.iterations());
  state.counters["pages"] = run.pages;
  state.counters["queries"] = static_cast<double>(run.sent);
  state.counters["us_per_query"] = ms * 1000.0 / static_cast<double>(run.sent);
  state.counters["peak_rss_MB"] = PeakRssMb();
}

BENCHMARK(LedgerAllToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(LedgerAllToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(LedgerOutstanding)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
