#include "platform/render/XlsxSink.h"

#include <algorithm>
#include <cmath>

#include "platform/render/CellText.h"
#include "platform/render/ExcelFormat.h"
#include "platform/render/Render.h"
#include "platform/render/Utf8.h"

namespace trellin::render {
namespace {

// A spreadsheet column's width counts characters of about 7 pixels at 96 dpi: 105 twips.
constexpr double kTwipsPerCharacter = 105.0;
constexpr int kMaxOutlineLevel = 7;  // the deepest outline a worksheet has
constexpr std::size_t kFlushAt = 1 << 16;
constexpr std::size_t kMaxColumns = 16384;

enum Font { kPlain = 0, kBold = 1, kTitle = 2 };

// The first `count` characters of UTF-8 `text`, never splitting a sequence.
std::string FirstCharacters(const std::string& text, std::size_t count) {
  std::size_t seen = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80 && ++seen > count)
      return text.substr(0, i);
  }
  return text;
}

// Text as a cell holds it, escaped for XML: valid UTF-8, every line break a bare LF (a stored CR
// would show as "_x000D_"), other control characters dropped.
std::string SheetText(std::string_view text) {
  const std::string valid = ValidUtf8(text);
  std::string out;
  out.reserve(valid.size());
  for (std::size_t i = 0; i < valid.size(); ++i) {
    const char c = valid[i];
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\r':
        if (i + 1 >= valid.size() || valid[i + 1] != '\n') out += '\n';
        break;
      default:
        if (static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t') out += c;
        break;
    }
  }
  return out;
}

// "A", "B", ... "Z", "AA", ...: a column's letters from its 0-based index.
std::string ColumnName(std::size_t index) {
  std::string name;
  for (std::size_t n = index + 1; n > 0; n = (n - 1) / 26) {
    name.insert(name.begin(), static_cast<char>('A' + (n - 1) % 26));
  }
  return name;
}

bool IsSummaryRow(engine::RowKind kind) { return kind != engine::RowKind::Detail; }

}  // namespace

std::string SheetName(std::string_view title) {
  std::string name;
  for (char c : title) {
    if (std::string_view("[]:*?/\\").find(c) == std::string_view::npos &&
        static_cast<unsigned char>(c) >= 0x20)
      name += c;
  }
  name = FirstCharacters(name, 31);
  // Sheet names may not begin or end with an apostrophe.
  while (!name.empty() && (name.front() == '\'' || name.front() == ' ')) name.erase(0, 1);
  while (!name.empty() && (name.back() == '\'' || name.back() == ' ')) name.pop_back();
  return name.empty() ? "Report" : name;
}

XlsxSink::XlsxSink(std::filesystem::path target, std::uint32_t rows_per_sheet)
    : target_(std::move(target)), rows_per_sheet_(std::max<std::uint32_t>(rows_per_sheet, 2)) {
  styles_.push_back({"General", kPlain});
  style_index_[styles_.back()] = 0;
}

XlsxSink::~XlsxSink() { Drop(); }

int XlsxSink::Style(const std::string& number_format, int font) {
  const auto key =
      std::make_pair(number_format.empty() ? std::string("General") : number_format, font);
  if (auto it = style_index_.find(key); it != style_index_.end()) return it->second;
  styles_.push_back(key);
  const int index = static_cast<int>(styles_.size()) - 1;
  style_index_[key] = index;
  return index;
}

void XlsxSink::Open(const engine::DocumentInfo& info) {
  file_.emplace(target_);
  zip_ = std::make_unique<ZipWriter>(file_->Stream(), target_.string());
  title_ = ValidUtf8(info.title.empty() ? info.caption : info.title);
  group_levels_ = std::clamp(info.group_levels, 0, kMaxOutlineLevel);
  title_lines_ = info.title_lines;
  // The description, a line a row.
  std::string line;
  for (std::size_t i = 0; i <= info.description.size(); ++i) {
    const char c = i < info.description.size() ? info.description[i] : '\n';
    if (c == '\r') continue;
    if (c != '\n') {
      line += c;
      continue;
    }
    if (line.find_first_not_of(' ') != std::string::npos) title_lines_.push_back(line);
    line.clear();
  }
}

void XlsxSink::StartSheet() {
  std::string name = SheetName(title_);
  if (!sheet_names_.empty()) {
    const std::string suffix = " (" + std::to_string(sheet_names_.size() + 1) + ")";
    name = FirstCharacters(name, 31 - suffix.size()) + suffix;
  }
  sheet_names_.push_back(name);
  zip_->Begin("xl/worksheets/sheet" + std::to_string(sheet_names_.size()) + ".xml");
  // The title block, a blank row when there is one, then the heading line.
  heading_row_ = title_lines_.empty() ? 1 : static_cast<std::uint32_t>(title_lines_.size()) + 2;
  buffer_ =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
      "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
      "<sheetPr><outlinePr summaryBelow=\"1\"/></sheetPr>"
      "<sheetViews><sheetView tabSelected=\"" +
      std::string(sheet_names_.size() == 1 ? "1" : "0") +
      "\" workbookViewId=\"0\">"
      "<pane ySplit=\"" +
      std::to_string(heading_row_) + "\" topLeftCell=\"A" + std::to_string(heading_row_ + 1) +
      "\" activePane=\"bottomLeft\" state=\"frozen\"/>"
      "</sheetView></sheetViews>"
      "<sheetFormatPr defaultRowHeight=\"15\"" +
      (group_levels_ > 0 ? " outlineLevelRow=\"" + std::to_string(group_levels_) + "\"" : "") +
      "/>";
  if (!columns_.empty()) {
    buffer_ += "<cols>";
    for (std::size_t i = 0; i < columns_.size() && i < kMaxColumns; ++i) {
      // As wide as the column printed, and never narrower than its heading.
      const double width =
          std::clamp(std::max(static_cast<double>(columns_[i].width) / kTwipsPerCharacter,
                              static_cast<double>(columns_[i].caption.size()) + 2),
                     6.0, 80.0);
      char text[32];
      std::snprintf(text, sizeof text, "%.2f", width);
      buffer_ += "<col min=\"" + std::to_string(i + 1) + "\" max=\"" + std::to_string(i + 1) +
                 "\" width=\"" + text + "\" customWidth=\"1\"/>";
    }
    buffer_ += "</cols>";
  }
  buffer_ += "<sheetData>";
  row_ = 0;
  for (std::size_t i = 0; i < title_lines_.size(); ++i) {
    StartRow(0);
    TextCell(0, title_lines_[i], Style("", i == 1 ? kTitle : (i == 0 ? kBold : kPlain)));
    EndRow();
  }
  if (!title_lines_.empty()) {
    StartRow(0);
    EndRow();
  }
  StartRow(0);
  for (std::size_t i = 0; i < columns_.size() && i < kMaxColumns; ++i) {
    TextCell(i, columns_[i].caption, Style("", kBold));
  }
  EndRow();
}

void XlsxSink::CloseSheet() {
  buffer_ += "</sheetData>";
  const std::string last = ColumnName(std::max<std::size_t>(columns_.size(), 1) - 1);
  buffer_ += "<autoFilter ref=\"A" + std::to_string(heading_row_) + ":" + last +
             std::to_string(std::max(row_, heading_row_)) + "\"/>";
  buffer_ += "</worksheet>";
  zip_->Write(buffer_);
  buffer_.clear();
  zip_->End();
}

void XlsxSink::StartRow(int outline) {
  ++row_;
  buffer_ += "<row r=\"" + std::to_string(row_) + "\"";
  if (outline > 0) buffer_ += " outlineLevel=\"" + std::to_string(outline) + "\"";
  buffer_ += ">";
}

void XlsxSink::EndRow() {
  buffer_ += "</row>";
  if (buffer_.size() >= kFlushAt) {
    zip_->Write(buffer_);
    buffer_.clear();
  }
}

void XlsxSink::TextCell(std::size_t column, const std::string& text, int style) {
  buffer_ += "<c r=\"" + ColumnName(column) + std::to_string(row_) + "\"";
  if (style != 0) buffer_ += " s=\"" + std::to_string(style) + "\"";
  buffer_ += " t=\"inlineStr\"><is><t xml:space=\"preserve\">" + SheetText(text) + "</t></is></c>";
}

void XlsxSink::NumberCell(std::size_t column, const std::string& number, int style) {
  buffer_ += "<c r=\"" + ColumnName(column) + std::to_string(row_) + "\"";
  if (style != 0) buffer_ += " s=\"" + std::to_string(style) + "\"";
  buffer_ += "><v>" + number + "</v></c>";
}

void XlsxSink::WriteHeading(const std::vector<ExportColumn>& columns) {
  columns_ = columns;
  StartSheet();
}

void XlsxSink::WriteCell(std::size_t column, const engine::DataCell& cell, bool bold) {
  const Variant& v = cell.value;
  const int font = bold ? kBold : kPlain;
  // Numbers hold the decimal they printed, written as that decimal: never a binary neighbour
  // such as 81245.74000000001.
  if (v.Get<Currency>() || v.Get<double>() || v.Get<std::int64_t>()) {
    const std::string number = PlainCellText(cell);
    if (number.empty()) return;  // infinities and NaN print as nothing
    const CellKind kind = v.Get<Currency>() ? CellKind::Money
                          : v.Get<double>() ? CellKind::Real
                                            : CellKind::Integer;
    NumberCell(column, number, Style(ExcelNumberFormat(cell.format, kind), font));
  } else if (const auto* date = v.Get<Date>()) {
    NumberCell(
        column, NumberText(date->ToDouble()),
        Style(ExcelNumberFormat(cell.format, date->HasTime() ? CellKind::DateTime : CellKind::Date),
              font));
  } else if (const auto* flag = v.Get<bool>()) {
    buffer_ += "<c r=\"" + ColumnName(column) + std::to_string(row_) + "\"";
    const int style = Style("", font);
    if (style != 0) buffer_ += " s=\"" + std::to_string(style) + "\"";
    buffer_ += std::string(" t=\"b\"><v>") + (*flag ? "1" : "0") + "</v></c>";
  } else if (v.Get<std::string>() != nullptr || v.IsEmpty()) {
    TextCell(column, PlainCellText(cell), Style("", font));
  }
}

void XlsxSink::WriteRow(const engine::DataRow& row, const std::vector<ExportValue>& values) {
  if (row_ >= rows_per_sheet_) {
    CloseSheet();
    StartSheet();
  }
  // Details sit deepest, each group's header and footer one level above its contents, the
  // report's own header and footer at the top: folding shows the totals of any group level.
  int outline = 0;
  if (row.kind == engine::RowKind::Detail) {
    outline = group_levels_;
  } else if (row.kind == engine::RowKind::GroupHeader || row.kind == engine::RowKind::GroupFooter) {
    outline = group_levels_ - row.level;
  }
  StartRow(std::clamp(outline, 0, kMaxOutlineLevel));
  const bool bold = IsSummaryRow(row.kind);
  for (std::size_t i = 0; i < values.size() && i < kMaxColumns; ++i) {
    const ExportValue& value = values[i];
    if (value.cells.size() == 1 && value.text.empty()) {
      WriteCell(i, *value.cells[0], bold);
    } else if (!value.Empty()) {
      std::string text = value.text;
      for (const engine::DataCell* cell : value.cells) {
        const std::string plain = PlainCellText(*cell);
        if (!plain.empty()) text += (text.empty() ? "" : " ") + plain;
      }
      TextCell(i, text, Style("", bold ? kBold : kPlain));
    }
  }
  EndRow();
}

void XlsxSink::WritePackage() {
  const std::size_t sheets = sheet_names_.size();
  std::string types =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" "
      "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Override PartName=\"/xl/workbook.xml\" "
      "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
      "<Override PartName=\"/xl/styles.xml\" "
      "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/>"
      "<Override PartName=\"/docProps/core.xml\" "
      "ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/>";
  for (std::size_t i = 1; i <= sheets; ++i) {
    types += "<Override PartName=\"/xl/worksheets/sheet" + std::to_string(i) +
             ".xml\" ContentType=\"application/"
             "vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>";
  }
  types += "</Types>";
  zip_->Begin("[Content_Types].xml");
  zip_->Write(types);

  zip_->Begin("_rels/.rels");
  zip_->Write(
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
      "<Relationship Id=\"rId1\" "
      "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
      "Target=\"xl/workbook.xml\"/>"
      "<Relationship Id=\"rId2\" "
      "Type=\"http://schemas.openxmlformats.org/package/2006/relationships/metadata/"
      "core-properties\" Target=\"docProps/core.xml\"/>"
      "</Relationships>");

  zip_->Begin("docProps/core.xml");
  zip_->Write(
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<cp:coreProperties "
      "xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
      "xmlns:dc=\"http://purl.org/dc/elements/1.1/\">"
      "<dc:title>" +
      SheetText(title_) + "</dc:title></cp:coreProperties>");

  std::string workbook =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
      "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
      "<bookViews><workbookView/></bookViews><sheets>";
  std::string relations =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
  for (std::size_t i = 1; i <= sheets; ++i) {
    const std::string n = std::to_string(i);
    workbook += "<sheet name=\"" + SheetText(sheet_names_[i - 1]) + "\" sheetId=\"" + n +
                "\" r:id=\"rId" + n + "\"/>";
    relations += "<Relationship Id=\"rId" + n +
                 "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
                 "worksheet\" Target=\"worksheets/sheet" +
                 n + ".xml\"/>";
  }
  workbook += "</sheets></workbook>";
  relations += "<Relationship Id=\"rId" + std::to_string(sheets + 1) +
               "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
               "styles\" Target=\"styles.xml\"/></Relationships>";
  zip_->Begin("xl/workbook.xml");
  zip_->Write(workbook);
  zip_->Begin("xl/_rels/workbook.xml.rels");
  zip_->Write(relations);

  // Number formats of our own count from 164; "General" is the built-in 0.
  std::map<std::string, int> formats;
  std::string format_list;
  for (const auto& [format, font] : styles_) {
    if (format == "General" || formats.count(format)) continue;
    const int id = 164 + static_cast<int>(formats.size());
    formats[format] = id;
    format_list += "<numFmt numFmtId=\"" + std::to_string(id) + "\" formatCode=\"" +
                   SheetText(format) + "\"/>";
  }
  std::string styles =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">";
  if (!formats.empty()) {
    styles +=
        "<numFmts count=\"" + std::to_string(formats.size()) + "\">" + format_list + "</numFmts>";
  }
  styles +=
      "<fonts count=\"3\">"
      "<font><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
      "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
      "<font><b/><sz val=\"14\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
      "</fonts>"
      "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
      "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
      "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
      "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>"
      "</cellStyleXfs><cellXfs count=\"" +
      std::to_string(styles_.size()) + "\">";
  for (const auto& [format, font] : styles_) {
    const int id = format == "General" ? 0 : formats[format];
    styles += "<xf numFmtId=\"" + std::to_string(id) + "\" fontId=\"" + std::to_string(font) +
              "\" fillId=\"0\" borderId=\"0\" xfId=\"0\"" +
              (id != 0 ? " applyNumberFormat=\"1\"" : "") + (font != 0 ? " applyFont=\"1\"" : "") +
              "/>";
  }
  styles +=
      "</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/>"
      "</cellStyles></styleSheet>";
  zip_->Begin("xl/styles.xml");
  zip_->Write(styles);
  zip_->Finish();
}

void XlsxSink::Finish() {
  CloseSheet();
  WritePackage();
  zip_.reset();
  file_->Commit();
  file_.reset();
}

void XlsxSink::Drop() noexcept {
  zip_.reset();
  file_.reset();
}

}  // namespace trellin::render
