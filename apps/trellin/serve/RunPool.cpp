#include "apps/trellin/serve/RunPool.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/random.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

extern char** environ;

namespace trellin::serve {

struct RunPool::Run {
  std::string id;
  std::string key;
  nlohmann::json values;
  std::vector<std::string> formats;
  std::filesystem::path folder;
  RunState state = RunState::Queued;
  int pages = 0;
  std::int64_t rows = 0;
  double seconds = 0;
  std::string error;
  std::vector<std::string> warnings;
  pid_t pid = -1;
  bool cancelled = false;
  std::chrono::steady_clock::time_point started = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point finished;
};

const char* RunStateName(RunState state) {
  switch (state) {
    case RunState::Queued:
      return "queued";
    case RunState::Running:
      return "running";
    case RunState::Done:
      return "done";
    case RunState::Failed:
      return "failed";
    case RunState::Cancelled:
      return "cancelled";
  }
  return "failed";
}

nlohmann::json ToJson(const RunView& run) {
  nlohmann::json out = {
      {"id", run.id},       {"key", run.key},   {"state", RunStateName(run.state)},
      {"pages", run.pages}, {"rows", run.rows}, {"seconds", run.seconds}};
  if (run.queue_position > 0) out["queuePosition"] = run.queue_position;
  if (!run.error.empty()) out["error"] = run.error;
  out["warnings"] = run.warnings;
  out["formats"] = run.formats;
  return out;
}

std::string RandomId() {
  unsigned char bytes[16];
  std::size_t got = 0;
  while (got < sizeof bytes) {
    ssize_t n = ::getrandom(bytes + got, sizeof bytes - got, 0);
    if (n < 0) throw std::runtime_error("the system's random source cannot be read");
    got += static_cast<std::size_t>(n);
  }
  static constexpr char kHex[] = "0123456789abcdef";
  std::string id;
  for (unsigned char byte : bytes) {
    id += kHex[byte >> 4];
    id += kHex[byte & 15];
  }
  return id;
}

RunPool::RunPool(PoolOptions options) : options_(std::move(options)) {
  for (int i = 0; i < std::max(1, options_.workers); ++i) workers_.emplace_back([this] { Work(); });
  cleaner_ = std::thread([this] { Clean(); });
}

RunPool::~RunPool() { Shutdown(); }

std::optional<RunView> RunPool::Start(const std::string& key, const nlohmann::json& values,
                                      const std::vector<std::string>& formats) {
  auto run = std::make_shared<Run>();
  run->id = RandomId();
  run->key = key;
  run->values = values;
  run->formats = formats;
  run->folder = options_.root / run->id;
  std::lock_guard lock(mutex_);
  if (stopping_ || queue_.size() >= options_.max_queued) return std::nullopt;
  queue_.push_back(run);
  runs_[run->id] = run;
  wake_.notify_all();
  return View(*run);
}

std::optional<RunView> RunPool::Find(const std::string& id) const {
  std::lock_guard lock(mutex_);
  auto it = runs_.find(id);
  if (it == runs_.end()) return std::nullopt;
  return View(*it->second);
}

RunView RunPool::View(const Run& run) const {
  RunView view;
  view.id = run.id;
  view.key = run.key;
  view.state = run.state;
  if (run.state == RunState::Queued) {
    int position = 1;
    for (const auto& queued : queue_) {
      if (queued.get() == &run) view.queue_position = position;
      ++position;
    }
  }
  view.pages = run.pages;
  view.rows = run.rows;
  view.seconds = run.seconds;
  view.error = run.error;
  view.warnings = run.warnings;
  if (run.state == RunState::Done) view.formats = run.formats;
  view.folder = run.folder;
  view.stem = "report";
  return view;
}

bool RunPool::Cancel(const std::string& id) {
  std::lock_guard lock(mutex_);
  auto it = runs_.find(id);
  if (it == runs_.end()) return false;
  Run& run = *it->second;
  if (run.state == RunState::Queued) {
    std::erase_if(queue_, [&run](const auto& queued) { return queued.get() == &run; });
    run.state = RunState::Cancelled;
    run.finished = std::chrono::steady_clock::now();
  } else if (run.state == RunState::Running) {
    run.cancelled = true;
    // The worker's own handler removes the files it was writing; the pool removes the folder.
    if (run.pid > 0) ::kill(run.pid, SIGTERM);
  }
  return true;
}

void RunPool::Shutdown() {
  {
    std::lock_guard lock(mutex_);
    if (stopping_ && workers_.empty()) return;
    stopping_ = true;
    for (const auto& run : queue_) {
      run->state = RunState::Cancelled;
      run->finished = std::chrono::steady_clock::now();
    }
    queue_.clear();
    for (const auto& [id, run] : runs_) {
      if (run->state != RunState::Running) continue;
      run->cancelled = true;
      if (run->pid > 0) ::kill(run->pid, SIGTERM);
    }
    wake_.notify_all();
  }
  for (std::thread& worker : workers_) worker.join();
  workers_.clear();
  if (cleaner_.joinable()) cleaner_.join();
  std::lock_guard lock(mutex_);
  for (const auto& [id, run] : runs_) {
    std::error_code ignored;
    std::filesystem::remove_all(run->folder, ignored);
  }
  runs_.clear();
}

void RunPool::Work() {
  for (;;) {
    std::shared_ptr<Run> run;
    {
      std::unique_lock lock(mutex_);
      wake_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
      if (stopping_) return;
      run = queue_.front();
      queue_.pop_front();
      run->state = RunState::Running;
      run->started = std::chrono::steady_clock::now();
    }
    Execute(run);
  }
}

namespace {

// Starts `program` with `args`, its standard output on a pipe whose reading end is returned in
// `out`, its standard error to `log`. The child gets the default signal handling and an empty
// mask (the server blocks SIGINT and SIGTERM in its own threads) and a process group of its own,
// so a Ctrl-C at the terminal reaches the server, which stops its runs itself.
pid_t SpawnWorker(const std::filesystem::path& program, const std::vector<std::string>& args,
                  const std::filesystem::path& log, int& out) {
  int pipe_ends[2];
  if (::pipe2(pipe_ends, O_CLOEXEC) != 0) return -1;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipe_ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, log.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t none, defaults;
  sigemptyset(&none);
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGINT);
  sigaddset(&defaults, SIGTERM);
  sigaddset(&defaults, SIGPIPE);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setpgroup(&attributes, 0);
  posix_spawnattr_setflags(&attributes,
                           POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  std::vector<char*> argv;
  for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
  argv.push_back(nullptr);
  pid_t pid = -1;
  int failed = ::posix_spawn(&pid, program.c_str(), &actions, &attributes, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  ::close(pipe_ends[1]);
  if (failed != 0) {
    ::close(pipe_ends[0]);
    return -1;
  }
  out = pipe_ends[0];
  return pid;
}

}  // namespace

void RunPool::Execute(const std::shared_ptr<Run>& run) {
  std::error_code error;
  std::filesystem::create_directories(run->folder, error);
  {
    std::ofstream job(run->folder / "job.json");
    job << nlohmann::json{{"db", options_.company},
                          {"key", run->key},
                          {"values", run->values},
                          {"formats", run->formats}}
               .dump();
  }
  int out = -1;
  pid_t pid = -1;
  {
    std::lock_guard lock(mutex_);
    if (!run->cancelled) {
      pid = SpawnWorker(options_.program,
                        {options_.program.string(), "serve", "--run-job", run->folder.string()},
                        run->folder / "worker.log", out);
      run->pid = pid;
    }
  }
  nlohmann::json outcome;
  if (pid > 0) {
    // The worker writes one line per page ("progress PAGES ROWS"), then "result {...}" or
    // "failed {...}".
    std::FILE* lines = ::fdopen(out, "r");
    char* line = nullptr;
    std::size_t capacity = 0;
    while (::getline(&line, &capacity, lines) > 0) {
      std::string text(line);
      if (text.rfind("progress ", 0) == 0) {
        int pages = 0;
        long long rows = 0;
        if (std::sscanf(text.c_str() + 9, "%d %lld", &pages, &rows) == 2) {
          std::lock_guard lock(mutex_);
          run->pages = pages;
          run->rows = rows;
        }
      } else if (text.rfind("result ", 0) == 0 || text.rfind("failed ", 0) == 0) {
        outcome = nlohmann::json::parse(text.substr(7), nullptr, false);
        outcome["ok"] = text[0] == 'r';
      }
    }
    std::free(line);
    std::fclose(lines);
    int status = 0;
    ::waitpid(pid, &status, 0);
  }
  std::lock_guard lock(mutex_);
  run->pid = -1;
  run->finished = std::chrono::steady_clock::now();
  run->seconds = std::chrono::duration<double>(run->finished - run->started).count();
  if (run->cancelled) {
    run->state = RunState::Cancelled;
    std::filesystem::remove_all(run->folder, error);
    return;
  }
  if (!outcome.is_object() || outcome.is_discarded()) {
    run->state = RunState::Failed;
    run->error = pid > 0 ? "The report's process ended without a result."
                         : "The report's process could not be started.";
    return;
  }
  if (outcome.value("ok", false) && outcome.value("completed", false)) {
    run->state = RunState::Done;
    run->pages = outcome.value("pages", 0);
    run->rows = outcome.value("rows", std::int64_t{0});
  } else {
    run->state = RunState::Failed;
    run->error = outcome.value("error", "The report stopped before it printed.");
  }
  for (const auto& warning : outcome.value("warnings", nlohmann::json::array())) {
    if (warning.is_string()) run->warnings.push_back(warning.get<std::string>());
  }
}

void RunPool::Clean() {
  std::unique_lock lock(mutex_);
  while (!stopping_) {
    wake_.wait_for(lock, std::min<std::chrono::seconds>(options_.keep, std::chrono::seconds(10)));
    const auto now = std::chrono::steady_clock::now();
    for (auto it = runs_.begin(); it != runs_.end();) {
      const Run& run = *it->second;
      bool finished = run.state != RunState::Queued && run.state != RunState::Running;
      if (finished && now - run.finished >= options_.keep) {
        std::error_code ignored;
        std::filesystem::remove_all(run.folder, ignored);
        it = runs_.erase(it);
      } else {
        ++it;
      }
    }
  }
}

}  // namespace trellin::serve
