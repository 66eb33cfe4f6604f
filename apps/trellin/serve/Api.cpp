// The JSON API of `trellin serve` and the page app's files (README.md beside this file).
#include <httplib.h>

#include <algorithm>
#include <fstream>
#include <mutex>

#include "apps/trellin/Commands.h"
#include "apps/trellin/serve/AppFiles.h"
#include "apps/trellin/serve/RunPool.h"
#include "apps/trellin/serve/Serve.h"
#include "core/Catalogue.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/ReportService.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Strings.h"
#include "reports/Designers.h"

namespace trellin::serve {

namespace {

using nlohmann::json;

// A pick-list sends at most this many rows in one answer, whatever the client asks.
constexpr std::size_t kMaxPickRows = 1000;
constexpr std::size_t kDefaultPickRows = 100;

const std::vector<std::string> kAllFormats = {"pdf", "png", "html", "text", "csv", "xlsx"};

// An answer that is not a success: status and message.
struct Refusal {
  int status;
  std::string message;
  json extra = json::object();
};

void Reply(httplib::Response& res, int status, const json& body) {
  res.status = status;
  // Replacement characters for text that is not UTF-8 (a company file may hold any bytes).
  res.set_content(body.dump(-1, ' ', false, json::error_handler_t::replace), "application/json");
}

json ParseBody(const httplib::Request& req) {
  try {
    return json::parse(req.body);
  } catch (const json::exception& e) {
    // The parser's text, without its "[json.exception.parse_error.101] " tag.
    std::string why = e.what();
    if (std::size_t tag = why.find("] "); why.starts_with("[") && tag != std::string::npos) {
      why.erase(0, tag + 2);
    }
    throw Refusal{400, "The request is not JSON: " + why};
  }
}

std::size_t Limit(const httplib::Request& req) {
  if (!req.has_param("limit")) return kDefaultPickRows;
  const std::string text = req.get_param_value("limit");
  std::size_t limit = 0;
  for (char c : text) {
    if (c < '0' || c > '9' || limit > kMaxPickRows) {
      throw Refusal{400, "limit takes a whole number from 1 to " + std::to_string(kMaxPickRows) +
                             ", not '" + text + "'."};
    }
    limit = limit * 10 + static_cast<std::size_t>(c - '0');
  }
  if (limit == 0 || limit > kMaxPickRows) {
    throw Refusal{400, "limit takes a whole number from 1 to " + std::to_string(kMaxPickRows) +
                           ", not '" + text + "'."};
  }
  return limit;
}

// The rows of a pick-list whose key or description holds `search` (any case), the first `limit`
// of them; `total` gets how many matched.
std::vector<host::PickRow> PickRows(const std::vector<host::PickRow>& rows,
                                    const std::string& search, std::size_t limit,
                                    std::size_t& total) {
  const std::string wanted = LCase(search);
  std::vector<host::PickRow> kept;
  total = 0;
  for (const host::PickRow& row : rows) {
    if (!wanted.empty() && LCase(row.Key).find(wanted) == std::string::npos &&
        LCase(row.Description).find(wanted) == std::string::npos) {
      continue;
    }
    if (++total <= limit) kept.push_back(row);
  }
  return kept;
}

std::string ContentType(std::string_view name) {
  if (name.ends_with(".html")) return "text/html; charset=utf-8";
  if (name.ends_with(".js")) return "text/javascript; charset=utf-8";
  if (name.ends_with(".css")) return "text/css; charset=utf-8";
  if (name.ends_with(".svg")) return "image/svg+xml";
  return "application/octet-stream";
}

std::string FileContentType(const std::string& format) {
  if (format == "pdf") return "application/pdf";
  if (format == "html") return "text/html; charset=utf-8";
  if (format == "text") return "text/plain; charset=utf-8";
  if (format == "csv") return "text/csv; charset=utf-8";
  if (format == "xlsx") return "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet";
  return "application/octet-stream";
}

// Streams a file in pieces, so a large report's file is never held whole.
void SendFile(httplib::Response& res, const std::filesystem::path& path,
              const std::string& content_type) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error) throw Refusal{404, "The file is no longer there."};
  auto in = std::make_shared<std::ifstream>(path, std::ios::binary);
  res.set_content_provider(
      static_cast<std::size_t>(size), content_type,
      [in](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
        char buffer[64 * 1024];
        in->seekg(static_cast<std::streamoff>(offset));
        in->read(buffer, static_cast<std::streamsize>(std::min(length, sizeof buffer)));
        if (in->gcount() <= 0) return false;
        sink.write(buffer, static_cast<std::size_t>(in->gcount()));
        return true;
      });
}

class Api {
 public:
  Api(std::shared_ptr<data::CompanyDatabase> database, RunPool& pool)
      : service_(std::move(database)), pool_(pool) {
    json reports = json::array();
    for (const CatalogueEntry& entry : service_.Catalogue()) {
      if (FindKeyFactory(Designers(), entry) == nullptr) continue;
      reports.push_back(
          {{"key", entry.key}, {"caption", cli::ReportCaption(entry)}, {"area", entry.area}});
    }
    catalogue_ = {{"reports", reports}};
  }

  json Catalogue() const { return catalogue_; }

  // The parameters as `trellin params --json` lists them, each pick-list cut to `limit` rows
  // (with "rowsTotal", how many it has).
  json Parameters(const std::string& key, std::size_t limit) {
    std::lock_guard lock(mutex_);
    std::vector<host::DialogueEntry> entries = List(key);
    std::vector<std::size_t> totals;
    for (auto& entry : entries) {
      std::size_t total = 0;
      entry.Rows = PickRows(entry.Rows, "", limit, total);
      totals.push_back(total);
    }
    json parameters = host::ParameterDialogue::ToJson(entries);
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i].Kind == ParameterType::SQLList) parameters[i]["rowsTotal"] = totals[i];
    }
    return {{"key", key}, {"caption", Caption(key)}, {"parameters", parameters}};
  }

  json Rows(const std::string& key, const std::string& name, const std::string& search,
            std::size_t limit) {
    std::lock_guard lock(mutex_);
    for (const host::DialogueEntry& entry : List(key)) {
      if (!EqualsIgnoreCase(entry.Name, name)) continue;
      if (entry.Kind != ParameterType::SQLList) {
        throw Refusal{404, entry.Name + " has no pick-list."};
      }
      std::size_t total = 0;
      json rows = json::array();
      for (const host::PickRow& row : PickRows(entry.Rows, search, limit, total)) {
        rows.push_back({{"key", row.Key}, {"description", row.Description}});
      }
      return {{"name", entry.Name}, {"rows", rows}, {"total", total}};
    }
    throw Refusal{404, "The report \"" + key + "\" has no parameter named \"" + name + "\"."};
  }

  // The values as the run would take them: dates resolved, periods applied, and the problems.
  json Resolve(const std::string& key, const json& values) {
    std::lock_guard lock(mutex_);
    DesignerPtr designer = host::OpenReport(service_, key);
    trellin::Parameters& parameters = designer->TLReport()->Parameters();
    host::ParameterDialogue dialogue(parameters, service_.DatabasePtr(), Resolver(),
                                     &service_.BusinessLayer().Utilities().RangeBuilder());
    std::vector<std::string> errors;
    try {
      dialogue.SetFromJson(values);
      if (!dialogue.Validate()) errors = dialogue.Errors();
    } catch (const host::ParameterError& e) {
      errors.push_back(e.what());
    }
    json resolved = dialogue.ValuesToJson();
    designer->TLReport()->SetArReport(nullptr);
    return {{"values", resolved}, {"errors", errors}};
  }

  // Checks the values as `trellin run` does, then queues the run.
  json Start(const json& body) {
    if (!body.is_object())
      throw Refusal{400, "A run is a JSON object: {\"key\": ..., \"values\": {...}}."};
    if (!body.contains("key") || !body["key"].is_string()) {
      throw Refusal{400, "A run needs \"key\", the report's key as text."};
    }
    const std::string key = body["key"].get<std::string>();
    json values = body.value("values", json::object());
    if (!values.is_object()) {
      throw Refusal{400, "Parameter values must be a JSON object of names and values."};
    }
    std::vector<std::string> formats;
    if (!body.contains("formats"))
      formats = kAllFormats;
    else if (!body["formats"].is_array() || body["formats"].empty())
      throw Refusal{400, "\"formats\" is a list of pdf, png, html, text, csv, xlsx."};
    else {
      for (const json& name : body["formats"]) {
        std::string text = name.is_string() ? name.get<std::string>() : name.dump();
        if (!name.is_string() || FileExtension(text).empty()) {
          throw Refusal{400, "Unknown format " + text + " (pdf, png, html, text, csv, xlsx)."};
        }
        if (text == "txt") text = "text";
        if (std::find(formats.begin(), formats.end(), text) == formats.end()) {
          formats.push_back(text);
        }
      }
    }
    {
      std::lock_guard lock(mutex_);
      host::RunRequest request;
      request.key = key;
      request.parameters_json = values.dump();
      host::CheckRunValues(service_, request);
    }
    std::optional<RunView> run = pool_.Start(key, values, formats);
    if (!run) throw Refusal{503, "The server has too many runs waiting; try again shortly."};
    return ToJson(*run);
  }

  RunView Find(const std::string& id) const {
    std::optional<RunView> run = pool_.Find(id);
    if (!run) throw Refusal{404, "There is no run " + id + "; it may have been cleaned up."};
    return *run;
  }

  RunPool& Pool() { return pool_; }

 private:
  host::DateResolver Resolver() {
    return [this](const Variant& expression, const trellin::Parameters& parameters) {
      return service_.Reports().InterpretDate(expression, &parameters);
    };
  }

  std::vector<host::DialogueEntry> List(const std::string& key) {
    DesignerPtr designer = host::OpenReport(service_, key);
    host::ParameterDialogue dialogue(designer->TLReport()->Parameters(), service_.DatabasePtr(),
                                     Resolver());
    std::vector<host::DialogueEntry> entries = dialogue.List(true);
    designer->TLReport()->SetArReport(nullptr);
    return entries;
  }

  std::string Caption(const std::string& key) const {
    for (const json& report : catalogue_["reports"]) {
      if (report["key"] == key) return report["caption"];
    }
    return key;
  }

  std::mutex mutex_;
  host::ReportService service_;
  RunPool& pool_;
  json catalogue_;
};

// Runs `handler`, turning what it throws into a JSON answer: a refusal as it says, an unknown
// key as 404 with the near keys, a bad value as 400 naming the parameter, anything else as 500.
template <typename Handler>
httplib::Server::Handler Guard(Handler handler) {
  return [handler](const httplib::Request& req, httplib::Response& res) {
    try {
      handler(req, res);
    } catch (const Refusal& refusal) {
      json body = refusal.extra;
      body["error"] = refusal.message;
      Reply(res, refusal.status, body);
    } catch (const host::ReportKeyError& e) {
      Reply(res, 404, {{"error", e.what()}, {"near", e.NearMatches()}});
    } catch (const Error& e) {
      Reply(res, e.Kind() == ErrorKind::Input ? 400 : 500, {{"error", e.what()}});
    } catch (const std::exception& e) {
      Reply(res, 500, {{"error", std::string("internal error: ") + e.what()}});
    }
  };
}

}  // namespace

void AddRoutes(httplib::Server& server, std::shared_ptr<data::CompanyDatabase> database,
               RunPool& pool) {
  auto api = std::make_shared<Api>(std::move(database), pool);

  server.set_default_headers({{"X-Content-Type-Options", "nosniff"},
                              {"Content-Security-Policy",
                               "default-src 'self'; img-src 'self' data:; object-src 'none'; "
                               "frame-ancestors 'none'; base-uri 'none'"},
                              {"Cache-Control", "no-store"}});

  auto app_file = [](const std::string& name) {
    return Guard([name](const httplib::Request&, httplib::Response& res) {
      std::optional<AppFile> file = FindAppFile(name);
      if (!file) throw Refusal{404, "No such file."};
      res.set_content(std::string(file->text), ContentType(name).c_str());
    });
  };
  server.Get("/", app_file("index.html"));
  server.Get(R"(/(app\.js|app\.css))",
             Guard([](const httplib::Request& req, httplib::Response& res) {
               const std::string name = req.matches[1];
               std::optional<AppFile> file = FindAppFile(name);
               if (!file) throw Refusal{404, "No such file."};
               res.set_content(std::string(file->text), ContentType(name).c_str());
             }));

  server.Get("/api/reports", Guard([api](const httplib::Request&, httplib::Response& res) {
               Reply(res, 200, api->Catalogue());
             }));
  server.Get(R"(/api/reports/([^/]+)/parameters)",
             Guard([api](const httplib::Request& req, httplib::Response& res) {
               Reply(res, 200, api->Parameters(req.matches[1], Limit(req)));
             }));
  server.Get(
      R"(/api/reports/([^/]+)/parameters/([^/]+)/rows)",
      Guard([api](const httplib::Request& req, httplib::Response& res) {
        Reply(res, 200,
              api->Rows(req.matches[1], req.matches[2], req.get_param_value("search"), Limit(req)));
      }));
  server.Post(R"(/api/reports/([^/]+)/resolve)",
              Guard([api](const httplib::Request& req, httplib::Response& res) {
                json body = ParseBody(req);
                json values = body.is_object() ? body.value("values", json::object()) : body;
                Reply(res, 200, api->Resolve(req.matches[1], values));
              }));
  server.Post("/api/runs", Guard([api](const httplib::Request& req, httplib::Response& res) {
                Reply(res, 202, api->Start(ParseBody(req)));
              }));
  server.Get(R"(/api/runs/([0-9a-f]{32}))",
             Guard([api](const httplib::Request& req, httplib::Response& res) {
               Reply(res, 200, ToJson(api->Find(req.matches[1])));
             }));
  server.Post(R"(/api/runs/([0-9a-f]{32})/cancel)",
              Guard([api](const httplib::Request& req, httplib::Response& res) {
                if (!api->Pool().Cancel(req.matches[1])) (void)api->Find(req.matches[1]);
                Reply(res, 200, ToJson(api->Find(req.matches[1])));
              }));
  server.Get(R"(/api/runs/([0-9a-f]{32})/pages/([0-9]{1,9}))",
             Guard([api](const httplib::Request& req, httplib::Response& res) {
               RunView run = api->Find(req.matches[1]);
               const int page = std::stoi(req.matches[2]);
               if (run.state != RunState::Done ||
                   std::find(run.formats.begin(), run.formats.end(), "png") == run.formats.end()) {
                 throw Refusal{404, "The run has no pages to show yet."};
               }
               if (page < 1 || page > run.pages) {
                 throw Refusal{404, "The report has pages 1 to " + std::to_string(run.pages) +
                                        ", not " + std::to_string(page) + "."};
               }
               SendFile(res, run.folder / (run.stem + "-" + std::to_string(page) + ".png"),
                        "image/png");
             }));
  server.Get(R"(/api/runs/([0-9a-f]{32})/pages/([0-9]{1,9})/links)",
             Guard([api](const httplib::Request& req, httplib::Response& res) {
               RunView run = api->Find(req.matches[1]);
               const int page = std::stoi(req.matches[2]);
               if (run.state != RunState::Done) throw Refusal{404, "The run has not finished."};
               if (page < 1 || page > run.pages) {
                 throw Refusal{404, "The report has pages 1 to " + std::to_string(run.pages) +
                                        ", not " + std::to_string(page) + "."};
               }
               json links = json::array();
               std::ifstream in(run.folder / (run.stem + "-links.json"));
               if (in) {
                 const json pages = json::parse(in, nullptr, false);
                 const auto at = static_cast<std::size_t>(page - 1);
                 if (pages.is_array() && at < pages.size()) links = pages[at];
               }
               Reply(res, 200, {{"links", links}});
             }));
  server.Get(R"(/api/runs/([0-9a-f]{32})/files/([a-z]+))",
             Guard([api](const httplib::Request& req, httplib::Response& res) {
               RunView run = api->Find(req.matches[1]);
               std::string format = req.matches[2];
               if (format == "txt") format = "text";
               if (run.state != RunState::Done) throw Refusal{404, "The run has not finished."};
               if (format == "png" ||
                   std::find(run.formats.begin(), run.formats.end(), format) == run.formats.end()) {
                 throw Refusal{404, "The run wrote no " + format + " file."};
               }
               const std::string extension = FileExtension(format);
               res.set_header("Content-Disposition",
                              "attachment; filename=\"" + run.key + extension + "\"");
               SendFile(res, run.folder / (run.stem + extension), FileContentType(format));
             }));
  server.set_error_handler([](const httplib::Request& req, httplib::Response& res) {
    if (res.status == 404 && req.path.rfind("/api/", 0) == 0 && res.body.empty()) {
      Reply(res, 404, {{"error", "There is no such address in the API: " + req.path}});
    } else if (res.status == 413) {
      Reply(res, 413, {{"error", "The request is too large."}});
    }
  });
}

}  // namespace trellin::serve
