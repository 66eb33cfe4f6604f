#include "platform/runtime/DateText.h"

#include <array>
#include <string>

namespace trellin {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsAlpha(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr std::array<std::string_view, 12> kMonthNames = {
    "january", "february", "march",     "april",   "may",      "june",
    "july",    "august",   "september", "october", "november", "december"};

// A cursor over the text being read.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  [[nodiscard]] bool AtEnd() const { return pos_ == text_.size(); }
  [[nodiscard]] char Peek() const { return AtEnd() ? '\0' : text_[pos_]; }
  [[nodiscard]] std::size_t Pos() const { return pos_; }

  bool Take(char c) {
    if (Peek() != c) return false;
    ++pos_;
    return true;
  }
  // One to `max` digits; returns how many were read.
  int Number(int max, int& value) {
    int count = 0;
    value = 0;
    while (count < max && IsDigit(Peek())) {
      value = value * 10 + (text_[pos_++] - '0');
      ++count;
    }
    return IsDigit(Peek()) ? 0 : count;  // more digits than allowed: no number at all
  }
  int Blanks() {
    int count = 0;
    while (IsBlank(Peek())) {
      ++pos_;
      ++count;
    }
    return count;
  }
  std::string_view Word() {
    std::size_t start = pos_;
    while (IsAlpha(Peek())) ++pos_;
    return text_.substr(start, pos_ - start);
  }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
};

// "Mar" or "March" in any case; 0 when the word names no month.
int MonthFromName(std::string_view word) {
  std::string lower;
  for (char c : word) lower += Lower(c);
  for (std::size_t i = 0; i < kMonthNames.size(); ++i) {
    if (lower == kMonthNames[i] || (lower.size() == 3 && kMonthNames[i].substr(0, 3) == lower)) {
      return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

// A year of two or four digits; two-digit years go through the fixed window.
bool ReadYear(Reader& r, int& year) {
  int digits = r.Number(4, year);
  if (digits == 2) {
    year += year < kTwoDigitYearPivot ? 2000 : 1900;
    return true;
  }
  return digits == 4;
}

struct Ymd {
  int year = 0, month = 0, day = 0;
};

// The date part: "yyyy-m-d", "d/m/y", "d-m-y", "d.m.y", "d mmm y" or "d-mmm-y".
bool ReadDatePart(Reader& r, Ymd& out) {
  int first = 0;
  int first_digits = r.Number(4, first);
  if (first_digits == 4) {
    // ISO: year first, always with dashes.
    out.year = first;
    return r.Take('-') && r.Number(2, out.month) > 0 && r.Take('-') && r.Number(2, out.day) > 0;
  }
  if (first_digits == 0 || first_digits > 2) return false;
  out.day = first;
  char sep = r.Peek();
  if (sep == '/' || sep == '-' || sep == '.') {
    r.Take(sep);
    if (IsAlpha(r.Peek())) {
      // "5-Mar-2024": a named month takes the dash only.
      if (sep != '-') return false;
      out.month = MonthFromName(r.Word());
      return out.month != 0 && r.Take('-') && ReadYear(r, out.year);
    }
    return r.Number(2, out.month) > 0 && r.Take(sep) && ReadYear(r, out.year);
  }
  if (r.Blanks() == 0) return false;
  out.month = MonthFromName(r.Word());
  return out.month != 0 && r.Blanks() > 0 && ReadYear(r, out.year);
}

// "h:nn" or "h:nn:ss", with "am"/"pm" (any case, blank before it optional) for a 12-hour clock.
bool ReadTimePart(Reader& r, int& seconds) {
  int hour = 0, minute = 0, second = 0;
  if (r.Number(2, hour) == 0 || !r.Take(':') || r.Number(2, minute) != 2) return false;
  if (r.Take(':') && r.Number(2, second) != 2) return false;
  r.Blanks();
  std::string_view suffix = r.Word();
  if (!suffix.empty()) {
    std::string lower{Lower(suffix[0]), suffix.size() > 1 ? Lower(suffix[1]) : '\0'};
    if (suffix.size() != 2 || (lower != "am" && lower != "pm")) return false;
    if (hour < 1 || hour > 12) return false;
    // 12am is midnight, 12pm noon.
    hour = hour % 12 + (lower == "pm" ? 12 : 0);
  }
  if (hour > 23 || minute > 59 || second > 59) return false;
  seconds = hour * 3600 + minute * 60 + second;
  return true;
}

}  // namespace

std::optional<Date> ParseDateText(std::string_view text) {
  Reader r(text);
  r.Blanks();
  Ymd ymd;
  if (!ReadDatePart(r, ymd)) return std::nullopt;
  std::optional<Date> date = Date::TryFromYmd(ymd.year, ymd.month, ymd.day);
  if (!date) return std::nullopt;
  int seconds = 0;
  bool separated = r.Blanks() > 0 || r.Take('T');
  if (separated && !r.AtEnd()) {
    if (!ReadTimePart(r, seconds)) return std::nullopt;
    r.Blanks();
  }
  // Whatever is left ("+1D", a second date, a stray word) makes the whole text no date.
  if (!r.AtEnd()) return std::nullopt;
  return Date::FromSerial(date->Serial(), seconds);
}

}  // namespace trellin
