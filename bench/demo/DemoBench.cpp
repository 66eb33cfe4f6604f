// How long the demo company takes to build and how large the file is, at scale 1 (the
// company a first run shows) and at scale 20 (the ledger the report benchmarks run on).
//
//   demo_bench --benchmark_filter=Build/1      about a second, a few tens of megabytes
//   demo_bench --benchmark_filter=Build/20     the million-document ledger

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "platform/demo/DemoCompany.h"

namespace {

void Build(benchmark::State& state) {
  const std::string path =
      (std::filesystem::temp_directory_path() / "trellin-demo-bench.db").string();
  trellin::demo::DemoSummary summary;
  for (auto _ : state) {
    trellin::demo::DemoOptions options;
    options.scale = static_cast<int>(state.range(0));
    options.path = path;
    summary = trellin::demo::BuildDemoCompany(options);
  }
  state.counters["file_MB"] =
      static_cast<double>(std::filesystem::file_size(path)) / (1024.0 * 1024.0);
  state.counters["documents"] = static_cast<double>(summary.transactions);
  state.counters["doc_lines"] = static_cast<double>(summary.transaction_lines);
  state.counters["gl_lines"] = static_cast<double>(summary.gl_lines);
  std::filesystem::remove(path);
}

BENCHMARK(Build)->Arg(1)->Arg(20)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

}  // namespace
