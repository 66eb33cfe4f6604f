#pragma once
// What the report benchmarks share: the scale-20 demo company (about 4.8 million ledger lines and
// a million sub-ledger documents), built once and kept in the temporary folder for every
// benchmark, a service over it, a report run into a sink that drops its pages, and the time of
// the same queries run alone in SQLite.
//
// TRELLIN_LEDGER_BENCH_DB=path names a company file already built; without it the file is
// <temp>/trellin-ledger-bench-20.db, built on first use (a few minutes).
// TRELLIN_BENCH_SERVER=postgresql://... runs the reports, and their queries alone, on a company
// on a PostgreSQL server instead (`trellin copy` the same file there for a like comparison).

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "core/Designer.h"
#include "platform/host/run/ReportService.h"

namespace trellin::bench {

using Clock = std::chrono::steady_clock;

// The company file the benchmarks read, built when it is not there yet.
[[nodiscard]] std::string CompanyPath();

// The server's URL when the benchmarks read a company on a server, else "".
[[nodiscard]] std::string ServerUrl();

// A service over CompanyPath() (or the server), opened once for the process.
[[nodiscard]] host::ReportService& Service();

// Milliseconds since `start`, wall-clock.
[[nodiscard]] double MsSince(Clock::time_point start);

// The process's processor time so far, in milliseconds.
[[nodiscard]] double CpuMs();

// The process's peak resident memory so far, in MB.
[[nodiscard]] double PeakRssMb();

struct SinkRun {
  int pages = 0;
  double ms = 0;          // wall-clock, the report's run alone (opening and parameters untimed)
  double cpu_ms = 0;      // processor time of the same
  std::int64_t sent = 0;  // queries the report sent
  std::vector<std::string> queries;  // the Jet text of each, when asked to keep them
};

// Runs `key` with "NAME=VALUE" `assignments` into a sink that drops its pages, inside one
// snapshot, as the host runs it. Every query the report sends is counted and, with
// `keep_queries`, kept. Throws std::runtime_error with the first parameter or run error.
[[nodiscard]] SinkRun RunToSink(const std::string& key, const std::vector<std::string>& assignments,
                                bool keep_queries);

struct AloneTime {
  double ms = 0;      // wall-clock
  double cpu_ms = 0;  // processor time: steadier than wall-clock on a shared machine
};

// The queries' own time: each Jet text translated first (untimed), then prepared and stepped to
// its last row on a connection of its own, every column read (on a server: each sent, its whole
// result received and every value read). The best of `repeats`.
[[nodiscard]] AloneTime QueriesAlone(const std::vector<std::string>& jet_queries, int repeats = 1);

// The same for SQLite text run as it stands.
[[nodiscard]] AloneTime SqliteAlone(const std::vector<std::string>& sqlite_queries,
                                    int repeats = 1);

struct PdfRun {
  int pages = 0;
  double ms = 0;      // wall-clock: opening, parameters, the run and the file written
  double cpu_ms = 0;  // processor time of the same
  double mb = 0;      // the file's size
};

// Runs `key` with "NAME=VALUE" `assignments` to a PDF file in the temporary folder as the command
// line does, and removes the file. Throws std::runtime_error with the first run error.
[[nodiscard]] PdfRun RunToPdf(const std::string& key, const std::vector<std::string>& assignments);

// What MeasureReport runs, beside the report to PDF.
struct Measure {
  bool pdf = true;        // to a PDF file
  bool sink = true;       // into the dropping sink
  bool queries = true;    // the sink run's queries alone (needs `sink`)
  int query_repeats = 1;  // the best of this many runs of the queries alone
};

// The benchmark body every report shares: `key` run `state`'s iterations times as `what` says,
// the fastest run of each kind kept, and its counters set:
//   to PDF        pages, pages_per_s, pdf_ms, pdf_cpu_ms, pdf_MB
//   into the sink sink_pages, sink_ms, sink_cpu_ms, pages_per_s_sink, queries (sent)
//   queries alone queries_ms, queries_cpu_ms, ratio (sink over queries, wall-clock),
//                 cpu_ratio (the same in processor time: steadier on a shared machine)
// and peak_rss_MB, the process's peak so far.
void MeasureReport(benchmark::State& state, const std::string& key,
                   const std::vector<std::string>& assignments, Measure what = {});

}  // namespace trellin::bench
