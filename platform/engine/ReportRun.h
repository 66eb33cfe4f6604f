#pragma once
// The run state of one report (top level or sub-report): its data cursor, group keys, summaries
// and the event plumbing. The layout objects stay plain data; all of this lives here.

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/host/ActiveReport.h"
#include "platform/engine/Band.h"
#include "platform/engine/ColumnSink.h"
#include "platform/engine/Expression.h"
#include "platform/engine/PageWriter.h"
#include "platform/engine/SectionLayout.h"
#include "platform/engine/Summaries.h"
#include "platform/engine/TextMeasure.h"
#include "platform/runtime/Error.h"

namespace trellin::engine {

// Thrown through the run when the report (or its host) asks to stop.
struct RunCancelled {};

// What all the reports of one run share: the measuring context, compiled expressions, and the
// sub-reports that ran, which are told ActiveReport_Terminate once at the end.
struct RunEnvironment {
  TextMeasure measure;
  std::unordered_map<std::string, std::shared_ptr<const Expression>> expressions;
  ActiveReport* top = nullptr;
  std::vector<std::shared_ptr<ActiveReport>> children;
  int depth = 0;
  // The top report's table, title lines and description, as declared when its start is done.
  DocumentInfo document;
};

class ReportRun : public PageFurniture {
 public:
  // `x0` is the left edge of the report's sections on the page (the left margin at the top
  // level, 0 in a sub-report, whose bands the parent moves into place).
  ReportRun(ActiveReport& report, RunEnvironment& env, ReportRun* parent, float x0);

  // From ReportStart to ReportEnd, bands going to `out`. With `writer` (the top level) the last
  // page is finished before ReportEnd.
  void Run(BandSink& out, PageWriter* writer);

  Band PageHeader(int page) override;
  Band PageFooter(int page) override;
  float FooterReserve() override;

  // Raises one event under the error rules: an exception goes to the nearest error hook and the
  // event ends quietly; a cancel request stops the run. Returns false when the event failed.
  // With `eof`, a script handler's result (true at the end of the data) is put there.
  template <typename Event>
  bool Raise(const Section* section, const char* event, Event&& body, bool* eof = nullptr);

 private:
  template <typename Event>
  bool Guard(const Section* section, const char* event, Event&& body);

  struct GroupLevel {
    Section* header = nullptr;
    Section* footer = nullptr;
    Variant key;
    bool open = false;  // its header has printed and its footer not yet
  };
  struct BoundControl {
    std::string data_field;
    int field = -1;
  };
  // Whether the layout's script handles an event of a section, asked of the script once a run.
  struct ScriptHandler {
    const Section* section;
    const char* event;
    std::string name;  // "Detail_Format"; empty when the script has no such handler
  };

  // Data.
  void BindData();
  bool FetchRow(bool first);
  void LoadRow();
  void RunRows();

  // Groups.
  void BuildGroups();
  [[nodiscard]] int GroupLevelOf(const Section& section) const;
  [[nodiscard]] Variant GroupKey(const GroupLevel& group) const;
  [[nodiscard]] int BreakLevel() const;
  void StartGroups(int through_level);
  void EndGroups(int through_level);
  void SnapshotFields(std::vector<Variant>& into) const;
  void SwapFields(std::vector<Variant>& with);

  // Sections.
  void PrintSection(Section& section, RowKind kind, int level);
  // The detail in its columns, when it has them: bands go to the cells until another section
  // prints.
  void PrintDetail();
  void FlushColumns();
  void FormatOnly(Section& section);
  void FillBoundControls(Section& section);
  void EvaluateExpressions(
      Section& section, std::unordered_map<const Control*, std::function<std::string(int)>>& late);
  void LayOutAndPlace(Section& section, RowKind kind, int level, std::vector<std::string> toc);
  void PlaceWithPageBreaks(Band band, const Arrangement& arrangement, float offset = 0);
  float RunChild(const ArrangedControl& subreport);
  Band FurnitureBand(Section* section, RowKind kind, int page);
  // The headers of the open groups that repeat on every page, outer to inner, laid out below
  // the page header's `band`; they carry no rows, so the data exports do not see them twice.
  void AddRepeatedHeaders(Band& band);
  void ReportEventError(const std::string& source, const std::string& message);
  void CheckCancel() const;
  // The script's handler of the event, nullptr when it has none.
  const std::string* ScriptHandlerOf(const LayoutScript& script, const Section* section,
                                     const char* event);

  ActiveReport& report_;
  RunEnvironment& env_;
  ReportRun* parent_;
  float x0_;
  BandSink* out_ = nullptr;
  std::shared_ptr<Recordset> rs_;
  std::vector<int> column_field_;   // recordset column -> position in Fields
  std::vector<GroupLevel> groups_;  // [0] is level 1, the innermost
  Section* detail_ = nullptr;
  std::unique_ptr<ColumnSink> columns_;
  std::vector<ScriptHandler> handlers_;
  const LayoutScript* handlers_of_ = nullptr;
  float cell_width_ = 0;  // a column's width, while the detail prints in columns
  Summaries summaries_;
  std::unordered_map<const Control*, BoundControl> bound_;
};

template <typename Event>
bool ReportRun::Guard(const Section* section, const char* event, Event&& body) {
  try {
    body();
    return true;
  } catch (const RunCancelled&) {
    throw;
  } catch (const Error& e) {
    // A company file that fails under the report ends the run: carrying on would print
    // headings with no figures, or figures short of the rows that failed. So does the user's
    // input found wrong only as the report prepares (a column picked that it does not have, a
    // filter too long to run): the user mends it, the report is not at fault.
    if (e.Kind() == ErrorKind::CompanyFile || e.Kind() == ErrorKind::Input) throw;
    ReportEventError(section ? section->Name() + "_" + event : std::string(event), e.what());
  } catch (const std::exception& e) {
    ReportEventError(section ? section->Name() + "_" + event : std::string(event), e.what());
  }
  return false;
}

template <typename Event>
bool ReportRun::Raise(const Section* section, const char* event, Event&& body, bool* eof) {
  report_.SetPageNumber(out_ ? out_->CurrentPage() : 0);
  bool ok = Guard(section, event, body);
  // The layout's script handles the event after the designer, and fails on its own.
  if (LayoutScript* script = report_.Script()) {
    if (const std::string* handler = ScriptHandlerOf(*script, section, event)) {
      ok = Guard(section, event,
                 [&] {
                   Variant result = script->Run(*handler);
                   if (eof && !result.IsEmpty()) *eof = result.ToBool();
                 }) &&
           ok;
    }
  }
  CheckCancel();
  return ok;
}

}  // namespace trellin::engine
