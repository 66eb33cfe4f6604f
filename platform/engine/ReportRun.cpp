#include "platform/engine/ReportRun.h"

#include <algorithm>
#include <cstring>

#include "platform/engine/DocumentTable.h"
#include "platform/engine/ReportEngine.h"

namespace trellin::engine {

ReportRun::ReportRun(ActiveReport& report, RunEnvironment& env, ReportRun* parent, float x0)
    : report_(report), env_(env), parent_(parent), x0_(x0) {}

void ReportRun::ReportEventError(const std::string& source, const std::string& message) {
  // A sub-report has no host of its own: its errors go to the nearest report that has a hook.
  for (ReportRun* run = this; run != nullptr; run = run->parent_) {
    if (const auto& hook = run->report_.ErrorHook()) {
      hook(source, message);
      return;
    }
  }
  throw ReportRunError(report_.DesignerName() + " " + source + ": " + message);
}

void ReportRun::CheckCancel() const {
  for (const ReportRun* run = this; run != nullptr; run = run->parent_) {
    if (run->report_.CancelRequested()) throw RunCancelled{};
  }
}

const std::string* ReportRun::ScriptHandlerOf(const LayoutScript& script, const Section* section,
                                              const char* event) {
  if (handlers_of_ != &script) {
    handlers_.clear();
    handlers_of_ = &script;
  }
  for (const ScriptHandler& h : handlers_) {
    if (h.section == section && std::strcmp(h.event, event) == 0) {
      return h.name.empty() ? nullptr : &h.name;
    }
  }
  std::string name = section ? section->Name() + "_" + event : std::string(event);
  if (!script.Handles(name)) name.clear();
  handlers_.push_back({section, event, std::move(name)});
  return handlers_.back().name.empty() ? nullptr : &handlers_.back().name;
}

void ReportRun::Run(BandSink& out, PageWriter* writer) {
  out_ = &out;
  Raise(nullptr, "ActiveReport_ReportStart", [&] { report_.ActiveReport_ReportStart(); });
  // The start may set the paper and margins (a sheet of labels): the top report's sections
  // stand at the left margin as it then is.
  if (parent_ == nullptr) x0_ = report_.PageSettings().LeftMargin;
  Raise(nullptr, "ActiveReport_DataInitialize", [&] { report_.ActiveReport_DataInitialize(); });
  BindData();
  // The table is what the start declared, before any row's formatting shows or hides a field.
  if (parent_ == nullptr) DescribeTable(report_, x0_, env_.document);
  BuildGroups();
  summaries_.Collect(report_, [this](const Section& s) { return GroupLevelOf(s); });

  if (Section* header = report_.Sections().FindType(SectionType::ReportHeader)) {
    PrintSection(*header, RowKind::ReportHeader, 0);
  }
  RunRows();
  FlushColumns();
  if (Section* footer = report_.Sections().FindType(SectionType::ReportFooter)) {
    PrintSection(*footer, RowKind::ReportFooter, 0);
  }
  if (writer) writer->Finish();
  Raise(nullptr, "ActiveReport_ReportEnd", [&] { report_.ActiveReport_ReportEnd(); });
}

void ReportRun::BindData() {
  // The rows were opened when the designer set Source (or handed over a recordset); a report
  // with no rows open runs unbound.
  rs_ = report_.DataControl().Recordset();
  column_field_.clear();
  if (!rs_) return;
  for (int i = 0; i < rs_->FieldCount(); ++i) {
    const std::string& name = rs_->Field(i).name;
    report_.Fields().Add(name);
    column_field_.push_back(report_.Fields().IndexOf(name));
  }
}

void ReportRun::LoadRow() {
  Fields& fields = report_.Fields();
  for (std::size_t i = 0; i < column_field_.size(); ++i) {
    fields.Item(static_cast<std::size_t>(column_field_[i]))
        .SetValue(rs_->Value(static_cast<int>(i)));
  }
}

bool ReportRun::FetchRow(bool first) {
  bool eof = false;
  if (rs_) {
    // The cursor moves on only now, after the previous row's detail is done, so the designer
    // reads the current row from the recordset while the detail formats.
    if (!first && !rs_->Eof()) rs_->MoveNext();
    if (rs_->Eof()) return false;
    LoadRow();
    Raise(
        nullptr, "ActiveReport_FetchData", [&] { report_.ActiveReport_FetchData(eof); }, &eof);
    return !eof;
  }
  // An unbound fetch that fails ends the data: the designer could not say whether more follows.
  (void)report_.TakeFetchLeftToDefault();
  bool ok = Raise(
      nullptr, "ActiveReport_FetchData", [&] { report_.ActiveReport_FetchData(eof); }, &eof);
  // Neither the designer nor the layout's script fetches: the report has no data of its own and
  // one row, else it would print its detail without end.
  if (report_.TakeFetchLeftToDefault() &&
      (report_.Script() == nullptr ||
       ScriptHandlerOf(*report_.Script(), nullptr, "ActiveReport_FetchData") == nullptr)) {
    return ok && first;
  }
  return ok && !eof;
}

void ReportRun::RunRows() {
  std::vector<Variant> previous;
  const int all_levels = static_cast<int>(groups_.size());
  bool first = true;
  while (true) {
    if (!first && !groups_.empty()) SnapshotFields(previous);
    if (!FetchRow(first)) {
      if (first) {
        // No data at all: the headers and footers still print around one detail at EOF.
        StartGroups(all_levels);
        if (detail_) FormatOnly(*detail_);
        EndGroups(all_levels);
      } else {
        // The closing footers see the last row, whatever the final fetch left in the fields.
        if (!groups_.empty()) SwapFields(previous);
        EndGroups(all_levels);
      }
      return;
    }
    int level = first ? all_levels : BreakLevel();
    if (!first && level > 0) {
      // The ending groups' footers see the last row of their group, not the row that ends it.
      SwapFields(previous);
      EndGroups(level);
      SwapFields(previous);
    }
    StartGroups(level);
    summaries_.Accumulate(report_.Fields());
    PrintDetail();
    first = false;
  }
}

void ReportRun::PrintDetail() {
  if (!detail_) return;
  DetailColumns columns = detail_->Columns();
  if (columns.Count <= 1 && columns.Skip <= 0) {
    PrintSection(*detail_, RowKind::Detail, 0);
    return;
  }
  for (const Control& c : detail_->Controls()) {
    if (c.Class() == ControlClass::Subreport) {
      // A sub-report runs on across the page; a cell cannot hold it.
      ReportEventError(detail_->Name(), "a detail in columns cannot hold the sub-report " +
                                            c.Name() + "; it prints without columns");
      detail_->SetColumns(DetailColumns{});
      PrintSection(*detail_, RowKind::Detail, 0);
      return;
    }
  }
  const float width = report_.PrintWidth();
  const auto count = static_cast<float>(std::max(columns.Count, 1));
  cell_width_ = (width - (count - 1) * columns.Spacing) / count;
  if (!columns_) {
    columns_ = std::make_unique<ColumnSink>(*out_, columns, cell_width_ + columns.Spacing,
                                            detail_->Height());
  }
  BandSink* out = out_;
  out_ = columns_.get();
  PrintSection(*detail_, RowKind::Detail, 0);
  out_ = out;
  cell_width_ = 0;
}

void ReportRun::FlushColumns() {
  if (columns_) columns_->Flush();
}

void ReportRun::BuildGroups() {
  std::vector<Section*> headers;
  std::vector<Section*> footers;
  detail_ = nullptr;
  for (Section& s : report_.Sections()) {
    if (s.Type() == SectionType::GroupHeader) headers.push_back(&s);
    if (s.Type() == SectionType::GroupFooter) footers.push_back(&s);
    if (s.Type() == SectionType::Detail && !detail_) detail_ = &s;
  }
  // Headers run outer to inner and footers inner to outer: both pair up counting out from the
  // detail.
  std::size_t levels = std::max(headers.size(), footers.size());
  groups_.assign(levels, GroupLevel{});
  for (std::size_t i = 0; i < levels; ++i) {
    if (i < headers.size()) groups_[i].header = headers[headers.size() - 1 - i];
    if (i < footers.size()) groups_[i].footer = footers[i];
  }
}

int ReportRun::GroupLevelOf(const Section& section) const {
  for (std::size_t i = 0; i < groups_.size(); ++i) {
    if (groups_[i].header == &section || groups_[i].footer == &section)
      return static_cast<int>(i) + 1;
  }
  return 0;
}

Variant ReportRun::GroupKey(const GroupLevel& group) const {
  if (!group.header || group.header->DataField().empty()) return Variant();
  const ReportField* f = report_.Fields().Find(group.header->DataField());
  return f ? f->Value() : Variant::Null();
}

int ReportRun::BreakLevel() const {
  for (int level = static_cast<int>(groups_.size()); level >= 1; --level) {
    const GroupLevel& g = groups_[level - 1];
    Variant key = GroupKey(g);
    // Null is a key like any other: two Nulls are the same group. Text keys match without regard
    // to case, as the company database groups its text columns, so "acme" and "ACME" that come
    // back side by side stay one group.
    bool same;
    if (key.IsNull() || g.key.IsNull()) {
      same = key.IsNull() && g.key.IsNull();
    } else {
      try {
        same = ValuesEqual(key, g.key, /*ignore_case=*/true);
      } catch (const std::exception&) {
        same = false;
      }
    }
    if (!same) return level;
  }
  return 0;
}

void ReportRun::StartGroups(int through_level) {
  if (through_level <= 0) return;
  summaries_.ResetThrough(through_level);
  for (int level = through_level; level >= 1; --level) {
    GroupLevel& g = groups_[level - 1];
    g.key = GroupKey(g);
    if (g.header) PrintSection(*g.header, RowKind::GroupHeader, level);
    // Open only now: a page its own header starts does not repeat it.
    g.open = true;
  }
}

void ReportRun::EndGroups(int through_level) {
  for (int level = 1; level <= through_level; ++level) {
    if (Section* footer = groups_[level - 1].footer)
      PrintSection(*footer, RowKind::GroupFooter, level);
    groups_[level - 1].open = false;
  }
}

void ReportRun::SnapshotFields(std::vector<Variant>& into) const {
  const Fields& fields = report_.Fields();
  into.resize(fields.Count());
  for (std::size_t i = 0; i < fields.Count(); ++i) into[i] = fields.Item(i).Value();
}

void ReportRun::SwapFields(std::vector<Variant>& with) {
  Fields& fields = report_.Fields();
  std::size_t n = std::min(with.size(), fields.Count());
  for (std::size_t i = 0; i < n; ++i) {
    Variant current = fields.Item(i).Value();
    fields.Item(i).SetValue(std::move(with[i]));
    with[i] = std::move(current);
  }
}

}  // namespace trellin::engine
