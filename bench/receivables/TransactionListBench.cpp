// "TransactionListAR" on the scale-20 demo company for a year of documents (those processed from
// 1 December 2024 to 30 November 2025), with every line and allocation:
//   TransactionListYearToPdf   to a PDF file. Targets: 500 pages a second or more, peak memory
//                              under 150 MB (run it alone for a clean peak).
//   TransactionListYearToSink  into a sink that drops pages, beside its own queries (the list's
//                              and each block's lines and allocations, as the designer sent them)
//                              run alone in SQLite. Target: within 2 times their time.
//
//   receivables_bench --benchmark_filter=TransactionList
//
// Counters: MeasureReport's (bench/support/BenchCompany.h). What it measured: bench/README.md ("The
// receivables transaction list"): into the sink 0.82 times its queries alone; to PDF 403 pages a
// second at 26 MB, short of 500.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

const std::vector<std::string> kYear = {"ProcessFrom=2024-12-01", "ProcessTo=2025-11-30",
                                        "ShowFullDetail=true", "ShowAllocationDetails=true"};

void TransactionListYearToPdf(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "TransactionListAR", kYear, {.sink = false});
}

void TransactionListYearToSink(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "TransactionListAR", kYear, {.pdf = false});
}

BENCHMARK(TransactionListYearToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(TransactionListYearToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
