#pragma once
// The common part of the data exports (CSV, XLSX): lays the columns out from what the report
// declared (ExportColumns) as soon as it begins, then hands each exported row on with its values
// by column. Nothing is held back: rows stream out page by page.

#include <optional>
#include <vector>

#include "platform/render/ExportColumns.h"
#include "platform/render/SinkBase.h"

namespace trellin::render {

class ExportSink : public SinkBase {
 protected:
  // Opens the output.
  virtual void Open(const engine::DocumentInfo& info) = 0;
  // The heading line; called once, right after Open, also for a report without rows.
  virtual void WriteHeading(const std::vector<ExportColumn>& columns) = 0;
  // One exported row; `values` holds one entry per column (ExportColumns::Assign).
  virtual void WriteRow(const engine::DataRow& row, const std::vector<ExportValue>& values) = 0;
  // Completes the output and moves it into place.
  virtual void Finish() = 0;
  // Drops the output; must not throw.
  virtual void Drop() noexcept = 0;

 private:
  void OnBegin(const engine::DocumentInfo& info) final;
  void OnPage(const engine::Page& page) final;
  void OnEnd() final;
  void OnAbort() noexcept final;

  std::optional<ExportColumns> columns_;
};

}  // namespace trellin::render
