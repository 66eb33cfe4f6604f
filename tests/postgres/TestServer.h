#pragma once
// A throwaway PostgreSQL server for the tests of one binary: initdb into a temporary folder,
// listening only on a Unix socket in it, stopped and removed when the binary ends.

#include <cstdint>
#include <string>
#include <string_view>

namespace trellin::testing {

// The connection URL of a new, empty database `name` on the server, which the first call starts.
// Empty, with `why` saying so, when no server can be started here: the server's programs
// (Debian's postgresql package) are not installed, or the tests run as root with no "postgres"
// user to run the server as. Throws std::runtime_error when the programs are there but fail.
[[nodiscard]] std::string NewTestDatabase(std::string_view name, std::string& why);

// The scale-1 demo company (tests/support/DemoCache.h) copied onto the server once: `url` is
// database "demo.db", named as the file is so that the page footers, which name the company,
// print alike; `writable_url` a copy of it that a test may write to. Empty URLs, with `why`, as
// NewTestDatabase.
struct ServerDemo {
  std::string file, url, writable_url;
  std::int64_t rows = 0;
  int tables = 0;
};
[[nodiscard]] const ServerDemo& DemoOnServer(std::string& why);

// The role that logs in with a password (the server asks it of this role alone), and its
// password.
inline constexpr const char* kPasswordRole = "reports_pw";
inline constexpr const char* kPassword = "right-one";
// The URL of `database` for `user`, with `password` when not empty.
[[nodiscard]] std::string ServerUrl(std::string_view database, std::string_view user,
                                    std::string_view password);

}  // namespace trellin::testing
