// FillRow and the rounding of "Round" columns in details and totals.

#include <cmath>

#include "platform/host/ColumnLayout.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

bool IsRound(const std::string& format) { return EqualsIgnoreCase(format, "Round"); }

// "#,##0;(#,##0)" for 0 decimals, "#,##0.00;(#,##0.00)" for 2: negatives in brackets, as money
// prints in the reports.
std::string RoundMask(int decimals) {
  std::string body = "#,##0";
  if (decimals > 0) body += "." + std::string(static_cast<std::size_t>(decimals), '0');
  return body + ";(" + body + ")";
}

}  // namespace

Variant ColumnLayout::Rounded(const Variant& value, int decimals) const {
  if (value.IsNull() || value.IsEmpty() || !value.IsNumber()) return value;
  if (business_layer_) return business_layer_->Utilities().Rounder().Round(value, decimals);
  double scale = std::pow(10.0, decimals);
  return Variant(std::round(value.ToDouble() * scale) / scale);
}

void ColumnLayout::FillRow(Fields& fields, const std::string&) {
  for (const LaidOut& entry : laid_out_) {
    const DataColumn& column = *entry.column;
    const ReportField* field = fields.Find(column.DataField);
    // A column whose field the row lacks prints blank rather than last row's value.
    Variant value = field ? field->Value() : Variant::Null();
    if (!IsRound(column.Format)) {
      entry.detail->SetDataValue(std::move(value));
      continue;
    }
    int decimals = std::max(0, column.Decimals);
    Variant rounded = Rounded(value, decimals);
    entry.detail->SetDataValue(rounded);
    entry.detail->SetText(rounded.IsNumber() ? Format(rounded, RoundMask(decimals))
                                             : rounded.Text());
  }
}

void ColumnLayout::FormatTotals(Section& section) {
  for (const LaidOut& entry : laid_out_) {
    const DataColumn& column = *entry.column;
    if (!column.Totalled || !IsRound(column.Format)) continue;
    Control* total = section.Controls().Find(SummaryName(section, column));
    if (total == nullptr) continue;
    int decimals = std::max(0, column.Decimals);
    Variant rounded = Rounded(total->DataValue(), decimals);
    total->SetText(rounded.IsNumber() ? Format(rounded, RoundMask(decimals)) : rounded.Text());
  }
}

}  // namespace trellin::host
