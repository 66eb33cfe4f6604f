// "TrialBalance" and "FinancialStatement" on the scale-20 demo company: the whole run (chart
// walk, grouped queries, layout, pages into a sink that drops them), beside the time of the
// same grouped queries run alone against the company file. Target: the report within 1.5
// times its queries' own time.
//
//   ledger_bench                          builds the company once (several minutes), then runs
//   TRELLIN_LEDGER_BENCH_DB=path          runs on a company file already built
//
// Counters: queries_ms (the statement's queries alone: its column families, the chart and the
// footer's cross-check, every row read), ratio (report time over queries time, both wall-clock)
// and peak_rss_MB. Measured on a shared two-core machine, release build, warm cache, 4.8 million
// ledger lines: TrialBalance 2.8 s of processor time per run, ratio 0.96 to 1.3 between runs;
// FinancialStatement 4.5 s, ratio 0.73 to 1.01; peak RSS 20 MB. Building the company in the same
// process raises the peak to the generator's.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/demo/DemoCompany.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "reports/ledger/arglAccountReports.h"

namespace {

using Clock = std::chrono::steady_clock;

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
  const std::string path =
      (std::filesystem::temp_directory_path() / "trellin-ledger-bench-20.db").string();
  if (!std::filesystem::exists(path)) {
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

// Runs the statement once; returns the queries it opened.
std::vector<std::string> RunOnce(const std::string& key) {
  trellin::host::ReportService& service = Service();
  trellin::DesignerPtr designer = trellin::host::OpenReport(service, key);
  trellin::host::ParameterDialogue dialogue(
      designer->TLReport()->Parameters(), service.DatabasePtr(),
      [&service](const trellin::Variant& e, const trellin::Parameters& p) {
        return service.Reports().InterpretDate(e, &p);
      },
      &service.BusinessLayer().Utilities().RangeBuilder());
  dialogue.SetFromAssignment("FromDate=2025-04-01");
  dialogue.SetFromAssignment("ToDate=2025-11-30");
  NullSink sink;
  trellin::engine::RunReport(*designer, sink);
  auto statement = std::dynamic_pointer_cast<trellin::arglAccountReports>(designer);
  std::vector<std::string> queries = statement->ValueSQL();
  queries.push_back(statement->ChartSQL());
  if (!statement->CheckSQL().empty()) queries.push_back(statement->CheckSQL());
  if (!designer->TLReport()->Errors().empty()) {
    throw std::runtime_error(designer->TLReport()->Errors().front().message);
  }
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);
  return queries;
}

double QueriesAloneMs(const std::vector<std::string>& queries) {
  trellin::Database& database = Service().Database();
  const auto start = Clock::now();
  for (const std::string& sql : queries) {
    auto rs = database.Query(sql);
    for (; !rs->Eof(); rs->MoveNext()) benchmark::DoNotOptimize(rs->Value(0));
  }
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Statement(benchmark::State& state, const std::string& key) {
  std::vector<std::string> queries;
  double report_ms = 0;
  for (auto _ : state) {
    const auto start = Clock::now();
    queries = RunOnce(key);
    report_ms += std::chrono::duration<double, std::milli>(Clock::now() - start).count();
  }
  report_ms /= static_cast<double>(state.iterations());
  double queries_ms = 0;
  for (int i = 0; i < 3; ++i) queries_ms += QueriesAloneMs(queries) / 3.0;
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["queries_ms"] = queries_ms;
  state.counters["ratio"] = report_ms / queries_ms;
  state.counters["peak_rss_MB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void TrialBalance(benchmark::State& state) { Statement(state, "TrialBalance"); }
void FinancialStatement(benchmark::State& state) { Statement(state, "FinancialStatement"); }

BENCHMARK(TrialBalance)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(FinancialStatement)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
