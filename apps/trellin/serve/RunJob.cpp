// The worker side of `trellin serve`: one queued run, in a process of its own.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <variant>

#include <nlohmann/json.hpp>

#include "apps/trellin/Company.h"
#include "apps/trellin/serve/Serve.h"
#include "platform/host/run/ReportService.h"
#include "platform/host/run/RunReport.h"
#include "platform/render/Render.h"

namespace trellin::serve {

namespace {

// One line on stdout for the server, sent at once.
void Say(const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

const char* Extension(render::Format format) {
  switch (format) {
    case render::Format::Pdf:
      return ".pdf";
    case render::Format::Png:
      return ".png";
    case render::Format::Html:
      return ".html";
    case render::Format::Text:
      return ".txt";
    case render::Format::Csv:
      return ".csv";
    case render::Format::Xlsx:
      return ".xlsx";
  }
  return ".pdf";
}

}  // namespace

std::string FileExtension(std::string_view format_name) {
  std::optional<render::Format> format = render::FormatFromName(format_name);
  return format ? Extension(*format) : "";
}

int RunJob(const std::filesystem::path& folder) {
  try {
    std::ifstream in(folder / "job.json");
    std::stringstream text;
    text << in.rdbuf();
    const nlohmann::json job = nlohmann::json::parse(text.str());
    host::RunRequest request;
    request.key = job.at("key").get<std::string>();
    request.parameters_json = job.at("values").dump();
    for (const auto& name : job.at("formats")) {
      std::filesystem::path file = folder / ("report" + FileExtension(name.get<std::string>()));
      if (request.output.empty()) {
        request.output = file;
      } else {
        request.also.push_back(file);
      }
    }
    // The linked figures of each page, in fractions of the page, for the preview to lay over
    // its image.
    nlohmann::json links = nlohmann::json::array();
    request.on_page_model = [&links](const engine::Page& page) {
      nlohmann::json areas = nlohmann::json::array();
      for (const engine::PageItem& item : page.items) {
        const auto* run = std::get_if<engine::TextRun>(&item);
        if (run == nullptr || run->link.Empty() || run->text.empty()) continue;
        if (page.width <= 0 || page.height <= 0) continue;
        nlohmann::json values = nlohmann::json::object();
        for (const auto& [name, value] : run->link.values) values[name] = value;
        areas.push_back({{"left", run->left / page.width},
                         {"top", run->top / page.height},
                         {"width", run->width / page.width},
                         {"height", run->height / page.height},
                         {"key", run->link.key},
                         {"values", values}});
      }
      links.push_back(std::move(areas));
    };
    request.on_page = [](int pages, std::int64_t rows) {
      Say("progress " + std::to_string(pages) + " " + std::to_string(rows));
    };
    auto database = cli::OpenCompany(job.at("db").get<std::string>());
    host::ReportService service(database);
    host::RunResult result = host::RunReportToFile(service, request);
    nlohmann::json warnings = nlohmann::json::array();
    for (const auto& error : result.errors) warnings.push_back(error.source + ": " + error.message);
    nlohmann::json out = {{"completed", result.completed},
                          {"pages", result.pages},
                          {"rows", result.rows},
                          {"warnings", warnings}};
    if (result.completed) std::ofstream(folder / "report-links.json") << links.dump();
    if (!result.completed) {
      std::string cause;
      if (!result.errors.empty()) {
        cause = " (" + result.errors.front().source + ": " + result.errors.front().message + ")";
      }
      out["error"] = "The report stopped before it printed; nothing was written" + cause + ".";
    }
    Say("result " + out.dump());
  } catch (const std::exception& e) {
    Say("failed " + nlohmann::json{{"error", e.what()}}.dump());
  }
  return 0;
}

}  // namespace trellin::serve
