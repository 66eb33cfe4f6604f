// trellin run: one report, from the company file to an output file.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"
#include "apps/trellin/Failure.h"
#include "apps/trellin/Progress.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/ReportService.h"
#include "platform/host/run/RunReport.h"
#include "platform/render/Render.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kRunOptions = {
    {"db", 0, true, false, "FILE|URL",
     "company file, or postgresql://user@host/dbname (default: $TRELLIN_DB, else the demo "
     "company)"},
    {"set", 's', true, true, "NAME=VALUE",
     "a parameter value; may be given many times, and wins over --params"},
    {"params", 'p', true, false, "FILE.json", "parameter values as a JSON object of name to value"},
    {"output", 'o', true, false, "OUT",
     "the file to write (default: KEY.pdf in the current folder)"},
    {"format", 'f', true, false, "FORMAT",
     "pdf, png, html, txt, csv or xlsx (default: from OUT's extension)"},
    {"help", 'h', false, false, "", "show this help"},
};

// A parameter file holds a few dozen values; anything far larger is not one.
constexpr std::uintmax_t kMaxParameterFileBytes = 1 << 20;

[[noreturn]] void CannotReadParameters(const std::string& path, const std::string& why) {
  throw Error(ErrorKind::Input, "cannot read the parameter file '" + path + "': " + why);
}

// The text of a parameter file: a regular file of at most 1 MB. A folder, a device or a pipe is
// refused before any of it is read.
std::string ReadParameterFile(const std::string& path) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) CannotReadParameters(path, "there is no such file");
  if (std::filesystem::is_directory(status)) CannotReadParameters(path, "it is a folder");
  if (!std::filesystem::is_regular_file(status)) {
    CannotReadParameters(path, "it is not a regular file");
  }
  if (std::filesystem::file_size(path, error) > kMaxParameterFileBytes) {
    CannotReadParameters(path, "it is larger than 1 MB, too large for parameter values");
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) CannotReadParameters(path, "it cannot be opened");
  std::string text;
  text.resize(kMaxParameterFileBytes + 1);
  in.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(in.gcount()));
  if (text.size() > kMaxParameterFileBytes) {
    CannotReadParameters(path, "it is larger than 1 MB, too large for parameter values");
  }
  return text;
}

}  // namespace

int RunCommand(const Args& args, const Context& context) {
  ParsedArgs parsed = Parse(args, kRunOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin run KEY [--db FILE|URL] [--set NAME=VALUE ...] [--params FILE.json] [-o "
        "OUT] "
        "[--format F]\n\n"
        "Runs the report KEY (see 'trellin list') and writes it to OUT. Parameters take their\n"
        "defaults unless set; 'trellin params KEY' lists them. Dates may be written 31/03/2025,\n"
        "2025-03-31 or as expressions such as EOM, BOY+1Y-1D, GLCURRENT.\n\n%s",
        OptionsHelp(kRunOptions).c_str());
    return kExitOk;
  }
  if (parsed.Positional().size() != 1) throw UsageError("run takes one report key");
  host::RunRequest request;
  request.key = parsed.Positional()[0];
  if (auto file = parsed.Value("params")) request.parameters_json = ReadParameterFile(*file);
  request.assignments = parsed.Values("set");
  request.output = parsed.Value("output").value_or(request.key + ".pdf");
  if (auto name = parsed.Value("format")) {
    request.format = render::FormatFromName(*name);
    if (!request.format)
      throw UsageError("unknown format '" + *name + "' (pdf, png, html, txt, csv, xlsx)");
  } else if (!render::FormatFromExtension(request.output)) {
    throw UsageError(
        "cannot tell the format of '" + request.output.string() +
        "' from its extension; give --format or end it in .pdf, .png, .html, .txt, .csv or .xlsx");
  }

  auto database = OpenCompany(parsed.Value("db"));
  Progress progress(request.key);
  request.on_page = [&progress](int pages, std::int64_t rows) {
    progress.Update("page " + std::to_string(pages) + ", " + std::to_string(rows) + " rows");
  };
  host::ReportService service(database);
  host::RunResult result = host::RunReportToFile(service, request);

  progress.Finish();
  if (!result.completed) {
    // One line: what stopped it first; the rest follow from it.
    std::string cause;
    if (!result.errors.empty()) {
      cause = " (" + result.errors.front().source + ": " + result.errors.front().message + ")";
    }
    throw Error(ErrorKind::Report,
                "the report stopped before it printed; nothing was written" + cause);
  }
  for (const auto& error : result.errors) {
    std::fprintf(stderr, "trellin run: %s\n", OneLine(error.source + ": " + error.message).c_str());
  }
  std::string where =
      result.outputs.empty() ? request.output.string() : result.outputs.front().string();
  if (result.outputs.size() > 1) where += " ... " + result.outputs.back().filename().string();
  std::printf("%s: %d page%s, %lld row%s, %.2fs, %s\n", request.key.c_str(), result.pages,
              result.pages == 1 ? "" : "s", static_cast<long long>(result.rows),
              result.rows == 1 ? "" : "s", static_cast<double>(result.elapsed.count()) / 1000.0,
              where.c_str());
  if (context.verbose) std::fprintf(stderr, "company file: %s\n", database->Path().c_str());
  return result.errors.empty() ? kExitOk : kExitReportErrors;
}

}  // namespace trellin::cli
