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

void CsvSink::WriteHeading(const std::vector<ExportColumn>& columns) {
  std::string line;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) line += ',';
    line += CsvField(ValidUtf8(columns[i].caption));
  }
  WriteLine(line);
}

void CsvSink::WriteRow(const engine::DataRow&, const std::vector<ExportValue>& values) {
  // Every line has the heading's number of fields, so a spreadsheet keeps the columns straight.
  std::string line;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) line += ',';
    std::string text = values[i].text;
    for (const engine::DataCell* cell : values[i].cells) {
      const std::string plain = PlainCellText(*cell);
      if (!plain.empty()) text += (text.empty() ? "" : " ") + plain;
    }
    line += CsvField(ValidUtf8(text));
  }
  WriteLine(line);
}

void CsvSink::Finish() {
  file_->Commit();
  file_.reset();
}

void CsvSink::Drop() noexcept { file_.reset(); }

}  // namespace trellin::render
