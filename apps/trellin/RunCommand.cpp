// trellin run: one report, from the company file to an output file.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"
#include "apps/trellin/Progress.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/ReportService.h"
#include "platform/host/run/RunReport.h"
#include "platform/render/Render.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kRunOptions = {
    {"db", 0, true, false, "FILE", "company file (default: $TRELLIN_DB, else the demo company)"},
    {"set", 's', true, true, "NAME=VALUE", "a parameter value; may be given many times, and wins over --params"},
    {"params", 'p', true, false, "FILE.json", "parameter values as a JSON object of name to value"},
    {"output", 'o', true, false, "OUT", "the file to write (default: KEY.pdf in the current folder)"},
    {"format", 'f', true, false, "FORMAT", "pdf, png, html, txt, csv or xlsx (default: from OUT's extension)"},
    {"help", 'h', false, false, "", "show this help"},
};

std::string ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw CommandError(kExitUsage, "cannot read the parameter file '" + path + "'");
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace

int RunCommand(const Args& args, const Context& context) {
  ParsedArgs parsed = Parse(args, kRunOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin run KEY [--db FILE] [--set NAME=VALUE ...] [--params FILE.json] [-o OUT] [--format F]\n\n"
        "Runs the report KEY (see 'trellin list') and writes it to OUT. Parameters take their\n"
        "defaults unless set; 'trellin params KEY' lists them. Dates may be written 31/03/2025,\n"
        "2025-03-31 or as expressions such as EOM, BOY+1Y-1D, GLCURRENT.\n\n%s",
        OptionsHelp(kRunOptions).c_str());
    return kExitOk;
  }
  if (parsed.Positional().size() != 1) throw UsageError("run takes one report key");
  host::RunRequest request;
  request.key = parsed.Positional()[0];
  if (auto file = parsed.Value("params")) request.parameters_json = ReadWholeFile(*file);
  request.assignments = parsed.Values("set");
  request.output = parsed.Value("output").value_or(request.key + ".pdf");
  if (auto name = parsed.Value("format")) {
    request.format = render::FormatFromName(*name);
    if (!request.format) throw UsageError("unknown format '" + *name + "' (pdf, png, html, txt, csv, xlsx)");
  } else if (!render::FormatFromExtension(request.output)) {
    throw UsageError("cannot tell the format of '" + request.output.string() +
                     "' from its extension; give --format or end it in .pdf, .png, .html, .txt, .csv or .xlsx");
  }
  if (request.output.has_parent_path() && !std::filesystem::exists(request.output.parent_path())) {
    std::filesystem::create_directories(request.output.parent_path());
  }

  auto database = OpenCompany(parsed.Value("db"));
  Progress progress(request.key);
  request.on_page = [&progress](int pages, std::int64_t rows) {
    progress.Update("page " + std::to_string(pages) + ", " + std::to_string(rows) + " rows");
  };
  host::RunResult result;
  try {
    host::ReportService service(database);
    result = host::RunReportToFile(service, request);
  } catch (const host::ReportKeyError& e) {
    throw CommandError(kExitUsage, e.what());
  } catch (const host::ParameterError& e) {
    throw CommandError(kExitUsage, e.what());
  } catch (const DatabaseError& e) {
    throw CommandError(kExitDatabase, e.what());
  } catch (const render::RenderError& e) {
    throw CommandError(kExitUsage, e.what());
  }

  progress.Finish();
  for (const auto& error : result.errors) {
    std::fprintf(stderr, "trellin run: %s: %s\n", error.source.c_str(), error.message.c_str());
  }
  if (!result.completed) {
    throw CommandError(kExitReportErrors, "the report stopped before it printed; nothing was written");
  }
  std::string where = result.outputs.empty() ? request.output.string() : result.outputs.front().string();
  if (result.outputs.size() > 1) where += " ... " + result.outputs.back().filename().string();
  std::printf("%s: %d page%s, %lld row%s, %.2fs, %s\n", request.key.c_str(), result.pages,
              result.pages == 1 ? "" : "s", static_cast<long long>(result.rows), result.rows == 1 ? "" : "s",
              static_cast<double>(result.elapsed.count()) / 1000.0, where.c_str());
  if (context.verbose) std::fprintf(stderr, "company file: %s\n", database->Path().c_str());
  return result.errors.empty() ? kExitOk : kExitReportErrors;
}

}  // namespace trellin::cli
