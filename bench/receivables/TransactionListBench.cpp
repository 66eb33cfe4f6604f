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
// Counters as the ledger's (LedgerBench.cpp). What it measured: bench/README.md ("The receivables
// transaction list"): into the sink 0.82 times its queries alone; to PDF 403 pages a second at
// 26 MB, short of 500.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"
#include "platform/host/run/RunReport.h"

namespace {

namespace fs = std::filesystem;
using trellin::bench::Clock;
using trellin::bench::MsSince;
using trellin::bench::PeakRssMb;

const std::vector<std::string> kYear = {"ProcessFrom=2024-12-01", "ProcessTo=2025-11-30",
                                        "ShowFullDetail=true", "ShowAllocationDetails=true"};

void TransactionListYearToPdf(benchmark::State& state) {
  trellin::host::ReportService& service = trellin::bench::Service();
  const fs::path out = fs::temp_directory_path() / "trellin-transaction-list-bench.pdf";
  int pages = 0;
  double ms = 0;
  for (auto _ : state) {
    trellin::host::RunRequest request;
    request.key = "TransactionListAR";
    request.assignments = kYear;
    request.output = out;
    const auto start = Clock::now();
    trellin::host::RunResult result = trellin::host::RunReportToFile(service, request);
    ms += MsSince(start);
    if (!result.errors.empty()) throw std::runtime_error(result.errors.front().message);
    pages = result.pages;
  }
  ms /= static_cast<double>(state.iterations());
  state.counters["pages"] = pages;
  state.counters["pages_per_s"] = pages / (ms / 1000.0);
  state.counters["pdf_MB"] = static_cast<double>(fs::file_size(out)) / (1024.0 * 1024.0);
  state.counters["peak_rss_MB"] = PeakRssMb();
  fs::remove(out);
}

void TransactionListYearToSink(benchmark::State& state) {
  trellin::bench::SinkRun run;
  double ms = 0;
  for (auto _ : state) {
    run = trellin::bench::RunToSink("TransactionListAR", kYear, true);
    ms += run.ms;
  }
  ms /= static_cast<double>(state.iterations());
  const double queries_ms = trellin::bench::QueriesAlone(run.queries).ms;
  state.counters["pages"] = run.pages;
  state.counters["queries"] = static_cast<double>(run.queries.size());
  state.counters["queries_ms"] = queries_ms;
  state.counters["ratio"] = ms / queries_ms;
  state.counters["cpu_ms"] = run.cpu_ms;
  state.counters["peak_rss_MB"] = PeakRssMb();
}

BENCHMARK(TransactionListYearToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(TransactionListYearToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
