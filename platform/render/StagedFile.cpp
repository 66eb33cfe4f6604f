#include "platform/render/StagedFile.h"

#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

#include "platform/render/Render.h"

namespace trellin::render {
namespace {

std::string Describe(const std::filesystem::path& path, int error) {
  return path.string() + ": " + std::strerror(error);
}

// mkstemp makes its file readable by the owner only; an output file should get the permissions
// any new file of this user gets, so apply the process umask to 0666 as open() would.
mode_t NewFileMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// The temporary files open now, for a signal handler to remove: plain pointers in fixed slots,
// each set and cleared atomically, which a handler may read at any moment.
constexpr std::size_t kListed = 4096;
std::atomic<const char*> g_listed[kListed];

void List(const char* path) noexcept {
  for (auto& slot : g_listed) {
    const char* empty = nullptr;
    if (slot.compare_exchange_strong(empty, path)) return;
  }
}

void Unlist(const char* path) noexcept {
  if (path == nullptr) return;
  for (auto& slot : g_listed) {
    const char* expected = path;
    if (slot.compare_exchange_strong(expected, nullptr)) return;
  }
}

}  // namespace

void RemoveStagedFilesNow() noexcept {
  for (auto& slot : g_listed) {
    if (const char* path = slot.load()) ::unlink(path);
  }
}

StagedFile::StagedFile(std::filesystem::path target) : target_(std::move(target)) {
  if (target_.filename().empty())
    throw RenderError("No file name in output path \"" + target_.string() + "\"");
  std::filesystem::path folder = target_.parent_path();
  if (folder.empty()) folder = ".";
  // A hidden name in the same folder, so the final rename stays on one file system and is atomic.
  std::string hidden(1, '.');
  hidden += target_.filename().string();
  hidden += ".XXXXXX";
  std::string pattern = (folder / hidden).string();
  listed_ = std::make_unique<char[]>(pattern.size() + 1);
  // A stop between making the file and listing it would leave it behind: the stops wait.
  sigset_t stops;
  sigset_t before;
  sigemptyset(&stops);
  sigaddset(&stops, SIGINT);
  sigaddset(&stops, SIGTERM);
  ::pthread_sigmask(SIG_BLOCK, &stops, &before);
  const int fd = ::mkstemp(pattern.data());
  const int error = errno;
  if (fd >= 0) {
    std::memcpy(listed_.get(), pattern.c_str(), pattern.size() + 1);
    List(listed_.get());
  }
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  if (fd < 0) throw RenderError("Cannot write " + Describe(target_, error));
  temp_ = pattern;
  ::fchmod(fd, NewFileMode());
  stream_ = ::fdopen(fd, "wb");
  if (stream_ == nullptr) {
    const int error = errno;
    ::close(fd);
    Unlist(listed_.get());
    std::filesystem::remove(temp_);
    throw RenderError("Cannot write " + Describe(target_, error));
  }
  // Large buffer: page streams are written in many small pieces.
  std::setvbuf(stream_, nullptr, _IOFBF, 1 << 16);
}

StagedFile::StagedFile(StagedFile&& other) noexcept
    : target_(std::move(other.target_)),
      temp_(std::move(other.temp_)),
      stream_(std::exchange(other.stream_, nullptr)),
      done_(std::exchange(other.done_, true)),
      listed_(std::move(other.listed_)) {}

StagedFile::~StagedFile() { Discard(); }

void StagedFile::Close() {
  if (stream_ == nullptr) return;
  const bool failed = std::ferror(stream_) != 0;
  const bool close_failed = std::fclose(stream_) != 0;
  const int error = errno;
  stream_ = nullptr;
  if (failed || close_failed) {
    throw RenderError("Cannot write " + Describe(target_, failed ? EIO : error));
  }
}

void StagedFile::Commit() {
  if (done_) throw RenderError("Output " + target_.string() + " was already finished");
  Close();
  std::error_code ec;
  std::filesystem::rename(temp_, target_, ec);
  if (ec) throw RenderError("Cannot replace " + target_.string() + ": " + ec.message());
  done_ = true;
  Unlist(listed_.get());
}

void StagedFile::Discard() noexcept {
  if (stream_ != nullptr) {
    std::fclose(stream_);
    stream_ = nullptr;
  }
  if (!done_) {
    Unlist(listed_.get());
    std::error_code ec;
    std::filesystem::remove(temp_, ec);
    done_ = true;
  }
}

}  // namespace trellin::render
