#include "platform/render/ExportSink.h"

#include <algorithm>

namespace trellin::render {
namespace {

// Rows held back at most while looking for a detail row; a summary report decides from these.
constexpr std::size_t kMaxHeldRows = 5000;

}  // namespace

void ExportSink::OnBegin(const engine::DocumentInfo& info) { Open(info); }

void ExportSink::OnPage(const engine::Page& page) {
  if (columns_) {
    for (const engine::DataRow& row : page.rows) {
      if (auto caption = RowKindCaption(row.kind)) WriteRow(row, *caption, columns_->Assign(row));
    }
    return;
  }
  // The whole page is held, so the first detail rows' page header can give the headings.
  held_.insert(held_.end(), page.rows.begin(), page.rows.end());
  const bool has_detail = std::any_of(held_.begin(), held_.end(), [](const engine::DataRow& r) {
    return r.kind == engine::RowKind::Detail && !r.cells.empty();
  });
  if (has_detail || held_.size() >= kMaxHeldRows) Flush();
}

void ExportSink::Flush() {
  columns_ = ExportColumns::FromRows(held_);
  // Every group level opens with its header before the first detail row, so the rows held so
  // far show how deep the groups go.
  int group_levels = 0;
  for (const engine::DataRow& row : held_) {
    if (row.kind == engine::RowKind::GroupHeader || row.kind == engine::RowKind::GroupFooter) {
      group_levels = std::max(group_levels, row.level);
    }
  }
  WriteHeading(columns_->Columns(), group_levels);
  for (const engine::DataRow& row : held_) {
    if (auto caption = RowKindCaption(row.kind)) WriteRow(row, *caption, columns_->Assign(row));
  }
  held_.clear();
  held_.shrink_to_fit();
}

void ExportSink::OnEnd() {
  if (!columns_) Flush();
  Finish();
}

void ExportSink::OnAbort() noexcept {
  held_.clear();
  Drop();
}

}  // namespace trellin::render
