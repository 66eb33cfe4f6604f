#pragma once
// The runs of `trellin serve`: a queue, a bounded pool of workers, and the files of each run.
// Each run is one child process (`trellin serve --run-job FOLDER`) with its own designer, host,
// company connection and read snapshot; the server itself never runs a report. A run's files
// live in a folder named by its random id below the server's own temporary folder, and go
// when the run has been finished for the keeping time, or at shutdown.

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>

namespace trellin::serve {

enum class RunState { Queued, Running, Done, Failed, Cancelled };

// "queued", "running", "done", "failed", "cancelled".
[[nodiscard]] const char* RunStateName(RunState state);

// What a client sees of a run: a copy, taken under the pool's lock.
struct RunView {
  std::string id;
  std::string key;
  RunState state = RunState::Queued;
  int queue_position = 0;  // 1 for the next to start; 0 when not queued
  int pages = 0;
  std::int64_t rows = 0;
  double seconds = 0;
  std::string error;                  // why it failed
  std::vector<std::string> warnings;  // errors the report's events raised while it printed
  std::vector<std::string> formats;   // the formats written, once done
  std::filesystem::path folder;
  std::string stem;  // the files' name in the folder: "report.pdf", "report-3.png"
};

[[nodiscard]] nlohmann::json ToJson(const RunView& run);

struct PoolOptions {
  std::filesystem::path program;  // the trellin binary the workers run
  std::string company;            // the company file's path
  std::filesystem::path root;     // the server's temporary folder; must exist
  int workers = 2;
  std::size_t max_queued = 64;
  std::chrono::seconds keep{30 * 60};
};

class RunPool {
 public:
  // Starts the workers and the cleaner.
  explicit RunPool(PoolOptions options);
  // Shutdown().
  ~RunPool();
  RunPool(const RunPool&) = delete;
  RunPool& operator=(const RunPool&) = delete;

  // Queues a run of `key` with `values` (a JSON object, already checked) written in `formats`
  // ("pdf", "png", ...; at least one). Returns its view, or nullopt when the queue is full.
  [[nodiscard]] std::optional<RunView> Start(const std::string& key, const nlohmann::json& values,
                                             const std::vector<std::string>& formats);
  // nullopt for an id the pool does not know (never given, or cleaned up).
  [[nodiscard]] std::optional<RunView> Find(const std::string& id) const;
  // A queued run leaves the queue; a running one's process is stopped (its files are removed).
  // False for an unknown id. A finished run stays as it is.
  bool Cancel(const std::string& id);
  // Stops taking runs, cancels the queued and running ones, waits for the workers and removes
  // every run's folder. Safe to call more than once.
  void Shutdown();

 private:
  struct Run;
  void Work();
  void Execute(const std::shared_ptr<Run>& run);
  void Clean();
  [[nodiscard]] RunView View(const Run& run) const;

  PoolOptions options_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::shared_ptr<Run>> queue_;
  std::map<std::string, std::shared_ptr<Run>> runs_;
  bool stopping_ = false;
  std::vector<std::thread> workers_;
  std::thread cleaner_;
};

// 32 hex digits from the system's random source: a run id nobody can guess.
[[nodiscard]] std::string RandomId();

}  // namespace trellin::serve
