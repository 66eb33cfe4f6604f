// trellin serve: the report viewer in the browser, on one company file.
#include <httplib.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <thread>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"
#include "apps/trellin/serve/RunPool.h"
#include "apps/trellin/serve/Serve.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kServeOptions = {
    {"db", 0, true, false, "FILE|URL",
     "company file, or postgresql://user@host/dbname (default: $TRELLIN_DB, else the demo "
     "company)"},
    {"bind", 0, true, false, "ADDR", "address to listen on (default 127.0.0.1: this machine only)"},
    {"port", 0, true, false, "N", "port to listen on (default 8080; 0 takes a free one)"},
    {"workers", 0, true, false, "N",
     "reports run at once, each in a process of its own (default: the number of cores)"},
    {"queue", 0, true, false, "N", "runs that may wait for a worker (default 64); more get 503"},
    {"keep", 0, true, false, "MINUTES",
     "how long a finished run's pages and files are kept (default 30)"},
    {"run-job", 0, true, false, "FOLDER",
     "used by the server itself: runs the one queued report in FOLDER"},
    {"help", 'h', false, false, "", "show this help"},
};

int WholeNumber(const ParsedArgs& parsed, std::string_view name, int fallback, int low, int high) {
  std::optional<std::string> text = parsed.Value(name);
  if (!text) return fallback;
  try {
    std::size_t used = 0;
    int value = std::stoi(*text, &used);
    if (used == text->size() && value >= low && value <= high) return value;
  } catch (const std::exception&) {
  }
  throw UsageError("--" + std::string(name) + " takes a whole number from " + std::to_string(low) +
                   " to " + std::to_string(high) + ", not '" + *text + "'");
}

}  // namespace

int ServeCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kServeOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin serve [--db FILE] [--bind ADDR] [--port N] [--workers N]\n\n"
        "Serves the reports of the company file to a browser: the list of reports, a form for\n"
        "each report's parameters, a preview of its pages and its files to download, with a\n"
        "JSON API under /api/ (apps/trellin/serve/README.md). Prints its address on start.\n"
        "Ctrl-C or SIGTERM stops it and the runs in flight, removes every run's files and\n"
        "exits 0.\n\n%s",
        OptionsHelp(kServeOptions).c_str());
    return kExitOk;
  }
  if (!parsed.Positional().empty()) throw UsageError("serve takes no arguments");
  if (auto folder = parsed.Value("run-job")) return serve::RunJob(*folder);

  const std::string bind = parsed.Value("bind").value_or("127.0.0.1");
  const int port = WholeNumber(parsed, "port", 8080, 0, 65535);
  const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
  const int workers = WholeNumber(parsed, "workers", cores, 1, 256);
  const int queue = WholeNumber(parsed, "queue", 64, 1, 100000);
  const int keep = WholeNumber(parsed, "keep", 30, 1, 7 * 24 * 60);
  auto database = OpenCompany(parsed.Value("db"));

  // SIGINT and SIGTERM are taken by one thread that stops the server; every other thread,
  // started after this, has them blocked. The workers get them back (RunPool.cpp).
  sigset_t stops;
  sigemptyset(&stops);
  sigaddset(&stops, SIGINT);
  sigaddset(&stops, SIGTERM);
  sigaddset(&stops, SIGUSR1);
  pthread_sigmask(SIG_BLOCK, &stops, nullptr);

  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/trellin-serve-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw Error(ErrorKind::Input,
                "cannot make a temporary folder in " + std::string(tmp && *tmp ? tmp : "/tmp"));
  }
  const std::filesystem::path root = pattern;

  serve::PoolOptions options;
  options.program = std::filesystem::read_symlink("/proc/self/exe");
  options.company = database->Path();
  options.root = root;
  options.workers = workers;
  options.max_queued = static_cast<std::size_t>(queue);
  options.keep = std::chrono::minutes(keep);
  int stopped_by = 0;
  {
    serve::RunPool pool(options);
    httplib::Server server;
    // Parameter values and a run's settings fit in far less; anything larger is refused (413).
    server.set_payload_max_length(256 * 1024);
    serve::AddRoutes(server, database, pool);
    const int bound = port == 0                         ? server.bind_to_any_port(bind)
                      : server.bind_to_port(bind, port) ? port
                                                        : -1;
    if (bound < 0) {
      pool.Shutdown();
      std::error_code ignored;
      std::filesystem::remove_all(root, ignored);
      throw Error(ErrorKind::Input, "cannot listen on " + bind + ":" + std::to_string(port) +
                                        " (in use, or not an address of this machine)");
    }
    const std::string host = bind.find(':') != std::string::npos ? "[" + bind + "]" : bind;
    std::printf("trellin serve: http://%s:%d/ (company %s; Ctrl-C stops)\n", host.c_str(), bound,
                database->Path().c_str());
    std::fflush(stdout);

    std::thread waiter([&server, &stops, &stopped_by] {
      int signal_number = 0;
      sigwait(&stops, &signal_number);
      if (signal_number != SIGUSR1) stopped_by = signal_number;
      server.stop();
    });
    server.listen_after_bind();
    if (stopped_by == 0) pthread_kill(waiter.native_handle(), SIGUSR1);
    waiter.join();
    pool.Shutdown();
  }
  std::error_code ignored;
  std::filesystem::remove_all(root, ignored);
  std::fprintf(stderr, "trellin serve: stopped%s\n",
               stopped_by == SIGINT    ? " by Ctrl-C"
               : stopped_by == SIGTERM ? " by SIGTERM"
                                       : "");
  return kExitOk;
}

}  // namespace trellin::cli
