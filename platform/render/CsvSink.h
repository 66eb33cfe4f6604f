#pragma once
// The report's rows as comma-separated values: one line per printed row, a heading line first
// (see ExportColumns.h for the columns), values unformatted (see CellText.h). Quoting follows the
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
  void WriteHeading(const std::vector<ExportColumn>& columns, int group_levels) override;
  void WriteRow(const engine::DataRow& row, std::string_view caption,
                const std::vector<const engine::DataCell*>& cells) override;
  void Finish() override;
  void Drop() noexcept override;

 private:
  void WriteLine(std::string& line);

  std::filesystem::path target_;
  std::optional<StagedFile> file_;
  std::size_t width_ = 0;  // fields per line, from the heading
};

}  // namespace trellin::render
