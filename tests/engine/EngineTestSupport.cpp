#include "EngineTestSupport.h"

#include <sstream>

#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::engine::testing {

std::string KeepingSink::Texts(std::size_t page) const {
  std::string out;
  for (const auto& item : pages.at(page).items) {
    if (const auto* t = std::get_if<TextRun>(&item)) out += t->text + "\n";
  }
  return out;
}

std::vector<std::string> KeepingSink::Rows(std::size_t page) const {
  std::vector<std::string> out;
  for (const auto& row : pages.at(page).rows) {
    out.push_back(row.section + ":" + (row.cells.empty() ? std::string() : row.cells.front().text));
  }
  return out;
}

std::string TestLayout(std::string_view name) {
  return trellin::testing::ReadFile(trellin::testing::TestDir("engine/layouts") /
                                    (std::string(name) + ".yaml"));
}

TestReport::TestReport(std::string_view yaml, std::string name) : ActiveReport(std::move(name)) {
  LoadLayout(yaml, "test.yaml", *this);
}

void TestReport::ActiveReport_ReportStart() {
  ++starts;
  log.push_back("ReportStart");
  if (on_start) on_start();
}

void TestReport::ActiveReport_DataInitialize() {
  log.push_back("DataInitialize");
  if (on_data_initialize) on_data_initialize();
}

void TestReport::ActiveReport_FetchData(bool& eof) {
  if (on_fetch) {
    on_fetch(eof);
  } else {
    ActiveReport::ActiveReport_FetchData(eof);
  }
  log.push_back(eof ? "FetchData(eof)" : "FetchData");
}

void TestReport::OnFormat(Section& section) {
  log.push_back(section.Name() + ".Format");
  if (on_format) on_format(section);
}

void TestReport::OnBeforePrint(Section& section) {
  log.push_back(section.Name() + ".BeforePrint");
  if (on_before_print) on_before_print(section);
}

void TestReport::OnAfterPrint(Section& section) {
  log.push_back(section.Name() + ".AfterPrint");
  if (on_after_print) on_after_print(section);
}

KeepingSink Run(ActiveReport& report) {
  KeepingSink sink;
  RunReport(report, sink);
  return sink;
}

std::shared_ptr<MemoryRecordset> Rows(std::vector<std::string> names,
                                      std::vector<std::vector<Variant>> rows) {
  std::vector<FieldInfo> fields;
  for (auto& n : names) {
    FieldInfo f;
    f.name = std::move(n);
    fields.push_back(std::move(f));
  }
  return std::make_shared<MemoryRecordset>(std::move(fields), std::move(rows), false);
}

}  // namespace trellin::engine::testing
