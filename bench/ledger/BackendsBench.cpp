// The statements and the longest ledger report on the scale-20 demo company, on a company file or
// on a PostgreSQL server: "TrialBalance" and "FinancialStatement" from 1 April to 30 November
// 2025, and "GeneralLedger" with every line of the twelve months to 30 November 2025. Each into
// a sink that drops its pages (the report's own time, the best of two runs), beside the same
// queries run alone on the same backend (once). Target: each within 1.5 times its
// queries alone on either backend.
//
//   TRELLIN_LEDGER_BENCH_DB=FILE backends_bench                          the company file
//   TRELLIN_BENCH_SERVER=postgresql://... backends_bench                 the same company, copied
//                                                                        onto a server
//
// One backend a process, so that peak_rss_MB is that backend's own. Counters: sink_ms,
// sink_cpu_ms, queries_ms, queries_cpu_ms, ratio and cpu_ratio (the run over its queries alone),
// queries (sent), pages, peak_rss_MB. What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

const std::vector<std::string> kStatementPeriod = {"FromDate=2025-04-01", "ToDate=2025-11-30"};

void Measure(benchmark::State& state, const std::string& key,
             const std::vector<std::string>& assignments) {
  trellin::bench::MeasureReport(state, key, assignments, {.pdf = false, .query_repeats = 1});
}

void TrialBalance(benchmark::State& state) { Measure(state, "TrialBalance", kStatementPeriod); }
void FinancialStatement(benchmark::State& state) {
  Measure(state, "FinancialStatement", kStatementPeriod);
}
void GeneralLedgerTwelveMonths(benchmark::State& state) {
  Measure(state, "GeneralLedger", {"Period=Custom", "FromDate=2024-12-01", "ToDate=2025-11-30"});
}

BENCHMARK(TrialBalance)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);
BENCHMARK(FinancialStatement)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);
BENCHMARK(GeneralLedgerTwelveMonths)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
