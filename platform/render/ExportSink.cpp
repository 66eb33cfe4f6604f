#include "platform/render/ExportSink.h"

namespace trellin::render {

void ExportSink::OnBegin(const engine::DocumentInfo& info) {
  Open(info);
  columns_.emplace(info);
  WriteHeading(columns_->Columns());
}

void ExportSink::OnPage(const engine::Page& page) {
  for (const engine::DataRow& row : page.rows) {
    if (auto values = columns_->Assign(row)) WriteRow(row, *values);
  }
}

void ExportSink::OnEnd() { Finish(); }

void ExportSink::OnAbort() noexcept { Drop(); }

}  // namespace trellin::render
