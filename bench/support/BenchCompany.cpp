#include "bench/support/BenchCompany.h"

#include <sqlite3.h>
#include <sys/resource.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <limits>
#include <memory>
#include <stdexcept>

#include "platform/data/postgres/PostgresDatabase.h"
#include "platform/demo/DemoCompany.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "platform/sql/Translate.h"

namespace trellin::bench {

namespace {

namespace fs = std::filesystem;

class DropSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo&) override {}
  void AddPage(const engine::Page&) override { ++pages; }
  void End() override {}
  void Abort() override {}
  int pages = 0;
};

}  // namespace

double CpuMs() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6;
}

std::string CompanyPath() {
  if (const char* given = std::getenv("TRELLIN_LEDGER_BENCH_DB")) return given;
  const std::string path = (fs::temp_directory_path() / "trellin-ledger-bench-20.db").string();
  if (!fs::exists(path)) {
    demo::DemoOptions options;
    options.scale = 20;
    options.path = path;
    demo::BuildDemoCompany(options);
  }
  return path;
}

std::string ServerUrl() {
  const char* url = std::getenv("TRELLIN_BENCH_SERVER");
  return url != nullptr ? url : "";
}

host::ReportService& Service() {
  static std::unique_ptr<host::ReportService> service =
      ServerUrl().empty()
          ? host::ReportService::Open(CompanyPath())
          : std::make_unique<host::ReportService>(data::PostgresDatabase::Open(ServerUrl()));
  return *service;
}

double MsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double PeakRssMb() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

SinkRun RunToSink(const std::string& key, const std::vector<std::string>& assignments,
                  bool keep_queries) {
  host::ReportService& service = Service();
  DesignerPtr designer = host::OpenReport(service, key);
  host::ParameterDialogue dialogue(
      designer->TLReport()->Parameters(), service.DatabasePtr(),
      [&service](const Variant& e, const Parameters& p) {
        return service.Reports().InterpretDate(e, &p);
      },
      &service.BusinessLayer().Utilities().RangeBuilder());
  for (const std::string& a : assignments) dialogue.SetFromAssignment(a);
  if (!dialogue.Validate()) throw std::runtime_error(key + ": " + dialogue.Errors().front());
  SinkRun run;
  service.Database().SetQueryLog([&](std::string_view jet, const std::string&) {
    ++run.sent;
    if (keep_queries) run.queries.emplace_back(jet);
  });
  DropSink sink;
  const auto start = Clock::now();
  const double cpu_start = CpuMs();
  {
    RunSnapshot snapshot(service.Database());
    engine::RunReport(*designer, sink);
  }
  run.ms = MsSince(start);
  run.cpu_ms = CpuMs() - cpu_start;
  service.Database().SetQueryLog(nullptr);
  run.pages = sink.pages;
  if (!designer->TLReport()->Errors().empty()) {
    throw std::runtime_error(key + ": " + designer->TLReport()->Errors().front().message);
  }
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);
  return run;
}

AloneTime SqliteAlone(const std::vector<std::string>& sqlite_queries, int repeats) {
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(CompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    sqlite3_close(db);
    throw std::runtime_error("cannot open the company file " + CompanyPath());
  }
  AloneTime best{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  for (int r = 0; r < std::max(repeats, 1); ++r) {
    const auto start = Clock::now();
    const double cpu_start = CpuMs();
    for (const std::string& text : sqlite_queries) {
      sqlite3_stmt* stmt = nullptr;
      if (sqlite3_prepare_v2(db, text.c_str(), static_cast<int>(text.size()), &stmt, nullptr) !=
          SQLITE_OK) {
        const std::string message = sqlite3_errmsg(db);
        sqlite3_close(db);
        throw std::runtime_error(message + ": " + text);
      }
      const int columns = sqlite3_column_count(stmt);
      while (sqlite3_step(stmt) == SQLITE_ROW) {
        for (int c = 0; c < columns; ++c) (void)sqlite3_column_value(stmt, c);
      }
      sqlite3_finalize(stmt);
    }
    best.ms = std::min(best.ms, MsSince(start));
    best.cpu_ms = std::min(best.cpu_ms, CpuMs() - cpu_start);
  }
  sqlite3_close(db);
  return best;
}

namespace {

AloneTime ServerAlone(const std::vector<std::string>& texts, int repeats) {
  data::PgConnection connection(ServerUrl());
  connection.Execute("SET jit = off", "setting up the connection");
  AloneTime best{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  for (int r = 0; r < std::max(repeats, 1); ++r) {
    const auto start = Clock::now();
    const double cpu_start = CpuMs();
    for (const std::string& text : texts) {
      const data::PgResult result = connection.Query(text, "running a query alone");
      for (int row = 0; row < result.Rows(); ++row) {
        for (int c = 0; c < result.Columns(); ++c) (void)result.Value(row, c);
      }
    }
    best.ms = std::min(best.ms, MsSince(start));
    best.cpu_ms = std::min(best.cpu_ms, CpuMs() - cpu_start);
  }
  return best;
}

}  // namespace

AloneTime QueriesAlone(const std::vector<std::string>& jet_queries, int repeats) {
  std::vector<std::string> texts;
  texts.reserve(jet_queries.size());
  const data::CompanyDatabase& database = Service().Database();
  for (const std::string& jet : jet_queries) {
    texts.push_back(sql::Translate(jet, database.Catalog(), database.SqlDialect()).sql);
  }
  return ServerUrl().empty() ? SqliteAlone(texts, repeats) : ServerAlone(texts, repeats);
}

PdfRun RunToPdf(const std::string& key, const std::vector<std::string>& assignments) {
  host::RunRequest request;
  request.key = key;
  request.assignments = assignments;
  request.output = fs::temp_directory_path() / ("trellin-bench-" + key + ".pdf");
  const auto start = Clock::now();
  const double cpu_start = CpuMs();
  const host::RunResult result = host::RunReportToFile(Service(), request);
  PdfRun run{result.pages, MsSince(start), CpuMs() - cpu_start, 0};
  if (!result.errors.empty()) {
    throw std::runtime_error(key + ": " + result.errors.front().message);
  }
  if (!result.completed) throw std::runtime_error(key + " did not run to PDF");
  run.mb = static_cast<double>(fs::file_size(request.output)) / (1024.0 * 1024.0);
  fs::remove(request.output);
  return run;
}

void MeasureReport(benchmark::State& state, const std::string& key,
                   const std::vector<std::string>& assignments, Measure what) {
  constexpr double kNever = std::numeric_limits<double>::infinity();
  PdfRun pdf{0, kNever, 0, 0};
  SinkRun sink;
  sink.ms = kNever;
  for (auto _ : state) {
    if (what.pdf) {
      const PdfRun run = RunToPdf(key, assignments);
      if (run.ms < pdf.ms) pdf = run;
    }
    if (what.sink) {
      SinkRun run = RunToSink(key, assignments, what.queries);
      if (run.ms < sink.ms) sink = std::move(run);
    }
  }
  if (what.pdf) {
    state.counters["pages"] = pdf.pages;
    state.counters["pages_per_s"] = pdf.pages / (pdf.ms / 1000.0);
    state.counters["pdf_ms"] = pdf.ms;
    state.counters["pdf_cpu_ms"] = pdf.cpu_ms;
    state.counters["pdf_MB"] = pdf.mb;
  }
  if (what.sink) {
    state.counters["sink_pages"] = sink.pages;
    state.counters["sink_ms"] = sink.ms;
    state.counters["sink_cpu_ms"] = sink.cpu_ms;
    state.counters["pages_per_s_sink"] = sink.pages / (sink.ms / 1000.0);
    state.counters["queries"] = static_cast<double>(sink.sent);
    if (what.queries) {
      const AloneTime alone = QueriesAlone(sink.queries, what.query_repeats);
      state.counters["queries_ms"] = alone.ms;
      state.counters["queries_cpu_ms"] = alone.cpu_ms;
      state.counters["ratio"] = sink.ms / alone.ms;
      state.counters["cpu_ratio"] = sink.cpu_ms / alone.cpu_ms;
    }
  }
  state.counters["peak_rss_MB"] = PeakRssMb();
}

}  // namespace trellin::bench
