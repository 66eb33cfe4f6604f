// A bound report with two group levels, group and grand summaries and a page number, run over
// generated rows into a sink that drops every page: rows per second, and the peak resident memory,
// which must stay flat from 100,000 to 1,000,000 rows since no finished page is kept.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "platform/engine/LayoutLoader.h"
#include "platform/engine/ReportEngine.h"

namespace trellin::engine {
namespace {

constexpr const char* kLayout = R"yaml(
Report: {Caption: Ledger, PrintWidth: 9746}
Sections:
  - {Name: PageHeader, Height: 400, Controls: [{Class: Label, Name: lblTitle, Rect: [0, 0, 5000, 300], Caption: Ledger, Font: {Bold: true, Size: 12}}]}
  - {Name: ghRegion, Type: GroupHeader, DataField: Region, Height: 300,
     Controls: [{Class: Field, Name: txtRegion, DataField: Region, Rect: [0, 0, 3000, 300]}]}
  - {Name: ghTown, Type: GroupHeader, DataField: Town, Height: 300,
     Controls: [{Class: Field, Name: txtTown, DataField: Town, Rect: [200, 0, 3000, 300]}]}
  - Name: Detail
    Height: 250
    Controls:
      - {Class: Field, Name: txtId, DataField: Id, Rect: [0, 0, 1000, 250]}
      - {Class: Field, Name: txtName, DataField: Name, Rect: [1000, 0, 3000, 250]}
      - {Class: Field, Name: txtDate, DataField: Date, Rect: [4000, 0, 1500, 250], OutputFormat: "d/mm/yyyy"}
      - {Class: Field, Name: txtAmount, DataField: Amount, Rect: [5500, 0, 2000, 250], OutputFormat: "#,##0.00;(#,##0.00)", Alignment: Right}
  - Name: gfTown
    Type: GroupFooter
    Height: 300
    Controls:
      - {Class: Field, Name: gfTownCount, DataField: Id, SummaryType: SubTotal, SummaryFunc: Count, Rect: [1000, 0, 1000, 300]}
      - {Class: Field, Name: gfTownTotal, DataField: Amount, SummaryType: SubTotal, Rect: [5500, 0, 2000, 300], OutputFormat: "#,##0.00", Alignment: Right, Border: {TopStyle: 1}}
  - Name: gfRegion
    Type: GroupFooter
    Height: 300
    Controls:
      - {Class: Field, Name: gfRegionTotal, DataField: Amount, SummaryType: SubTotal, Rect: [5500, 0, 2000, 300], OutputFormat: "#,##0.00", Alignment: Right, Border: {TopStyle: 1, BottomStyle: 6}}
  - {Name: PageFooter, Height: 300, Controls: [{Class: Field, Name: txtPage, DataField: '="Page " & rpt.PageNumber', Rect: [0, 0, 3000, 300]}]}
  - Name: ReportFooter
    Height: 300
    Controls:
      - {Class: Field, Name: rfTotal, DataField: Amount, SummaryType: GrandTotal, Rect: [5500, 0, 2000, 300], OutputFormat: "#,##0.00", Alignment: Right}
)yaml";

// Rows made up as the cursor moves, so that the data itself takes no memory.
class GeneratedRows : public Recordset {
 public:
  explicit GeneratedRows(std::int64_t count) : count_(count) {
    fields_ = {{"Id", FieldType::Long},   {"Region", FieldType::Text},
               {"Town", FieldType::Text}, {"Name", FieldType::Text},
               {"Date", FieldType::Date}, {"Amount", FieldType::Currency}};
    Load();
  }
  bool Eof() const override { return pos_ >= count_; }
  bool Bof() const override { return count_ == 0; }
  void MoveFirst() override {
    pos_ = 0;
    Load();
  }
  void MoveNext() override {
    ++pos_;
    Load();
  }
  void MovePrevious() override {}
  void MoveLast() override {}
  std::int64_t RecordCount() const override { return count_; }
  int FieldCount() const override { return static_cast<int>(fields_.size()); }
  const FieldInfo& Field(int index) const override { return fields_[index]; }
  int FieldIndex(std::string_view name) const override {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      if (fields_[i].name == name) return static_cast<int>(i);
    }
    return -1;
  }
  const Variant& Value(int index) const override { return row_[index]; }

 private:
  void Load() {
    if (Eof()) return;
    row_[0] = Variant(pos_);
    row_[1] = Variant("Region " + std::to_string(pos_ / 100000));
    row_[2] = Variant("Town " + std::to_string(pos_ / 1000));
    row_[3] = Variant("Party " + std::to_string(pos_ % 5000) + " Limited");
    row_[4] = Variant(Date::FromSerial(45000 + static_cast<std::int32_t>(pos_ % 365)));
    row_[5] = Variant(Currency::FromRaw((pos_ % 100000) * 123 - 4000000));
  }

  std::int64_t count_;
  std::int64_t pos_ = 0;
  std::vector<FieldInfo> fields_;
  Variant row_[6];
};

class DiscardingSink : public PageSink {
 public:
  void Begin(const DocumentInfo&) override {}
  void AddPage(const Page& page) override {
    ++pages;
    items += static_cast<std::int64_t>(page.items.size());
  }
  void End() override {}
  void Abort() override {}
  std::int64_t pages = 0;
  std::int64_t items = 0;
};

class Ledger : public ActiveReport {
 public:
  explicit Ledger(std::int64_t rows) : ActiveReport("arBenchLedger"), rows_(rows) {
    LoadLayout(kLayout, "bench.yaml", *this);
  }
  void ActiveReport_ReportStart() override {
    DataControl().SetRecordset(std::make_shared<GeneratedRows>(rows_));
  }
  void OnFormat(Section& section) override {
    if (section.Type() == SectionType::Detail) section.SetBackStyle(1 - section.BackStyle());
  }

 private:
  std::int64_t rows_;
};

void BM_BoundReport(benchmark::State& state) {
  const std::int64_t rows = state.range(0);
  DiscardingSink sink;
  for (auto _ : state) {
    Ledger report(rows);
    RunReport(report, sink);
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["rows_per_second"] =
      benchmark::Counter(static_cast<double>(rows) * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
  state.counters["pages"] =
      static_cast<double>(sink.pages) / static_cast<double>(state.iterations());
  state.counters["peak_rss_MB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
}

BENCHMARK(BM_BoundReport)->Arg(100000)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace trellin::engine
