#pragma once
// The report's rows as a spreadsheet: one worksheet, a bold heading line with a filter and frozen
// panes, one line per printed row (see ExportColumns.h), typed cells: money and numbers as
// numbers with a number format from their mask, dates as dates, booleans as booleans, text as
// text, Null as a blank cell. Header and footer rows are bold. Rows stream to disk: memory stays
// flat however long the report. A report longer than a worksheet holds goes on in further sheets
// ("Ledger (2)", ...), each with its own heading line. Rows carry outline levels by their groups,
// so the sheet folds to group totals with the spreadsheet's outline buttons.

#include <xlsxwriter.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/render/ExportSink.h"
#include "platform/render/StagedFile.h"

namespace trellin::render {

// A worksheet name from a report title: characters a sheet name may not hold ([]:*?/\) dropped,
// at most 31 characters; "Report" when nothing is left.
[[nodiscard]] std::string SheetName(std::string_view title);

class XlsxSink final : public ExportSink {
 public:
  // `rows_per_sheet` counts the heading line too; the default is the most a worksheet holds.
  explicit XlsxSink(std::filesystem::path target, lxw_row_t rows_per_sheet = LXW_ROW_MAX)
      : target_(std::move(target)), rows_per_sheet_(std::max<lxw_row_t>(rows_per_sheet, 2)) {}
  ~XlsxSink() override;

 protected:
  void Open(const engine::DocumentInfo& info) override;
  void WriteHeading(const std::vector<ExportColumn>& columns, int group_levels) override;
  void WriteRow(const engine::DataRow& row, std::string_view caption,
                const std::vector<const engine::DataCell*>& cells) override;
  void Finish() override;
  void Drop() noexcept override;

 private:
  lxw_format* FormatFor(const std::string& number_format, bool bold);
  void WriteCell(lxw_col_t column, const engine::DataCell& cell, bool bold);
  void Check(lxw_error error) const;
  void AddSheet();
  void CloseSheet();

  std::filesystem::path target_;
  std::optional<StagedFile> file_;
  lxw_workbook* workbook_ = nullptr;
  lxw_worksheet* sheet_ = nullptr;
  std::map<std::pair<std::string, bool>, lxw_format*> formats_;
  lxw_row_t rows_per_sheet_;
  lxw_row_t row_ = 0;
  int sheets_ = 0;
  std::vector<ExportColumn> columns_;
  int group_levels_ = 0;
  lxw_col_t last_column_ = 0;
  std::string title_;
};

}  // namespace trellin::render
