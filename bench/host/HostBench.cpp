// What the host adds to a run: a column-driven report with two group levels, its columns laid
// out by CreateFields and every row filled by FillRow ("Round" columns included), headings and
// total captions per group, over generated rows into a sink that drops every page. Rows per
// second, to set beside the engine's own benchmark.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "platform/engine/LayoutLoader.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ReportHost.h"

namespace trellin::host {
namespace {

constexpr const char* kLayout = R"yaml(
Report: {Caption: Column List, PrintWidth: 9746}
Sections:
  - {Name: PageHeader, Height: 400, Controls: [{Class: Label, Name: lblHeading, Rect: [0, 100, 9746, 240]}]}
  - {Name: GroupHeader2, Height: 260, Controls: [{Class: Label, Name: ghLabel2, Rect: [0, 0, 9000, 240]}]}
  - {Name: GroupHeader1, Height: 260, Controls: [{Class: Label, Name: ghLabel1, Rect: [0, 0, 9000, 240]}]}
  - {Name: Detail, Height: 0}
  - {Name: GroupFooter1, Height: 260, Controls: [{Class: Label, Name: gfLabel1, Rect: [0, 0, 4000, 240]}]}
  - {Name: GroupFooter2, Height: 260, Controls: [{Class: Label, Name: gfLabel2, Rect: [0, 0, 4000, 240]}]}
  - {Name: ReportFooter, Height: 260}
)yaml";

class DiscardingSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo&) override {}
  void AddPage(const engine::Page&) override {}
  void End() override {}
  void Abort() override {}
};

// Unbound rows: region changes every 5,000 rows, town every 100.
class ColumnList : public ActiveReport {
 public:
  ColumnList(std::shared_ptr<ReportHost> host, std::int64_t rows)
      : ActiveReport("arColumnList"), host_(std::move(host)), rows_(rows) {
    engine::LoadLayout(kLayout, "bench.yaml", *this);
  }

  void ActiveReport_ReportStart() override {
    ColumnLayout& columns = host_->Columns();
    columns.Add("Code", "Id", 6, "Code", "", -1, 900, -1, 0, "(auto)", 0, 0, "", true, "", false,
                false);
    columns.Add("Name", "Name", 0, "Name", "", -1, -1, -1, 0, "(auto)", 0, 0, "", true, "", false,
                false);
    columns.Add("Amount", "Amount", 4, "Amount", "", 1400, -1, -1, 0, "(auto)", 0, 0, "", true, "",
                true, false);
    columns.Add("Rate", "Rate", 1, "Rate", "", 1000, -1, -1, 0, "Round", 2, 2, "", true, "", true,
                false);
    host_->DefineGroup(2, "Region", "Region", "", false);
    host_->DefineGroup(1, "Town", "Town", "", false);
    host_->EndDefineGroups();
    host_->SetupGroupSections(false, 200, true);
    columns.CreateFields(100, 0, 15, 0, true, 0, 10.0f, 8.0f);
  }
  void ActiveReport_DataInitialize() override {
    for (const char* name : {"Id", "Name", "Amount", "Rate", "Region", "Town"}) Fields().Add(name);
  }
  void ActiveReport_FetchData(bool& eof) override {
    if (row_ >= rows_) {
      eof = true;
      return;
    }
    Fields().Item(std::size_t{0}).SetValue(Variant("C" + std::to_string(row_)));
    Fields().Item(1).SetValue(Variant("Customer " + std::to_string(row_ % 977)));
    Fields().Item(2).SetValue(Variant(Currency::FromRaw(row_ * 1234 % 9999999)));
    Fields().Item(3).SetValue(Variant(static_cast<double>(row_ % 1000) / 7.0));
    Fields().Item(4).SetValue(Variant(row_ / 5000));
    Fields().Item(5).SetValue(Variant(row_ / 100));
    ++row_;
  }
  void OnFormat(Section& section) override {
    if (section.Name() == "GroupHeader1") host_->GroupHeaderFormat(1);
    if (section.Name() == "GroupHeader2") host_->GroupHeaderFormat(2);
    if (section.Name() == "GroupFooter1") host_->GroupFooterFormat(1);
    if (section.Name() == "GroupFooter2") host_->GroupFooterFormat(2);
    if (section.Type() == SectionType::Detail) host_->DetailFormat(section, " ");
  }

 private:
  std::shared_ptr<ReportHost> host_;
  std::int64_t rows_;
  std::int64_t row_ = 0;
};

void BM_HostedColumnRun(benchmark::State& state) {
  const std::int64_t rows = state.range(0);
  for (auto _ : state) {
    auto host = std::make_shared<ReportHost>(nullptr);
    host->Columns().SetEnabled(true);
    auto report = std::make_shared<ColumnList>(host, rows);
    host->SetArReport(report);
    host->Columns().Initialise(*host);
    DiscardingSink sink;
    engine::RunReport(*report, sink);
    host->SetArReport(nullptr);
  }
  state.counters["rows/s"] =
      benchmark::Counter(static_cast<double>(rows) * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
}
BENCHMARK(BM_HostedColumnRun)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace trellin::host
