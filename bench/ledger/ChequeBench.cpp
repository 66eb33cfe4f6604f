// "ChequeStandard" with empty WHERE text: a page for every bank entry with a party, about 25,300
// on the scale-1 demo company, each with its stub's two queries:
//   ChequesEveryEntryToPdf    to a PDF file: pages a second, and a peak memory that stays flat
//                             (the cheques stream through a forward-only cursor).
//   ChequesEveryEntryToSink   into a sink that drops pages, beside its own queries run alone.
//
//   TRELLIN_LEDGER_BENCH_DB=demo.db cheque_bench --benchmark_filter=ToPdf   one at a time
//
// Counters: MeasureReport's (bench/support/BenchCompany.h).

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

void ChequesEveryEntryToPdf(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "ChequeStandard", {}, {.sink = false});
}

void ChequesEveryEntryToSink(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "ChequeStandard", {}, {.pdf = false});
}

BENCHMARK(ChequesEveryEntryToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(ChequesEveryEntryToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
