// The sales analysis on the scale-20 demo company, a year to 30 November 2025, into a sink that
// drops its pages, beside its own queries run alone in SQLite:
//   SalesAnalysisYearSummary      customers, summary (the aggregate query alone). Target: within
//                                 1.5 times its queries.
//   SalesAnalysisYearLines        customers with their lines (the aggregate query and each
//                                 customer's lines query). Target: within 2 times its queries.
//   ItemSalesAnalysisYearSummary  the same for items.
//   ItemSalesAnalysisYearLines
//
//   receivables_bench --benchmark_filter=SalesAnalysis
//
// Counters: MeasureReport's (bench/support/BenchCompany.h). What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include "bench/support/BenchCompany.h"

namespace {

const std::vector<std::string> kYear = {"Period=Custom", "PeriodDateFrom=2024-12-01",
                                        "PeriodDateTo=2025-11-30"};

std::vector<std::string> Year(const char* summary) {
  std::vector<std::string> values = kYear;
  values.emplace_back(summary);
  return values;
}

void SalesAnalysisYearSummary(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "SalesAnalysisAR", Year("Summary=True"), {.pdf = false});
}

void SalesAnalysisYearLines(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "SalesAnalysisAR", Year("Summary=False"), {.pdf = false});
}

void ItemSalesAnalysisYearSummary(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "ItemSalesAnalysis", Year("Summary=True"), {.pdf = false});
}

void ItemSalesAnalysisYearLines(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "ItemSalesAnalysis", Year("Summary=False"), {.pdf = false});
}

BENCHMARK(SalesAnalysisYearSummary)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(SalesAnalysisYearLines)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(ItemSalesAnalysisYearSummary)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);
BENCHMARK(ItemSalesAnalysisYearLines)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
