#pragma once
// `trellin serve`: the report viewer in the browser. The HTTP side lives here and only here;
// the libraries below know nothing of it.

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace httplib {
class Server;
}

namespace trellin::data {
class CompanyDatabase;
}

namespace trellin::serve {

class RunPool;

// The JSON API and the page app on `server` (README.md beside this file). The API reads the
// company through one report service of its own, one request at a time; runs go to `pool`.
// Both must outlive the server's use of the routes.
void AddRoutes(httplib::Server& server, std::shared_ptr<data::CompanyDatabase> database,
               RunPool& pool);

// The worker: runs the job in FOLDER/job.json ({db, key, values, formats}), writing
// FOLDER/report.<ext> in each format, and tells the server its progress and result on stdout.
// Returns 0; a failure is told on stdout too.
int RunJob(const std::filesystem::path& folder);

// ".pdf" for "pdf", ".txt" for "text" or "txt", ...; "" for a name that is no format.
[[nodiscard]] std::string FileExtension(std::string_view format_name);

}  // namespace trellin::serve
