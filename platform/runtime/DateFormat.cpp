#include "platform/runtime/DateFormat.h"

#include <array>

namespace trellin {
namespace {

constexpr std::array<std::string_view, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool StartsWithIgnoreCase(std::string_view s, std::size_t at, std::string_view prefix) {
  if (at + prefix.size() > s.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    if (Lower(s[at + i]) != prefix[i]) return false;
  }
  return true;
}

void AppendNumber(std::string& out, int value, int width) {
  char buf[12];
  int len = 0;
  unsigned v = static_cast<unsigned>(value < 0 ? -value : value);
  do {
    buf[len++] = static_cast<char>('0' + v % 10);
    v /= 10;
  } while (v != 0);
  while (len < width) buf[len++] = '0';
  if (value < 0) out += '-';
  while (len > 0) out += buf[--len];
}

}  // namespace

std::optional<DateFormat> DateFormat::Compile(std::string_view mask) {
  DateFormat format;
  std::vector<Token>& tokens = format.tokens_;
  const auto literal = [&tokens](std::string_view t) {
    if (!tokens.empty() && tokens.back().part == Part::Literal) {
      tokens.back().text.append(t);
    } else {
      tokens.push_back({Part::Literal, std::string(t), {}});
    }
  };
  bool any_part = false;
  for (std::size_t i = 0; i < mask.size();) {
    char c = Lower(mask[i]);
    std::size_t run = 1;
    while (i + run < mask.size() && Lower(mask[i + run]) == c) ++run;
    // Each letter's runs, shortest first: one letter, two letters, and so on; the last entry
    // also covers longer runs.
    static constexpr struct {
      char letter;
      std::array<Part, 6> parts;
      std::size_t count;
    } kRuns[] = {
        {'d',
         {Part::Day, Part::Day2, Part::DayName3, Part::DayName, Part::ShortDate, Part::LongDate},
         6},
        {'m', {Part::Month, Part::Month2, Part::MonthName3, Part::MonthName}, 4},
        {'y', {Part::DayOfYear, Part::Year2, Part::Year2, Part::Year4}, 4},
        {'h', {Part::Hour, Part::Hour2}, 2},
        {'n', {Part::Minute, Part::Minute2}, 2},
        {'s', {Part::Second, Part::Second2}, 2},
        {'q', {Part::Quarter}, 1},
    };
    bool matched = false;
    for (const auto& r : kRuns) {
      if (r.letter != c) continue;
      tokens.push_back({r.parts[std::min(run, r.count) - 1], {}, {}});
      any_part = matched = true;
      break;
    }
    if (matched) {
      i += run;
      continue;
    }
    if (StartsWithIgnoreCase(mask, i, "am/pm")) {
      tokens.push_back(
          {Part::AmPm, std::string(mask.substr(i, 2)), std::string(mask.substr(i + 3, 2))});
      any_part = true;
      i += 5;
    } else if (StartsWithIgnoreCase(mask, i, "a/p")) {
      tokens.push_back(
          {Part::AmPm, std::string(mask.substr(i, 1)), std::string(mask.substr(i + 2, 1))});
      any_part = true;
      i += 3;
    } else if (StartsWithIgnoreCase(mask, i, "ampm")) {
      tokens.push_back({Part::AmPm, "AM", "PM"});
      any_part = true;
      i += 4;
    } else if (mask[i] == '\\' && i + 1 < mask.size()) {
      literal(mask.substr(i + 1, 1));
      i += 2;
    } else if (mask[i] == '"') {
      std::size_t end = mask.find('"', i + 1);
      if (end == std::string_view::npos) end = mask.size();
      literal(mask.substr(i + 1, end - i - 1));
      i = end + 1;
    } else {
      literal(mask.substr(i, 1));
      ++i;
    }
  }
  if (!any_part) return std::nullopt;

  // "m" and "mm" right after an hour, or right before seconds, are minutes ("h:mm", "mm:ss").
  const auto neighbour = [&tokens](std::size_t i, std::ptrdiff_t step) -> const Token* {
    const auto size = static_cast<std::ptrdiff_t>(tokens.size());
    for (std::ptrdiff_t k = static_cast<std::ptrdiff_t>(i) + step; k >= 0 && k < size; k += step) {
      if (tokens[static_cast<std::size_t>(k)].part != Part::Literal) {
        return &tokens[static_cast<std::size_t>(k)];
      }
    }
    return nullptr;
  };
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    Token& t = tokens[i];
    if (t.part != Part::Month && t.part != Part::Month2) continue;
    const Token* before = neighbour(i, -1);
    const Token* after = neighbour(i, 1);
    if ((before && (before->part == Part::Hour || before->part == Part::Hour2)) ||
        (after && (after->part == Part::Second || after->part == Part::Second2))) {
      t.part = t.part == Part::Month ? Part::Minute : Part::Minute2;
    }
  }
  for (const Token& t : tokens) format.twelve_hour_ = format.twelve_hour_ || t.part == Part::AmPm;
  return format;
}

std::string DateFormat::Apply(const Date& date) const {
  const int year = date.Year(), month = date.Month(), day = date.Day();
  int hour = date.Hour();
  if (twelve_hour_) hour = hour % 12 == 0 ? 12 : hour % 12;
  std::string out;
  out.reserve(24);
  for (const Token& t : tokens_) {
    switch (t.part) {
      case Part::Literal:
        out += t.text;
        break;
      case Part::Day:
        AppendNumber(out, day, 1);
        break;
      case Part::Day2:
        AppendNumber(out, day, 2);
        break;
      case Part::DayName3:
        out += kDayNames[static_cast<int>(date.DayOfWeek()) - 1].substr(0, 3);
        break;
      case Part::DayName:
        out += kDayNames[static_cast<int>(date.DayOfWeek()) - 1];
        break;
      case Part::ShortDate:
        AppendNumber(out, day, 2);
        out += '/';
        AppendNumber(out, month, 2);
        out += '/';
        AppendNumber(out, year, 4);
        break;
      case Part::LongDate:
        AppendNumber(out, day, 1);
        out += ' ';
        out += kMonthNames[month - 1];
        out += ' ';
        AppendNumber(out, year, 4);
        break;
      case Part::Month:
        AppendNumber(out, month, 1);
        break;
      case Part::Month2:
        AppendNumber(out, month, 2);
        break;
      case Part::MonthName3:
        out += kMonthNames[month - 1].substr(0, 3);
        break;
      case Part::MonthName:
        out += kMonthNames[month - 1];
        break;
      case Part::Year2:
        AppendNumber(out, year % 100, 2);
        break;
      case Part::Year4:
        AppendNumber(out, year, 4);
        break;
      case Part::DayOfYear:
        AppendNumber(out, date.Serial() - Date::FromYmd(year, 1, 1).Serial() + 1, 1);
        break;
      case Part::Quarter:
        AppendNumber(out, (month - 1) / 3 + 1, 1);
        break;
      case Part::Hour:
        AppendNumber(out, hour, 1);
        break;
      case Part::Hour2:
        AppendNumber(out, hour, 2);
        break;
      case Part::Minute:
        AppendNumber(out, date.Minute(), 1);
        break;
      case Part::Minute2:
        AppendNumber(out, date.Minute(), 2);
        break;
      case Part::Second:
        AppendNumber(out, date.Second(), 1);
        break;
      case Part::Second2:
        AppendNumber(out, date.Second(), 2);
        break;
      case Part::AmPm:
        out += date.Hour() < 12 ? t.text : t.pm_text;
        break;
    }
  }
  return out;
}

}  // namespace trellin
