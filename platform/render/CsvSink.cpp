#include "platform/render/CsvSink.h"

#include <cstdio>

#include "platform/render/CellText.h"
#include "platform/render/Render.h"
#include "platform/render/Utf8.h"

namespace trellin::render {

std::string CsvField(std::string_view field) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(field);
  std::string out = "\"";
  for (char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + '"';
}

void CsvSink::Open(const engine::DocumentInfo&) { file_.emplace(target_); }

void CsvSink::WriteLine(std::string& line) {
  line += "\r\n";
  if (std::fwrite(line.data(), 1, line.size(), file_->Stream()) != line.size()) {
    throw RenderError("Cannot write " + target_.string());
  }
}

void CsvSink::WriteHeading(const std::vector<ExportColumn>& columns, int /*group_levels*/) {
  std::string line = "Row,Level";
  for (const ExportColumn& column : columns) {
    line += ',';
    line += CsvField(ValidUtf8(column.caption));
  }
  width_ = columns.size();
  WriteLine(line);
}

void CsvSink::WriteRow(const engine::DataRow& row, std::string_view caption,
                       const std::vector<const engine::DataCell*>& cells) {
  std::string line = CsvField(caption) + ",";
  if (row.kind == engine::RowKind::GroupHeader || row.kind == engine::RowKind::GroupFooter) {
    line += std::to_string(row.level);
  }
  for (const engine::DataCell* cell : cells) {
    line += ',';
    if (cell != nullptr) line += CsvField(ValidUtf8(PlainCellText(*cell)));
  }
  // Every line has the heading's number of fields, so a spreadsheet keeps the columns straight.
  for (std::size_t i = cells.size(); i < width_; ++i) line += ',';
  WriteLine(line);
}

void CsvSink::Finish() {
  file_->Commit();
  file_.reset();
}

void CsvSink::Drop() noexcept { file_.reset(); }

}  // namespace trellin::render
