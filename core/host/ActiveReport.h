#pragma once
// The designer base: a banded report with its stored layout and its events. A designer derives
// from ActiveReport, overrides the events it needs, and changes sections, controls and fields as
// the engine raises them. The engine (platform/engine) runs it; designers never see the engine.

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/host/Control.h"
#include "core/host/DataControl.h"
#include "core/host/Fields.h"
#include "core/host/LayoutScript.h"
#include "core/host/Section.h"

namespace trellin {

enum class PageOrientation { Portrait = 1, Landscape = 2 };

// Paper and margins in twips. The paper is given upright; Landscape turns it.
struct PageSettings {
  float PaperWidth = 11906;  // A4
  float PaperHeight = 16838;
  PageOrientation Orientation = PageOrientation::Portrait;
  float LeftMargin = 1080;
  float RightMargin = 1080;
  float TopMargin = 720;
  float BottomMargin = 720;
};

// Entries of the report's table of contents. A path "Country\State" gives a branch and a leaf;
// the entry points at the section being formatted when it was added, on the page it prints.
class TableOfContents {
 public:
  void Add(std::string path) { pending_.push_back(std::move(path)); }
  // For the engine: the entries added since the last call.
  [[nodiscard]] std::vector<std::string> TakePending() { return std::exchange(pending_, {}); }

 private:
  std::vector<std::string> pending_;
};

class ActiveReport;

// Fills a designer's sections and properties from its stored layout. Installed once by the
// platform; see ActiveReport::Initialize.
class LayoutProvider {
 public:
  virtual ~LayoutProvider() = default;
  // Loads the layout stored for `designer` into `report`. False when there is none; throws for a
  // layout that exists but is bad, naming the file, line and problem.
  virtual bool Load(std::string_view designer, ActiveReport& report) = 0;
  // Loads the layout file at `path` into `report`. False when there is no such file; throws for
  // a bad one, as Load.
  virtual bool LoadFile(const std::string& path, ActiveReport& report) = 0;
};

// Receives an error raised in one of the designer's events: the event's name and the message.
// The event ends quietly and the run goes on unless the hook cancels it.
using ReportErrorHook = std::function<void(const std::string& source, const std::string& message)>;

class ActiveReport : public Object {
 public:
  // `designer_name` is the class name, such as "arCustomerTypeList": its stored layout's name.
  explicit ActiveReport(std::string designer_name) : designer_name_(std::move(designer_name)) {}
  ActiveReport(const ActiveReport&) = delete;
  ActiveReport& operator=(const ActiveReport&) = delete;
  ~ActiveReport() override = default;

  [[nodiscard]] const std::string& DesignerName() const { return designer_name_; }

  // Loads the stored layout through the installed provider (when one is installed and the report
  // has no sections yet), then raises ActiveReport_Initialize. Only the first call does anything.
  // A bad layout throws; an error in the event goes to the error hook.
  void Initialize();
  [[nodiscard]] bool Initialized() const { return initialized_; }
  // Loads a user's layout file into this report, which must have no sections yet, through the
  // installed provider. False, leaving the report empty, when there is no provider or the file is
  // missing or bad: a layout script asking for a sub-layout gets an empty report, not an error.
  bool LoadLayoutFile(const std::string& path);
  static void SetLayoutProvider(std::shared_ptr<LayoutProvider> provider);
  [[nodiscard]] static std::shared_ptr<LayoutProvider> GetLayoutProvider();
  // The engine that compiles the scripts of stored layouts; none installed, a layout with a
  // script does not load.
  static void SetScriptEngine(std::shared_ptr<ScriptEngine> engine);
  [[nodiscard]] static std::shared_ptr<ScriptEngine> GetScriptEngine();

  // The script of the loaded layout, nullptr when it has none. The engine runs its handlers
  // after the designer's own.
  [[nodiscard]] LayoutScript* Script() const { return script_.get(); }
  void SetScript(std::unique_ptr<LayoutScript> script) { script_ = std::move(script); }
  // The file the layout was read from ("layouts/admin/arX.yaml", or the user's own), for messages.
  [[nodiscard]] const std::string& LayoutFile() const { return layout_file_; }
  void SetLayoutFile(std::string v) { layout_file_ = std::move(v); }

  // --- Properties ---
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(std::string v) { caption_ = std::move(v); }
  [[nodiscard]] const std::string& documentName() const { return document_name_; }
  void SetDocumentName(std::string v) { document_name_ = std::move(v); }
  // Width of the printed body in twips, from the left margin.
  [[nodiscard]] float PrintWidth() const { return print_width_; }
  void SetPrintWidth(float v) { print_width_ = v; }
  [[nodiscard]] trellin::PageSettings& PageSettings() { return page_settings_; }
  [[nodiscard]] const trellin::PageSettings& PageSettings() const { return page_settings_; }
  [[nodiscard]] trellin::Sections& Sections() { return sections_; }
  [[nodiscard]] const trellin::Sections& Sections() const { return sections_; }
  [[nodiscard]] trellin::Fields& Fields() { return fields_; }
  [[nodiscard]] const trellin::Fields& Fields() const { return fields_; }
  [[nodiscard]] trellin::DataControl& DataControl() { return data_control_; }
  [[nodiscard]] TableOfContents& TOC() { return toc_; }
  // The number of the page being laid out, from 1; 0 before the first page.
  [[nodiscard]] int PageNumber() const { return page_number_; }

  // The named control, searched in every section; throws NoSuchItem.
  [[nodiscard]] Control& Field(std::string_view control_name) const;
  [[nodiscard]] Control* FindControl(std::string_view control_name) const;

  // --- Events, each optional ---
  virtual void ActiveReport_Initialize() {}
  virtual void ActiveReport_ReportStart() {}
  virtual void ActiveReport_DataInitialize() {}
  // Raised for each row. Unbound reports fill their Fields and set `eof` when there are no more
  // rows; bound reports find the row's values already in Fields and may add their own. Left to
  // this default (by the designer and by the layout's script), an unbound report has one row: a
  // form or letter with no data of its own prints its detail once.
  virtual void ActiveReport_FetchData(bool& eof) {
    (void)eof;
    fetch_left_to_default_ = true;
  }
  // Raised for every section instance, hidden ones included, once each.
  virtual void OnFormat(Section& section) { (void)section; }
  virtual void OnBeforePrint(Section& section) { (void)section; }
  virtual void OnAfterPrint(Section& section) { (void)section; }
  virtual void ActiveReport_ReportEnd() {}
  virtual void ActiveReport_Terminate() {}

  // --- Host side ---
  void SetErrorHook(ReportErrorHook hook) { error_hook_ = std::move(hook); }
  [[nodiscard]] const ReportErrorHook& ErrorHook() const { return error_hook_; }
  // Asks the engine to stop the run at the next event; the output is discarded.
  void Cancel() { cancel_requested_ = true; }
  [[nodiscard]] bool CancelRequested() const { return cancel_requested_; }
  void ClearCancel() { cancel_requested_ = false; }
  // Whether FetchData came to the default since the last call; for the engine.
  [[nodiscard]] bool TakeFetchLeftToDefault() {
    return std::exchange(fetch_left_to_default_, false);
  }

  // For the engine: the page now being laid out.
  void SetPageNumber(int n) { page_number_ = n; }

 private:
  std::string designer_name_;
  bool initialized_ = false;
  std::string caption_;
  std::string document_name_;
  float print_width_ = 9746;  // A4 less the default margins
  trellin::PageSettings page_settings_;
  trellin::Sections sections_;
  trellin::Fields fields_;
  trellin::DataControl data_control_;
  TableOfContents toc_;
  int page_number_ = 0;
  ReportErrorHook error_hook_;
  std::atomic<bool> cancel_requested_ = false;
  std::string layout_file_;
  // Last, so that the script (which refers to this report) goes first.
  bool fetch_left_to_default_ = false;
  std::unique_ptr<LayoutScript> script_;
};

}  // namespace trellin
