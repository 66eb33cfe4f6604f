// "TrialBalance" and "FinancialStatement" on the scale-20 demo company, 1 April to 30 November
// 2025: the whole run (chart walk, grouped queries, layout, pages into a sink that drops them)
// beside the time of every query the statement sent, run alone in SQLite, and beside the floor:
// one pass over the covering index that gives the same figures by account. Targets: each
// statement within 1.5 times the floor and within 1.5 times its own queries; peak memory flat
// (about 20 MB once the company is built).
//
//   ledger_bench                          builds the company once (several minutes), then runs
//   TRELLIN_LEDGER_BENCH_DB=path          runs on a company file already built
//
// Counters: queries (sent by the statement), run_ms, queries_ms (those alone), floor_ms, x_floor
// (the run over the floor), x_queries (the run over its queries), all wall-clock and the best of
// the iterations; run_cpu, queries_cpu, floor_cpu and x_floor_cpu, the same in processor time,
// which a busy machine disturbs less; peak_rss_MB.
//
// PeerBalance sets the same books beside a plain-text ledger tool where one is installed
// (`hledger`): the period's ledger lines exported once as a journal (about 600,000 postings), its
// `bal` timed over them, and the trial balance's lines a second over the tool's postings a second
// printed as x_peer (target 50 or more). Skipped when the tool is not on the PATH.
//
// What it measured, and on what machine: bench/README.md.

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "bench/support/BenchCompany.h"

namespace {

namespace fs = std::filesystem;
using trellin::bench::Clock;

constexpr const char* kFrom = "2025-04-01";
constexpr const char* kTo = "2025-11-30";
constexpr const char* kLastFrom = "2024-04-01";
constexpr const char* kLastTo = "2024-11-30";

const std::vector<std::string> kPeriod = {std::string("FromDate=") + kFrom,
                                          std::string("ToDate=") + kTo};

// The trial balance's figures by account in one pass over the covering index: the opening before
// the period, and the period's credits and debits.
std::string TrialBalanceFloor() {
  return std::string("SELECT AccountId, SUM(CASE WHEN Date < '") + kFrom +
         "' THEN Value END), SUM(CASE WHEN Date >= '" + kFrom + "' AND Date <= '" + kTo +
         "' AND Value < 0 THEN Value END), SUM(CASE WHEN Date >= '" + kFrom + "' AND Date <= '" +
         kTo +
         "' AND Value > 0 THEN Value END) FROM glTransaction INDEXED BY glTransaction_AccountDate "
         "GROUP BY AccountId ORDER BY AccountId";
}

// The statement's figures of both years by account in one pass over the covering index: to the
// end date and within the period, each year, chosen by the account's type once per account.
std::string FinancialStatementFloor() {
  auto in = [](const char* from, const char* to) {
    return std::string("SUM(CASE WHEN Date >= '") + from + "' AND Date <= '" + to +
           "' THEN Value END)";
  };
  auto upto = [](const char* to) {
    return std::string("SUM(CASE WHEN Date <= '") + to + "' THEN Value END)";
  };
  return "SELECT Account.AccountId, CASE WHEN Account.Type > 5 THEN s.ToEnd ELSE s.InPeriod END, "
         "CASE WHEN Account.Type > 5 THEN s.LastToEnd ELSE s.LastInPeriod END FROM Account "
         "INNER JOIN (SELECT AccountId, " +
         upto(kTo) + " AS ToEnd, " + in(kFrom, kTo) + " AS InPeriod, " + upto(kLastTo) +
         " AS LastToEnd, " + in(kLastFrom, kLastTo) +
         " AS LastInPeriod FROM glTransaction INDEXED BY glTransaction_AccountDate GROUP BY "
         "AccountId) AS s ON s.AccountId = Account.AccountId ORDER BY Account.AccountId";
}

void Statement(benchmark::State& state, const std::string& key, const std::string& floor) {
  trellin::bench::SinkRun best;
  best.ms = std::numeric_limits<double>::infinity();
  for (auto _ : state) {
    trellin::bench::SinkRun run = trellin::bench::RunToSink(key, kPeriod, true);
    if (run.ms < best.ms) best = std::move(run);
  }
  const trellin::bench::AloneTime queries = trellin::bench::QueriesAlone(best.queries, 3);
  const trellin::bench::AloneTime floor_time = trellin::bench::SqliteAlone({floor}, 3);
  state.counters["queries"] = static_cast<double>(best.sent);
  state.counters["run_ms"] = best.ms;
  state.counters["queries_ms"] = queries.ms;
  state.counters["floor_ms"] = floor_time.ms;
  state.counters["x_floor"] = best.ms / floor_time.ms;
  state.counters["x_queries"] = best.ms / queries.ms;
  state.counters["run_cpu"] = best.cpu_ms;
  state.counters["queries_cpu"] = queries.cpu_ms;
  state.counters["floor_cpu"] = floor_time.cpu_ms;
  state.counters["x_floor_cpu"] = best.cpu_ms / floor_time.cpu_ms;
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

void TrialBalance(benchmark::State& state) {
  Statement(state, "TrialBalance", TrialBalanceFloor());
}
void FinancialStatement(benchmark::State& state) {
  Statement(state, "FinancialStatement", FinancialStatementFloor());
}

// --- the peer ---

// The tool on the PATH, "" when there is none.
std::string PeerTool() {
  const char* path = std::getenv("PATH");
  std::string dirs = path != nullptr ? path : "";
  std::size_t start = 0;
  while (start <= dirs.size()) {
    const std::size_t colon = std::min(dirs.find(':', start), dirs.size());
    const fs::path candidate = fs::path(dirs.substr(start, colon - start)) / "hledger";
    if (::access(candidate.c_str(), X_OK) == 0) return candidate.string();
    start = colon + 1;
  }
  return "";
}

// The period's ledger lines as a journal, one entry per date, source and reference (each
// balances), amounts in the ledger's four decimals. Written once beside the company file;
// returns its path and sets `postings`.
std::string PeriodJournal(std::int64_t* postings) {
  const std::string path = trellin::bench::CompanyPath() + ".period.journal";
  sqlite3* db = nullptr;
  sqlite3_open_v2(trellin::bench::CompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  const std::string where =
      std::string(" FROM glTransaction WHERE Date >= '") + kFrom + "' AND Date <= '" + kTo + "'";
  sqlite3_stmt* stmt = nullptr;
  sqlite3_prepare_v2(db, ("SELECT count(*)" + where).c_str(), -1, &stmt, nullptr);
  sqlite3_step(stmt);
  *postings = sqlite3_column_int64(stmt, 0);
  sqlite3_finalize(stmt);
  if (!fs::exists(path)) {
    std::ofstream out(path + ".tmp");
    sqlite3_prepare_v2(
        db,
        ("SELECT substr(Date, 1, 10), ifnull(glSourceId, ''), ifnull(Reference, ''), "
         "AccountId, Value" +
         where + " ORDER BY Date, glSourceId, Reference")
            .c_str(),
        -1, &stmt, nullptr);
    std::string entry;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      auto text = [&](int c) {
        return std::string(reinterpret_cast<const char*>(sqlite3_column_text(stmt, c)));
      };
      const std::string head = text(0) + " " + text(1) + " " + text(2);
      if (head != entry) {
        out << "\n" << head << "\n";
        entry = head;
      }
      const std::int64_t value = sqlite3_column_int64(stmt, 4);
      const std::uint64_t magnitude =
          value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
      char amount[48];
      std::snprintf(amount, sizeof amount, "%s%llu.%04llu", value < 0 ? "-" : "",
                    static_cast<unsigned long long>(magnitude / 10000),
                    static_cast<unsigned long long>(magnitude % 10000));
      out << "    a" << text(3) << "  " << amount << "\n";
    }
    sqlite3_finalize(stmt);
    out.close();
    fs::rename(path + ".tmp", path);
  }
  sqlite3_close(db);
  return path;
}

// Runs the tool's balance report over `journal`, its output dropped; returns wall-clock ms and
// sets `cpu_ms` to its processor time and `peak_mb` to its peak resident memory.
double RunPeer(const std::string& tool, const std::string& journal, double* cpu_ms,
               double* peak_mb) {
  const auto start = Clock::now();
  const pid_t child = ::fork();
  if (child == 0) {
    std::freopen("/dev/null", "w", stdout);
    ::execl(tool.c_str(), tool.c_str(), "-f", journal.c_str(), "bal", static_cast<char*>(nullptr));
    ::_exit(127);
  }
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);
  const double ms = trellin::bench::MsSince(start);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw std::runtime_error(tool + " failed on " + journal);
  }
  *peak_mb = static_cast<double>(usage.ru_maxrss) / 1024.0;
  auto to_ms = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) * 1000.0 + static_cast<double>(t.tv_usec) / 1000.0;
  };
  *cpu_ms = to_ms(usage.ru_utime) + to_ms(usage.ru_stime);
  return ms;
}

void PeerBalance(benchmark::State& state) {
  const std::string tool = PeerTool();
  if (tool.empty()) {
    state.SkipWithError("hledger is not installed: no peer to compare with");
    for (auto _ : state) {
    }
    return;
  }
  std::int64_t postings = 0;
  const std::string journal = PeriodJournal(&postings);
  double peer_ms = std::numeric_limits<double>::infinity();
  double peer_cpu = std::numeric_limits<double>::infinity();
  double peer_mb = 0;
  for (auto _ : state) {
    double cpu = 0;
    peer_ms = std::min(peer_ms, RunPeer(tool, journal, &cpu, &peer_mb));
    peer_cpu = std::min(peer_cpu, cpu);
  }
  // Our trial balance reads every line of the ledger (the opening before the period too).
  std::int64_t lines = 0;
  {
    sqlite3* db = nullptr;
    sqlite3_open_v2(trellin::bench::CompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, "SELECT count(*) FROM glTransaction", -1, &stmt, nullptr);
    sqlite3_step(stmt);
    lines = sqlite3_column_int64(stmt, 0);
    sqlite3_finalize(stmt);
    sqlite3_close(db);
  }
  double ours_ms = std::numeric_limits<double>::infinity();
  double ours_cpu = std::numeric_limits<double>::infinity();
  for (int i = 0; i < 3; ++i) {
    const trellin::bench::SinkRun run = trellin::bench::RunToSink("TrialBalance", kPeriod, false);
    ours_ms = std::min(ours_ms, run.ms);
    ours_cpu = std::min(ours_cpu, run.cpu_ms);
  }
  const double peer_rate = static_cast<double>(postings) / peer_ms;
  const double our_rate = static_cast<double>(lines) / ours_ms;
  state.counters["postings"] = static_cast<double>(postings);
  state.counters["peer_ms"] = peer_ms;
  state.counters["peer_rss_MB"] = peer_mb;
  state.counters["lines"] = static_cast<double>(lines);
  state.counters["ours_ms"] = ours_ms;
  state.counters["x_peer"] = our_rate / peer_rate;
  state.counters["x_peer_cpu"] =
      (static_cast<double>(lines) / ours_cpu) / (static_cast<double>(postings) / peer_cpu);
  state.counters["peak_rss_MB"] = trellin::bench::PeakRssMb();
}

BENCHMARK(TrialBalance)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(FinancialStatement)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(PeerBalance)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);

}  // namespace
