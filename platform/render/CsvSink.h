#pragma once
// The report's rows as comma-separated values: one heading line naming the report's columns as
// they print, then one line per exported row (see ExportColumns.h), values unformatted (see
// CellText.h); several cells under one heading are joined by a blank. Quoting follows the
// common CSV rules: a field holding a comma, a quote or a line break is quoted, quotes doubled;
// lines end in CR LF.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/render/ExportSink.h"
#include "platform/render/StagedFile.h"

namespace trellin::render {

// `field` as one CSV field, quoted only where it must be.
[[nodiscard]] std::string CsvField(std::string_view field);

class CsvSink final : public ExportSink {
 public:
  explicit CsvSink(std::filesystem::path target) : target_(std::move(target)) {}

 protected:
  void Open(const engine::DocumentInfo& info) override;
  void WriteHeading(const std::vector<ExportColumn>& columns) override;
  void WriteRow(const engine::DataRow& row, const std::vector<ExportValue>& values) override;
  void Finish() override;
  void Drop() noexcept override;

 private:
  void WriteLine(std::string& line);

  std::filesystem::path target_;
  std::optional<StagedFile> file_;
};

}  // namespace trellin::render
