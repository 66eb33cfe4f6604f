// A 10,000-row list run three ways: as it stands, with a layout script whose Detail_Format sets
// two controls from the row (a text and a money value), and with the designer setting the same
// two in C++. The script's run may take at most 1.3 times the run without it.

#include <benchmark/benchmark.h>

#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "platform/engine/LayoutLoader.h"
#include "platform/engine/ReportEngine.h"
#include "platform/script/LuaScript.h"

namespace trellin::engine {
namespace {

constexpr const char* kLayout = R"yaml(
Report: {Caption: List, PrintWidth: 9746}
Sections:
  - {Name: PageHeader, Height: 400, Controls: [{Class: Label, Name: lblTitle, Rect: [0, 0, 5000, 300], Caption: List, Font: {Bold: true, Size: 12}}]}
  - Name: Detail
    Height: 250
    Controls:
      - {Class: Field, Name: txtId, DataField: Id, Rect: [0, 0, 1000, 250]}
      - {Class: Field, Name: txtName, DataField: Name, Rect: [1000, 0, 3000, 250]}
      - {Class: Field, Name: txtNote, Rect: [4000, 0, 3000, 250]}
      - {Class: Field, Name: txtAmount, DataField: Amount, Rect: [7000, 0, 2000, 250], OutputFormat: "#,##0.00;(#,##0.00)", Alignment: Right}
  - {Name: PageFooter, Height: 300, Controls: [{Class: Field, Name: txtPage, DataField: '="Page " & rpt.PageNumber', Rect: [0, 0, 3000, 300]}]}
)yaml";

constexpr const char* kScript = R"yaml(Script: |
  function Detail_Format()
    rpt.txtNote.Text = "Party " .. rpt.Fields.Id
    rpt.txtAmount.Value = rpt.Fields.Amount * 2
  end
)yaml";

// Rows made up as the cursor moves.
class GeneratedRows : public Recordset {
 public:
  explicit GeneratedRows(std::int64_t count) : count_(count) {
    fields_ = {{"Id", FieldType::Long}, {"Name", FieldType::Text}, {"Amount", FieldType::Currency}};
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
    row_[1] = Variant("Party " + std::to_string(pos_ % 5000) + " Limited");
    row_[2] = Variant(Currency::FromRaw((pos_ % 100000) * 123 - 4000000));
  }

  std::int64_t count_;
  std::int64_t pos_ = 0;
  std::vector<FieldInfo> fields_;
  Variant row_[3];
};

class DiscardingSink : public PageSink {
 public:
  void Begin(const DocumentInfo&) override {}
  void AddPage(const Page&) override { ++pages; }
  void End() override {}
  void Abort() override {}
  std::int64_t pages = 0;
};

enum class Setter { None, Script, Designer };

class List : public ActiveReport {
 public:
  List(std::int64_t rows, Setter setter)
      : ActiveReport("arBenchList"), rows_(rows), setter_(setter) {
    LoadLayout(std::string(kLayout) + (setter == Setter::Script ? kScript : ""), "bench.yaml",
               *this);
  }
  void ActiveReport_ReportStart() override {
    DataControl().SetRecordset(std::make_shared<GeneratedRows>(rows_));
  }
  // The designer's own way to the same pages as the script's.
  void OnFormat(Section& section) override {
    if (setter_ != Setter::Designer || section.Name() != "Detail") return;
    Field("txtNote").SetText("Party " + Fields().Item("Id").Value().Text());
    Field("txtAmount").SetDataValue(Multiply(Fields().Item("Amount").Value(), Variant(2)));
  }

 private:
  std::int64_t rows_;
  Setter setter_;
};

void BM_List(benchmark::State& state) {
  ActiveReport::SetScriptEngine(std::make_shared<script::LuaScriptEngine>());
  const auto setter = static_cast<Setter>(state.range(0));
  constexpr std::int64_t kRows = 10000;
  DiscardingSink sink;
  for (auto _ : state) {
    List report(kRows, setter);
    RunReport(report, sink);
  }
  state.counters["rows_per_second"] =
      benchmark::Counter(static_cast<double>(kRows) * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
  state.counters["pages"] =
      static_cast<double>(sink.pages) / static_cast<double>(state.iterations());
}

// 0: the plain list (the note empty, the amount as read); 1: the script sets the two controls;
// 2: the designer sets them, in C++, for the same pages as 1.
BENCHMARK(BM_List)->Arg(0)->Arg(1)->Arg(2)->Repetitions(5)->ReportAggregatesOnly(true)->Unit(
    benchmark::kMillisecond);

}  // namespace
}  // namespace trellin::engine
