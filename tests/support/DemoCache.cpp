#include "tests/support/DemoCache.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string_view>

#include "platform/data/CompanySchema.h"
#include "tests/support/TestPaths.h"

namespace trellin::testing {

namespace {

namespace fs = std::filesystem;

// The build of the generator and of what it uses (the schema, dates, money): the latest of
// their libraries' link times, shared by every test binary linked from them. A binary older than
// those libraries (one a partial build left unlinked) carries the generator as it was and keys by
// its own link time, so it never leaves an old company under the new libraries' stamp; so does a
// binary whose libraries are not where the build left them.
long long BuildStamp() {
  std::error_code error;
  const fs::file_time_type self = fs::last_write_time("/proc/self/exe");
  fs::file_time_type stamp = fs::file_time_type::min();
  for (const char* library : {"platform/demo/libtrellin_demo.a", "platform/data/libtrellin_data.a",
                              "platform/sql/libtrellin_sql.a", "core/host/libtrellin_hostapi.a",
                              "platform/runtime/libtrellin_runtime.a"}) {
    const fs::file_time_type time = fs::last_write_time(BinaryDir() / library, error);
    if (error) return self.time_since_epoch().count();
    stamp = std::max(stamp, time);
  }
  return (self < stamp ? self : stamp).time_since_epoch().count();
}

// The schema this process writes, which a binary left unlinked after a schema change still
// carries in its old form: two processes of one stamp share a company only when it agrees.
std::string SchemaKey() {
  char text[17];
  std::snprintf(text, sizeof text, "%016zx",
                std::hash<std::string_view>{}(data::CompanySchemaSql()));
  return text;
}

// Holds an exclusive lock on a file for its life.
class FileLock {
 public:
  explicit FileLock(const fs::path& path) : fd_(::open(path.c_str(), O_CREAT | O_RDWR, 0644)) {
    if (fd_ < 0 || ::flock(fd_, LOCK_EX) != 0) {
      throw std::runtime_error("cannot lock " + path.string());
    }
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock() { ::close(fd_); }

 private:
  int fd_;
};

}  // namespace

std::string CachedDemoCompany(std::string_view country, demo::DemoSummary* summary,
                              std::optional<Date> present) {
  const fs::path folder = fs::temp_directory_path() / "trellin-demo-cache";
  fs::create_directories(folder);
  // The file is always demo.db, in a folder of its build: the reports print its name.
  const std::string prefix =
      std::string(country) + "-" + (present ? present->ToIso() + "-" : std::string());
  const fs::path path =
      folder / (prefix + std::to_string(BuildStamp()) + "-" + SchemaKey()) / "demo.db";
  FileLock lock(folder / (prefix + "lock"));
  if (fs::exists(path)) return path.string();
  // Companies of older builds are of no more use once they are a while old; a younger one may
  // belong to another build folder whose tests are running now.
  std::error_code ignored;
  const auto stale = fs::file_time_type::clock::now() - std::chrono::hours(2);
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    const std::string name = entry.path().filename().string();
    if (name.rfind(prefix, 0) == 0 && entry.is_directory(ignored) &&
        entry.last_write_time(ignored) < stale) {
      fs::remove_all(entry.path(), ignored);
    }
  }
  fs::create_directories(path.parent_path());
  demo::DemoOptions options;
  options.country = std::string(country);
  options.present = present;
  // Built under a name of its own and renamed, so that no reader ever sees half a file.
  options.path = path.string() + "." + std::to_string(getpid());
  demo::DemoSummary built = demo::BuildDemoCompany(options);
  fs::rename(options.path, path);
  if (summary != nullptr) *summary = std::move(built);
  return path.string();
}

}  // namespace trellin::testing
