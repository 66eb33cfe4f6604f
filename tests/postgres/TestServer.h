#pragma once
// A throwaway PostgreSQL server for the tests of one binary: initdb into a temporary folder,
// listening only on a Unix socket in it, stopped and removed when the binary ends.

#include <string>
#include <string_view>

namespace trellin::testing {

// The connection URL of a new, empty database `name` on the server, which the first call starts.
// Empty, with `why` saying so, when no server can be started here: the server's programs
// (Debian's postgresql package) are not installed, or the tests run as root with no "postgres"
// user to run the server as. Throws std::runtime_error when the programs are there but fail.
[[nodiscard]] std::string NewTestDatabase(std::string_view name, std::string& why);

}  // namespace trellin::testing
