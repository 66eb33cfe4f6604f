#pragma once
// The report's rows as a spreadsheet. Each worksheet opens with a title block (the company, the
// title as printed, any period line, the run's description), a blank row, then a bold heading
// line of the report's columns with a filter, the panes frozen beneath it and each column as
// wide as it printed; then one line per exported row (see ExportColumns.h). Cells are typed:
// money and numbers hold exactly the decimal they printed (81245.74, written as such) with a
// number format from their mask, dates are dates, booleans booleans, text text; Null is a blank
// cell. Header and footer rows are bold and carry outline levels by their groups, so the sheet
// folds to group totals. Rows stream to disk: memory stays flat however long the report. A
// report longer than a worksheet holds goes on in further sheets ("Ledger (2)", ...), each with
// its own title block and heading line.

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/render/ExportSink.h"
#include "platform/render/StagedFile.h"
#include "platform/render/ZipWriter.h"

namespace trellin::render {

// A worksheet name from a report title: characters a sheet name may not hold ([]:*?/\) dropped,
// at most 31 characters; "Report" when nothing is left.
[[nodiscard]] std::string SheetName(std::string_view title);

class XlsxSink final : public ExportSink {
 public:
  // The most rows a worksheet holds.
  static constexpr std::uint32_t kMaxRows = 1048576;

  // `rows_per_sheet` counts the title block and the heading line too; the default is the most
  // a worksheet holds.
  explicit XlsxSink(std::filesystem::path target, std::uint32_t rows_per_sheet = kMaxRows);
  ~XlsxSink() override;

 protected:
  void Open(const engine::DocumentInfo& info) override;
  void WriteHeading(const std::vector<ExportColumn>& columns) override;
  void WriteRow(const engine::DataRow& row, const std::vector<ExportValue>& values) override;
  void Finish() override;
  void Drop() noexcept override;

 private:
  // Style indexes: one per number format, plain or bold, and the title's.
  int Style(const std::string& number_format, int font);
  void StartSheet();
  void CloseSheet();
  void StartRow(int outline);
  void EndRow();
  void TextCell(std::size_t column, const std::string& text, int style);
  void NumberCell(std::size_t column, const std::string& number, int style);
  void WriteCell(std::size_t column, const engine::DataCell& cell, bool bold);
  void WritePackage();

  std::filesystem::path target_;
  std::uint32_t rows_per_sheet_;
  std::optional<StagedFile> file_;
  std::unique_ptr<ZipWriter> zip_;
  std::string title_;
  std::vector<std::string> title_lines_;  // company, title, period lines, description lines
  std::vector<ExportColumn> columns_;
  int group_levels_ = 0;
  std::vector<std::string> sheet_names_;
  std::uint32_t row_ = 0;          // rows written on the sheet
  std::uint32_t heading_row_ = 0;  // 1-based row of the heading line
  std::string buffer_;             // sheet text not yet handed to the zip
  // (number format, font): font 0 plain, 1 bold, 2 the title's. Style 0 is plain General.
  std::vector<std::pair<std::string, int>> styles_;
  std::map<std::pair<std::string, int>, int> style_index_;
};

}  // namespace trellin::render
