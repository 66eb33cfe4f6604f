// The run driver: key, values, snapshot, engine, renderer, result.

#include "platform/host/run/RunReport.h"

#include "platform/data/SqliteDatabase.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

// Passes pages on to the renderer, counting them and the detail rows on them: the main report's
// apart from its sub-reports'.
class CountingSink : public engine::PageSink {
 public:
  CountingSink(engine::PageSink& target, const std::function<void(int, std::int64_t)>& on_page)
      : target_(target), on_page_(on_page) {}
  void Begin(const engine::DocumentInfo& info) override { target_.Begin(info); }
  void AddPage(const engine::Page& page) override {
    ++pages_;
    for (const engine::DataRow& row : page.rows) {
      if (row.kind != engine::RowKind::Detail) continue;
      ++(row.depth == 0 ? rows_ : subreport_rows_);
    }
    target_.AddPage(page);
    if (on_page_) on_page_(pages_, rows_);
  }
  void End() override { target_.End(); }
  void Abort() override { target_.Abort(); }

  [[nodiscard]] int Pages() const { return pages_; }
  [[nodiscard]] std::int64_t Rows() const { return rows_; }
  [[nodiscard]] std::int64_t SubreportRows() const { return subreport_rows_; }

 private:
  engine::PageSink& target_;
  const std::function<void(int, std::int64_t)>& on_page_;
  int pages_ = 0;
  std::int64_t rows_ = 0;
  std::int64_t subreport_rows_ = 0;
};

// Host and designer hold each other; whatever way the run ends, the host lets go.
class Untie {
 public:
  explicit Untie(DesignerPtr designer) : designer_(std::move(designer)) {}
  Untie(const Untie&) = delete;
  Untie& operator=(const Untie&) = delete;
  ~Untie() {
    if (const auto& host = designer_->TLReport()) host->SetArReport(nullptr);
    designer_->SetTLReport(nullptr);
  }

 private:
  DesignerPtr designer_;
};

render::Format OutputFormat(const RunRequest& request) {
  if (request.format) return *request.format;
  if (std::optional<render::Format> format = render::FormatFromExtension(request.output)) {
    return *format;
  }
  throw ParameterError("The output \"" + request.output.string() +
                       "\" does not say its format: end it in .pdf, .png, .html, .txt, .csv "
                       "or .xlsx, or name the format.");
}

std::vector<std::filesystem::path> OutputFiles(const RunRequest& request, render::Format format,
                                               int pages) {
  if (format != render::Format::Png) return {request.output};
  // A PNG run is a series, one file per page, named as the renderer names them.
  std::vector<std::filesystem::path> files;
  for (int page = 1; page <= pages; ++page)
    files.push_back(render::PngPagePath(request.output, page));
  return files;
}

void ApplyValues(ReportService& service, Designer& designer, const RunRequest& request) {
  TLReport& host = *designer.TLReport();
  DateResolver resolver = [&service](const Variant& expression, const Parameters& parameters) {
    return service.Reports().InterpretDate(expression, &parameters);
  };
  ParameterDialogue dialogue(host.Parameters(), service.DatabasePtr(), resolver,
                             &service.BusinessLayer().Utilities().RangeBuilder());
  if (!Trim(request.parameters_json).empty()) dialogue.SetFromJsonText(request.parameters_json);
  for (const std::string& assignment : request.assignments) dialogue.SetFromAssignment(assignment);
  if (!dialogue.Validate()) throw ParameterError(Join(dialogue.Errors(), "\n"));
  // The report's own checks come after the kinds are right, so it reads sound values.
  if (!designer.ValidateParameters()) {
    std::vector<std::string> errors = host.Parameters().Errors();
    if (errors.empty()) errors.push_back("The report did not accept its parameters.");
    throw ParameterError(Join(errors, "\n"));
  }
}

}  // namespace

DesignerPtr OpenReport(ReportService& service, const std::string& key) {
  const CatalogueEntry* entry = FindCatalogueEntry(service.Catalogue(), key);
  if (entry == nullptr) {
    std::vector<std::string> near = NearReportKeys(service.Catalogue(), key);
    std::string message = "There is no report named \"" + key + "\".";
    if (!near.empty()) message += " Did you mean " + Join(near, ", ") + "?";
    throw ReportKeyError(message, std::move(near));
  }
  DesignerPtr designer = service.Reports().ReportFrom(service.Catalogue(), key);
  if (!designer) {
    throw ReportKeyError(
        "The report \"" + key + "\" (" + entry->designer + ") is not available in this version.",
        {});
  }
  return designer;
}

RunResult RunReportToFile(ReportService& service, const RunRequest& request) {
  const auto started = std::chrono::steady_clock::now();
  const render::Format format = OutputFormat(request);
  // One snapshot from the first parameter list to the last page: every figure of the run comes
  // from the same state of the company, whatever the accounts application writes meanwhile.
  data::Snapshot snapshot(service.Database());
  DesignerPtr designer = OpenReport(service, request.key);
  Untie untie(designer);
  ApplyValues(service, *designer, request);

  std::unique_ptr<engine::PageSink> sink =
      render::MakeSink(format, request.output, request.render_options);
  CountingSink counting(*sink, request.on_page);
  engine::RunOutcome outcome = engine::RunReport(*designer, counting);

  RunResult result;
  result.completed = outcome == engine::RunOutcome::Completed;
  result.errors = designer->TLReport()->Errors();
  if (result.completed) {
    // A cancelled run's pages were discarded: it printed nothing.
    result.pages = counting.Pages();
    result.rows = counting.Rows();
    result.subreport_rows = counting.SubreportRows();
    result.outputs = OutputFiles(request, format, result.pages);
  }
  result.elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - started);
  return result;
}

}  // namespace trellin::host
