#include "apps/trellin/Failure.h"

#include <cstdio>
#include <new>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"

namespace trellin::cli {

namespace {

struct KindExit {
  ErrorKind kind;
  int code;
};

constexpr KindExit kKindExits[] = {
    {ErrorKind::Input, kExitUsage},
    {ErrorKind::CompanyFile, kExitDatabase},
    {ErrorKind::Report, kExitReportErrors},
    {ErrorKind::Internal, kExitReportErrors},
};

}  // namespace

int ExitCodeFor(ErrorKind kind) {
  for (const KindExit& row : kKindExits) {
    if (row.kind == kind) return row.code;
  }
  return kExitReportErrors;
}

std::string OneLine(std::string_view message) {
  std::string line;
  line.reserve(message.size());
  std::size_t i = 0;
  while (i < message.size()) {
    char c = message[i];
    if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
      line += c;
      ++i;
      continue;
    }
    std::size_t end = i;
    bool breaks = false;
    while (end < message.size() && (message[end] == ' ' || message[end] == '\t' ||
                                    message[end] == '\r' || message[end] == '\n')) {
      breaks |= message[end] == '\n' || message[end] == '\r';
      ++end;
    }
    if (breaks) {
      if (!line.empty() && end < message.size()) line += ' ';
    } else {
      line.append(message.substr(i, end - i));
    }
    i = end;
  }
  return line;
}

int ReportFailure(std::string_view command, const std::exception_ptr& failure) {
  const std::string name(command);
  std::string message;
  int code = kExitReportErrors;
  try {
    std::rethrow_exception(failure);
  } catch (const UsageError& e) {
    message = std::string(e.what()) + " (see 'trellin " + name + " --help')";
    code = kExitUsage;
  } catch (const Error& e) {
    message =
        e.Kind() == ErrorKind::Internal ? "internal error: " + std::string(e.what()) : e.what();
    code = ExitCodeFor(e.Kind());
  } catch (const std::bad_alloc&) {
    message = "out of memory";
  } catch (const std::exception& e) {
    message = std::string("internal error: ") + e.what();
  } catch (...) {
    message = "internal error";
  }
  std::fprintf(stderr, "trellin %s: %s\n", name.c_str(), OneLine(message).c_str());
  return code;
}

}  // namespace trellin::cli
