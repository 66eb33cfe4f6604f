// The stock reports on the scale-20 demo company (about 1.2 million stock lines), every item,
// into a sink that drops pages:
//   StatusAllItems   "StockStatus" as at the present, beside its own grouped query run alone in
//                    SQLite. Target: within 1.5 times the query's time.
//   LevelAllOptions  "StockLevel" with every option, beside the business layer's stock level
//                    look-ups alone (the object made and loaded for each item). Target: within 2
//                    times their time.
//   MovementYear     "StockMovement" for the financial year to 31 March 2026, every item, beside
//                    every query it sent run alone. Target: within 2 times their time.
//   Trend*           "ItemSalesTrend" and "SalesTrendAR", "EOM" and "Daily", to 30 November 2025,
//                    beside their one query run alone. Target: within 1.5 times its time.
//
//   stock_bench --benchmark_filter=StatusAllItems       one at a time, for its own peak
//   TRELLIN_LEDGER_BENCH_DB=path stock_bench             on a company file already built
//
// Without TRELLIN_LEDGER_BENCH_DB the scale-20 company is built once (about a minute) in the
// temporary folder, the file the ledger benchmarks use too.
//
// Counters: rows, report_ms, alone_ms (the query, or the look-ups, alone), ratio (report over
// alone, wall-clock), the same in processor time (report_cpu_ms, alone_cpu_ms, cpu_ratio: steadier
// on a shared machine), queries_cpu_ms (every query the report sent, run alone) and peak_rss_MB.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

using trellin::bench::AloneTime;
using trellin::bench::Clock;
using trellin::bench::CpuMs;

void Report(benchmark::State& state, const trellin::bench::SinkRun& run, const AloneTime& alone,
            double rows) {
  if (rows > 0) state.counters["rows"] = rows;
  state.counters["report_ms"] = run.ms;
  state.counters["alone_ms"] = alone.ms;
  state.counters["ratio"] = run.ms / alone.ms;
  state.counters["report_cpu_ms"] = run.cpu_ms;
  state.counters["alone_cpu_ms"] = alone.cpu_ms;
  state.counters["cpu_ratio"] = run.cpu_ms / alone.cpu_ms;
  state.counters["queries"] = static_cast<double>(run.sent);
  state.counters["queries_cpu_ms"] = trellin::bench::QueriesAlone(run.queries).cpu_ms;
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

void StatusAllItems(benchmark::State& state) {
  trellin::bench::SinkRun run;
  for (auto _ : state) run = trellin::bench::RunToSink("StockStatus", {}, true);
  // The report's grouped query is the first it sends.
  const AloneTime alone = trellin::bench::QueriesAlone({run.queries.front()});
  Report(state, run, alone, 0);
}

// The business layer's look-ups alone: a fresh stock level object loaded for every stock item.
AloneTime LookUpsAlone(double& items) {
  trellin::host::ReportService& service = trellin::bench::Service();
  auto rs = service.Database().Query("SELECT ItemId FROM Item WHERE Inventory In(1,2,3)");
  std::vector<std::string> codes;
  for (; !rs->Eof(); rs->MoveNext()) codes.push_back(rs->Value(0).Text());
  items = static_cast<double>(codes.size());
  const auto start = Clock::now();
  const double cpu_start = CpuMs();
  auto objects = service.BusinessLayer().CreateObjects();
  auto levels = objects->CreateItemStockLevel();
  for (const std::string& code : codes) benchmark::DoNotOptimize(levels->Load(code, "", ""));
  return {trellin::bench::MsSince(start), CpuMs() - cpu_start};
}

void LevelAllOptions(benchmark::State& state) {
  const std::vector<std::string> every_option = {"DateAsAt=2025-11-30",
                                                 "OptionAPOpen=True",
                                                 "OptionAROpen=True",
                                                 "OptionSalesOrders=True",
                                                 "OptionSalesOrdersToSupply=True",
                                                 "OptionSalesOrdersLessHeld=True",
                                                 "OptionJobInvoices=True",
                                                 "OptionJobInvoicesToSupply=True",
                                                 "OptionOptionJobInvoicesLessHeld=True",
                                                 "OptionPurchaseOrders=True",
                                                 "OptionArrivalDate=True",
                                                 "OptionValueOnHand=True"};
  trellin::bench::SinkRun run;
  for (auto _ : state) run = trellin::bench::RunToSink("StockLevel", every_option, true);
  double items = 0;
  const AloneTime alone = LookUpsAlone(items);
  Report(state, run, alone, items);
}

void MovementYear(benchmark::State& state) {
  trellin::bench::SinkRun run;
  for (auto _ : state) {
    run = trellin::bench::RunToSink(
        "StockMovement", {"Period=Custom", "PeriodDateFrom=2025-04-01", "PeriodDateTo=2026-03-31"},
        true);
  }
  const AloneTime alone = trellin::bench::QueriesAlone(run.queries);
  Report(state, run, alone, 0);
}

// A trend ending at the company's last month end, into the dropping sink beside its query alone.
void Trend(benchmark::State& state, const std::string& key, const std::string& frequency) {
  trellin::bench::MeasureReport(state, key, {"EndDate=2025-11-30", "Frequency=" + frequency},
                                {.pdf = false, .sink = true, .queries = true, .query_repeats = 3});
}

void TrendItemsEOM(benchmark::State& state) { Trend(state, "ItemSalesTrend", "EOM"); }
void TrendItemsDaily(benchmark::State& state) { Trend(state, "ItemSalesTrend", "Daily"); }
void TrendCustomersEOM(benchmark::State& state) { Trend(state, "SalesTrendAR", "EOM"); }
void TrendCustomersDaily(benchmark::State& state) { Trend(state, "SalesTrendAR", "Daily"); }

}  // namespace

BENCHMARK(StatusAllItems)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(LevelAllOptions)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(MovementYear)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(TrendItemsEOM)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(TrendItemsDaily)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(TrendCustomersEOM)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(TrendCustomersDaily)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
