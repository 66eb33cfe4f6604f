// trellin: the command-line face of the report service.
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr const char* kUsage =
    "usage: trellin <command> [options]\n"
    "\n"
    "commands:\n"
    "  run KEY    run a report (not built yet)\n"
    "\n"
    "options:\n"
    "  -h, --help  show this help\n";

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::string_view(argv[1]) == "-h" || std::string_view(argv[1]) == "--help") {
    std::fputs(kUsage, argc < 2 ? stderr : stdout);
    return argc < 2 ? 2 : 0;
  }
  std::string_view command = argv[1];
  if (command == "run") {
    std::fputs("trellin: reports are not built yet\n", stderr);
    return 2;
  }
  std::fprintf(stderr, "trellin: unknown command '%s' (see trellin --help)\n", argv[1]);
  return 2;
}
