#pragma once
// The text of a card report (a block of lines per record: an asset's or a job's details): lines
// joined, labelled parts, codes with their names, dates and money as the company writes them.

#include <initializer_list>
#include <string>
#include <string_view>

#include "core/TrellinReportGlobals.h"
#include "core/host/ActiveReport.h"
#include "core/host/Database.h"
#include "core/host/Fields.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin::card {

inline bool Blank(const Variant& v) { return v.IsNull() || v.IsEmpty() || v.IsMissing(); }

// The field's text, trimmed; "" for a field the row does not have.
inline std::string Text(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(std::string(name));
  return field == nullptr || Blank(field->Value()) ? std::string() : Trim(field->Value().Text());
}

// The field's value; Null for a field the row does not have.
inline Variant Value(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(std::string(name));
  return field == nullptr ? Variant::Null() : field->Value();
}

// Adds `line` below the text's lines; an empty line adds nothing.
inline void AddLine(std::string& text, const std::string& line) {
  if (line.empty()) return;
  text += (text.empty() ? "" : "\r\n") + line;
}

// The parts that are not blank, three spaces apart.
inline std::string Joined(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts) {
    if (!part.empty()) text += (text.empty() ? "" : "   ") + part;
  }
  return text;
}

// "Label: value" for a value that is not blank; "" otherwise.
inline std::string Part(const std::string& label, const std::string& value) {
  return value.empty() ? std::string() : label + ": " + value;
}

// "CODE Name", or the code alone when the name is blank.
inline std::string Named(const std::string& code, const std::string& name) {
  if (code.empty()) return {};
  return name.empty() ? code : code + " " + name;
}

inline std::string DateText(const Variant& date) {
  if (Blank(date)) return {};
  return Format(Variant(date.ToDate()), TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

inline std::string MoneyText(const Variant& value) {
  return Format(Blank(value) ? Variant(Currency()) : Variant(value.ToCurrency()),
                "#,##0.00;(#,##0.00)");
}

// A log's notes, a line each ("date subject: notes"), from a query of Date, Subject and Notes.
inline std::string NoteLines(Database& database, const std::string& sql) {
  std::string lines;
  for (auto rs = database.Query(sql); !rs->Eof(); rs->MoveNext()) {
    const std::string subject = Trim(rs->Value(1).Text());
    const std::string notes = Trim(rs->Value(2).Text());
    AddLine(lines, DateText(rs->Value(0)) + " " + subject +
                       (notes.empty() ? "" : (subject.empty() ? "" : ": ") + notes));
  }
  return lines;
}

// A block of a card: a caption and its text, printed when the row's field of lines has any.
struct Block {
  const char* field;
  const char* caption_control;
  const char* text_control;
};

// Stands the blocks that have something to say one under the other, from where the first
// block's caption stands, each growing down as its lines need; the sub-report `subreport` stands
// just before the block of the field `subreport_before`. The card's closing rule "linCard" and
// the detail section follow the last block.
template <std::size_t N>
void StackBlocks(ActiveReport& report, const Block (&blocks)[N], std::string_view subreport_before,
                 std::string_view subreport) {
  constexpr float kBlockStep = 280;
  float top = report.Field(blocks[0].caption_control).Top();
  for (const Block& block : blocks) {
    const bool shown = !Text(report.Fields(), block.field).empty();
    Control& caption = report.Field(block.caption_control);
    Control& text = report.Field(block.text_control);
    caption.SetVisible(shown);
    text.SetVisible(shown);
    if (subreport_before == block.field) {
      Control& lines = report.Field(subreport);
      lines.SetTop(top);
      if (lines.Visible()) top += 80;
    }
    if (!shown) continue;
    caption.SetTop(top);
    text.SetTop(top);
    top += kBlockStep;
  }
  report.Field("linCard").SetTop(top + 60);
  report.Sections()["Detail"].SetHeight(top + 120);
}

}  // namespace trellin::card
