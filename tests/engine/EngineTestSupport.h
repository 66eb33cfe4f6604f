#pragma once
// Shared pieces of the engine tests: an in-memory recordset, a sink that keeps the pages, and a
// designer that records every event it receives.

#include <memory>
#include <string>
#include <vector>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "platform/data/MemoryRecordset.h"
#include "platform/engine/DumpPage.h"
#include "platform/engine/LayoutLoader.h"
#include "platform/engine/ReportEngine.h"

namespace trellin::engine::testing {

// Rows held in memory: the data layer's own recordset, so that the engine's tests see the real
// contract (field names matched without regard to case, the cursor on the first row).
using MemoryRecordset = data::MemoryRecordset;

// Keeps every page, for the tests to look at; a real sink would stream them out.
class KeepingSink : public PageSink {
 public:
  void Begin(const DocumentInfo& info) override {
    info_ = info;
    log.push_back("Begin");
  }
  void AddPage(const Page& page) override { pages.push_back(page); }
  void End() override { log.push_back("End"); }
  void Abort() override { log.push_back("Abort"); }

  [[nodiscard]] std::string Dump() const {
    std::string out;
    for (const auto& p : pages) out += DumpPage(p);
    return out;
  }
  // The printed text of a page, run by run, one per line.
  [[nodiscard]] std::string Texts(std::size_t page) const;
  // The sections of the data rows of a page, with their first cell's text: "Detail:A".
  [[nodiscard]] std::vector<std::string> Rows(std::size_t page) const;

  DocumentInfo info_;
  std::vector<Page> pages;
  std::vector<std::string> log;
};

// A designer whose layout is given as YAML text and which logs its events as "Detail.Format";
// tests add behaviour through the hooks.
// The text of tests/engine/layouts/<name>.yaml.
[[nodiscard]] std::string TestLayout(std::string_view name);

class TestReport : public ActiveReport {
 public:
  explicit TestReport(std::string_view yaml, std::string name = "arTest");

  void ActiveReport_Initialize() override { log.push_back("Initialize"); }
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void OnAfterPrint(Section& section) override;
  void ActiveReport_ReportEnd() override { log.push_back("ReportEnd"); }
  void ActiveReport_Terminate() override { log.push_back("Terminate"); }

  std::function<void()> on_start, on_data_initialize;
  std::function<void(bool&)> on_fetch;
  std::function<void(Section&)> on_format, on_before_print, on_after_print;
  std::vector<std::string> log;
  // Whether the sub-report control's child prints: for counting runs.
  int starts = 0;
};

// Runs a report into a keeping sink.
KeepingSink Run(ActiveReport& report);

// A recordset of string and number columns from a compact table.
std::shared_ptr<MemoryRecordset> Rows(std::vector<std::string> names,
                                      std::vector<std::vector<Variant>> rows);

}  // namespace trellin::engine::testing
