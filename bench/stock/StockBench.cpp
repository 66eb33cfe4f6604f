// The stock reports on the scale-20 demo company (about 1.2 million stock lines), every item,
// into a sink that drops pages:
//   StatusAllItems   "StockStatus" as at the present, beside its own grouped query run alone in
//                    SQLite. Target: within 1.5 times the query's time.
//   LevelAllOptions  "StockLevel" with every option, beside the business layer's stock level
//                    look-ups alone (the object made and loaded for each item). Target: within 2
//                    times their time.
//
//   stock_bench --benchmark_filter=StatusAllItems       one at a time, for its own peak
//   TRELLIN_LEDGER_BENCH_DB=path stock_bench             on a company file already built
//
// Without TRELLIN_LEDGER_BENCH_DB the scale-20 company is built once (about a minute) in the
// temporary folder, the file the ledger benchmarks use too.
//
// Counters: rows, report_ms, alone_ms (the query, or the look-ups, alone), ratio (report over
// alone, both wall-clock) and peak_rss_MB.

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

#include "core/TrellinReportGlobals.h"
#include "platform/demo/DemoCompany.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "platform/sql/Translate.h"
#include "reports/stock/arscStatusReport.h"

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

struct Run {
  double ms = 0;
  std::int64_t rows = 0;
  std::string sql;
};

// Runs `key` once into a sink that drops its pages, and gives the designer's query.
Run RunToSink(const std::string& key, const std::vector<std::string>& assignments) {
  trellin::host::ReportService& service = Service();
  trellin::DesignerPtr designer = trellin::host::OpenReport(service, key);
  trellin::host::ParameterDialogue dialogue(
      designer->TLReport()->Parameters(), service.DatabasePtr(),
      [&service](const trellin::Variant& e, const trellin::Parameters& p) {
        return service.Reports().InterpretDate(e, &p);
      },
      &service.BusinessLayer().Utilities().RangeBuilder());
  for (const std::string& a : assignments) dialogue.SetFromAssignment(a);
  if (!dialogue.Validate()) throw std::runtime_error(dialogue.Errors().front());
  NullSink sink;
  Run run;
  const auto start = Clock::now();
  {
    trellin::RunSnapshot snapshot(service.Database());
    trellin::engine::RunReport(*designer, sink);
  }
  run.ms = Ms(start);
  if (!designer->TLReport()->Errors().empty()) {
    throw std::runtime_error(designer->TLReport()->Errors().front().message);
  }
  if (auto status = std::dynamic_pointer_cast<trellin::arscStatusReport>(designer)) {
    run.sql = status->SQL();
  }
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);
  return run;
}

// The query's own time: translated first (untimed), then stepped to its last row.
double QueryAloneMs(const std::string& jet, std::int64_t& rows) {
  const std::string text = trellin::sql::Translate(jet, Service().Database().Catalog()).sqlite;
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(CompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open the company file");
  }
  const auto start = Clock::now();
  sqlite3_stmt* stmt = nullptr;
  sqlite3_prepare_v2(db, text.c_str(), static_cast<int>(text.size()), &stmt, nullptr);
  rows = 0;
  while (sqlite3_step(stmt) == SQLITE_ROW) ++rows;
  sqlite3_finalize(stmt);
  const double ms = Ms(start);
  sqlite3_close(db);
  return ms;
}

void StatusAllItems(benchmark::State& state) {
  Run run;
  double ms = 0;
  for (auto _ : state) {
    run = RunToSink("StockStatus", {});
    ms += run.ms;
  }
  ms /= static_cast<double>(state.iterations());
  std::int64_t rows = 0;
  const double alone = QueryAloneMs(run.sql, rows);
  state.counters["rows"] = static_cast<double>(rows);
  state.counters["report_ms"] = ms;
  state.counters["alone_ms"] = alone;
  state.counters["ratio"] = ms / alone;
  state.counters["peak_rss_MB"] = PeakRssMb();
}

// The business layer's look-ups alone: a fresh stock level object loaded for every stock item.
double LookUpsAloneMs(std::int64_t& items) {
  trellin::host::ReportService& service = Service();
  auto rs = service.Database().Query("SELECT ItemId FROM Item WHERE Inventory In(1,2,3)");
  std::vector<std::string> codes;
  for (; !rs->Eof(); rs->MoveNext()) codes.push_back(rs->Value(0).Text());
  items = static_cast<std::int64_t>(codes.size());
  const auto start = Clock::now();
  auto objects = service.BusinessLayer().CreateObjects();
  auto levels = objects->CreateItemStockLevel();
  for (const std::string& code : codes) benchmark::DoNotOptimize(levels->Load(code, "", ""));
  return Ms(start);
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
  double ms = 0;
  for (auto _ : state) ms += RunToSink("StockLevel", every_option).ms;
  ms /= static_cast<double>(state.iterations());
  std::int64_t items = 0;
  const double alone = LookUpsAloneMs(items);
  state.counters["rows"] = static_cast<double>(items);
  state.counters["report_ms"] = ms;
  state.counters["alone_ms"] = alone;
  state.counters["ratio"] = ms / alone;
  state.counters["peak_rss_MB"] = PeakRssMb();
}

}  // namespace

BENCHMARK(StatusAllItems)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(LevelAllOptions)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
