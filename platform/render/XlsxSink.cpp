#include "platform/render/XlsxSink.h"

#include <algorithm>
#include <cmath>

#include "platform/render/ExcelFormat.h"
#include "platform/render/Render.h"
#include "platform/render/Utf8.h"

namespace trellin::render {
namespace {

// A spreadsheet column's width counts characters of about 7 pixels at 96 dpi: 105 twips.
constexpr double kTwipsPerCharacter = 105.0;
constexpr lxw_col_t kFirstCellColumn = 2;  // after "Row" and "Level"
constexpr int kMaxOutlineLevel = 7;        // the deepest outline a worksheet has

// The first `count` characters of UTF-8 `text`, never splitting a sequence.
std::string FirstCharacters(const std::string& text, std::size_t count) {
  std::size_t seen = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80 && ++seen > count)
      return text.substr(0, i);
  }
  return text;
}

bool IsSummaryRow(engine::RowKind kind) { return kind != engine::RowKind::Detail; }

// Text as a cell holds it: valid UTF-8, every line break a bare LF. The workbook stores a CR as
// "_x000D_", which the spreadsheet shows as it stands, so CR LF and a lone CR both become LF.
std::string SheetText(std::string_view text) {
  const std::string valid = ValidUtf8(text);
  std::string out;
  out.reserve(valid.size());
  for (std::size_t i = 0; i < valid.size(); ++i) {
    if (valid[i] != '\r') {
      out += valid[i];
    } else if (i + 1 >= valid.size() || valid[i + 1] != '\n') {
      out += '\n';
    }
  }
  return out;
}

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

XlsxSink::~XlsxSink() { Drop(); }

void XlsxSink::Check(lxw_error error) const {
  if (error != LXW_NO_ERROR)
    throw RenderError("Cannot write " + target_.string() + ": " + lxw_strerror(error));
}

void XlsxSink::Open(const engine::DocumentInfo& info) {
  file_.emplace(target_);
  file_->Close();  // the workbook writes the file by its name
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.use_zip64 = LXW_TRUE;
  workbook_ = workbook_new_opt(file_->TempPath().c_str(), &options);
  if (workbook_ == nullptr) throw RenderError("Cannot write " + target_.string());
  title_ = ValidUtf8(info.title.empty() ? info.caption : info.title);
  lxw_doc_properties properties{};
  properties.title = title_.data();
  Check(workbook_set_properties(workbook_, &properties));
}

void XlsxSink::AddSheet() {
  ++sheets_;
  std::string name = SheetName(title_);
  if (sheets_ > 1) {
    const std::string suffix = " (" + std::to_string(sheets_) + ")";
    name = FirstCharacters(name, 31 - suffix.size()) + suffix;
  }
  sheet_ = workbook_add_worksheet(workbook_, name.c_str());
  if (sheet_ == nullptr) throw RenderError("Cannot write " + target_.string());
}

void XlsxSink::CloseSheet() {
  Check(worksheet_autofilter(sheet_, 0, 0, row_ > 0 ? row_ - 1 : 0, last_column_));
}

lxw_format* XlsxSink::FormatFor(const std::string& number_format, bool bold) {
  auto key = std::make_pair(number_format, bold);
  if (auto it = formats_.find(key); it != formats_.end()) return it->second;
  lxw_format* format = workbook_add_format(workbook_);
  if (!number_format.empty()) format_set_num_format(format, number_format.c_str());
  if (bold) format_set_bold(format);
  formats_.emplace(std::move(key), format);
  return format;
}

void XlsxSink::WriteHeading(const std::vector<ExportColumn>& columns, int group_levels) {
  columns_ = columns;
  group_levels_ = group_levels;
  AddSheet();
  lxw_format* bold = FormatFor("", true);
  Check(worksheet_set_column(sheet_, 0, 0, 14, nullptr));
  Check(worksheet_set_column(sheet_, 1, 1, 6, nullptr));
  Check(worksheet_write_string(sheet_, 0, 0, "Row", bold));
  Check(worksheet_write_string(sheet_, 0, 1, "Level", bold));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto column = static_cast<lxw_col_t>(kFirstCellColumn + i);
    const double width = std::clamp(std::max(columns[i].width / kTwipsPerCharacter,
                                             static_cast<double>(columns[i].caption.size()) + 2),
                                    6.0, 80.0);
    Check(worksheet_set_column(sheet_, column, column, width, nullptr));
    Check(worksheet_write_string(sheet_, 0, column, SheetText(columns[i].caption).c_str(), bold));
  }
  last_column_ =
      static_cast<lxw_col_t>(kFirstCellColumn + std::max<std::size_t>(columns.size(), 1) - 1);
  worksheet_freeze_panes(sheet_, 1, 0);
  row_ = 1;
}

void XlsxSink::WriteCell(lxw_col_t column, const engine::DataCell& cell, bool bold) {
  const Variant& v = cell.value;
  auto number = [&](double value, CellKind kind) {
    Check(worksheet_write_number(sheet_, row_, column, value,
                                 FormatFor(ExcelNumberFormat(cell.format, kind), bold)));
  };
  if (const auto* money = v.Get<Currency>()) {
    // Ten-thousandths divided once: the nearest double, which reads back as the exact amount.
    number(static_cast<double>(money->Raw()) / Currency::kScale, CellKind::Money);
  } else if (const auto* date = v.Get<Date>()) {
    number(date->ToDouble(), date->HasTime() ? CellKind::DateTime : CellKind::Date);
  } else if (const auto* integer = v.Get<std::int64_t>()) {
    number(static_cast<double>(*integer), CellKind::Integer);
  } else if (const auto* real = v.Get<double>()) {
    if (std::isfinite(*real)) number(*real, CellKind::Real);
  } else if (const auto* flag = v.Get<bool>()) {
    Check(
        worksheet_write_boolean(sheet_, row_, column, *flag, bold ? FormatFor("", true) : nullptr));
  } else if (const auto* text = v.Get<std::string>()) {
    Check(worksheet_write_string(sheet_, row_, column, SheetText(*text).c_str(),
                                 bold ? FormatFor("", true) : nullptr));
  } else if (v.IsEmpty() && !cell.text.empty()) {
    Check(worksheet_write_string(sheet_, row_, column, SheetText(cell.text).c_str(),
                                 bold ? FormatFor("", true) : nullptr));
  }
}

void XlsxSink::WriteRow(const engine::DataRow& row, std::string_view caption,
                        const std::vector<const engine::DataCell*>& cells) {
  if (row_ >= rows_per_sheet_) {
    CloseSheet();
    WriteHeading(columns_, group_levels_);
  }
  // Details sit deepest, each group's header and footer one level above its contents, the
  // report's own header and footer at the top: folding shows the totals of any group level.
  int outline = 0;
  if (row.kind == engine::RowKind::Detail) {
    outline = group_levels_;
  } else if (row.kind == engine::RowKind::GroupHeader || row.kind == engine::RowKind::GroupFooter) {
    outline = group_levels_ - row.level;
  }
  outline = std::clamp(outline, 0, kMaxOutlineLevel);
  if (outline > 0) {
    lxw_row_col_options options{};
    options.level = static_cast<uint8_t>(outline);
    Check(worksheet_set_row_opt(sheet_, row_, LXW_DEF_ROW_HEIGHT, nullptr, &options));
  }
  const bool bold = IsSummaryRow(row.kind);
  lxw_format* text_format = bold ? FormatFor("", true) : nullptr;
  Check(worksheet_write_string(sheet_, row_, 0, std::string(caption).c_str(), text_format));
  if (row.kind == engine::RowKind::GroupHeader || row.kind == engine::RowKind::GroupFooter) {
    Check(worksheet_write_number(sheet_, row_, 1, row.level, text_format));
  }
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (cells[i] == nullptr) continue;
    const auto column = static_cast<lxw_col_t>(kFirstCellColumn + i);
    if (column >= LXW_COL_MAX) break;
    WriteCell(column, *cells[i], bold);
    last_column_ = std::max(last_column_, column);
  }
  ++row_;
}

void XlsxSink::Finish() {
  CloseSheet();
  lxw_workbook* workbook = workbook_;
  workbook_ = nullptr;
  Check(workbook_close(workbook));
  file_->Commit();
  file_.reset();
}

void XlsxSink::Drop() noexcept {
  if (workbook_ != nullptr) lxw_workbook_free(workbook_);
  workbook_ = nullptr;
  file_.reset();
}

}  // namespace trellin::render
