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
// Without TRELLIN_LEDGER_BENCH_DB the scale-20 company is built once (about a minute) in the
// temporary folder, the file the ledger statements' benchmark uses too.
//
// Counters: pages, pages_per_s, queries (sent by the designer), queries_ms (those queries alone,
// translated beforehand and stepped to their last row in SQLite), ratio (run over queries_ms,
// both wall-clock) and peak_rss_MB.
//
// Measured once, release build, on a two-core machine shared with four builds (load 7 to 13):
// LedgerAllToPdf 14,665 pages in 195 s (98 s of processor), 75 pages a second, peak 25 MB: the
// page target is missed, and the PDF writing, not the report, takes the time (the same run into
// the dropping sink takes 20 s). LedgerAllToSink 19.7 s (12.6 s of processor) against 7.9 s of
// its 10,401 queries alone: ratio 2.5. LedgerOutstanding at 30 June 2025: 634,383 queries in
// 60 s (36 s of processor), 95 microseconds a query, peak 33 MB.

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/demo/DemoCompany.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "platform/sql/Translate.h"
#include "reports/receivables/ardscrLedger.h"

namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

class NullSink : public trellin::engine::PageSink {
 public:
  void Begin(const trellin::engine::DocumentInfo&) override {}
  void AddPage(const trellin::engine::Page&) override { ++pages; }
  void End() override {}
  void Abort() override {}
  int pages = 0;
};

std::string CompanyPath() {
  if (const char* given = std::getenv("TRELLIN_LEDGER_BENCH_DB")) return given;
  const std::string path = (fs::temp_directory_path() / "trellin-ledger-bench-20.db").string();
  if (!fs::exists(path)) {
    trellin::demo::DemoOptions options;
    options.scale = 20;
    options.path = path;
    trellin::demo::BuildDemoCompany(options);
  }
  return path;
}

trellin::host::ReportService& Service() {
  static std::unique_ptr<trellin::host::ReportService> service =
      trellin::host::ReportService::Open(CompanyPath());
  return *service;
}

double PeakRssMb() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

double Ms(Clock::time_point since) {
  return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

struct SinkRun {
  int pages = 0;
  double ms = 0;
  std::int64_t sent = 0;  // queries the designer sent
  std::vector<std::string> queries;
};

// Runs LedgerAR once into a sink that drops its pages; `keep_queries` records what it sent.
SinkRun RunToSink(const std::vector<std::string>& assignments, bool keep_queries) {
  trellin::host::ReportService& service = Service();
  trellin::DesignerPtr designer = trellin::host::OpenReport(service, "LedgerAR");
  trellin::host::ParameterDialogue dialogue(
      designer->TLReport()->Parameters(), service.DatabasePtr(),
      [&service](const trellin::Variant& e, const trellin::Parameters& p) {
        return service.Reports().InterpretDate(e, &p);
      },
      &service.BusinessLayer().Utilities().RangeBuilder());
  for (const std::string& a : assignments) dialogue.SetFromAssignment(a);
  if (!dialogue.Validate()) throw std::runtime_error(dialogue.Errors().front());
  SinkRun run;
  auto ledger = std::dynamic_pointer_cast<trellin::ardscrLedger>(designer);
  ledger->SetQueryLog([&](const std::string& sql) {
    ++run.sent;
    if (keep_queries) run.queries.push_back(sql);
  });
  NullSink sink;
  const auto start = Clock::now();
  {
    trellin::RunSnapshot snapshot(service.Database());
    trellin::engine::RunReport(*designer, sink);
  }
  run.ms = Ms(start);
  run.pages = sink.pages;
  if (!designer->TLReport()->Errors().empty()) {
    throw std::runtime_error(designer->TLReport()->Errors().front().message);
  }
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);
  return run;
}

// The queries' own time: translated first (untimed), then each prepared and stepped to its
// last row on a connection of its own.
double QueriesAloneMs(const std::vector<std::string>& queries) {
  trellin::host::ReportService& service = Service();
  std::vector<std::string> texts;
  texts.reserve(queries.size());
  for (const std::string& jet : queries) {
    texts.push_back(trellin::sql::Translate(jet, service.Database().Catalog()).sqlite);
  }
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(CompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open the company file");
  }
  const auto start = Clock::now();
  for (const std::string& text : texts) {
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, text.c_str(), static_cast<int>(text.size()), &stmt, nullptr);
    while (sqlite3_step(stmt) == SQLITE_ROW) benchmark::DoNotOptimize(sqlite3_column_count(stmt));
    sqlite3_finalize(stmt);
  }
  const double ms = Ms(start);
  sqlite3_close(db);
  return ms;
}

void LedgerAllToPdf(benchmark::State& state) {
  trellin::host::ReportService& service = Service();
  const fs::path out = fs::temp_directory_path() / "trellin-ledger-bench.pdf";
  int pages = 0;
  double ms = 0;
  for (auto _ : state) {
    trellin::host::RunRequest request;
    request.key = "LedgerAR";
    request.assignments = {"Period=ALL"};
    request.output = out;
    const auto start = Clock::now();
    trellin::host::RunResult result = trellin::host::RunReportToFile(service, request);
    ms += Ms(start);
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

void LedgerAllToSink(benchmark::State& state) {
  SinkRun run;
  double ms = 0;
  for (auto _ : state) {
    run = RunToSink({"Period=ALL"}, true);
    ms += run.ms;
  }
  ms /= static_cast<double>(state.iterations());
  const double queries_ms = QueriesAloneMs(run.queries);
  state.counters["pages"] = run.pages;
  state.counters["queries"] = static_cast<double>(run.queries.size());
  state.counters["queries_ms"] = queries_ms;
  state.counters["ratio"] = ms / queries_ms;
  state.counters["peak_rss_MB"] = PeakRssMb();
}

void LedgerOutstanding(benchmark::State& state) {
  SinkRun run;
  double ms = 0;
  for (auto _ : state) {
    run = RunToSink({"Period=Outstanding", "DateAsAt=2025-06-30"}, false);
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
