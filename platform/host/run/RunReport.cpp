// The run driver: key, values, snapshot, engine, renderer, result.

#include "platform/host/run/RunReport.h"

#include <sys/stat.h>

#include <system_error>

#include "core/TLRPXSupport.h"
#include "core/host/ApplicationSettings.h"
#include "platform/data/SqliteDatabase.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ColumnLayout.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

// Passes pages on to the renderer, counting them and the detail rows on them: the main report's
// apart from its sub-reports'.
class CountingSink : public engine::PageSink {
 public:
  CountingSink(engine::PageSink& target, const std::function<void(int, std::int64_t)>& on_page,
               const std::function<void(const engine::Page&)>& on_page_model)
      : target_(target), on_page_(on_page), on_page_model_(on_page_model) {}
  void Begin(const engine::DocumentInfo& info) override { target_.Begin(info); }
  void AddPage(const engine::Page& page) override {
    ++pages_;
    for (const engine::DataRow& row : page.rows) {
      if (row.kind != engine::RowKind::Detail) continue;
      ++(row.depth == 0 ? rows_ : subreport_rows_);
    }
    target_.AddPage(page);
    if (on_page_model_) on_page_model_(page);
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
  const std::function<void(const engine::Page&)>& on_page_model_;
  int pages_ = 0;
  std::int64_t rows_ = 0;
  std::int64_t subreport_rows_ = 0;
};

// One pass of the engine into several renderers.
class TeeSink : public engine::PageSink {
 public:
  explicit TeeSink(std::vector<std::unique_ptr<engine::PageSink>> targets)
      : targets_(std::move(targets)) {}
  void Begin(const engine::DocumentInfo& info) override {
    for (auto& target : targets_) target->Begin(info);
  }
  void AddPage(const engine::Page& page) override {
    for (auto& target : targets_) target->AddPage(page);
  }
  void End() override {
    for (auto& target : targets_) target->End();
  }
  void Abort() override {
    for (auto& target : targets_) target->Abort();
  }

 private:
  std::vector<std::unique_ptr<engine::PageSink>> targets_;
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

// What a path names, with links followed; nullopt when there is nothing there.
std::optional<struct stat> StatOf(const std::filesystem::path& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return std::nullopt;
  return info;
}

bool SameFile(const struct stat& a, const std::optional<struct stat>& b) {
  return b && a.st_dev == b->st_dev && a.st_ino == b->st_ino;
}

[[noreturn]] void RefuseOutput(const std::filesystem::path& output, const std::string& why) {
  throw ParameterError("The output \"" + output.string() + "\" " + why);
}

// The output is renamed over whatever has its name once the report is complete, so it must name
// a regular file or nothing, and never the company file or the files SQLite keeps beside it
// (through a link or another name too).
void CheckOutput(const std::filesystem::path& output, const std::string& company_path) {
  if (output.filename().empty() || output.filename() == "." || output.filename() == "..") {
    RefuseOutput(output, "names a folder; give a file name.");
  }
  std::error_code error;
  const std::filesystem::path company = std::filesystem::weakly_canonical(company_path, error);
  const std::filesystem::path named = std::filesystem::weakly_canonical(output, error);
  for (const char* suffix : {"-wal", "-shm", "-journal"}) {
    // Not there now, but SQLite would take a file of that name for its own when next it opens.
    if (!company.empty() && named == company.string() + suffix) {
      RefuseOutput(output, "is one of the company file's own files; give another file name.");
    }
  }
  const std::optional<struct stat> target = StatOf(output);
  if (!target) return;
  if (SameFile(*target, StatOf(company_path))) {
    RefuseOutput(output, "is the company file; give another file name.");
  }
  for (const char* suffix : {"-wal", "-shm", "-journal"}) {
    if (SameFile(*target, StatOf(company_path + suffix))) {
      RefuseOutput(output, "is one of the company file's own files; give another file name.");
    }
  }
  if (S_ISDIR(target->st_mode)) RefuseOutput(output, "is a folder; give a file name.");
  if (S_ISCHR(target->st_mode) || S_ISBLK(target->st_mode)) {
    RefuseOutput(output, "is a device, not a file; give a file name.");
  }
  if (S_ISFIFO(target->st_mode)) RefuseOutput(output, "is a pipe, not a file; give a file name.");
  if (S_ISSOCK(target->st_mode)) RefuseOutput(output, "is a socket, not a file; give a file name.");
  if (!S_ISREG(target->st_mode)) RefuseOutput(output, "is not a regular file; give a file name.");
}

// The folders an output needs that are not there yet, made only once the run is ready to write
// and removed again (when still empty) if it then fails, so a failed run leaves no folder behind.
class OutputFolders {
 public:
  explicit OutputFolders(const std::filesystem::path& output) {
    for (std::filesystem::path folder = output.parent_path(); !folder.empty();
         folder = folder.parent_path()) {
      std::error_code error;
      if (std::filesystem::exists(folder, error)) {
        if (!std::filesystem::is_directory(folder, error)) {
          RefuseOutput(output, "cannot be written: \"" + folder.string() + "\" is not a folder.");
        }
        break;
      }
      missing_.insert(missing_.begin(), folder);
      if (folder == folder.parent_path()) break;
    }
  }
  OutputFolders(const OutputFolders&) = delete;
  OutputFolders& operator=(const OutputFolders&) = delete;
  ~OutputFolders() {
    if (kept_) return;
    for (auto it = made_.rbegin(); it != made_.rend(); ++it) {
      std::error_code ignored;
      std::filesystem::remove(*it, ignored);
    }
  }

  void Make(const std::filesystem::path& output) {
    for (const std::filesystem::path& folder : missing_) {
      std::error_code error;
      if (!std::filesystem::create_directory(folder, error) && error) {
        RefuseOutput(output, "cannot be written: the folder \"" + folder.string() +
                                 "\" cannot be made (" + error.message() + ").");
      }
      made_.push_back(folder);
    }
  }
  void Keep() { kept_ = true; }

 private:
  std::vector<std::filesystem::path> missing_;
  std::vector<std::filesystem::path> made_;
  bool kept_ = false;
};

render::Format OutputFormat(const std::filesystem::path& output,
                            std::optional<render::Format> named) {
  if (named) return *named;
  if (std::optional<render::Format> format = render::FormatFromExtension(output)) {
    return *format;
  }
  throw ParameterError("The output \"" + output.string() +
                       "\" does not say its format: end it in .pdf, .png, .html, .txt, .csv "
                       "or .xlsx, or name the format.");
}

void AddOutputFiles(const std::filesystem::path& output, render::Format format, int pages,
                    std::vector<std::filesystem::path>& files) {
  if (format != render::Format::Png) {
    files.push_back(output);
    return;
  }
  // A PNG run is a series, one file per page, named as the renderer names them.
  for (int page = 1; page <= pages; ++page) files.push_back(render::PngPagePath(output, page));
}

// The fiscal year asked for, by id or by the calendar year it ends in; 0 is the current year.
std::optional<std::string> CheckFiscalYear(ReportService& service, TLReport& host) {
  ParameterPtr parameter = host.Parameters().Find("FiscalYear");
  if (!parameter || parameter->Value.IsNull() || parameter->Value.IsEmpty()) return std::nullopt;
  std::int64_t wanted = 0;
  try {
    wanted = parameter->Value.ToLong();
  } catch (const std::exception&) {
    return std::nullopt;  // not a number: the dialogue has said so
  }
  if (wanted == 0) return std::nullopt;
  const std::vector<FinancialYear> years = service.Application().FinancialCalendar().Years();
  for (const FinancialYear& year : years) {
    if (year.Id == wanted || year.DateEnd.Year() == wanted) return std::nullopt;
  }
  std::string known;
  if (!years.empty()) {
    known = " (its years end in " + std::to_string(years.front().DateEnd.Year()) + " to " +
            std::to_string(years.back().DateEnd.Year()) + ")";
  }
  return parameter->Label() + ": the company has no financial year " + std::to_string(wanted) +
         known + ".";
}

// The columns picked, each of which must be one the report has.
std::optional<std::string> CheckColumns(ReportService&, TLReport& host) {
  auto* layout = dynamic_cast<ColumnLayout*>(&host.DataColumns());
  if (layout == nullptr || layout->Count() == 0) return std::nullopt;
  try {
    (void)layout->PickedColumns();
  } catch (const ParameterError& e) {
    return std::string(e.what());
  }
  return std::nullopt;
}

// Standard parameters that only the company or the report's columns can judge, checked before
// the report starts, so that a bad value is the user's error and not the report's.
using CompanyCheck = std::optional<std::string> (*)(ReportService&, TLReport&);
constexpr CompanyCheck kCompanyChecks[] = {CheckFiscalYear, CheckColumns};

void ApplyValues(ReportService& service, Designer& designer, const RunRequest& request) {
  TLReport& host = *designer.TLReport();
  DateResolver resolver = [&service](const Variant& expression, const Parameters& parameters) {
    return service.Reports().InterpretDate(expression, &parameters);
  };
  ParameterDialogue dialogue(host.Parameters(), service.DatabasePtr(), resolver,
                             &service.BusinessLayer().Utilities().RangeBuilder());
  if (!Trim(request.parameters_json).empty()) dialogue.SetFromJsonText(request.parameters_json);
  for (const std::string& assignment : request.assignments) dialogue.SetFromAssignment(assignment);
  // Every problem at once, on one line: the user mends them all before the next try.
  std::vector<std::string> errors;
  if (!dialogue.Validate()) errors = dialogue.Errors();
  for (CompanyCheck check : kCompanyChecks) {
    if (std::optional<std::string> problem = check(service, host)) errors.push_back(*problem);
  }
  if (!errors.empty()) throw ParameterError(Join(errors, " "));
  // The report's own checks come after the kinds are right, so it reads sound values.
  if (!designer.ValidateParameters()) {
    std::vector<std::string> errors = host.Parameters().Errors();
    if (errors.empty()) errors.push_back("The report did not accept its parameters.");
    throw ParameterError(Join(errors, " "));
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
  // No application stands behind the run: the members it would set are offered as settings.
  if (auto* settings = dynamic_cast<ApplicationSettings*>(designer.get())) {
    settings->DeclareSettings(designer->TLReport()->Parameters());
  }
  return designer;
}

namespace {

RunResult Run(ReportService& service, const RunRequest& request);

}  // namespace

void CheckRunValues(ReportService& service, const RunRequest& request) {
  data::Snapshot snapshot(service.Database());
  DesignerPtr designer = OpenReport(service, request.key);
  Untie untie(designer);
  ApplyValues(service, *designer, request);
}

RunResult RunReportToFile(ReportService& service, const RunRequest& request) {
  try {
    return Run(service, request);
  } catch (const DatabaseError& e) {
    // Every company file error names the file, whichever layer found it.
    const std::string& path = service.Database().Path();
    if (e.Kind() != ErrorKind::CompanyFile ||
        std::string_view(e.what()).find(path) != std::string_view::npos) {
      throw;
    }
    throw DatabaseError("The company file '" + path + "' cannot be read: " + e.what());
  }
}

namespace {

// A user's copy of any layout may carry a script: it gets `rpx` as the Document keys' do, with
// the run's parameters and, where the report has them, its DateAsAt and SQLWhere. A Document
// key sets its own again when it starts.
void GiveScriptSupport(Designer& designer) {
  LayoutScript* script = designer.Script();
  if (script == nullptr || !designer.TLReport()) return;
  auto rpx = std::make_shared<TLRPXSupport>();
  Parameters& parameters = designer.TLReport()->Parameters();
  rpx->TLReport = designer.TLReport();
  rpx->Parameters = &parameters;
  if (ParameterPtr as_at = parameters.Find("DateAsAt"); as_at && as_at->Value.IsDate()) {
    rpx->dateAsAt = as_at->Value.ToDate().DateOnly();
  }
  if (ParameterPtr where = parameters.Find("SQLWhere")) rpx->SQLWhere = where->Value.Text();
  script->SetGlobal("rpx", Variant(std::static_pointer_cast<Object>(rpx)));
}

RunResult Run(ReportService& service, const RunRequest& request) {
  const auto started = std::chrono::steady_clock::now();
  std::vector<std::pair<std::filesystem::path, render::Format>> outputs = {
      {request.output, OutputFormat(request.output, request.format)}};
  for (const std::filesystem::path& more : request.also) {
    outputs.emplace_back(more, OutputFormat(more, std::nullopt));
  }
  for (const auto& output : outputs) CheckOutput(output.first, service.Database().Path());
  OutputFolders folders(request.output);
  // One snapshot from the first parameter list to the last page: every figure of the run comes
  // from the same state of the company, whatever the accounts application writes meanwhile.
  data::Snapshot snapshot(service.Database());
  DesignerPtr designer = OpenReport(service, request.key);
  Untie untie(designer);
  ApplyValues(service, *designer, request);

  folders.Make(request.output);
  std::unique_ptr<engine::PageSink> sink;
  if (outputs.size() == 1) {
    sink = render::MakeSink(outputs[0].second, request.output, request.render_options);
  } else {
    std::vector<std::unique_ptr<engine::PageSink>> sinks;
    for (const auto& [path, format] : outputs) {
      sinks.push_back(render::MakeSink(format, path, request.render_options));
    }
    sink = std::make_unique<TeeSink>(std::move(sinks));
  }
  CountingSink counting(*sink, request.on_page, request.on_page_model);
  GiveScriptSupport(*designer);
  engine::RunOutcome outcome = engine::RunReport(*designer, counting);

  RunResult result;
  result.completed = outcome == engine::RunOutcome::Completed;
  if (result.completed) folders.Keep();
  result.errors = designer->TLReport()->Errors();
  if (result.completed) {
    // A cancelled run's pages were discarded: it printed nothing.
    result.pages = counting.Pages();
    result.rows = counting.Rows();
    result.subreport_rows = counting.SubreportRows();
    for (const auto& [path, format] : outputs) {
      AddOutputFiles(path, format, result.pages, result.outputs);
    }
  }
  result.elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - started);
  return result;
}

}  // namespace

}  // namespace trellin::host
