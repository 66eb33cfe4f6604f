// "RemittanceAP" on the scale-20 demo company: the advices of a year of supplier payments,
// 1 December 2024 to 30 November 2025 by process date, tens of thousands of pages:
//   RemittanceYearToPdf     to a PDF file. Targets: 500 pages a second or more, peak memory under
//                           150 MB (run it alone for a clean peak).
//   RemittanceYearToSink    into a sink that drops pages, beside its own queries run alone.
//
//   receivables_bench --benchmark_filter=RemittanceYearToPdf      one at a time, for its own peak
//
// Counters: MeasureReport's (bench/support/BenchCompany.h).

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

const std::vector<std::string> kYear = {"dateFrom=2024-12-01", "dateTo=2025-11-30"};

void RemittanceYearToPdf(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "RemittanceAP", kYear, {.sink = false});
}

void RemittanceYearToSink(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "RemittanceAP", kYear, {.pdf = false});
}

BENCHMARK(RemittanceYearToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(RemittanceYearToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
