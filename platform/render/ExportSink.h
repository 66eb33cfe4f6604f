#pragma once
// The common part of the data exports (CSV, XLSX): keeps the report's rows, works out the columns
// once the first detail rows have printed, then hands each row on with its cells by column.

#include <optional>
#include <vector>

#include "platform/render/ExportColumns.h"
#include "platform/render/SinkBase.h"

namespace trellin::render {

class ExportSink : public SinkBase {
 protected:
  // Opens the output.
  virtual void Open(const engine::DocumentInfo& info) = 0;
  // The heading line; called once, before any row, also for a report without rows.
  // `group_levels`: how many levels of groups the report has (0 for none), as far as its first
  // rows show.
  virtual void WriteHeading(const std::vector<ExportColumn>& columns, int group_levels) = 0;
  // One row; `caption` is its RowKindCaption, `cells` from ExportColumns::Assign.
  virtual void WriteRow(const engine::DataRow& row, std::string_view caption,
                        const std::vector<const engine::DataCell*>& cells) = 0;
  // Completes the output and moves it into place.
  virtual void Finish() = 0;
  // Drops the output; must not throw.
  virtual void Drop() noexcept = 0;

 private:
  void OnBegin(const engine::DocumentInfo& info) final;
  void OnPage(const engine::Page& page) final;
  void OnEnd() final;
  void OnAbort() noexcept final;
  void Flush();

  std::optional<ExportColumns> columns_;
  // Rows of the first pages, held until the columns are known: only until the first detail row,
  // or a few thousand rows for a report without any.
  std::vector<engine::DataRow> held_;
};

}  // namespace trellin::render
