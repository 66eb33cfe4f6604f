#pragma once
// The run driver: one report key, parameter values as text, one output file. What `trellin run`
// does, and what tests and example programs call.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "core/host/TLReport.h"
#include "platform/host/run/ReportService.h"
#include "platform/render/Render.h"
#include "platform/runtime/Error.h"

namespace trellin::host {

// A key the catalogue does not serve. The message says so and names the nearest keys.
class ReportKeyError : public Error {
 public:
  ReportKeyError(const std::string& message, std::vector<std::string> near_matches)
      : Error(ErrorKind::Input, message), near_matches_(std::move(near_matches)) {}
  [[nodiscard]] const std::vector<std::string>& NearMatches() const { return near_matches_; }

 private:
  std::vector<std::string> near_matches_;
};

// Up to `limit` keys of `catalogue` close to `key`, nearest first: the same key in another case,
// keys that contain it or that it contains, and keys a few letters away.
[[nodiscard]] std::vector<std::string> NearReportKeys(std::span<const CatalogueEntry> catalogue,
                                                      std::string_view key, std::size_t limit = 5);

// A fresh designer for `key` from the service's catalogue, tied to its ReportHost with its
// parameters declared. Throws ReportKeyError for a key not in the catalogue (with near matches)
// or one whose designer is not built.
[[nodiscard]] DesignerPtr OpenReport(ReportService& service, const std::string& key);

struct RunRequest {
  std::string key;
  // The text of a JSON object of parameter values ("" for none), applied first.
  std::string parameters_json;
  // "NAME=VALUE" assignments, applied after the JSON, so they win.
  std::vector<std::string> assignments;
  std::filesystem::path output;
  // The output format; by the output's extension when not given.
  std::optional<render::Format> format;
  // More files the same run writes, each in the format its extension names: one snapshot and
  // one pass of the engine feed every renderer, so they all show the same figures.
  std::vector<std::filesystem::path> also;
  render::RenderOptions render_options;
  // Called after each page is written, with the pages and main report rows so far; may be empty.
  std::function<void(int pages, std::int64_t rows)> on_page;
  // Called with each page as the renderers get it, before on_page; may be empty.
  std::function<void(const engine::Page& page)> on_page_model;
};

struct RunResult {
  // False when the run was cancelled (an error while the report prepared): nothing is written.
  bool completed = false;
  int pages = 0;
  // Detail rows the main report printed: what a user counts as the report's rows.
  std::int64_t rows = 0;
  // Detail rows its sub-reports printed, at any depth.
  std::int64_t subreport_rows = 0;
  // Every error the report's events raised, in order, with the event it came from.
  std::vector<ReportErrorInfo> errors;
  std::chrono::milliseconds elapsed{0};
  // The files written: the output itself, or for PNG one file per page; then those of `also`.
  std::vector<std::filesystem::path> outputs;
};

// Runs one report into one file:
// the key is opened (ReportKeyError); the values are applied and the dates resolved and the
// parameters validated (ParameterError, naming each parameter and what is wrong with it; also
// for an output whose format cannot be told); the company is read through one snapshot; the
// engine runs the designer into the renderer; the host lets go of its designer at the end.
// Errors of the engine, the layout and the renderer reach the caller; no file is left then, nor
// when the run is cancelled.
[[nodiscard]] RunResult RunReportToFile(ReportService& service, const RunRequest& request);

// What RunReportToFile checks before it runs, without running: the key (ReportKeyError) and the
// values (ParameterError, with the same messages). The output is not looked at.
void CheckRunValues(ReportService& service, const RunRequest& request);

}  // namespace trellin::host
