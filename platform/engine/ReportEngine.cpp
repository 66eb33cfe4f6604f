#include "platform/engine/ReportEngine.h"

#include <utility>

#include "platform/engine/PageWriter.h"
#include "platform/engine/ReportRun.h"

namespace trellin::engine {
namespace {

PageGeometry GeometryOf(const ActiveReport& report) {
  const PageSettings& ps = report.PageSettings();
  PageGeometry g;
  bool landscape = ps.Orientation == PageOrientation::Landscape;
  g.width = landscape ? ps.PaperHeight : ps.PaperWidth;
  g.height = landscape ? ps.PaperWidth : ps.PaperHeight;
  g.left = ps.LeftMargin;
  g.top = ps.TopMargin;
  g.bottom = ps.BottomMargin;
  return g;
}

// Opens the real sink only when the first page is ready, so that the document's title is the
// Caption the designer set in ReportStart, and a run that fails before any page leaves nothing.
class OpeningSink : public PageSink {
 public:
  OpeningSink(PageSink& sink, ActiveReport& report, const RunEnvironment& env)
      : sink_(sink), report_(report), env_(env) {}

  void Begin(const DocumentInfo&) override {}
  void AddPage(const Page& page) override {
    Open();
    sink_.AddPage(page);
  }
  void End() override {
    Open();
    sink_.End();
  }
  void Abort() override {
    if (open_) sink_.Abort();
  }

 private:
  void Open() {
    if (open_) return;
    open_ = true;
    DocumentInfo info = env_.document;
    info.caption = report_.Caption();
    info.title = report_.documentName().empty() ? report_.Caption() : report_.documentName();
    const PageGeometry geometry = GeometryOf(report_);
    info.page_width = geometry.width;
    info.page_height = geometry.height;
    sink_.Begin(info);
  }

  PageSink& sink_;
  ActiveReport& report_;
  const RunEnvironment& env_;
  bool open_ = false;
};

template <typename Body>
void Quietly(ActiveReport& report, const char* source, Body&& body) {
  try {
    body();
  } catch (const std::exception& e) {
    if (report.ErrorHook()) report.ErrorHook()(source, e.what());
  }
}

}  // namespace

RunOutcome RunReport(ActiveReport& report, PageSink& sink) {
  report.Initialize();
  RunEnvironment env;
  env.top = &report;
  PageGeometry geometry = GeometryOf(report);
  OpeningSink opening(sink, report, env);
  ReportRun run(report, env, nullptr, geometry.left);
  PageWriter writer(opening, geometry, run);
  writer.SetGeometrySource([&report] { return GeometryOf(report); });

  auto terminate_all = [&] {
    // Sub-reports are told first: the designer that made them may free them in its own.
    for (auto& child : env.children) {
      Quietly(*child, "ActiveReport_Terminate", [&] { child->ActiveReport_Terminate(); });
    }
    Quietly(report, "ActiveReport_Terminate", [&] { report.ActiveReport_Terminate(); });
  };

  try {
    run.Run(writer, &writer);
  } catch (const RunCancelled&) {
    opening.Abort();
    terminate_all();
    return RunOutcome::Cancelled;
  } catch (...) {
    opening.Abort();
    throw;
  }
  opening.End();
  terminate_all();
  return RunOutcome::Completed;
}

}  // namespace trellin::engine
