#include "platform/render/ExcelFormat.h"

#include <cctype>
#include <string_view>

namespace trellin::render {
namespace {

bool SameText(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

struct NamedFormat {
  std::string_view mask;
  std::string_view number;  // for numbers and money
  std::string_view date;    // for dates
};

// The report language's named formats. A name that means nothing for the value's kind falls back
// to the kind's default (empty entry).
constexpr NamedFormat kNamed[] = {
    {"General Number", "General", ""},
    {"Currency", "$#,##0.00;-$#,##0.00", ""},
    {"Fixed", "0.00", ""},
    {"Standard", "#,##0.00", ""},
    {"Percent", "0.00%", ""},
    {"Scientific", "0.00E+00", ""},
    {"Yes/No", "General", ""},
    {"True/False", "General", ""},
    {"On/Off", "General", ""},
    {"General Date", "", "d/mm/yyyy h:mm:ss AM/PM"},
    {"Long Date", "", "dddd, d mmmm yyyy"},
    {"Medium Date", "", "dd-mmm-yy"},
    {"Short Date", "", "d/mm/yyyy"},
    {"Long Time", "", "h:mm:ss AM/PM"},
    {"Medium Time", "", "hh:mm AM/PM"},
    {"Short Time", "", "hh:mm"},
};

std::string Default(CellKind kind) {
  switch (kind) {
    case CellKind::Money:
      return "#,##0.00;-#,##0.00";
    case CellKind::Date:
      return "d/mm/yyyy";
    case CellKind::DateTime:
      return "d/mm/yyyy h:mm:ss AM/PM";
    default:
      return "General";
  }
}

constexpr std::string_view kNumberPlaceholders = "0#?.,%";
constexpr std::string_view kDatePlaceholders = "dmyhsDMYHS";
// Characters a spreadsheet shows literally without quoting.
constexpr std::string_view kPlainLiterals = "$-+/():!^&'~{}<>= ";

std::string Translate(std::string_view mask, bool date) {
  std::string out;
  int sections = 1;
  bool any_placeholder = false;
  for (std::size_t i = 0; i < mask.size(); ++i) {
    const char c = mask[i];
    if (c == '"') {
      const std::size_t close = mask.find('"', i + 1);
      const std::size_t end = close == std::string_view::npos ? mask.size() : close;
      out += '"';
      out += mask.substr(i + 1, end - i - 1);
      out += '"';
      i = end;
    } else if (i + 1 < mask.size() && (c == '\\' || (!date && (c == 'E' || c == 'e') &&
                                                     (mask[i + 1] == '+' || mask[i + 1] == '-')))) {
      // An escaped character, or scientific notation (E+ or E-): both pass as a pair.
      out += mask.substr(i, 2);
      ++i;
    } else if (c == ';' && !date) {
      if (++sections > 3) break;  // the fourth section is for Null, which stays blank
      out += c;
    } else if (date &&
               (SameText(mask.substr(i, 5), "AM/PM") || SameText(mask.substr(i, 3), "A/P"))) {
      const std::size_t length = SameText(mask.substr(i, 5), "AM/PM") ? 5 : 3;
      out += mask.substr(i, length);
      i += length - 1;
    } else if (date && (c == 'n' || c == 'N')) {
      out += 'm';
      any_placeholder = true;
    } else if ((date ? kDatePlaceholders : kNumberPlaceholders).find(c) != std::string_view::npos) {
      out += c;
      any_placeholder = any_placeholder || (c != '.' && c != ',');
    } else if (kPlainLiterals.find(c) != std::string_view::npos ||
               (date && (c == '.' || c == ','))) {
      out += c;
    } else if (static_cast<unsigned char>(c) >= 0x80) {
      // Non-ASCII literal text goes quoted, whole sequences at once.
      std::size_t end = i;
      while (end < mask.size() && static_cast<unsigned char>(mask[end]) >= 0x80) ++end;
      out += '"';
      out += mask.substr(i, end - i);
      out += '"';
      i = end - 1;
    } else {
      out += '\\';
      out += c;
    }
  }
  return any_placeholder ? out : std::string();
}

}  // namespace

std::string ExcelNumberFormat(std::string_view mask, CellKind kind) {
  const bool date = kind == CellKind::Date || kind == CellKind::DateTime;
  if (mask.empty() || SameText(mask, "Round") || SameText(mask, "(auto)")) return Default(kind);
  for (const NamedFormat& named : kNamed) {
    if (SameText(mask, named.mask)) {
      const std::string_view format = date ? named.date : named.number;
      return format.empty() ? Default(kind) : std::string(format);
    }
  }
  std::string format = Translate(mask, date);
  return format.empty() ? Default(kind) : format;
}

}  // namespace trellin::render
